// The thirty formant voices as they sound by their own values, each with a text of its language.
#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <set>

#include "engine/HablantesIBM.h"
#include "worker/Locuciones.h"
#include "worker/MedidasVoz.h"
#include "worker/TextosLenguas.h"

namespace ondalis {
namespace {

class Hablantes : public testing::Test {
protected:
    struct Uno {
        const HablanteIBM *hablante;
        MedidaVoz medida;
    };

    static void SetUpTestSuite() {
        cTrabajador motor(ONDALIS_MOTOR);
        for (const HablanteIBM &h : HablantesIBM()) {
            const Oido oido = motor.Di(Una(ConSusValores(h), std::u16string(TextoDe(h.idioma).substr(0, 300))));
            ASSERT_TRUE(oido.fin) << h.nombre;
            ASSERT_EQ(oido.error, "") << h.nombre;
            s_voces.push_back({&h, Mide(oido.pcm)});
        }
    }

    static std::u16string_view TextoDe(std::string_view idioma) {
        if (idioma == "gmw/en-US") idioma = "gmw/en";
        for (const TextosLengua &t : kTextos)
            if (t.idioma == idioma) return t.prueba;
        return {};
    }

    inline static std::vector<Uno> s_voces;
};

TEST_F(Hablantes, ThirtyVoicesOfSixLanguagesSpeak) {
    ASSERT_EQ(s_voces.size(), 30u);
    std::map<std::string, int> lenguas;
    for (const Uno &v : s_voces) {
        lenguas[v.hablante->idioma]++;
        EXPECT_GT(v.medida.segundos, 12) << v.hablante->nombre;
    }
    EXPECT_EQ(lenguas.size(), 6u);
    for (const auto &[lengua, cuantas] : lenguas) EXPECT_EQ(cuantas, 5) << lengua;
}

TEST_F(Hablantes, NoneClipsAndAllAreAboutEquallyLoud) {
    double bajo = 0, alto = -100;
    for (const Uno &v : s_voces) {
        EXPECT_EQ(v.medida.topes, 0u) << v.hablante->nombre;
        EXPECT_NEAR(v.medida.sonoridad, -24.2, 1.2) << v.hablante->nombre;
        bajo = std::min(bajo, v.medida.sonoridad), alto = std::max(alto, v.medida.sonoridad);
    }
    EXPECT_LT(alto - bajo, 2);
}

TEST_F(Hablantes, EachSpeaksAtItsOwnPitchAndIsAVoiceAndNoNoise) {
    for (const Uno &v : s_voces) {
        EXPECT_NEAR(v.medida.tono, v.hablante->tono, v.hablante->tono * .05) << v.hablante->nombre;
        EXPECT_GT(v.medida.armonia, 1.5) << v.hablante->nombre;
        EXPECT_GT(v.medida.dispersion, 2) << v.hablante->nombre << ": monotonous";
        EXPECT_LT(v.medida.agudo, -12) << v.hablante->nombre << ": shrill";
    }
}

// In steps that a listener tells apart without trying: a tenth of pitch, a twentieth of formants, 1.2 dB of noise.
TEST_F(Hablantes, AnyTwoVoicesOfALanguageDifferClearlyInPitchFormantsAndNoise) {
    double menos = 100;
    for (const Uno &a : s_voces)
        for (const Uno &b : s_voces) {
            if (&a >= &b || a.hablante->lengua != b.hablante->lengua) continue;
            const double tono = std::abs(std::log2(a.medida.tono / b.medida.tono)) / std::log2(1.1);
            const double formantes =
                std::abs(std::log2(DesplazamientoDeFormantes(a.medida, b.medida))) / std::log2(1.05);
            const double ruido = std::abs(a.medida.armonia - b.medida.armonia) / 1.2;
            menos = std::min(menos, tono + formantes + ruido);
            EXPECT_GE(tono, 1) << a.hablante->nombre << " and " << b.hablante->nombre;
            EXPECT_GE(tono + formantes + ruido, 3) << a.hablante->nombre << " and " << b.hablante->nombre << ": "
                                                   << tono << ' ' << formantes << ' ' << ruido;
        }
    RecordProperty("least", std::to_string(menos));
}

TEST_F(Hablantes, WomenStandAboveMenChildrenAboveBothAndTheOldBelowTheYoung) {
    for (std::size_t i = 0; i < s_voces.size(); i += 5) {
        const auto &hombre = s_voces[i].medida, &mujer = s_voces[i + 1].medida, &crio = s_voces[i + 2].medida;
        const auto &anciana = s_voces[i + 3].medida, &anciano = s_voces[i + 4].medida;
        EXPECT_GT(mujer.tono, hombre.tono * 1.5);
        EXPECT_GT(crio.tono, mujer.tono * 1.25);
        EXPECT_LT(anciana.tono, mujer.tono * .92);
        EXPECT_LT(anciano.tono, hombre.tono * .92);
        EXPECT_LT(anciana.armonia, mujer.armonia - .8);
        EXPECT_LT(anciano.armonia, hombre.armonia - .8);
        EXPECT_GT(DesplazamientoDeFormantes(hombre, mujer), 1.05);
        EXPECT_GT(DesplazamientoDeFormantes(mujer, crio), 1.05);
    }
}

}  // namespace
}  // namespace ondalis
