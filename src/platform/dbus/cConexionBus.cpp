#include "platform/dbus/cConexionBus.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <algorithm>

namespace ondalis {

namespace {

constexpr int kPrimerIntervaloMs = 250;
constexpr int kUltimoIntervaloMs = 30'000;
constexpr std::chrono::seconds kLimiteSonda(2);
constexpr QLatin1String kRutaLocal("/org/freedesktop/DBus/Local");
constexpr QLatin1String kInterfazLocal("org.freedesktop.DBus.Local");
constexpr QLatin1String kDesconectado("Disconnected");
constexpr uint kDuenoDelNombre = 1;  // RequestName's answer, by the bus's protocol

}  // namespace

cConexionBus::cConexionBus(cLog &log) : m_log(log) {
    m_reintento.setSingleShot(true);
    m_reintento.setInterval(0);
    connect(&m_reintento, &QTimer::timeout, this, [this] { Intenta(); });
}

cConexionBus::~cConexionBus() {
    if (!m_nombre.isEmpty()) Suelta();
}

// Without its watcher of the loss first: the connection ends on the library's thread, later than here, and lets go
// there of the objects that it still knows, which may be gone by then. The withdrawal waits for that thread.
void cConexionBus::Suelta() {
    Bus().disconnect(QString(), kRutaLocal, kInterfazLocal, kDesconectado, this, SLOT(Perdida()));
    disconnect(this, &QObject::destroyed, nullptr, nullptr);  // by which the connection would learn of our end
    QDBusConnection::disconnectFromBus(m_nombre);
    m_nombre.clear();
}

void cConexionBus::AlConectar(std::function<void(QDBusConnection &)> registra) {
    m_registran.push_back(std::move(registra));
    if (!Conectada()) return;
    QDBusConnection bus = Bus();
    m_registran.back()(bus);
}

void cConexionBus::Conecta() {
    if (!Conectada() && !m_reintento.isActive()) m_reintento.start();
}

void cConexionBus::ConectaYa(std::chrono::milliseconds limite) {
    if (Conectada()) return;
    const QString direccion = DireccionBusSesion();
    const VidaBus vida = SondeaBus(direccion, limite);
    if (vida == VidaBus::Responde)
        Une(direccion);
    else
        Falla(vida);
}

void cConexionBus::Intenta() {
    const QString direccion = DireccionBusSesion();
    m_sonda.Pregunta(direccion, kLimiteSonda, [this, direccion](VidaBus vida) {
        if (vida == VidaBus::Responde)
            Une(direccion);
        else
            Falla(vida);
    });
}

// By its address: what the library takes for the session's is decided once a process.
void cConexionBus::Une(const QString &direccion) {
    static int numero = 0;  // a connection's name is used once in the process
    const QString nombre = QStringLiteral("ondalis-%1").arg(++numero);
    QDBusConnection bus = QDBusConnection::connectToBus(direccion, nombre);
    if (!bus.isConnected()) {
        QDBusConnection::disconnectFromBus(nombre);
        Falla(VidaBus::NoEsta);
        return;
    }
    m_intentos = 0;
    m_nombre = nombre;
    bus.connect(QString(), kRutaLocal, kInterfazLocal, kDesconectado, this, SLOT(Perdida()));
    for (const auto &registra : m_registran) registra(bus);
}

void cConexionBus::Falla(VidaBus vida) {
    if (m_intentos == 0)
        m_log.Escribe(QStringLiteral("cConexionBus.Conecta: "),
                      vida == VidaBus::Calla
                          ? QStringLiteral("El bus de sesión no contesta: no se atienden órdenes de otros programas")
                          : QStringLiteral("No hay bus de sesión: no se atienden órdenes de otros programas"));
    m_reintento.setInterval(std::min(kUltimoIntervaloMs, kPrimerIntervaloMs << std::min(m_intentos, 8)));
    ++m_intentos;
    m_reintento.start();
}

void cConexionBus::Perdida() {
    if (m_nombre.isEmpty()) return;
    m_log.Escribe(QStringLiteral("cConexionBus.Perdida: "), QStringLiteral("Se ha perdido el bus de sesión"));
    Suelta();
    m_reintento.setInterval(kPrimerIntervaloMs);
    m_intentos = 1;  // the loss has been logged already
    m_reintento.start();
    for (const auto &pierde : m_pierden) pierde();
}

void cConexionBus::NombraComo(QDBusConnection &bus, const char *nombre) {
    QDBusMessage peticion =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    peticion << QLatin1String(nombre) << 0U;  // in the queue, and not to be replaced
    auto *espera = new QDBusPendingCallWatcher(bus.asyncCall(peticion), this);
    connect(espera, &QDBusPendingCallWatcher::finished, this, [this, nombre](QDBusPendingCallWatcher *llamada) {
        llamada->deleteLater();
        const QDBusPendingReply<uint> respuesta = *llamada;
        if (respuesta.isValid() && respuesta.value() == kDuenoDelNombre) return;
        m_log.Escribe(QStringLiteral("cConexionBus.NombraComo: "),
                      QStringLiteral("%1: %2").arg(QLatin1String(nombre), respuesta.isValid()
                                                                              ? QStringLiteral("lo tiene otro programa")
                                                                              : respuesta.error().message()));
    });
}

void cConexionBus::Publica(const char *ruta, QObject *objeto) {
    Bus().registerObject(QLatin1String(ruta), objeto, QDBusConnection::ExportScriptableContents);
}

void cConexionBus::Retira(const char *ruta) { Bus().unregisterObject(QLatin1String(ruta)); }

void cConexionBus::AvisaCambio(const char *ruta, const char *interfaz, const QVariantMap &cambios) {
    QDBusMessage senal = QDBusMessage::createSignal(
        QLatin1String(ruta), QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"));
    senal << QLatin1String(interfaz) << cambios << QStringList();
    Envia(senal);
}

}  // namespace ondalis
