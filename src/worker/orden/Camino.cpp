#include "worker/orden/Camino.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace ondalis {

namespace {

constexpr double kBanda = .2;  // of the length: how far the two may drift apart
constexpr std::size_t kMaxMargenes = 4;
constexpr std::size_t kOrilla = 2;  // silent frames that are kept at each end
// What going along one of the two alone costs, in deviations of a feature; less where it is silent, as every voice
// makes pauses of its own.
constexpr float kQuieta = 1.6F, kQuietaCallada = .25F;
// The loudness tells more of where syllables are than any other feature; changes tell less than what changes.
constexpr std::size_t kSonoridad = kCepstros;
constexpr float kPesoSonoridad = 5, kPesoCambio = .5F;

float Peso(std::size_t rasgo) { return rasgo == kSonoridad ? kPesoSonoridad : rasgo > kSonoridad ? kPesoCambio : 1; }

using Rasgos = std::array<float, Trecho::kAncho>;

float Distancia(const Rasgos &a, const Rasgos &b) {
    std::array<float, 4> suma{};  // apart, so that the four are worked out at once
    for (std::size_t i = 0; i < a.size(); i += 4)
        for (std::size_t k = 0; k < 4; k++) suma[k] += (a[i + k] - b[i + k]) * (a[i + k] - b[i + k]);
    return std::sqrt(suma[0] + suma[1] + suma[2] + suma[3]);
}

enum : std::uint8_t { kNada, kAmbos, kPatron, kSonido };

// A band around the straight line, row by row of the pattern.
struct Banda {
    std::size_t columnas, ancho, dentro;
    double razon;
    Banda(std::size_t n, std::size_t m, std::size_t margen)
        : columnas(m),
          ancho(std::clamp(static_cast<std::size_t>(kBanda * static_cast<double>(m)), margen, kMaxMargenes * margen)),
          dentro(std::min(2 * ancho + 1, m)),
          razon(static_cast<double>(m) / static_cast<double>(n)) {}
    std::size_t Primera(std::size_t i) const {
        const auto centro = static_cast<std::size_t>(static_cast<double>(i) * razon);
        return std::min(centro > ancho ? centro - ancho : 0, columnas - dentro);
    }
};

// Back along the steps from the last corner to the first.
void Desanda(const std::vector<std::uint8_t> &pasos, const Banda &banda, std::size_t n, Camino &camino) {
    camino.primero.assign(n, 0);
    camino.ultimo.assign(n, 0);
    for (std::size_t i = n - 1, j = banda.columnas - 1, visto = n;;) {
        if (visto != i) camino.ultimo[i] = j;
        visto = i;
        camino.primero[i] = j;
        if (i + j == 0) return;
        const std::uint8_t por = pasos[i * banda.dentro + j - banda.Primera(i)];
        if (por == kNada) return void(camino = {});
        if (por != kSonido) i--;
        if (por != kPatron) j--;
    }
}

}  // namespace

Trecho HazTrecho(const Espectro &e, std::size_t juntas) {
    Trecho trecho;
    trecho.desde = e.desde > kOrilla ? e.desde - kOrilla : 0;
    const std::size_t hasta = std::min(e.hasta + kOrilla, e.tramas.size());
    std::array<float, kRasgos> estira{};
    for (std::size_t r = 0; r < kRasgos; r++) estira[r] = std::sqrt(Peso(r));
    for (std::size_t i = trecho.desde; i < hasta; i += juntas) {
        const std::size_t fin = std::min(hasta, i + juntas), cuantas = fin - i;
        Rasgos suma{};
        std::size_t calladas = 0;
        for (std::size_t j = i; j < fin; j++) {
            for (std::size_t r = 0; r < kRasgos; r++) suma[r] += e.tramas[j][r];
            calladas += e.callada[j];
        }
        for (std::size_t r = 0; r < kRasgos; r++) suma[r] *= estira[r] / static_cast<float>(cuantas);
        trecho.tramas.push_back(suma);
        trecho.callada.push_back(2 * calladas >= cuantas);
        trecho.muda.push_back(e.muda[i]);
    }
    return trecho;
}

Camino Recorre(const Trecho &p, const Trecho &s, std::size_t margen, bool soloCoste) {
    const std::size_t n = p.tramas.size(), m = s.tramas.size();
    const Banda banda(n, m, margen);
    constexpr float kInfinito = std::numeric_limits<float>::infinity();
    std::vector<float> antes(banda.dentro, kInfinito), ahora(banda.dentro, kInfinito);
    std::vector<std::uint8_t> pasos(soloCoste ? 0 : n * banda.dentro, kNada);
    for (std::size_t i = 0; i < n; i++) {
        const std::size_t desde = banda.Primera(i), anterior = i > 0 ? banda.Primera(i - 1) : 0;
        const float quieto = p.callada[i] ? kQuietaCallada : kQuieta;
        const auto arriba = [&](std::size_t j) {
            return i > 0 && j >= anterior && j - anterior < banda.dentro ? antes[j - anterior] : kInfinito;
        };
        for (std::size_t k = 0; k < banda.dentro; k++) {
            const std::size_t j = desde + k;
            const float lejos = Distancia(p.tramas[i], s.tramas[j]);
            float mejor = i + j == 0 ? lejos : kInfinito;
            std::uint8_t por = kNada;
            const auto prueba = [&](float coste, std::uint8_t paso) {
                if (coste < mejor) mejor = coste, por = paso;
            };
            if (j > 0) prueba(arriba(j - 1) + lejos, kAmbos);
            prueba(arriba(j) + quieto + lejos / 2, kPatron);
            if (k > 0) prueba(ahora[k - 1] + (s.callada[j] ? kQuietaCallada : kQuieta) + lejos / 2, kSonido);
            ahora[k] = mejor;
            if (!soloCoste) pasos[i * banda.dentro + k] = por;
        }
        std::swap(antes, ahora);
    }
    Camino camino;
    camino.coste = antes[m - 1 - banda.Primera(n - 1)];
    if (!soloCoste) Desanda(pasos, banda, n, camino);
    return camino;
}

}  // namespace ondalis
