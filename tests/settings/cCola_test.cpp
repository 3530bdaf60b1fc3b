#include "settings/cCola.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace ondalis {
namespace {

using Clase = cCola::Clase;

class cColaTest : public testing::Test {
protected:
    void Pon(Clase clase, const std::string &nombre) {
        cola.Pon(clase, [this, nombre] { orden.push_back(nombre); });
    }
    // The event loop's turns until nothing of ours is left.
    static void Gira() {
        for (int i = 0; i < 100; ++i) QCoreApplication::processEvents();
    }

    cCola cola;
    std::vector<std::string> orden;
    bool modal = false;
};

using Orden = std::vector<std::string>;

TEST_F(cColaTest, ClassesAreDeliveredInTheirOrderWhateverTheOrderOfArrival) {
    Pon(Clase::Tic, "tic");
    Pon(Clase::Orden, "orden");
    Pon(Clase::Tecla, "tecla");
    Pon(Clase::Motor, "motor");
    Pon(Clase::Inicio, "inicio");
    Gira();
    EXPECT_EQ(orden, (Orden{"inicio", "motor", "tecla", "orden", "tic"}));
}

TEST_F(cColaTest, WithinAClassTheFirstGoesFirst) {
    for (const char *nombre : {"a", "b", "c"}) Pon(Clase::Motor, nombre);
    cola.DejaCorrer();
    EXPECT_EQ(orden, (Orden{"a", "b", "c"}));
}

TEST_F(cColaTest, NothingRunsInsidePon) {
    Pon(Clase::Inicio, "inicio");
    EXPECT_TRUE(orden.empty());
}

TEST_F(cColaTest, TheEventLoopGetsItsTurnsBetweenHandlers) {
    int extremos[2];
    ASSERT_EQ(pipe(extremos), 0);
    QSocketNotifier otro(extremos[0], QSocketNotifier::Read);
    QObject::connect(&otro, &QSocketNotifier::activated, [&] {
        orden.push_back("otro");
        otro.setEnabled(false);
    });
    cola.Pon(Clase::Motor, [&] { EXPECT_EQ(write(extremos[1], "x", 1), 1); });
    for (int i = 0; i < 50; ++i) Pon(Clase::Motor, "motor");
    Gira();
    const auto sitio = std::find(orden.begin(), orden.end(), "otro");
    EXPECT_LT(sitio - orden.begin(), 10);
    EXPECT_EQ(orden.size(), 51u);
    close(extremos[0]);
    close(extremos[1]);
}

TEST_F(cColaTest, AKeyThatComesDuringAKeyWaitsForItsEnd) {
    cola.Pon(Clase::Tecla, [&] {
        orden.push_back("[");
        Pon(Clase::Tecla, "segunda");
        cola.DejaCorrer();
        Gira();
        orden.push_back("]");
    });
    Gira();
    EXPECT_EQ(orden, (Orden{"[", "]", "segunda"}));
}

TEST_F(cColaTest, AKeyThatComesDuringAnyOtherHandlerWaitsForItsEndToo) {
    for (const Clase clase : {Clase::Inicio, Clase::Motor, Clase::Orden, Clase::Tic}) {
        orden.clear();
        cola.Pon(clase, [&] {
            Pon(Clase::Tecla, "tecla");
            cola.DejaCorrer();
            orden.push_back("fin");
        });
        Gira();
        EXPECT_EQ(orden, (Orden{"fin", "tecla"}));
    }
}

TEST_F(cColaTest, EngineEventsAreDeliveredInsideAKeyThatLetsEventsRun) {
    cola.Pon(Clase::Tecla, [&] {
        Pon(Clase::Motor, "motor");
        cola.DejaCorrer();
        orden.push_back("fin");
    });
    Gira();
    EXPECT_EQ(orden, (Orden{"motor", "fin"}));
}

TEST_F(cColaTest, AKeyIsDeliveredInsideAKeyThatWaitsInAModalWindow) {
    cola.SetHayModal([this] { return modal; });
    cola.Pon(Clase::Tecla, [&] {
        modal = true;
        Pon(Clase::Tecla, "dentro");
        Gira();
        modal = false;
        orden.push_back("fin");
    });
    Gira();
    EXPECT_EQ(orden, (Orden{"dentro", "fin"}));
}

TEST_F(cColaTest, AKeyThatWaitedWhenTheModalWindowOpenedIsDeliveredInsideAfterDespierta) {
    cola.SetHayModal([this] { return modal; });
    cola.Pon(Clase::Tecla, [&] {
        Pon(Clase::Tecla, "dentro");
        Gira();  // not yet: no window is open
        EXPECT_TRUE(orden.empty());
        modal = true;
        cola.Despierta();
        Gira();
        modal = false;
        orden.push_back("fin");
    });
    Gira();
    EXPECT_EQ(orden, (Orden{"dentro", "fin"}));
}

TEST_F(cColaTest, ATickInsideATickIsDropped) {
    cola.Pon(Clase::Tic, [&] {
        Pon(Clase::Tic, "dentro");
        cola.DejaCorrer();
        orden.push_back("fin");
    });
    Gira();
    EXPECT_EQ(orden, (Orden{"fin"}));
}

TEST_F(cColaTest, ATickInsideATickThatWaitsInAModalWindowIsDelivered) {
    cola.SetHayModal([this] { return modal; });
    cola.Pon(Clase::Tic, [&] {
        modal = true;
        Pon(Clase::Tic, "dentro");
        Gira();
        modal = false;
        orden.push_back("fin");
    });
    Gira();
    EXPECT_EQ(orden, (Orden{"dentro", "fin"}));
}

TEST_F(cColaTest, ATickInsideAnotherHandlerIsDelivered) {
    cola.Pon(Clase::Orden, [&] {
        Pon(Clase::Tic, "tic");
        cola.DejaCorrer();
        orden.push_back("fin");
    });
    Gira();
    EXPECT_EQ(orden, (Orden{"tic", "fin"}));
}

TEST_F(cColaTest, WhileARetentionLivesNothingIsDeliveredAndNothingIsLost) {
    {
        const cCola::Retencion fuera(cola);
        {
            const cCola::Retencion dentro(cola);
            Pon(Clase::Motor, "motor");
            cola.DejaCorrer();
        }
        Gira();
        EXPECT_TRUE(orden.empty());
    }
    Gira();
    EXPECT_EQ(orden, (Orden{"motor"}));
}

TEST_F(cColaTest, LettingEventsRunDeliversWhatHandlersAddAndRepaints) {
    int repintados = 0;
    cola.SetRepinta([&] { ++repintados; });
    cola.Pon(Clase::Motor, [&] { Pon(Clase::Tic, "luego"); });
    cola.DejaCorrer();
    EXPECT_EQ(orden, (Orden{"luego"}));
    EXPECT_EQ(repintados, 1);
}

TEST_F(cColaTest, AHandlerThatAlwaysAddsAnotherDoesNotKeepDejaCorrerForEver) {
    int corridas = 0;
    std::function<void()> otra = [&] {
        ++corridas;
        cola.Pon(Clase::Motor, otra);
    };
    cola.Pon(Clase::Motor, otra);
    cola.DejaCorrer();
    const int alVolver = corridas;
    EXPECT_GT(alVolver, 1);
    // What was left over comes with the event loop's next turn.
    QCoreApplication::processEvents();
    EXPECT_GT(corridas, alVolver);
    cola.Cierra();
}

TEST_F(cColaTest, AlTerminarRunsAtOnceWhenNoHandlerRuns) {
    bool hecho = false;
    cola.AlTerminar([&] { hecho = true; });
    EXPECT_TRUE(hecho);
}

TEST_F(cColaTest, AlTerminarRunsAfterTheOutermostHandler) {
    cola.Pon(Clase::Orden, [&] {
        EXPECT_TRUE(cola.EnManejador());
        cola.Pon(Clase::Motor, [&] {
            cola.AlTerminar([&] { orden.push_back("final"); });
            orden.push_back("dentro");
        });
        cola.DejaCorrer();
        orden.push_back("fuera");
    });
    Gira();
    EXPECT_EQ(orden, (Orden{"dentro", "fuera", "final"}));
    EXPECT_FALSE(cola.EnManejador());
}

TEST_F(cColaTest, BlockingReturnsAtOnceWhenTheConditionHolds) {
    EXPECT_TRUE(cola.EsperaBloqueando([] { return true; }, -1));
}

TEST_F(cColaTest, BlockingEndsAtItsDeadlineWithWhatTheConditionSaidLast) {
    QElapsedTimer reloj;
    reloj.start();
    EXPECT_FALSE(cola.EsperaBloqueando([] { return false; }, 40));
    EXPECT_GE(reloj.elapsed(), 39);
    EXPECT_LT(reloj.elapsed(), 4000);
    EXPECT_FALSE(cola.EsperaBloqueando([] { return false; }, 0));
}

TEST_F(cColaTest, ADeadlineIsKeptAlsoWhenWakeUpsComeAllTheTime) {
    QTimer ruido;
    QObject::connect(&ruido, &QTimer::timeout, [this] { cola.Despierta(); });
    ruido.start(1);
    QElapsedTimer reloj;
    reloj.start();
    EXPECT_FALSE(cola.EsperaBloqueando([] { return false; }, 30));
    EXPECT_GE(reloj.elapsed(), 29);
}

TEST_F(cColaTest, BlockingWithoutLimitEndsWhenAnotherThreadWakesIt) {
    std::atomic<bool> listo{false};
    std::thread hilo([&] {
        listo = true;
        cola.Despierta();
    });
    EXPECT_TRUE(cola.EsperaBloqueando([&] { return listo.load(); }, -1));
    hilo.join();
}

TEST_F(cColaTest, NothingIsDeliveredWhileTheCallerIsBlockedAndAllAfterwards) {
    Pon(Clase::Motor, "motor");
    Pon(Clase::Tecla, "tecla");
    cola.EsperaBloqueando([] { return false; }, 5);
    EXPECT_TRUE(orden.empty());
    Gira();
    EXPECT_EQ(orden, (Orden{"motor", "tecla"}));
}

TEST_F(cColaTest, OtherTimersAreServedWhileTheCallerIsBlocked) {
    bool servido = false;
    QTimer::singleShot(1, [&] { servido = true; });
    EXPECT_TRUE(cola.EsperaBloqueando([&] { return servido; }, 5000));
}

TEST_F(cColaTest, WhatSeveralThreadsPutAmongWakeUpsArrivesOnceEachAndInEachOnesOrder) {
    constexpr int kHilos = 4;
    constexpr int kPorHilo = 500;
    std::vector<std::vector<int>> llegados(kHilos);
    int total = 0;
    std::vector<std::thread> hilos;
    for (int h = 0; h < kHilos; ++h)
        hilos.emplace_back([&, h] {
            for (int i = 0; i < kPorHilo; ++i) {
                cola.Pon(Clase::Motor, [&, h, i] {
                    llegados[static_cast<std::size_t>(h)].push_back(i);
                    ++total;
                });
                cola.Despierta();
            }
        });
    while (total < kHilos * kPorHilo) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    for (auto &hilo : hilos) hilo.join();
    for (const auto &uno : llegados) {
        ASSERT_EQ(uno.size(), static_cast<std::size_t>(kPorHilo));
        EXPECT_TRUE(std::is_sorted(uno.begin(), uno.end()));
    }
}

TEST_F(cColaTest, AfterClosingNothingIsDeliveredAndNothingAccepted) {
    Pon(Clase::Motor, "antes");
    cola.Cierra();
    Pon(Clase::Motor, "despues");
    Gira();
    cola.DejaCorrer();
    EXPECT_TRUE(orden.empty());
}

TEST_F(cColaTest, ADroppedActionMayTouchTheQueueWhenItDies) {
    // Its destructor puts another action: that must neither lock up nor be accepted by a closed queue.
    auto centinela = std::shared_ptr<int>(new int, [this](int *p) {
        delete p;
        Pon(Clase::Motor, "del destructor");
    });
    cola.Pon(Clase::Motor, [centinela = std::move(centinela)] {});
    cola.Cierra();
    Gira();
    EXPECT_TRUE(orden.empty());
}

}  // namespace
}  // namespace ondalis
