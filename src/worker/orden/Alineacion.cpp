#include "worker/orden/Alineacion.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "worker/orden/Camino.h"
#include "worker/orden/Espectro.h"

namespace ondalis {

namespace {

constexpr std::size_t kMaxTramas = 12000;  // two minutes, where a piece is a sentence
constexpr double kMaxRazon = 4;            // of their lengths
constexpr double kMsMargen = 1500;         // that both may drift apart, however short they are
constexpr std::size_t kJuntas = 3;         // frames of the rough comparison

// Throats of the pattern that are tried: a man's as it is, a deeper one, and as a woman or a child would say it. The
// likest ones are compared closely, and of what they say of a word the middle is taken: a single one, even the likest,
// goes astray now and then. 3510 words of eight voices: 4 are more than 100 ms off with the likest of three throats, 1
// with these.
constexpr std::array kTallas{.85, .9, .95, 1.0, 1.05, 1.1, 1.15, 1.2, 1.25};
constexpr std::size_t kCercanas = 5;

// A pause of the sound's own, which the pattern may lack: longer than a closure. A word isn't begun in it, nor just
// before, but when it ends; or a little earlier, with the closure of its first consonant.
constexpr std::size_t kTramasPausa = 16, kTramasAntes = 4, kTramasTras = 3;

// The frame of the sound, with a fraction, for one of the pattern.
double Traslada(double trama, const Camino &camino, const Trecho &p, const Trecho &s) {
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

double TrasLaPausa(double trama, const Trecho &s) {
    const std::size_t n = s.muda.size();
    std::size_t desde = std::min(static_cast<std::size_t>(trama), n - 1);
    const std::size_t limite = std::min(n, desde + kTramasAntes);
    while (desde < limite && !s.muda[desde]) desde++;
    if (desde == limite) return trama;
    std::size_t hasta = desde;
    while (hasta < n && s.muda[hasta]) hasta++;
    while (desde > 0 && s.muda[desde - 1]) desde--;
    if (hasta == n || hasta - desde < kTramasPausa) return trama;
    return std::max(trama, static_cast<double>(hasta - kTramasTras));
}

// For each moment of the pattern the one of the sound, in seconds; empty where they can't be gone along.
std::vector<double> Compara(const Espectro &patron, std::span<const double> momentos, const Trecho &s) {
    const Trecho p = HazTrecho(patron);
    const Camino camino = Recorre(p, s, static_cast<std::size_t>(kMsMargen / kMsTramaEspectro), false);
    std::vector<double> salida;
    if (camino.primero.empty()) return salida;
    for (const double momento : momentos) {
        const double trama = momento * 1000 / kMsTramaEspectro - static_cast<double>(p.desde);
        const double donde = TrasLaPausa(Traslada(trama, camino, p, s), s) + static_cast<double>(s.desde);
        salida.push_back(donde * kMsTramaEspectro / 1000);
    }
    return salida;
}

// The pattern with the throats that make it likest to the sound, the likest first.
std::vector<Espectro> Cercanas(const cSonograma &patron, const Espectro &sonido) {
    std::vector<std::pair<float, Espectro>> todas;
    const Trecho s = HazTrecho(sonido, kJuntas);
    for (const double talla : kTallas) {
        Espectro p = patron.Rasgos(talla);
        const auto margen = static_cast<std::size_t>(kMsMargen / kMsTramaEspectro / kJuntas);
        const float coste = Recorre(HazTrecho(p, kJuntas), s, margen, true).coste;
        todas.emplace_back(coste, std::move(p));
    }
    std::sort(todas.begin(), todas.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    std::vector<Espectro> cercanas;
    for (std::size_t i = 0; i < kCercanas; i++) cercanas.push_back(std::move(todas[i].second));
    return cercanas;
}

}  // namespace

std::vector<double> Alinea(const Habla &patron, std::span<const double> momentos, const Habla &sonido) {
    const cSonograma p(patron.sonido, patron.hercios), s(sonido.sonido, sonido.hercios);
    const std::size_t n = p.Tramas(), m = s.Tramas();
    if (n == 0 || m == 0 || n > kMaxTramas || m > kMaxTramas) return {};
    const Espectro rasgos = s.Rasgos();
    const Espectro propios = p.Rasgos();
    const double razon =
        static_cast<double>(rasgos.hasta - rasgos.desde) / static_cast<double>(propios.hasta - propios.desde);
    if (razon > kMaxRazon || razon < 1 / kMaxRazon) return {};

    const Trecho trecho = HazTrecho(rasgos);
    std::vector<std::vector<double>> todas;
    for (const Espectro &cercana : Cercanas(p, rasgos)) {
        todas.push_back(Compara(cercana, momentos, trecho));
        if (todas.back().size() != momentos.size()) return {};
    }
    std::vector<double> salida;
    for (std::size_t i = 0; i < momentos.size(); i++) {
        std::array<double, kCercanas> suyos{};
        for (std::size_t k = 0; k < kCercanas; k++) suyos[k] = todas[k][i];
        const auto medio = suyos.begin() + kCercanas / 2;
        std::nth_element(suyos.begin(), medio, suyos.end());
        salida.push_back(std::max(salida.empty() ? 0 : salida.back(), *medio));
    }
    return salida;
}

}  // namespace ondalis
