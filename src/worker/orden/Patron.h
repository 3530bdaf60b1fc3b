// The same text said by the engine at hand, whose words' times are known: what a program that tells none is measured
// against. It is made by a process of its own, so that nothing which kills this engine touches the other one's speech.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "worker/Motor.h"
#include "worker/PiezaTexto.h"

namespace ondalis {

struct Patron {
    std::uint32_t hercios = 0;
    std::vector<std::int16_t> sonido;
    std::vector<double> inicios;  // second at which each word begins; ascending
};

// The arguments of the program that says a piece; nothing for a language that the engine isn't known to speak.
// `lengua`: hexadecimal identifiers ("40A;C0A").
std::optional<std::vector<std::string>> ArgumentosDePatron(std::string_view lengua, double palabrasMinuto);

// What that program does: says its standard input and writes what it hears to standard output. Its exit code.
int DicePatron(Motor &motor, std::string_view lengua, int palabrasMinuto);

// Reads what it wrote. Nothing: it isn't whole, or doesn't hold the words of `pieza`.
std::optional<Patron> LeePatron(std::span<const std::uint8_t> bytes, const Pieza &pieza);

}  // namespace ondalis
