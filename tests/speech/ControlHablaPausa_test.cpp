// The events' contract while the engine is paused, and the resume that a stop keeps inaudible.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ControlDePrueba.h"

namespace ondalis::prueba {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

}  // namespace
}  // namespace ondalis::prueba
