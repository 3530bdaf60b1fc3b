// A box for a number, as all pages have it: Enter moves the focus on; digits, backspace, copying and pasting pass, any
// other character beeps; leaving the box brings the number into its range. What was pasted counts as the number that it
// begins with. Main thread.
#pragma once

#include <QSpinBox>

namespace ondalis {

class cCajaNumero : public QSpinBox {
    Q_OBJECT
public:
    // `nombre`: the control's name, `rotulo`: what a screen reader calls it.
    cCajaNumero(const char *nombre, const QString &rotulo, QWidget *padre = nullptr);

    // The number that `texto` begins with, 0 without one; beyond what fits it stays at the limit.
    static int Numero(const QString &texto);

protected:
    void keyPressEvent(QKeyEvent *evento) override;
    void wheelEvent(QWheelEvent *evento) override;
    QValidator::State validate(QString &texto, int &posicion) const override;
    int valueFromText(const QString &texto) const override;
};

}  // namespace ondalis
