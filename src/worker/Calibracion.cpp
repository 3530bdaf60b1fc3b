#include "worker/Calibracion.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ondalis {

namespace {

constexpr std::size_t kPuntos = 10;
constexpr std::array<double, kPuntos> kNominal{80, 100, 130, 175, 220, 260, 300, 350, 400, 449};

struct Medida {
    std::string_view lengua;
    std::array<double, kPuntos> reales;
};

// Measured with eSpeak NG 1.51 on a narrative of about a hundred words in each language, its pauses included. From 450
// on the engine passes its sound through libsonic, which breaks pauses: 449 is its end.
constexpr std::array kMedidas{
    Medida{"es", {90.1, 107.4, 141.6, 189.9, 236.1, 273.0, 303.8, 344.5, 382.4, 418.4}},
    Medida{"en", {106.0, 126.2, 166.8, 226.7, 289.0, 342.1, 397.5, 463.6, 526.4, 577.0}},
    Medida{"fr", {104.2, 124.8, 165.9, 228.3, 292.0, 348.0, 406.5, 478.0, 538.7, 593.6}},
    Medida{"de", {91.9, 109.0, 143.1, 192.6, 244.0, 285.9, 332.3, 391.9, 451.0, 514.2}},
    Medida{"it", {86.7, 102.9, 134.1, 177.9, 219.5, 255.4, 285.8, 330.1, 369.0, 405.8}},
};
// The mean of those stands for languages not measured.
constexpr Medida kOtra{"", {95.8, 114.1, 150.3, 203.1, 256.1, 300.9, 345.2, 401.6, 453.5, 501.8}};

constexpr double kMinEstirado = 0.25;

}  // namespace

Ritmo RitmoDe(double palabrasPorMinuto, std::string_view idiomaMotor) {
    std::string_view lengua = idiomaMotor.substr(idiomaMotor.find_last_of('/') + 1);
    lengua = lengua.substr(0, lengua.find('-'));
    const auto propia =
        std::find_if(kMedidas.begin(), kMedidas.end(), [lengua](const Medida &m) { return m.lengua == lengua; });
    const auto &reales = (propia == kMedidas.end() ? kOtra : *propia).reales;
    if (palabrasPorMinuto < reales.front())
        return {static_cast<int>(kNominal.front()), std::max(palabrasPorMinuto / reales.front(), kMinEstirado)};
    if (palabrasPorMinuto >= reales.back()) return {static_cast<int>(kNominal.back()), 1};
    const auto i =
        static_cast<std::size_t>(std::upper_bound(reales.begin(), reales.end(), palabrasPorMinuto) - reales.begin());
    const double parte = (palabrasPorMinuto - reales[i - 1]) / (reales[i] - reales[i - 1]);
    return {static_cast<int>(std::lround(kNominal[i - 1] + parte * (kNominal[i] - kNominal[i - 1]))), 1};
}

}  // namespace ondalis
