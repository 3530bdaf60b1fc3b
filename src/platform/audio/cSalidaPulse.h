// The live voice's stream on the sound server. The loop of cServidorPulse calls back; everything else is the player's
// thread. Owned by main and outlives the channel that plays on it.
#pragma once

#include <deque>
#include <utility>

#include "engine/SalidaAudio.h"
#include "platform/audio/cServidorPulse.h"

namespace ondalis {

class cSalidaPulse final : public SalidaAudio {
public:
    // `nombre` is what mixers show. `dispositivo`: a sink's name; empty: the default one.
    cSalidaPulse(cServidorPulse &servidor, std::string nombre, std::string dispositivo = {});
    ~cSalidaPulse() override;
    cSalidaPulse(const cSalidaPulse &) = delete;
    cSalidaPulse &operator=(const cSalidaPulse &) = delete;

    void SetDespertador(std::function<void()> despierta) override;
    bool Abre(int hz) override;
    bool Viva() const override;
    std::size_t Escribe(const std::int16_t *muestras, std::size_t n) override;
    void Completa() override;
    std::uint64_t Oidas() override;
    void Pausa(bool enPausa) override;
    void Vacia() override;
    void Reposa() override;

private:
    bool Lista() const;
    void Suelta();
    std::uint64_t TopeDelReloj() const;
    bool Crea(pa_context *contexto, int hz);
    void Tapona(bool taponada);
    void VaciaFlujo();
    void PideTiempos();
    void Despierta() const {
        if (m_despierta) m_despierta();
    }

    cServidorPulse &m_servidor;
    const std::string m_nombre;
    const std::string m_dispositivo;
    int m_suscripcion = 0;
    // Under the loop's lock:
    std::function<void()> m_despierta;
    pa_stream *m_flujo = nullptr;
    int m_hz = 0;
    bool m_taponada = true;  // corked: what was asked of the server last
    bool m_pausa = false;
    pa_operation *m_tiempos = nullptr;  // the last request for the server's positions
    pa_usec_t m_tiemposDesde = 0;       // when it was made
    std::uint64_t m_escritas = 0;       // since the last flush
    std::uint64_t m_oidas = 0;
    // When the sound began to move last and where it stood: it can't be ahead of the clock from there.
    pa_usec_t m_salidaEn = 0;
    std::uint64_t m_salidaDesde = 0;
    // Silence put behind what is to be played to its end: {samples before it, its length}.
    std::deque<std::pair<std::uint64_t, std::uint64_t>> m_rellenos;
};

}  // namespace ondalis
