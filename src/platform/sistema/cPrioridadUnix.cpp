#include "platform/sistema/cPrioridadUnix.h"

#include <sys/resource.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QDir>
#include <algorithm>

#include "platform/dbus/SondaBus.h"

namespace ondalis {

namespace {
constexpr int kAlta = -5;
constexpr int kHiloAlto = -10;

// RealtimeKit on the system bus. Once it has refused or kept silent, the rest of the round is our own.
class Elevador {
public:
    bool Eleva(id_t hilo, int valor) {
        if (m_plazo.hasExpired() || !m_sirve) return false;
        if (!m_sondeado) {
            m_sondeado = true;
            const std::chrono::milliseconds resto(m_plazo.remainingTime());
            m_sirve = SondeaBus(DireccionBusSistema(), resto) == VidaBus::Responde;
            if (!m_sirve) return false;
        }
        const QDBusConnection bus = QDBusConnection::systemBus();
        QDBusMessage peticion = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.RealtimeKit1"), QStringLiteral("/org/freedesktop/RealtimeKit1"),
            QStringLiteral("org.freedesktop.RealtimeKit1"), QStringLiteral("MakeThreadHighPriority"));
        peticion << static_cast<qulonglong>(hilo) << valor;
        m_sirve =
            bus.isConnected() && bus.call(peticion, QDBus::Block, static_cast<int>(m_plazo.remainingTime())).type() ==
                                     QDBusMessage::ReplyMessage;
        return m_sirve;
    }

private:
    QDeadlineTimer m_plazo{cPrioridadUnix::LimiteMs};
    bool m_sirve = true;
    bool m_sondeado = false;
};

// Linux keeps a nice value for each thread; a call for a process reaches only the one that calls.
bool Pon(id_t hilo, int valor) { return setpriority(PRIO_PROCESS, hilo, valor) == 0; }
}  // namespace

cPrioridadUnix::cPrioridadUnix() : m_inicial(getpriority(PRIO_PROCESS, 0)) {}

bool cPrioridadUnix::SetClase(bool alta) {
    const int valor = alta ? std::min(kAlta, m_inicial) : m_inicial;
    bool todos = true;
    Elevador elevador;
    const QStringList hilos = QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &hilo : hilos)
        todos = ((alta && elevador.Eleva(hilo.toUInt(), valor)) || Pon(hilo.toUInt(), valor)) && todos;
    return todos && !hilos.isEmpty();
}

bool cPrioridadUnix::SetHilo(bool alta) {
    const auto hilo = static_cast<id_t>(gettid());
    if (!alta) return Pon(hilo, m_inicial);
    const int valor = std::min(kHiloAlto, m_inicial);
    return Elevador().Eleva(hilo, valor) || Pon(hilo, valor);
}

}  // namespace ondalis
