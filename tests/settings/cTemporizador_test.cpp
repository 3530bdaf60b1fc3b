#include "settings/cTemporizador.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QCoreApplication>

namespace ondalis {
namespace {

class cTemporizadorTest : public testing::Test {
protected:
    void SetUp() override {
        reloj.SetIntervalo(1);
        reloj.SetManejador([this] { ++tics; });
    }
    // Turns of the event loop until `listo`, or a generous number of expiries of a timer beside ours.
    bool Gira(const std::function<bool()> &listo) {
        int vueltas = 0;
        QTimer paso;
        QObject::connect(&paso, &QTimer::timeout, [&] { ++vueltas; });
        paso.start(1);
        while (!listo() && vueltas < 2000) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return listo();
    }
    void GiraVueltas(int cuantas) {
        int vueltas = 0;
        QTimer paso;
        QObject::connect(&paso, &QTimer::timeout, [&] { ++vueltas; });
        paso.start(1);
        while (vueltas < cuantas) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    cCola cola;
    cTemporizador reloj{cola};
    int tics = 0;
    bool modal = false;
};

TEST_F(cTemporizadorTest, ItIsOffUntilSwitchedOn) {
    EXPECT_FALSE(reloj.Enabled());
    GiraVueltas(5);
    EXPECT_EQ(tics, 0);
}

TEST_F(cTemporizadorTest, ItExpiresAgainAndAgain) {
    reloj.SetEnabled(true);
    EXPECT_TRUE(Gira([this] { return tics >= 3; }));
}

TEST_F(cTemporizadorTest, SwitchedOffAnExpiryThatWaitsInTheQueueDoesNothing) {
    reloj.SetEnabled(true);
    {
        const cCola::Retencion retencion(cola);
        GiraVueltas(10);
        reloj.SetEnabled(false);
    }
    GiraVueltas(10);
    EXPECT_EQ(tics, 0);
    EXPECT_FALSE(reloj.Enabled());
}

TEST_F(cTemporizadorTest, ExpiriesWhileNothingIsDeliveredBecomeOneTick) {
    reloj.SetEnabled(true);
    {
        const cCola::Retencion retencion(cola);
        GiraVueltas(20);
        reloj.SetIntervalo(1000000);
    }
    GiraVueltas(5);
    EXPECT_EQ(tics, 1);
}

TEST_F(cTemporizadorTest, AModalWindowOpenedInATickDoesNotStopTheTimer) {
    cola.SetHayModal([this] { return modal; });
    bool dentro = false;
    reloj.SetManejador([&] {
        if (++tics != 1) return;
        modal = true;
        dentro = Gira([this] { return tics >= 3; });
        modal = false;
    });
    reloj.SetEnabled(true);
    EXPECT_TRUE(Gira([&] { return dentro; }));
}

TEST_F(cTemporizadorTest, ATickDroppedInsideATickDoesNotStopTheTimer) {
    reloj.SetManejador([&] {
        if (++tics == 1) GiraVueltas(10);
    });
    reloj.SetEnabled(true);
    EXPECT_TRUE(Gira([this] { return tics >= 3; }));
}

TEST_F(cTemporizadorTest, AnIntervalOfZeroNeverExpires) {
    reloj.SetIntervalo(0);
    reloj.SetEnabled(true);
    GiraVueltas(5);
    EXPECT_EQ(tics, 0);
}

TEST_F(cTemporizadorTest, AnExpiryCostsOneWakeUp) {
    const auto despertares = [] {
        rusage uso{};
        getrusage(RUSAGE_THREAD, &uso);
        return uso.ru_nvcsw;  // times that the thread gave the processor away by waiting
    };
    reloj.SetIntervalo(20);
    reloj.SetEnabled(true);
    const auto antes = despertares();
    while (tics < 10) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_LE(despertares() - antes, 12);
}

TEST_F(cTemporizadorTest, AHandlerMaySwitchItOffAndOn) {
    reloj.SetManejador([&] {
        ++tics;
        reloj.SetEnabled(false);
        reloj.SetEnabled(true);
    });
    reloj.SetEnabled(true);
    EXPECT_TRUE(Gira([this] { return tics >= 3; }));
}

}  // namespace
}  // namespace ondalis
