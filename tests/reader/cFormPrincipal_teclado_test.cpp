#include "reader/PruebaLector.h"

namespace ondalis::prueba {

class Tecleo : public PruebaLector {
protected:
    Tecleo() {
        opcTipoLectura.SetLeeTeclado(true);
        opcTipoLectura.SetLeeCambioApp(false);
        Arranca();
    }
    void Teclea(const char *texto) {
        gancho.Teclea(QString::fromUtf8(texto));
        Corre();
    }
    void PulsaTecla(int tecla, const QString &texto = {}, int mayusculas = 0) {
        gancho.Pulsa(tecla, texto, mayusculas);
        Corre();
    }
    void Retrocede() { PulsaTecla(8, QStringLiteral("\b")); }
    Lineas Dicho() const { return diario.De("motor.Habla"); }
};

TEST_F(Tecleo, EnterReadsAtOnceWhatHasBeenTyped) {
    Teclea("hola mundo");
    EXPECT_EQ(Dicho(), Lineas{});
    EXPECT_EQ(campos.TextoWindows, QStringLiteral("hola mundo"));
    Teclea("\n");
    EXPECT_EQ(Dicho(), Lineas{"(hola mundo)"});
    EXPECT_EQ(campos.TipoLectura, 2);
    EXPECT_EQ(campos.TextoWindows, QString());
}

TEST_F(Tecleo, TheKeyThatTriggersIsNotInTheText) {
    opcTipoLectura.SetLeeCambioApp(false);
    teclasLeeTeclado.ListaTeclas();
    for (std::size_t i = 0; i < teclasLeeTeclado.ListaTeclas().size(); ++i)
        teclasLeeTeclado.Marca(i, teclasLeeTeclado.ListaTeclas()[i].clave == QStringLiteral("k032"));
    teclasLeeTeclado.SetTags();
    Teclea("uno ");
    EXPECT_EQ(Dicho(), Lineas{"(uno)"});
    Teclea("dos ");
    EXPECT_EQ(Dicho(), (Lineas{"(uno)", "(dos)"}));
}

TEST_F(Tecleo, AReadingKeyReplacesTheReadingUnderWay) {
    Lee(QStringLiteral("una copia larga"));
    ASSERT_TRUE(Hablando());
    Teclea("hola\n");
    EXPECT_EQ(Dicho(), Lineas{"(hola)"});
    Corre();
    EXPECT_TRUE(Hablando());
    EXPECT_EQ(campos.TipoLectura, 2);
}

TEST_F(Tecleo, ASignIsReadAtTheNextTick) {
    Teclea("¿qué tal?");
    EXPECT_EQ(Dicho(), Lineas{});
    Tic();
    EXPECT_EQ(Dicho(), Lineas{"(¿qué tal?)"});
    EXPECT_EQ(diario.De("icono.").front(), "10");
}

TEST_F(Tecleo, ADotInsideAWordOrNumberReadsNothing) {
    Teclea("son 3.14");
    Tic();
    EXPECT_EQ(Dicho(), Lineas{});
    Teclea(". ");
    Tic();
    EXPECT_EQ(Dicho(), Lineas{"(son 3.14. )"});
}

TEST_F(Tecleo, ASignDuringAReadingWaitsForItsEnd) {
    Lee(QStringLiteral("una copia larga"));
    Teclea("hola!");
    Tic();
    EXPECT_EQ(Dicho(), Lineas{});
    TerminaTexto();
    Tic();
    EXPECT_EQ(Dicho(), Lineas{"(hola!)"});
}

TEST_F(Tecleo, ASignDuringAPauseWaits) {
    Lee(QStringLiteral("una copia larga"));
    motor.Palabra(4);
    principal.PausaReanudar_Click();
    ASSERT_TRUE(Pausada());
    diario.Olvida();
    Teclea("hola!");
    Tic();
    EXPECT_EQ(Dicho(), Lineas{});
}

TEST_F(Tecleo, WhiteSpaceNeverOpensTheBufferButStandsInsideIt) {
    Teclea("  \t \n");
    EXPECT_EQ(campos.TextoWindows, QString());
    Teclea("a\tb  c ");
    EXPECT_EQ(campos.TextoWindows, QStringLiteral("a\tb  c "));
}

TEST_F(Tecleo, TheFirstBlanksTypedAfterAReadingStartedDoNotEnter) {
    Teclea("hola\n");
    Teclea("  ");
    EXPECT_EQ(campos.TextoWindows, QString());
    Teclea("x y");
    EXPECT_EQ(campos.TextoWindows, QStringLiteral("x y"));
}

TEST_F(Tecleo, BackspaceTakesTheLastCharacterWhole) {
    Teclea("ho");
    PulsaTecla(0, QString::fromUtf8("😀"));
    Retrocede();
    EXPECT_EQ(campos.TextoWindows, QStringLiteral("ho"));
    PulsaTecla(0, QString::fromUtf8("e\u0301"));
    Retrocede();
    EXPECT_EQ(campos.TextoWindows, QStringLiteral("ho"));
    for (int i = 0; i < 5; ++i) Retrocede();
    EXPECT_EQ(campos.TextoWindows, QString());
}

TEST_F(Tecleo, BackspaceWithControlTakesTheLastWord) {
    Teclea("uno dos ");
    PulsaTecla(8, {}, TeclaEscrita::Control);
    EXPECT_EQ(campos.TextoWindows, QStringLiteral("uno "));
}

TEST_F(Tecleo, ArrowsDeleteEscapeAndPastingChangeNothing) {
    Teclea("hola");
    PulsaTecla(37);
    PulsaTecla(46, QStringLiteral("\x7f"));
    PulsaTecla(27, QStringLiteral("\x1b"));
    PulsaTecla('V', {}, TeclaEscrita::Control);
    EXPECT_EQ(campos.TextoWindows, QStringLiteral("hola"));
}

TEST_F(Tecleo, EnterThatDoesNotReadIsALineEnd) {
    for (std::size_t i = 0; i < teclasLeeTeclado.ListaTeclas().size(); ++i) teclasLeeTeclado.Marca(i, false);
    teclasLeeTeclado.SetTags();
    Teclea("uno\ndos");
    EXPECT_EQ(campos.TextoWindows, QStringLiteral("uno\ndos"));
}

TEST_F(Tecleo, AHotKeyIsAnOrderAndNotTyped) {
    Teclea("hola");
    // Control and Enter as the key of "Detener".
    tecla.AddTecla(0, 13, QStringLiteral("Detener"));
    PulsaTecla(13, {}, TeclaEscrita::Control);
    EXPECT_EQ(Dicho(), Lineas{});
    PulsaTecla(13, {}, TeclaEscrita::Mayus);
    EXPECT_EQ(Dicho(), Lineas{"(hola)"});
}

TEST_F(Tecleo, TheTextGoesThroughTheFilter) {
    AddConversionDicc("km", "kilómetros");
    Teclea("3 km\n");
    EXPECT_EQ(Dicho(), Lineas{"(3  kilómetros)"});
}

TEST_F(Tecleo, ABlankBufferStartsNothing) {
    Teclea("a");
    Retrocede();
    Teclea("\n");
    Tic();
    EXPECT_EQ(Dicho(), Lineas{});
    EXPECT_EQ(diario.De("icono."), Lineas{});
}

TEST_F(Tecleo, WhileOnlyAFileIsMadeTheTextIsRecordedOnce) {
    opcGrabar.SetTag(QStringLiteral("CheckLeer"), QStringLiteral("0"));
    opcGrabar.SetTag(QStringLiteral("CheckGrabar"), QStringLiteral("1"));
    ASSERT_FALSE(opcGrabar.LeerTexto());
    ASSERT_TRUE(opcGrabar.GrabarTexto());
    Teclea("hola!");
    Tic();
    Tic();
    EXPECT_EQ(diario.De("graba"), Lineas{"(hola!,)"});
    EXPECT_TRUE(Ociosa());
}

TEST_F(Tecleo, AChangeOfWindowReadsWhatWasTypedInTheOneBefore) {
    opcTipoLectura.SetLeeCambioApp(true);
    foco.ventana = 7;
    Teclea("hola");
    Tic();
    EXPECT_EQ(Dicho(), Lineas{});
    foco.ventana = 8;
    Tic();
    EXPECT_EQ(Dicho(), Lineas{"(hola)"});
}

TEST_F(Tecleo, WithAnEmptyBufferTheWindowIsNotFollowed) {
    opcTipoLectura.SetLeeCambioApp(true);
    foco.ventana = 7;
    Tic();
    EXPECT_EQ(foco.preguntas, 0);
    foco.ventana = 8;
    Teclea("hola");
    Tic();
    Tic();
    EXPECT_EQ(Dicho(), Lineas{});
    EXPECT_EQ(foco.preguntas, 2);
}

TEST_F(Tecleo, AfterAReadingTheFirstWindowSeenIsNoChange) {
    opcTipoLectura.SetLeeCambioApp(true);
    foco.ventana = 7;
    Teclea("uno");
    Tic();
    Teclea("\n");
    TerminaTexto();
    TerminaTexto();
    foco.ventana = 8;
    diario.Olvida();
    Teclea("dos");
    Tic();
    EXPECT_EQ(Dicho(), Lineas{});
}

TEST_F(Tecleo, WithoutTheOptionAChangeOfWindowReadsNothing) {
    foco.ventana = 7;
    Teclea("hola");
    Tic();
    foco.ventana = 8;
    Tic();
    EXPECT_EQ(Dicho(), Lineas{});
    EXPECT_EQ(foco.preguntas, 0);
}

TEST_F(Tecleo, DeactivatingEndsTheHookAndActivatingStartsIt) {
    principal.ActivarDesactivar_Click();
    EXPECT_EQ(diario.De("gancho."), Lineas{"no"});
    Teclea("hola\n");
    EXPECT_EQ(Dicho(), Lineas{});
    principal.ActivarDesactivar_Click();
    EXPECT_EQ(diario.De("gancho."), (Lineas{"no", "si"}));
    Teclea("hola\n");
    EXPECT_EQ(Dicho(), Lineas{"(hola)"});
}

TEST_F(Tecleo, TheHookEndsBehindTheSoundAndStartsBeforeTheTimer) {
    principal.ActivarDesactivar_Click();
    EXPECT_EQ(diario.Todo(),
              (Lineas{"timer.no", "motor.Detiene", "icono.9", "sonido.DESACTIVAR", "gancho.no", "icono.9", "icono.9"}));
    diario.Olvida();
    principal.ActivarDesactivar_Click();
    EXPECT_EQ(diario.Todo().front(), "sonido.ACTIVAR");
    EXPECT_LT(std::find(diario.Todo().begin(), diario.Todo().end(), "gancho.si"),
              std::find(diario.Todo().begin(), diario.Todo().end(), "timer.si"));
}

TEST_F(Tecleo, APressStillQueuedWhenTheProgramIsDeactivatedIsDropped) {
    gancho.Teclea(QStringLiteral("hola\n"));
    principal.ActivarDesactivar_Click();
    Corre();
    EXPECT_EQ(Dicho(), Lineas{});
    EXPECT_EQ(campos.TextoWindows, QString());
}

TEST_F(Tecleo, TheEndOfTheProgramEndsTheHook) {
    principal.Form_Unload();
    EXPECT_EQ(diario.De("gancho."), Lineas{"no"});
}

TEST_F(Tecleo, WhatIsTypedNeverEntersTheLog) {
    Teclea("secreto\n");
    Teclea("otro!");
    Tic();
    EXPECT_EQ(Log(), QStringList());
}

TEST_F(PruebaLector, WithoutTheOptionNothingIsHooked) {
    Arranca();
    principal.ActivarDesactivar_Click();
    principal.ActivarDesactivar_Click();
    principal.Form_Unload();
    EXPECT_EQ(diario.De("gancho."), Lineas{});
}

TEST_F(PruebaLector, TheHookStartsWithTheProgramWhenTheOptionIsOn) {
    opcTipoLectura.SetLeeTeclado(true);
    principal.Form_Load();
    EXPECT_EQ(diario.De("gancho."), Lineas{"si"});
}

TEST_F(PruebaLector, AnInactiveStartLeavesNothingHooked) {
    opcTipoLectura.SetLeeTeclado(true);
    opcGeneral.SetActivaAlArrancar(false);
    principal.Form_Load();
    principal.Init();
    EXPECT_FALSE(gancho.oye);
}

}  // namespace ondalis::prueba
