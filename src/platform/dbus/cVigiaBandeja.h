// Looks for a host of tray icons: a watcher of status notifiers on the session bus that a panel has reported to, or the
// owner of the X server's tray selection. What the bus says is kept as it comes: only the first answer is waited for,
// and that not long. Owned by main. Main thread.
#pragma once

#include <QDBusPendingCallWatcher>
#include <QObject>
#include <memory>

#include "desktop/VigiaBandeja.h"
#include "platform/dbus/cConexionBus.h"
#include "platform/x11/cConexionX.h"

namespace ondalis {

class cVigiaBandeja : public QObject, public VigiaBandeja {
    Q_OBJECT
public:
    explicit cVigiaBandeja(cConexionBus &bus);
    bool HayEnElBus() override;
    bool HayEnX() override;
    bool LlegaElToolkit() override { return QDBusConnection::sessionBus().isConnected(); }
    void SetAlAparecer(std::function<void()> aviso) override { m_alAparecer = std::move(aviso); }
    void SetAlDesaparecer(std::function<void()> aviso) override { m_alDesaparecer = std::move(aviso); }

private Q_SLOTS:
    void AnfitrionRegistrado();
    void AnfitrionRetirado() { Pregunta(kLimiteMs); }
    void CambiaDueno(const QString &nombre, const QString &anterior, const QString &nuevo);

private:
    static constexpr int kLimiteMs = 30'000;
    void Escucha(QDBusConnection &bus);
    void Pregunta(int limiteMs);
    bool Entiende(const QDBusMessage &respuesta);
    void Contesta(const QDBusMessage &respuesta);
    void VigilanteIdo();
    void ConectaX();
    void EventoX(const xcb_generic_event_t &evento);

    cConexionBus &m_bus;
    cConexionX m_x;
    std::unique_ptr<QDBusPendingCallWatcher> m_pregunta;  // null: answered
    xcb_atom_t m_seleccion = 0;
    std::uint8_t m_primerEvento = 0;
    bool m_primera = true;   // nothing has been answered so far
    bool m_enElBus = false;  // a panel has reported to the watcher that is there now
    std::function<void()> m_alAparecer;
    std::function<void()> m_alDesaparecer;
};

}  // namespace ondalis
