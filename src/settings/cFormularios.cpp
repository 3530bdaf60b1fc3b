#include "settings/cFormularios.h"

#include <algorithm>

namespace ondalis {

void cFormularios::Anota(const QString &nombre, std::function<void()> descarga) {
    Olvida(nombre);
    m_abiertos.push_back({nombre, std::move(descarga)});
}

void cFormularios::Olvida(const QString &nombre) {
    std::erase_if(m_abiertos, [&](const Formulario &uno) { return uno.nombre == nombre; });
}

bool cFormularios::Abierto(const QString &nombre) const {
    return std::any_of(m_abiertos.begin(), m_abiertos.end(),
                       [&](const Formulario &uno) { return uno.nombre == nombre; });
}

void cFormularios::DescargaFormularios(const QString &excepto) {
    for (;;) {
        const auto ultimo = std::find_if(m_abiertos.rbegin(), m_abiertos.rend(), [&](const Formulario &uno) {
            return excepto.isEmpty() || uno.nombre != excepto;
        });
        if (ultimo == m_abiertos.rend()) return;
        const auto descarga = std::move(ultimo->descarga);
        m_abiertos.erase(std::next(ultimo).base());
        if (descarga) descarga();
    }
}

}  // namespace ondalis
