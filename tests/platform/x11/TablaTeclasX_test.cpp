#include "platform/x11/TablaTeclasX.h"

#include <gmock/gmock.h>

namespace ondalis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

// A keyboard of some keys, each with up to four keysyms.
MapaTeclado Mapa(std::initializer_list<std::pair<int, std::vector<std::uint32_t>>> teclas, int porTecla = 7) {
    MapaTeclado mapa;
    mapa.porTecla = static_cast<std::uint8_t>(porTecla);
    mapa.simbolos.assign(248 * static_cast<std::size_t>(porTecla), 0);
    for (const auto &[codigo, simbolos] : teclas)
        for (std::size_t i = 0; i < simbolos.size(); ++i)
            mapa.simbolos[static_cast<std::size_t>((codigo - 8) * porTecla) + i] = simbolos[i];
    return mapa;
}

TEST(TablaTeclasX, EveryVirtualKeyOfTheListsHasAKey) {
    const int teclas[] = {48,  49,  50,  51,  52,  53,  54,  55,  56,  57,  96,  97,  98,  99,  100, 101,
                          102, 103, 104, 105, 112, 113, 114, 115, 116, 117, 118, 119, 120, 121, 122, 123,
                          124, 125, 126, 127, 9,   8,   45,  12,  13,  27,  32,  36,  35,  44};
    for (int tecla : teclas) {
        const SimbolosTecla simbolos = SimbolosDe(tecla);
        EXPECT_FALSE(simbolos.siempre.empty()) << tecla;
    }
}

TEST(TablaTeclasX, AnUnknownVirtualKeyHasNone) {
    EXPECT_THAT(Mapa({}).CodigosDe(200), IsEmpty());
    EXPECT_THAT(Mapa({}).CodigosDe(-1), IsEmpty());
}

TEST(TablaTeclasX, ADigitIsTheKeyThatHasItEvenIfOnlyWithShift) {
    EXPECT_THAT(Mapa({{10, {'&', '1'}}, {11, {0xe9, '2'}}}).CodigosDe(49), ElementsAre(CodigoX{10, false}));
}

TEST(TablaTeclasX, ADigitOfTheThirdLevelCountsOnlyWhereTheFirstTwoHaveNone) {
    EXPECT_THAT(Mapa({{10, {'1', '!'}}, {40, {'d', 'D', 0, 0, '1'}}}).CodigosDe(49), ElementsAre(CodigoX{10, false}));
    EXPECT_THAT(Mapa({{40, {'d', 'D', 0, 0, '1'}}}).CodigosDe(49), ElementsAre(CodigoX{40, false}));
}

TEST(TablaTeclasX, ALayoutWithoutEuropeanDigitsTakesTheDigitRow) {
    EXPECT_THAT(Mapa({{10, {0x6f1}}}).CodigosDe(49), ElementsAre(CodigoX{10, false}));
    EXPECT_THAT(Mapa({}).CodigosDe(48), ElementsAre(CodigoX{19, false}));
}

TEST(TablaTeclasX, F13ToF16WithoutAKeysymTakeTheKeyCodesOfTheirOwn) {
    EXPECT_THAT(Mapa({}).CodigosDe(124), ElementsAre(CodigoX{191, false}));
    EXPECT_THAT(Mapa({}).CodigosDe(127), ElementsAre(CodigoX{194, false}));
    EXPECT_THAT(Mapa({{200, {0xffca}}}).CodigosDe(124), ElementsAre(CodigoX{200, false}));
}

TEST(TablaTeclasX, PrintScreenIsAllKeysThatHaveIt) {
    EXPECT_THAT(Mapa({{107, {0xff61, 0xff15}}, {218, {0xff61}}}).CodigosDe(44),
                UnorderedElementsAre(CodigoX{107, false}, CodigoX{218, false}));
}

TEST(TablaTeclasX, TheKeyClearIsTheKeypadsFiveOnlyWithoutNumLock) {
    const MapaTeclado mapa = Mapa({{84, {0xff9d, 0xffb5}}});
    EXPECT_THAT(mapa.CodigosDe(12), ElementsAre(CodigoX{84, true}));
    EXPECT_THAT(mapa.CodigosDe(101), ElementsAre(CodigoX{84, false}));
    EXPECT_THAT(mapa.VariantesDeBloqueo({84, true}), UnorderedElementsAre(0, BitsX::Bloqueo));
}

TEST(TablaTeclasX, AKeyIsGrabbedUnderTheFourStatesOfTheLocks) {
    EXPECT_THAT(Mapa({}).VariantesDeBloqueo({10, false}),
                UnorderedElementsAre(0, BitsX::Bloqueo, BitsX::Mod2, BitsX::Bloqueo | BitsX::Mod2));
}

TEST(TablaTeclasX, TheModifierMappingTellsWhichBitsAreAltNumLockAndSuper) {
    MapaTeclado mapa = Mapa({{64, {0xffe9}}, {77, {0xff7f}}, {133, {0xffeb}}});
    const std::uint8_t filas[] = {0, 0, 0, 77, 133, 64, 0, 0};  // Mod1 NumLock, Mod2 Super, Mod3 Alt
    mapa.FijaModificadores(filas, 1);
    EXPECT_EQ(mapa.bitBloqNum, 8);
    EXPECT_EQ(mapa.bitSuper, 16);
    EXPECT_EQ(mapa.bitAlt, 32);
    EXPECT_EQ(mapa.Bits(1 | 2 | 4), 32 | BitsX::Control | BitsX::Mayus);
    EXPECT_EQ(mapa.BitsQueCuentan(), 0xff & ~(BitsX::Bloqueo | 8));
}

TEST(TablaTeclasX, AKeyWithATerminalSwitchOnAnyLevelSwitchesTerminals) {
    const MapaTeclado mapa = Mapa({{67, {0xffbe, 0xffbe, 0xffbe, 0xffbe, 0xffbe, 0xffbe, 0x1008FE01}}, {68, {0xffbf}}});
    EXPECT_TRUE(mapa.CambiaTerminal(67));
    EXPECT_FALSE(mapa.CambiaTerminal(68));
    EXPECT_FALSE(mapa.CambiaTerminal(3));
}

}  // namespace
}  // namespace ondalis
