#include "worker/RasgosTexto.h"

#include <gtest/gtest.h>

namespace ondalis {
namespace {

RasgosPieza De(std::u16string_view texto, const OpcionesPieza &opciones = {}) {
    return RasgosDe(texto, HazPieza(texto, 0, opciones), opciones.lengua);
}

TEST(RasgosTexto, WordsAndTheirLettersAreCounted) {
    EXPECT_EQ(De(u"la casa verde").palabras, (RasgosTexto{3, 3, 11, 0, 0}));
    EXPECT_EQ(De(u"").palabras, RasgosTexto{});
    EXPECT_EQ(De(u" — ... ").palabras, RasgosTexto{});
}

TEST(RasgosTexto, AnAccentIsNoLetterOfItsOwn) {
    EXPECT_EQ(De(u"canción").palabras.letras, 7);
    EXPECT_EQ(De(u"cancio\u0301n").palabras.letras, 7);
}

TEST(RasgosTexto, AnApostropheOrAHyphenIsNoLetter) {
    EXPECT_EQ(De(u"l'eau rojo-verde").palabras, (RasgosTexto{2, 2, 13, 0, 0}));
}

TEST(RasgosTexto, CommasDashesAndBracketsAreShortPauses) {
    EXPECT_EQ(De(u"uno, dos (tres) cuatro — cinco - seis").palabras.comas, 5);
    EXPECT_EQ(De(u"uno, dos (tres) cuatro — cinco - seis").palabras.puntos, 0);
}

TEST(RasgosTexto, EndsOfSentencesAndParagraphsAreLongPauses) {
    EXPECT_EQ(De(u"uno. dos; tres: cuatro? cinco! seis\n\nsiete").palabras.puntos, 6);
    EXPECT_EQ(De(u"uno\ndos").palabras.puntos, 0);
    EXPECT_EQ(De(u"rojo-verde 3.5").palabras.puntos, 0);
}

TEST(RasgosTexto, ThePauseBehindTheLastWordStandsApart) {
    EXPECT_EQ(De(u"uno, dos.").palabras, (RasgosTexto{2, 2, 6, 1, 0}));
    EXPECT_EQ(De(u"uno, dos.").pausa, (RasgosTexto{0, 0, 0, 0, 1}));
    EXPECT_EQ(De(u"uno, dos,").pausa, (RasgosTexto{0, 0, 0, 1, 0}));
    EXPECT_EQ(De(u"uno, dos").pausa, RasgosTexto{});
}

TEST(RasgosTexto, AFewFiguresCountByTheirDigits) {
    std::u16string texto = u"65 ";
    for (int i = 0; i < 19; i++) texto += u"casa ";
    EXPECT_EQ(De(texto).palabras, (RasgosTexto{20, 20, 19 * 4 + 10, 0, 0}));
}

TEST(RasgosTexto, ATableOfFiguresDoesNotHurryTheVoice) {
    std::u16string texto;
    for (int i = 0; i < 50; i++) texto += u"123456 ";
    const RasgosTexto r = De(texto).palabras;
    EXPECT_EQ(r.palabras, 50);
    EXPECT_DOUBLE_EQ(r.medidas, 5);
    EXPECT_DOUBLE_EQ(r.letras, 5 * 20);
}

TEST(RasgosTexto, AddressesAndMixedTokensAreWordsWithoutLetters) {
    EXPECT_EQ(De(u"casa A4 x@y.es b/c").palabras.palabras, De(u"casa uno dos tres cuatro").palabras.palabras);
    EXPECT_EQ(De(u"A4 B12").palabras.medidas, 0);
}

TEST(RasgosTexto, ASignSaidByItsNameIsAWordAsLongAsItsName) {
    const OpcionesPieza opciones{LenguaSignos::Espanol, true, false};
    const RasgosPieza coma = De(u"  ,  ", opciones), escrita = De(u"coma,", opciones);
    EXPECT_EQ(coma.palabras, escrita.palabras);
    EXPECT_EQ(coma.pausa, escrita.pausa);
}

RasgosPieza Pieza(double palabras, double letras, double puntos = 0) {
    return {{palabras, palabras, letras, 0, 0}, {0, 0, 0, 0, puntos}};
}

TEST(CompasTexto, ThePauseBehindAPieceCountsWhenAnotherFollows) {
    CompasTexto compas;
    EXPECT_EQ(compas.Entra(Pieza(10, 40, 1)).puntos, 0);
    EXPECT_EQ(compas.Entra(Pieza(10, 40, 1)).puntos, 1);
}

TEST(CompasTexto, ALongTextIsForgottenButForItsLastHundredAndFiftyWords) {
    CompasTexto compas;
    for (int i = 0; i < 50; i++) compas.Entra(Pieza(200, 1200));
    const RasgosTexto r = compas.Entra(Pieza(200, 600));
    EXPECT_DOUBLE_EQ(r.palabras, 350);
    EXPECT_DOUBLE_EQ(r.letras, 150 * 6 + 600);
}

TEST(CompasTexto, AnotherLanguageBeginsAnew) {
    CompasTexto compas;
    compas.Entra(Pieza(200, 1200, 1));
    compas.Olvida();
    EXPECT_EQ(compas.Entra(Pieza(10, 40)), (RasgosTexto{10, 10, 40, 0, 0}));
}

}  // namespace
}  // namespace ondalis
