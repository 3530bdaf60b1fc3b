#include "worker/orden/Onda.h"

#include <gtest/gtest.h>

#include <random>

namespace ondalis {
namespace {

void Pon(std::vector<std::uint8_t> &b, std::uint32_t valor, unsigned n) {
    for (unsigned i = 0; i < n; i++) b.push_back(static_cast<std::uint8_t>(valor >> (8 * i)));
}
void Pon(std::vector<std::uint8_t> &b, const char *marca) {
    for (int i = 0; i < 4; i++) b.push_back(static_cast<std::uint8_t>(marca[i]));
}

std::vector<std::uint8_t> Wav(std::uint32_t hercios, std::uint32_t canales, std::uint32_t bits, std::uint32_t largo,
                              const std::vector<int> &muestras, bool conLista = false) {
    std::vector<std::uint8_t> b;
    Pon(b, "RIFF"), Pon(b, 0xFFFFFFFF, 4), Pon(b, "WAVE"), Pon(b, "fmt "), Pon(b, 16, 4), Pon(b, 1, 2);
    Pon(b, canales, 2), Pon(b, hercios, 4), Pon(b, hercios * 2, 4), Pon(b, 2, 2), Pon(b, bits, 2);
    if (conLista) Pon(b, "LIST"), Pon(b, 3, 4), Pon(b, 0, 4);  // odd: one more byte
    Pon(b, "data"), Pon(b, largo, 4);
    for (const int m : muestras) Pon(b, static_cast<std::uint32_t>(m), 2);
    return b;
}
using Muestras = std::vector<std::int16_t>;

TEST(Onda, ALengthThatWasWrittenBeforeTheSoundLastsToTheEndOfTheBytes) {
    for (const std::uint32_t largo : {0u, 6u, 0x7FFFF000u, 0x7FFFEFDCu, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        const Onda onda = LeeWav(Wav(22050, 1, 16, largo, {1, -2, 3}));
        EXPECT_EQ(onda.fallo, "");
        EXPECT_EQ(onda.hercios, 22050u);
        EXPECT_EQ(onda.muestras, (Muestras{1, -2, 3}));
    }
    EXPECT_EQ(LeeWav(Wav(22050, 1, 16, 4, {1, -2, 3})).muestras, (Muestras{1, -2}));
}

TEST(Onda, AFileThatEndsBeforeItsDataDoesIsRefused) {
    const std::vector<int> segundo(22050, 7);
    const auto entero = Wav(22050, 1, 16, 44100, segundo);
    EXPECT_EQ(LeeWav(entero).muestras.size(), 22050u);
    for (const std::size_t falta : {std::size_t{46}, std::size_t{1000}, std::size_t{44000}, std::size_t{44100}}) {
        const Onda onda = LeeWav(std::span(entero).first(entero.size() - falta));
        EXPECT_EQ(onda.fallo, "ha dado un WAV cortado") << falta;
        EXPECT_TRUE(onda.muestras.empty()) << falta;
    }
}

TEST(Onda, ALengthThatCountsTheHeaderAlongIsForgiven) {
    const Onda onda = LeeWav(Wav(22050, 1, 16, 44 + 6, {1, -2, 3}));
    EXPECT_EQ(onda.fallo, "");
    EXPECT_EQ(onda.muestras, (Muestras{1, -2, 3}));
}

TEST(Onda, OtherChunksAreSkippedAndStereoIsMixedDown) {
    EXPECT_EQ(LeeWav(Wav(8000, 1, 16, 0, {5, 6}, true)).muestras, (Muestras{5, 6}));
    EXPECT_EQ(LeeWav(Wav(48000, 2, 16, 0, {100, 200, -100, -300})).muestras, (Muestras{150, -200}));
    EXPECT_EQ(LeeCruda(std::vector<std::uint8_t>{1, 0, 3, 0, 9}, 16000, 2).muestras, (Muestras{2}));
}

TEST(Onda, NoHeaderMakesMoreSoundThanTheBytesHold) {
    std::mt19937 azar(1);
    const auto buena = Wav(22050, 1, 16, 400, std::vector<int>(200, 9), true);
    int sonoras = 0;
    for (int vuelta = 0; vuelta < 50'000; vuelta++) {
        auto bytes = buena;
        for (int cambios = 0; cambios < 3; cambios++)
            bytes[azar() % 60] = static_cast<std::uint8_t>(azar() % 3 == 0 ? 0xFF : azar());
        bytes.resize(azar() % 4 == 0 ? azar() % bytes.size() : bytes.size());
        bytes.shrink_to_fit();
        const Onda onda = LeeWav(bytes);
        sonoras += !onda.muestras.empty();
        ASSERT_LE(onda.muestras.size() * 2, bytes.size());
        ASSERT_TRUE(onda.fallo.empty() || onda.muestras.empty());
    }
    EXPECT_GT(sonoras, 1000);
}

TEST(Onda, WhatIsNoWavOfOursIsRefused) {
    EXPECT_NE(LeeWav({}).fallo, "");
    EXPECT_NE(LeeWav(std::vector<std::uint8_t>(100, 'x')).fallo, "");
    EXPECT_NE(LeeWav(Wav(22050, 1, 8, 0, {1})).fallo, "");
    EXPECT_NE(LeeWav(Wav(22050, 9, 16, 0, {1})).fallo, "");
    EXPECT_NE(LeeWav(Wav(96000, 1, 16, 0, {1})).fallo, "");
    const auto buena = Wav(22050, 1, 16, 0, {1, 2});
    for (std::size_t n = 0; n < 44; n++) EXPECT_TRUE(LeeWav(std::span(buena).first(n)).muestras.empty()) << n;
}

}  // namespace
}  // namespace ondalis
