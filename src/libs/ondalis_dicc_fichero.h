// The dictionary's file: UTF-8 text, a line "ondalis-diccionario 1", then one entry a line, text and conversion with a
// tab between, and \\ \t \n \r for those four characters inside them; the last line ends with its line end like all
// others. Functions without state.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ondalis {

struct EntradaDicc {
    std::string clave, conversion;
    bool operator==(const EntradaDicc &) const = default;
};

// What an entry has to be to go in and come back whole: valid UTF-8, no NUL, each text short enough for its buffer and
// the key not empty.
bool EsEntradaValida(std::string_view clave, std::string_view conversion);

enum class LecturaDicc {
    Leido,
    Ausente,  // no such file, or one that can't be read: it stays where it is
    Danado,   // not such a file: it has been moved aside as "<path>.roto", ".roto.1", ...
};

// `entradas` is filled only with Leido.
LecturaDicc LeeFicheroDicc(const std::string &ruta, std::vector<EntradaDicc> &entradas);

// Whole or not at all: a failure leaves the old file as it was and nothing beside it. Follows a link to the real file
// and keeps its permissions. A file there that may not be read is moved aside first, as a damaged one is.
[[nodiscard]] bool EscribeFicheroDicc(const std::string &ruta, const std::vector<EntradaDicc> &entradas);

}  // namespace ondalis
