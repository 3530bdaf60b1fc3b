// The accepted values of the pages "General", "Tipo lectura" and the dialog "Sonidos de aviso", and what holds for
// every page.
#include <gtest/gtest.h>

#include <QLocale>

#include "fakes/RegistroPropio.h"
#include "settings/Catalogo.h"
#include "settings/cOpcGeneral.h"
#include "settings/cOpcSonidosAviso.h"
#include "settings/cOpcTipoLectura.h"

namespace ondalis {
namespace {

using prueba::RegistroPropio;

class Opciones : public testing::Test {
protected:
    RegistroPropio p;
};

TEST_F(Opciones, AnEmptyStoreGivesTheDesignValues) {
    const cOpcGeneral general(p.Registro(), p.Log());
    EXPECT_FALSE(general.ArrancaEnInicio());
    EXPECT_TRUE(general.ActivaAlArrancar());
    EXPECT_FALSE(general.PrioridadAlta());
    EXPECT_TRUE(general.UtilizaSonidos());
    EXPECT_FALSE(general.VerLupa());
    EXPECT_FALSE(general.PronunciaSignosPunt());
    const cOpcTipoLectura tipo(p.Registro(), p.Log());
    EXPECT_TRUE(tipo.LeePortapapeles());
    EXPECT_TRUE(tipo.IgnoraMiniTexto());
    EXPECT_EQ(tipo.CharsMiniTexto(), 15);
    EXPECT_TRUE(tipo.TrataEditores());
    EXPECT_FALSE(tipo.LeeTeclado());
    EXPECT_FALSE(tipo.LeeCambioApp());
    EXPECT_EQ(tipo.Tag("CheckPausas"), "1");
    const cOpcSonidosAviso sonidos(p.Registro(), p.Log());
    EXPECT_TRUE(sonidos.AvisosGenerales());
    EXPECT_TRUE(sonidos.ActivarDesactivar());
    EXPECT_TRUE(sonidos.Portapapeles());
    EXPECT_FALSE(sonidos.LeeTeclado());
    EXPECT_FALSE(QFile::exists(p.FicheroUsuario()));
}

TEST_F(Opciones, StoredValuesAreReadAtCreation) {
    p.Salva("General", "VerLupa", "True");
    p.Salva("General", "UtilizaSonidos", "0");
    p.Salva("General", "PrioridadAlta", "-1");
    p.Salva("TipoLectura", "CharsMiniTexto", " 40 ");
    EXPECT_TRUE(cOpcGeneral(p.Registro(), p.Log()).VerLupa());
    EXPECT_FALSE(cOpcGeneral(p.Registro(), p.Log()).UtilizaSonidos());
    EXPECT_TRUE(cOpcGeneral(p.Registro(), p.Log()).PrioridadAlta());
    EXPECT_EQ(cOpcTipoLectura(p.Registro(), p.Log()).CharsMiniTexto(), 40);
}

TEST_F(Opciones, AValueThatMakesNoSenseIsTheDefaultAndIsLoggedWithoutItsText) {
    p.Salva("General", "UtilizaSonidos", "quizá");
    p.Salva("TipoLectura", "CharsMiniTexto", "muchos");
    EXPECT_TRUE(cOpcGeneral(p.Registro(), p.Log()).UtilizaSonidos());
    EXPECT_EQ(cOpcTipoLectura(p.Registro(), p.Log()).CharsMiniTexto(), 15);
    ASSERT_EQ(p.LineasLog().size(), 2);
    EXPECT_TRUE(p.LineasLog()[0].endsWith(
        "ucOpcGeneral.UserControl_ReadProperties: No coinciden los tipos (13) [General\\UtilizaSonidos]"))
        << p.LineasLog()[0].toStdString();
    EXPECT_FALSE(p.LineasLog().join("").contains("quizá"));
    EXPECT_EQ(p.Lee("General", "UtilizaSonidos"), "quizá") << "reading loses nothing";
}

TEST_F(Opciones, WholeNumbersThatDoNotFitMakeNoSense) {
    for (const char *texto : {"99999999999999", "1.5", "", "0x10", "12a"}) {
        p.Salva("TipoLectura", "CharsMiniTexto", texto);
        EXPECT_EQ(cOpcTipoLectura(p.Registro(), p.Log()).CharsMiniTexto(), 15) << texto;
    }
}

TEST_F(Opciones, AShortTextsLimitThatItsBoxCannotShowIsTheDefaultAndLogged) {
    for (const char *texto : {"-1", "32768", "1000000"}) {
        p.Salva("TipoLectura", "CharsMiniTexto", texto);
        const qsizetype antes = p.LineasLog().size();
        EXPECT_EQ(cOpcTipoLectura(p.Registro(), p.Log()).CharsMiniTexto(), 15) << texto;
        ASSERT_EQ(p.LineasLog().size(), antes + 1) << texto;
        EXPECT_TRUE(p.LineasLog().last().endsWith("[TipoLectura\\CharsMiniTexto]"));
    }
    p.Salva("TipoLectura", "CharsMiniTexto", "32767");
    EXPECT_EQ(cOpcTipoLectura(p.Registro(), p.Log()).CharsMiniTexto(), 32767);
}

TEST_F(Opciones, SettingAPropertyStoresNothingUntilTheValuesAreSaved) {
    cOpcGeneral general(p.Registro(), p.Log());
    general.SetVerLupa(true);
    general.SetUtilizaSonidos(false);
    EXPECT_TRUE(general.VerLupa());
    EXPECT_EQ(p.Lee("General", "VerLupa", "no"), "no");
    general.GuardaValores();
    EXPECT_EQ(p.Lee("General", "VerLupa"), "True");
    EXPECT_EQ(p.Lee("General", "UtilizaSonidos"), "False");
}

TEST_F(Opciones, StartingWithTheSystemHasNoKey) {
    cOpcGeneral general(p.Registro(), p.Log());
    general.SetArrancaEnInicio(true);
    general.GuardaValores();
    EXPECT_TRUE(general.ArrancaEnInicio());
    EXPECT_FALSE(cOpcGeneral(p.Registro(), p.Log()).ArrancaEnInicio());
}

TEST_F(Opciones, EachPropertyHasItsOwnTag) {
    cOpcSonidosAviso sonidos(p.Registro(), p.Log());
    sonidos.SetAvisosGenerales(false);
    sonidos.SetActivarDesactivar(false);
    sonidos.SetPortapapeles(false);
    sonidos.SetLeeTeclado(true);
    EXPECT_EQ(sonidos.Tag("CheckAvisosGenerales"), "0");
    EXPECT_EQ(sonidos.Tag("CheckActivarDesactivar"), "0");
    EXPECT_EQ(sonidos.Tag("CheckPortapapeles"), "0");
    EXPECT_EQ(sonidos.Tag("CheckLeeTeclado"), "1");
    sonidos.GuardaValores();
    EXPECT_EQ(p.Lee("General", "SonidosAvisosGenerales"), "False");
    EXPECT_EQ(p.Lee("General", "SonidosActivarDesactivar"), "False");
    EXPECT_EQ(p.Lee("General", "SonidosPortapapeles"), "False");
    EXPECT_EQ(p.Lee("General", "SonidosLeeTeclado"), "True");
}

TEST_F(Opciones, NumbersAreWrittenAndReadInTheCLocaleUnderASpanishOne) {
    const QLocale antes;
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    ASSERT_EQ(QLocale().toString(65000.5), "65.000,5");
    p.Salva("TipoLectura", "CharsMiniTexto", "32000");
    cOpcTipoLectura tipo(p.Registro(), p.Log());
    EXPECT_EQ(tipo.CharsMiniTexto(), 32000);
    tipo.SetCharsMiniTexto(1234567);
    tipo.GuardaValores();
    EXPECT_EQ(p.Lee("TipoLectura", "CharsMiniTexto"), "1234567");
    EXPECT_EQ(p.Lee("Ventana", "LeftEditor", 12345.5f), "12345.5");
    QLocale::setDefault(antes);
}

class PlazaLupa : public TablaOpciones {
public:
    PlazaLupa(cRegistro &registro, cLog &log) : TablaOpciones(kFilas, registro, log, QStringLiteral("Lupa")) {
        CargaFilas();
    }
    static constexpr FilaOpcion kFilas[] = {FilaDe("Left", "Ventana", "LeftLupa", "7")};
};

TEST_F(Opciones, ACoordinateKeepsTheSevenDigitsOfASinglePrecisionNumber) {
    p.Salva("Ventana", "LeftLupa", "115200.5");
    EXPECT_EQ(PlazaLupa(p.Registro(), p.Log()).Tag("Left"), "115200.5");
    p.Salva("Ventana", "LeftLupa", "-0.25");
    EXPECT_EQ(PlazaLupa(p.Registro(), p.Log()).Tag("Left"), "-0.25");
}

TEST_F(Opciones, ACoordinateWithoutAPlaceMakesNoSense) {
    for (const char *texto : {"inf", "-inf", "nan", "1e99", "12,5", "ancho"}) {
        p.Salva("Ventana", "LeftLupa", texto);
        EXPECT_EQ(PlazaLupa(p.Registro(), p.Log()).Tag("Left"), "7") << texto;
    }
    EXPECT_EQ(p.LineasLog().size(), 6);
}

}  // namespace
}  // namespace ondalis
