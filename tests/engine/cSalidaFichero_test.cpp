#include "engine/cSalidaFichero.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <complex>
#include <numbers>

#include "fakes/CarpetaPropia.h"
#include "fakes/DiscoLleno.h"
#include "fakes/LectorWav.h"

namespace ondalis {
namespace {

using Modo = cFicheroWav::Modo;
using Muestras = std::vector<std::int16_t>;

Muestras Seno(double hercios, int frecuencia, std::size_t n, double amplitud = 16000) {
    Muestras m(n);
    for (std::size_t i = 0; i < n; ++i)
        m[i] = static_cast<std::int16_t>(
            std::lround(amplitud * std::sin(2 * std::numbers::pi * hercios * static_cast<double>(i) / frecuencia)));
    return m;
}

// The level of one frequency in the middle of the sound, as an amplitude, through a window whose side lobes are below
// -90 dB (four-term Blackman-Harris).
double Nivel(const Muestras &m, double hercios, int frecuencia) {
    const std::size_t n = m.size() / 2, desde = m.size() / 4;
    std::complex<double> suma = 0;
    double peso = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const double t = 2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(n);
        const double v = 0.35875 - 0.48829 * std::cos(t) + 0.14128 * std::cos(2 * t) - 0.01168 * std::cos(3 * t);
        suma +=
            v * m[desde + i] * std::polar(1.0, -2 * std::numbers::pi * hercios * static_cast<double>(i) / frecuencia);
        peso += v;
    }
    return (hercios == 0 ? 1 : 2) * std::abs(suma) / peso;
}
double Decibelios(double nivel, double de) { return 20 * std::log10(std::max(nivel, 1e-9) / de); }

class SalidaFichero : public testing::Test {
protected:
    void Di(const Muestras &muestras, std::size_t bloque = 1000) {
        for (std::size_t i = 0; i < muestras.size(); i += bloque) {
            const std::size_t n = std::min(bloque, muestras.size() - i);
            ASSERT_EQ(n, salida.Escribe(muestras.data() + i, n));
        }
        salida.Completa();
    }
    Muestras Cerrado(int *hercios = nullptr) {
        EXPECT_EQ(0, salida.Cierra());
        const auto wav = prueba::LeeWav(carpeta.Lee("a.wav"));
        EXPECT_TRUE(wav);
        if (!wav) return {};
        if (hercios) *hercios = wav->hercios;
        return wav->muestras;
    }
    Muestras Convierte(const Muestras &muestras, int entra, int sale, std::size_t bloque = 1000) {
        EXPECT_EQ(0, salida.Destina(ruta, sale, Modo::Crea));
        salida.Abre(entra);
        Di(muestras, bloque);
        return Cerrado();
    }
    prueba::CarpetaPropia carpeta;
    const std::string ruta = carpeta.Ruta("a.wav");
    cSalidaFichero salida;
};

TEST_F(SalidaFichero, WithoutAFileSamplesAreHeardAndDropped) {
    ASSERT_TRUE(salida.Abre(22050));
    EXPECT_TRUE(salida.Viva());
    Di(Muestras(500, 1));
    EXPECT_EQ(500u, salida.Oidas());
    EXPECT_EQ(0, salida.Cierra());
}

TEST_F(SalidaFichero, EverythingWrittenIsHeardAtOnce) {
    ASSERT_EQ(0, salida.Destina(ruta, 11025, Modo::Crea));
    salida.Abre(22050);
    Di(Muestras(700, 1));
    EXPECT_EQ(700u, salida.Oidas());
    salida.Vacia();
    EXPECT_EQ(0u, salida.Oidas());
    EXPECT_EQ(350u, Cerrado().size());
}

TEST_F(SalidaFichero, TheSameRatePassesSampleForSample) {
    const Muestras seno = Seno(300, 22050, 5000);
    EXPECT_EQ(seno, Convierte(seno, 22050, 22050));
}

TEST_F(SalidaFichero, WithoutARateTheFileHasThatOfTheFirstSpeech) {
    ASSERT_EQ(0, salida.Destina(ruta, 0, Modo::Crea));
    EXPECT_TRUE(prueba::LeeWav(carpeta.Lee("a.wav")));  // it exists from here on
    salida.Abre(16000);
    Di(Muestras(160, 3));
    salida.Abre(8000);
    Di(Muestras(80, 3));
    int hercios = 0;
    EXPECT_EQ(320u, Cerrado(&hercios).size());
    EXPECT_EQ(16000, hercios);
}

TEST_F(SalidaFichero, WithoutARateAddingKeepsThatOfTheFile) {
    Convierte(Muestras(100, 1), 8000, 8000);
    ASSERT_EQ(0, salida.Destina(ruta, 0, Modo::Anade));
    salida.Abre(16000);
    Di(Muestras(160, 1));
    int hercios = 0;
    EXPECT_EQ(180u, Cerrado(&hercios).size());
    EXPECT_EQ(8000, hercios);
}

struct Par {
    int entra, sale;
};
class Tasas : public SalidaFichero, public testing::WithParamInterface<Par> {};

TEST_P(Tasas, TheLengthIsExact) {
    const auto [entra, sale] = GetParam();
    for (const std::size_t n : {0u, 1u, 2u, 7u, 999u, 1000u, 22050u, 100'001u}) {
        const Muestras salidas = Convierte(Muestras(n, 100), entra, sale, 777);
        EXPECT_NEAR(static_cast<double>(n) * sale / entra, static_cast<double>(salidas.size()), 1) << n;
    }
}

TEST_P(Tasas, ManySpeechesDoNotDrift) {
    const auto [entra, sale] = GetParam();
    ASSERT_EQ(0, salida.Destina(ruta, sale, Modo::Crea));
    salida.Abre(entra);
    for (int i = 0; i < 200; ++i) Di(Muestras(333, 100));
    EXPECT_NEAR(200.0 * 333 * sale / entra, static_cast<double>(Cerrado().size()), 1);
}

TEST_P(Tasas, ASineKeepsItsLevelAndHasNoImages) {
    const auto [entra, sale] = GetParam();
    for (const double hercios : {200.0, 1000.0, 3000.0}) {
        const Muestras m = Convierte(Seno(hercios, entra, static_cast<std::size_t>(entra) / 2), entra, sale);
        EXPECT_NEAR(0, Decibelios(Nivel(m, hercios, sale), 16000), 0.1) << hercios;
        for (double otro = 100; otro < sale / 2.0 - 50; otro += 50)
            if (std::abs(otro - hercios) > 40) {
                ASSERT_LT(Decibelios(Nivel(m, otro, sale), 16000), -80) << hercios << " at " << otro;
            }
    }
}

TEST_P(Tasas, AConstantStaysWhatItIsAndSilenceStaysSilence) {
    const auto [entra, sale] = GetParam();
    const Muestras m = Convierte(Muestras(static_cast<std::size_t>(entra), 5000), entra, sale);
    for (std::size_t i = m.size() / 4; i < m.size() * 3 / 4; ++i) ASSERT_NEAR(5000, m[i], 1);
    const Muestras nada = Convierte(Muestras(static_cast<std::size_t>(entra), 0), entra, sale);
    EXPECT_EQ(nada, Muestras(nada.size(), 0));
}

INSTANTIATE_TEST_SUITE_P(Todas, Tasas,
                         testing::Values(Par{22050, 8000}, Par{22050, 11025}, Par{22050, 12000}, Par{22050, 16000},
                                         Par{22050, 24000}, Par{22050, 44100}, Par{22050, 48000}, Par{16000, 11025},
                                         Par{8000, 48000}),
                         [](const auto &info) {
                             return std::to_string(info.param.entra) + "a" + std::to_string(info.param.sale);
                         });

TEST_F(SalidaFichero, WhatTheNarrowerBandCannotHoldDoesNotFoldBack) {
    const Muestras m = Convierte(Seno(7000, 22050, 44100), 22050, 11025);
    double mayor = 0;
    for (std::size_t i = m.size() / 4; i < m.size() * 3 / 4; ++i) mayor = std::max(mayor, std::abs(double(m[i])));
    EXPECT_LT(Decibelios(mayor, 16000), -80);
}

TEST_F(SalidaFichero, ATooLoudSoundSaturates) {
    Muestras cuadrada(22050);
    for (std::size_t i = 0; i < cuadrada.size(); ++i) cuadrada[i] = i / 20 % 2 == 0 ? 32767 : -32768;
    const Muestras m = Convierte(cuadrada, 22050, 48000);
    // An overflow would jump from one extreme to the other inside a half period.
    for (std::size_t i = 60; i + 60 < m.size(); ++i) {
        const std::size_t fase = i * 22050 / 48000 % 20;
        if (fase <= 3 || fase >= 16) continue;
        ASSERT_GT(m[i] * (cuadrada[i * 22050 / 48000] > 0 ? 1 : -1), 20000) << i;
    }
}

TEST_F(SalidaFichero, AStopKeepsWhatIsInTheFile) {
    ASSERT_EQ(0, salida.Destina(ruta, 11025, Modo::Crea));
    salida.Abre(22050);
    const Muestras m(1000, 1);
    salida.Escribe(m.data(), m.size());
    salida.Vacia();
    Di(Muestras(1000, 1));
    EXPECT_EQ(1000u, Cerrado().size());
}

TEST_F(SalidaFichero, AnotherFileBeginsAnew) {
    ASSERT_EQ(0, salida.Destina(ruta, 11025, Modo::Crea));
    salida.Abre(22050);
    const Muestras m(1000, 1);
    salida.Escribe(m.data(), m.size());
    ASSERT_EQ(0, salida.Destina(carpeta.Ruta("b.wav"), 11025, Modo::Crea));
    Di(Muestras(10, 1));
    EXPECT_EQ(0, salida.Cierra());
    EXPECT_EQ(500u, prueba::LeeWav(carpeta.Lee("a.wav"))->muestras.size());
    EXPECT_EQ(5u, prueba::LeeWav(carpeta.Lee("b.wav"))->muestras.size());
}

TEST_F(SalidaFichero, TheFirstFailureIsToldAndTheSpeechGoesOn) {
    ASSERT_EQ(0, salida.Destina(ruta, 22050, Modo::Crea));
    salida.Abre(22050);
    {
        const prueba::DiscoLleno lleno(1000);
        Di(Muestras(5000, 1));
    }
    EXPECT_EQ(EFBIG, salida.Error());
    Di(Muestras(5000, 1));  // a gap would be worse than an end
    EXPECT_EQ(10'000u, salida.Oidas());
    EXPECT_EQ(EFBIG, salida.Cierra());
    EXPECT_EQ(0, salida.Error());
    ASSERT_TRUE(prueba::LeeWav(carpeta.Lee("a.wav")));
    EXPECT_EQ(478u, prueba::LeeWav(carpeta.Lee("a.wav"))->muestras.size());
    ASSERT_EQ(0, salida.Destina(ruta, 22050, Modo::Crea));
    EXPECT_EQ(0, salida.Cierra());
}

TEST_F(SalidaFichero, AFileThatCannotBeOpenedIsToldAndNothingIsWritten) {
    EXPECT_EQ(ENOENT, salida.Destina(carpeta.Ruta("no/a.wav"), 8000, Modo::Crea));
    salida.Abre(8000);
    Di(Muestras(10, 1));
    EXPECT_EQ(0, salida.Cierra());
}

TEST_F(SalidaFichero, ADestinationIsChangedOnlyOnceTheChannelHasSettled) {
    int veces = 0;
    salida.SetAsentador([&] {
        ++veces;
        EXPECT_EQ(0, salida.Error());  // without the lock: the player may have to write first
    });
    ASSERT_EQ(0, salida.Destina(ruta, 8000, Modo::Crea));
    EXPECT_EQ(0, salida.Cierra());
    EXPECT_EQ(2, veces);
    salida.SetAsentador(nullptr);
    EXPECT_EQ(0, salida.Cierra());
}

}  // namespace
}  // namespace ondalis
