// Tells which of the engine's word signals are words: it signals each word, and parts of numbers, ghosts and places
// that it has passed as well. One object a piece. Pure.
#pragma once

#include <optional>
#include <vector>

#include "worker/PiezaTexto.h"

namespace ondalis {

class Seguidor {
public:
    explicit Seguidor(const std::vector<Ficha> &fichas) : m_fichas(fichas) {}

    // `posicion` as the engine gives it: 1-based, in characters. Each word comes out once, in order.
    const Ficha *Palabra(int posicion);

private:
    const std::vector<Ficha> &m_fichas;
    std::size_t m_siguiente = 0;
};

}  // namespace ondalis
