// What the pattern's process writes, and how the words are found in it.
#include "worker/orden/Patron.h"

#include <gtest/gtest.h>

#include "engine/Protocolo.h"
#include "worker/CarpetaMotores.h"
#include "worker/orden/BuscaPalabras.h"

namespace ondalis {
namespace {

constexpr std::uint32_t kHercios = 10000;

// One second of "the end now", whose words' places are 1, 5 and 9.
class Patrones : public testing::Test {
protected:
    const Pieza pieza = HazPieza(u"the end now", 0, {});
    std::vector<std::uint8_t> bytes;

    void Pon(const Trama &trama) { Codifica(trama, bytes); }
    void Sonido() {
        Pon(TramaFormato{kTramasFrase, kHercios});
        for (int i = 0; i < 10; i++) Pon(TramaPcm{kTramasFrase, std::vector<std::int16_t>(kHercios / 10, 7)});
    }
    void Palabra(std::uint32_t lugar, double segundo) {
        Pon(TramaPalabra{kTramasFrase, static_cast<std::uint64_t>(segundo * kHercios + .5), lugar, 3});
    }
    void Fonema(const char *nombre, double segundo) {
        Pon(TramaMarca{kTramasFrase,
                       static_cast<std::uint64_t>(segundo * kHercios + .5),
                       {nombre, nombre + std::string_view(nombre).size()}});
    }
    void Fonemas() {
        Fonema("D", .1), Fonema("@2", .2), Fonema("E", .4), Fonema("n", .5), Fonema("d", .55), Fonema("n", .7);
        Fonema("aU", .8), Fonema("_:", .9);
        for (const char16_t *palabra : {u"D @2 ", u"'E n d ", u"n 'aU "}) Pon(TramaMarca{kTramasPalabras, 0, palabra});
    }
    void EsperaInicios(const std::vector<double> &esperados) {
        Pon(TramaFin{kTramasFrase});
        const auto patron = LeePatron(bytes, pieza);
        ASSERT_TRUE(patron);
        EXPECT_EQ(patron->hercios, kHercios);
        EXPECT_EQ(patron->sonido.size(), kHercios);
        ASSERT_EQ(patron->inicios.size(), esperados.size());
        for (std::size_t i = 0; i < esperados.size(); i++) EXPECT_NEAR(patron->inicios[i], esperados[i], 1e-9) << i;
    }
};

TEST_F(Patrones, AWordThatIsJoinedWithTheOneBeforeBeginsWithItsFirstPhoneme) {
    Sonido();
    Palabra(1, .1), Palabra(9, .7);
    Fonemas();
    EsperaInicios({.1, .4, .7});
}

TEST_F(Patrones, AWordBeginsWithTheClosureOfItsFirstPhonemeWhereItIsSignalled) {
    Sonido();
    Palabra(1, .1), Palabra(5, .4), Palabra(9, .62);
    Fonemas();
    EsperaInicios({.1, .4, .62});
}

TEST_F(Patrones, ASignalAPhonemeEarlyIsNotTaken) {
    Sonido();
    Palabra(1, .1), Palabra(5, .2), Palabra(9, .7);
    Fonemas();
    EsperaInicios({.1, .4, .7});
}

TEST_F(Patrones, WithoutPhonemesTheSignalsCountAndTheOthersLieEvenlyBetween) {
    Sonido();
    Palabra(1, .1), Palabra(0, .15), Palabra(9, .7);
    EsperaInicios({.1, .4, .7});
}

TEST_F(Patrones, WhatIsNotWholeOrOfAnotherTextIsNoPattern) {
    Sonido();
    Palabra(1, .1), Palabra(5, .4), Palabra(9, .7);
    EXPECT_FALSE(LeePatron(bytes, pieza)) << "no end";
    EXPECT_FALSE(LeePatron({}, pieza));
    EXPECT_FALSE(LeePatron(std::vector<std::uint8_t>(1000, 0xFF), pieza));
    Pon(TramaFin{kTramasFrase});
    EXPECT_TRUE(LeePatron(bytes, pieza));
    EXPECT_FALSE(LeePatron(bytes, HazPieza(u"", 0, {}))) << "no words";
    EXPECT_FALSE(LeePatron(bytes, HazPieza(u"one two three four five six seven eight", 0, {}))) << "too few";
}

TEST_F(Patrones, ThePieceGoesOnOneLineAndItsWordsOnOneEach) {
    EXPECT_EQ(TextoDePatron(HazPieza(u"uno,\ndos (tres).", 0, {})), "uno, dos (tres).\nuno,\ndos (\ntres).\n");
}

TEST_F(Patrones, ALanguageThatIsNotKnownHasNone) {
    EXPECT_FALSE(ArgumentosDePatron("", 170));
    EXPECT_FALSE(ArgumentosDePatron("FFFF", 170));
    EXPECT_EQ(ArgumentosDePatron("40A;C0A", 1000)->back(), "400");
}

// The program itself: it joins "in every" and tells the end's phonemes.
TEST_F(Patrones, TheProgramSaysEveryWordOfASentence) {
    const Pieza frase = HazPieza(u"His tables stood in every house, and so did his chairs.", 0, {});
    CarpetaMotores carpeta;
    carpeta.Escribe("texto", TextoDePatron(frase));
    const std::string orden = std::string(ONDALIS_MOTOR) + " --patron en-us 170 <" + carpeta.Ruta("texto");
    std::vector<std::uint8_t> salida(1 << 20);
    FILE *tubo = popen(orden.c_str(), "r");
    ASSERT_TRUE(tubo);
    salida.resize(fread(salida.data(), 1, salida.size(), tubo));
    EXPECT_EQ(pclose(tubo), 0);
    const auto patron = LeePatron(salida, frase);
    ASSERT_TRUE(patron);
    EXPECT_EQ(patron->inicios.size(), 11u);
    for (std::size_t i = 1; i < patron->inicios.size(); i++)
        EXPECT_GT(patron->inicios[i], patron->inicios[i - 1] + .02) << i;
}

TEST_F(Patrones, TheProgramFailsForALanguageThatItsEngineLacks) {
    EXPECT_NE(system((std::string(ONDALIS_MOTOR) + " --patron xx 170 </dev/null >/dev/null").c_str()), 0);
}

}  // namespace
}  // namespace ondalis
