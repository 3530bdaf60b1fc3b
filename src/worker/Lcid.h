// Language tags to hexadecimal language identifiers, as voice lists hold them. Pure table.
#pragma once

#include <string>
#include <string_view>

namespace ondalis {

// "40A;C0A" for "es"; region and variant are dropped if only the language is known; empty for an unknown language.
std::string LcidDeLengua(std::string_view bcp47);

// The tag of the first of a list of identifiers ("409;9" gives "en-us"), with its region where the table has one; of
// the language alone for a region that it hasn't; empty for an unknown language.
std::string IdiomaDeLcid(std::string_view lcids);

}  // namespace ondalis
