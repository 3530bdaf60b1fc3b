// Without an X server: what the bus tells.
#include "platform/dbus/cVigiaBandeja.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "VigilanteFalso.h"
#include "fakes/BusPropio.h"
#include "fakes/RegistroPropio.h"

namespace ondalis::prueba {
namespace {

class cVigiaBandejaTest : public testing::Test {
protected:
    void Conecta() {
        conexion.ConectaYa();
        ASSERT_TRUE(conexion.Conectada());
        vigia.SetAlAparecer([this] { ++aparece; });
        vigia.SetAlDesaparecer([this] { ++desaparece; });
    }
    BusPropio bus;
    RegistroPropio registro;
    cConexionBus conexion{registro.Log()};
    cVigiaBandeja vigia{conexion};
    int aparece = 0, desaparece = 0;
};

TEST_F(cVigiaBandejaTest, AWatcherAloneIsNoPlaceAndItsPanelIsOne) {
    VigilanteFalso vigilante(bus.Cliente("vigilante"), false);
    Conecta();
    EXPECT_FALSE(vigia.HayEnElBus());
    vigilante.PonPanel(true);
    ASSERT_TRUE(EsperaA([this] { return aparece == 1; }));
    EXPECT_TRUE(vigia.HayEnElBus());
    vigilante.PonPanel(false);
    ASSERT_TRUE(EsperaA([this] { return desaparece == 1; }));
    EXPECT_FALSE(vigia.HayEnElBus());
}

TEST_F(cVigiaBandejaTest, AWatcherThatComesLaterOrAgainIsTold) {
    Conecta();
    EXPECT_FALSE(vigia.HayEnElBus());
    for (int vuelta = 1; vuelta <= 2; ++vuelta) {
        {
            const VigilanteFalso vigilante(bus.Cliente("vigilante"), true);
            ASSERT_TRUE(EsperaA([this, vuelta] { return aparece == vuelta; }));
            EXPECT_TRUE(vigia.HayEnElBus());
        }
        ASSERT_TRUE(EsperaA([this, vuelta] { return desaparece == vuelta; }));
        EXPECT_FALSE(vigia.HayEnElBus());
    }
}

TEST_F(cVigiaBandejaTest, TheFirstAnswerOfABusThatHangsIsWaitedForOnceAndNotLong) {
    Conecta();
    bus.Para();
    QElapsedTimer reloj;
    reloj.start();
    EXPECT_FALSE(vigia.HayEnElBus());
    EXPECT_LT(reloj.elapsed(), 3000);
    reloj.restart();
    EXPECT_FALSE(vigia.HayEnElBus());
    EXPECT_LT(reloj.elapsed(), 100);
    bus.Sigue();
    const VigilanteFalso vigilante(bus.Cliente("vigilante"), true);
    EXPECT_TRUE(EsperaA([this] { return aparece == 1; }));
}

TEST_F(cVigiaBandejaTest, ABusThatIsStartedAgainIsLookedAtAnew) {
    Conecta();
    bus.Mata();
    ASSERT_TRUE(EsperaA([this] { return !conexion.Conectada(); }));
    bus.Arranca();
    const VigilanteFalso vigilante(bus.Cliente("vigilante"), true);
    EXPECT_TRUE(EsperaA([this] { return aparece == 1; }));
}

}  // namespace
}  // namespace ondalis::prueba
