// What every tag dialect promises of its spans, whatever the text: checked on each input that the fuzzer makes.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "engine/Locucion.h"

namespace ondalis {

// The fuzzer's bytes as UTF-16 units; an odd byte at the end is dropped.
inline std::u16string TextoDeBytes(const std::uint8_t *datos, std::size_t n) {
    std::u16string texto(n / 2, u'\0');
    if (!texto.empty()) std::memcpy(texto.data(), datos, texto.size() * 2);
    return texto;
}

// Two ASCII bytes a unit would waste the fuzzer's time on the upper one, so a second reading takes a byte a unit.
inline std::u16string TextoDeLetras(const std::uint8_t *datos, std::size_t n) { return {datos, datos + n}; }

inline void Exige(bool cierto) {
    if (!cierto) std::abort();
}

inline void CompruebaTramos(const std::vector<Tramo> &tramos, std::size_t largo) {
    std::uint32_t anterior = 0;
    for (const Tramo &tramo : tramos) {
        Exige(std::isfinite(tramo.valor));
        if (tramo.tipo != TipoTramo::Texto) continue;
        Exige(!tramo.cortes.empty() && tramo.cortes.front().texto == 0);
        for (std::size_t i = 0; i < tramo.cortes.size(); ++i) {
            const Corte &corte = tramo.cortes[i];
            if (i > 0) Exige(corte.texto > tramo.cortes[i - 1].texto && corte.origen > tramo.cortes[i - 1].origen);
            Exige(corte.texto < tramo.texto.size());
            Exige(corte.origen >= anterior);
            const std::size_t fin = i + 1 < tramo.cortes.size() ? tramo.cortes[i + 1].texto : tramo.texto.size();
            Exige(corte.origen + (fin - corte.texto) <= largo);
            anterior = corte.origen;
        }
    }
}

}  // namespace ondalis
