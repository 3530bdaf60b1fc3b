// Hostile texts of an eighth of a megabyte and of a whole one: the cost must grow as the text does. Processor time of
// this thread, so that a busy machine doesn't matter much; a quadratic parser grows by 64.
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>

#include "Volcado.h"
#include "engine/Dialectos.h"

namespace ondalis {
namespace {

double Segundos() {
    timespec ahora{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ahora);
    return static_cast<double>(ahora.tv_sec) + static_cast<double>(ahora.tv_nsec) * 1e-9;
}

std::u16string Repite(std::u16string_view pieza, std::size_t unidades) {
    std::u16string texto;
    texto.reserve(unidades + pieza.size());
    while (texto.size() < unidades) texto += pieza;
    return texto;
}

template <class F>
double MejorDeDos(F &&f) {
    double mejor = 1e9;
    for (int i = 0; i < 2; ++i) {
        const double antes = Segundos();
        f();
        mejor = std::min(mejor, Segundos() - antes);
    }
    return mejor;
}

class Coste : public testing::TestWithParam<const char16_t *> {};

TEST_P(Coste, GrowsAsTheTextDoes) {
    constexpr std::size_t kMega = std::size_t{1} << 20;
    const std::u16string octavo = Repite(GetParam(), kMega / 8), entero = Repite(GetParam(), kMega);
    const auto analiza = [](const std::u16string &texto) {
        return MejorDeDos([&] {
            const auto barra = AnalizaBarra(texto);
            const auto comilla = AnalizaComilla(texto);
            const auto xml = AnalizaXml(texto);
            EXPECT_LE(barra.size() + comilla.size() + (xml ? xml->size() : 0), 3 * texto.size());
        });
    };
    const double t1 = analiza(octavo), t8 = analiza(entero);
    EXPECT_LT(t8, 20 * t1 + 0.1) << t1 << " s for an eighth, " << t8 << " s for the whole";
}

INSTANTIATE_TEST_SUITE_P(Hostiles, Coste,
                         testing::Values(u"palabra ", u"<", u"&", u"\\", u"<rate ", u"<rate a=\"", u"<rate a=\"x\" ",
                                         u"<rate a='<rate b=\"", u"<!--", u"<![CDATA[", u"<?xml ", u"<!--<![CDATA[",
                                         u"&#", u"&#0000000", u"\\Pau=", u"\\Pau=1", u"\\Pau=1\\", u"<rate speed='1'>",
                                         u"<rate speed='1'>a</rate>",
                                         u"<voice required='aaaaaaaaaaaaaaaaaaaaaaaaaaaaa'>", u"</rate>", u"`", u"`v",
                                         u"`l", u"`v1`v2", u"`v1a`v2b", u"`l1.0a`l2.0b", u"`vs1", u"`l1.", u"``", u"`1",
                                         u"<bookmark mark='", u"a&amp;", u"1"));

TEST(Coste, ALongRequirementIsNotMultipliedByItsInnerVoices) {
    std::u16string texto = u"<voice required='" + std::u16string(500000, u'x') + u"'>";
    texto += Repite(u"<voice required='y'></voice>", 500000);
    const auto tramos = AnalizaXml(texto);
    ASSERT_TRUE(tramos.has_value());
    std::size_t unidades = 0;
    for (const Tramo &tramo : *tramos) unidades += tramo.texto.size();
    EXPECT_LT(unidades, 20 * texto.size());
}

}  // namespace
}  // namespace ondalis
