#include "keys/cOpcTeclasRap.h"

#include <gtest/gtest.h>

#include "fakes/RegistroPropio.h"
#include "fakes/TeclasFalsas.h"
#include "keys/EstableceTeclas.h"

namespace ondalis {
namespace {

class cOpcTeclasRapTest : public testing::Test {
protected:
    cOpcTeclasRap Pagina() { return cOpcTeclasRap(p.Registro(), p.Log()); }
    prueba::RegistroPropio p;
};

TEST_F(cOpcTeclasRapTest, TheFirstRunHasAlt1AndControl1To5) {
    const cOpcTeclasRap pagina(p.Registro(), p.Log());
    EXPECT_EQ(pagina.GetModif("Activar"), 1);
    EXPECT_EQ(pagina.GetAscii("Activar"), 49);
    int ascii = 49;
    for (const char *nombre : {"Pausa", "Detener", "Repetir", "Avanzar", "Retroceder"}) {
        EXPECT_EQ(pagina.GetModif(nombre), 0) << nombre;
        EXPECT_EQ(pagina.GetAscii(nombre), ascii++) << nombre;
    }
    EXPECT_EQ(pagina.NroPalAvance(), 10);
    EXPECT_EQ(pagina.NroPalRetroceso(), 10);
    EXPECT_TRUE(pagina.UtilizaAvisos());
}

TEST_F(cOpcTeclasRapTest, TheTableHas45KeysInItsOrderAndSuprIs12) {
    const auto tabla = TablaTeclas();
    ASSERT_EQ(tabla.size(), 45u);
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(QString(tabla[i].rotulo), QString::number(i));
        EXPECT_EQ(tabla[i].virtualKey, 48 + i);
        EXPECT_EQ(QString(tabla[10 + i].rotulo), QString::number(i) + " Num");
        EXPECT_EQ(tabla[10 + i].virtualKey, 96 + i);
    }
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(QString(tabla[20 + i].rotulo), "F" + QString::number(i + 1));
        EXPECT_EQ(tabla[20 + i].virtualKey, 112 + i);
    }
    const std::vector<std::pair<QString, int>> resto{{"Tabulador", 9}, {"Retroceso", 8}, {"Insert", 45},
                                                     {"Supr", 12},     {"Intro", 13},    {"Esc", 27},
                                                     {"Espacio", 32},  {"Inicio", 36},   {"Fin", 35}};
    for (std::size_t i = 0; i < resto.size(); ++i) {
        EXPECT_EQ(QString(tabla[36 + i].rotulo), resto[i].first);
        EXPECT_EQ(tabla[36 + i].virtualKey, resto[i].second);
    }
}

TEST_F(cOpcTeclasRapTest, AStoredVirtualKeyThatIsNotInTheTableShowsAsTheKey0) {
    p.Salva("Teclas", "AsciiPausa", "44");
    const auto pagina = Pagina();
    EXPECT_EQ(pagina.Tag("TeclaPausa"), "0");
    EXPECT_EQ(pagina.GetAscii("Pausa"), 48);
    EXPECT_EQ(pagina.GetNombre("Pausa"), "Ctrl + 0");
}

TEST_F(cOpcTeclasRapTest, TheSettingsHoldVirtualKeysAndTheTagsPositions) {
    auto pagina = Pagina();
    pagina.SetAscii("Detener", 112);
    pagina.SetModif("Detener", 2);
    EXPECT_EQ(pagina.Tag("TeclaDetener"), "20");
    EXPECT_EQ(pagina.Tag("ModDetener"), "2");
    pagina.GuardaValores();
    EXPECT_EQ(p.Lee("Teclas", "AsciiDetener"), "112");
    EXPECT_EQ(p.Lee("Teclas", "ModDetener"), "2");
    const auto otra = Pagina();
    EXPECT_EQ(otra.GetAscii("Detener"), 112);
    EXPECT_EQ(otra.GetModif("Detener"), 2);
}

TEST_F(cOpcTeclasRapTest, EveryKeyOfTheTableIsFoundByItsVirtualKey) {
    auto pagina = Pagina();
    int posicion = 0;
    for (const FilaTecla &fila : TablaTeclas()) {
        pagina.SetAscii("Repetir", fila.virtualKey);
        EXPECT_EQ(pagina.GetAscii("Repetir"), fila.virtualKey) << fila.rotulo;
        EXPECT_EQ(pagina.Tag("TeclaRepetir"), QString::number(posicion++));
    }
}

