// What ends a reading, and the notices beside it.
#include <stdexcept>

#include "reader/PruebaLector.h"

namespace ondalis::prueba {

class Final : public PruebaLector {
protected:
    Final() { Arranca(); }
};

// --- End of speech

TEST_F(Final, TheEndOfTheTextGoesThroughItsStepsInOrder) {
    Lee(QStringLiteral("uno dos"));
    motor.Palabra(4);
    TerminaTexto();
    EXPECT_EQ(diario.Todo(), (Lineas{"icono.1", "sonido.DETENER"}));
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(campos.PosPalabra, 0);
    EXPECT_EQ(campos.TipoLectura, 1);
    EXPECT_EQ(campos.TextoLectura, QStringLiteral("uno dos"));
    EXPECT_FALSE(menu.PausaReanudar.Habilitada());
    EXPECT_FALSE(menu.AvanzarPalabras.Habilitada());
    EXPECT_FALSE(menu.RetrocederPalabras.Habilitada());
    EXPECT_TRUE(menu.RepetirLectura.Habilitada());
}

TEST_F(Final, ASecondStopDoesNoHarm) {
    Lee(QStringLiteral("uno dos"));
    TerminaTexto();
    diario.Olvida();
    principal.Voz_StopSpeaking();
    EXPECT_EQ(diario.Todo(), Lineas{"icono.1"});
    EXPECT_TRUE(menu.RepetirLectura.Habilitada());
}

TEST_F(Final, AStopInMidSpeechGivesExactlyOneDetenerSound) {
    Lee(QStringLiteral("uno dos"));
    principal.Detener_Click();
    Corre();
    EXPECT_EQ(Sonidos(), Lineas{"DETENER"});
}

TEST_F(Final, AnyPlaceOfAStopGivesAtMostOneDetenerSound) {
    Envia(QStringLiteral("uno dos"));  // Sent: nothing was shown as running
    diario.Olvida();
    principal.Detener_Click();
    Corre();
    EXPECT_EQ(Sonidos(), Lineas{});
    EXPECT_TRUE(Ociosa());
    Lee(QStringLiteral("tres cuatro"));
    motor.Palabra(5);
    principal.PausaReanudar_Click();
    diario.Olvida();
    principal.Detener_Click();
    principal.Detener_Click();
    Corre();
    EXPECT_EQ(Sonidos(), Lineas{"DETENER"});
}

TEST_F(Final, TheEndIconTellsOfRecordingAndOfInactivity) {
    opcGrabar.SetGrabarTexto(true);
    Lee(QStringLiteral("uno"));
    TerminaTexto();
    EXPECT_EQ(icono.imagen, 5);
    LeeDe(3, QStringLiteral("dos"));
    principal.ActivarDesactivar_Click();
    TerminaTexto();
    EXPECT_EQ(icono.imagen, 9);
}

TEST_F(Final, AReadingThatEndsWhileInactiveLeavesRepeatDisabledAndPlaysNoSound) {
    LeeDe(3, QStringLiteral("uno"));
    principal.ActivarDesactivar_Click();
    campos.TipoLectura = 1;  // even for a source that has a sound
    diario.Olvida();
    TerminaTexto();
    EXPECT_FALSE(menu.RepetirLectura.Habilitada());
    EXPECT_EQ(Sonidos(), Lineas{});
    EXPECT_FALSE(menu.Detener.Habilitada());
}

TEST_F(Final, TheStopSoundDependsOnTheSource) {
    LeeDe(2, QStringLiteral("uno"));
    TerminaTexto();
    EXPECT_EQ(Sonidos(), Lineas{});  // off by default for the keyboard
    sonidosAviso.SetLeeTeclado(true);
    LeeDe(2, QStringLiteral("uno"));
    TerminaTexto();
    EXPECT_EQ(Sonidos(), Lineas{"DETENER"});
    LeeDe(3, QStringLiteral("uno"));
    TerminaTexto();
    EXPECT_EQ(Sonidos(), Lineas{});
    sonidosAviso.SetPortapapeles(false);
    LeeDe(1, QStringLiteral("uno"));
    TerminaTexto();
    EXPECT_EQ(Sonidos(), Lineas{});
}

TEST_F(Final, WithUtilizaSonidosOffNothingSounds) {
    opcGeneral.SetUtilizaSonidos(false);
    Lee(QStringLiteral("uno dos"));
    TerminaTexto();
    Pulsa("Detener");
    EXPECT_EQ(Sonidos(), Lineas{});
}

TEST_F(Final, WithUtilizaSonidosOffNoneOfTheEightSoundsIsPlayedWhateverTheBoxesSay) {
    const auto recorreLosSonidos = [this](std::int32_t tipo) {
        LeeDe(tipo, QStringLiteral("uno dos tres cuatro cinco seis"));
        motor.Palabra(4);
        for (const char *comando : {"Pausa", "Pausa", "Retroceder", "ImprPant"}) Pulsa(comando);
        Corre();
        TerminaTexto();
        for (const char *comando : {"Repetir", "Detener", "Activar", "Detener", "Activar", "MasVel"}) Pulsa(comando);
        Corre();
        TerminaTexto();
    };
    opcTeclasRap.SetUtilizaAvisos(false);
    Copia(QStringLiteral("uno dos tres cuatro cinco seis"));
    sonidosAviso.SetLeeTeclado(true);
    recorreLosSonidos(1);
    const QStringList oidos = sonido.nombres;
    for (const char *nombre :
         {"ACTIVAR", "DESACTIVAR", "ERROR", "VOLUMEN", "DETENER", "PAUSA", "REPETIRLECTURA", "AVANZARRETROCEDER"})
        EXPECT_TRUE(oidos.contains(QLatin1String(nombre))) << nombre;
    opcGeneral.SetUtilizaSonidos(false);
    sonido.nombres.clear();
    for (int cajas = 0; cajas < 16; ++cajas)
        for (const std::int32_t tipo : {1, 2}) {
            sonidosAviso.SetAvisosGenerales((cajas & 1) != 0);
            sonidosAviso.SetActivarDesactivar((cajas & 2) != 0);
            sonidosAviso.SetPortapapeles((cajas & 4) != 0);
            sonidosAviso.SetLeeTeclado((cajas & 8) != 0);
            Copia(QStringLiteral("otra vez"));
            recorreLosSonidos(tipo);
        }
    EXPECT_EQ(sonido.nombres, QStringList());
}

TEST_F(Final, TheEditorsButtonsComeBackAtEveryStopOfItsReadingWhateverTheState) {
    LeeDe(3, QStringLiteral("uno"));
    Estado() = 1;
    principal.Voz_StopSpeaking();
    EXPECT_EQ(diario.Todo(), (Lineas{"editor.leer=si", "editor.grabar=si", "editor.etiqueta=si", "editor.pausar=no",
                                     "editor.detener=no"}));
    EXPECT_EQ(Estado(), 0);
}

TEST_F(Final, TheStopOfANoticeOnlyClearsItsState) {
    Lee(QStringLiteral("uno dos"));
    Estado() = 1;
    principal.Voz_StopSpeaking();
    EXPECT_EQ(diario.Todo(), Lineas{});
    EXPECT_TRUE(Hablando());
}

TEST_F(Final, TheStopOfARestartIsIgnored) {
    Lee(QStringLiteral("uno dos"));
    Estado() = 2;
    principal.Voz_StopSpeaking();
    EXPECT_EQ(diario.Todo(), Lineas{});
    EXPECT_EQ(Estado(), 2);
}

TEST_F(Final, TheEndOfARemoteSpeechIsAnnouncedOnce) {
    std::vector<QString> avisos;
    principal.AlCambiarDDELink([&avisos](const QString &texto) { avisos.push_back(texto); });
    EXPECT_EQ(principal.DDELink(), QStringLiteral("Vínculo"));
    Estado() = 4;
    ASSERT_FALSE(motor.Habla(QStringLiteral("remoto"), false));
    Corre();
    EXPECT_TRUE(menu.Detener.Habilitada());
    TerminaTexto();
    EXPECT_EQ(principal.DDELink(), QStringLiteral("StopSpeaking"));
    EXPECT_EQ(avisos, std::vector<QString>{QStringLiteral("StopSpeaking")});
    EXPECT_TRUE(Ociosa());
}

TEST_F(Final, AStreamThatEndsWhilePausedIsResumedInSAPI5Only) {
    for (const bool sapi : {false, true}) {
        if (sapi) PasaASAPI5();
        LeeDe(1, QStringLiteral("uno dos"));
        menu.PausaReanudar.SetRotulo(QStringLiteral("Reanudar (x)"));
        campos.SeguimientoWord = 1;
        principal.Voz_StopSpeaking();
        EXPECT_EQ(Motor(), sapi ? Lineas{"Reanuda"} : Lineas{});
        EXPECT_EQ(menu.PausaReanudar.Rotulo().startsWith(QStringLiteral("Pausa (")), sapi);
        EXPECT_EQ(campos.SeguimientoWord, sapi ? 0 : 1);
        motor.Detiene();
    }
}

TEST_F(Final, AFailureInAnEventIsLoggedUnderItsNameAndTellsNobody) {
    principal.Menu().Detener.AlCambiar([] { throw std::runtime_error("roto"); });
    principal.Voz_StartSpeaking();
    ASSERT_EQ(Log().size(), 1);
    EXPECT_TRUE(Log()[0].contains(QStringLiteral("cFormPrincipal.Voz_StartSpeaking: roto")));
    EXPECT_TRUE(mensajes.cajas.empty());
    EXPECT_TRUE(campos.Leyendo);  // what was written before the failure stays
}

// --- Notices

TEST_F(Final, ANoticePutsItsStateBeforeTheEngineIsTouched) {
    principal.DiAviso(QStringLiteral("aviso"));
    EXPECT_EQ(Motor(), Lineas{"HablaAviso(aviso)"});
    EXPECT_EQ(Estado(), 1);
    Corre();
    TerminaTexto();
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(Sonidos(), Lineas{});
}

TEST_F(Final, ANoticeIsDroppedUnlessTheStateIs0) {
    for (const std::int32_t valor : {1, 2, 3, 4}) {
        Estado() = valor;
        principal.DiAviso(QStringLiteral("aviso"));
        EXPECT_EQ(Estado(), valor);
    }
    EXPECT_EQ(Motor(), Lineas{});
}

TEST_F(Final, ANoticeOfSAPI5HasItsEventsAfterwardsUnderState1) {
    PasaASAPI5();
    principal.DiAviso(QStringLiteral("aviso"));
    EXPECT_EQ(Estado(), 1);
    Corre();
    EXPECT_TRUE(Ociosa());
    EXPECT_FALSE(menu.RepetirLectura.Habilitada());
}

TEST_F(Final, ARestOfTheEditorKeepsNavigationKeysDeadUntilAnotherSourceReads) {
    LeeDe(3, QStringLiteral("uno dos"));
    TerminaTexto();
    diario.Olvida();
    EXPECT_EQ(campos.TipoLectura, 3);
    for (const char *comando : {"Repetir", "Avanzar", "Retroceder"}) Pulsa(comando);
    EXPECT_EQ(diario.Todo(), Lineas{});
    Lee(QStringLiteral("tres cuatro"));
    TerminaTexto();
    diario.Olvida();
    Pulsa("Repetir");
    EXPECT_EQ(Sonidos(), Lineas{"REPETIRLECTURA"});
}

TEST_F(Final, ARecordingWithoutSpeechEndsWithTheRedIconAndNoEvents) {
    opcGrabar.SetGrabarTexto(true);
    opcGrabar.SetLeerTexto(false);
    Envia(QStringLiteral("uno dos"));
    Corre();
    EXPECT_EQ(icono.imagen, 5);
    EXPECT_EQ(Motor(), Lineas{});
    EXPECT_TRUE(Ociosa());
}

TEST_F(Final, ATextFromTheKeyboardReplacesTheReadingUnderWay) {
    Lee(QStringLiteral("uno dos"));
    campos.TextoLectura = QStringLiteral("tecleado");
    principal.IniciaLectura(2);
    EXPECT_TRUE(Enviada());
    Corre();
    EXPECT_TRUE(Hablando());
    EXPECT_EQ(campos.TipoLectura, 2);
    EXPECT_EQ(campos.PosPalabra, 0);
}

}  // namespace ondalis::prueba
