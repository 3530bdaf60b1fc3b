#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "Volcado.h"
#include "engine/Dialectos.h"

namespace ondalis {
namespace {

std::vector<Tramo> Xml(std::u16string_view texto) {
    const auto tramos = AnalizaXml(texto);
    EXPECT_TRUE(tramos.has_value()) << A8(texto);
    return tramos.value_or(std::vector<Tramo>{});
}

TEST(DialectoXml, OfNothingHasNoSpan) { EXPECT_TRUE(Xml(u"").empty()); }

TEST(DialectoXml, ATextOfTagsAloneHasNoTextSpan) {
    EXPECT_EQ("Pausa 5\nMarca \"m\"\n", Vuelca(Xml(u"<silence msec='5'/><bookmark mark='m'/>")));
}

TEST(DialectoXml, ReferencesAndCommentsMoveTheCutsNotTheSpans) {
    const std::u16string_view fuente = u"a&amp;b<!-- x -->c";
    const auto tramos = Xml(fuente);
    ASSERT_EQ(1u, tramos.size());
    EXPECT_EQ(u"a&bc", tramos[0].texto);
    for (std::size_t i = 0; i < tramos[0].texto.size(); ++i)
        EXPECT_EQ(tramos[0].texto[i], fuente[Origen(tramos[0], i)]) << i;
}

TEST(DialectoXml, SurrogatePairsAreWholeAndTheTextBehindKnowsItsPlace) {
    const std::u16string_view fuente = u"\U0001F600&#x1F600;z";
    const auto tramos = Xml(fuente);
    ASSERT_EQ(1u, tramos.size());
    EXPECT_EQ(u"\U0001F600\U0001F600z", tramos[0].texto);
    EXPECT_EQ(2u, Origen(tramos[0], 2));
    EXPECT_EQ(fuente.size() - 1, Origen(tramos[0], 4));
}

TEST(DialectoXml, AHalfSurrogatePairIsKeptAsItIs) {
    const std::u16string fuente{u'a', 0xD800, u'<', 0xDC00, u'&', 0xDBFF};
    EXPECT_EQ(fuente, Hablado(Xml(fuente)));
}

TEST(DialectoXml, LineEndsInsideATagAreBlanks) {
    EXPECT_EQ("Pausa 5\n", Vuelca(Xml(u"<silence\r\n\tmsec\n=\n'5'\n/>")));
}

TEST(DialectoXml, NestedSpeedsAddUpAndComeBack) {
    const auto tramos = Xml(u"<rate speed='4'>a<rate speed='3'>b</rate>c</rate>d");
    std::vector<double> factores;
    for (const Tramo &tramo : tramos)
        if (tramo.tipo == TipoTramo::Velocidad) {
            EXPECT_FALSE(tramo.absoluto);
            factores.push_back(std::log(tramo.valor) / std::log(3.0) * 10);
        }
    ASSERT_EQ(4u, factores.size());
    EXPECT_NEAR(4, factores[0], 1e-9);
    EXPECT_NEAR(7, factores[1], 1e-9);
    EXPECT_NEAR(4, factores[2], 1e-9);
    EXPECT_NEAR(0, factores[3], 1e-9);
}

TEST(DialectoXml, AMiddleOfTwentyFourthsOfAnOctave) {
    const auto tramos = Xml(u"<pitch absmiddle='10'/>");
    ASSERT_EQ(1u, tramos.size());
    EXPECT_NEAR(std::pow(2.0, 10.0 / 24), tramos[0].valor, 1e-12);
}

TEST(DialectoXml, AVoiceLeftOpenSurvivesTheEndOfTheRateAroundIt) {
    EXPECT_EQ(u"cd", Hablado(Xml(u"<rate speed='1'><voice required='name=Ana'>c</rate>d")));
    const auto tramos = Xml(u"<rate speed='1'><voice required='name=Ana'>c</rate>d");
    EXPECT_EQ(1, std::count_if(tramos.begin(), tramos.end(), [](const Tramo &t) { return t.tipo == TipoTramo::Voz; }));
}

TEST(DialectoXml, ARequirementOverTheLimitIsCut) {
    const auto tramos = Xml(u"<voice required='" + std::u16string(1000, u'x') + u"'>");
    ASSERT_EQ(1u, tramos.size());
    EXPECT_EQ(std::u16string(kMaxRequisitoVoz, u'x'), tramos[0].texto);
}

TEST(DialectoXml, HalfCutMarkupIsNeverRefused) {
    const std::u16string entero =
        u"uno <rate absspeed=\"5\" /> &amp; <voice required='name=N'>dos</voice><!-- c --> <![CDATA[x]]> fin";
    for (std::size_t n = 0; n <= entero.size(); ++n) {
        const auto trozo = std::u16string_view(entero).substr(0, n);
        const auto tramos = AnalizaXml(trozo);
        ASSERT_TRUE(tramos.has_value()) << A8(trozo);
        EXPECT_EQ(entero.substr(0, std::min<std::size_t>(n, 4)), Hablado(*tramos).substr(0, 4)) << n;
    }
}

// Whatever the source, each character of a text span is the one at its place, or that of a reference there.
TEST(DialectoXml, EveryCharacterComesFromItsPlaceInTheSource) {
    static constexpr std::u16string_view kPiezas[] = {u"a",
                                                      u" ",
                                                      u"<",
                                                      u">",
                                                      u"&",
                                                      u"&lt;",
                                                      u"&#65;",
                                                      u"<rate speed='1'>",
                                                      u"</rate>",
                                                      u"<!--",
                                                      u"-->",
                                                      u"<![CDATA[",
                                                      u"]]>",
                                                      u"'",
                                                      u"\"",
                                                      u"<spell>",
                                                      u"<silence msec='1'/>",
                                                      u"/",
                                                      u"=",
                                                      u"\U0001F600",
                                                      u"<hola>",
                                                      u"rate",
                                                      u"&#x1F600;"};
    std::mt19937 azar(20240);
    for (int vuelta = 0; vuelta < 20000; ++vuelta) {
        std::u16string fuente;
        for (int k = static_cast<int>(azar() % 12); k >= 0; --k) fuente += kPiezas[azar() % std::size(kPiezas)];
        const auto tramos = AnalizaXml(fuente);
        if (!tramos) continue;
        std::size_t ultimo = 0;
        for (const Tramo &tramo : *tramos) {
            if (tramo.tipo != TipoTramo::Texto) continue;
            ASSERT_FALSE(tramo.cortes.empty());
            ASSERT_EQ(0u, tramo.cortes[0].texto);
            for (std::size_t i = 0; i < tramo.texto.size(); ++i) {
                const std::size_t origen = Origen(tramo, i);
                ASSERT_LT(origen, fuente.size()) << A8(fuente);
                ASSERT_GE(origen, ultimo) << A8(fuente);
                ultimo = origen;
                const bool segundaMitad = tramo.texto[i] >= 0xDC00 && tramo.texto[i] < 0xE000;
                ASSERT_TRUE(fuente[origen] == tramo.texto[i] || fuente[origen] == u'&' || segundaMitad) << A8(fuente);
            }
        }
    }
}

}  // namespace
}  // namespace ondalis
