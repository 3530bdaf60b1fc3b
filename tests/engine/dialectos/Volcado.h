// Spans as lines of text, for comparison and for messages.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "engine/Locucion.h"

namespace ondalis {

std::u16string De8(std::string_view utf8);
std::string A8(std::u16string_view texto);

// One line a span: `Texto "a<b" 0>0 2>5`, `Pausa 500`, `Velocidad abs 200`, `Marca "1"`.
std::string Vuelca(const std::vector<Tramo> &tramos);

// All text spans joined, as an engine would hear them.
std::u16string Hablado(const std::vector<Tramo> &tramos);

// The source index of index `i` of a text span.
std::size_t Origen(const Tramo &tramo, std::size_t i);

bool &ActualizaTablas();

}  // namespace ondalis
