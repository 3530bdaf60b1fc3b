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

float Distancia(const std::array<float, kRasgos> &a, const std::array<float, kRasgos> &b) {
    float suma = 0;
    for (std::size_t i = 0; i < kRasgos; i++) suma += (a[i] - b[i]) * (a[i] - b[i]);
    return std::sqrt(suma);
}

enum : std::uint8_t { kNada, kAmbos, kPatron, kSonido };

}  // namespace

std::vector<double> Alinea(const Habla &patron, std::span<const double> momentos, const Habla &sonido) {
    const Espectro p = HazEspectro(patron.sonido, patron.hercios), s = HazEspectro(sonido.sonido, sonido.hercios);
    const std::size_t n = p.tramas.size(), m = s.tramas.size();
    if (n == 0 || m == 0 || n > kMaxTramas || m > kMaxTramas) return {};
    const double razon = static_cast<double>(m) / static_cast<double>(n);
    if (razon > kMaxRazon || razon < 1 / kMaxRazon) return {};

    // A band around the straight line, row by row of the pattern.
    const std::size_t ancho = std::max(kMinBanda, static_cast<std::size_t>(kBanda * static_cast<double>(m)));
    const auto primera = [&](std::size_t i) {
        const auto centro = static_cast<std::size_t>(static_cast<double>(i) * razon);
        return centro > ancho ? std::min(centro - ancho, m - 1) : 0;
    };
    const std::size_t columnas = 2 * ancho + 1;
    constexpr float kInfinito = std::numeric_limits<float>::infinity();
    std::vector<float> antes(columnas, kInfinito), ahora(columnas, kInfinito);
    std::vector<std::uint8_t> camino(n * columnas, kNada);
    for (std::size_t i = 0; i < n; i++) {
        const std::size_t desde = primera(i), anterior = i > 0 ? primera(i - 1) : 0;
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
            ahora[k] = mejor + (por == kAmbos || por == kNada ? lejos : lejos / 2);
            camino[i * columnas + k] = por;
        }
        std::swap(antes, ahora);
    }
    // Back along the way: the first and last frame of the sound for each frame of the pattern.
    std::vector<std::size_t> primero(n, 0), ultimo(n, 0);
    std::vector<bool> visto(n, false);
    for (std::size_t i = n - 1, j = m - 1;;) {
        if (!visto[i]) ultimo[i] = j;
        visto[i] = true;
        primero[i] = j;
        const std::size_t desde = primera(i);
        const std::uint8_t por = j >= desde && j - desde < columnas ? camino[i * columnas + j - desde]
                                                                    : static_cast<std::uint8_t>(kNada);
        if (por == kNada) break;
        if (por != kSonido) i--;
        if (por != kPatron) j--;
    }
    if (primero[0] != 0 || !visto[0]) return {};
    std::vector<double> salida;
    for (const double momento : momentos) {
        const double trama = std::clamp(momento * 1000 / kMsTramaEspectro, 0.0, static_cast<double>(n - 1));
        const auto i = static_cast<std::size_t>(trama);
        // Behind a pause a thing begins when the pause ends.
        const double aqui = p.callada[i] ? static_cast<double>(ultimo[i])
                                         : static_cast<double>(primero[i] + ultimo[i]) / 2;
        const double resto = trama - static_cast<double>(i);
        const double donde = i + 1 < n ? aqui + resto * (static_cast<double>(ultimo[i + 1]) - aqui) : aqui;
        salida.push_back(std::max(salida.empty() ? 0 : salida.back(), donde * kMsTramaEspectro / 1000));
    }
    return salida;
}

}  // namespace ondalis
