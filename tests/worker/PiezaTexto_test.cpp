#include "worker/PiezaTexto.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace ondalis {
namespace {

std::vector<std::u16string> Palabras(std::u16string_view texto, const OpcionesPieza &opciones = {}) {
    std::vector<std::u16string> palabras;
    for (const Ficha &f : HazPieza(texto, 0, opciones).fichas)
        palabras.emplace_back(texto.substr(f.inicio, f.fin - f.inicio));
    return palabras;
}
using Lista = std::vector<std::u16string>;

TEST(PiezaTexto, AWordLosesTheSignsAroundItAndKeepsThoseInside) {
    EXPECT_EQ(Palabras(u"¿Qué? —Dijo «12.345,67» (rojo-verde), L'homme; a@b.es."),
              (Lista{u"Qué", u"Dijo", u"12.345,67", u"rojo-verde", u"L'homme", u"a@b.es"}));
    EXPECT_EQ(Palabras(u"y/o dijo—y 100% +34 €5"), (Lista{u"y", u"o", u"dijo", u"y", u"100%", u"+34", u"€5"}));
    EXPECT_EQ(Palabras(u"... — \"\""), Lista{});
}

TEST(PiezaTexto, ASurrogatePairIsOneCharacterOfTheEngineAndTwoOfTheText) {
    const std::u16string texto = u"😀 fin";
    const Pieza p = HazPieza(texto, 0, {});
    ASSERT_EQ(p.fichas.size(), 2u);
    EXPECT_EQ(p.fichas[0], (Ficha{0, 0, 0, 2, false}));
    EXPECT_EQ(p.fichas[1].inicioMotor, 2u);
    EXPECT_EQ(p.fichas[1].inicio, 3u);
}

TEST(PiezaTexto, DecomposedAccentsAreJoinedForTheEngineAndCountedInTheText) {
    const std::u16string texto = u"an\u0303o cami\u0301n";
    const Pieza p = HazPieza(texto, 0, {});
    EXPECT_EQ(p.utf8, "año camín");
    ASSERT_EQ(p.fichas.size(), 2u);
    EXPECT_EQ(p.fichas[0].fin, 4u);
    EXPECT_EQ(p.fichas[1].inicio, 5u);
    EXPECT_EQ(p.fichas[1].inicioMotor, 4u);
}

TEST(PiezaTexto, ControlCharactersAndBrokenSurrogatesAreBlanksAndSoftHyphensVanish) {
    const std::u16string texto = {u'a', 1, u'b', 0, u'c', 0xD83D, u'd', 0xAD, u'e'};
    EXPECT_EQ(HazPieza(texto, 0, {}).utf8, "a b c de");
}

TEST(PiezaTexto, ManyShortDottedOrApostropheElementsEndThePiece) {
    for (const std::u16string unidad :
         {u"a.", u"U.S.", u"s'", u"s’", u"e.g. ", u"a.a.a. ", u" .ñ", u".\u0301 ", u"."}) {
        std::u16string texto;
        for (int i = 0; i < 220; i++) texto += unidad;
        for (std::size_t i = 0; i < texto.size();) {
            const Pieza p = HazPieza(texto, i, {});
            ASSERT_GT(p.siguiente, i);
            EXPECT_LE(std::count_if(p.utf8.begin(), p.utf8.end(), [](char c) { return c == '.' || c == '\''; }), 30);
            EXPECT_LE(p.caracteres, 200u);
            i = p.siguiente;
        }
    }
}

TEST(PiezaTexto, OrdinaryProseWithAbbreviationsAndElisionsIsOnePiece) {
    std::u16string texto;
    for (int i = 0; i < 30; i++) texto += u"Según el Sr. D. Juan, p. ej., L'homme qu'il n'a vu. ";
    EXPECT_EQ(HazPieza(texto.substr(0, 1400), 0, {}).siguiente, 1400u);
}

TEST(PiezaTexto, AnEndlessTokenIsBrokenByBlanksAndStaysOneWord) {
    const std::u16string texto(1000, u'x');
    const Pieza p = HazPieza(texto, 0, {});
    EXPECT_EQ(p.fichas.size(), 1u);
    EXPECT_EQ(p.utf8.find(' '), 60u);
    EXPECT_EQ(p.utf8.find(' ', 61), 121u);
}

TEST(PiezaTexto, AnOrdinaryAbbreviationOrAddressIsNotBroken) {
    for (const char16_t *texto : {u"EE.UU.", u"192.168.100.200", u"www.uno.dos.tres.es", u"rock'n'roll"})
        EXPECT_EQ(HazPieza(texto, 0, {}).utf8.find(' '), std::string::npos);
}

TEST(PiezaTexto, ASignOfTheFilterAloneBetweenBlanksIsNamed) {
    const OpcionesPieza formantes{LenguaSignos::Espanol, true, false};
    EXPECT_EQ(HazPieza(u"hola   ,  mundo", 0, formantes).utf8, "hola    coma,   mundo");
    EXPECT_EQ(Palabras(u"hola   ,  mundo", formantes), (Lista{u"hola", u",", u"mundo"}));
    EXPECT_EQ(HazPieza(u"hola, mundo", 0, formantes).utf8, "hola, mundo");
    EXPECT_EQ(HazPieza(u"hola — mundo", 0, formantes).utf8, "hola — mundo");
    EXPECT_EQ(HazPieza(u"(", 0, {LenguaSignos::InglesAmericano, true, false}).utf8, " left parenthesis ");
    EXPECT_EQ(HazPieza(u"( a", 0, {}).utf8, "( a");
}

TEST(PiezaTexto, WithSpokenPunctuationEverySignIsNamedButThoseInsideNumbersAndWords) {
    const OpcionesPieza todos{LenguaSignos::Espanol, false, true};
    EXPECT_EQ(HazPieza(u"sí, 3.5", 0, todos).utf8, "sí coma,  3.5");
    EXPECT_EQ(Palabras(u"sí, (no) 3.5", todos), (Lista{u"sí", u"no", u"3.5"}));
}

TEST(PiezaTexto, ALongTextIsCutAtAParagraphElseASentenceElseABlank) {
    std::u16string parrafos, frases, blancos, nada;
    for (int i = 0; i < 400; i++) {
        parrafos += i % 50 == 49 ? u"frase.\n\n" : u"frase. ";
        frases += i % 50 == 49 ? u"palabra. " : u"palabra ";
        blancos += u"palabra ";
        nada += u"palabra😀";
    }
    const auto corte = [](std::u16string_view t) { return t.substr(0, HazPieza(t, 0, {}).siguiente); };
    EXPECT_TRUE(corte(parrafos).ends_with(u".\n\n"));
    EXPECT_TRUE(corte(frases).ends_with(u"palabra. "));
    EXPECT_TRUE(corte(blancos).ends_with(u"palabra "));
    const auto trozo = corte(nada);
    EXPECT_NE(trozo.back() & 0xFC00, 0xD800);
}

TEST(PiezaTexto, PiecesTakeTheWholeTextOnceAndStayUnderTheEnginesLimit) {
    std::u16string texto;
    for (int i = 0; i < 3000; i++) texto += i % 3 == 0 ? u"(!) " : u"una, «dos» ... s's's's's's's's's's's's's's's ";
    for (const OpcionesPieza &o : {OpcionesPieza{}, OpcionesPieza{LenguaSignos::Frances, true, true}}) {
        std::size_t i = 0;
        while (i < texto.size()) {
            const Pieza p = HazPieza(texto, i, o);
            ASSERT_GT(p.siguiente, i);
            ASSERT_LT(p.caracteres, 2000u);
            for (const Ficha &f : p.fichas) {
                ASSERT_GE(f.inicio, i);
                ASSERT_LE(f.fin, p.siguiente);
                ASSERT_LT(f.inicioMotor, p.caracteres);
            }
            i = p.siguiente;
        }
        EXPECT_EQ(i, texto.size());
    }
}

TEST(PiezaTexto, BlankAndSilentTextIsNotSpeakable) {
    EXPECT_FALSE(HazPieza(u" \n\t ", 0, {}).hablable);
    EXPECT_FALSE(HazPieza(u"... —", 0, {}).hablable);
    EXPECT_TRUE(HazPieza(u"%", 0, {}).hablable);
    EXPECT_TRUE(HazPieza(u" . ", 0, {LenguaSignos::Espanol, true, false}).hablable);
}

TEST(PiezaTexto, AWordBehindAFullStopIsMarkedWhateverBlanksAndSignsStandBetween) {
    const auto marcadas = [](std::u16string_view texto, const OpcionesPieza &opciones = {}) {
        std::vector<bool> marcas;
        for (const Ficha &f : HazPieza(texto, 0, opciones).fichas) marcas.push_back(f.trasAbreviatura);
        return marcas;
    };
    EXPECT_EQ(marcadas(u"p. ej., pagó"), (std::vector<bool>{false, true, true}));
    EXPECT_EQ(marcadas(u"fin.   otro etc.: dos"), (std::vector<bool>{false, true, false, true}));
    EXPECT_EQ(marcadas(u"EE.UU. dice a, b"), (std::vector<bool>{false, false, false, false}));
    EXPECT_EQ(marcadas(u"a   .  b   ;  c", {LenguaSignos::Espanol, true, false}),
              (std::vector<bool>{false, false, true, false, false}));
}

}  // namespace
}  // namespace ondalis
