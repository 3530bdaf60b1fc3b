// The same text said by the engine at hand, whose sounds' times are known: what a program that tells none is measured
// against. It is made by a process of its own, so that nothing which kills this engine touches the other one's speech.
// Pure, but for DicePatron.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "worker/PiezaTexto.h"

namespace ondalis {

struct Patron {
    std::uint32_t hercios = 0;
    std::vector<std::int16_t> sonido;
    std::vector<double> inicios;  // second at which each word begins; ascending
};

// Numbers of the frames in which that process answers: those of the text (sound; words with their place as the engine
// signals it; a mark a phoneme, by its name) and those of its words (a mark each, with the names of the phonemes it has
// alone).
inline constexpr std::uint64_t kTramasFrase = 1, kTramasPalabras = 2;

// The arguments of the program that says a piece; nothing for a language that the engine isn't known to speak.
// `lengua`: hexadecimal identifiers ("40A;C0A").
std::optional<std::vector<std::string>> ArgumentosDePatron(std::string_view lengua, double palabrasMinuto);

// What it is to say: the piece on a line, then each of its words on one.
std::string TextoDePatron(const Pieza &pieza);

// What that program does: says the first line of its standard input and writes to standard output what it hears, and
// the phonemes of the other lines. Its exit code. `idioma` is a language tag.
int DicePatron(std::string_view idioma, int palabrasMinuto);

// Reads what it wrote. Nothing: it isn't whole, or doesn't hold the words of `pieza`.
std::optional<Patron> LeePatron(std::span<const std::uint8_t> bytes, const Pieza &pieza);

}  // namespace ondalis
