#include "reader/PruebaConversion.h"

#include "reader/PruebaLector.h"

namespace ondalis::prueba {
namespace {

class PruebaConversionTest : public PruebaLector {
protected:
    PruebaConversionTest() { Arranca(); }
    void Prueba(const QString &texto) { PruebaConversion(lector, principal, texto); }
    ColaboradoresPrincipal lector = Colaboradores(motor);
};

TEST_F(PruebaConversionTest, SpeaksAsANoticeAndGivesTheIconBack) {
    Prueba("miau");
    EXPECT_EQ(Motor(), (Lineas{"HablaAviso(miau)"}));
    EXPECT_EQ(principal.GetIconoBarra(), 1);
    EXPECT_EQ(diario.De("icono."), (Lineas{"10", "1"}));
    TerminaTexto();
    EXPECT_TRUE(Ociosa());
}

TEST_F(PruebaConversionTest, StopsAReadingInCourseAsTheMenuDoes) {
    Lee("uno dos tres");
    Prueba("miau");
    EXPECT_EQ(Motor(), (Lineas{"Detiene", "HablaAviso(miau)"}));
    EXPECT_FALSE(menu.Detener.Habilitada());
    EXPECT_EQ(principal.GetIconoBarra(), 1);
    TerminaTexto();
    EXPECT_TRUE(Ociosa());
}

TEST_F(PruebaConversionTest, AReadingThatHasOnlyBeenSentLeavesNoBusyIcon) {
    Envia("uno dos tres");
    Prueba("miau");
    EXPECT_EQ(principal.GetIconoBarra(), 1);
    TerminaTexto();
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(principal.GetIconoBarra(), 1);
}

TEST_F(PruebaConversionTest, OfAnInactiveProgramTheIconStaysAsItIs) {
    principal.ActivarDesactivar_Click();
    Corre();
    const int icono = principal.GetIconoBarra();
    diario.Olvida();
    Prueba("miau");
    EXPECT_EQ(Motor(), (Lineas{"HablaAviso(miau)"}));
    EXPECT_TRUE(diario.De("icono.").empty());
    EXPECT_EQ(principal.GetIconoBarra(), icono);
}

TEST_F(PruebaConversionTest, SAPI5HasBeenHeardWhenItReturns) {
    PasaASAPI5();
    Prueba("miau");
    Corre();
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(principal.GetIconoBarra(), 1);
}

TEST_F(PruebaConversionTest, ARefusalGivesTheIconBackAndLeavesTheReaderReading) {
    motor.rechazo = Fallo::De(Fallo::SintaxisDeEtiquetas);
    EXPECT_THROW(Prueba("<rate speed=x>"), ErrorFallo);
    EXPECT_EQ(principal.GetIconoBarra(), 1);
    EXPECT_TRUE(Ociosa());
    Lee("uno dos");
    EXPECT_TRUE(Hablando());
}

TEST_F(PruebaConversionTest, AnEmptyConversionDoesNothing) {
    Lee("uno dos");
    Prueba("");
    EXPECT_TRUE(Motor().empty());
    EXPECT_TRUE(Hablando());
}

}  // namespace
}  // namespace ondalis::prueba
