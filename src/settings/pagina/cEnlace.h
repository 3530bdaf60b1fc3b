// A text on a page that opens another window when it is clicked, or pressed with the keyboard. Main thread.
#pragma once

#include <QPushButton>

namespace ondalis {

class cEnlace : public QPushButton {
    Q_OBJECT
public:
    // `nombre`: the control's name. `texto` may mark its letter, which gets a second line below that of the link.
    // `accesible`: what a screen reader says, where the text alone is that of the check box beside it; empty: the text.
    cEnlace(const char *nombre, const QString &texto, const QString &accesible = {}, QWidget *padre = nullptr);

    // The letter at `posicion` of the text is another control's, and gets its line here.
    void SubrayaTambien(qsizetype posicion) { m_vecina = posicion; }

protected:
    void paintEvent(QPaintEvent *evento) override;
    void changeEvent(QEvent *evento) override;

private:
    void TomaColor();

    qsizetype m_vecina = -1;
};

}  // namespace ondalis
