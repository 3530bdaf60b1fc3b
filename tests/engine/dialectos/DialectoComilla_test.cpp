#include <gtest/gtest.h>

#include <cstring>

#include "Volcado.h"
#include "engine/Dialectos.h"
#include "engine/HablantesIBM.h"

namespace ondalis {
namespace {

TEST(DialectoComilla, OfNothingHasNoSpan) { EXPECT_TRUE(AnalizaComilla(u"").empty()); }

TEST(DialectoComilla, EachVoiceIsChosenByItsLanguageAndPresetWithItsOwnFiveValues) {
    for (const HablanteIBM &h : HablantesIBM()) {
        const std::string anotacion = std::string("`l") + h.dialecto + "`v" + std::to_string(h.preset);
        const auto tramos = AnalizaComilla(De8(anotacion));
        ASSERT_EQ(6u, tramos.size()) << h.nombre;
        EXPECT_EQ(De8(h.idioma), tramos[0].texto) << h.nombre;
        const double esperados[] = {1.0 * h.tono, 1.0 * h.fluctuacion, 1.0 * h.aspereza, 1.0 * h.diafonia,
                                    1.0 * h.tamCabeza};
        for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(esperados[i], tramos[i + 1].valor) << h.nombre << ' ' << i;
    }
}

TEST(DialectoComilla, APresetWithoutALanguageIsASpanishOne) {
    EXPECT_EQ(AnalizaComilla(u"`v2"), AnalizaComilla(u"`l2.0`v2"));
}

TEST(DialectoComilla, ALanguageKeepsThePresetThatHoldsAndElseTakesTheFirst) {
    EXPECT_EQ(AnalizaComilla(u"`l4.0"), AnalizaComilla(u"`l4.0`v1"));
    EXPECT_EQ(AnalizaComilla(u"`v7`l4.0"), AnalizaComilla(u"`l4.0`v7"));
}

TEST(DialectoComilla, AValueOfOnesOwnEndsWithTheNextVoice) {
    EXPECT_EQ(AnalizaComilla(u"`vb300`v2"), AnalizaComilla(u"`v2"));
    EXPECT_NE(AnalizaComilla(u"`v2`vb300"), AnalizaComilla(u"`v2"));
}

TEST(DialectoComilla, TextBehindAnAnnotationKnowsItsPlaceInTheSource) {
    const auto tramos = AnalizaComilla(u"ab`vs200cd``e");
    ASSERT_EQ(3u, tramos.size());
    EXPECT_EQ(u"cd`e", tramos[2].texto);
    EXPECT_EQ(8u, Origen(tramos[2], 0));
    EXPECT_EQ(11u, Origen(tramos[2], 2));
    EXPECT_EQ(12u, Origen(tramos[2], 3));
}

TEST(DialectoComilla, LineEndsAndSurrogatePairsAreKept) {
    const std::u16string texto = u"a\r\nb\U0001F600\t\xD800z";
    const auto tramos = AnalizaComilla(texto + u"`vs200" + texto);
    ASSERT_EQ(3u, tramos.size());
    EXPECT_EQ(texto, tramos[0].texto);
    EXPECT_EQ(texto, tramos[2].texto);
}

TEST(DialectoComilla, EveryCutOfAnAnnotationIsHarmless) {
    const std::u16string entero = u"uno `l1.0 dos `vs200 tres";
    for (std::size_t n = 0; n <= entero.size(); ++n) {
        const auto hablado = Hablado(AnalizaComilla(std::u16string_view(entero).substr(0, n)));
        EXPECT_TRUE(hablado.starts_with(entero.substr(0, std::min<std::size_t>(n, 4)))) << n;
        EXPECT_LE(hablado.size(), n);
    }
    EXPECT_EQ(u"uno  dos  tres", Hablado(AnalizaComilla(entero)));
}

TEST(DialectoComilla, ARunOfAnnotationsCostsNoMoreThanItsLastOnes) {
    std::u16string texto;
    for (int i = 0; i < 1000; ++i) texto += u"`v1`v2`vs100";
    EXPECT_EQ(7u, AnalizaComilla(texto).size());
}

}  // namespace
}  // namespace ondalis
