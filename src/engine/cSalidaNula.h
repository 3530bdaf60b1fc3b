// The output that nobody hears: a clock takes the samples at their rate, so that words and ends come as they would with
// a device. Used when there is no sound server. One thread.
#pragma once

#include "engine/Reloj.h"
#include "engine/SalidaAudio.h"

namespace ondalis {

class cSalidaNula final : public SalidaAudio {
public:
    explicit cSalidaNula(const Reloj &reloj) : m_reloj(reloj) {}

    // Room never runs out and the stream never dies: there is nothing to wake anybody for.
    void SetDespertador(std::function<void()>) override {}
    bool Abre(int hz) override;
    bool Viva() const override { return m_hz > 0; }
    std::size_t Escribe(const std::int16_t *muestras, std::size_t n) override;
    void Completa() override {}
    std::uint64_t Oidas() override;
    void Pausa(bool enPausa) override;
    void Vacia() override;
    void Reposa() override {}

private:
    const Reloj &m_reloj;
    int m_hz = 0;
    bool m_pausa = false;
    std::uint64_t m_escritas = 0;
    std::uint64_t m_base = 0;             // samples heard at m_desde
    std::chrono::nanoseconds m_desde{0};  // since when the clock takes samples
};

}  // namespace ondalis
