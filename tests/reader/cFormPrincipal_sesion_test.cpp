#include "reader/PruebaLector.h"

namespace ondalis::prueba {

class Sesion : public PruebaLector {
protected:
    Sesion() { Arranca(); }
};

// --- What can be read

TEST_F(Sesion, ATextOfBlanksUpTo200CharactersIsNotReadable) {
    EXPECT_FALSE(principal.EsTextoLeible(QString()));
    EXPECT_FALSE(principal.EsTextoLeible(QStringLiteral(" \r\n\t ")));
    EXPECT_FALSE(principal.EsTextoLeible(QString(200, QLatin1Char(' '))));
}

TEST_F(Sesion, OneOtherCharacterMakesATextReadable) {
    EXPECT_TRUE(principal.EsTextoLeible(QStringLiteral("  .\n")));
    EXPECT_TRUE(principal.EsTextoLeible(QString(QChar(0xA0))));
}

TEST_F(Sesion, ATextOfMoreThan200CharactersIsReadableUnseen) {
    EXPECT_TRUE(principal.EsTextoLeible(QString(201, QLatin1Char(' '))));
}

TEST_F(Sesion, BlanksAreNotReadBut201BlanksPassThroughSentAndEnd) {
    Envia(QString(200, QLatin1Char(' ')));
    EXPECT_TRUE(Ociosa());
    Envia(QString(201, QLatin1Char(' ')));
    EXPECT_TRUE(Enviada());
    TerminaTexto();
    EXPECT_TRUE(Ociosa());
}

// --- The filter by family

TEST_F(Sesion, SignsAreSpacedForIBMOnlyAndOnlyWhenWanted) {
    const QString texto = QStringLiteral("uno,dos");
    EXPECT_EQ(principal.TextoFiltrado(texto), texto);
    opcGeneral.SetPronunciaSignosPunt(true);
    EXPECT_NE(principal.TextoFiltrado(texto), texto);
    PasaASAPI5();
    EXPECT_EQ(principal.TextoFiltrado(texto), texto);
}

TEST_F(Sesion, TheDictionaryServesEveryFamilyAndLeavesTheArgumentAlone) {
    AddConversionDicc("sr.", "señor");
    const QString texto = QStringLiteral("el sr. Gil");
    EXPECT_EQ(principal.TextoFiltrado(texto), QStringLiteral("el  señor Gil"));
    PasaASAPI5();
    EXPECT_EQ(principal.TextoFiltrado(texto), QStringLiteral("el  señor Gil"));
    EXPECT_EQ(texto, QStringLiteral("el sr. Gil"));
}

// --- IniciaLectura

TEST_F(Sesion, AStartForIBMCancelsTheRecordingEngineThenSpeaksThenShowsTheIcon) {
    campos.TextoLectura = QStringLiteral("hola");
    campos.TextoWindows = QStringLiteral("tecleado");
    campos.PosBase = 77;
    principal.IniciaLectura(1);
    EXPECT_EQ(diario.Todo(), (Lineas{"motor.CancelaECI", "motor.Habla(hola)", "icono.1"}));
    EXPECT_EQ(campos.PosBase, 1);
    EXPECT_EQ(campos.TipoLectura, 1);
    EXPECT_EQ(campos.TextoWindows, QString());
    EXPECT_TRUE(Enviada());
}

TEST_F(Sesion, ARecordingIsMadeBeforeTheSpeechAndIsNotCancelled) {
    opcGrabar.SetGrabarTexto(true);
    campos.TextoLectura = QStringLiteral("hola");
    principal.IniciaLectura(1);
    EXPECT_EQ(diario.Todo(), (Lineas{"graba(hola,)", "motor.Habla(hola)", "icono.5"}));
}

TEST_F(Sesion, SAPI5HasNothingToCancel) {
    PasaASAPI5();
    campos.TextoLectura = QStringLiteral("hola");
    principal.IniciaLectura(1);
    EXPECT_EQ(Motor(), Lineas{"Habla(hola)"});
}

TEST_F(Sesion, SpokenPunctuationIsAskedOfTheEngineAtAStart) {
    PasaASAPI5();
    opcGeneral.SetPronunciaSignosPunt(true);
    campos.TextoLectura = QStringLiteral("hola");
    principal.IniciaLectura(1);
    EXPECT_EQ(Motor(), Lineas{"Habla(hola,signos)"});
}

TEST_F(Sesion, WithLeerTextoOffTheTextIsRecordedAndTheSessionStaysIdle) {
    opcGrabar.SetGrabarTexto(true);
    opcGrabar.SetLeerTexto(false);
    campos.TipoLectura = 2;
    campos.TextoWindows = QStringLiteral("queda");
    campos.TextoLectura = QStringLiteral("hola");
    principal.IniciaLectura(1);
    Corre();
    EXPECT_EQ(diario.Todo(), (Lineas{"graba(hola,)", "icono.5"}));
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(campos.TipoLectura, 2);
    EXPECT_EQ(campos.TextoWindows, QStringLiteral("queda"));
}

TEST_F(Sesion, TheEditorSpeaksEvenWithLeerTextoOffAndNeverRecordsHere) {
    opcGrabar.SetGrabarTexto(true);
    opcGrabar.SetLeerTexto(false);
    campos.TextoLectura = QStringLiteral("hola");
    principal.IniciaLectura(3);
    EXPECT_EQ(diario.Todo(), (Lineas{"motor.Habla(hola)", "icono.5"}));
    EXPECT_EQ(campos.TipoLectura, 3);
}

TEST_F(Sesion, AnInactiveProgramShowsItsOwnIconAtAStart) {
    principal.ActivarDesactivar_Click();
    diario.Olvida();
    campos.TextoLectura = QStringLiteral("hola");
    principal.IniciaLectura(3);
    EXPECT_EQ(diario.De("icono."), Lineas{"9"});
}

TEST_F(Sesion, ARefusedMarkupIsToldAndLeavesTheSessionIdleWithTheNewSource) {
    motor.rechazo = Fallo::De(Fallo::SintaxisDeEtiquetas);
    campos.TextoLectura = QStringLiteral("<rate>");
    principal.IniciaLectura(2);
    ASSERT_EQ(mensajes.cajas.size(), 1U);
    EXPECT_EQ(mensajes.cajas[0].texto,
              QStringLiteral("cFormPrincipal.IniciaLectura: Error de sintaxis en la etiquetas del texto"));
    EXPECT_FALSE(mensajes.cajas[0].pregunta);
    EXPECT_EQ(Log(), QStringList());
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(campos.TipoLectura, 2);
    EXPECT_EQ(diario.Todo().back(), "icono.1");
}

TEST_F(Sesion, AnyOtherFailureOfAStartIsToldWithItsNumberAndLogged) {
    motor.rechazo = Fallo::De(Fallo::SinMemoria);
    campos.TextoLectura = QStringLiteral("hola");
    principal.IniciaLectura(1);
    ASSERT_EQ(mensajes.cajas.size(), 1U);
    EXPECT_EQ(mensajes.cajas[0].texto, QStringLiteral("cFormPrincipal.IniciaLectura: Memoria insuficiente (7)"));
    ASSERT_EQ(Log().size(), 1);
    EXPECT_TRUE(Log()[0].contains(QStringLiteral("cFormPrincipal.IniciaLectura: Memoria insuficiente (7)")));
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(icono.imagen, 1);
}

TEST_F(Sesion, ReadTextsNeverEnterTheLog) {
    motor.rechazo = Fallo::De(Fallo::SinMemoria);
    Envia(QStringLiteral("secretísimo"));
    EXPECT_FALSE(Log().join(QString()).contains(QStringLiteral("secret")));
}

// --- Start of speech

TEST_F(Sesion, TheStartEventEnablesTheEntries) {
    menu.RepetirLectura.SetHabilitada(true);
    Envia(QStringLiteral("uno dos"));
    EXPECT_FALSE(menu.Detener.Habilitada());
    Corre();
    EXPECT_TRUE(menu.PausaReanudar.Habilitada());
    EXPECT_TRUE(menu.Detener.Habilitada());
    EXPECT_FALSE(menu.RepetirLectura.Habilitada());
    EXPECT_TRUE(menu.AvanzarPalabras.Habilitada());
    EXPECT_TRUE(menu.RetrocederPalabras.Habilitada());
    EXPECT_TRUE(menu.AvanzarPalabras.Rotulo().startsWith(QStringLiteral("Avanzar palabras (")));
}

TEST_F(Sesion, TheStartOfANoticeChangesNothing) {
    Estado() = 1;
    principal.Voz_StartSpeaking();
    EXPECT_FALSE(menu.Detener.Habilitada());
    EXPECT_FALSE(campos.Leyendo);
    EXPECT_EQ(Estado(), 1);
}

TEST_F(Sesion, TheStartOfARestartOnlyClearsTheState) {
    Estado() = 2;
    principal.Voz_StartSpeaking();
    EXPECT_EQ(Estado(), 0);
    EXPECT_FALSE(menu.Detener.Habilitada());
    EXPECT_FALSE(campos.Leyendo);
}

TEST_F(Sesion, AStartWhileInactiveChangesNothing) {
    principal.ActivarDesactivar_Click();
    principal.Voz_StartSpeaking();
    EXPECT_FALSE(menu.Detener.Habilitada());
    EXPECT_FALSE(campos.Leyendo);
}

TEST_F(Sesion, InTheReservedStateTheAdvanceReadsAvanzarVariableAndTheRetreatStaysDisabled) {
    Estado() = 3;
    principal.Voz_StartSpeaking();
    EXPECT_EQ(menu.AvanzarPalabras.Rotulo(), QStringLiteral("Avanzar variable"));
    EXPECT_TRUE(menu.AvanzarPalabras.Habilitada());
    EXPECT_FALSE(menu.RetrocederPalabras.Habilitada());
}

// --- Words

TEST_F(Sesion, AWordEventStoresItsPositionInEveryState) {
    for (const std::int32_t valor : {0, 1, 2, 4}) {
        Estado() = valor;
        principal.Voz_WordPosition(10 + valor);
        EXPECT_EQ(campos.PosPalabra, 10 + valor);
    }
}

TEST_F(Sesion, TheEditorIsFollowedByWordsOfItsReadingOnly) {
    LeeDe(3, QStringLiteral("uno dos"));
    motor.Palabra(4);
    EXPECT_EQ(diario.De("editor.LocalizaPalabra"), Lineas{"(4)"});
    Estado() = 4;
    principal.Voz_WordPosition(5);
    EXPECT_EQ(diario.De("editor.LocalizaPalabra"), Lineas{"(4)"});
}

TEST_F(Sesion, AKeyboardReadingIsFollowedByNobody) {
    LeeDe(2, QStringLiteral("uno dos"));
    campos.SeguimientoWord = 1;
    motor.Palabra(4);
    EXPECT_EQ(diario.Todo(), Lineas{});
}

// --- The fragment at the position

TEST_F(Sesion, TheFragmentIsCutBeforeItsLastBlankWhenAll100CharactersCame) {
    const QString palabra = QStringLiteral("palabra ");  // 8
    campos.TextoLectura = palabra.repeated(20);
    campos.PosBase = 1;
    campos.PosPalabra = 0;
    EXPECT_EQ(principal.GetTramoLectura(), palabra.repeated(12).chopped(1));  // the blank at 96 of 100
}

TEST_F(Sesion, NearTheEndTheFragmentIsShorterAndNotCut) {
    campos.TextoLectura = QStringLiteral("uno dos tres");
    campos.PosBase = 5;
    campos.PosPalabra = 0;
    EXPECT_EQ(principal.GetTramoLectura(), QStringLiteral("dos tres"));
    campos.PosPalabra = 4;
    EXPECT_EQ(principal.GetTramoLectura(), QStringLiteral("tres"));
    campos.PosPalabra = 400;
    EXPECT_EQ(principal.GetTramoLectura(), QString());
}

TEST_F(Sesion, ARunOf100CharactersWithoutABlankComesBackWhole) {
    campos.TextoLectura = QString(150, QLatin1Char('a'));
    EXPECT_EQ(principal.GetTramoLectura(), QString(100, QLatin1Char('a')));
}

TEST_F(Sesion, ALastBlankAtTheFirstPlaceLeavesTheFragmentAsItIs) {
    campos.TextoLectura = QLatin1Char(' ') + QString(150, QLatin1Char('a'));
    EXPECT_EQ(principal.GetTramoLectura(), campos.TextoLectura.left(100));
    campos.TextoLectura = QStringLiteral("b ") + QString(150, QLatin1Char('a'));
    EXPECT_EQ(principal.GetTramoLectura(), QStringLiteral("b"));
}

TEST_F(Sesion, TheFragmentNeverEndsInHalfASurrogatePair) {
    campos.TextoLectura = QString(99, QLatin1Char('a')) + QStringLiteral("😀b");
    EXPECT_EQ(principal.GetTramoLectura(), QString(99, QLatin1Char('a')));
}

TEST_F(Sesion, ANegativePositionGivesNoFragmentAndALogLine) {
    campos.TextoLectura = QStringLiteral("uno");
    campos.PosBase = -5;
    EXPECT_EQ(principal.GetTramoLectura(), QString());
    EXPECT_TRUE(Log().value(0).contains(QStringLiteral("cFormPrincipal.GetTramoLectura: ")));
}

}  // namespace ondalis::prueba
