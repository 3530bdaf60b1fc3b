#include "speech/cVozSAPI5Lote.h"

namespace ondalis {

bool cVozSAPI5Lote::Elige(const QString &nombre) {
    const auto voces = m_viva.GetVoices(QStringLiteral("Name=") + nombre, QString());
    if (voces.empty()) return false;
    m_viva.SetVoice(voces.front());
    m_deFichero.SetVoice(voces.front());
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
