// The events' contract between the engines and the session, row by row.
#include "speech/ControlHabla.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <thread>

#include "ControlDePrueba.h"

namespace ondalis::prueba {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ControlHablaTest : public testing::Test {
protected:
    void SetUp() override { control.SetEventos(banco.Eventos()); }
    void Entrega() { banco.cola.DejaCorrer(); }

    Banco banco;
    CanalGuionado &canal = banco.canal;
    cEstadoVoz &estado = banco.estado;
    ControlDePrueba control{canal, banco.cola, estado, banco.registro.Log()};
};

// Accepted calls and their end

TEST_F(ControlHablaTest, StartIsNeverRaisedInsideTheCall) {
    control.Lee();
    EXPECT_THAT(banco.diario, IsEmpty());
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start"));
}

TEST_F(ControlHablaTest, StartGoesAheadOfKeysTicksAndBusCallsThatCameBefore) {
    banco.cola.Pon(cCola::Clase::Tic, [this] { banco.diario.push_back("Tic"); });
    banco.cola.Pon(cCola::Clase::Orden, [this] { banco.diario.push_back("Orden"); });
    banco.cola.Pon(cCola::Clase::Tecla, [this] { banco.diario.push_back("Tecla"); });
    control.Lee();
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Tecla", "Orden", "Tic"));
}

TEST_F(ControlHablaTest, AnAcceptedCallIsNotPausedAnyMore) {
    control.Lee();
    control.Pausa();
    control.Lee();
    EXPECT_FALSE(control.EnPausa());
    canal.Palabra(3);
    canal.Fin();
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0", "Start", "Word 3", "Stop 0"));
}

TEST_F(ControlHablaTest, WordsComeAsHeardAndExactlyOneStopAtTheEnd) {
    control.Lee();
    canal.Palabra(0);
    canal.Palabra(4);
    Entrega();
    EXPECT_THAT(banco.Saca(), ElementsAre("Start", "Word 0", "Word 4"));
    canal.Palabra(8);
    canal.Fin();
    canal.Fin();
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Word 8", "Stop 0"));
}

TEST_F(ControlHablaTest, StartComesFirstThoughTheEngineSaidItsEndInsideTheCall) {
    canal.alHablar = [this] { canal.Fin(); };
    control.Lee();
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Stop 0"));
}

TEST_F(ControlHablaTest, ATextWithoutAnythingToSayStillGivesStartAndStop) {
    control.Acepta({}, {}, ControlDePrueba::Modo::Lectura);
    canal.Fin();
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Stop 0"));
}

TEST_F(ControlHablaTest, ANumberIsNeverReusedInTheProcess) {
    CanalGuionado otroCanal;
    ControlDePrueba otro(otroCanal, banco.cola, estado, banco.registro.Log());
    control.Lee();
    otro.Lee();
    control.Lee();
    EXPECT_GT(canal.locuciones[0].numero, 0u);
    EXPECT_GT(otroCanal.locuciones[0].numero, canal.locuciones[0].numero);
    EXPECT_GT(canal.locuciones[1].numero, otroCanal.locuciones[0].numero);
}

TEST_F(ControlHablaTest, ALateEventOfAnEarlierNumberIsDropped) {
    control.Lee();
    const std::uint64_t primero = canal.Numero();
    control.Lee();
    Entrega();
    banco.Saca();
    canal.Palabra(4, primero);
    canal.Fin(primero);
    Entrega();
    EXPECT_THAT(banco.diario, IsEmpty());
    EXPECT_TRUE(control.EnCurso());
}

TEST_F(ControlHablaTest, AWorkerThatDiesForGoodGivesStopAndNothingElse) {
    control.Lee();
    Entrega();
    canal.Palabra(4);
    canal.Fin();
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Word 4", "Stop 0"));
}

TEST_F(ControlHablaTest, WordsNeverGoBack) {
    control.Lee();
    for (const std::uint32_t posicion : {0u, 8u, 4u, 8u, 9u}) canal.Palabra(posicion);
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Word 0", "Word 8", "Word 8", "Word 9"));
    banco.Saca();
    control.Lee();
    canal.Palabra(0);  // the next utterance counts anew
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0", "Start", "Word 0"));
}

TEST_F(ControlHablaTest, BookmarksRaiseNothing) {
    control.Lee();
    EventoMotor marca;
    marca.numero = canal.Numero();
    marca.tipo = EventoMotor::Tipo::Marca;
    marca.texto = u"1";
    canal.Emite(marca);
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start"));
}

TEST_F(ControlHablaTest, WhatTheEngineReportsGoesToTheLogAndToNoHandler) {
    control.Lee();
    EventoMotor aviso;
    aviso.numero = canal.Numero();
    aviso.tipo = EventoMotor::Tipo::Aviso;
    aviso.texto = u"motor reiniciado";
    canal.Emite(aviso);
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start"));
    ASSERT_EQ(banco.registro.LineasLog().size(), 1);
    EXPECT_TRUE(
        banco.registro.LineasLog().front().endsWith(QStringLiteral("ControlHabla.EventoDeMotor:  [motor reiniciado]")))
        << banco.registro.LineasLog().front().toStdString();
}

// Explicit stop

TEST_F(ControlHablaTest, AnExplicitStopSilencesWithdrawsAndRaisesStopInsideTheCall) {
    control.Lee();
    Entrega();
    canal.Palabra(4);
    canal.Fin();
    banco.Saca();
    control.Detiene();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0"));
    EXPECT_THAT(canal.ordenes, ElementsAre("habla", "detiene"));
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0"));
}

TEST_F(ControlHablaTest, AnExplicitStopRaisesStopUnderEstadoVozAsItStands) {
    control.Avisa();
    Entrega();
    estado.valor = 7;
    control.Detiene();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Stop 7"));
    EXPECT_EQ(estado.valor, 7);
}

TEST_F(ControlHablaTest, TheSoundIsSilencedBeforeStopIsRaised) {
    bool sonabaEnStop = true;
    EventosVoz eventos;
    eventos.alTerminar = [&] { sonabaEnStop = canal.sonando; };
    control.SetEventos(eventos);
    control.Lee();
    control.Detiene();
    EXPECT_FALSE(sonabaEnStop);
}

TEST_F(ControlHablaTest, AnExplicitStopWhenIdleDoesNothing) {
    control.Detiene();
    control.Lee();
    canal.Fin();
    Entrega();
    banco.Saca();
    canal.ordenes.clear();
    control.Detiene();
    control.Detiene();
    Entrega();
    EXPECT_THAT(banco.diario, IsEmpty());
    EXPECT_THAT(canal.ordenes, IsEmpty());
}

TEST_F(ControlHablaTest, AStopBeforeTheStartWithdrawsTheStartAndStillComesOnce) {
    control.Lee();
    control.Detiene();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0"));
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0"));
}

TEST_F(ControlHablaTest, NothingOfAStoppedUtteranceComesThoughAnotherSpeaks) {
    control.Lee();
    Entrega();
    canal.Palabra(4);
    control.Detiene();
    control.Lee();
    canal.Palabra(0);
    banco.Saca();
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Word 0"));
}

// Purge

TEST_F(ControlHablaTest, ANoticeThatPurgesAReadingRaisesItsStopUnder0AndPuts1Afterwards) {
    control.Lee();
    Entrega();
    banco.Saca();
    estado.valor = cEstadoVoz::Aviso;
    control.Avisa();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0"));
    EXPECT_EQ(estado.valor, cEstadoVoz::Aviso);
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0", "Start"));
}

TEST_F(ControlHablaTest, ANoticeThatPurgesARemoteSpeechRaisesItsStopUnder4) {
    estado.valor = cEstadoVoz::Remota;
    control.Lee();
    Entrega();
    banco.Saca();
    estado.valor = cEstadoVoz::Aviso;
    control.Avisa();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 4"));
    EXPECT_EQ(estado.valor, cEstadoVoz::Aviso);
}

TEST_F(ControlHablaTest, AReadingThatPurgesANoticeRaisesItsStopUnder1AndLeavesWhatThatLeft) {
    estado.valor = cEstadoVoz::Aviso;
    control.Avisa();
    Entrega();
    banco.Saca();
    EventosVoz eventos = banco.Eventos();
    eventos.alTerminar = [this, anterior = eventos.alTerminar] {
        anterior();
        estado.valor = cEstadoVoz::Lectura;
    };
    control.SetEventos(eventos);
    control.Lee();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 1"));
    EXPECT_EQ(estado.valor, cEstadoVoz::Lectura);
}

TEST_F(ControlHablaTest, APurgeWithdrawsWhatTheOldUtteranceHadQueued) {
    control.Lee();
    canal.Palabra(0);
    canal.Palabra(4);
    canal.Fin();
    control.Lee();
    canal.Palabra(1);
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0", "Start", "Word 1"));
}

// Advance and retreat

TEST_F(ControlHablaTest, ARestartRaisesStopUnder2InsideTheStopAndItsStartFindsThe2) {
    control.Lee();
    Entrega();
    banco.Saca();
    EventosVoz eventos = banco.Eventos();
    eventos.alEmpezar = [this] { banco.diario.push_back("Start " + std::to_string(estado.valor)); };
    control.SetEventos(eventos);
    estado.valor = cEstadoVoz::Reinicio;
    control.Detiene();
    control.Lee();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 2"));
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 2", "Start 2"));
}

TEST_F(ControlHablaTest, ARestartHasTheRoleOfAReading) {
    estado.valor = cEstadoVoz::Reinicio;
    control.Lee();
    estado.valor = cEstadoVoz::Aviso;
    control.Avisa();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0"));
}

// Pause and resume

TEST_F(ControlHablaTest, PauseAndResumeRaiseNothingOfTheirOwn) {
    control.Lee();
    Entrega();
    banco.Saca();
    control.Pausa();
    control.Reanuda();
    Entrega();
    EXPECT_THAT(banco.diario, IsEmpty());
    EXPECT_THAT(canal.ordenes, ElementsAre("habla", "pausa", "reanuda"));
}

TEST_F(ControlHablaTest, WordsAndStopThatWereQueuedWaitForTheResume) {
    control.Lee();
    Entrega();
    canal.Palabra(4);
    canal.Palabra(8);
    canal.Fin();
    banco.Saca();
    control.Pausa();
    Entrega();
    EXPECT_THAT(banco.diario, IsEmpty());
    control.Reanuda();
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Word 4", "Word 8", "Stop 0"));
}

TEST_F(ControlHablaTest, WhatWaitedThroughAPauseComesAheadOfWhatIsHeardAfterIt) {
    control.Lee();
    Entrega();
    canal.Palabra(4);
    control.Pausa();
    Entrega();
    banco.Saca();
    canal.Palabra(6);
    control.Reanuda();
    canal.Palabra(8);
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Word 4", "Word 6", "Word 8"));
}

TEST_F(ControlHablaTest, APauseWhenIdleIsHarmless) {
    control.Pausa();
    EXPECT_FALSE(control.EnPausa());
    control.Reanuda();
    Entrega();
    EXPECT_THAT(canal.ordenes, IsEmpty());
}

TEST_F(ControlHablaTest, AResumeTakesEffectWhenTheRunningHandlerEnds) {
    control.Lee();
    control.Pausa();
    bool enPausaEnElManejador = false;
    banco.ComoTecla([&] {
        control.Reanuda();
        banco.cola.DejaCorrer();
        enPausaEnElManejador = canal.enPausa;
        EXPECT_FALSE(control.EnPausa());
    });
    EXPECT_TRUE(enPausaEnElManejador);
    EXPECT_FALSE(canal.enPausa);
}

TEST_F(ControlHablaTest, AStopWhilePausedLeavesTheResumeInaudible) {
    control.Lee();
    Entrega();
    canal.Palabra(4);
    control.Pausa();
    banco.Saca();
    banco.ComoTecla([&] {
        control.Reanuda();
        banco.cola.DejaCorrer();
        control.Detiene();
    });
    EXPECT_THAT(canal.ordenes, ElementsAre("habla", "pausa", "detiene"));
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0"));
}

TEST_F(ControlHablaTest, AStopWhilePausedOutsideOfAHandlerIsInaudibleToo) {
    control.Lee();
    control.Pausa();
    control.Reanuda();
    control.Detiene();
    Entrega();
    EXPECT_THAT(canal.ordenes, ElementsAre("habla", "pausa", "detiene"));
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0"));
}

TEST_F(ControlHablaTest, AnExplicitStopWhilePausedNeedsNoResume) {
    control.Lee();
    control.Pausa();
    control.Detiene();
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0"));
    EXPECT_FALSE(control.EnPausa());
}

TEST_F(ControlHablaTest, ASecondPauseCancelsTheResumeOfTheSameHandler) {
    control.Lee();
    Entrega();
    banco.ComoTecla([&] {
        control.Pausa();
        control.Reanuda();
        control.Pausa();
    });
    EXPECT_TRUE(control.EnPausa());
    EXPECT_THAT(canal.ordenes, ElementsAre("habla", "pausa"));
    canal.Palabra(4);
    Entrega();
    EXPECT_THAT(banco.diario, ElementsAre("Start"));
    banco.ComoTecla([&] { control.Reanuda(); });
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Word 4"));
}

TEST_F(ControlHablaTest, ARestartOutOfAPauseNeverLetsTheOldTextSound) {
    control.Lee();
    control.Pausa();
    banco.ComoTecla([&] {
        control.Reanuda();
        estado.valor = cEstadoVoz::Reinicio;
        control.Detiene();
        control.Lee();
    });
    EXPECT_THAT(canal.ordenes, ElementsAre("habla", "pausa", "detiene", "habla"));
}

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
