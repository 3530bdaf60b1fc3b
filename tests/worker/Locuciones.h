// Utterances for the worker's tests, and what is measured on their sound.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "engine/HablantesIBM.h"
#include "engine/Locucion.h"
#include "worker/Trabajador.h"

namespace ondalis {

inline Tramo Texto(std::u16string texto, std::uint32_t origen = 0) {
    Tramo tramo;
    tramo.texto = std::move(texto);
    tramo.cortes = {{0, origen}};
    return tramo;
}

inline Tramo Orden(TipoTramo tipo, double valor, bool absoluto = false) {
    Tramo tramo;
    tramo.tipo = tipo;
    tramo.valor = valor;
    tramo.absoluto = absoluto;
    return tramo;
}

inline Tramo Nombrado(TipoTramo tipo, std::u16string texto) {
    Tramo tramo;
    tramo.tipo = tipo;
    tramo.texto = std::move(texto);
    return tramo;
}

inline ParametrosVoz Carlos() { return {"espeak", "roa/es", true, 170, 1.0, 105, 50, 0, 0, 50}; }
inline ParametrosVoz ConSusValores(const HablanteIBM &h) {
    return {h.motor, h.idioma, true, 170, 1.0, h.tono, h.fluctuacion, h.aspereza, h.diafonia, h.tamCabeza};
}
inline ParametrosVoz Llana(std::string voz) { return {"espeak", std::move(voz), false, 170, 1.0, 100, 50, 0, 0, 50}; }

inline Locucion Una(ParametrosVoz voz, std::vector<Tramo> tramos) {
    Locucion l;
    l.voz = std::move(voz);
    l.tramos = std::move(tramos);
    return l;
}
inline Locucion Una(ParametrosVoz voz, std::u16string texto) { return Una(std::move(voz), {Texto(std::move(texto))}); }

// Said by a worker that has said nothing before: the engine carries the phase of its waves and its flutter from one
// utterance to the next, so samples are compared between fresh ones only.
inline Oido DiFresco(const std::string &programa, const Locucion &l) { return cTrabajador(programa).Di(l); }

// The words of `fuente` that were signalled, as they stand in it.
inline std::vector<std::u16string> PalabrasDe(const Oido &oido, std::u16string_view fuente) {
    std::vector<std::u16string> palabras;
    for (const TramaPalabra &p : oido.palabras)
        palabras.emplace_back(p.posicion <= fuente.size() ? fuente.substr(p.posicion, p.longitud) : u"?");
    return palabras;
}

inline double Nivel(std::span<const std::int16_t> pcm) {
    double suma = 0;
    for (const std::int16_t m : pcm) suma += static_cast<double>(m) * m;
    return pcm.empty() ? 0 : std::sqrt(suma / static_cast<double>(pcm.size()));
}

// Pitch in hertz of each voiced frame, in ascending order, by normalised autocorrelation.
inline std::vector<double> Tonos(std::span<const std::int16_t> pcm, int hercios) {
    const auto ventana = static_cast<std::size_t>(hercios / 20), paso = ventana / 2;
    const auto desde = static_cast<std::size_t>(hercios / 500), hasta = static_cast<std::size_t>(hercios / 40);
    std::vector<double> tonos;
    for (std::size_t i = 0; i + ventana + hasta < pcm.size(); i += paso) {
        if (Nivel(pcm.subspan(i, ventana)) < 800) continue;
        std::vector<double> r(hasta + 1, 0);
        double mejor = 0;
        for (std::size_t d = desde; d <= hasta; d++) {
            double cruz = 0, a = 0, b = 0;
            for (std::size_t k = 0; k < ventana; k++) {
                const double x = pcm[i + k], y = pcm[i + k + d];
                cruz += x * y, a += x * x, b += y * y;
            }
            r[d] = cruz / std::sqrt(a * b + 1);
            mejor = std::max(mejor, r[d]);
        }
        if (mejor < .8) continue;
        // The first peak nearly as good as the best: not a multiple of the period.
        for (std::size_t d = desde + 1; d < hasta; d++)
            if (r[d] > .9 * mejor && r[d] >= r[d - 1] && r[d] >= r[d + 1]) {
                tonos.push_back(static_cast<double>(hercios) / static_cast<double>(d));
                break;
            }
    }
    std::sort(tonos.begin(), tonos.end());
    return tonos;
}

// 0: nothing is voiced.
inline double TonoMediano(std::span<const std::int16_t> pcm, int hercios) {
    const auto tonos = Tonos(pcm, hercios);
    return tonos.empty() ? 0 : tonos[tonos.size() / 2];
}

// Hertz between the tenth and the ninetieth part of the voiced frames.
inline double Dispersion(std::span<const std::int16_t> pcm, int hercios = 22050) {
    const auto tonos = Tonos(pcm, hercios);
    return tonos.empty() ? 0 : tonos[tonos.size() * 9 / 10] - tonos[tonos.size() / 10];
}

}  // namespace ondalis
