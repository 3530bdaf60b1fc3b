// Each value of a formant voice changes the sound in its own direction over the whole of its range: a man, a woman and
// a child. Measured on the samples of the real worker.
#include <gtest/gtest.h>

#include "engine/HablantesIBM.h"
#include "worker/Locuciones.h"
#include "worker/MedidasVoz.h"
#include "worker/TextosLenguas.h"

namespace ondalis {
namespace {

class MonotoniaVoz : public testing::TestWithParam<const char *> {
protected:
    ParametrosVoz Propia() const {
        for (const HablanteIBM &h : HablantesIBM())
            if (h.nombre == std::string_view(GetParam())) return ConSusValores(h);
        return {};
    }

    MedidaVoz Medida(const ParametrosVoz &voz, double bajo = 60, double alto = 600, std::size_t largo = 200) {
        const Oido oido = m_motor.Di(Una(voz, std::u16string(kTextos[0].prueba.substr(0, largo))));
        EXPECT_TRUE(oido.fin);
        return Mide(oido.pcm, bajo, alto);
    }

    template <typename Campo>
    std::vector<MedidaVoz> Recorre(Campo ParametrosVoz::*campo, const std::vector<Campo> &valores,
                                   std::size_t largo = 200) {
        std::vector<MedidaVoz> medidas;
        for (const Campo valor : valores) {
            ParametrosVoz voz = Propia();
            voz.*campo = valor;
            medidas.push_back(Medida(voz, 60, 600, largo));
            EXPECT_EQ(medidas.back().topes, 0u) << valor;
        }
        return medidas;
    }

    // Each step of `que` is at least `minimo` (downwards where it is negative).
    static void Crece(const std::vector<MedidaVoz> &medidas, double MedidaVoz::*que, double minimo) {
        for (std::size_t i = 1; i < medidas.size(); i++) {
            const double paso = medidas[i].*que - medidas[i - 1].*que;
            EXPECT_GE(minimo < 0 ? -paso : paso, std::abs(minimo)) << "step " << i << " of " << medidas.size() - 1;
        }
    }

    cTrabajador m_motor{ONDALIS_MOTOR};
};

TEST_P(MonotoniaVoz, SpeedShortens) {
    std::vector<double> duraciones;
    for (const int v : {70, 100, 140, 170, 220, 300, 380, 415, 450}) {
        ParametrosVoz voz = Propia();
        voz.velocidad = v;
        const MedidaVoz m = Medida(voz);
        if (!duraciones.empty()) {
            EXPECT_LT(m.segundos, duraciones.back() * .97) << v;
        }
        duraciones.push_back(m.segundos);
        EXPECT_NEAR(m.tono, voz.tono, voz.tono * .06) << v;
    }
    EXPECT_NEAR(duraciones.front() / duraciones.back(), 450. / 70, .6);
}

TEST_P(MonotoniaVoz, VolumeIsTheGain) {
    const auto medidas = Recorre(&ParametrosVoz::ganancia, {1 / 65., 8 / 65., 16 / 65., 32 / 65., 48 / 65., 1.});
    for (const auto &[i, veces] :
         std::vector<std::pair<std::size_t, double>>{{0, 1}, {1, 8}, {2, 16}, {3, 32}, {4, 48}})
        EXPECT_NEAR(medidas[i].sonoridad, medidas.back().sonoridad + 20 * std::log10(veces / 65), .8) << veces;
}

TEST_P(MonotoniaVoz, PitchIsTheHertzAskedFor) {
    for (const int tono : {40, 60, 100, 160, 250, 350, 422}) {
        ParametrosVoz voz = Propia();
        voz.tono = tono;
        const MedidaVoz m = Medida(voz, tono / 1.6, tono * 1.6);
        EXPECT_NEAR(m.tono, tono, tono * .04 + .8) << tono;
        EXPECT_EQ(m.topes, 0u) << tono;
        EXPECT_NEAR(m.sonoridad, -24.2, 2.5) << tono;
    }
}

TEST_P(MonotoniaVoz, FluctuationSpreadsThePitch) {
    Crece(Recorre(&ParametrosVoz::fluctuacion, {0, 20, 40, 60, 80, 100}), &MedidaVoz::dispersion, .5);
}

TEST_P(MonotoniaVoz, RoughnessTakesRegularityAway) {
    const auto medidas = Recorre(&ParametrosVoz::aspereza, {0, 8, 16, 30, 45, 60, 80, 100}, 400);
    Crece(medidas, &MedidaVoz::armonia, -.05);
    EXPECT_GT(medidas.back().irregular, medidas.front().irregular);
    for (const MedidaVoz &m : medidas) EXPECT_NEAR(m.sonoridad, medidas.front().sonoridad, 1.5);
}

TEST_P(MonotoniaVoz, BreathinessBringsNoiseInTheHighBand) {
    const auto medidas = Recorre(&ParametrosVoz::diafonia, {0, 15, 30, 45, 60, 80, 100});
    Crece(medidas, &MedidaVoz::armonia, -.1);
    Crece(medidas, &MedidaVoz::centro, 5);
    for (const MedidaVoz &m : medidas) EXPECT_NEAR(m.sonoridad, -24.2, 2.5);
}

TEST_P(MonotoniaVoz, ALargerHeadLowersTheFormantsAndNotThePitch) {
    const auto medidas = Recorre(&ParametrosVoz::tamCabeza, {0, 20, 40, 60, 80, 100});
    Crece(medidas, &MedidaVoz::centro, -15);
    for (const MedidaVoz &m : medidas) EXPECT_NEAR(m.tono, Propia().tono, Propia().tono * .05);
    // Two fifths of an octave from one fifth of the range to the third, seen best on a low voice's many harmonics.
    const auto grave = [this](int cabeza) {
        ParametrosVoz voz = Propia();
        voz.tono = 90, voz.fluctuacion = 80, voz.tamCabeza = cabeza;
        return Medida(voz);
    };
    EXPECT_NEAR(std::log2(DesplazamientoDeFormantes(grave(60), grave(20))), .4, .13);
}

INSTANTIATE_TEST_SUITE_P(Voces, MonotoniaVoz, testing::Values("Carlos", "Pilar", "Pepe"),
                         [](const auto &caso) { return std::string(caso.param); });

}  // namespace
}  // namespace ondalis
