// UTF-8 and the UTF-16 of the utterance model. Pure functions, any thread. No Qt.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ondalis {

// The character at `pos`, which is left behind it; nothing, and `pos` as it was, when no shortest form of one stands
// there.
std::optional<char32_t> LeeUtf8(std::string_view bytes, std::size_t &pos);

void AnadeUtf16(std::u16string &texto, char32_t letra);

// U+FFFD for each byte that is no UTF-8.
std::u16string DeUtf8(std::string_view bytes);

// U+FFFD for half a surrogate pair.
std::string EnUtf8(std::u16string_view texto);

}  // namespace ondalis
