#include "reader/PruebaLector.h"

namespace ondalis::prueba {

class Portapapeleo : public PruebaLector {
protected:
    Portapapeleo() { Arranca(); }
};

TEST_F(Portapapeleo, ACopyIsReadAtTheNextTick) {
    Copia(QStringLiteral("hola"));
    EXPECT_EQ(Motor(), Lineas{});
    Tic();
    EXPECT_EQ(diario.Todo(), (Lineas{"icono.10", "motor.CancelaECI", "motor.Habla(hola)", "icono.1"}));
    EXPECT_EQ(campos.TextoCopiado, QStringLiteral("hola"));
    EXPECT_TRUE(Enviada());
}

TEST_F(Portapapeleo, TheFilteredTextIsReadAndTheRawOneRemembered) {
    AddConversionDicc("km", "kilómetros");
    Envia(QStringLiteral("3 km"));
    EXPECT_EQ(campos.TextoCopiado, QStringLiteral("3 km"));
    EXPECT_EQ(campos.TextoLectura, QStringLiteral("3  kilómetros"));
}

TEST_F(Portapapeleo, TheSameTextCopiedTwiceIsReadOnce) {
    Lee(QStringLiteral("hola"));
    TerminaTexto();
    diario.Olvida();
    Envia(QStringLiteral("hola"));
    EXPECT_EQ(Motor(), Lineas{});
}

TEST_F(Portapapeleo, ATextThatDiffersOnlyInCaseIsRead) {
    Lee(QStringLiteral("hola"));
    TerminaTexto();
    Envia(QStringLiteral("Hola"));
    EXPECT_TRUE(Enviada());
}

TEST_F(Portapapeleo, AShortTextIsIgnoredWithoutATrace) {
    opcTipoLectura.SetIgnoraMiniTexto(true);
    opcTipoLectura.SetCharsMiniTexto(5);
    Envia(QStringLiteral("hola"));
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(campos.TextoCopiado, QString());
    EXPECT_EQ(diario.De("icono."), Lineas{});
    Envia(QStringLiteral("  hola  "));  // blanks around it don't count
    EXPECT_TRUE(Ociosa());
    Envia(QStringLiteral("holas"));
    EXPECT_TRUE(Enviada());
}

TEST_F(Portapapeleo, ACopyOfBlanksIsIgnored) {
    Envia(QStringLiteral(" \n\t "));
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(campos.TextoCopiado, QString());
}

TEST_F(Portapapeleo, TheReservedStateRefusesTheSource) {
    Estado() = 3;
    Envia(QStringLiteral("hola"));
    EXPECT_EQ(Motor(), Lineas{});
}

TEST_F(Portapapeleo, ATextCopiedDuringAReadingIsReadWhenItEnds) {
    Lee(QStringLiteral("primero"));
    Envia(QStringLiteral("segundo"));
    Envia(QStringLiteral("tercero"));  // there is no queue: the last copy wins
    EXPECT_EQ(Motor(), Lineas{});
    TerminaTexto();
    Tic();
    EXPECT_EQ(Motor(), (Lineas{"CancelaECI", "Habla(tercero)"}));
}

TEST_F(Portapapeleo, ATextCopiedDuringAReadingThatEqualsItIsNotRead) {
    Lee(QStringLiteral("primero"));
    Envia(QStringLiteral("segundo"));
    Envia(QStringLiteral("primero"));
    TerminaTexto();
    Tic();
    EXPECT_EQ(Motor(), Lineas{});
}

TEST_F(Portapapeleo, ATextCopiedDuringAPauseWaitsForTheEnd) {
    Lee(QStringLiteral("uno dos"));
    motor.Palabra(4);
    principal.PausaReanudar_Click();
    Envia(QStringLiteral("segundo"));
    EXPECT_TRUE(Pausada());
    EXPECT_EQ(campos.TextoCopiado, QStringLiteral("uno dos"));
    principal.Detener_Click();
    Tic();
    EXPECT_TRUE(Enviada());
    EXPECT_EQ(campos.TextoLectura, QStringLiteral("segundo"));
}

TEST_F(Portapapeleo, ForIBMTextsEqualInTheirFirst65000CharactersAreTheSameCopy) {
    const QString comun(65000, QLatin1Char('a'));
    Lee(comun + QStringLiteral("uno"));
    EXPECT_EQ(campos.TextoCopiado.size(), 65000);
    TerminaTexto();
    diario.Olvida();
    Envia(comun + QStringLiteral("dos"));
    EXPECT_EQ(Motor(), Lineas{});
}

TEST_F(Portapapeleo, ForSAPI5TheWholeTextIsComparedAndRead) {
    PasaASAPI5();
    const QString comun(65000, QLatin1Char('a'));
    Lee(comun + QStringLiteral("uno"));
    EXPECT_EQ(campos.TextoLectura.size(), 65003);
    TerminaTexto();
    diario.Olvida();
    Envia(comun + QStringLiteral("dos"));
    EXPECT_EQ(Motor().size(), 1U);
}

TEST_F(Portapapeleo, ForIBMTheFilteredTextIsCutAt65500Characters) {
    AddConversionDicc("a", "bb");
    const QString texto(30000, QLatin1Char('a'));
    Envia(texto);
    EXPECT_EQ(campos.TextoLectura.size(), 65500);
    TerminaTexto();
    PasaASAPI5();
    Envia(texto + QLatin1Char('a'));
    EXPECT_EQ(campos.TextoLectura.size(), 90003);
}

TEST_F(Portapapeleo, NoCutSplitsASurrogatePair) {
    Envia(QString(64999, QLatin1Char('a')) + QStringLiteral("😀"));
    EXPECT_EQ(campos.TextoCopiado, QString(64999, QLatin1Char('a')));
}

TEST_F(Portapapeleo, ContentWithoutTextChangesNothingAndTheOldTextIsNotReadAgain) {
    Lee(QStringLiteral("hola"));
    TerminaTexto();
    diario.Olvida();
    portapapeles.texto.reset();
    Tic();
    Envia(QStringLiteral("hola"));
    EXPECT_EQ(diario.Todo(), Lineas{});
    EXPECT_EQ(campos.TextoCopiado, QStringLiteral("hola"));
}

TEST_F(Portapapeleo, WithLeePortapapelesOffNothingIsRead) {
    opcTipoLectura.SetLeePortapapeles(false);
    Envia(QStringLiteral("hola"));
    EXPECT_EQ(diario.Todo(), Lineas{});
}

TEST_F(Portapapeleo, WithLeerTextoOffACopyIsRecordedOnce) {
    opcGrabar.SetGrabarTexto(true);
    opcGrabar.SetLeerTexto(false);
    Envia(QStringLiteral("hola"));
    Tic();
    EXPECT_EQ(diario.Todo(), (Lineas{"icono.10", "graba(hola,)", "icono.5"}));
    EXPECT_TRUE(Ociosa());
}

TEST_F(Portapapeleo, ARefusedTextIsNotTriedAgainAtEveryTick) {
    PasaASAPI5();
    motor.rechazo = Fallo::De(Fallo::SintaxisDeEtiquetas);
    Envia(QStringLiteral("<rate>"));
    Tic();
    Tic();
    EXPECT_EQ(mensajes.cajas.size(), 1U);
    EXPECT_EQ(Motor().size(), 1U);
}

// --- The tick

TEST_F(Portapapeleo, TheTickLetsPendingEventsRunBeforeItLooksAtTheState) {
    Lee(QStringLiteral("primero"));
    Copia(QStringLiteral("segundo"));
    motor.Termina();
    Tic();  // the end arrives first, so the same tick reads on
    EXPECT_EQ(Motor(), (Lineas{"CancelaECI", "Habla(segundo)"}));
}

TEST_F(Portapapeleo, TheIconCyclesThrough2To4DuringAReading) {
    Lee(QStringLiteral("hola"));
    for (int i = 0; i < 5; ++i) Tic();
    EXPECT_EQ(diario.De("icono."), (Lineas{"2", "3", "4", "2", "3"}));
    TerminaTexto();
    EXPECT_EQ(icono.imagen, 1);
}

TEST_F(Portapapeleo, TheIconCyclesThrough6To8DuringARecordedReading) {
    opcGrabar.SetGrabarTexto(true);
    Lee(QStringLiteral("hola"));
    for (int i = 0; i < 5; ++i) Tic();
    EXPECT_EQ(diario.De("icono."), (Lineas{"6", "7", "8", "6", "7"}));
    TerminaTexto();
    EXPECT_EQ(icono.imagen, 5);
}

TEST_F(Portapapeleo, TheIconOfAPauseStandsStill) {
    Lee(QStringLiteral("uno dos"));
    motor.Palabra(4);
    principal.PausaReanudar_Click();
    diario.Olvida();
    Tic();
    EXPECT_EQ(diario.Todo(), Lineas{});
}

TEST_F(Portapapeleo, AFetchAskedForSoundsErrorAtEachTickOfAPause) {
    Lee(QStringLiteral("uno dos"));
    motor.Palabra(4);
    principal.PausaReanudar_Click();
    campos.PendienteTeclado = true;
    diario.Olvida();
    Tic();
    Tic();
    EXPECT_EQ(Sonidos(), (Lineas{"ERROR", "ERROR"}));
    sonidosAviso.SetAvisosGenerales(false);
    Tic();
    EXPECT_EQ(Sonidos().size(), 2U);
}

TEST_F(Portapapeleo, AnIdleTickForgetsTheFetch) {
    campos.PendienteTeclado = true;
    Tic();
    EXPECT_FALSE(campos.PendienteTeclado);
}

}  // namespace ondalis::prueba
