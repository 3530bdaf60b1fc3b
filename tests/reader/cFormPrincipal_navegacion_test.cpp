#include "reader/PruebaLector.h"

namespace ondalis::prueba {

class Navegacion : public PruebaLector {
protected:
    Navegacion() { Arranca(); }
    // Ten numbered words of four characters and a blank each: word n begins at 5 (n - 1) + 1.
    const QString m_diez = QStringLiteral("pal1 pal2 pal3 pal4 pal5 pal6 pal7 pal8 pal9 palX");
    void Avance(int palabras) { opcTeclasRap.SetTag(QStringLiteral("SaltoAvanzar"), QString::number(palabras)); }
    void Retroceso(int palabras) { opcTeclasRap.SetTag(QStringLiteral("SaltoRetroceder"), QString::number(palabras)); }
};

// --- Stop

TEST_F(Navegacion, AStopSilencesTheEngineThenEndsTheReading) {
    Lee(m_diez);
    principal.Detener_Click();
    // The first end comes inside the engine's stop, the second one is the direct call.
    EXPECT_EQ(diario.Todo(), (Lineas{"motor.Detiene", "icono.1", "sonido.DETENER", "icono.1"}));
    EXPECT_TRUE(Ociosa());
}

TEST_F(Navegacion, AStopDuringAPauseResumesFirstAndPutsTheCaptionBack) {
    Lee(m_diez);
    motor.Palabra(5);
    campos.SeguimientoWord = 1;
    principal.PausaReanudar_Click();
    diario.Olvida();
    principal.Detener_Click();
    EXPECT_EQ(Motor(), (Lineas{"Reanuda", "Detiene"}));
    EXPECT_TRUE(menu.PausaReanudar.Rotulo().startsWith(QStringLiteral("Pausa (")));
    EXPECT_EQ(campos.SeguimientoWord, 0);
    EXPECT_TRUE(Ociosa());
}

TEST_F(Navegacion, AStopDuringAPauseLetsPendingEventsRunBetweenResumeAndStop) {
    Lee(m_diez);
    motor.Palabra(5);
    principal.PausaReanudar_Click();
    diario.Olvida();
    cola.Pon(cCola::Clase::Orden, [this] { diario.Anota(QStringLiteral("motor.pendiente")); });
    principal.Detener_Click();
    EXPECT_EQ(Motor(), (Lineas{"Reanuda", "pendiente", "Detiene"}));
}

TEST_F(Navegacion, AReadingThatEndsWhileAStopLetsEventsRunIsStoppedOnce) {
    Lee(m_diez);
    motor.Palabra(5);
    motor.Termina();
    cola.Pon(cCola::Clase::Orden, [] {});
    principal.PausaReanudar_Click();
    diario.Olvida();
    principal.Detener_Click();
    EXPECT_EQ(Sonidos(), Lineas{"DETENER"});
    EXPECT_TRUE(Ociosa());
}

TEST_F(Navegacion, StoppingAPausedEditorReadingRestoresTheButtonsCaption) {
    LeeDe(3, m_diez);
    motor.Palabra(5);
    principal.PausaReanudar_Click();
    diario.Olvida();
    principal.Detener_Click();
    EXPECT_EQ(diario.De("editor.RotulaPausa"), Lineas{"(Pausar,)"});
}

// --- Pause and resume

TEST_F(Navegacion, APauseBeforeTheFirstWordIsIgnored) {
    Lee(m_diez);
    principal.PausaReanudar_Click();
    EXPECT_EQ(diario.Todo(), Lineas{});
    EXPECT_TRUE(Hablando());
    EXPECT_TRUE(menu.PausaReanudar.Rotulo().startsWith(QStringLiteral("Pausa (")));
}

TEST_F(Navegacion, APauseAtTheFirstWordIsIgnoredAsWell) {
    Lee(m_diez);
    motor.Palabra(0);
    principal.PausaReanudar_Click();
    EXPECT_TRUE(Hablando());
}

TEST_F(Navegacion, APauseTellsTheEngineFirstAndPlaysItsSoundAfterwards) {
    Lee(m_diez);
    motor.Palabra(5);
    principal.PausaReanudar_Click();
    EXPECT_EQ(diario.Todo(), (Lineas{"timer.no", "motor.Pausa", "sonido.PAUSA", "timer.si"}));
    EXPECT_TRUE(Pausada());
    EXPECT_EQ(menu.PausaReanudar.Rotulo(), QStringLiteral("Reanudar (%1)").arg(opcTeclasRap.GetNombre("Pausa")));
}

TEST_F(Navegacion, AResumePlaysItsSoundFirst) {
    Lee(m_diez);
    motor.Palabra(5);
    principal.PausaReanudar_Click();
    diario.Olvida();
    principal.PausaReanudar_Click();
    EXPECT_EQ(diario.Todo(), (Lineas{"timer.no", "sonido.PAUSA", "motor.Reanuda", "timer.si"}));
    EXPECT_TRUE(Hablando());
    EXPECT_EQ(menu.PausaReanudar.Rotulo(), QStringLiteral("Pausa (%1)").arg(opcTeclasRap.GetNombre("Pausa")));
}

TEST_F(Navegacion, ThePauseSoundFollowsTheSource) {
    LeeDe(2, m_diez);
    motor.Palabra(5);
    principal.PausaReanudar_Click();
    EXPECT_EQ(Sonidos(), Lineas{});  // the keyboard's sounds are off by default
    sonidosAviso.SetLeeTeclado(true);
    principal.PausaReanudar_Click();
    EXPECT_EQ(Sonidos(), Lineas{"PAUSA"});
}

TEST_F(Navegacion, AnEditorReadingPausesWithoutASoundAndWithItsOwnCaptions) {
    LeeDe(3, m_diez);
    motor.Palabra(5);
    principal.PausaReanudar_Click();
    principal.PausaReanudar_Click();
    EXPECT_EQ(Sonidos(), Lineas{});
    EXPECT_EQ(diario.De("editor.RotulaPausa"), (Lineas{"(Reanud,Reanudar)", "(Pausar,Pausar)"}));
}

TEST_F(Navegacion, WhileInactiveAPauseDoesNotWakeTheTimer) {
    LeeDe(3, m_diez);
    motor.Palabra(5);
    principal.ActivarDesactivar_Click();
    diario.Olvida();
    principal.PausaReanudar_Click();
    EXPECT_EQ(diario.De("timer."), Lineas{});
    EXPECT_FALSE(timer.Enabled());
}

TEST_F(Navegacion, AResumeWithReiniciaBeginsTheTextAnew) {
    Lee(m_diez);
    motor.Palabra(5);
    principal.PausaReanudaLectura(false, true);
    EXPECT_EQ(Motor(), Lineas{});  // told to begin anew later, the engine isn't paused
    EXPECT_FALSE(campos.EnPausa);
    principal.PausaReanudaLectura(false, true);
    EXPECT_EQ(Motor(), (Lineas{"CancelaECI", "Habla(" + m_diez.toStdString() + ")"}));
}

// --- Repeat

TEST_F(Navegacion, ARepeatSpeaksTheLastTextFromItsBeginning) {
    Lee(m_diez);
    motor.Palabra(20);
    TerminaTexto();
    diario.Olvida();
    principal.RepetirLectura_Click();
    EXPECT_EQ(diario.Todo(), (Lineas{"timer.no", "icono.10", "sonido.REPETIRLECTURA", "motor.CancelaECI",
                                     "motor.Habla(" + m_diez.toStdString() + ")", "icono.1", "timer.si"}));
    EXPECT_EQ(campos.SeguimientoWord, -1);
    EXPECT_EQ(campos.PosBase, 1);
}

TEST_F(Navegacion, ARepeatRefusedInABoxInWhichTheProgramIsSwitchedOffStaysDeaf) {
    Lee(m_diez);
    TerminaTexto();
    motor.rechazo = Fallo::De(Fallo::SintaxisDeEtiquetas);
    mensajes.alMostrar = [this] { principal.ActivarDesactivar_Click(); };
    principal.RepetirLectura_Click();
    EXPECT_EQ(mensajes.cajas.size(), 1U);
    EXPECT_FALSE(principal.ProgramaActivo());
    EXPECT_FALSE(timer.Enabled());
    EXPECT_EQ(icono.imagen, 9);
}

TEST_F(Navegacion, ARepeatDoesNotFilterAgainButRecordsAgain) {
    AddConversionDicc("pal1", "pal1pal1");
    opcGrabar.SetGrabarTexto(true);
    Lee(m_diez);
    TerminaTexto();
    const QString filtrado = campos.TextoLectura;
    diario.Olvida();
    principal.RepetirLectura_Click();
    EXPECT_EQ(campos.TextoLectura, filtrado);
    EXPECT_EQ(diario.De("graba"), Lineas{"(" + filtrado.toStdString() + ",)"});
}

TEST_F(Navegacion, ARepeatAfterAClipboardReadingIsRefusedWhenTheClipboardIsEmpty) {
    Lee(m_diez);
    TerminaTexto();
    for (const std::optional<QString> &contenido : {std::optional<QString>(), std::optional<QString>("   ")}) {
        portapapeles.texto = contenido;
        diario.Olvida();
        principal.RepetirLectura_Click();
        EXPECT_EQ(diario.Todo(),
                  (Lineas{"timer.no", "sonido.ERROR", "motor.HablaAviso(No hay texto para leer)", "timer.si"}));
        Corre();
        TerminaTexto();
    }
}

TEST_F(Navegacion, AKeyboardReadingIsRepeatedWhateverTheClipboardHolds) {
    LeeDe(2, m_diez);
    TerminaTexto();
    portapapeles.texto.reset();
    diario.Olvida();
    principal.RepetirLectura_Click();
    EXPECT_TRUE(Enviada());
    EXPECT_NE(campos.SeguimientoWord, -1);
}

TEST_F(Navegacion, AnEditorReadingIsNotRepeatedHere) {
    LeeDe(3, m_diez);
    TerminaTexto();
    diario.Olvida();
    principal.RepetirLectura_Click();
    EXPECT_EQ(diario.Todo(), Lineas{});
}

// --- Advance

TEST_F(Navegacion, AnAdvanceStopsSoundsAndSpeaksTheRest) {
    Avance(3);
    Lee(m_diez);
    motor.Palabra(5);
    principal.AvanzarPalabras_Click();
    EXPECT_EQ(diario.Todo(),
              (Lineas{"motor.Detiene", "sonido.AVANZARRETROCEDER", "motor.Habla(pal5 pal6 pal7 pal8 pal9 palX)"}));
    EXPECT_EQ(campos.PosBase, 21);
    EXPECT_EQ(campos.PosPalabra, 0);
    EXPECT_TRUE(Reiniciando());
    Corre();
    EXPECT_TRUE(Hablando());
}

TEST_F(Navegacion, WordsOfARestartCountFromItsOwnBeginning) {
    Avance(3);
    Lee(m_diez);
    motor.Palabra(5);
    principal.AvanzarPalabras_Click();
    Corre();
    motor.Palabra(5);
    EXPECT_EQ(principal.GetTramoLectura(), QStringLiteral("pal6 pal7 pal8 pal9 palX"));
    Avance(1);
    diario.Olvida();
    principal.AvanzarPalabras_Click();
    EXPECT_EQ(Motor(), (Lineas{"Detiene", "Habla(pal7 pal8 pal9 palX)"}));
}

TEST_F(Navegacion, ARestartNeverAsksForSpokenSignsNorCancelsNorRecords) {
    for (const bool sapi : {false, true}) {
        if (sapi) PasaASAPI5();
        opcGeneral.SetPronunciaSignosPunt(true);
        opcGrabar.SetGrabarTexto(true);
        Avance(1);
        LeeDe(1, m_diez);
        principal.AvanzarPalabras_Click();
        EXPECT_EQ(diario.Todo(), (Lineas{"motor.Detiene", "sonido.AVANZARRETROCEDER",
                                         "motor.Habla(" + m_diez.mid(5).toStdString() + ")"}));
    }
}

TEST_F(Navegacion, AnAdvanceDuringAPauseResumesFirstWithItsSound) {
    Avance(1);
    Lee(m_diez);
    motor.Palabra(5);
    principal.PausaReanudar_Click();
    diario.Olvida();
    principal.AvanzarPalabras_Click();
    EXPECT_EQ(diario.Todo(), (Lineas{"timer.no", "sonido.PAUSA", "motor.Reanuda", "timer.si", "motor.Detiene",
                                     "sonido.AVANZARRETROCEDER", "motor.Habla(" + m_diez.mid(10).toStdString() + ")"}));
    EXPECT_TRUE(menu.PausaReanudar.Rotulo().startsWith(QStringLiteral("Pausa (")));
}

TEST_F(Navegacion, AnAdvancePastTheLastWordEndsTheReadingAsANormalEndDoes) {
    Lee(m_diez);
    motor.Palabra(35);
    principal.AvanzarPalabras_Click();
    EXPECT_EQ(Motor(), Lineas{"Detiene"});
    EXPECT_EQ(Sonidos(), (Lineas{"AVANZARRETROCEDER", "DETENER"}));
    EXPECT_TRUE(Ociosa());
    EXPECT_TRUE(menu.RepetirLectura.Habilitada());
    EXPECT_EQ(campos.PosBase, 46);  // the last word's first character
    Corre();
    EXPECT_EQ(Sonidos().size(), 2U);
}

TEST_F(Navegacion, OffTheEndOfATextOfOneWordThePositionIsItsBeginning) {
    Lee(QStringLiteral(" solo "));
    principal.AvanzarPalabras_Click();
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(campos.PosBase, 1);
}

TEST_F(Navegacion, AnAdvanceOfNoWordsRestartsAtTheWordBeingSpoken) {
    Avance(0);
    Lee(m_diez);
    motor.Palabra(10);
    principal.AvanzarPalabras_Click();
    EXPECT_EQ(Motor(), (Lineas{"Detiene", "Habla(" + m_diez.mid(10).toStdString() + ")"}));
}

TEST_F(Navegacion, APauseRightAfterARestartIsIgnoredUntilItsFirstWord) {
    Avance(1);
    Lee(m_diez);
    motor.Palabra(5);
    principal.AvanzarPalabras_Click();
    Corre();
    principal.PausaReanudar_Click();
    EXPECT_TRUE(Hablando());
}

TEST_F(Navegacion, OnlyClipboardReadingsMove) {
    for (const std::int32_t tipo : {2, 3}) {
        LeeDe(tipo, m_diez);
        motor.Palabra(5);
        diario.Olvida();
        principal.AvanzarPalabras_Click();
        principal.RetrocederPalabras_Click();
        Pulsa("Avanzar");
        Pulsa("Retroceder");
        EXPECT_EQ(diario.Todo(), Lineas{}) << tipo;
        EXPECT_TRUE(Hablando());
    }
}

TEST_F(Navegacion, WordsAreCountedOneCharacterForEachUnitWhateverTheScript) {
    Avance(2);
    Lee(QStringLiteral("añó €uro 日本 😀 fin"));
    principal.AvanzarPalabras_Click();
    EXPECT_EQ(Motor(), (Lineas{"Detiene", "Habla(日本 😀 fin)"}));
}

// --- Retreat

TEST_F(Navegacion, ARetreatGoesBackByWords) {
    Retroceso(2);
    Lee(m_diez);
    motor.Palabra(20);
    principal.RetrocederPalabras_Click();
    EXPECT_EQ(diario.Todo(), (Lineas{"motor.Detiene", "sonido.AVANZARRETROCEDER",
                                     "motor.Habla(" + m_diez.mid(10).toStdString() + ")"}));
    EXPECT_TRUE(Reiniciando());
}

TEST_F(Navegacion, ARetreatStopsAtTheBeginningOfTheText) {
    Lee(m_diez);
    motor.Palabra(20);
    principal.RetrocederPalabras_Click();
    EXPECT_EQ(Motor(), (Lineas{"Detiene", "Habla(" + m_diez.toStdString() + ")"}));
    EXPECT_EQ(campos.PosBase, 1);
}

TEST_F(Navegacion, ARetreatAtTheFirstWordRestartsTheText) {
    Retroceso(1);
    Lee(m_diez);
    principal.RetrocederPalabras_Click();
    EXPECT_EQ(Motor(), (Lineas{"Detiene", "Habla(" + m_diez.toStdString() + ")"}));
    Corre();
    EXPECT_TRUE(Hablando());
}

TEST_F(Navegacion, ARetreatDuringAPauseResumesFirst) {
    Retroceso(1);
    Lee(m_diez);
    motor.Palabra(5);
    principal.PausaReanudar_Click();
    diario.Olvida();
    principal.RetrocederPalabras_Click();
    EXPECT_EQ(Motor(), (Lineas{"Reanuda", "Detiene", "Habla(" + m_diez.toStdString() + ")"}));
}

// --- Failures

TEST_F(Navegacion, AMoveBeyondPosition32767FailsAndLeavesTheEngineStoppedInState2) {
    for (const int palabras : {1, 10}) {
        Avance(palabras);
        Lee(QStringLiteral("abcd ").repeated(8000) + QString::number(palabras));
        motor.Palabra(32800);
        const auto lineas = Log().size();
        principal.AvanzarPalabras_Click();
        EXPECT_EQ(Motor(), Lineas{"Detiene"});
        EXPECT_LT(campos.PosBase, 0);
        EXPECT_EQ(Estado(), 2);
        EXPECT_FALSE(motor.Hablando());
        ASSERT_EQ(Log().size(), lineas + 1);
        EXPECT_TRUE(Log().back().contains(QStringLiteral("cFormPrincipal.AvanzarPalabras_Click: ")));
        EXPECT_TRUE(Log().back().contains(QStringLiteral("(5)")));
        EXPECT_TRUE(mensajes.cajas.empty());
        // Only a start event clears it: a retreat restarts the text.
        principal.RetrocederPalabras_Click();
        Corre();
        EXPECT_TRUE(Hablando());
        principal.Detener_Click();
    }
}

TEST_F(Navegacion, ARetreatBeyondPosition32767RestartsTheText) {
    Retroceso(1);
    const QString texto = QStringLiteral("abcd ").repeated(8000);
    Lee(texto);
    motor.Palabra(35000);
    principal.RetrocederPalabras_Click();
    EXPECT_EQ(campos.PosBase, 1);
    Corre();
    EXPECT_TRUE(Hablando());
}

TEST_F(Navegacion, ARefusedRestartIsLoggedAndLeavesState2) {
    PasaASAPI5();
    Avance(1);
    LeeDe(1, m_diez);
    motor.rechazo = Fallo::De(Fallo::SintaxisDeEtiquetas);
    principal.AvanzarPalabras_Click();
    EXPECT_EQ(Estado(), 2);
    EXPECT_FALSE(motor.Hablando());
    EXPECT_TRUE(Log().value(0).contains(QStringLiteral("cFormPrincipal.AvanzarPalabras_Click: ")));
    EXPECT_TRUE(mensajes.cajas.empty());
}

}  // namespace ondalis::prueba
