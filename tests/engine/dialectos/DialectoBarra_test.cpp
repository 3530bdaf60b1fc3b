#include <gtest/gtest.h>

#include "Volcado.h"
#include "engine/Dialectos.h"

namespace ondalis {
namespace {

TEST(TextoLlano, IsOneSpanWithTheTagsAsText) {
    const auto tramos = TextoLlano(u"\\Pau=5\\ <rate>&amp;");
    ASSERT_EQ(1u, tramos.size());
    EXPECT_EQ(u"\\Pau=5\\ <rate>&amp;", tramos[0].texto);
    EXPECT_EQ((std::vector<Corte>{{0, 0}}), tramos[0].cortes);
}

TEST(TextoLlano, OfNothingHasNoSpan) { EXPECT_TRUE(TextoLlano(u"").empty()); }

TEST(DialectoBarra, OfNothingHasNoSpan) { EXPECT_TRUE(AnalizaBarra(u"").empty()); }

TEST(DialectoBarra, ATextOfTagsAloneHasNoTextSpan) {
    EXPECT_EQ("Pausa 5\nMarca \"1\"\n", Vuelca(AnalizaBarra(u"\\Pau=5\\\\Mrk=1\\")));
}

TEST(DialectoBarra, TextBehindATagKnowsItsPlaceInTheSource) {
    const auto tramos = AnalizaBarra(u"ab\\Pau=5\\cd");
    ASSERT_EQ(3u, tramos.size());
    EXPECT_EQ(9u, Origen(tramos[2], 0));
    EXPECT_EQ(10u, Origen(tramos[2], 1));
}

TEST(DialectoBarra, AnUnknownTagStaysInOneSpanWithTheTextAroundIt) {
    const auto tramos = AnalizaBarra(u"a \\Foo=3\\ b");
    ASSERT_EQ(1u, tramos.size());
    EXPECT_EQ(u"a \\Foo=3\\ b", tramos[0].texto);
}

TEST(DialectoBarra, LineEndsAndSurrogatePairsAreKept) {
    const std::u16string texto = u"a\r\nb\U0001F600\t\xD800z";
    const auto tramos = AnalizaBarra(texto + u"\\Pau=1\\" + texto);
    ASSERT_EQ(3u, tramos.size());
    EXPECT_EQ(texto, tramos[0].texto);
    EXPECT_EQ(texto, tramos[2].texto);
    EXPECT_EQ(texto.size() + 7, Origen(tramos[2], 0));
}

TEST(DialectoBarra, EveryCutOfATagIsHarmless) {
    const std::u16string entero = u"uno \\Spd=200\\ dos \\Mrk=12\\ tres";
    for (std::size_t n = 0; n <= entero.size(); ++n) {
        const auto trozo = std::u16string_view(entero).substr(0, n);
        const std::size_t etiquetas = (n >= 13 ? 9u : 0u) + (n >= 26 ? 8u : 0u);
        EXPECT_EQ(n - etiquetas, Hablado(AnalizaBarra(trozo)).size()) << n;
    }
}

}  // namespace
}  // namespace ondalis
