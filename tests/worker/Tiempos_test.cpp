#include "worker/orden/Tiempos.h"

#include <gtest/gtest.h>

namespace ondalis {
namespace {

using Lista = std::vector<std::string>;

TEST(Tiempos, EachLineOfSegmentsCountsFromItsOwnBeginningInTheSound) {
    const auto dichos = LeeSegmentos("pau:0.1 a:0.5 \n pau:0.2 b:0.6 pau:1.0\n", 1.5);
    ASSERT_TRUE(dichos);
    ASSERT_EQ(dichos->size(), 5u);
    EXPECT_EQ((*dichos)[1].nombre, "a");
    EXPECT_DOUBLE_EQ((*dichos)[1].inicio, .1);
    EXPECT_DOUBLE_EQ((*dichos)[3].inicio, .7);
    EXPECT_DOUBLE_EQ((*dichos)[4].fin, 1.5);
}

TEST(Tiempos, WhatTheLinesTellBeyondTheSoundWasLeftOffAtTheEndOfEach) {
    const auto dichos = LeeSegmentos("a:0.5 pau:1.1\nb:0.5 pau:1.1\n", 2.0);
    ASSERT_TRUE(dichos);
    EXPECT_DOUBLE_EQ((*dichos)[2].inicio, 1.0);
}

TEST(Tiempos, WhatIsNoListOfTimesGivesNone) {
    EXPECT_FALSE(LeeSegmentos("", 1));
    EXPECT_FALSE(LeeSegmentos("hola\n", 1));
    EXPECT_FALSE(LeeSegmentos("a:0.5 b:0.2\n", .5)) << "ends go on";
    EXPECT_FALSE(LeeSegmentos("a:nan\n", 1));
    EXPECT_FALSE(LeeSegmentos(":1\n", 1));
    EXPECT_FALSE(LeeSegmentos("a:1e300\n", 1));
    EXPECT_FALSE(LeeSegmentos("a:9\n", 1)) << "of another sound";
    EXPECT_FALSE(LeePalabras("uno\n", 1));
    EXPECT_FALSE(LeePalabras("0.5 uno\n0.2 dos\n", 1));
    EXPECT_FALSE(LeePalabras("-1 uno\n", 1));
}

TEST(Tiempos, EveryWordHasALineOfSounds) {
    EXPECT_EQ(LeeSonidos("pau a b pau\npau\npau c pau\n", 3), (std::vector<Lista>{{"a", "b"}, {}, {"c"}}));
    EXPECT_FALSE(LeeSonidos("pau a pau\n", 2));
    EXPECT_FALSE(LeeSonidos("pau a pau\nb\nc\n", 2));
}

TEST(Tiempos, AWordBeginsWithItsFirstSoundAlsoWhereItsSoundsDifferFromThoseItHasAlone) {
    // "the end": alone "dh ax", here "dh iy"; the second word has lost its last sound.
    const auto dichos = LeeSegmentos("pau:0.2 dh:0.3 iy:0.4 pau:0.5 eh:0.6 n:0.7 pau:0.9\n", .9);
    ASSERT_TRUE(dichos);
    EXPECT_EQ(IniciosDePalabras(*dichos, {{"dh", "ax"}, {"eh", "n", "d"}}), (std::vector<double>{.2, .5}));
}

TEST(Tiempos, AWordWithoutASoundBeginsWithTheNextOneOrAtTheEnd) {
    const auto dichos = LeeSegmentos("a:0.3 b:0.7\n", .7);
    ASSERT_TRUE(dichos);
    EXPECT_EQ(IniciosDePalabras(*dichos, {{"a"}, {}, {"b"}, {}}), (std::vector<double>{0, .3, .3, .7}));
}

TEST(Tiempos, AnotherTextIsNoTextAtAll) {
    const auto dichos = LeeSegmentos("t:0.1 s:0.2 k:0.3 m:0.4\n", .4);
    ASSERT_TRUE(dichos);
    EXPECT_FALSE(IniciosDePalabras(*dichos, {{"l", "r"}, {"p", "g"}}));
    EXPECT_FALSE(IniciosDePalabras(*dichos, {{}, {}}));
}

TEST(Tiempos, WordsAreFoundBlindToCaseAndSigns) {
    const auto dichos = LeePalabras("0.10 hola\n0.55 mundo\n", 1);
    ASSERT_TRUE(dichos);
    EXPECT_EQ(IniciosDePalabras(*dichos, {{"\u00a1Hola,"}, {"MUNDO."}}).has_value(), true);
    EXPECT_EQ(*IniciosDePalabras(*dichos, {{"Hola,"}, {"MUNDO."}}), (std::vector<double>{.1, .55}));
}

}  // namespace
}  // namespace ondalis
