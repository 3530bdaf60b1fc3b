#include "worker/VozFormantes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ondalis {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(VozFormantes, TheLanguageFileComesFirstAndIsKept) {
    EXPECT_EQ(TextoDeVoz("name X\nlanguage es", {}).rfind("name X\nlanguage es\npitch ", 0), 0u);
    EXPECT_EQ(TextoDeVoz("name X\n", {}).rfind("name X\npitch ", 0), 0u);
}

TEST(VozFormantes, PitchAndFluctuationMakeThePitchLine) {
    EXPECT_THAT(TextoDeVoz("", {100, 50, 0, 0, 50}), HasSubstr("pitch 73 117\n"));
    EXPECT_THAT(TextoDeVoz("", {100, 0, 0, 0, 50}), HasSubstr("pitch 109 109\n"));
}

TEST(VozFormantes, RoughnessStopsAtSevenAndBringsFlutter) {
    EXPECT_THAT(TextoDeVoz("", {100, 50, 0, 0, 50}), HasSubstr("roughness 0\nflutter 2\n"));
    EXPECT_THAT(TextoDeVoz("", {100, 50, 100, 0, 50}), HasSubstr("roughness 7\nflutter 18\n"));
    EXPECT_THAT(TextoDeVoz("", {100, 50, 30000, 0, 50}), HasSubstr("roughness 7\n"));
}

TEST(VozFormantes, BreathinessAddsBreathAndTakesVoicing) {
    EXPECT_THAT(TextoDeVoz("", {100, 50, 0, 0, 50}), Not(HasSubstr("breath")));
    EXPECT_THAT(TextoDeVoz("", {100, 50, 0, 50, 50}),
                HasSubstr("breath 30 30 20 15 8 5\nbreathw 150 150 200 200 400 400\nvoicing 65\n"));
    EXPECT_THAT(TextoDeVoz("", {100, 50, 0, 9999, 50}), HasSubstr("voicing 30\n"));
}

TEST(VozFormantes, APlainVoiceIsTheFileItselfUnlessItsPitchChanges) {
    EXPECT_EQ(TextoDeVozLlana("name X", 1), "name X");
    EXPECT_EQ(TextoDeVozLlana("name X", 1.5), "name X\npitch 123 177\n");
    EXPECT_EQ(TextoDeVozLlana("pitch 80 120 //81\nname X", 2), "pitch 80 120 //81\nname X\npitch 160 240\n");
    EXPECT_EQ(TextoDeVozLlana("pitch\npitch 7", 2), "pitch\npitch 7\npitch 164 236\n");
    EXPECT_EQ(TextoDeVozLlana("name X\n", 100), "name X\npitch 328 472\n");
}

TEST(VozFormantes, ALargerHeadLowersAllFormants) {
    EXPECT_THAT(TextoDeVoz("", {100, 50, 0, 0, 50}), Not(HasSubstr("formant")));
    EXPECT_THAT(TextoDeVoz("", {100, 50, 0, 0, 100}), HasSubstr("formant 0 71 -1 -1\n"));
    EXPECT_THAT(TextoDeVoz("", {100, 50, 0, 0, 0}), HasSubstr("formant 8 141 -1 -1\n"));
}

}  // namespace
}  // namespace ondalis
