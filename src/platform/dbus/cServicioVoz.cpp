#include "platform/dbus/cServicioVoz.h"

namespace ondalis {

cServicioVoz::cServicioVoz(cConexionBus &bus, Ejecuta ejecuta, QString ddeLink)
    : m_bus(bus), m_ejecuta(std::move(ejecuta)), m_ddeLink(std::move(ddeLink)) {
    // The object is there before the name: what started the program waits behind the name.
    m_bus.AlConectar([this](QDBusConnection &conexion) {
        conexion.registerObject(QLatin1String(Ruta), this,
                                QDBusConnection::ExportScriptableSlots | QDBusConnection::ExportScriptableSignals |
                                    QDBusConnection::ExportScriptableProperties);
        m_bus.NombraComo(conexion, Nombre);
    });
}

void cServicioVoz::SetDDELink(const QString &texto) {
    m_ddeLink = texto;
    m_bus.AvisaCambio(Ruta, Interfaz, {{QStringLiteral("DDELink"), texto}});
}

void cServicioVoz::Termina(std::uint32_t numero) { Q_EMIT Finished(numero); }

void cServicioVoz::Execute(const QString &command) { ExecuteNumbered(command); }

uint cServicioVoz::ExecuteNumbered(const QString &command) {
    std::int16_t cancel = 0;
    const std::uint32_t numero = m_ejecuta(command, cancel);
    if (cancel != 0 && calledFromDBus()) sendErrorReply(QLatin1String(Rechazada), QStringLiteral("Orden rechazada"));
    return numero;
}

}  // namespace ondalis
