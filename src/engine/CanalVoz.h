// One live voice as the speech controls see it: a channel that takes one utterance at a time and tells what was heard.
// The worker client implements it; tests put a scripted one in its place. No Qt.
#pragma once

#include <cstdint>
#include <string>

#include "engine/Locucion.h"

namespace ondalis {

// What a file that lacks a part of its text is told with.
inline constexpr char16_t kFaltaTexto[] = u"El motor de voz no ha podido decir una parte del texto";

struct EventoMotor {
    enum class Tipo : std::uint8_t { Palabra, Marca, Fin, Aviso };
    std::uint64_t numero = 0;  // the utterance that it belongs to
    Tipo tipo = Tipo::Fin;
    std::uint32_t posicion = 0;  // Palabra: source offset, UTF-16 units, 0-based
    std::uint32_t longitud = 0;  // Palabra: length in the source
    bool perdida = false;        // Aviso: a part of the text is not spoken
    // Marca: its name. Aviso: a line for the log (a restart, a clause skipped). Fin: why the engine couldn't say the
    // text to its end, or nothing of it at all; empty otherwise, also where it skipped a clause.
    std::u16string texto;
};

// Called on the channel's own thread, never under a lock of the channel. May call the channel back.
class OyenteMotor {
public:
    virtual ~OyenteMotor() = default;
    virtual void EventoDeMotor(const EventoMotor &evento) = 0;
};

class CanalVoz {
public:
    virtual ~CanalVoz() = default;

    // Who hears of events; null for nobody. Set before the first utterance; when it returns after a change no call to
    // the former listener is under way or will come.
    virtual void SetOyente(OyenteMotor *oyente) = 0;

    // Drops whatever is sounding or waiting and speaks `locucion`; the channel is not paused any more. Returns at
    // once. Word events come when their sample is heard, then exactly one Fin when the last sample has been heard,
    // also without a worker, a device or any text; unless another Habla or Detiene comes first.
    virtual void Habla(Locucion locucion) = 0;

    // Silence at once; drops what is left. No Fin is owed any more. Harmless when idle.
    virtual void Detiene() = 0;

    // Freezes and unfreezes the sound at the sample reached. Harmless when repeated or idle.
    virtual void Pausa() = 0;
    virtual void Reanuda() = 0;
};

}  // namespace ondalis
