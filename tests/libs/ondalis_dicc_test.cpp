#include "libs/ondalis_dicc.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using Pares = std::vector<std::pair<std::string, std::string>>;

Pares Todas() {
    Pares pares;
    char clave[ONDALIS_DICC_TAM] = {}, conversion[ONDALIS_DICC_TAM] = {};
    for (PrimeraPosicionDicc(); GetPosicionDicc(clave, conversion) == 1; SigPosicionDicc())
        pares.emplace_back(clave, conversion);
    return pares;
}

class Dicc : public testing::Test {
protected:
    void SetUp() override { LiberaMemDicc(); }
    void TearDown() override { LiberaMemDicc(); }
};

TEST_F(Dicc, AnEmptyTableHasNoEntryAtTheCursor) {
    char clave[ONDALIS_DICC_TAM], conversion[ONDALIS_DICC_TAM];
    PrimeraPosicionDicc();
    EXPECT_EQ(0, GetPosicionDicc(clave, conversion));
    SigPosicionDicc();
    EXPECT_EQ(0, GetPosicionDicc(clave, conversion));
}

TEST_F(Dicc, TheOrderOfIterationIsThatOfAdding) {
    AddConversionDicc("zeta", "1");
    AddConversionDicc("alfa", "2");
    AddConversionDicc("mu", "3");
    const Pares esperadas{{"zeta", "1"}, {"alfa", "2"}, {"mu", "3"}};
    EXPECT_EQ(esperadas, Todas());
    EXPECT_EQ(esperadas, Todas());
}

TEST_F(Dicc, ReadingAnEntryLeavesTheCursorWhereItIs) {
    AddConversionDicc("a", "1");
    AddConversionDicc("b", "2");
    char clave[ONDALIS_DICC_TAM], conversion[ONDALIS_DICC_TAM];
    PrimeraPosicionDicc();
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(1, GetPosicionDicc(clave, conversion));
        EXPECT_STREQ("a", clave);
    }
}

TEST_F(Dicc, BehindTheLastEntryThereIsNoneHoweverOftenTheCursorMoves) {
    AddConversionDicc("a", "1");
    char clave[ONDALIS_DICC_TAM], conversion[ONDALIS_DICC_TAM];
    PrimeraPosicionDicc();
    for (int i = 0; i < 5; ++i) {
        SigPosicionDicc();
        EXPECT_EQ(0, GetPosicionDicc(clave, conversion));
    }
}

TEST_F(Dicc, AKeyThatComesAgainKeepsOneEntryWithTheNewerConversion) {
    AddConversionDicc("a", "1");
    AddConversionDicc("b", "2");
    AddConversionDicc("a", "3");
    EXPECT_EQ((Pares{{"a", "3"}, {"b", "2"}}), Todas());
}

TEST_F(Dicc, KeysThatDifferByAnAccentOrTheirCaseAreTwoEntries) {
    AddConversionDicc("mas", "1");
    AddConversionDicc("m\xC3\xA1s", "2");
    AddConversionDicc("Mas", "3");
    EXPECT_EQ(3u, Todas().size());
}

TEST_F(Dicc, TextsUnder1024BytesAreHeldWhole) {
    const std::string largo(ONDALIS_DICC_TAM - 1, 'x');
    AddConversionDicc(largo.c_str(), largo.c_str());
    EXPECT_EQ((Pares{{largo, largo}}), Todas());
}

TEST_F(Dicc, ATextOf1024BytesOrMoreIsRefused) {
    const std::string largo(ONDALIS_DICC_TAM, 'x');
    AddConversionDicc(largo.c_str(), "1");
    AddConversionDicc("a", largo.c_str());
    EXPECT_TRUE(Todas().empty());
}

TEST_F(Dicc, AnEmptyKeyIsNeverStored) {
    AddConversionDicc("", "1");
    EXPECT_TRUE(Todas().empty());
}

TEST_F(Dicc, TextsThatAreNotUtf8AreRefused) {
    for (const char *malo : {"\xE1", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x28\xA1", "\xFF"}) {
        AddConversionDicc(malo, "1");
        AddConversionDicc("a", malo);
    }
    EXPECT_TRUE(Todas().empty());
    AddConversionDicc("\xF0\x9F\x98\x80", "cara");
    EXPECT_EQ(1u, Todas().size());
}

TEST_F(Dicc, NullPointersAreNoEntry) {
    AddConversionDicc(nullptr, "1");
    AddConversionDicc("a", nullptr);
    EXPECT_TRUE(Todas().empty());
    EXPECT_EQ(0, CargaDicc(nullptr));
    EXPECT_EQ(0, GrabaDicc(nullptr));
}

TEST_F(Dicc, FreeingEmptiesTheTable) {
    AddConversionDicc("a", "1");
    LiberaMemDicc();
    EXPECT_TRUE(Todas().empty());
}

TEST_F(Dicc, TheVersionChangesWithTheTableAndOnlyWithIt) {
    const auto antes = VersionDicc();
    AddConversionDicc("a", "1");
    const auto anadida = VersionDicc();
    EXPECT_NE(antes, anadida);
    Todas();
    AddConversionDicc("", "refused");
    EXPECT_EQ(anadida, VersionDicc());
    AddConversionDicc("a", "2");
    const auto cambiada = VersionDicc();
    EXPECT_NE(anadida, cambiada);
    LiberaMemDicc();
    const auto vacia = VersionDicc();
    EXPECT_NE(cambiada, vacia);
    CargaDicc("/nonexistent/x");
    EXPECT_NE(vacia, VersionDicc());
}

}  // namespace
