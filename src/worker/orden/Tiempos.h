// What a command engine tells of the times in its sound, and how its words are found there. Pure.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ondalis {

// A sound or a word that the program names, from its start to its end in seconds of the piece.
struct Dicho {
    std::string nombre;
    double inicio = 0, fin = 0;
    bool operator==(const Dicho &) const = default;
};

// "name:end" parted by blanks, one line a sentence, each line's seconds counted from its own beginning; the sound
// lasts `duracion` seconds. What the lines tell beyond that was left off at the end of each, alike. Nothing: not such
// lines, or of another sound.
std::optional<std::vector<Dicho>> LeeSegmentos(std::string_view texto, double duracion);

// "start word" a line; each lasts until the next one, the last until `duracion`. Nothing: not such lines.
std::optional<std::vector<Dicho>> LeePalabras(std::string_view texto, double duracion);

// The names of each word's sounds, one line a word; nothing when the lines aren't `n`.
std::optional<std::vector<std::vector<std::string>>> LeeSonidos(std::string_view texto, std::size_t n);

// The second at which each word begins: both rows joined in order so that the fewest names differ, as a word in its
// sentence isn't quite what it is alone. A word without a sound of its own begins with the next one. Nothing: they
// have too little in common to be the same text.
std::optional<std::vector<double>> IniciosDePalabras(const std::vector<Dicho> &dichos,
                                                     const std::vector<std::vector<std::string>> &palabras);

}  // namespace ondalis
