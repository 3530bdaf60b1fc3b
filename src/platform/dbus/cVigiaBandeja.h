// Looks for a host of tray icons: a watcher of status notifiers on the session bus, or the owner of the X server's tray
// selection. Owned by main. Main thread.
#pragma once

#include <QDBusServiceWatcher>

#include "desktop/VigiaBandeja.h"
#include "platform/x11/cConexionX.h"

namespace ondalis {

class cVigiaBandeja : public VigiaBandeja {
public:
    cVigiaBandeja();
    bool HayAnfitrion() override;
    void SetAlAparecer(std::function<void()> aviso) override { m_alAparecer = std::move(aviso); }

private:
    bool HayEnElBus() const;
    bool HayEnX();
    void EventoX(const xcb_generic_event_t &evento);

    QDBusServiceWatcher m_bus;
    cConexionX m_x;
    xcb_atom_t m_seleccion = 0;
    std::uint8_t m_primerEvento = 0;
    bool m_visto = false;  // a host has been there: the toolkit follows later ones of the X kind by itself
    std::function<void()> m_alAparecer;
};

}  // namespace ondalis
