#include "ctl/cCliente.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <cstdio>

namespace ondalis::ctl {

namespace {

const QString kServicio = QStringLiteral("com.ferrano.Ondalis");
const QString kRuta = QStringLiteral("/com/ferrano/Ondalis/Voice");
const QString kInterfaz = QStringLiteral("com.ferrano.Ondalis.Voice");
const QString kPropiedades = QStringLiteral("org.freedesktop.DBus.Properties");

// No speech is waited for here: the answer comes on acceptance. The time is for a reader that has to be started.
constexpr int kPlazoRespuestaMs = 120'000;

}  // namespace

cCliente::cCliente(const Argumentos &argumentos, QString comando)
    : m_a(argumentos),
      m_comando(std::move(comando)),
      m_bus(QDBusConnection::sessionBus()),
      m_vigia(kServicio, m_bus, QDBusServiceWatcher::WatchForUnregistration) {
    m_plazo.setSingleShot(true);
    connect(&m_plazo, &QTimer::timeout, this, [this] { Acaba(SinTiempo, QStringLiteral("se acabó el plazo")); });
}

void cCliente::Empieza() {
    if (!m_bus.isConnected()) {
        Acaba(SinLector, QStringLiteral("no hay bus de sesión"));
        return;
    }
    if (m_a.plazoMs > 0) m_plazo.start(m_a.plazoMs);
    // Heard from before the command goes out: a short speech may have ended when its answer is read.
    if (m_a.orden == Argumentos::Orden::Espera)
        m_bus.connect(kServicio, kRuta, kPropiedades, QStringLiteral("PropertiesChanged"), this,
                      SLOT(Cambiada(QString, QVariantMap, QStringList)));
    else if (m_a.espera)
        m_bus.connect(kServicio, kRuta, kInterfaz, QStringLiteral("Finished"), this, SLOT(Terminada(uint)));
    connect(&m_vigia, &QDBusServiceWatcher::serviceUnregistered, this,
            [this] { Acaba(SinLector, QStringLiteral("el lector ha terminado")); });
    Manda();
}

void cCliente::Manda() {
    QDBusMessage mensaje;
    if (m_a.orden == Argumentos::Orden::Espera) {
        mensaje = QDBusMessage::createMethodCall(kServicio, kRuta, kPropiedades, QStringLiteral("Get"));
        mensaje << kInterfaz << QStringLiteral("DDELink");
        mensaje.setAutoStartService(false);  // who only waits starts nothing
    } else {
        mensaje = QDBusMessage::createMethodCall(kServicio, kRuta, kInterfaz, QStringLiteral("ExecuteNumbered"));
        mensaje << m_comando;
    }
    auto *llamada = new QDBusPendingCallWatcher(m_bus.asyncCall(mensaje, kPlazoRespuestaMs), this);
    connect(llamada, &QDBusPendingCallWatcher::finished, this, &cCliente::Contestada);
}

void cCliente::Contestada(QDBusPendingCallWatcher *llamada) {
    llamada->deleteLater();
    const QDBusMessage respuesta = llamada->reply();
    if (respuesta.type() == QDBusMessage::ErrorMessage) {
        if (respuesta.errorName().startsWith(QLatin1String("com.ferrano.Ondalis.Error.")))
            Acaba(Rechazada, respuesta.errorMessage());
        else
            Acaba(SinLector, QStringLiteral("no hay lector: ") + respuesta.errorMessage());
        return;
    }
    if (m_a.orden == Argumentos::Orden::Espera) return;  // it is there; the change will tell
    m_numero = respuesta.arguments().value(0).toUInt();
    if (!m_a.espera || m_terminadas.contains(m_numero)) Acaba(Bien);
}

void cCliente::Terminada(uint numero) {
    if (m_numero == 0)
        m_terminadas.insert(numero);
    else if (numero == m_numero)
        Acaba(Bien);
}

void cCliente::Cambiada(const QString &interfaz, const QVariantMap &cambios, const QStringList &) {
    if (interfaz == kInterfaz && cambios.value(QStringLiteral("DDELink")).toString() == QLatin1String("StopSpeaking"))
        Acaba(Bien);
}

void cCliente::Acaba(int salida, const QString &mensaje) {
    if (m_acabado) return;
    m_acabado = true;
    if (!mensaje.isEmpty()) std::fprintf(stderr, "ondalisctl: %s\n", qUtf8Printable(mensaje));
    QCoreApplication::exit(salida);
}

}  // namespace ondalis::ctl
