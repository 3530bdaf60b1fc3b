// Notices that wait, handlers that call the control again, events of another thread, and the object's end.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "ControlDePrueba.h"

namespace ondalis::prueba {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Notices

TEST_F(ControlHablaTest, ANoticeHasStartAndStopAndNoWords) {
    estado.valor = cEstadoVoz::Aviso;
    control.Avisa();
    canal.Palabra(0);
    canal.Palabra(4);
    canal.Fin();
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Stop 1"));
}

TEST_F(ControlHablaTest, AWaitingNoticeReturnsAtItsEndAndItsEventsComeAfterwardsUnder1) {
    estado.valor = cEstadoVoz::Aviso;
    std::thread hilo;
    canal.alHablar = [&] {
        hilo = std::thread([this] {
            canal.Palabra(0);
            canal.Fin();
        });
    };
    banco.cola.Pon(cCola::Clase::Tecla, [this] { banco.diario.push_back("Tecla"); });
    control.AvisaYEspera();
    hilo.join();
    EXPECT_THAT(banco.diario, IsEmpty());  // neither its events nor a key inside the call
    EXPECT_EQ(estado.valor, cEstadoVoz::Aviso);
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Stop 1", "Tecla"));
}

TEST_F(ControlHablaTest, AWaitingNoticeThatPurgesAReadingRaisesOnlyItsStopInsideTheCall) {
    control.Lee();
    Entrega();
    banco.Saca();
    estado.valor = cEstadoVoz::Aviso;
    canal.alHablar = [this] { canal.Fin(); };
    control.AvisaYEspera();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0"));
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0", "Start", "Stop 1"));
}

TEST_F(ControlHablaTest, AReadingRightAfterAWaitingNoticeGetsItsStopFirst) {
    estado.valor = cEstadoVoz::Aviso;
    canal.alHablar = [this] { canal.Fin(); };
    control.AvisaYEspera();
    canal.alHablar = nullptr;
    control.Lee();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 1"));
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 1", "Start"));
}

TEST_F(ControlHablaTest, AWaitingNoticeThatNeverEndsIsGivenUpSilencedAndLogged) {
    control.SetMargenEspera(1);
    control.Acepta({}, {}, ControlDePrueba::Modo::AvisoEsperando);
    EXPECT_FALSE(canal.sonando);
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Stop 1"));
    ASSERT_EQ(banco.registro.LineasLog().size(), 1);
    EXPECT_TRUE(banco.registro.LineasLog().front().contains(QStringLiteral("ControlHabla.Acepta: ")));
}

// Handlers that call the control again

TEST_F(ControlHablaTest, AStopHandlerMaySpeakAgain) {
    EventosVoz eventos = banco.Eventos();
    eventos.alTerminar = [this, anterior = eventos.alTerminar] {
        anterior();
        if (canal.locuciones.size() < 3) control.Lee();
    };
    control.SetEventos(eventos);
    control.Lee();
    canal.Fin();
    Entrega();
    canal.Fin();
    Entrega();
    canal.Fin();
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Stop 0", "Start", "Stop 0", "Start", "Stop 0"));
    EXPECT_FALSE(control.EnCurso());
}

TEST_F(ControlHablaTest, ASpeechFromTheStopOfAPurgeIsPurgedInItsTurnAndTheOuterCallSounds) {
    bool hecho = false;
    EventosVoz eventos = banco.Eventos();
    eventos.alTerminar = [&, anterior = eventos.alTerminar] {
        anterior();
        if (!std::exchange(hecho, true)) control.Lee();
    };
    control.SetEventos(eventos);
    control.Lee();
    Entrega();
    Tramo tramo;
    tramo.texto = u"exterior";
    tramo.cortes = {{0, 0}};
    control.Acepta({}, {tramo}, ControlDePrueba::Modo::Lectura);
    EXPECT_EQ(canal.Texto(), u"exterior");
    canal.Fin();
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Stop 0", "Stop 0", "Start", "Stop 0"));
    EXPECT_EQ(canal.locuciones.size(), 3u);
}

TEST_F(ControlHablaTest, AStopHandlerThatStopsAgainHearsNoSecondStop) {
    EventosVoz eventos = banco.Eventos();
    eventos.alTerminar = [this, anterior = eventos.alTerminar] {
        anterior();
        control.Detiene();
    };
    control.SetEventos(eventos);
    control.Lee();
    control.Detiene();
    control.Lee();
    canal.Fin();
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0", "Start", "Stop 0"));
}

TEST_F(ControlHablaTest, AStartHandlerMayStop) {
    EventosVoz eventos = banco.Eventos();
    eventos.alEmpezar = [this, anterior = eventos.alEmpezar] {
        anterior();
        control.Detiene();
    };
    control.SetEventos(eventos);
    control.Lee();
    canal.Palabra(0);
    canal.Fin();
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Stop 0"));
}

TEST_F(ControlHablaTest, AWordHandlerMayPurge) {
    EventosVoz eventos = banco.Eventos();
    eventos.alPalabra = [this, anterior = eventos.alPalabra](std::int32_t pos) {
        anterior(pos);
        if (pos == 4) control.Lee();
    };
    control.SetEventos(eventos);
    control.Lee();
    canal.Palabra(4);
    canal.Palabra(8);
    canal.Fin();
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Word 4", "Stop 0", "Start"));
}

// The object's end

TEST(ControlHabla, AnObjectReleasedWithEventsInTheQueueRaisesNothing) {
    Banco banco;
    {
        ControlDePrueba control(banco.canal, banco.cola, banco.estado, banco.registro.Log());
        control.SetEventos(banco.Eventos());
        control.Lee();
        banco.canal.Palabra(0);
        banco.canal.Fin();
        control.Pausa();
        control.Reanuda();
    }
    EXPECT_FALSE(banco.canal.TieneOyente());
    EXPECT_FALSE(banco.canal.sonando);
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.diario, IsEmpty());
}

