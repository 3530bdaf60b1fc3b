// The utterance model: what every tag dialect is turned into and what every engine receives. A value type without
// identity; the number gives it one. Plain data, no thread, no Qt.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ondalis {

// From text index `texto` on (until the next cut), the character at text index i comes from source index
// i - texto + origen. All indices are UTF-16 units. Cuts are ascending in both members.
struct Corte {
    std::uint32_t texto = 0;
    std::uint32_t origen = 0;
    bool operator==(const Corte &) const = default;
};

enum class TipoTramo : std::uint8_t {
    Texto,       // `texto` is spoken; `cortes` holds at least one cut, at text index 0
    Pausa,       // silence of `valor` milliseconds
    Marca,       // bookmark; `texto` is its name
    Velocidad,   // absolute: words a minute; relative: factor of the voice's speed (1 = back to it)
    Volumen,     // absolute: linear gain 0 to 1; relative: factor of the voice's gain
    Tono,        // absolute: hertz; relative: factor of the voice's pitch
    Voz,         // `texto` is the engine's voice identifier; empty = back to the utterance's voice
    Idioma,      // `texto` is a BCP 47 tag ("es", "en-US"); empty = back to the voice's language
    Deletreo,    // valor 1: letter by letter from here on; 0: words again
    Puntuacion,  // valor 1: signs are spoken by name; 0: not
    Enfasis,     // valor 1: stressed; 0: normal
    // Of a formant voice only; absolute, 0 to 100.
    Fluctuacion,
    Aspereza,
    Diafonia,
    TamCabeza,
};
inline constexpr TipoTramo kUltimoTipoTramo = TipoTramo::TamCabeza;

struct Tramo {
    TipoTramo tipo = TipoTramo::Texto;
    bool absoluto = false;  // Velocidad, Volumen, Tono only
    double valor = 0;
    std::u16string texto;
    std::vector<Corte> cortes;  // Texto only
    bool operator==(const Tramo &) const = default;
};

// What voice speaks, in the engine's own terms. `velocidad`, `tono` and the rest hold for the whole utterance; spans
// change them on the way.
struct ParametrosVoz {
    std::string motor;       // engine name inside the worker: "espeak"
    std::string voz;         // the engine's voice identifier or language file: "es", "roa/es"
    bool formantes = false;  // true: a voice is made of the five values below over the language of `voz`
    int velocidad = 170;     // words a minute
    double ganancia = 1.0;   // linear, 0 to 1
    int tono = 100;          // hertz, 40 to 422
    int fluctuacion = 50;    // 0 to 100, as are the next three
    int aspereza = 0;
    int diafonia = 0;
    int tamCabeza = 50;
    bool operator==(const ParametrosVoz &) const = default;
};

// One utterance. `numero` is never reused in a process; 0 is no utterance.
struct Locucion {
    std::uint64_t numero = 0;
    ParametrosVoz voz;
    std::vector<Tramo> tramos;
    std::uint32_t desde = 0;  // source offset: text before it is not spoken, but the tags before it act
    bool operator==(const Locucion &) const = default;
};

}  // namespace ondalis
