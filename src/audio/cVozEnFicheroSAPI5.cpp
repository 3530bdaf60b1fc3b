#include "audio/cVozEnFicheroSAPI5.h"

namespace ondalis {

cVozEnFicheroSAPI5::cVozEnFicheroSAPI5(const std::function<std::unique_ptr<CanalVoz>(SalidaAudio &)> &creaCanal,
                                       const ListaTokens &tokens, cCola &cola, cLog &log)
    : m_canal(creaCanal(m_salida)), m_voz(*m_canal, tokens, cola, m_estado, log) {}

Fallo cVozEnFicheroSAPI5::Abre(const QString &ruta) {
    m_incompleta = false;
    return m_flujo.Open(ruta, SpFileStream::SSFMCreateForWrite);
}

Fallo cVozEnFicheroSAPI5::SetVoz(int numero) {
    const std::vector<TokenVoz> tokens = m_voz.GetVoices({}, {});
    if (numero < 0 || static_cast<std::size_t>(numero) >= tokens.size()) return Fallo::De(Fallo::LlamadaNoValida);
    m_voz.SetVoice(tokens[static_cast<std::size_t>(numero)]);
    return {};
}

Fallo cVozEnFicheroSAPI5::Habla(const QString &texto, int flags) {
    if (Fallo fallo = m_voz.Speak(texto, flags)) return fallo;
    m_incompleta = m_incompleta || m_voz.Incompleta();
    return m_voz.FalloDelMotor();
}

// Silencing can't be refused.
void cVozEnFicheroSAPI5::Cancela() { static_cast<void>(m_voz.Speak({}, SpVoice::Purga)); }

}  // namespace ondalis
