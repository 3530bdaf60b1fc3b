// When the words of a piece begin in what a program has said of it, from whatever tells of that. Pure.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "worker/PiezaTexto.h"
#include "worker/orden/Onda.h"

namespace ondalis {

// Without control characters, and without blanks in front: what a program that reads line by line takes for one text.
std::string EnUnaLinea(std::string texto);

// The program's own text of each word, with the signs behind it.
std::vector<std::string> PalabrasDe(const Pieza &pieza);

// Each gives the second at which each word begins, ascending; nothing when what is told isn't of this piece and sound.
// `segmentos`: the sounds of the whole; `sonidos`: those of each word alone.
std::optional<std::vector<double>> PorSegmentos(std::string_view segmentos, std::string_view sonidos, double duracion,
                                                const Pieza &pieza);
std::optional<std::vector<double>> PorPalabras(std::string_view texto, double duracion, const Pieza &pieza);
// `patron`: what the pattern's process wrote.
std::optional<std::vector<double>> PorPatron(std::span<const std::uint8_t> patron, const Onda &onda,
                                             const Pieza &pieza);

}  // namespace ondalis
