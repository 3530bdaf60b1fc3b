#include "engine/cSalidaNula.h"

#include <algorithm>

namespace ondalis {

bool cSalidaNula::Abre(int hz) {
    m_hz = std::max(hz, 1);
    Vacia();
    return true;
}

std::size_t cSalidaNula::Escribe(const std::int16_t *, std::size_t n) {
    Oidas();  // a starved clock starts again now and not when it ran dry
    m_escritas += n;
    return n;
}

std::uint64_t cSalidaNula::Oidas() {
    if (m_pausa || m_hz == 0) return m_base;
    const auto ahora = m_reloj.Ahora();
    // Whole seconds apart, so that hours of nanoseconds times the rate don't overflow.
    const std::uint64_t transcurrido = static_cast<std::uint64_t>((ahora - m_desde).count());
    const std::uint64_t segundo = 1'000'000'000;
    const auto hz = static_cast<std::uint64_t>(m_hz);
    const std::uint64_t oidas = m_base + transcurrido / segundo * hz + transcurrido % segundo * hz / segundo;
    if (oidas < m_escritas) return oidas;
    m_base = m_escritas;
    m_desde = ahora;
    return m_base;
}

void cSalidaNula::Pausa(bool enPausa) {
    if (enPausa == m_pausa) return;
    if (enPausa) m_base = Oidas();
    m_pausa = enPausa;
    m_desde = m_reloj.Ahora();
}

void cSalidaNula::Vacia() {
    m_pausa = false;
    m_escritas = m_base = 0;
    m_desde = m_reloj.Ahora();
}

}  // namespace ondalis
