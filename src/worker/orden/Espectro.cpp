#include "worker/orden/Espectro.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ondalis {

namespace {

constexpr double kMsVentana = 17;
constexpr std::size_t kBandas = 22;
constexpr double kHzBajo = 80, kHzAlto = 3800;
// Of the loud frames' power.
constexpr float kCallada = 1e-2F, kMuda = 1e-3F;
constexpr float kSuelo = 1e-4F;           // below it all is silence alike
constexpr std::size_t kTramasCambio = 2;  // to each side, over which a feature's change is taken

using Bandas = std::array<float, kBandas>;

double AMel(double hz) { return 1127 * std::log(1 + hz / 700); }

class cFourier {
public:
    explicit cFourier(std::size_t n) : m_coseno(n / 2), m_seno(n / 2), m_sitio(n) {
        for (std::size_t i = 0; i < n / 2; i++) {
            const double angulo = 2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(n);
            m_coseno[i] = static_cast<float>(std::cos(angulo));
            m_seno[i] = static_cast<float>(-std::sin(angulo));
        }
        for (std::size_t i = 1, j = 0; i < n; i++) {
            std::size_t bit = n >> 1;
            for (; j & bit; bit >>= 1) j ^= bit;
            m_sitio[i] = j ^= bit;
        }
    }
    // In place: real parts and imaginary parts, each as many as were told, a power of two.
    void Pasa(std::vector<float> &x, std::vector<float> &y) const {
        const std::size_t n = m_sitio.size();
        for (std::size_t i = 1; i < n; i++)
            if (i < m_sitio[i]) std::swap(x[i], x[m_sitio[i]]), std::swap(y[i], y[m_sitio[i]]);
        for (std::size_t medio = 1; medio < n; medio *= 2)
            for (std::size_t i = 0; i < n; i += 2 * medio)
                for (std::size_t k = i; k < i + medio; k++) {
                    const std::size_t giro = (k - i) * (n / 2 / medio);
                    const float re = x[k + medio] * m_coseno[giro] - y[k + medio] * m_seno[giro];
                    const float im = x[k + medio] * m_seno[giro] + y[k + medio] * m_coseno[giro];
                    x[k + medio] = x[k] - re, y[k + medio] = y[k] - im;
                    x[k] += re, y[k] += im;
                }
    }

private:
    std::vector<float> m_coseno, m_seno;
    std::vector<std::size_t> m_sitio;
};

// The power of the loud frames: nine in ten are below it.
float Alta(std::vector<float> potencia) {
    const auto alta = potencia.begin() + static_cast<std::ptrdiff_t>(potencia.size() * 9 / 10);
    std::nth_element(potencia.begin(), alta, potencia.end());
    return *alta;
}

const std::array<Bandas, kCepstros> &Cosenos() {
    static const auto kCosenos = [] {
        std::array<Bandas, kCepstros> cosenos{};
        for (std::size_t c = 0; c < kCepstros; c++)
            for (std::size_t b = 0; b < kBandas; b++)
                cosenos[c][b] = static_cast<float>(
                    std::cos(std::numbers::pi * static_cast<double>(c + 1) * (static_cast<double>(b) + .5) / kBandas));
        return cosenos;
    }();
    return kCosenos;
}

// How the changes are, and means of nought and deviations of one, whatever the voice, the volume and the channel.
void Pule(std::vector<std::array<float, kRasgos>> &tramas) {
    constexpr std::size_t kPropios = kCepstros + 1;
    const std::size_t n = tramas.size();
    for (std::size_t i = 0; i < n; i++)
        for (std::size_t r = 0; r < kPropios; r++)
            tramas[i][kPropios + r] =
                tramas[std::min(i + kTramasCambio, n - 1)][r] - tramas[i < kTramasCambio ? 0 : i - kTramasCambio][r];
    for (std::size_t r = 0; r < kRasgos; r++) {
        double suma = 0, cuadrados = 0;
        for (const auto &t : tramas) suma += t[r], cuadrados += t[r] * t[r];
        const double media = suma / static_cast<double>(n);
        const double desvio = std::sqrt(std::max(cuadrados / static_cast<double>(n) - media * media, 1e-6));
        for (auto &t : tramas) t[r] = static_cast<float>((t[r] - media) / desvio);
    }
}

}  // namespace

