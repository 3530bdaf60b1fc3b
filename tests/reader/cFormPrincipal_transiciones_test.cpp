// Each row of the session's transition table, and each point where the two families differ.
#include "reader/PruebaLector.h"

namespace ondalis::prueba {

class Transicion : public PruebaLector {
protected:
    Transicion() { Arranca(); }
    void Habla() {
        Lee(QStringLiteral("uno dos tres cuatro cinco seis"));
        motor.Palabra(4);
        ASSERT_TRUE(Hablando());
    }
    void Para() {
        Habla();
        principal.PausaReanudar_Click();
        ASSERT_TRUE(Pausada());
    }
    // What a remote command does to the session.
    void Remota() {
        principal.SetDDELink(QString());
        principal.Detener_Click();
        Estado() = 4;
        ASSERT_FALSE(motor.Habla(QStringLiteral("remoto"), false));
        Corre();
    }
    bool HablandoRemota() const { return campos.Leyendo && menu.Detener.Habilitada() && estado.valor == 4; }
};

TEST_F(Transicion, IdleToSentByASource) {
    Envia(QStringLiteral("hola"));
    EXPECT_TRUE(Enviada());
}

TEST_F(Transicion, IdleStaysIdleByASourceWithLeerTextoOffExceptForTheEditor) {
    opcGrabar.SetLeerTexto(false);
    Envia(QStringLiteral("hola"));
    EXPECT_TRUE(Ociosa());
    principal.IniciaLectura(3);
    EXPECT_TRUE(Enviada());
}

TEST_F(Transicion, SentToSpeakingByTheStartEvent) {
    Envia(QStringLiteral("hola"));
    Corre();
    EXPECT_TRUE(Hablando());
}

TEST_F(Transicion, SpeakingStaysSpeakingByAWord) {
    Habla();
    motor.Palabra(8);
    EXPECT_TRUE(Hablando());
    EXPECT_EQ(campos.PosPalabra, 8);
}

TEST_F(Transicion, SpeakingToIdleByTheEndOfTheText) {
    Habla();
    TerminaTexto();
    EXPECT_TRUE(Ociosa());
    EXPECT_TRUE(menu.RepetirLectura.Habilitada());
}

TEST_F(Transicion, SpeakingToIdleByAStop) {
    Habla();
    principal.Detener_Click();
    EXPECT_TRUE(Ociosa());
    EXPECT_FALSE(motor.Hablando());
}

TEST_F(Transicion, PausedToIdleByAStop) {
    Para();
    principal.Detener_Click();
    EXPECT_TRUE(Ociosa());
    EXPECT_FALSE(motor.Hablando());
}

TEST_F(Transicion, SpeakingToPausedAndBack) {
    Para();
    EXPECT_TRUE(motor.Pausado());
    EXPECT_TRUE(menu.PausaReanudar.Rotulo().startsWith(QStringLiteral("Reanudar (")));
    principal.PausaReanudar_Click();
    EXPECT_TRUE(Hablando());
    EXPECT_FALSE(motor.Pausado());
    EXPECT_TRUE(menu.PausaReanudar.Rotulo().startsWith(QStringLiteral("Pausa (")));
}

TEST_F(Transicion, SpeakingToRestartingByAMove) {
    opcTeclasRap.SetNroPalAvance(1);
    for (void (cFormPrincipal::*mueve)() :
         {&cFormPrincipal::AvanzarPalabras_Click, &cFormPrincipal::RetrocederPalabras_Click}) {
        Habla();
        (principal.*mueve)();
        EXPECT_TRUE(Reiniciando());
        principal.Detener_Click();
        Corre();
        Estado() = 0;
        principal.Detener_Click();
        campos.TextoCopiado.clear();
    }
}

TEST_F(Transicion, PausedToRestartingByAMoveResumesFirst) {
    opcTeclasRap.SetNroPalAvance(1);
    Para();
    principal.AvanzarPalabras_Click();
    EXPECT_TRUE(Reiniciando());
    EXPECT_FALSE(motor.Pausado());
}

TEST_F(Transicion, RestartingToSpeakingByTheStartEvent) {
    opcTeclasRap.SetNroPalAvance(1);
    Habla();
    principal.AvanzarPalabras_Click();
    Corre();
    EXPECT_TRUE(Hablando());
}

TEST_F(Transicion, RestartingToIdleOffTheEndOfTheText) {
    Habla();
    principal.AvanzarPalabras_Click();
    EXPECT_TRUE(Ociosa());
    EXPECT_FALSE(motor.Hablando());
}

TEST_F(Transicion, IdleToSentByARepeat) {
    Habla();
    TerminaTexto();
    principal.RepetirLectura_Click();
    EXPECT_TRUE(Enviada());
}

TEST_F(Transicion, IdleSpeakingAndPausedToRemoteSpeech) {
    Remota();
    EXPECT_TRUE(HablandoRemota());
    TerminaTexto();
    Habla();
    Remota();
    EXPECT_TRUE(HablandoRemota());
    TerminaTexto();
    campos.TextoCopiado.clear();
    Para();
    Remota();
    EXPECT_TRUE(HablandoRemota());
    EXPECT_FALSE(motor.Pausado());
}

TEST_F(Transicion, RemoteSpeechToIdleAnnouncesTheEnd) {
    Remota();
    EXPECT_EQ(principal.DDELink(), QString());
    TerminaTexto();
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(principal.DDELink(), QStringLiteral("StopSpeaking"));
}

TEST_F(Transicion, AnyStateWithEstadoVoz0ToNoticeAndBack) {
    principal.DiAviso(QStringLiteral("aviso"));
    EXPECT_EQ(Estado(), 1);
    Corre();
    TerminaTexto();
    EXPECT_TRUE(Ociosa());
    // A notice takes the engine from the reading, whose end comes first.
    Habla();
    principal.DiAviso(QStringLiteral("aviso"));
    EXPECT_EQ(Estado(), 1);
    EXPECT_FALSE(campos.Leyendo);
    Corre();
    TerminaTexto();
    EXPECT_TRUE(Ociosa());
}

TEST_F(Transicion, ARepeatAfterARemoteSpeechRepeatsTheLastLocalReading) {
    Lee(QStringLiteral("local"));
    TerminaTexto();
    Remota();
    TerminaTexto();
    diario.Olvida();
    principal.RepetirLectura_Click();
    EXPECT_EQ(Motor(), (Lineas{"CancelaECI", "Habla(local)"}));
}

// --- The families

class Familias : public Transicion {};

TEST_F(Familias, SpokenPunctuationIsInTheTextForIBMAndAFlagForSAPI5) {
    opcGeneral.SetPronunciaSignosPunt(true);
    Envia(QStringLiteral("uno,dos"));
    EXPECT_NE(campos.TextoLectura, QStringLiteral("uno,dos"));
    principal.Detener_Click();
    PasaASAPI5();
    diario.Olvida();
    Envia(QStringLiteral("tres,cuatro"));
    EXPECT_EQ(Motor(), Lineas{"Habla(tres,cuatro,signos)"});
}

TEST_F(Familias, OnlyIBMLimitsTheClipboardText) {
    const QString largo(70000, QLatin1Char('a'));
    Envia(largo);
    EXPECT_EQ(campos.TextoLectura.size(), 65000);
    principal.Detener_Click();
    PasaASAPI5();
    Envia(largo);
    EXPECT_EQ(campos.TextoLectura.size(), 70000);
}

TEST_F(Familias, OnlyIBMCancelsTheRecordingEngineAndOnlyWithoutRecording) {
    Envia(QStringLiteral("uno"));
    EXPECT_EQ(diario.Veces("motor.CancelaECI"), 1);
    opcGrabar.SetGrabarTexto(true);
    principal.Detener_Click();
    Envia(QStringLiteral("dos"));
    opcGrabar.SetGrabarTexto(false);
    PasaASAPI5();
    principal.Detener_Click();
    Envia(QStringLiteral("tres"));
    EXPECT_EQ(diario.Veces("motor.CancelaECI"), 1);
}

TEST_F(Familias, OnlyAPausedSAPI5VoiceIsResumedByItsStopEvent) {
    Para();
    diario.Olvida();
    principal.Voz_StopSpeaking();
    EXPECT_EQ(Motor(), Lineas{});
    motor.Detiene();
    PasaASAPI5();
    campos.TextoCopiado.clear();
    menu.PausaReanudar.SetRotulo(QStringLiteral("Pausa"));
    Para();
    diario.Olvida();
    principal.Voz_StopSpeaking();
    EXPECT_EQ(Motor(), Lineas{"Reanuda"});
}

TEST_F(Familias, AnIBMNoticeReturnsAtOnceAndASAPI5NoticeHasItsEventsAfterwards) {
    principal.DiAviso(QStringLiteral("aviso"));
    Corre();
    EXPECT_EQ(Estado(), 1);  // sounding
    TerminaTexto();
    PasaASAPI5();
    principal.DiAviso(QStringLiteral("aviso"));
    EXPECT_EQ(Estado(), 1);
    Corre();
    EXPECT_EQ(Estado(), 0);
}

}  // namespace ondalis::prueba
