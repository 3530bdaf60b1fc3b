// Where samples go: one mono 16-bit stream. platform/audio implements it on PulseAudio, engine has a clock-driven null
// output, tests a scripted one. Every operation returns at once; calls come from one thread (the player's). No Qt.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace ondalis {

class SalidaAudio {
public:
    virtual ~SalidaAudio() = default;

    // Called from any thread when room has come or the stream has died; must be set before Abre.
    virtual void SetDespertador(std::function<void()> despierta) = 0;

    // `asienta` returns when the orders that the channel has been given are carried out: nothing of a speech that was
    // stopped comes any more. For outputs that change their destination; set by the channel, null when it goes.
    virtual void SetAsentador(std::function<void()>) {}  // NOLINT(performance-unnecessary-value-param): some keep it

    // Prepares a stream of `hz`; positions count from 0 again. False when there is no server or it refuses.
    virtual bool Abre(int hz) = 0;

    // False once the server or the stream is gone; everything else is then harmless and does nothing.
    virtual bool Viva() const = 0;

    // Takes up to `n` samples and returns how many it took (0: no room).
    virtual std::size_t Escribe(const std::int16_t *muestras, std::size_t n) = 0;

    // No more samples are coming for now: what was written is to be played to its end although the buffer isn't full.
    virtual void Completa() = 0;

    // Samples heard since Abre or the last Vacia. Never goes back between those, never above what was written.
    virtual std::uint64_t Oidas() = 0;

    // Freezes or unfreezes the sound. A new or emptied stream is not frozen.
    virtual void Pausa(bool enPausa) = 0;

    // Silence at once: drops all that was written; positions count from 0 again.
    virtual void Vacia() = 0;

    // Nothing to play for a while: costs no wake-ups until the next Escribe.
    virtual void Reposa() = 0;
};

}  // namespace ondalis
