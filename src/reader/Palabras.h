// Text helpers of the reading: what the word-walking functions take, and the trims and cuts by blanks and by length.
// Stateless.
#pragma once

#include <QString>
#include <string>

namespace ondalis {

// One byte for each UTF-16 unit: its Windows-1252 code, else "?". Positions in the result are those in `texto`. Also a
// NUL becomes "?", since the result is read up to its first NUL.
std::string BytesDePalabras(const QString &texto);

// `texto` without the blanks (and only the blanks) at both ends.
QString SinBlancos(const QString &texto);

// The first `maximo` units of `texto`, one fewer where the cut would split a surrogate pair.
QString Primeros(const QString &texto, qsizetype maximo);

}  // namespace ondalis
