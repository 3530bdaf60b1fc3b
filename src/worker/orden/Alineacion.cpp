#include "worker/orden/Alineacion.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "worker/orden/Espectro.h"

namespace ondalis {

namespace {

constexpr std::size_t kMaxTramas = 12000;  // two minutes, where a piece is a sentence
constexpr double kBanda = .2;              // of the length: how far the two may drift apart
constexpr std::size_t kMinBanda = 150;     // frames
constexpr double kMaxRazon = 4;            // of their lengths
// What going along one of the two alone costs, in deviations of a feature; less where it is silent, as every voice
// makes pauses of its own.
constexpr float kQuieta = 1.6F, kQuietaCallada = .25F;

// The loudness tells more of where syllables are than any other feature; changes tell less than what changes.
constexpr std::size_t kSonoridad = kRasgos / 2 - 1;
constexpr float kPesoSonoridad = 5, kPesoCambio = .5F;
// Throats of the pattern that are tried: a man's as it is, and as a woman or a deep voice would say it. Flite's slt
// against a man's pattern: 92 % of the words within 100 ms; against one with a throat so much shorter 99 %.
constexpr std::array kTallas{1.0, 1.15, .9};

float Distancia(const std::array<float, kRasgos> &a, const std::array<float, kRasgos> &b) {
    float propios = 0, cambios = 0;
    for (std::size_t i = 0; i <= kSonoridad; i++) propios += (a[i] - b[i]) * (a[i] - b[i]);
    for (std::size_t i = kSonoridad + 1; i < kRasgos; i++) cambios += (a[i] - b[i]) * (a[i] - b[i]);
    const float sonoridad = a[kSonoridad] - b[kSonoridad];
    return std::sqrt(propios + (kPesoSonoridad - 1) * sonoridad * sonoridad + kPesoCambio * cambios);
}

enum : std::uint8_t { kNada, kAmbos, kPatron, kSonido };

// The cheapest way along both: what of the sound belongs to each frame of the pattern.
struct Camino {
    float coste = std::numeric_limits<float>::infinity();
    std::vector<std::size_t> primero, ultimo;
};

// A band around the straight line, row by row of the pattern.
class Banda {
public:
    Banda(std::size_t n, std::size_t m)
        : m_columnas(m),
          m_razon(static_cast<double>(m) / static_cast<double>(n)),
          m_ancho(std::max(kMinBanda, static_cast<std::size_t>(kBanda * static_cast<double>(m)))) {}
    std::size_t Primera(std::size_t i) const {
        const auto centro = static_cast<std::size_t>(static_cast<double>(i) * m_razon);
        return centro > m_ancho ? std::min(centro - m_ancho, m_columnas - 1) : 0;
    }
    std::size_t Columnas() const { return std::min(2 * m_ancho + 1, m_columnas); }
    // npos: outside.
    std::size_t Sitio(std::size_t i, std::size_t j) const {
        const std::size_t desde = Primera(i);
        return j >= desde && j - desde < Columnas() ? i * Columnas() + j - desde : kFuera;
    }
    static constexpr std::size_t kFuera = static_cast<std::size_t>(-1);

private:
    std::size_t m_columnas;
    double m_razon;
    std::size_t m_ancho;
};

// Back along the steps from the last corner to the first.
Camino Desanda(const std::vector<std::uint8_t> &pasos, const Banda &banda, std::size_t n, std::size_t m) {
    Camino camino;
    camino.primero.assign(n, 0);
    camino.ultimo.assign(n, 0);
    for (std::size_t i = n - 1, j = m - 1, visto = n; i + j > 0;) {
        if (visto != i) camino.ultimo[i] = j;
        visto = i;
        camino.primero[i] = j;
        const std::size_t sitio = banda.Sitio(i, j);
        const std::uint8_t por = sitio == Banda::kFuera ? std::uint8_t{kNada} : pasos[sitio];
        if (por == kNada) return {};
        if (por != kSonido) i--;
        if (por != kPatron) j--;
    }
    camino.primero[0] = 0;
    return camino;
}

Camino Recorre(const Espectro &p, const Espectro &s) {
    const std::size_t n = p.tramas.size(), m = s.tramas.size();
    const Banda banda(n, m);
    const std::size_t columnas = banda.Columnas();
    constexpr float kInfinito = std::numeric_limits<float>::infinity();
    std::vector<float> antes(columnas, kInfinito), ahora(columnas, kInfinito);
    std::vector<std::uint8_t> pasos(n * columnas, kNada);
    for (std::size_t i = 0; i < n; i++) {
        const std::size_t desde = banda.Primera(i), anterior = i > 0 ? banda.Primera(i - 1) : 0;
        std::fill(ahora.begin(), ahora.end(), kInfinito);
        const auto arriba = [&](std::size_t j) {
            return j >= anterior && j - anterior < columnas ? antes[j - anterior] : kInfinito;
        };
        for (std::size_t k = 0; k < columnas && desde + k < m; k++) {
            const std::size_t j = desde + k;
            float mejor = i + j == 0 ? 0 : kInfinito;
            std::uint8_t por = kNada;
            const auto prueba = [&](float coste, std::uint8_t paso) {
                if (coste < mejor) mejor = coste, por = paso;
            };
            if (i > 0 && j > 0) prueba(arriba(j - 1), kAmbos);
            if (i > 0) prueba(arriba(j) + (p.callada[i] ? kQuietaCallada : kQuieta), kPatron);
            if (k > 0) prueba(ahora[k - 1] + (s.callada[j] ? kQuietaCallada : kQuieta), kSonido);
            const float lejos = Distancia(p.tramas[i], s.tramas[j]);
            ahora[k] = mejor + (por == kPatron || por == kSonido ? lejos / 2 : lejos);
            pasos[i * columnas + k] = por;
        }
        std::swap(antes, ahora);
    }
    const std::size_t fin = banda.Sitio(n - 1, m - 1);
    if (fin == Banda::kFuera) return {};
    Camino camino = Desanda(pasos, banda, n, m);
    if (!camino.primero.empty()) camino.coste = antes[fin - (n - 1) * columnas];
    return camino;
}

// The frame of the sound, with a fraction, for one of the pattern.
double Traslada(double trama, const Camino &camino, const Espectro &p, const Espectro &s) {
    const std::size_t n = p.tramas.size();
    trama = std::clamp(trama, 0.0, static_cast<double>(n - 1));
    const auto i = static_cast<std::size_t>(trama);
    // Behind a pause a thing begins when the pause ends.
    std::size_t empieza = camino.primero[i];
    while (empieza < camino.ultimo[i] && s.callada[empieza]) empieza++;
    const double aqui = p.callada[i]                  ? static_cast<double>(camino.ultimo[i])
                        : empieza > camino.primero[i] ? static_cast<double>(empieza)
                                                      : static_cast<double>(camino.primero[i] + camino.ultimo[i]) / 2;
    if (i + 1 >= n) return aqui;
    return aqui + (trama - static_cast<double>(i)) * std::max(0.0, static_cast<double>(camino.ultimo[i + 1]) - aqui);
}

}  // namespace

std::vector<double> Alinea(const Habla &patron, std::span<const double> momentos, const Habla &sonido) {
    const Espectro s = HazEspectro(sonido.sonido, sonido.hercios);
    Espectro mejor;
    Camino camino;
    for (const double talla : kTallas) {
        Espectro p = HazEspectro(patron.sonido, patron.hercios, talla);
        const std::size_t n = p.tramas.size(), m = s.tramas.size();
        if (n == 0 || m == 0 || n > kMaxTramas || m > kMaxTramas) return {};
        const double razon = static_cast<double>(m) / static_cast<double>(n);
        if (razon > kMaxRazon || razon < 1 / kMaxRazon) return {};
        Camino este = Recorre(p, s);
        if (este.coste < camino.coste) camino = std::move(este), mejor = std::move(p);
    }
    if (camino.primero.empty()) return {};
    std::vector<double> salida;
    for (const double momento : momentos) {
        const double donde = Traslada(momento * 1000 / kMsTramaEspectro, camino, mejor, s) * kMsTramaEspectro / 1000;
        salida.push_back(std::max(salida.empty() ? 0 : salida.back(), donde));
    }
    return salida;
}

}  // namespace ondalis
