#include "platform/atspi/cVigiaFoco.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QDBusVariant>
#include <QFileInfo>

#include "keys/TecladoSistema.h"

namespace ondalis {

namespace {

// A program that takes longer counts as one that says nothing: what is typed meanwhile is kept back, so a busy one gets
// time enough to say that its field hides it.
constexpr int kLimiteRolMs = 5'000;
constexpr int kLimiteServicioMs = 2'000;  // the service itself, which may have to be started
constexpr int kReintentoMs = 5'000;
constexpr uint kRolContrasena = 40;  // "password text" in the service's list of roles

const QString kPropiedades = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kRutaLocal = QStringLiteral("/org/freedesktop/DBus/Local");
const QString kInterfazLocal = QStringLiteral("org.freedesktop.DBus.Local");
const QString kDesconectado = QStringLiteral("Disconnected");
const QString kInterfazSuceso = QStringLiteral("org.a11y.atspi.Event.Object");
const QString kCambioDeEstado = QStringLiteral("StateChanged");
const QStringList kConFoco{QStringLiteral("focused")};
const QString kEvento = QStringLiteral("object:state-changed:focused");

// Without either of these the library would start a bus of its own, which nobody would ever see.
bool HayBusDeSesion() {
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

QString NombreNuevo(const char *clase) {
    static int numero = 0;  // a connection's name is used once in the process; only this thread makes such names
    return QStringLiteral("ondalis-%1-%2").arg(QLatin1String(clase)).arg(++numero);
}

// Programs show what they have only where somebody wants it. The other switch would start a screen reader.
void EnciendeAccesibilidad(const QDBusConnection &sesion) {
    const QString estado = QStringLiteral("org.a11y.Status"), encendida = QStringLiteral("IsEnabled");
    const auto mensaje = [&](const char *metodo) {
        QDBusMessage m = QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                                        kPropiedades, QLatin1String(metodo));
        m << estado << encendida;
        return m;
    };
    const QDBusReply<QDBusVariant> ahora = sesion.call(mensaje("Get"), QDBus::Block, kLimiteServicioMs);
    if (!ahora.isValid() || ahora.value().variant().toBool()) return;
    sesion.call(mensaje("Set") << QVariant::fromValue(QDBusVariant(true)), QDBus::Block, kLimiteServicioMs);
}

}  // namespace

cVigiaFoco::cVigiaFoco() : m_reintento(this) {
    m_reintento.setSingleShot(true);
    m_reintento.setInterval(kReintentoMs);
    connect(&m_reintento, &QTimer::timeout, this, &cVigiaFoco::Conecta);
}

cVigiaFoco::~cVigiaFoco() { Desconecta(); }

void cVigiaFoco::Inicia() {
    m_encendido = true;
    if (m_nombre.isEmpty()) Conecta();
}

void cVigiaFoco::Termina() {
    m_encendido = false;
    m_reintento.stop();
    Desconecta();
}

void cVigiaFoco::Desconecta() {
    m_programas.clear();
    if (m_nombre.isEmpty()) return;
    // What we watch is withdrawn first, which waits for the library's thread: the connection ends there, later than
    // here, and touches the objects that it still knows, which may be gone by then.
    QDBusConnection bus = Bus();
    bus.disconnect(QString(), kRutaLocal, kInterfazLocal, kDesconectado, this, SLOT(Perdido()));
    bus.disconnect(QString(), QString(), kInterfazSuceso, kCambioDeEstado, kConFoco, QString(), this,
                   SLOT(CambiaEstado(QDBusMessage)));
    disconnect(this, &QObject::destroyed, nullptr, nullptr);  // by which the connection would learn of our end
    QDBusConnection::disconnectFromBus(m_nombre);             // the registry forgets a listener that goes
    m_nombre.clear();
}

QString cVigiaFoco::Direccion() {
    if (!HayBusDeSesion()) return {};
    const QString nombre = NombreNuevo("sesion");
    QString direccion;
    {
        const QDBusConnection sesion = QDBusConnection::connectToBus(QDBusConnection::SessionBus, nombre);
        if (sesion.isConnected()) {
            const QDBusReply<QString> respuesta = sesion.call(
                QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                               QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress")),
                QDBus::Block, kLimiteServicioMs);
            direccion = respuesta.isValid() ? respuesta.value() : QString();
            if (!direccion.isEmpty()) EnciendeAccesibilidad(sesion);
        }
    }
    QDBusConnection::disconnectFromBus(nombre);
    return direccion;
}

void cVigiaFoco::Conecta() {
    if (!m_encendido || !m_nombre.isEmpty()) return;
    const QString direccion = Direccion();
    const QString nombre = NombreNuevo("foco");
    QDBusConnection bus =
        direccion.isEmpty() ? QDBusConnection(QString()) : QDBusConnection::connectToBus(direccion, nombre);
    if (!bus.isConnected()) {
        QDBusConnection::disconnectFromBus(nombre);
        m_reintento.start();
        emit Conectado(false);
        return;
    }
    m_nombre = nombre;
    bus.connect(QString(), kRutaLocal, kInterfazLocal, kDesconectado, this, SLOT(Perdido()));
    bus.connect(QString(), QString(), kInterfazSuceso, kCambioDeEstado, kConFoco, QString(), this,
                SLOT(CambiaEstado(QDBusMessage)));
    QDBusMessage registra = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("/org/a11y/atspi/registry"),
        QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("RegisterEvent"));
    registra << kEvento << QStringList() << QString();
    Llama(registra, kLimiteServicioMs,
          [this](const QDBusMessage &respuesta) { emit Conectado(respuesta.type() == QDBusMessage::ReplyMessage); });
}

