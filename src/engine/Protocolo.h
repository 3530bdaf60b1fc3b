// The framed protocol between the reader and its engine worker: one pure codec for both sides. A frame is a 32-bit
// little-endian length of what follows, a type byte, and the fields in the order below: integers little-endian, numbers
// with a fraction as IEEE 754 doubles, texts as a 32-bit count and their units. No socket and no thread in here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "engine/Locucion.h"

namespace ondalis {

// Reader to worker.
struct TramaHabla {  // speak this; an utterance under way is dropped first
    Locucion locucion;
    bool operator==(const TramaHabla &) const = default;
};
struct TramaPara {  // drop utterance `numero`; the worker answers nothing
    std::uint64_t numero = 0;
    bool operator==(const TramaPara &) const = default;
};
struct TramaPideVoces {  // answered by one TramaVoz a voice, a TramaError 0 for what can't be one, and a TramaFin 0
    bool operator==(const TramaPideVoces &) const = default;
};

// Worker to reader.
struct TramaFormato {  // before the first PCM of each utterance; again, unchanged: the engine is at work
    std::uint64_t numero = 0;
    std::uint32_t hercios = 0;  // 8000 to 48000
    bool operator==(const TramaFormato &) const = default;
};
struct TramaPcm {  // mono samples that follow those before; at most kMaxMuestrasPcm
    std::uint64_t numero = 0;
    std::vector<std::int16_t> muestras;
    bool operator==(const TramaPcm &) const = default;
};
struct TramaPalabra {  // comes before the PCM that holds its sample
    std::uint64_t numero = 0;
    std::uint64_t muestra = 0;   // from the utterance's first sample in this worker
    std::uint32_t posicion = 0;  // source offset, UTF-16 units
    std::uint32_t longitud = 0;
    bool operator==(const TramaPalabra &) const = default;
};
struct TramaMarca {
    std::uint64_t numero = 0;
    std::uint64_t muestra = 0;
    std::u16string nombre;
    bool operator==(const TramaMarca &) const = default;
};
struct TramaFin {  // nothing more of this utterance
    std::uint64_t numero = 0;
    bool operator==(const TramaFin &) const = default;
};
struct TramaError {  // the engine refuses the utterance or its voice, or, with number 0, a description; a Fin follows
    std::uint64_t numero = 0;
    std::string texto;
    bool operator==(const TramaError &) const = default;
};
struct TramaVoz {                                        // one voice of the worker's engines
    std::string motor, voz, nombre, lengua, fabricante;  // lengua: "40A;C0A", hexadecimal LCIDs
    std::uint32_t plazoMs = 0;                           // the engine's own limit to its first answer
    std::string genero = {}, edad = {};                  // as SAPI 5 names them ("Male", "Adult"); empty: not told
    bool operator==(const TramaVoz &) const = default;
};

using Trama = std::variant<TramaHabla, TramaPara, TramaPideVoces, TramaFormato, TramaPcm, TramaPalabra, TramaMarca,
                           TramaFin, TramaError, TramaVoz>;

inline constexpr std::size_t kMaxMuestrasPcm = 8192;
inline constexpr std::size_t kMaxTrama = std::size_t{256} * 1024 * 1024;  // bytes; a longer one is garbage

// Bytes of a TramaHabla with that utterance, rounded up; over kMaxTrama it can't be sent.
std::size_t TamanoDeHabla(const Locucion &locucion);

// Appends the frame to `destino`.
void Codifica(const Trama &trama, std::vector<std::uint8_t> &destino);

// Takes bytes as they come and gives frames. Once it has met garbage (an unknown type, a length that doesn't fit its
// fields, a frame over the limit) it stays broken: the connection is to be dropped. Allocates only for bytes that came.
class Descodificador {
public:
    void Alimenta(std::span<const std::uint8_t> bytes);
    std::optional<Trama> Siguiente();
    bool Roto() const { return m_roto; }

private:
    std::vector<std::uint8_t> m_bytes;
    std::size_t m_leidos = 0;
    bool m_roto = false;
};

}  // namespace ondalis
