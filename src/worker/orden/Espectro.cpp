#include "worker/orden/Espectro.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace ondalis {

namespace {

constexpr double kMsVentana = 25;
constexpr std::size_t kBandas = 22, kCepstros = 12;
constexpr double kHzBajo = 80, kHzAlto = 3800;
constexpr double kSilencio = 1e-2;  // of the loud frames' power
constexpr double kSuelo = 1e-4;     // of the loudest band's power: below it all is silence alike

double AMel(double hz) { return 1127 * std::log(1 + hz / 700); }

// In place; the size is a power of two.
void Fourier(std::vector<std::complex<float>> &x) {
    const std::size_t n = x.size();
    for (std::size_t i = 1, j = 0; i < n; i++) {
        std::size_t bit = n >> 1;
        for (; j & bit; bit >>= 1) j ^= bit;
        j ^= bit;
        if (i < j) std::swap(x[i], x[j]);
    }
    for (std::size_t largo = 2; largo <= n; largo <<= 1) {
        const float angulo = -2 * std::numbers::pi_v<float> / static_cast<float>(largo);
        const std::complex<float> paso(std::cos(angulo), std::sin(angulo));
        for (std::size_t i = 0; i < n; i += largo) {
            std::complex<float> giro(1);
            for (std::size_t k = 0; k < largo / 2; k++, giro *= paso) {
                const auto a = x[i + k], b = x[i + k + largo / 2] * giro;
                x[i + k] = a + b;
                x[i + k + largo / 2] = a - b;
            }
        }
    }
}

class Analizador {
public:
    Analizador(std::uint32_t hercios, double talla)
        : m_ventana(static_cast<std::size_t>(hercios * kMsVentana / 1000)), m_hercios(hercios * talla) {
        std::size_t n = 1;
        while (n < m_ventana.size()) n <<= 1;
        m_x.resize(n);
        for (std::size_t i = 0; i < m_ventana.size(); i++)
            m_ventana[i] = static_cast<float>(.5 - .5 * std::cos(2 * std::numbers::pi * static_cast<double>(i) /
                                                                 static_cast<double>(m_ventana.size())));
    }
    // Power of each band around sample `centro`.
    std::array<double, kBandas> Bandas(std::span<const std::int16_t> sonido, std::size_t centro) {
        const auto medio = static_cast<std::ptrdiff_t>(m_ventana.size() / 2);
        for (std::size_t i = 0; i < m_x.size(); i++) {
            const auto k = static_cast<std::ptrdiff_t>(centro + i) - medio;
            const bool dentro = i < m_ventana.size() && k > 0 && k < static_cast<std::ptrdiff_t>(sonido.size());
            // High frequencies, which consonants differ in, weigh more.
            const auto j = static_cast<std::size_t>(k);
            m_x[i] =
                dentro ? (static_cast<float>(sonido[j]) - .95F * static_cast<float>(sonido[j - 1])) * m_ventana[i] : 0;
        }
        Fourier(m_x);
        std::array<double, kBandas> bandas{};
        const double ancho = (AMel(kHzAlto) - AMel(kHzBajo)) / (kBandas + 1);
        const double porRaya = m_hercios / static_cast<double>(m_x.size());
        for (std::size_t raya = 1; raya < m_x.size() / 2; raya++) {
            const double donde = (AMel(static_cast<double>(raya) * porRaya) - AMel(kHzBajo)) / ancho;
            if (donde <= 0 || donde >= kBandas + 1) continue;
            const auto baja = static_cast<std::size_t>(donde);
            const double parte = donde - static_cast<double>(baja), potencia = std::norm(m_x[raya]);
            if (baja >= 1) bandas[baja - 1] += potencia * (1 - parte);
            if (baja < kBandas) bandas[baja] += potencia * parte;
        }
        return bandas;
    }

private:
    std::vector<float> m_ventana;
    double m_hercios;
    std::vector<std::complex<float>> m_x;
};

std::array<std::array<double, kBandas>, kCepstros> Cosenos() {
    std::array<std::array<double, kBandas>, kCepstros> cosenos{};
    for (std::size_t c = 0; c < kCepstros; c++)
        for (std::size_t b = 0; b < kBandas; b++)
            cosenos[c][b] =
                std::cos(std::numbers::pi * static_cast<double>(c + 1) * (static_cast<double>(b) + .5) / kBandas);
    return cosenos;
}

void Iguala(std::vector<std::array<float, kRasgos>> &tramas, std::size_t rasgo) {
    double suma = 0, cuadrados = 0;
    for (const auto &t : tramas) suma += t[rasgo], cuadrados += t[rasgo] * t[rasgo];
    const double n = static_cast<double>(tramas.size()), media = suma / n;
    const double desvio = std::sqrt(std::max(cuadrados / n - media * media, 1e-6));
    for (auto &t : tramas) t[rasgo] = static_cast<float>((t[rasgo] - media) / desvio);
}

// Means of nought and deviations of one, whatever the voice, the volume and the channel.
void Pule(std::vector<std::array<float, kRasgos>> &tramas) {
    constexpr std::size_t kPropios = kCepstros + 1;
    static_assert(kRasgos == 2 * kPropios);
    const std::size_t n = tramas.size();
    for (std::size_t i = 0; i < n; i++)
        for (std::size_t r = 0; r < kPropios; r++)
            tramas[i][kPropios + r] = tramas[std::min(i + 2, n - 1)][r] - tramas[i < 2 ? 0 : i - 2][r];
    for (std::size_t r = 0; r < kRasgos; r++) Iguala(tramas, r);
}

}  // namespace

Espectro HazEspectro(std::span<const std::int16_t> sonido, std::uint32_t hercios, double talla) {
    Espectro e;
    if (sonido.empty() || hercios < 8000) return e;
    Analizador analizador(hercios, talla);
    std::vector<std::array<double, kBandas>> bandas;
    std::vector<double> potencia;
    const double paso = hercios * kMsTramaEspectro / 1000;
    for (double centro = 0; centro < static_cast<double>(sonido.size()); centro += paso) {
        bandas.push_back(analizador.Bandas(sonido, static_cast<std::size_t>(centro)));
        double suma = 0;
        for (const double b : bandas.back()) suma += b;
        potencia.push_back(suma);
    }
    std::vector<double> orden = potencia;
    const auto alta = orden.begin() + static_cast<std::ptrdiff_t>(orden.size() * 9 / 10);
    std::nth_element(orden.begin(), alta, orden.end());
    const double suelo = std::max(*alta * kSuelo, 1.0);
    e.tramas.resize(bandas.size());
    const auto cosenos = Cosenos();
    for (std::size_t i = 0; i < bandas.size(); i++) {
        std::array<double, kBandas> nivel{};
        for (std::size_t b = 0; b < kBandas; b++) nivel[b] = std::log(bandas[i][b] + suelo / kBandas);
        for (std::size_t c = 1; c <= kCepstros; c++) {
            double suma = 0;
            for (std::size_t b = 0; b < kBandas; b++) suma += nivel[b] * cosenos[c - 1][b];
            e.tramas[i][c - 1] = static_cast<float>(suma);
        }
        e.tramas[i][kCepstros] = static_cast<float>(std::log(potencia[i] + suelo));
        e.callada.push_back(potencia[i] < *alta * kSilencio);
    }
    Pule(e.tramas);
    return e;
}

}  // namespace ondalis
