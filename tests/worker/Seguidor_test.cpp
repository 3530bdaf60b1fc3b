#include "worker/Seguidor.h"

#include <gtest/gtest.h>

namespace ondalis {
namespace {

// The words that come out for signals at 1-based `posiciones`.
std::vector<std::u16string> Sigue(std::u16string_view texto, const std::vector<int> &posiciones) {
    const Pieza pieza = HazPieza(texto, 0, {});
    Seguidor seguidor(pieza.fichas);
    std::vector<std::u16string> palabras;
    for (const int p : posiciones)
        if (const Ficha *f = seguidor.Palabra(p)) palabras.emplace_back(texto.substr(f->inicio, f->fin - f->inicio));
    return palabras;
}
using Lista = std::vector<std::u16string>;

TEST(Seguidor, PartsOfANumberAndPlacesPassedAreNoWords) {
    EXPECT_EQ(Sigue(u"de 12.345 a", {1, 4, 5, 7, 4, 1, 11}), (Lista{u"de", u"12.345", u"a"}));
}

TEST(Seguidor, APlaceBetweenWordsIsNone) {
    EXPECT_EQ(Sigue(u"uno dos", {1, 4, 0, -1, 5, 900}), (Lista{u"uno", u"dos"}));
}

TEST(Seguidor, AWordBehindAnAbbreviationMayBeSignalledOnePlaceEarly) {
    EXPECT_EQ(Sigue(u"etc. fue ya", {1, 5, 10}), (Lista{u"etc", u"fue", u"ya"}));
    EXPECT_EQ(Sigue(u"EE.UU. dice", {1, 3, 4, 7, 8}), (Lista{u"EE.UU", u"dice"}));
}

TEST(Seguidor, AWordThatWasNeverSignalledIsPassedOver) { EXPECT_EQ(Sigue(u"a b c", {1, 5, 3}), (Lista{u"a", u"c"})); }

TEST(Seguidor, PositionsWithThePunctuationBitCountWithoutIt) {
    EXPECT_EQ(Sigue(u"uno dos", {1 + 2048, 5 + 2048}), (Lista{u"uno", u"dos"}));
}

TEST(Seguidor, ASymbolAtTheBeginningMayBePassedOver) { EXPECT_EQ(Sigue(u"=valor", {2}), (Lista{u"=valor"})); }

}  // namespace
}  // namespace ondalis