TEST(ControlHabla, AnObjectMayBeReleasedByItsOwnStopHandler) {
    for (const bool purga : {false, true}) {
        Banco banco;
        auto control = std::make_unique<ControlDePrueba>(banco.canal, banco.cola, banco.estado, banco.registro.Log());
        EventosVoz eventos = banco.Eventos();
        eventos.alTerminar = [&] {
            banco.diario.push_back("Stop");
            control.reset();
        };
        control->SetEventos(eventos);
        control->Lee();
        if (purga)
            control->Lee();
        else
            banco.canal.Fin();
        banco.cola.DejaCorrer();
        EXPECT_EQ(control, nullptr);
        EXPECT_EQ(banco.diario.back(), "Stop");
        EXPECT_EQ(banco.canal.locuciones.size(), 1u);
    }
}

// Engine events come from the channel's thread while the main thread speaks, stops and delivers.
TEST(ControlHabla, EventsOfAnotherThreadKeepTheirOrderAndTheirCount) {
    Banco banco;
    ControlDePrueba control(banco.canal, banco.cola, banco.estado, banco.registro.Log());
    int paradas = 0;
    std::int32_t ultima = -1;
    bool atras = false;
    EventosVoz eventos;
    eventos.alTerminar = [&] { ++paradas; };
    eventos.alPalabra = [&](std::int32_t pos) {
        if (pos < ultima) atras = true;
        ultima = pos;
    };
    control.SetEventos(eventos);
    constexpr int kVeces = 200;
    for (int vez = 0; vez < kVeces; ++vez) {
        ultima = -1;
        control.Lee();
        const std::uint64_t numero = banco.canal.Numero();
        std::thread hilo([&banco, numero] {
            for (std::uint32_t posicion = 0; posicion < 50; ++posicion) banco.canal.Palabra(posicion, numero);
            banco.canal.Fin(numero);
        });
        if (vez % 3 == 0) control.Pausa();
        if (vez % 2 == 0) banco.cola.DejaCorrer();
        if (vez % 3 == 0) control.Reanuda();
        if (vez % 5 == 0) control.Detiene();
        hilo.join();
        banco.cola.DejaCorrer();
        EXPECT_EQ(paradas, vez + 1);
    }
    EXPECT_FALSE(atras);
}

}  // namespace
}  // namespace ondalis::prueba
