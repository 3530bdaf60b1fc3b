// The events' contract between the engines and the session, row by row.
#include "speech/ControlHabla.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ControlDePrueba.h"

namespace ondalis::prueba {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

}  // namespace
}  // namespace ondalis::prueba
