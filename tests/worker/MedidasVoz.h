// What an ear would notice of a voice, measured on its samples: pitch and its spread, harmonicity, where the energy
// lies, loudness. Sample rate 22050 throughout.
#pragma once

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <numbers>
#include <span>
#include <vector>

namespace ondalis {

inline constexpr double kHerciosMedida = 22050;

// In place, `v.size()` a power of two; the inverse without its division.
inline void Fourier(std::vector<std::complex<double>> &v, bool inversa = false) {
    const std::size_t n = v.size();
    for (std::size_t i = 1, j = 0; i < n; i++) {
        std::size_t bit = n >> 1;
        for (; j & bit; bit >>= 1) j ^= bit;
        j ^= bit;
        if (i < j) std::swap(v[i], v[j]);
    }
    for (std::size_t largo = 2; largo <= n; largo <<= 1) {
        const auto giro = std::polar(1., (inversa ? 2 : -2) * std::numbers::pi / static_cast<double>(largo));
        for (std::size_t i = 0; i < n; i += largo) {
            std::complex<double> w = 1;
            for (std::size_t k = 0; k < largo / 2; k++, w *= giro) {
                const auto a = v[i + k], b = v[i + k + largo / 2] * w;
                v[i + k] = a + b, v[i + k + largo / 2] = a - b;
            }
        }
    }
}

struct MedidaVoz {
    double tono = 0;        // hertz, median of the voiced frames
    double dispersion = 0;  // semitones between the tenth and the ninetieth part of them
    double irregular = 0;   // semitones from one voiced frame to the next, mean
    double armonia = 0;     // decibels of what repeats against what doesn't
    double centro = 0;      // hertz, centre of the energy
    double agudo = 0;       // decibels of what lies over 4 kHz against all
    double sonoridad = 0;   // decibels against the full scale, weighted as the ear does
    double segundos = 0;
    std::size_t topes = 0;         // samples at the limit
    std::vector<double> espectro;  // decibels in bands of a twelfth of an octave from 400 to 6800 Hz
};

// Pitch is looked for between `bajo` and `alto` hertz.
inline MedidaVoz Mide(std::span<const std::int16_t> pcm, double bajo = 60, double alto = 600) {
    constexpr std::size_t n = 2048, ventana = 1024, paso = 661;
    const auto masCorto = static_cast<std::size_t>(kHerciosMedida / alto);
    const auto masLargo = std::min<std::size_t>(static_cast<std::size_t>(kHerciosMedida / bajo) + 2, n - ventana);
    MedidaVoz m;
    m.segundos = static_cast<double>(pcm.size()) / kHerciosMedida;
    double fuerte = 0;  // squares
    for (const std::int16_t x : pcm) {
        m.topes += x > 32700 || x < -32700;
        fuerte += static_cast<double>(x) * x;
    }
    fuerte /= static_cast<double>(std::max<std::size_t>(pcm.size(), 1));
    std::vector<double> potencia(n / 2, 0), tonos;
    double parecidos = 0, saltos = 0, cuentaSaltos = 0;
    std::size_t cuadros = 0;
    double anterior = 0;
    std::vector<std::complex<double>> a(n), b(n);
    for (std::size_t i = 0; i + ventana + masLargo < pcm.size(); i += paso) {
        double energia = 0;
        for (std::size_t k = 0; k < ventana; k++) energia += static_cast<double>(pcm[i + k]) * pcm[i + k];
        if (energia / ventana < fuerte * .02) {
            anterior = 0;
            continue;
        }
        cuadros++;
        std::fill(a.begin(), a.end(), 0), std::fill(b.begin(), b.end(), 0);
        for (std::size_t k = 0; k < ventana; k++)
            b[k] = pcm[i + k] * (.5 - .5 * std::cos(2 * std::numbers::pi * static_cast<double>(k) / ventana));
        Fourier(b);
        for (std::size_t k = 0; k < n / 2; k++) potencia[k] += std::norm(b[k]);
        for (std::size_t k = 0; k < ventana; k++) a[k] = pcm[i + k];
        for (std::size_t k = 0; k < n; k++) b[k] = k < ventana + masLargo ? pcm[i + k] : 0.;
        Fourier(a), Fourier(b);
        for (std::size_t k = 0; k < n; k++) a[k] = std::conj(a[k]) * b[k];
        Fourier(a, true);
        std::vector<double> r(masLargo, 0);
        double propia = energia, mejor = 0;
        for (std::size_t d = 0; d < masLargo; d++) {
            r[d] = a[d].real() / n / std::sqrt(energia * propia + 1);
            const double entra = pcm[i + ventana + d], sale = pcm[i + d];
            propia += entra * entra - sale * sale;
            if (d >= masCorto) mejor = std::max(mejor, r[d]);
        }
        parecidos += std::clamp(mejor, 0., .9999);
        if (mejor < .6) {
            anterior = 0;
            continue;
        }
        for (std::size_t d = masCorto + 1; d + 1 < masLargo; d++) {
            if (r[d] < .93 * mejor || r[d] < r[d - 1] || r[d] < r[d + 1]) continue;
            const double curva = r[d - 1] - 2 * r[d] + r[d + 1];
            const double f =
                kHerciosMedida / (static_cast<double>(d) + (curva < 0 ? (r[d - 1] - r[d + 1]) / (2 * curva) : 0));
            if (anterior > 0 && std::abs(std::log2(f / anterior)) < .5)
                saltos += 12 * std::abs(std::log2(f / anterior)), cuentaSaltos++;
            tonos.push_back(anterior = f);
            break;
        }
    }
    if (cuadros == 0) return m;
    std::sort(tonos.begin(), tonos.end());
    if (!tonos.empty()) {
        m.tono = tonos[tonos.size() / 2];
        m.dispersion = 12 * std::log2(tonos[tonos.size() * 9 / 10] / tonos[tonos.size() / 10]);
    }
    m.irregular = cuentaSaltos > 0 ? saltos / cuentaSaltos : 0;
    const double parecido = parecidos / static_cast<double>(cuadros);
    m.armonia = 10 * std::log10(parecido / (1 - parecido));
    double todo = 0, pesado = 0, alta = 0, oido = 0;
    std::vector<double> bandas(50, 0);
    for (std::size_t k = 1; k < n / 2; k++) {
        const double f = static_cast<double>(k) * kHerciosMedida / n, q = f * f;
        const double curva =
            1.2589 * 12194. * 12194 * q * q /
            ((q + 20.6 * 20.6) * std::sqrt((q + 107.7 * 107.7) * (q + 737.9 * 737.9)) * (q + 12194. * 12194));
        todo += potencia[k], pesado += potencia[k] * f, oido += potencia[k] * curva * curva;
        if (f > 4000) alta += potencia[k];
        // Each bin is shared out over two thirds of an octave, so that single harmonics don't show.
        for (std::size_t z = 0; z < bandas.size(); z++) {
            const double lejos = std::abs(std::log2(f / (400 * std::exp2(static_cast<double>(z) / 12)))) * 1.5;
            if (lejos < 1) bandas[z] += potencia[k] * (.5 + .5 * std::cos(std::numbers::pi * lejos));
        }
    }
    m.centro = pesado / todo;
    m.agudo = 10 * std::log10(alta / todo);
    const double cuadro = ventana * 3 / 8. * n / 2 * static_cast<double>(cuadros);
    m.sonoridad = 10 * std::log10(oido / (cuadro * 32768. * 32768));
    for (const double banda : bandas) m.espectro.push_back(10 * std::log10(banda + 1));
    return m;
}

// How far `b` lies above `a` on the scale of frequencies, as a factor: the shift that makes their spectra most alike.
inline double DesplazamientoDeFormantes(const MedidaVoz &a, const MedidaVoz &b) {
    // The slope, which isn't the formants', is taken away.
    const auto alisado = [](const std::vector<double> &v) {
        std::vector<double> salida(v.size());
        for (std::size_t i = 0; i < v.size(); i++) {
            double suma = 0, n = 0;
            for (std::size_t k = i < 12 ? 0 : i - 12; k < std::min(v.size(), i + 13); k++) suma += v[k], n++;
            salida[i] = v[i] - suma / n;
        }
        return salida;
    };
    const auto x = alisado(a.espectro), y = alisado(b.espectro);
    double mejor = -1e9;
    int donde = 0;
    for (int d = -9; d <= 9; d++) {
        double cruz = 0, xx = 0, yy = 0;
        for (std::size_t i = 9; i + 9 < x.size(); i++) {
            const double p = x[i], q = y[static_cast<std::size_t>(static_cast<int>(i) + d)];
            cruz += p * q, xx += p * p, yy += q * q;
        }
        const double igual = cruz / std::sqrt(xx * yy + 1e-9);
        if (igual > mejor) mejor = igual, donde = d;
    }
    return std::exp2(donde / 12.);
}

}  // namespace ondalis
