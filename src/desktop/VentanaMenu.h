// The menu of the tray icon as an ordinary window, for desktops without a place for the icon: one button an entry, in
// the menu's order. Closing it puts it among the minimized windows: nothing else leads back to it. Owned by main. Main
// thread.
#pragma once

#include <QWidget>

class QAction;
class QMenu;
class QPushButton;
class QVBoxLayout;

namespace ondalis {

class VentanaMenu : public QWidget {
public:
    // `menu` outlives the window, or its entries do nothing any more.
    explicit VentanaMenu(QMenu &menu);

protected:
    void showEvent(QShowEvent *evento) override;
    void closeEvent(QCloseEvent *evento) override;

private:
    void Anade(QVBoxLayout &columna, QAction &accion);

    bool m_mostrada = false;  // from then on its size is the user's
};

}  // namespace ondalis
