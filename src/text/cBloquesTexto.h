// A plain text file in the blocks in which a voice of the SAPI 5 family is fed with it, however long it is. The
// encoding is decided once for the whole file. Made for one reading. Any thread.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include "settings/Fallo.h"

namespace ondalis {

class cBloquesTexto {
public:
    static constexpr qint64 kMayorIndice = 500'000;  // of the buffer, which has one byte more

    // Failure 53 for anything else than a regular file, 75 when it can't be read.
    [[nodiscard]] Fallo Abre(const QString &ruta);
    // The next block; false at the end and after a failure. A block that would cut a character ends before it, and the
    // next one begins with it. The buffer is not cleared: what the last read doesn't fill is the tail of the block
    // before, spoken once more; after a block that ends with the file that is all of it. An empty file has no block.
    bool Siguiente(QString &bloque);
    const Fallo &Error() const { return m_fallo; }  // 75: the file could not be read on

private:
    enum class Forma { Utf8, Utf16LE, Utf16BE, Windows1252, Ibm850 };

    Forma DecideForma(const QString &ruta);
    bool TodoUtf8();
    qsizetype HastaFrontera(QByteArrayView bytes) const;  // bytes of whole characters
    qsizetype DesdeFrontera(QByteArrayView bytes, qsizetype desde) const;
    QString Texto(const QByteArray &bytes) const;

    QFile m_fichero;
    Forma m_forma = Forma::Utf8;
    QByteArray m_memoria;     // the buffer
    qsizetype m_validos = 0;  // bytes of whole characters in it
    bool m_final = true;
    Fallo m_fallo;
};

}  // namespace ondalis