void cVigiaFoco::Perdido() {
    // What was known of the programs on it can't change any more: it counts as unknown.
    for (const Programa &programa : std::as_const(m_programas))
        if (programa.proceso != 0) emit Respuesta(programa.proceso, static_cast<int>(FocoAccesible::Rol::Desconocido));
    Desconecta();
    emit Conectado(false);
    if (m_encendido) m_reintento.start();
}

void cVigiaFoco::Llama(const QDBusMessage &mensaje, int limiteMs, Resultado resultado) {
    auto *espera = new QDBusPendingCallWatcher(Bus().asyncCall(mensaje, limiteMs), this);
    connect(espera, &QDBusPendingCallWatcher::finished, this, [espera, resultado = std::move(resultado)] {
        espera->deleteLater();
        resultado(espera->reply());
    });
}

void cVigiaFoco::CambiaEstado(const QDBusMessage &aviso) {
    if (m_nombre.isEmpty() || aviso.arguments().value(1).toInt() != 1) return;  // it has lost the focus
    const QString nombre = aviso.service(), objeto = aviso.path();
    Programa &programa = m_programas[nombre];
    const quint32 vuelta = programa.vuelta = ++m_vueltas;
    if (programa.proceso != 0) {
        PreguntaRol(nombre, objeto, vuelta);
        return;
    }
    QDBusMessage proceso = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixProcessID"));
    proceso << nombre;
    Llama(proceso, kLimiteRolMs, [this, nombre, objeto, vuelta](const QDBusMessage &respuesta) {
        if (!m_programas.contains(nombre)) return;
        m_programas[nombre].proceso = respuesta.arguments().value(0).toInt();
        if (m_programas[nombre].proceso != 0) PreguntaRol(nombre, objeto, vuelta);
    });
}

void cVigiaFoco::PreguntaRol(const QString &nombre, const QString &objeto, quint32 vuelta) {
    const int proceso = m_programas[nombre].proceso;
    // Our own fields are known without asking.
    if (m_programas[nombre].vuelta != vuelta || proceso == QCoreApplication::applicationPid()) return;
    emit Pregunta(proceso);
    Llama(QDBusMessage::createMethodCall(nombre, objeto, QStringLiteral("org.a11y.atspi.Accessible"),
                                         QStringLiteral("GetRole")),
          kLimiteRolMs, [this, nombre, proceso, vuelta](const QDBusMessage &respuesta) {
              if (!m_programas.contains(nombre) || m_programas[nombre].vuelta != vuelta) return;
              using Rol = FocoAccesible::Rol;
              Rol rol = Rol::Desconocido;
              if (respuesta.type() == QDBusMessage::ReplyMessage)
                  rol = respuesta.arguments().value(0).toUInt() == kRolContrasena ? Rol::Secreto : Rol::Corriente;
              emit Respuesta(proceso, static_cast<int>(rol));
          });
}

}  // namespace ondalis
