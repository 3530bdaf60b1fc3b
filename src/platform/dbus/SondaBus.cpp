#include "platform/dbus/SondaBus.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QByteArray>
#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QStringList>
#include <cerrno>
#include <cstddef>
#include <cstring>

namespace ondalis {

namespace {

constexpr std::chrono::milliseconds kLimiteAlArrancar(500);

// Names of the local sockets in an address, a name in the abstract space beginning with a zero byte.
QList<QByteArray> Locales(const QString &direccion) {
    QList<QByteArray> nombres;
    for (const QString &una : direccion.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        if (!una.startsWith(QLatin1String("unix:"))) continue;
        for (const QString &clave : una.mid(5).split(QLatin1Char(','))) {
            const QByteArray valor = QByteArray::fromPercentEncoding(clave.section(QLatin1Char('='), 1).toUtf8());
            if (clave.startsWith(QLatin1String("path="))) nombres << valor;
            if (clave.startsWith(QLatin1String("abstract="))) nombres << QByteArray(1, '\0') + valor;
        }
    }
    return nombres;
}

}  // namespace

QString DireccionBusSesion() {
    QString direccion = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!direccion.isEmpty()) return direccion;
    const QString habitual = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    return QFileInfo::exists(habitual) ? QStringLiteral("unix:path=") + habitual : QString();
}

QString DireccionBusSistema() {
    const QString direccion = qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS");
    return direccion.isEmpty() ? QStringLiteral("unix:path=/run/dbus/system_bus_socket") : direccion;
}

// The first word of the protocol: a daemon that lives answers "OK" and its identity, or at least refuses.
class cSondaBus::Saludo {
public:
    ~Saludo() {
        if (m_socket >= 0) close(m_socket);
    }
    Saludo() = default;
    Saludo(const Saludo &) = delete;
    Saludo &operator=(const Saludo &) = delete;

    // Calla: to be asked again when the socket can be read; Responde or NoEsta: known already.
    VidaBus Empieza(const QString &direccion) {
        if (direccion.isEmpty()) return VidaBus::NoEsta;
        const QList<QByteArray> nombres = Locales(direccion);
        if (nombres.isEmpty()) return VidaBus::Responde;
        for (const QByteArray &nombre : nombres)
            if (Conecta(nombre)) return VidaBus::Calla;
        return m_lleno ? VidaBus::Calla : VidaBus::NoEsta;
    }
    // When the socket can be read: a word, or the end of the connection.
    VidaBus Lee() {
        char letra = 0;
        const ssize_t n = recv(m_socket, &letra, 1, MSG_DONTWAIT);
        if (n > 0) return VidaBus::Responde;
        return n < 0 && (errno == EAGAIN || errno == EINTR) ? VidaBus::Calla : VidaBus::NoEsta;
    }
    int Socket() const { return m_socket; }

private:
    bool Conecta(const QByteArray &nombre) {
        sockaddr_un donde{};
        if (nombre.size() >= static_cast<qsizetype>(sizeof donde.sun_path)) return false;
        donde.sun_family = AF_UNIX;
        std::memcpy(donde.sun_path, nombre.constData(), static_cast<std::size_t>(nombre.size()));
        const bool abstracto = nombre.startsWith('\0');
        const auto largo = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) +
                                                  static_cast<std::size_t>(nombre.size()) + (abstracto ? 0 : 1));
        if (m_socket >= 0) close(m_socket);
        m_socket = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        if (m_socket < 0) return false;
        if (connect(m_socket, reinterpret_cast<const sockaddr *>(&donde), largo) != 0) {
            m_lleno = errno == EAGAIN;  // many wait already for one who accepts nobody
            close(m_socket);
            m_socket = -1;
            return false;
        }
        const QByteArray palabra =
            QByteArray(1, '\0') + "AUTH EXTERNAL " + QByteArray::number(getuid()).toHex() + "\r\n";
        return send(m_socket, palabra.constData(), static_cast<std::size_t>(palabra.size()), MSG_NOSIGNAL) ==
               palabra.size();
    }

    int m_socket = -1;
    bool m_lleno = false;
};

VidaBus SondeaBus(const QString &direccion, std::chrono::milliseconds limite) {
    cSondaBus::Saludo saludo;
    VidaBus vida = saludo.Empieza(direccion);
    const QDeadlineTimer plazo(limite);
    while (vida == VidaBus::Calla && saludo.Socket() >= 0) {
        pollfd espera{saludo.Socket(), POLLIN, 0};
        const int n = poll(&espera, 1, static_cast<int>(plazo.remainingTime()));
        if (n > 0) vida = saludo.Lee();
        if (n == 0) break;
    }
    return vida;
}

cSondaBus::cSondaBus() {
    m_plazo.setSingleShot(true);
    QObject::connect(&m_plazo, &QTimer::timeout, &m_plazo, [this] { Acaba(m_alVencer); });
}

cSondaBus::~cSondaBus() { Deja(); }

void cSondaBus::Deja() {
    m_plazo.stop();
    m_aviso.reset();
    m_saludo.reset();
    m_alSaber = {};
}

void cSondaBus::Pregunta(const QString &direccion, std::chrono::milliseconds limite,
                         std::function<void(VidaBus)> alSaber) {
    Deja();
    m_alSaber = std::move(alSaber);
    m_saludo = std::make_unique<Saludo>();
    m_alVencer = m_saludo->Empieza(direccion);
    const bool porSaber = m_alVencer == VidaBus::Calla;
    if (porSaber && m_saludo->Socket() >= 0) {
        m_aviso = std::make_unique<QSocketNotifier>(m_saludo->Socket(), QSocketNotifier::Read);
        QObject::connect(m_aviso.get(), &QSocketNotifier::activated, &m_plazo, [this] { Lee(); });
    }
    m_plazo.start(porSaber ? limite : std::chrono::milliseconds(0));
}

// The answer is given by the timer: the notifier, which is at work in this call, dies with it.
void cSondaBus::Lee() {
    const VidaBus vida = m_saludo->Lee();
    if (vida == VidaBus::Calla) return;
    m_aviso->setEnabled(false);
    m_alVencer = vida;
    m_plazo.start(0);
}

void cSondaBus::Acaba(VidaBus vida) {
    const auto alSaber = std::move(m_alSaber);
    Deja();
    if (alSaber) alSaber(vida);
}

void GuardaDelBusQueCalla() {
    if (SondeaBus(DireccionBusSesion(), kLimiteAlArrancar) != VidaBus::Calla) return;
    const char *variable = "DBUS_SESSION_BUS_ADDRESS";
    const bool habia = qEnvironmentVariableIsSet(variable);
    const QByteArray verdadera = qgetenv(variable);
    qputenv(variable, "unix:path=/nonexistent/bus");
    QDBusConnection::sessionBus();  // its failure is kept
    if (habia)
        qputenv(variable, verdadera);
    else
        qunsetenv(variable);
}

}  // namespace ondalis
