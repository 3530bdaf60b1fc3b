// The texts that the ECI operations take: bytes of one call in, UTF-16 out. Pure functions, any thread. No Qt.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ondalis {

// Behind a UTF-8 byte-order mark, which isn't part of the text, UTF-8 with U+FFFD for each byte that is none; what is
// wholly valid UTF-8 is that; else Windows-1252, whose five codes without a character stay what they are.
std::u16string TextoDeECI(std::string_view bytes);

// Without what a selection of the languages 13, 14, 15 and 9 written with the digit one in place of the letter leaves
// at the head of a text: "`115.0" straight before another annotation. It was meant as an annotation and isn't said.
std::u16string_view SinLenguaMalEscrita(std::u16string_view texto);

// True when the text's end is an annotation: digits that come behind it in another call aren't its own.
bool AcabaEnAnotacion(std::u16string_view texto);

// At most `maximo` bytes of a UTF-8 text, cut at a character's border.
std::string_view CortaUtf8(std::string_view texto, std::size_t maximo);

}  // namespace ondalis
