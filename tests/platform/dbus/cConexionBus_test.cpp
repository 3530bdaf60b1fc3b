#include "platform/dbus/cConexionBus.h"

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusReply>
#include <QElapsedTimer>
#include <algorithm>

#include "fakes/BusPropio.h"
#include "fakes/RegistroPropio.h"
#include "platform/dbus/cServicioVoz.h"

namespace ondalis::prueba {
namespace {

constexpr qint64 kBreve = 1000;  // milliseconds; the library's own limits are 25 s

// The longest time for which the event loop isn't served.
class Pulso {
public:
    Pulso() {
        m_desde.start();
        QObject::connect(&m_timer, &QTimer::timeout, [this] { m_mayor = std::max(m_mayor, m_desde.restart()); });
        m_timer.start(5);
    }
    qint64 Mayor() const { return std::max(m_mayor, m_desde.elapsed()); }

private:
    QTimer m_timer;
    QElapsedTimer m_desde;
    qint64 m_mayor = 0;
};

TEST(cConexionBus, ANameThatAnotherHoldsIsTakenWhenItLetsGo) {
    BusPropio bus;
    QDBusConnection otro = bus.Cliente();
    ASSERT_TRUE(otro.registerService(QLatin1String(cServicioVoz::Nombre)));
    const auto dueno = [&otro] { return otro.interface()->serviceOwner(QLatin1String(cServicioVoz::Nombre)).value(); };
    RegistroPropio registro;
    cConexionBus conexion(registro.Log());
    QString nuestro;
    conexion.AlConectar([&](QDBusConnection &conectada) {
        nuestro = conectada.baseService();
        conexion.NombraComo(conectada, cServicioVoz::Nombre);
    });
    conexion.Conecta();
    ASSERT_TRUE(EsperaA([&] { return registro.LineasLog().size() == 1; }));
    EXPECT_EQ(dueno(), otro.baseService());
    otro.unregisterService(QLatin1String(cServicioVoz::Nombre));
    EXPECT_TRUE(EsperaA([&] { return dueno() == nuestro; }));
}

TEST(cConexionBus, WithoutABusItReturnsAtOnceAndTakesTheBusThatComes) {
    BusPropio bus;
    bus.Mata();
    RegistroPropio registro;
    cConexionBus conexion(registro.Log());
    int veces = 0;
    conexion.AlConectar([&veces](QDBusConnection &) { ++veces; });
    conexion.Conecta();
    EXPECT_EQ(veces, 0);
    ASSERT_TRUE(EsperaA([&] { return registro.LineasLog().size() == 1; }));
    EXPECT_FALSE(conexion.Conectada());
    bus.Arranca();
    ASSERT_TRUE(EsperaA([&] { return conexion.Conectada(); }));
    EXPECT_EQ(veces, 1);
    EXPECT_EQ(registro.LineasLog().size(), 1);  // one line for the whole absence
}

TEST(cConexionBus, ABusThatHangsNeverHoldsTheLoopUpAndIsTakenWhenItGoesOn) {
    BusPropio bus;
    RegistroPropio registro;
    cConexionBus conexion(registro.Log());
    bus.Para();
    const Pulso pulso;
    conexion.Conecta();
    EXPECT_TRUE(EsperaA([&] { return registro.LineasLog().size() == 1; }));
    EXPECT_TRUE(registro.LineasLog()[0].contains(QStringLiteral("no contesta")));
    EXPECT_LT(pulso.Mayor(), kBreve);
    EXPECT_FALSE(conexion.Conectada());
    bus.Sigue();
    EXPECT_TRUE(EsperaA([&] { return conexion.Conectada(); }));
    EXPECT_LT(pulso.Mayor(), kBreve);
}

TEST(cConexionBus, ConnectingAtOnceWaitsForABusThatHangsNoLongerThanItsLimit) {
    BusPropio bus;
    RegistroPropio registro;
    cConexionBus conexion(registro.Log());
    bus.Para();
    QElapsedTimer reloj;
    reloj.start();
    conexion.ConectaYa(std::chrono::milliseconds(100));
    EXPECT_GE(reloj.elapsed(), 100);
    EXPECT_LT(reloj.elapsed(), kBreve);
    EXPECT_FALSE(conexion.Conectada());
    bus.Sigue();
    EXPECT_TRUE(EsperaA([&] { return conexion.Conectada(); }));
}

TEST(cConexionBus, ABusThatHangsLaterHoldsNoCallUp) {
    BusPropio bus;
    RegistroPropio registro;
    cConexionBus conexion(registro.Log());
    conexion.ConectaYa();
    ASSERT_TRUE(conexion.Conectada());
    bus.Para();
    QElapsedTimer reloj;
    reloj.start();
    conexion.AlConectar([&](QDBusConnection &conectada) { conexion.NombraComo(conectada, cServicioVoz::Nombre); });
    conexion.AvisaCambio(cServicioVoz::Ruta, cServicioVoz::Interfaz, {{QStringLiteral("DDELink"), QString()}});
    EXPECT_LT(reloj.elapsed(), kBreve);
    bus.Sigue();
    QDBusConnection cliente = bus.Cliente();
    EXPECT_TRUE(EsperaA([&] {
        const QDBusReply<bool> hay = cliente.interface()->isServiceRegistered(QLatin1String(cServicioVoz::Nombre));
        return hay.isValid() && hay.value();
    }));
}

TEST(cConexionBus, WhoComesLateIsRegisteredAtOnceAndALossIsTold) {
    BusPropio bus;
    RegistroPropio registro;
    cConexionBus conexion(registro.Log());
    conexion.ConectaYa();
    int veces = 0, perdidas = 0;
    conexion.AlConectar([&veces](QDBusConnection &) { ++veces; });
    conexion.AlPerder([&perdidas] { ++perdidas; });
    EXPECT_EQ(veces, 1);
    bus.Mata();
    ASSERT_TRUE(EsperaA([&] { return perdidas == 1; }));
    bus.Arranca();
    EXPECT_TRUE(EsperaA([&] { return veces == 2; }));
}

}  // namespace
}  // namespace ondalis::prueba
