// A text on a page that opens another window when it is clicked, or pressed with the keyboard. Main thread.
#pragma once

#include <QPushButton>

namespace ondalis {

class cEnlace : public QPushButton {
    Q_OBJECT
public:
    // `nombre`: the control's name. `accesible`: what a screen reader says, where the text alone is that of the check
    // box beside it; empty: the text.
    cEnlace(const char *nombre, const QString &texto, const QString &accesible = {}, QWidget *padre = nullptr);

protected:
    void changeEvent(QEvent *evento) override;

private:
    void TomaColor();
};

}  // namespace ondalis
