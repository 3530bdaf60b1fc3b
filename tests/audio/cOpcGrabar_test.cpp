#include "audio/cOpcGrabar.h"

#include <gtest/gtest.h>

#include <array>

#include "fakes/RegistroPropio.h"

namespace ondalis {
namespace {

class cOpcGrabarTest : public testing::Test {
protected:
    cOpcGrabar Pagina() { return cOpcGrabar(p.Registro(), p.Log(), QStringLiteral("/musica/Lectura.wav")); }
    prueba::RegistroPropio p;
};

TEST_F(cOpcGrabarTest, FirstUseIsWavSynchronous11025And24) {
    const auto pagina = Pagina();
    EXPECT_TRUE(pagina.LeerTexto());
    EXPECT_FALSE(pagina.GrabarTexto());
    EXPECT_TRUE(pagina.GrabaEnWAV());
    EXPECT_TRUE(pagina.GrabaSincrono());
    EXPECT_EQ(pagina.NombreFichero(), "/musica/Lectura.wav");
    EXPECT_FALSE(pagina.AnadirFich());
    EXPECT_TRUE(pagina.SobrescribirFich());
    EXPECT_FALSE(pagina.NumerarFich());
    EXPECT_EQ(pagina.CalidadkHz(), 11025);
    EXPECT_EQ(pagina.Calidadkbps(), 24);
}

TEST_F(cOpcGrabarTest, EachOptionIsStoredAndReadBack) {
    auto pagina = Pagina();
    pagina.SetLeerTexto(false);
    pagina.SetGrabarTexto(true);
    pagina.SetGrabaEnWAV(false);
    pagina.SetGrabaSincrono(false);
    pagina.SetNombreFichero("/otro, sitio/x.mp3");
    pagina.SetSobrescribirFich(false);
    pagina.SetNumerarFich(true);
    pagina.SetCalidadkHz(48000);
    pagina.SetCalidadkbps(320);
    pagina.GuardaValores();
    EXPECT_EQ(p.Lee("Grabar", "GrabaEnWAV"), "False");
    EXPECT_EQ(p.Lee("Grabar", "GrabaSincrono"), "False");
    const auto otra = Pagina();
    EXPECT_FALSE(otra.LeerTexto());
    EXPECT_TRUE(otra.GrabarTexto());
    EXPECT_FALSE(otra.GrabaEnWAV());
    EXPECT_FALSE(otra.GrabaSincrono());
    EXPECT_EQ(otra.NombreFichero(), "/otro, sitio/x.mp3");
    EXPECT_FALSE(otra.AnadirFich());
    EXPECT_FALSE(otra.SobrescribirFich());
    EXPECT_TRUE(otra.NumerarFich());
    EXPECT_EQ(otra.CalidadkHz(), 48000);
    EXPECT_EQ(otra.Calidadkbps(), 320);
    EXPECT_TRUE(p.LineasLog().isEmpty());
}

TEST_F(cOpcGrabarTest, StoredValuesThatWouldNeitherSpeakNorRecordSpeak) {
    p.Salva("Grabar", "LeerTexto", "False");
    EXPECT_TRUE(Pagina().LeerTexto());
    EXPECT_FALSE(Pagina().GrabarTexto());
    ASSERT_FALSE(p.LineasLog().isEmpty());
    EXPECT_TRUE(p.LineasLog().last().endsWith("[Grabar\\LeerTexto]"));
    p.Salva("Grabar", "GrabarTexto", "True");
    EXPECT_FALSE(Pagina().LeerTexto()) << "recorded in silence, as it was chosen";
}

TEST_F(cOpcGrabarTest, OfTheThreeStoredOptionsOneIsInForceAsTheRecordingTakesThem) {
    struct Caso {
        const char *anadir, *sobrescribir, *numerar;
        std::array<bool, 3> quedan;  // in this order
    };
    const Caso casos[] = {
        {"True", "True", "True", {false, false, true}},    {"True", "False", "True", {false, false, true}},
        {"False", "True", "True", {false, false, true}},   {"True", "True", "False", {false, true, false}},
        {"False", "False", "False", {true, false, false}},
    };
    for (const Caso &caso : casos) {
        p.Salva("Grabar", "AnadirFich", caso.anadir);
        p.Salva("Grabar", "SobrescribirFich", caso.sobrescribir);
        p.Salva("Grabar", "NumerarFich", caso.numerar);
        const qsizetype antes = p.LineasLog().size();
        const auto pagina = Pagina();
        EXPECT_EQ((std::array{pagina.AnadirFich(), pagina.SobrescribirFich(), pagina.NumerarFich()}), caso.quedan);
        EXPECT_EQ(p.LineasLog().size(), antes + 1);
    }
}

TEST_F(cOpcGrabarTest, AnEmptyFileNameStoredIsNotTheDefault) {
    p.Salva("Grabar", "NombreFichero", "");
    EXPECT_EQ(Pagina().NombreFichero(), "");
}

TEST_F(cOpcGrabarTest, ARateOutsideTheTableIsKeptAndHasStreamType0) {
    p.Salva("Grabar", "CalidadkHz", "9000");
    EXPECT_EQ(Pagina().CalidadkHz(), 9000);
    EXPECT_EQ(FormatoSAPI5(9000), 0);
    EXPECT_EQ(FormatoSAPI5(0), 0);
    EXPECT_EQ(FormatoSAPI5(-1), 0);
}

TEST_F(cOpcGrabarTest, NumbersThatMakeNoSenseAreTheDefault) {
    p.Salva("Grabar", "CalidadkHz", "-8000");
    p.Salva("Grabar", "Calidadkbps", "70000");
    EXPECT_EQ(Pagina().CalidadkHz(), 11025);
    EXPECT_EQ(Pagina().Calidadkbps(), 24);
    EXPECT_FALSE(p.LineasLog().isEmpty());
}

TEST_F(cOpcGrabarTest, EachRateOfTheTableHasItsStreamType) {
    const std::vector<std::pair<int, int>> tipos{{8000, 6},   {11025, 10}, {12000, 14}, {16000, 18}, {22050, 22},
                                                 {24000, 26}, {32000, 30}, {44100, 34}, {48000, 38}};
    ASSERT_EQ(TablakHz().size(), tipos.size());
    for (std::size_t i = 0; i < tipos.size(); ++i) {
        EXPECT_EQ(TablakHz()[i].valor, tipos[i].first);
        EXPECT_EQ(FormatoSAPI5(tipos[i].first), tipos[i].second);
    }
    EXPECT_STREQ(TablakHz()[0].texto, " 8.00 kHz");
    EXPECT_STREQ(TablakHz()[1].texto, "11.02 kHz");
    EXPECT_STREQ(TablakHz()[8].texto, "48.00 kHz");
}

TEST_F(cOpcGrabarTest, TheBitRatesStandInTheirOrderWithTexts7Wide) {
    const std::vector<int> tasas{8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 192, 224, 256, 320};
    ASSERT_EQ(Tablakbps().size(), tasas.size());
    for (std::size_t i = 0; i < tasas.size(); ++i) {
        EXPECT_EQ(Tablakbps()[i].valor, tasas[i]);
        EXPECT_EQ(QString(Tablakbps()[i].texto), QStringLiteral("%1 kbps").arg(tasas[i], 3));
    }
}

}  // namespace
}  // namespace ondalis