TEST_F(cOpcTeclasRapTest, FifteenSettingsAreWritten) {
    Pagina().GuardaValores();
    int escritas = 0;
    for (const char *nombre : {"ModActivar", "AsciiActivar", "ModPausa", "AsciiPausa", "ModDetener", "AsciiDetener",
                               "ModRepetir", "AsciiRepetir", "ModAvanzar", "AsciiAvanzar", "ModRetroceder",
                               "AsciiRetroceder", "NroPalAvance", "NroPalRetroceso", "UtilizaAvisos"})
        escritas += p.Registro().Busca("CU", Producto::Ruta(), "Teclas", nombre).has_value();
    EXPECT_EQ(escritas, 15);
}

TEST_F(cOpcTeclasRapTest, SpokenRefusalsAreStoredAsAFigure) {
    auto pagina = Pagina();
    pagina.SetUtilizaAvisos(false);
    pagina.GuardaValores();
    EXPECT_EQ(p.Lee("Teclas", "UtilizaAvisos"), "0");
    EXPECT_FALSE(Pagina().UtilizaAvisos());
    pagina.SetUtilizaAvisos(true);
    pagina.GuardaValores();
    EXPECT_EQ(p.Lee("Teclas", "UtilizaAvisos"), "1");
    p.Salva("Teclas", "UtilizaAvisos", "False");
    EXPECT_FALSE(Pagina().UtilizaAvisos());
}

TEST_F(cOpcTeclasRapTest, AWordCountOutsideItsRangeIsRefused) {
    auto pagina = Pagina();
    for (const int palabras : {0, -1, 101, 500}) {
        pagina.SetNroPalAvance(palabras);
        pagina.SetNroPalRetroceso(palabras);
        EXPECT_EQ(pagina.NroPalAvance(), 10) << palabras;
        EXPECT_EQ(pagina.NroPalRetroceso(), 10) << palabras;
    }
    pagina.SetNroPalAvance(1);
    pagina.SetNroPalRetroceso(100);
    EXPECT_EQ(pagina.NroPalAvance(), 1);
    EXPECT_EQ(pagina.NroPalRetroceso(), 100);
}

TEST_F(cOpcTeclasRapTest, StoredNonsenseIsTheDefault) {
    p.Salva("Teclas", "NroPalAvance", "500");
    p.Salva("Teclas", "ModPausa", "7");
    p.Salva("Teclas", "AsciiPausa", "uno");
    const auto pagina = Pagina();
    EXPECT_EQ(pagina.NroPalAvance(), 10);
    EXPECT_EQ(pagina.GetModif("Pausa"), 0);
    EXPECT_EQ(pagina.GetAscii("Pausa"), 49);
    EXPECT_EQ(p.LineasLog().size(), 3);
}

TEST_F(cOpcTeclasRapTest, NamesAreAsTheMenusShowThem) {
    auto pagina = Pagina();
    EXPECT_EQ(pagina.GetNombre("Activar"), "Alt + 1");
    EXPECT_EQ(pagina.GetNombre("Pausa"), "Ctrl + 1");
    pagina.SetModif("Pausa", 2);
    pagina.SetAscii("Pausa", 12);
    EXPECT_EQ(pagina.GetNombre("Pausa"), "Shift + Supr");
}

TEST_F(cOpcTeclasRapTest, AfterChangingOneKeyOnlyThatKeysRowIsReplaced) {
    prueba::TeclasFalsas sistema;
    cCola cola;
    cTecla tecla(sistema, cola, p.Log());
    tecla.Init(1);
    auto pagina = Pagina();
    EstableceTeclasRapidas(tecla, pagina);
    ASSERT_EQ(tecla.Teclas().size(), 7u);
    pagina.SetAscii("Repetir", 112);
    EstableceTeclasRapidas(tecla, pagina);
    ASSERT_EQ(tecla.Teclas().size(), 8u);
    EXPECT_EQ(tecla.Teclas()[3].NombreTecla, "BORRADO");
    EXPECT_EQ(tecla.Teclas()[6].NombreTecla, "Repetir");
    EXPECT_EQ(tecla.Teclas()[6].CodigoTecla, 112);
    EXPECT_EQ(sistema.liberadas.size(), 1u);
    EstableceTeclasRapidas(tecla, pagina);
    EXPECT_EQ(tecla.Teclas().size(), 8u) << "nothing changed, nothing touched";
}

}  // namespace
}  // namespace ondalis
