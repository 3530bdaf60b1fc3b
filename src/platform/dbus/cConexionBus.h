// A connection of our own to the session bus that comes back by itself: a bus that is missing, keeps silent, goes away
// or is started again costs a reading nothing. What lives on it registers again on each connection. Owned by main. Main
// thread, which is never held up by a bus that hangs but for the limit of ConectaYa.
#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QObject>
#include <QTimer>
#include <functional>
#include <vector>

#include "platform/dbus/SondaBus.h"
#include "settings/cLog.h"

namespace ondalis {

class cConexionBus : public QObject {
    Q_OBJECT
public:
    explicit cConexionBus(cLog &log);
    ~cConexionBus() override;

    // `registra` runs on each new connection, in the order of these calls: objects first, then NombraComo. At once
    // where there is a connection.
    void AlConectar(std::function<void(QDBusConnection &)> registra);
    // Called when the connection has been lost.
    void AlPerder(std::function<void()> aviso) { m_pierden.push_back(std::move(aviso)); }
    // Begins to connect from the event loop; returns at once. Without a bus it tries again, at last each 30 s.
    void Conecta();
    // Connects now if the bus answers within `limite`, else as Conecta.
    void ConectaYa(std::chrono::milliseconds limite = std::chrono::milliseconds(500));
    bool Conectada() const { return !m_nombre.isEmpty() && Bus().isConnected(); }

    // Takes the name on that connection, behind its present owner if there is one. Doesn't wait for the answer.
    void NombraComo(QDBusConnection &bus, const char *nombre);
    // Tells watchers of a property's new value. Nothing without a connection.
    void AvisaCambio(const char *ruta, const char *interfaz, const QVariantMap &cambios);
    bool Envia(const QDBusMessage &mensaje) { return Conectada() && Bus().send(mensaje); }
    // An object's scriptable members at `ruta` on the present connection, and no more.
    void Publica(const char *ruta, QObject *objeto);
    void Retira(const char *ruta);
    // Without a connection the answer is an error, at once.
    QDBusPendingCall Pide(const QDBusMessage &mensaje, int limiteMs) { return Bus().asyncCall(mensaje, limiteMs); }

private Q_SLOTS:
    void Perdida();

private:
    void Intenta();
    void Une(const QString &direccion);
    void Suelta();
    void Falla(VidaBus vida);
    QDBusConnection Bus() const { return QDBusConnection(m_nombre); }

    cLog &m_log;
    std::vector<std::function<void(QDBusConnection &)>> m_registran;
    std::vector<std::function<void()>> m_pierden;
    QString m_nombre;  // of the present connection; empty: none
    int m_intentos = 0;
    QTimer m_reintento;
    cSondaBus m_sonda;
};

}  // namespace ondalis
