#include "platform/dbus/cConexionBus.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QFileInfo>
#include <algorithm>

namespace ondalis {

namespace {

constexpr int kPrimerIntervaloMs = 250;
constexpr int kUltimoIntervaloMs = 30'000;

// Without either of these the library would start a bus of its own, which nobody would ever see.
bool HayDireccion() {
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

}  // namespace

cConexionBus::cConexionBus(cLog &log) : m_log(log) {
    m_reintento.setSingleShot(true);
    m_reintento.setInterval(0);
    connect(&m_reintento, &QTimer::timeout, this, [this] { Intenta(); });
}

cConexionBus::~cConexionBus() {
    if (!m_nombre.isEmpty()) QDBusConnection::disconnectFromBus(m_nombre);
}

void cConexionBus::Conecta() {
    if (!Conectada()) m_reintento.start();
}

void cConexionBus::Intenta() {
    static int numero = 0;  // a connection's name is used once in the process
    const QString nombre = QStringLiteral("ondalis-%1").arg(++numero);
    QDBusConnection bus = HayDireccion() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, nombre)
                                         : QDBusConnection(QString());
    if (!bus.isConnected()) {
        QDBusConnection::disconnectFromBus(nombre);
        if (m_intentos == 0)
            m_log.Escribe(QStringLiteral("cConexionBus.Conecta: "),
                          QStringLiteral("No hay bus de sesión: no se atienden órdenes de otros programas"));
        m_reintento.setInterval(std::min(kUltimoIntervaloMs, kPrimerIntervaloMs << std::min(m_intentos, 8)));
        ++m_intentos;
        m_reintento.start();
        return;
    }
    m_intentos = 0;
    m_nombre = nombre;
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"), QStringLiteral("org.freedesktop.DBus.Local"),
                QStringLiteral("Disconnected"), this, SLOT(Perdida()));
    for (const auto &registra : m_registran) registra(bus);
}

void cConexionBus::Perdida() {
    if (m_nombre.isEmpty()) return;
    m_log.Escribe(QStringLiteral("cConexionBus.Perdida: "), QStringLiteral("Se ha perdido el bus de sesión"));
    QDBusConnection::disconnectFromBus(m_nombre);
    m_nombre.clear();
    m_reintento.setInterval(kPrimerIntervaloMs);
    m_intentos = 1;  // the loss has been logged already
    m_reintento.start();
}

void cConexionBus::NombraComo(QDBusConnection &bus, const char *nombre) {
    const auto respuesta = bus.interface()->registerService(
        QLatin1String(nombre), QDBusConnectionInterface::QueueService, QDBusConnectionInterface::DontAllowReplacement);
    if (respuesta.isValid() && respuesta.value() == QDBusConnectionInterface::ServiceRegistered) return;
    m_log.Escribe(QStringLiteral("cConexionBus.NombraComo: "),
                  QStringLiteral("%1: %2").arg(QLatin1String(nombre), respuesta.isValid()
                                                                          ? QStringLiteral("lo tiene otro programa")
                                                                          : respuesta.error().message()));
}

void cConexionBus::AvisaCambio(const char *ruta, const char *interfaz, const QVariantMap &cambios) {
    QDBusMessage senal = QDBusMessage::createSignal(
        QLatin1String(ruta), QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"));
    senal << QLatin1String(interfaz) << cambios << QStringList();
    Envia(senal);
}

}  // namespace ondalis