cSonograma::cSonograma(std::span<const std::int16_t> sonido, std::uint32_t hercios) {
    if (sonido.empty() || hercios < 8000) return;
    std::vector<float> ventana(static_cast<std::size_t>(hercios * kMsVentana / 1000));
    for (std::size_t i = 0; i < ventana.size(); i++)
        ventana[i] = static_cast<float>(
            .5 - .5 * std::cos(2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(ventana.size())));
    std::size_t n = 1;
    while (n < ventana.size()) n <<= 1;
    const double paso = hercios * kMsTramaEspectro / 1000;
    const auto tramas = static_cast<std::size_t>(std::ceil(static_cast<double>(sonido.size()) / paso));
    m_hzRaya = static_cast<double>(hercios) / static_cast<double>(n);
    m_rayas = std::min(n / 2, static_cast<std::size_t>(kHzAlto / kTallaMinima / m_hzRaya) + 1);
    m_rayaje.resize(tramas * m_rayas);
    m_total.resize(tramas);
    std::vector<float> x(n), y(n);
    const auto llena = [&](std::vector<float> &z, std::size_t trama) {
        std::fill(z.begin(), z.end(), 0.0F);
        if (trama >= tramas) return;
        const auto primera = static_cast<std::ptrdiff_t>(static_cast<double>(trama) * paso) -
                             static_cast<std::ptrdiff_t>(ventana.size() / 2);
        for (std::size_t i = 0; i < ventana.size(); i++) {
            const auto k = primera + static_cast<std::ptrdiff_t>(i);
            if (k <= 0 || k >= static_cast<std::ptrdiff_t>(sonido.size())) continue;
            // High frequencies, which consonants differ in, weigh more.
            const auto j = static_cast<std::size_t>(k);
            z[i] = (static_cast<float>(sonido[j]) - .95F * static_cast<float>(sonido[j - 1])) * ventana[i];
        }
    };
    const cFourier fourier(n);
    for (std::size_t t = 0; t < tramas; t += 2) {  // two at once: a real sound fills half of what is complex
        llena(x, t);
        llena(y, t + 1);
        fourier.Pasa(x, y);
        Anota(t, x, y);
    }
}

// Frames `trama` and the next one, whose transforms `x` and `y` hold as the real and the imaginary part.
void cSonograma::Anota(std::size_t trama, std::span<const float> x, std::span<const float> y) {
    const std::size_t n = x.size();
    const auto pon = [this](std::size_t t, std::size_t raya, float re, float im) {
        if (t >= m_total.size()) return;
        const float potencia = (re * re + im * im) / 4;
        m_total[t] += potencia;
        if (raya < m_rayas) m_rayaje[t * m_rayas + raya] = potencia;
    };
    for (std::size_t k = 1; k < n / 2; k++) {
        pon(trama, k, x[k] + x[n - k], y[k] - y[n - k]);
        pon(trama + 1, k, y[k] + y[n - k], x[n - k] - x[k]);
    }
}

Espectro cSonograma::Rasgos(double talla) const {
    Espectro e;
    const std::size_t tramas = Tramas();
    if (tramas == 0) return e;
    // Each line belongs to two bands that overlap.
    std::vector<std::size_t> banda(m_rayas);  // the upper one; 0: to none
    std::vector<float> parte(m_rayas);        // that is the upper one's
    const double ancho = (AMel(kHzAlto) - AMel(kHzBajo)) / (kBandas + 1);
    for (std::size_t k = 1; k < m_rayas; k++) {
        const double donde = (AMel(static_cast<double>(k) * m_hzRaya * talla) - AMel(kHzBajo)) / ancho;
        if (donde <= 0 || donde >= kBandas + 1) continue;
        banda[k] = static_cast<std::size_t>(donde) + 1;
        parte[k] = static_cast<float>(donde - std::floor(donde));
    }
    std::vector<Bandas> bandas(tramas);
    std::vector<float> potencia(tramas);
    for (std::size_t t = 0; t < tramas; t++) {
        std::array<float, kBandas + 2> suma{};  // with a half band at each end that doesn't count
        for (std::size_t k = 1; k < m_rayas; k++) {
            if (banda[k] == 0) continue;
            const float p = m_rayaje[t * m_rayas + k];
            suma[banda[k] - 1] += p * (1 - parte[k]);
            suma[banda[k]] += p * parte[k];
        }
        std::copy_n(suma.begin() + 1, kBandas, bandas[t].begin());
        for (const float b : bandas[t]) potencia[t] += b;
    }
    const float alta = Alta(potencia), altaTotal = Alta(m_total), suelo = std::max(alta * kSuelo, 1.0F);
    e.tramas.resize(tramas);
    for (std::size_t t = 0; t < tramas; t++) {
        Bandas nivel{};
        for (std::size_t b = 0; b < kBandas; b++) nivel[b] = std::log(bandas[t][b] + suelo / kBandas);
        for (std::size_t c = 0; c < kCepstros; c++)
            for (std::size_t b = 0; b < kBandas; b++) e.tramas[t][c] += nivel[b] * Cosenos()[c][b];
        e.tramas[t][kCepstros] = std::log(potencia[t] + suelo);
        e.callada.push_back(potencia[t] < alta * kCallada);
        e.muda.push_back(m_total[t] < altaTotal * kMuda);
    }
    e.hasta = tramas;
    while (e.desde + 1 < tramas && potencia[e.desde] < alta * kMuda) e.desde++;
    while (e.hasta > e.desde + 1 && potencia[e.hasta - 1] < alta * kMuda) e.hasta--;
    Pule(e.tramas);
    return e;
}

}  // namespace ondalis
