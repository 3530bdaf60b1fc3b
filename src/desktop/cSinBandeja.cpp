#include "desktop/cSinBandeja.h"

namespace ondalis {

cSinBandeja::cSinBandeja(Temporizador &espera, cLog &log, Puertos puertos)
    : m_espera(espera), m_log(log), m_puertos(std::move(puertos)) {
    m_espera.SetIntervalo(kEsperaMs);
    m_espera.SetManejador([this] { Vence(); });
}

void cSinBandeja::Revisa() {
    if (!m_puertos.haySitio()) {
        if (!m_mostrada && !m_espera.Enabled()) m_espera.SetEnabled(true);
        return;
    }
    m_espera.SetEnabled(false);
    if (!m_mostrada) return;
    m_mostrada = false;
    m_puertos.muestra(false);
}

void cSinBandeja::Vence() {
    m_espera.SetEnabled(false);
    if (m_mostrada || m_puertos.haySitio()) return;
    m_mostrada = true;
    m_log.Escribe(QStringLiteral("cSinBandeja: "),
                  QStringLiteral("el escritorio no tiene área de notificación; el menú está en la ventana Ondalis"));
    m_puertos.muestra(true);
    m_puertos.avisa(QStringLiteral(
        "Este escritorio no tiene área de notificación. El menú de Ondalis está en la ventana Ondalis."));
}

}  // namespace ondalis
