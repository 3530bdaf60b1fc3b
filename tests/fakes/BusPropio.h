// A message bus of the test's own, started, killed and started again at the same address. Its address is that of the
// session for everything that connects afterwards, and the same in the whole test program: the library asks for it
// once.
#pragma once

#include <gtest/gtest.h>
#include <signal.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

namespace ondalis::prueba {

// Serves events until `listo`; false after ten seconds.
inline bool EsperaA(const std::function<bool()> &listo) {
    const QDeadlineTimer plazo(10'000);
    QTimer alarma;
    alarma.start(10);
    while (!listo()) {
        if (plazo.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

class BusPropio {
public:
    BusPropio() {
        qputenv("DBUS_SESSION_BUS_ADDRESS", Direccion().toUtf8());
        Arranca();
    }
    ~BusPropio() { Mata(); }

    void Arranca() {
        m_proceso.start(QStringLiteral("dbus-daemon"),
                        {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                         QStringLiteral("--address=") + Direccion()});
        ASSERT_TRUE(m_proceso.waitForStarted());
        ASSERT_TRUE(m_proceso.waitForReadyRead());  // the address: it listens
        m_proceso.readAll();
    }
    void Mata() {
        m_proceso.kill();
        m_proceso.waitForFinished();
    }
    // The daemon hangs: it is there and answers nobody, until Sigue.
    void Para() { kill(static_cast<pid_t>(m_proceso.processId()), SIGSTOP); }
    void Sigue() { kill(static_cast<pid_t>(m_proceso.processId()), SIGCONT); }
    static QString Direccion() {
        static const QTemporaryDir carpeta(QStringLiteral("/tmp/ondalis-bus-XXXXXX"));
        return QStringLiteral("unix:path=") + carpeta.filePath(QStringLiteral("bus"));
    }
    // Another program's connection.
    QDBusConnection Cliente(const char *nombre = "cliente") {
        return QDBusConnection::connectToBus(Direccion(), QLatin1String(nombre) + QString::number(++Clientes()));
    }

private:
    static int &Clientes() {
        static int numero = 0;  // a connection's name means one connection in the process
        return numero;
    }
    QProcess m_proceso;
};

}  // namespace ondalis::prueba
