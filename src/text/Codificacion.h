// Plain text files: which encoding their bytes are in is decided once a file. Free functions without state, any thread.
#pragma once

#include <QByteArray>
#include <QString>

#include "settings/Fallo.h"

namespace ondalis {

inline constexpr qint64 kMaxFicheroTexto = qint64{32} * 1024 * 1024;  // bytes; a larger file is refused

// A byte-order mark (UTF-8, UTF-16) decides; else what is wholly valid UTF-8 is that; else Windows-1252, or IBM850 for
// a name that ends in ".asc", blind to case. `ruta` is only looked at for its ending.
QString TextoDeBytes(const QByteArray &bytes, const QString &ruta);

// Bytes of one code page, whatever they look like: IBM850, else Windows-1252.
QString DePaginaDeCodigos(const QByteArray &bytes, bool ibm850);

// True when the bytes can't be a text: a zero byte outside UTF-16.
bool EsBinario(const QByteArray &bytes);

// The whole text of a regular file. Failures: 53 for anything else than a regular file (a folder, a pipe and a dangling
// link are absent), 75 when it can't be read, 7 above kMaxFicheroTexto.
[[nodiscard]] Fallo LeeFicheroTexto(const QString &ruta, QString &texto);

}  // namespace ondalis
