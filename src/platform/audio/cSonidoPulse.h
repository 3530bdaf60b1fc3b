// Notice sounds on the sound server, each on a stream of its own beside the voice. Owned by main; called from the main
// thread, finishes on the server loop's.
#pragma once

#include <list>

#include "desktop/cSonido.h"
#include "platform/audio/cServidorPulse.h"

namespace ondalis {

class cSonidoPulse final : public SalidaSonido {
public:
    explicit cSonidoPulse(cServidorPulse &servidor);
    // Sounds under way are dropped.
    ~cSonidoPulse() override;
    cSonidoPulse(const cSonidoPulse &) = delete;
    cSonidoPulse &operator=(const cSonidoPulse &) = delete;

    // Also false for what isn't a 16-bit PCM WAV file. `alTerminar` mustn't call back.
    bool Reproduce(const QByteArray &wav, std::function<void()> alTerminar) override;

private:
    struct Sonido {
        pa_stream *flujo = nullptr;
        QByteArray wav;
        qsizetype inicio = 0;  // of the samples in `wav`
        qsizetype bytes = 0;
        bool escrito = false;
        std::function<void()> alTerminar;  // empty once it has been called

        void Termina();
    };

    static void AlCambiar(pa_stream *flujo, void *datos);
    void Barre();

    cServidorPulse &m_servidor;
    int m_suscripcion = 0;
    std::list<Sonido> m_sonidos;  // under the loop's lock; those that have ended go at the next call
};

}  // namespace ondalis
