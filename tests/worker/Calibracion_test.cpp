#include "worker/Calibracion.h"

#include <gtest/gtest.h>

namespace ondalis {
namespace {

TEST(Calibracion, TheEngineIsNeverAskedForFourHundredAndFiftyWhereItChangesItsWay) {
    for (const char *idioma : {"roa/es", "gmw/en", "roa/fr", "gmw/de", "roa/it", "zle/ru"})
        for (const double v : {450., 700., 1e9}) EXPECT_LE(RitmoDe(v, idioma).nominal, 449) << idioma << v;
    EXPECT_EQ(RitmoDe(450, "roa/es").nominal, 449);
}

TEST(Calibracion, AboveTheEnginesFastestTheSoundIsShortened) {
    const Ritmo r = RitmoDe(450, "roa/es");
    EXPECT_NEAR(r.estirado, 450 / 418.4, 1e-6);
    EXPECT_EQ(RitmoDe(418.4, "roa/es").estirado, 1);
    EXPECT_EQ(RitmoDe(5000, "roa/es").estirado, 1.5);
}

TEST(Calibracion, FasterIsNeverSlower) {
    for (const char *idioma : {"roa/es", "gmw/en", "roa/fr", "gmw/de", "roa/it", "zle/ru"}) {
        Ritmo antes{0, 0};
        for (int v = 20; v <= 700; v++) {
            const Ritmo r = RitmoDe(v, idioma);
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
    EXPECT_NEAR(r.estirado, 70 / 90.6, 1e-6);
    EXPECT_EQ(RitmoDe(1, "roa/es").estirado, .25);
}

TEST(Calibracion, AMeasuredSpeedGivesTheNominalOneItWasMeasuredAt) {
    EXPECT_EQ(RitmoDe(189.9, "roa/es").nominal, 175);
    EXPECT_EQ(RitmoDe(189.9, "roa/es-419").nominal, 175);
    EXPECT_EQ(RitmoDe(307.2, "gmw/en-US").nominal, 260);
    EXPECT_EQ(RitmoDe(311.9, "gmw/en").nominal, 260);
    EXPECT_EQ(RitmoDe(311.9, "gmw/en-GB-scotland").nominal, 260);
}

}  // namespace
}  // namespace ondalis
