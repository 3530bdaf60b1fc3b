// A stretch of a span's text made ready for eSpeak NG: short, in its encoding, without the runs that kill it, and with
// the way back from each of its characters to the text. Pure.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "worker/Signos.h"

namespace ondalis {

// A word as listeners count them: where the engine's characters and the text hold it, ends excluded.
struct Ficha {
    std::uint32_t inicioMotor = 0;      // first character, code points of the engine's text
    std::uint32_t nucleoMotor = 0;      // first letter or digit of it, where the engine may signal it too
    std::uint32_t inicio = 0, fin = 0;  // UTF-16 indices of the span's text
    bool trasAbreviatura = false;       // the word before ends in its only full stop
    bool operator==(const Ficha &) const = default;
};

struct OpcionesPieza {
    LenguaSignos lengua = LenguaSignos::Ninguna;
    bool signosSueltos = false;  // the filter's signs are named when they stand alone between blanks
    bool signos = false;         // every sign with a name in `lengua` is named
};

// Characters of the engine's text in a piece. Its positions run over at 2048 where it speaks punctuation.
inline constexpr std::size_t kMaxPieza = 1900;

struct Pieza {
    std::string utf8;
    std::size_t caracteres = 0;  // of utf8, in code points
    std::vector<Ficha> fichas;
    bool hablable = false;      // holds something that sounds
    std::size_t siguiente = 0;  // index of the text where the next piece begins
};

// Makes the piece that begins at text index `inicio`, which is below the length. Ends at a paragraph, else a sentence,
// else a blank; takes the whole text if it fits.
Pieza HazPieza(std::u16string_view texto, std::size_t inicio, const OpcionesPieza &opciones);

}  // namespace ondalis
