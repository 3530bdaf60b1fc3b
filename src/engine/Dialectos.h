// The tag dialects: marked text in, spans of the utterance model out. Pure functions without state, any thread, linear
// in the text's length. Offsets are UTF-16 units of the text given, tags included; no text is ever searched again.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "engine/Locucion.h"

namespace ondalis {

inline constexpr double kVolumenMaximoBarra = 65535;      // \Vol= of this value is gain 1
inline constexpr double kPausaMaximaMs = 60 * 60 * 1000;  // longer pauses of any dialect saturate here
inline constexpr std::size_t kMaxRequisitoVoz = 256;      // units; a longer requirement is cut there
inline constexpr char16_t kSeparaDeseos = u'|';           // between a voice's requirements and its wishes

// No tags at all: the text as it stands. Empty text: no span.
std::vector<Tramo> TextoLlano(std::u16string_view texto);

// The backslash tags of the live control, names blind to case, numbers saturating:
//   \Pau=ms\ pause   \Spd=n\ words a minute, 70 to 450   \Vol=n\ 0 to 65535, linear   \Pit=n\ hertz, 40 to 422
//   \Mrk=n\ bookmark, its name the number in decimal
// Speed, volume and pitch are absolute and hold to the end. Whatever isn't wholly such a tag is text. Never fails.
std::vector<Tramo> AnalizaBarra(std::u16string_view texto);

// The backquote annotations of the ECI interface:
//   `lN.D  language and dialect ("2.0"; the dialect may be missing: 0)   `vN  preset voice 1, 2, 3, 7 or 8 of the
//   language, with that voice's own five values   `vsN  words a minute, 70 to 450   `vvN  volume 0 to 65000, linear
//   `vbN  pitch, hertz, 40 to 422   `vfN `vrN `vyN `vhN  fluctuation, roughness, breathiness, head size, 0 to 100
//   `` a backquote
// They hold from where they stand to the end. Numbers are decimal with an optional minus and saturate. An annotation is
// over with its number: what follows at once is text. Whatever isn't wholly such an annotation is text; a language or
// preset without a voice of ours changes nothing. `l gives the language's preset 1 unless a `v holds already. Never
// fails.
std::vector<Tramo> AnalizaComilla(std::u16string_view texto);

// The XML of SAPI 5: silence, rate, volume, pitch, voice, bookmark, spell, emph, lang; partofsp, context, pron and sapi
// are known and have no effect; comments, CDATA sections, the predefined entities and character references. Names are
// blind to case. A `<` or `&` that begins nothing of these is text; an element still open closes at the text's end; a
// closing tag without its opening is ignored; an empty rate, volume, pitch, voice or lang holds until its kind's
// enclosing element closes, else to the end. nullopt: a known tag whose attributes are missing, malformed or not of
// their form.
//   rate, pitch, volume -> relative factors: 3^(speed/10), 2^(middle/24), level/100; nested speeds and middles add up
//   voice -> Voz with the text of `required`, and behind a kSeparaDeseos that of `optional` where there is one, for the
//            caller to turn into an identifier; its end gives the outer text again, or the empty one
//   lang  -> Idioma with the tag of the hexadecimal LCID; one that is unknown changes nothing
[[nodiscard]] std::optional<std::vector<Tramo>> AnalizaXml(std::u16string_view texto);

}  // namespace ondalis
