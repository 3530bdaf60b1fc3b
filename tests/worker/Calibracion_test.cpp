#include "worker/Calibracion.h"

#include <gtest/gtest.h>

namespace ondalis {
namespace {

constexpr RasgosTexto kCortas{100, 100, 380, 6, 7}, kLargas{100, 100, 580, 6, 7};

TEST(Calibracion, TheEngineIsNeverAskedForFourHundredAndFiftyWhereItChangesItsWay) {
    for (const char *idioma : {"roa/es", "gmw/en", "roa/fr", "gmw/de", "roa/it", "zle/ru"})
        for (const double v : {450., 700., 1e9}) EXPECT_LE(RitmoDe(v, idioma).nominal, 449) << idioma << v;
    EXPECT_EQ(RitmoDe(450, "roa/es").nominal, 449);
}

TEST(Calibracion, AboveTheEnginesFastestTheSoundIsShortened) {
    const Ritmo r = RitmoDe(450, "roa/es");
    EXPECT_EQ(r.nominal, 449);
    EXPECT_GT(r.estirado, 1.1);
    EXPECT_LT(r.estirado, 1.2);
    EXPECT_NEAR(RitmoDe(440, "roa/es").estirado, r.estirado * 440 / 450, 1e-9);
    EXPECT_EQ(RitmoDe(5000, "roa/es").estirado, 1.5);
}

TEST(Calibracion, FasterIsNeverSlower) {
    for (const RasgosTexto &texto : {RasgosTexto{}, kCortas, kLargas})
        for (const double tono : {40., 106., 422.})
            for (const char *idioma : {"roa/es", "gmw/en", "gmw/en-US", "roa/fr", "gmw/de", "roa/it", "zle/ru"}) {
                Ritmo antes{0, 0};
                for (int v = 20; v <= 700; v++) {
                    const Ritmo r = RitmoDe(v, idioma, texto, tono);
                    EXPECT_GE(r.nominal, antes.nominal);
                    EXPECT_GE(r.estirado, antes.estirado);
                    EXPECT_GE(r.nominal, 85);
                    EXPECT_LE(r.estirado, 1.5);
                    antes = r;
                }
            }
}

TEST(Calibracion, BelowTheEnginesSlowestTheSoundIsStretched) {
    const Ritmo r = RitmoDe(70, "roa/es");
    EXPECT_EQ(r.nominal, 85);
    EXPECT_GT(r.estirado, .75);
    EXPECT_LT(r.estirado, .9);
    EXPECT_NEAR(RitmoDe(60, "roa/es").estirado, r.estirado * 60 / 70, 1e-9);
    EXPECT_EQ(RitmoDe(1, "roa/es").estirado, .25);
}

TEST(Calibracion, AVariantHasItsLanguagesPace) {
    for (const int v : {100, 200, 300}) {
        EXPECT_EQ(RitmoDe(v, "roa/es-419").nominal, RitmoDe(v, "roa/es").nominal);
        EXPECT_EQ(RitmoDe(v, "gmw/en-GB-scotland").nominal, RitmoDe(v, "gmw/en").nominal);
        EXPECT_NE(RitmoDe(v, "roa/fr").nominal, RitmoDe(v, "roa/es").nominal);
    }
}

TEST(Calibracion, LongWordsAreSaidFasterAndShortOnesSlower) {
    for (const char *idioma : {"roa/es", "gmw/en", "roa/fr", "gmw/de", "roa/it"})
        for (const int v : {110, 170, 300}) {
            const int comun = RitmoDe(v, idioma, {}, 106).nominal;
            EXPECT_GT(RitmoDe(v, idioma, kLargas, 106).nominal, comun) << idioma << v;
            EXPECT_LT(RitmoDe(v, idioma, kCortas, 106).nominal, comun) << idioma << v;
        }
}

TEST(Calibracion, TheFewerWordsTheNearerToTheCommonPace) {
    const int comun = RitmoDe(170, "roa/es", {}, 106).nominal;
    int antes = comun;
    for (const double n : {.01, .05, .2, 1.}) {
        const int nominal = RitmoDe(170, "roa/es", kLargas * n, 106).nominal;
        EXPECT_GT(nominal, antes) << n;
        antes = nominal;
    }
    EXPECT_NEAR(RitmoDe(170, "roa/es", kLargas * .01, 106).nominal, comun, comun * .05);
}

// One word a minute more or less at the common text's pace is one of the engine's, nearly.
TEST(Calibracion, TheVoiceIsNeverHurriedNorSlowedByMoreThanTwoFifths) {
    const RasgosTexto eternas{100, 100, 3000, 0, 30}, minimas{100, 100, 100, 0, 0};
    for (const int v : {120, 170, 250}) {
        EXPECT_LE(RitmoDe(v, "roa/es", eternas, 106).nominal, RitmoDe(v * 1.4, "roa/es").nominal);
        EXPECT_GE(RitmoDe(v, "roa/es", minimas, 106).nominal, RitmoDe(v / 1.42, "roa/es").nominal);
    }
}

TEST(Calibracion, ADeepVoiceIsAskedToHurryAsItsPeriodsAreLonger) {
    EXPECT_GT(RitmoDe(300, "roa/es", {}, 50).nominal, RitmoDe(300, "roa/es", {}, 300).nominal);
}

TEST(Calibracion, ALanguageNotMeasuredIgnoresTheText) {
    EXPECT_EQ(RitmoDe(170, "zle/ru", kLargas, 60).nominal, RitmoDe(170, "zle/ru").nominal);
}

}  // namespace
}  // namespace ondalis
