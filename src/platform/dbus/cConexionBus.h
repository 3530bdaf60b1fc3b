// A connection of our own to the session bus that comes back by itself: a bus that is missing, goes away or is started
// again costs a reading nothing. What lives on it registers again on each connection. Owned by main. Main thread.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QTimer>
#include <functional>
#include <vector>

#include "settings/cLog.h"

namespace ondalis {

class cConexionBus : public QObject {
    Q_OBJECT
public:
    explicit cConexionBus(cLog &log);
    ~cConexionBus() override;

    // `registra` runs on each new connection, in the order of these calls: objects first, then NombraComo.
    void AlConectar(std::function<void(QDBusConnection &)> registra) { m_registran.push_back(std::move(registra)); }
    // Begins to connect from the event loop; returns at once. Without a bus it tries again, at last each 30 s.
    void Conecta();
    bool Conectada() const { return !m_nombre.isEmpty() && Bus().isConnected(); }

    // Takes the name on that connection, behind its present owner if there is one.
    void NombraComo(QDBusConnection &bus, const char *nombre);
    // Tells watchers of a property's new value. Nothing without a connection.
    void AvisaCambio(const char *ruta, const char *interfaz, const QVariantMap &cambios);
    bool Envia(const QDBusMessage &mensaje) { return Conectada() && Bus().send(mensaje); }

private Q_SLOTS:
    void Perdida();

private:
    void Intenta();
    QDBusConnection Bus() const { return QDBusConnection(m_nombre); }

    cLog &m_log;
    std::vector<std::function<void(QDBusConnection &)>> m_registran;
    QString m_nombre;  // of the present connection; empty: none
    int m_intentos = 0;
    QTimer m_reintento;
};

}  // namespace ondalis
