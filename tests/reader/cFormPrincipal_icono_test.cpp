#include "reader/PruebaLector.h"

namespace ondalis::prueba {

class Icono : public PruebaLector {
protected:
    Icono() { Arranca(); }
};

TEST_F(Icono, ANumberGoesStraightToTheIcon) {
    principal.SetIconoBarra(7);
    EXPECT_EQ(principal.GetIconoBarra(), 7);
    EXPECT_EQ(diario.Todo(), Lineas{"icono.7"});
}

TEST_F(Icono, EachKeyHasItsNumber) {
    for (const char *clave : {"activoblanco1", "activorojo1", "inactivo", "reloj", "pausado"})
        principal.SetIconoBarra(QString::fromLatin1(clave));
    EXPECT_EQ(diario.De("icono."), (Lineas{"1", "5", "9", "10", "11"}));
}

TEST_F(Icono, ANumberBeyondTheListIsAnErrorThatIsTrapped) {
    for (const int numero : {0, 12, -3}) {
        principal.SetIconoBarra(numero);
        EXPECT_TRUE(Log().back().contains(QStringLiteral("cFormPrincipal.SetIconoBarra: ")));
    }
    EXPECT_EQ(Log().size(), 3);
    EXPECT_EQ(diario.Todo(), Lineas{});
}

TEST_F(Icono, AnUnknownKeyIsAnErrorThatLeavesTheNumber) {
    principal.SetIconoBarra(QStringLiteral("verde"));
    EXPECT_EQ(Log().size(), 1);
    EXPECT_EQ(principal.GetIconoBarra(), 1);
}

TEST_F(Icono, DeactivatingGoesThroughItsStepsInOrder) {
    menu.RepetirLectura.SetHabilitada(true);
    principal.ActivarDesactivar_Click();
    EXPECT_EQ(diario.Todo(),
              (Lineas{"timer.no", "motor.Detiene", "icono.9", "sonido.DESACTIVAR", "icono.9", "icono.9"}));
    EXPECT_EQ(menu.ActivarDesactivar.Rotulo(), QStringLiteral("Activar (%1)").arg(opcTeclasRap.GetNombre("Activar")));
    EXPECT_FALSE(menu.RepetirLectura.Habilitada());
    EXPECT_FALSE(principal.ProgramaActivo());
}

TEST_F(Icono, ActivatingGoesThroughItsStepsInOrder) {
    principal.ActivarDesactivar_Click();
    campos.TextoCopiado = QStringLiteral("x");
    diario.Olvida();
    principal.ActivarDesactivar_Click();
    EXPECT_EQ(diario.Todo(), (Lineas{"sonido.ACTIVAR", "portapapeles.Vacia", "timer.si", "icono.1"}));
    EXPECT_EQ(campos.TextoCopiado, QString());
    EXPECT_EQ(menu.ActivarDesactivar.Rotulo(),
              QStringLiteral("Desactivar (%1)").arg(opcTeclasRap.GetNombre("Activar")));
    EXPECT_TRUE(principal.ProgramaActivo());
}

TEST_F(Icono, ActivatingWithRecordingOnShowsTheRedIcon) {
    principal.ActivarDesactivar_Click();
    opcGrabar.SetGrabarTexto(true);
    principal.ActivarDesactivar_Click();
    EXPECT_EQ(icono.imagen, 5);
}

TEST_F(Icono, ItsSoundsCanBeSwitchedOffByThemselves) {
    sonidosAviso.SetActivarDesactivar(false);
    principal.ActivarDesactivar_Click();
    principal.ActivarDesactivar_Click();
    EXPECT_EQ(Sonidos(), Lineas{});
}

TEST_F(Icono, DeactivatingDuringAClipboardReadingStopsItWithTheSoundAfterTheStop) {
    Lee(QStringLiteral("uno dos"));
    principal.ActivarDesactivar_Click();
    EXPECT_EQ(diario.Todo(),
              (Lineas{"timer.no", "motor.Detiene", "icono.9", "icono.9", "sonido.DESACTIVAR", "icono.9", "icono.9"}));
    EXPECT_TRUE(Ociosa());
    EXPECT_FALSE(menu.RepetirLectura.Habilitada());
}

TEST_F(Icono, DeactivatingLetsAReadingOfTheEditorGoOnAndItsEndShowsIcon9) {
    LeeDe(3, QStringLiteral("uno dos"));
    principal.ActivarDesactivar_Click();
    EXPECT_EQ(Motor(), Lineas{});
    EXPECT_TRUE(Hablando());
    diario.Olvida();
    TerminaTexto();
    EXPECT_EQ(diario.De("icono."), Lineas{"9"});
    EXPECT_EQ(Sonidos(), Lineas{});
}

TEST_F(Icono, ACopyMadeWhileInactiveIsNotReadAfterActivating) {
    principal.ActivarDesactivar_Click();
    Copia(QStringLiteral("mientras"));
    Tic();
    principal.ActivarDesactivar_Click();
    Tic();
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(Motor(), Lineas{"Detiene"});
}

TEST_F(Icono, TheConfigurationOpensEvenWhileInactive) {
    principal.ActivarDesactivar_Click();
    diario.Olvida();
    principal.Opciones_Click();
    EXPECT_EQ(diario.Todo(), Lineas{"ventanas.Opciones"});
}

TEST_F(Icono, ProgramaActivoReadsTheCaptionAlone) {
    menu.ActivarDesactivar.SetRotulo(QStringLiteral("Desactivar"));
    EXPECT_TRUE(principal.ProgramaActivo());
    menu.ActivarDesactivar.SetRotulo(QStringLiteral("Desactiva"));
    EXPECT_FALSE(principal.ProgramaActivo());
    menu.ActivarDesactivar.SetRotulo(QStringLiteral("Activar (Alt + 1)"));
    EXPECT_FALSE(principal.ProgramaActivo());
}

TEST_F(Icono, TheWatchedItemTellsOfEachAssignmentForTwoEndsInARowAreTwo) {
    int veces = 0;
    principal.AlCambiarDDELink([&veces](const QString &) { ++veces; });
    principal.SetDDELink(QString());
    principal.SetDDELink(QString());
    EXPECT_EQ(veces, 2);
}

}  // namespace ondalis::prueba
