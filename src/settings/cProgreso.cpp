#include "settings/cProgreso.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ondalis {

void cProgreso::Init(SuperficieProgreso &superficie) {
    m_superficie = &superficie;
    m_superficie->SetColores(ColorFondo, ColorFrente);
}

void cProgreso::SetValorActual(float valor) {
    m_valor = std::min(valor, m_maximo);
    DibujaPorcentaje();
    m_cola.DejaCorrer();
}

void cProgreso::DibujaPorcentaje() {
    // lrint rounds half to even, as the rest of the system does.
    const float porcentaje = m_valor * 100 / m_maximo;
    using Limite = std::numeric_limits<std::int16_t>;
    if (!m_superficie || !(porcentaje >= Limite::min() && porcentaje <= Limite::max())) return;
    const auto entero = static_cast<std::int16_t>(std::lrint(porcentaje));
    if (entero == m_porcentaje) return;
    m_porcentaje = entero;
    if (!m_superficie->Visible()) m_superficie->SetVisible(true);
    m_superficie->Dibuja(m_superficie->Ancho() * static_cast<float>(entero) * 0.01f);
}

void cProgreso::Oculta() {
    if (!m_superficie) return;
    m_superficie->Limpia();
    m_superficie->SetVisible(false);
}

}  // namespace ondalis
