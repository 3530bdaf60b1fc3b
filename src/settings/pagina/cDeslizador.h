// A scroll bar and the box of its number, kept equal: the bar's changes show in the box at once, the box's number goes
// to the bar when the box is left. Both take the focus. The bar bears the name of the table's row. Main thread.
#pragma once

#include <QWidget>

class QSlider;

namespace ondalis {

class cCajaNumero;

class cDeslizador : public QWidget {
    Q_OBJECT
public:
    // `barra`, `caja`: the controls' names; without a box `caja` is null. `rotulo`: the label that stands beside them;
    // a label's buddy may be this widget, the bar takes the focus for it.
    cDeslizador(const char *barra, const char *caja, const QString &rotulo, QWidget *padre = nullptr);

    // The value stays, or goes to the nearer limit. The small step is 1.
    void SetRango(int minimo, int maximo, int pasoGrande);
    int Valor() const;
    void SetValor(int valor);
    QSlider &Barra() { return *m_barra; }
    cCajaNumero *Caja() { return m_caja; }  // null: none

signals:
    void Cambia(int valor);

protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    QSlider *m_barra;  // children
    cCajaNumero *m_caja = nullptr;
};

}  // namespace ondalis
