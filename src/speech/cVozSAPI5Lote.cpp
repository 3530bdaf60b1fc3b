#include "speech/cVozSAPI5Lote.h"

#include <algorithm>

namespace ondalis {

bool cVozSAPI5Lote::Elige(const QString &nombre) {
    // As GetVoices compares "Name=", but for one thing: a ";" in a name separates nothing.
    const auto voces = m_viva.GetVoices(QString(), QString());
    const auto suya = std::ranges::find_if(voces, [pedido = nombre.trimmed()](const TokenVoz &token) {
        return token.nombre.trimmed().compare(pedido, Qt::CaseInsensitive) == 0;
    });
    if (suya == voces.end()) return false;
    m_viva.SetVoice(*suya);
    m_deFichero.SetVoice(*suya);
    return true;
}

void cVozSAPI5Lote::SetRate(int rate) {
    m_viva.SetRate(rate);
    m_deFichero.SetRate(rate);
}

void cVozSAPI5Lote::SetVolume(int volume) {
    m_viva.SetVolume(volume);
    m_deFichero.SetVolume(volume);
}

Fallo cVozSAPI5Lote::Speak(const QString &texto) {
    if (Fallo fallo = m_viva.Speak(texto, SpVoice::XML)) return fallo;
    return m_viva.FalloDelMotor();
}

Fallo cVozSAPI5Lote::SpeakAFichero(const QString &texto, const QString &ruta, int formato) {
    m_flujo.SetFormatType(formato);
    if (Fallo fallo = m_flujo.Open(ruta, SpFileStream::SSFMCreateForWrite)) return fallo;
    Fallo fallo = m_deFichero.Speak(texto, SpVoice::XML);
    if (!fallo) fallo = m_deFichero.FalloDelFichero();
    Fallo cierre = m_flujo.Close();
    return fallo ? fallo : cierre;
}

void cVozSAPI5Lote::Cancela() {
    // An empty text is never refused.
    for (SpVoice *voz : {&m_viva, &m_deFichero}) (void)voz->Speak(QString(), SpVoice::Purga);
}

}  // namespace ondalis
