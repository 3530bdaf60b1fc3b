#include "worker/Seguidor.h"

#include <algorithm>

namespace ondalis {

const Ficha *Seguidor::Palabra(int posicion) {
    if (posicion < 1) return nullptr;
    const auto p = static_cast<std::uint32_t>(posicion - 1) & 2047u;  // 2048 is added where signs are spoken
    // The first word that begins behind the place; the one before it may hold it.
    const auto desde = m_fichas.begin() + static_cast<std::ptrdiff_t>(m_siguiente);
    auto ficha = std::upper_bound(desde, m_fichas.end(), p,
                                  [](std::uint32_t n, const Ficha &una) { return n < una.inicioMotor; });
    // Behind an abbreviation the engine drops the full stop and signals the next word one place early.
    const bool antes = ficha != m_fichas.end() && ficha->trasAbreviatura && ficha->inicioMotor == p + 1;
    if (!antes) {
        if (ficha == desde) return nullptr;
        --ficha;
        if (p > ficha->nucleoMotor) return nullptr;
    }
    m_siguiente = static_cast<std::size_t>(ficha - m_fichas.begin()) + 1;
    return &*ficha;
}

}  // namespace ondalis
