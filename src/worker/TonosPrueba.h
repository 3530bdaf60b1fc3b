// How the test engine says words: a tone for each, so that a test reads from recorded sound which word was heard.
// Header only, for the engine and for tests.
//
// A word is a run of characters between blanks that holds a letter, a digit or a spoken symbol; in a formant voice a
// sign of the text filter standing alone counts too. Its number k is the first number in it modulo 200 ("p17", "17,"
// and "x217" are 17), or 200 to 219 by hash for words without one. It lasts 200 ms at 170 words a minute, inversely to
// the speed: four fifths of it a sine of 300 + 30 k hertz with raised-cosine edges of 3 ms and amplitude 16000 times
// the gain, the last fifth silence. Words follow each other without a gap.
//
// Words that misbehave, as they are reached: "MATA" aborts the program, "CUELGA" hangs it for ever, "BASURA" writes
// garbage to the connection. If the environment's ONDALIS_TONO_UNAVEZ names a file, only while that file exists, and it
// is deleted first: once. In a voice "mudo" the engine refuses (an Error), as for an unknown voice.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <string_view>
#include <vector>

namespace ondalis::tonos {

inline constexpr int kHercios = 22050;
inline constexpr int kTonos = 220;         // values of k
inline constexpr int kTonosNumero = 200;   // of them for numbers
inline constexpr double kMsPalabra = 200;  // at kVelocidad
inline constexpr double kVelocidad = 170;  // words a minute
inline constexpr double kParteSonora = 0.8;
inline constexpr double kMsBorde = 3;
inline constexpr double kAmplitud = 16000;

inline constexpr double Frecuencia(int k) { return 300 + 30 * k; }

// k of the word `palabra` (any UTF-16 text without blanks).
inline int NumeroDe(std::u16string_view palabra) {
    std::uint32_t numero = 0;
    bool hay = false;
    for (const char16_t c : palabra) {
        const bool cifra = c >= u'0' && c <= u'9';
        if (!cifra && hay) break;
        if (cifra) numero = (numero * 10 + static_cast<std::uint32_t>(c - u'0')) % kTonosNumero, hay = true;
    }
    if (hay) return static_cast<int>(numero);
    std::uint32_t hash = 2166136261u;  // FNV-1a over the units
    for (const char16_t c : palabra) hash = (hash ^ c) * 16777619u;
    return kTonosNumero + static_cast<int>(hash % (kTonos - kTonosNumero));
}

// Samples of one word at `velocidad` words a minute.
inline std::size_t MuestrasDePalabra(double velocidad) {
    return static_cast<std::size_t>(std::llround(kMsPalabra * kHercios / 1000 * kVelocidad / velocidad));
}

// The sound of word number `k`.
inline std::vector<std::int16_t> Sonido(int k, double velocidad, double ganancia) {
    std::vector<std::int16_t> muestras(MuestrasDePalabra(velocidad), 0);
    const auto n = static_cast<std::size_t>(static_cast<double>(muestras.size()) * kParteSonora);
    const double borde = kMsBorde * kHercios / 1000;
    for (std::size_t i = 0; i < n; i++) {
        const double dentro = std::min(static_cast<double>(i), static_cast<double>(n - 1 - i)) / borde;
        const double curva = dentro >= 1 ? 1 : .5 - .5 * std::cos(std::numbers::pi * dentro);
        const double fase = 2 * std::numbers::pi * Frecuencia(k) * static_cast<double>(i) / kHercios;
        muestras[i] = static_cast<std::int16_t>(std::lround(kAmplitud * ganancia * curva * std::sin(fase)));
    }
    return muestras;
}

// Which k sounds in `n` samples at `hercios` (a stretch inside one word, 25 ms or more), -1 for silence. Measures the
// energy at each tone (Goertzel) and takes the strongest.
inline int NumeroOido(const std::int16_t *muestras, std::size_t n, int hercios = kHercios) {
    double total = 0;
    for (std::size_t i = 0; i < n; i++) total += static_cast<double>(muestras[i]) * muestras[i];
    if (n == 0 || total / static_cast<double>(n) < 100) return -1;
    int mejor = -1;
    double maximo = 0;
    for (int k = 0; k < kTonos; k++) {
        const double coeficiente = 2 * std::cos(2 * std::numbers::pi * Frecuencia(k) / hercios);
        double s1 = 0, s2 = 0;
        for (std::size_t i = 0; i < n; i++) {
            const double s0 = muestras[i] + coeficiente * s1 - s2;
            s2 = s1, s1 = s0;
        }
        const double energia = s1 * s1 + s2 * s2 - coeficiente * s1 * s2;
        if (energia > maximo) maximo = energia, mejor = k;
    }
    return mejor;
}

}  // namespace ondalis::tonos
