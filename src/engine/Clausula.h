// Where clauses end in the source of an utterance: what is skipped when a piece of text kills the engine. Pure. No Qt.
#pragma once

#include <cstdint>
#include <optional>

#include "engine/Locucion.h"

namespace ondalis {

// The source offset just behind the end of the clause that holds the next letter or digit at or behind source offset
// `desde`; nothing when no letter or digit is left. A clause ends behind a sign of .,;:?!… (and the closing signs that
// follow it) before a blank, at a line end, at the end of the text, and, so that a text without signs isn't lost as a
// whole, at the first blank after kMaxClausula units.
std::optional<std::uint32_t> FinDeClausula(const Locucion &locucion, std::uint32_t desde);

inline constexpr std::uint32_t kMaxClausula = 400;

}  // namespace ondalis
