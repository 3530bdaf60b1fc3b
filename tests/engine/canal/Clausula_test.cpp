#include "engine/Clausula.h"

#include <gtest/gtest.h>

#include "fakes/Locuciones.h"

namespace ondalis {
namespace {

std::optional<std::uint32_t> Fin(std::u16string texto, std::uint32_t desde) {
    return FinDeClausula(LocucionDe(1, std::move(texto)), desde);
}

TEST(Clausula, EndsBehindItsSignBeforeABlank) {
    EXPECT_EQ(Fin(u"uno, dos. tres", 0), 4u);
    EXPECT_EQ(Fin(u"uno, dos. tres", 3), 9u);
    EXPECT_EQ(Fin(u"uno, dos. tres", 9), 14u);
}

TEST(Clausula, IsTheOneOfTheNextLetterAndNotTheSignsBeforeIt) { EXPECT_EQ(Fin(u"uno. ... ¿dos? tres", 3), 14u); }

TEST(Clausula, ASignInsideAWordOrNumberEndsNothing) { EXPECT_EQ(Fin(u"3.5 a.b.c fin. x", 0), 14u); }

TEST(Clausula, ClosingSignsBelongToIt) {
    EXPECT_EQ(Fin(u"(uno.) dos", 0), 6u);
    EXPECT_EQ(Fin(u"«uno!» dos", 0), 6u);
}

TEST(Clausula, EndsAtALineEnd) { EXPECT_EQ(Fin(u"uno dos\ntres", 0), 7u); }

TEST(Clausula, ALongOneWithoutSignsEndsAtABlank) {
    const std::u16string texto = std::u16string(kMaxClausula + 5, u'a') + u" dos tres";
    EXPECT_EQ(Fin(texto, 0), kMaxClausula + 5);
}

TEST(Clausula, NoneIsLeftBehindTheLastLetter) {
    EXPECT_EQ(Fin(u"uno. ", 3), std::nullopt);
    EXPECT_EQ(Fin(u"", 0), std::nullopt);
    EXPECT_EQ(Fin(u"uno", 100), std::nullopt);
}

TEST(Clausula, PositionsAreThoseOfTheSourceWithItsTags) {
    Locucion locucion = LocucionDe(1, u"uno dos. tres");
    locucion.tramos[0].cortes = {{0, 10}, {4, 30}};
    EXPECT_EQ(FinDeClausula(locucion, 0), 34u);
    EXPECT_EQ(FinDeClausula(locucion, 33), 39u);
}

TEST(Clausula, RunsOverSeveralSpans) {
    Locucion locucion = LocucionDe(1, u"uno ");
    locucion.tramos.push_back(TramoTexto(u"dos. tres", 20));
    EXPECT_EQ(FinDeClausula(locucion, 0), 24u);
}

}  // namespace
}  // namespace ondalis
