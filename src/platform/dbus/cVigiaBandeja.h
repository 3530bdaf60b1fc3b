// Looks for a host of tray icons: a watcher of status notifiers on the session bus that a panel has reported to, or the
// owner of the X server's tray selection. Owned by main. Main thread.
#pragma once

#include <QDBusServiceWatcher>
#include <QObject>

#include "desktop/VigiaBandeja.h"
#include "platform/x11/cConexionX.h"

namespace ondalis {

class cVigiaBandeja : public QObject, public VigiaBandeja {
    Q_OBJECT
public:
    cVigiaBandeja();
    bool HayEnElBus() override;
    bool HayEnX() override;
    void SetAlAparecer(std::function<void()> aviso) override { m_alAparecer = std::move(aviso); }
    void SetAlDesaparecer(std::function<void()> aviso) override { m_alDesaparecer = std::move(aviso); }

private slots:
    void AnfitrionRegistrado();

private:
    void EventoX(const xcb_generic_event_t &evento);
    void VigilanteNuevo();
    void VigilanteIdo();

    QDBusServiceWatcher m_bus;
    cConexionX m_x;
    xcb_atom_t m_seleccion = 0;
    std::uint8_t m_primerEvento = 0;
    bool m_avisadoBus = false;  // of the watcher that is there now
    std::function<void()> m_alAparecer;
    std::function<void()> m_alDesaparecer;
};

}  // namespace ondalis
