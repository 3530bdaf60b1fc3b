// The priority as RealtimeKit raises it: a stand-in of it on a bus of the test's own.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QProcess>
#include <QThread>
#include <mutex>
#include <vector>

#include "platform/sistema/cPrioridadUnix.h"

namespace ondalis {
namespace {

const QString kNombre = QStringLiteral("org.freedesktop.RealtimeKit1");

struct Peticion {
    id_t hilo;
    int valor;
};

class Suplente : public QDBusVirtualObject {
public:
    enum class Modo { Concede, Rehusa, Calla };

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &mensaje, const QDBusConnection &bus) override {
        const std::lock_guard cerrojo(m_cerrojo);
        const auto argumentos = mensaje.arguments();
        if (mensaje.member() != QStringLiteral("MakeThreadHighPriority") || mensaje.signature() != QStringLiteral("ti"))
            return false;
        m_peticiones.push_back({argumentos[0].toUInt(), argumentos[1].toInt()});
        if (m_modo == Modo::Calla) return true;
        if (m_modo == Modo::Concede) setpriority(PRIO_PROCESS, m_peticiones.back().hilo, m_peticiones.back().valor);
        bus.send(m_modo == Modo::Concede ? mensaje.createReply()
                                         : mensaje.createErrorReply(QDBusError::AccessDenied, QStringLiteral("no")));
        return true;
    }
    void Empieza(Modo modo) {
        const std::lock_guard cerrojo(m_cerrojo);
        m_modo = modo;
        m_peticiones.clear();
    }
    std::vector<Peticion> Peticiones() {
        const std::lock_guard cerrojo(m_cerrojo);
        return m_peticiones;
    }

private:
    std::mutex m_cerrojo;
    Modo m_modo = Modo::Concede;
    std::vector<Peticion> m_peticiones;
};

class PrioridadPorBus : public testing::Test {
protected:
    static void SetUpTestSuite() {
        bus.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
        if (!bus.waitForStarted() || !bus.waitForReadyRead()) return;
        const QByteArray direccion = bus.readLine().trimmed();
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", direccion);
        auto suya = QDBusConnection::connectToBus(QString::fromUtf8(direccion), QStringLiteral("suplente"));
        suplente.moveToThread(&hilo);
        hilo.start();
        hay = suya.registerVirtualObject(QStringLiteral("/org/freedesktop/RealtimeKit1"), &suplente) &&
              suya.registerService(kNombre);
    }
    static void TearDownTestSuite() {
        hilo.quit();
        hilo.wait();
        QDBusConnection::disconnectFromBus(QStringLiteral("suplente"));
        bus.kill();
        bus.waitForFinished();
    }
    void SetUp() override {
        if (!hay) GTEST_SKIP() << "no dbus-daemon on this machine";
    }
    void TearDown() override {
        prioridad.SetClase(false);
        prioridad.SetHilo(false);
    }
    static bool PuedeSubir() {
        const bool puede = setpriority(PRIO_PROCESS, 0, inicial - 1) == 0;
        setpriority(PRIO_PROCESS, 0, inicial);
        return puede;
    }

    static inline QProcess bus{nullptr};
    static inline QThread hilo{nullptr};
    static inline Suplente suplente;
    static inline bool hay = false;
    static inline const int inicial = getpriority(PRIO_PROCESS, 0);
    cPrioridadUnix prioridad;
};

TEST_F(PrioridadPorBus, EachThreadIsRaisedByRealtimeKitAndTheCallersAboveThem) {
    suplente.Empieza(Suplente::Modo::Concede);
    EXPECT_TRUE(prioridad.SetClase(true));
    const auto todos = suplente.Peticiones();
    EXPECT_GE(todos.size(), 3u);  // ours, the stand-in's, the toolkit's own for the bus
    bool propio = false;
    for (const Peticion &una : todos) {
        EXPECT_EQ(una.valor, std::min(-5, inicial));
        propio = propio || una.hilo == static_cast<id_t>(gettid());
    }
    EXPECT_TRUE(propio);
    suplente.Empieza(Suplente::Modo::Concede);
    EXPECT_TRUE(prioridad.SetHilo(true));
    ASSERT_EQ(suplente.Peticiones().size(), 1u);
    EXPECT_EQ(suplente.Peticiones()[0].hilo, static_cast<id_t>(gettid()));
    EXPECT_EQ(suplente.Peticiones()[0].valor, std::min(-10, inicial));
}

TEST_F(PrioridadPorBus, PuttingItBackAsksNobody) {
    suplente.Empieza(Suplente::Modo::Concede);
    prioridad.SetClase(true);
    prioridad.SetHilo(true);
    suplente.Empieza(Suplente::Modo::Concede);
    EXPECT_TRUE(prioridad.SetClase(false));
    EXPECT_TRUE(prioridad.SetHilo(false));
    EXPECT_TRUE(suplente.Peticiones().empty());
    EXPECT_EQ(getpriority(PRIO_PROCESS, 0), inicial);
}

TEST_F(PrioridadPorBus, ARefusalLeavesItToOurOwnRightAndIsAskedForOnce) {
    const bool puede = PuedeSubir();
    suplente.Empieza(Suplente::Modo::Rehusa);
    EXPECT_EQ(prioridad.SetClase(true), puede);
    EXPECT_EQ(suplente.Peticiones().size(), 1u);
    EXPECT_EQ(getpriority(PRIO_PROCESS, 0), puede ? std::min(-5, inicial) : inicial);
}

TEST_F(PrioridadPorBus, ASilentRealtimeKitCostsItsLimitOnceAndNoMore) {
    const bool puede = PuedeSubir();
    suplente.Empieza(Suplente::Modo::Calla);
    QElapsedTimer reloj;
    reloj.start();
    EXPECT_EQ(prioridad.SetClase(true), puede);
    EXPECT_GE(reloj.elapsed(), cPrioridadUnix::LimiteMs / 2);
    EXPECT_LT(reloj.elapsed(), 20 * cPrioridadUnix::LimiteMs);  // the library's own limit is 25 s
    EXPECT_EQ(suplente.Peticiones().size(), 1u);
}

TEST_F(PrioridadPorBus, ASystemBusThatHangsCostsTheLimitAndNoMore) {
    const bool puede = PuedeSubir();
    suplente.Empieza(Suplente::Modo::Concede);
    kill(static_cast<pid_t>(bus.processId()), SIGSTOP);
    QElapsedTimer reloj;
    reloj.start();
    EXPECT_EQ(prioridad.SetClase(true), puede);
    EXPECT_LT(reloj.elapsed(), 20 * cPrioridadUnix::LimiteMs);
    kill(static_cast<pid_t>(bus.processId()), SIGCONT);
    EXPECT_TRUE(suplente.Peticiones().empty());
}

}  // namespace
}  // namespace ondalis
