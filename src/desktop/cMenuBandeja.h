// The popup menu of the tray icon: a mirror of the state in MenuIcono, in its order with its separators. Nothing is
// read back from the widgets. Owned by main; outlives neither the state nor the icon. Main thread.
#pragma once

#include <QMenu>
#include <functional>

#include "reader/MenuIcono.h"
#include "settings/cCola.h"

namespace ondalis {

class cMenuBandeja {
public:
    // A click is an order in the queue, so that it never enters a running handler.
    cMenuBandeja(MenuIcono &estado, cCola &cola);
    ~cMenuBandeja();
    cMenuBandeja(const cMenuBandeja &) = delete;
    cMenuBandeja &operator=(const cMenuBandeja &) = delete;

    void AlPulsar(const EntradaMenu &entrada, std::function<void()> accion);
    QMenu &Menu() { return m_menu; }

private:
    void Anade(QMenu &menu, const char *nombre, EntradaMenu &entrada);

    MenuIcono &m_estado;
    cCola &m_cola;
    QMenu m_menu;
    QMenu m_ayuda;
    std::map<const EntradaMenu *, QAction *> m_acciones;  // owned by their menus
};

}  // namespace ondalis
