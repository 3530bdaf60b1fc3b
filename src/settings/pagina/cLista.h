// A drop-down list as all pages have it: as wide as its widest entry, and the wheel changes it only while it has the
// focus. Main thread.
#pragma once

#include <QComboBox>

namespace ondalis {

class cLista : public QComboBox {
    Q_OBJECT
public:
    // `nombre`: the control's name, `rotulo`: what a screen reader calls it.
    cLista(const char *nombre, const QString &rotulo, QWidget *padre = nullptr);

protected:
    void wheelEvent(QWheelEvent *evento) override;
};

}  // namespace ondalis
