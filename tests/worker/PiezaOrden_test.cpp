#include "worker/orden/PiezaOrden.h"

#include <gtest/gtest.h>

namespace ondalis {
namespace {

std::vector<std::u16string> Frases(std::u16string_view texto, std::size_t maximo = 300, bool pronto = false) {
    std::vector<std::u16string> frases;
    for (std::size_t i = 0; i < texto.size();) {
        const std::size_t fin = FinDeFrase(texto, i, maximo, pronto);
        EXPECT_GT(fin, i);
        EXPECT_LE(fin, std::min(texto.size(), i + maximo));
        if (fin <= i) break;
        frases.emplace_back(texto.substr(i, fin - i));
        i = fin;
    }
    return frases;
}
using Lista = std::vector<std::u16string>;

TEST(PiezaOrden, ASentenceEndsAtItsSignAndAParagraphWithoutOne) {
    EXPECT_EQ(Frases(u"Uno dos. «Tres.» ¿Cuatro? Fin"), (Lista{u"Uno dos. ", u"«Tres.» ", u"¿Cuatro? ", u"Fin"}));
    EXPECT_EQ(Frases(u"Título\n\nTexto"), (Lista{u"Título\n", u"\nTexto"}));
    EXPECT_EQ(Frases(u"vale 3.5 euros"), (Lista{u"vale 3.5 euros"}));
}

TEST(PiezaOrden, AnAbbreviationEndsNoSentence) {
    EXPECT_EQ(Frases(u"El Sr. López y D. Juan, p. ej., van. Fin."),
              (Lista{u"El Sr. López y D. Juan, p. ej., van. ", u"Fin."}));
}

TEST(PiezaOrden, ALongSentenceIsCutBehindASignElseABlankElseAnywhereButInACharacter) {
    EXPECT_EQ(Frases(u"uno dos, tres cuatro cinco", 20), (Lista{u"uno dos, ", u"tres cuatro cinco"}));
    EXPECT_EQ(Frases(u"unodostres cuatrocincoseis", 20), (Lista{u"unodostres ", u"cuatrocincoseis"}));
    for (const auto &trozo : Frases(u"x😀😀😀😀😀😀😀😀😀😀😀😀😀😀😀", 20)) EXPECT_NE(trozo.back() & 0xFC00, 0xD800);
}

TEST(PiezaOrden, ForAQuickFirstSoundAClauseOfSomeLengthIsEnough) {
    const std::u16string larga = std::u16string(61, u'a') + u", b, c";
    EXPECT_EQ(Frases(larga, 300, true).front(), std::u16string(61, u'a') + u", ");
    EXPECT_EQ(Frases(u"corta, b, c", 300, true).size(), 1u);
}

TEST(PiezaOrden, SpelledTextIsOneWordALetterWithItsAccentAndSignsByName) {
    const std::u16string texto = u"An\u0303o, 😀";
    const Pieza p = PiezaDeletreada(texto, 0, 300, LenguaSignos::Espanol);
    EXPECT_EQ(p.utf8, "A, ñ, o, coma, 😀");
    ASSERT_EQ(p.fichas.size(), 5u);
    EXPECT_EQ(p.fichas[1].inicio, 1u);
    EXPECT_EQ(p.fichas[1].fin, 3u);
    EXPECT_EQ(p.fichas[4].inicioMotor, 15u);
    EXPECT_EQ(p.siguiente, texto.size());
    EXPECT_FALSE(PiezaDeletreada(u"  ", 0, 300, LenguaSignos::Espanol).hablable);
}

}  // namespace
}  // namespace ondalis
