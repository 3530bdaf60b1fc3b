// The SAPI 5 voice that records: an SpVoice whose output is an SpFileStream, on a channel and a worker of its own.
// Owned by the recorder. Main thread.
#pragma once

#include <functional>
#include <memory>

#include "audio/VozEnFichero.h"
#include "engine/CanalVoz.h"
#include "engine/cSalidaFichero.h"
#include "speech/SpFileStream.h"
#include "speech/SpVoice.h"

namespace ondalis {

class cVozEnFicheroSAPI5 final : public VozEnFichero {
public:
    // `creaCanal`: makes the channel that speaks into the output handed to it.
    cVozEnFicheroSAPI5(const std::function<std::unique_ptr<CanalVoz>(SalidaAudio &)> &creaCanal,
                       const ListaTokens &tokens, cCola &cola, cLog &log);

    void SetFormato(int tipo) override { m_flujo.SetFormatType(tipo); }
    Fallo Abre(const QString &ruta) override;
    Fallo SetVoz(int numero) override;
    void SetVelocidad(int velocidad) override { m_voz.SetRate(velocidad); }
    void SetVolumen(int volumen) override { m_voz.SetVolume(volumen); }
    Fallo Habla(const QString &texto, int flags) override;
    void EsperaFinal() override { m_voz.WaitUntilDone(-1); }
    bool Incompleta() const override { return m_incompleta; }
    Fallo Cierra() override { return m_flujo.Close(); }
    void Cancela() override;

private:
    cEstadoVoz m_estado;  // the session's stays out of it
    cSalidaFichero m_salida;
    std::unique_ptr<CanalVoz> m_canal;
    SpVoice m_voz;
    SpFileStream m_flujo{m_salida};
    bool m_incompleta = false;
};

}  // namespace ondalis
