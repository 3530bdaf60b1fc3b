#include "settings/pagina/PaginaOpciones.h"

#include <gtest/gtest.h>

#include "fakes/EstadoDiseno.h"
#include "fakes/PaginaFalsa.h"

namespace ondalis::prueba {
namespace {

class PaginaOpcionesTest : public testing::Test {
protected:
    RegistroPropio almacen;
    TablaFalsa tabla{almacen.Registro(), almacen.Log()};
    PaginaFalsa pagina{tabla};

    std::string Tag(const char *control) { return tabla.Tag(QLatin1String(control)).toStdString(); }
};

TEST_F(PaginaOpcionesTest, TheDesignStateOfTheControlsEqualsTheTable) { CompruebaDiseno(pagina, tabla); }

TEST_F(PaginaOpcionesTest, EditsReachTheAcceptedValuesOnlyWhenTheyAreTaken) {
    pagina.grabar->setChecked(true);
    pagina.ritmo->setCurrentIndex(2);
    EXPECT_EQ(Tag("CheckGrabar"), "0");
    EXPECT_EQ(Tag("CombokHz"), "11025");
    EXPECT_FALSE(almacen.Registro().Busca("CU", Producto::Ruta(), "Grabar", "GrabarTexto").has_value());
    pagina.GuardaValores();
    EXPECT_EQ(Tag("CheckGrabar"), "1");
    EXPECT_EQ(Tag("CombokHz"), "16000");
    EXPECT_EQ(almacen.Lee("Grabar", "GrabarTexto"), "True");
    EXPECT_EQ(almacen.Lee("Grabar", "CalidadkHz"), "16000");
}

TEST_F(PaginaOpcionesTest, ShowingTheAcceptedValuesUndoesTheEdits) {
    pagina.grabar->setChecked(true);
    pagina.fichero->setText("/otro.wav");
    pagina.anadir->setChecked(true);
    pagina.ritmo->setCurrentIndex(0);
    pagina.modo->setCurrentIndex(2);
    pagina.voz->setCurrentIndex(1);
    pagina.salto->SetValor(77);
    pagina.mini->setValue(99);
    pagina.EstableceValores();
    CompruebaDiseno(pagina, tabla);
}

TEST_F(PaginaOpcionesTest, WhatIsAcceptedElsewhereIsShownAndTheOtherEditsStay) {
    pagina.EstableceValores();
    pagina.salto->SetValor(77);
    pagina.fichero->setText("/otro.wav");
    pagina.modo->setCurrentIndex(1);
    tabla.SetTag("CheckGrabar", "1");
    tabla.SetTag("ModPausa", "2");
    pagina.EstableceCambiados();
    EXPECT_TRUE(pagina.grabar->isChecked());
    EXPECT_TRUE(pagina.fichero->isEnabled());
    EXPECT_EQ(pagina.modo->currentIndex(), 2);
    EXPECT_EQ(pagina.salto->Valor(), 77);
    EXPECT_EQ(pagina.fichero->text(), "/otro.wav");
    pagina.grabar->setChecked(false);
    pagina.EstableceCambiados();  // shown once, it may be edited again
    EXPECT_FALSE(pagina.grabar->isChecked());
    pagina.grabar->setChecked(true);
    pagina.GuardaValores();
    EXPECT_EQ(almacen.Lee("Teclas", "ModPausa"), "2");
    EXPECT_EQ(almacen.Lee("Teclas", "NroPalAvance"), "77");
}

TEST_F(PaginaOpcionesTest, EveryKindOfControlComesBackAsItWasStored) {
    pagina.fichero->setText("/música/año.wav");
    pagina.anadir->setChecked(true);
    pagina.modo->setCurrentIndex(2);
    pagina.voz->setCurrentIndex(1);
    pagina.salto->SetValor(77);
    pagina.mini->setValue(0);
    pagina.GuardaValores();

    TablaFalsa leida(almacen.Registro(), almacen.Log());
    PaginaFalsa otra(leida);
    otra.EstableceValores();
    EXPECT_EQ(otra.fichero->text(), "/música/año.wav");
    EXPECT_TRUE(otra.anadir->isChecked());
    EXPECT_FALSE(otra.sobrescribir->isChecked());
    EXPECT_EQ(otra.modo->currentText(), "Shift");
    EXPECT_EQ(otra.voz->currentText(), "Diana");
    EXPECT_EQ(otra.salto->Valor(), 77);
    EXPECT_EQ(otra.mini->value(), 0);
}

TEST_F(PaginaOpcionesTest, AListWithoutTheAcceptedEntryKeepsItsSelection) {
    tabla.SetTag("CombokHz", "9999");
    tabla.SetTag("ModPausa", "7");
    tabla.SetTag("ComboVoces", "Nadie");
    pagina.EstableceValores();
    EXPECT_EQ(pagina.ritmo->currentIndex(), 1);
    EXPECT_EQ(pagina.modo->currentIndex(), 0);
    EXPECT_EQ(pagina.voz->currentIndex(), 0);
}

TEST_F(PaginaOpcionesTest, TheEnabledStateFollowsTheValuesShownEvenWhenNoneChanges) {
    EXPECT_TRUE(pagina.fichero->isEnabled());  // as it was built
    pagina.EstableceValores();
    EXPECT_FALSE(pagina.fichero->isEnabled());
    tabla.SetTag("CheckGrabar", "1");
    pagina.EstableceValores();
    EXPECT_TRUE(pagina.fichero->isEnabled());
}

}  // namespace
}  // namespace ondalis::prueba
