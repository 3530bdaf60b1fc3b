// Languages by their locale number (LCID), as the XML dialect names them. Pure functions.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ondalis {

// The number of a text of hexadecimal digits, with or without "0x"; of a list "409;9" the first. Nothing: it isn't one.
std::optional<std::uint32_t> LeeLcid(std::u16string_view texto);

// The BCP 47 tag ("es", "en-US"); empty: unknown.
std::u16string IdiomaDeLcid(std::uint32_t lcid);

}  // namespace ondalis
