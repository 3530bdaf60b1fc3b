#include "worker/Calibracion.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ondalis {

namespace {

constexpr std::size_t kPuntos = 10;
constexpr std::array<double, kPuntos> kNominal{85, 100, 130, 175, 220, 260, 300, 350, 400, 449};

// Milliseconds that a word takes, and each letter and pause of its own; and periods of the voice's pitch, as the
// engine ends no sound within one.
struct Duracion {
    double palabra, letra, coma, punto, periodos;
};

struct Medida {
    std::string_view lengua;
    RasgosTexto comun;  // of one word of common text
    std::array<Duracion, kPuntos> duraciones;
};

// Measured with eSpeak NG 1.51 and fitted by least squares: groups of sentences of texts from dialogue to law (Spanish:
// fifteen texts of 3.3 to 7 letters a word; the others four), said by the five presets of each language. What is
// left over a text is 1 % in Spanish and Italian (root mean square), 1 to 2.5 % in German and English, 2 to 3.5 % in
// French. From 450 on the engine passes its sound through libsonic in a way that breaks pauses: 449 is its end, and
// the rest is ours. Its slowest, 80, is faster than the few above it: 85 is its beginning.
constexpr std::array kMedidas{
    Medida{"es",
           {1, 1, 4.7, .07, .07},
           {{{22.1, 113.33, 709, 1425, 0.63},
             {15.0, 97.58, 572, 1160, 0.63},
             {4.7, 77.10, 401, 808, 0.61},
             {-3.2, 60.78, 265, 502, 0.62},
             {-6.9, 51.06, 186, 323, 0.60},
             {-11.3, 46.78, 126, 210, 0.64},
             {-10.9, 43.31, 92, 134, 0.59},
             {-11.0, 39.98, 39, 48, 0.61},
             {-6.6, 35.37, 21, 24, 0.61},
             {-1.6, 31.06, 17, 18, 0.63}}}},
    Medida{"en-US",
           {1, 1, 4.4, .06, .07},
           {{{68.1, 101.22, 756, 1317, 0.43},
             {54.0, 87.73, 607, 1071, 0.46},
             {32.1, 70.27, 421, 754, 0.46},
             {15.7, 55.16, 268, 502, 0.47},
             {4.0, 46.52, 184, 362, 0.45},
             {-2.5, 41.85, 126, 269, 0.47},
             {-9.2, 38.44, 73, 216, 0.45},
             {-11.3, 34.72, 9, 137, 0.47},
             {-13.0, 31.09, 3, 124, 0.43},
             {-10.5, 27.26, 14, 121, 0.48}}}},
    Medida{"en",
           {1, 1, 4.4, .06, .07},
           {{{58.6, 102.82, 584, 1347, 0.48},
             {46.4, 88.98, 463, 1105, 0.47},
             {30.1, 70.81, 311, 765, 0.48},
             {16.9, 55.02, 194, 503, 0.44},
             {7.7, 46.06, 121, 347, 0.45},
             {0.2, 40.87, 86, 263, 0.49},
             {-3.7, 37.01, 40, 198, 0.46},
             {-10.1, 33.62, 0, 144, 0.44},
             {-11.3, 29.82, 0, 126, 0.44},
             {-8.4, 25.98, 0, 127, 0.45}}}},
    Medida{"fr",
           {1, 1, 4.6, .07, .07},
           {{{46.4, 87.87, 291, 1916, 0.48},
             {33.6, 74.97, 235, 1610, 0.48},
             {15.6, 58.30, 162, 1202, 0.45},
             {4.3, 44.25, 97, 856, 0.47},
             {-4.8, 36.87, 54, 652, 0.47},
             {-8.1, 32.58, 19, 519, 0.44},
             {-12.2, 29.88, 0, 418, 0.52},
             {-18.7, 27.97, 0, 306, 0.45},
             {-17.1, 25.52, 0, 237, 0.45},
             {-13.6, 22.94, 0, 201, 0.43}}}},
    Medida{"de",
           {1, 1, 5.2, .08, .07},
           {{{131.0, 85.80, 368, 1474, 0.57},
             {102.4, 74.90, 313, 1218, 0.62},
             {62.6, 60.44, 242, 886, 0.63},
             {32.5, 48.07, 176, 606, 0.63},
             {15.8, 40.85, 126, 422, 0.62},
             {4.9, 36.99, 101, 326, 0.61},
             {-2.8, 34.16, 86, 232, 0.57},
             {-7.9, 31.23, 55, 131, 0.58},
             {-6.8, 27.56, 37, 91, 0.56},
             {-7.6, 24.45, 42, 71, 0.61}}}},
    Medida{"it",
           {1, 1, 4.9, .07, .07},
           {{{55.9, 105.90, 792, 1142, 0.65},
             {41.0, 91.87, 660, 925, 0.65},
             {15.2, 74.77, 478, 653, 0.67},
             {-2.5, 60.05, 317, 444, 0.62},
             {-8.3, 50.98, 223, 304, 0.65},
             {-14.6, 46.53, 147, 224, 0.66},
             {-20.3, 43.29, 108, 180, 0.66},
             {-21.6, 39.71, 45, 106, 0.59},
             {-14.2, 35.36, 11, 57, 0.64},
             {-5.8, 31.11, 0, 28, 0.60}}}},
};
// Words a minute in languages not measured: the mean of common text in those.
constexpr std::array<double, kPuntos> kOtra{93.2, 110.9, 146.3, 198.6, 251.2, 296.8, 341.8, 403.0, 457.2, 505.9};

constexpr double kTonoComun = 106;  // hertz
constexpr double kPrevias = 12;     // words of common text that each text is taken to begin with
// Of the pace of common text. Slower harms nobody; much faster would not be the voice that was chosen.
constexpr double kMaxDeprisa = 1.38, kMaxDespacio = 1.4;

double Milisegundos(const Duracion &d, const RasgosTexto &r, double tono) {
    return d.palabra + d.letra * r.letras + d.coma * r.comas + d.punto * r.puntos + 1000 * d.periodos / tono;
}

RasgosTexto DeUnaPalabra(const RasgosTexto &texto, const RasgosTexto &comun) {
    const RasgosTexto todo = texto + comun * kPrevias;
    return {1, 1, todo.letras / todo.medidas, todo.comas / todo.palabras, todo.puntos / todo.palabras};
}

const Medida *MedidaDe(std::string_view idiomaMotor) {
    std::string_view lengua = idiomaMotor.substr(idiomaMotor.find_last_of('/') + 1);
    const auto busca = [&lengua] {
        return std::find_if(kMedidas.begin(), kMedidas.end(), [lengua](const Medida &m) { return m.lengua == lengua; });
    };
    auto propia = busca();
    if (propia == kMedidas.end()) {
        lengua = lengua.substr(0, lengua.find('-'));
        propia = busca();
    }
    return propia == kMedidas.end() ? nullptr : &*propia;
}

// Words a minute at each nominal speed, ascending.
std::array<double, kPuntos> RealesDe(std::string_view idiomaMotor, const RasgosTexto &texto, double tono) {
    const Medida *medida = MedidaDe(idiomaMotor);
    if (!medida) return kOtra;
    const RasgosTexto rasgos = DeUnaPalabra(texto, medida->comun);
    std::array<double, kPuntos> reales{};
    for (std::size_t i = 0; i < kPuntos; i++) {
        const Duracion &d = medida->duraciones[i];
        const double comun = Milisegundos(d, medida->comun, tono);
        const double propia = Milisegundos(d, rasgos, tono);
        reales[i] = 60000 / std::clamp(propia, comun / kMaxDespacio, comun * kMaxDeprisa);
    }
    return reales;
}

constexpr double kMinEstirado = 0.25, kMaxEstirado = 1.5;

}  // namespace

Ritmo RitmoDe(double palabrasPorMinuto, std::string_view idiomaMotor, const RasgosTexto &texto, double tono) {
    const auto reales = RealesDe(idiomaMotor, texto, tono);
    if (palabrasPorMinuto < reales.front())
        return {static_cast<int>(kNominal.front()), std::max(palabrasPorMinuto / reales.front(), kMinEstirado)};
    if (palabrasPorMinuto >= reales.back())
        return {static_cast<int>(kNominal.back()), std::min(palabrasPorMinuto / reales.back(), kMaxEstirado)};
    const auto i =
        static_cast<std::size_t>(std::upper_bound(reales.begin(), reales.end(), palabrasPorMinuto) - reales.begin());
    const double parte = (palabrasPorMinuto - reales[i - 1]) / (reales[i] - reales[i - 1]);
    return {static_cast<int>(std::lround(kNominal[i - 1] + parte * (kNominal[i] - kNominal[i - 1]))), 1};
}

Ritmo RitmoDe(double palabrasPorMinuto, std::string_view idiomaMotor) {
    return RitmoDe(palabrasPorMinuto, idiomaMotor, {}, kTonoComun);
}

}  // namespace ondalis
