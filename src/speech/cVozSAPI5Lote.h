// The batch job's SAPI 5 voice on the real engines: one voice for the sound device and one for files, which always have
// the same settings; a channel is made with its first speech. Owned by main. Main thread.
#pragma once

#include "speech/SpFileStream.h"
#include "speech/SpVoice.h"
#include "speech/VozSAPI5Lote.h"

namespace ondalis {

class cVozSAPI5Lote : public VozSAPI5Lote {
public:
    // `flujo` is the output of `canalFichero`. All must outlive this; the channels are used by nobody else.
    cVozSAPI5Lote(CanalVoz &canalVivo, CanalVoz &canalFichero, SpFileStream &flujo, const ListaTokens &tokens,
                  cCola &cola, cLog &log)
        : m_flujo(flujo),
          m_viva(canalVivo, tokens, cola, m_estado, log),
          m_deFichero(canalFichero, tokens, cola, m_estado, log) {}

    bool Elige(const QString &nombre) override;
    int Rate() const override { return m_viva.Rate(); }
    void SetRate(int rate) override;
    int Volume() const override { return m_viva.Volume(); }
    void SetVolume(int volume) override;
    Fallo Speak(const QString &texto) override;
    Fallo SpeakAFichero(const QString &texto, const QString &ruta, int formato) override;
    void Cancela() override;

private:
    cEstadoVoz m_estado;
    SpFileStream &m_flujo;
    SpVoice m_viva;
    SpVoice m_deFichero;
};

}  // namespace ondalis
