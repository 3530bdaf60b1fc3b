// The comparison of two sounds, on sounds whose syllables' times are known because they are made here.
#include "worker/orden/Alineacion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ondalis {
namespace {

constexpr std::uint32_t kHercios = 16000;

struct Silaba {
    double formante, segundos;  // 0 hertz: a silence
};

// A buzz whose loudest frequency is a syllable's own, fading out before the next one.
std::vector<std::int16_t> Suena(const std::vector<Silaba> &silabas, double tono = 110) {
    std::vector<std::int16_t> x;
    for (const Silaba &s : silabas) {
        const auto n = static_cast<std::size_t>(s.segundos * kHercios);
        for (std::size_t i = 0; i < n; i++) {
            const double parte = static_cast<double>(i) / static_cast<double>(n), t = static_cast<double>(i) / kHercios;
            double valor = 0;
            for (int k = 1; s.formante > 0 && k * tono < 4000; k++)
                valor +=
                    std::sin(2 * std::numbers::pi * k * tono * t) / (1 + std::pow((k * tono - s.formante) / 150, 2));
            x.push_back(static_cast<std::int16_t>(3000 * valor * std::sqrt(std::sin(std::numbers::pi * parte))));
        }
    }
    return x;
}

const std::vector<Silaba> kDicho{{500, .2}, {1500, .15}, {900, .25}, {2400, .2}, {700, .15}, {1900, .3}};
const std::vector<double> kMomentos{0, .35, .6, .95};  // words: two syllables, one, two, one

std::vector<double> Compara(const std::vector<std::int16_t> &sonido) {
    const auto patron = Suena(kDicho);
    return Alinea({patron, kHercios}, kMomentos, {sonido, kHercios});
}

void EsperaCerca(const std::vector<double> &hallados, const std::vector<double> &esperados) {
    ASSERT_EQ(hallados.size(), esperados.size());
    for (std::size_t i = 0; i < hallados.size(); i++) EXPECT_NEAR(hallados[i], esperados[i], .03) << i;
}

TEST(Alineacion, TheSameSoundHasTheSameMoments) { EsperaCerca(Compara(Suena(kDicho)), kMomentos); }

TEST(Alineacion, NoWordBeginsInTheSilenceInFront) {
    auto silabas = kDicho;
    silabas.insert(silabas.begin(), {0, .5});
    EsperaCerca(Compara(Suena(silabas)), {.5, .85, 1.1, 1.45});
}

TEST(Alineacion, BehindAPauseThatThePatternLacksAWordBeginsWhenThePauseEnds) {
    auto silabas = kDicho;
    silabas.insert(silabas.begin() + 3, {0, .4});
    EsperaCerca(Compara(Suena(silabas)), {0, .35, 1.0, 1.35});
}

TEST(Alineacion, AnotherVoiceAtAnotherPaceSaysTheSame) {
    auto silabas = kDicho;
    for (Silaba &s : silabas) s.formante *= 1.12, s.segundos *= 1.4;
    EsperaCerca(Compara(Suena(silabas, 190)), {0, .49, .84, 1.33});
}

TEST(Alineacion, MomentsAscendAndStayInsideWhateverTheSound) {
    const std::vector<std::int16_t> silencio(kHercios, 0);
    auto zumbido = Suena({{1000, 1.3}});
    std::reverse(zumbido.begin(), zumbido.end());
    for (const auto &sonido : {silencio, zumbido}) {
        const auto hallados = Compara(sonido);
        ASSERT_EQ(hallados.size(), kMomentos.size());
        EXPECT_TRUE(std::is_sorted(hallados.begin(), hallados.end()));
        EXPECT_GE(hallados.front(), 0);
        EXPECT_LE(hallados.back(), static_cast<double>(sonido.size()) / kHercios);
    }
}

TEST(Alineacion, WhatCannotBeTheSameTextIsNotCompared) {
    EXPECT_TRUE(Compara({}).empty());
    EXPECT_TRUE(Compara(Suena({{500, .1}})).empty()) << "a twelfth of the pattern";
    EXPECT_TRUE(Compara(Suena({{500, 6}, {900, 6}})).empty()) << "nearly ten times the pattern";
    EXPECT_TRUE(Compara(std::vector<std::int16_t>(kHercios * 121, 100)).empty()) << "beyond two minutes";
}

}  // namespace
}  // namespace ondalis
