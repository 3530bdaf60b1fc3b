#include "text/cBloquesTexto.h"

#include <QStringDecoder>
#include <algorithm>

#include "settings/cGeneral.h"
#include "text/Codificacion.h"

namespace ondalis {

namespace {

bool Continua(char byte) { return (static_cast<unsigned char>(byte) & 0xC0u) == 0x80u; }

// How many bytes the character takes that begins so.
qsizetype LargoUtf8(char primero) {
    const auto byte = static_cast<unsigned char>(primero);
    return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

qsizetype HastaFronteraUtf8(QByteArrayView bytes) {
    for (qsizetype i = bytes.size() - 1; i >= 0 && i >= bytes.size() - 4; --i)
        if (!Continua(bytes[i])) return i + LargoUtf8(bytes[i]) > bytes.size() ? i : bytes.size();
    return bytes.size();
}

}  // namespace

Fallo cBloquesTexto::Abre(const QString &ruta) {
    m_final = true;
    m_validos = 0;
    m_fallo = {};
    if (!cGeneral::ExisteFichero(ruta)) return Fallo::De(Fallo::FicheroNoEncontrado);
    m_fichero.close();
    m_fichero.setFileName(ruta);
    if (!m_fichero.open(QIODevice::ReadOnly)) return Fallo::De(Fallo::ErrorDeAcceso);
    m_forma = DecideForma(ruta);
    if (!m_fichero.seek(0)) return Fallo::De(Fallo::ErrorDeAcceso);
    const qint64 longitud = m_fichero.size();
    m_memoria = QByteArray(std::min(longitud, kMayorIndice) + 1, '\0');
    m_final = longitud == 0;
    return {};
}

cBloquesTexto::Forma cBloquesTexto::DecideForma(const QString &ruta) {
    const QByteArray marca = m_fichero.peek(3);
    if (marca.startsWith("\xFF\xFE")) return Forma::Utf16LE;
    if (marca.startsWith("\xFE\xFF")) return Forma::Utf16BE;
    if (marca == "\xEF\xBB\xBF" || TodoUtf8()) return Forma::Utf8;
    return ruta.endsWith(QLatin1String(".asc"), Qt::CaseInsensitive) ? Forma::Ibm850 : Forma::Windows1252;
}

bool cBloquesTexto::TodoUtf8() {
    QByteArray resto;
    for (;;) {
        const QByteArray leidos = m_fichero.read(kMayorIndice);
        if (leidos.isEmpty()) return resto.isEmpty();
        const QByteArray bytes = resto + leidos;
        const qsizetype enteros = HastaFronteraUtf8(bytes);
        if (!QUtf8StringView(bytes.constData(), enteros).isValidUtf8()) return false;
        resto = bytes.mid(enteros);
    }
}

bool cBloquesTexto::Siguiente(QString &bloque) {
    if (m_final) return false;
    const qint64 leidos = m_fichero.read(m_memoria.data(), m_memoria.size());
    if (leidos < 0) {
        m_final = true;
        m_fallo = Fallo::De(Fallo::ErrorDeAcceso);
        return false;
    }
    if (leidos == m_memoria.size()) {
        m_validos = HastaFrontera(m_memoria);
        if (m_validos < leidos && !m_fichero.seek(m_fichero.pos() - (leidos - m_validos))) m_validos = leidos;
        bloque = Texto(m_memoria.left(m_validos));
        return true;
    }
    m_final = true;
    bloque = Texto(m_memoria.left(leidos));
    const qsizetype desde = DesdeFrontera(m_memoria, leidos);
    if (desde < m_validos) bloque += Texto(m_memoria.mid(desde, m_validos - desde));
    return true;
}

qsizetype cBloquesTexto::HastaFrontera(QByteArrayView bytes) const {
    switch (m_forma) {
        case Forma::Utf8: return HastaFronteraUtf8(bytes);
        case Forma::Utf16LE:
        case Forma::Utf16BE: {
            const qsizetype pares = bytes.size() & ~qsizetype{1};
            const char alto = pares < 2 ? '\0' : bytes[m_forma == Forma::Utf16LE ? pares - 1 : pares - 2];
            return (static_cast<unsigned char>(alto) & 0xFCu) == 0xD8u ? pares - 2 : pares;
        }
        case Forma::Windows1252:
        case Forma::Ibm850: break;
    }
    return bytes.size();
}

// The first whole character of the old block that begins at `desde` or behind it.
qsizetype cBloquesTexto::DesdeFrontera(QByteArrayView bytes, qsizetype desde) const {
    switch (m_forma) {
        case Forma::Utf8:
            while (desde < m_validos && Continua(bytes[desde])) ++desde;
            return desde;
        case Forma::Utf16LE:
        case Forma::Utf16BE: {
            desde += desde & 1;
            if (desde + 2 > m_validos) return desde;
            const char alto = bytes[m_forma == Forma::Utf16LE ? desde + 1 : desde];
            return (static_cast<unsigned char>(alto) & 0xFCu) == 0xDCu ? desde + 2 : desde;
        }
        case Forma::Windows1252:
        case Forma::Ibm850: break;
    }
    return desde;
}

QString cBloquesTexto::Texto(const QByteArray &bytes) const {
    switch (m_forma) {
        case Forma::Utf8: return QString::fromUtf8(bytes);
        case Forma::Utf16LE: return QStringDecoder(QStringDecoder::Utf16LE).decode(bytes);
        case Forma::Utf16BE: return QStringDecoder(QStringDecoder::Utf16BE).decode(bytes);
        case Forma::Windows1252: return DePaginaDeCodigos(bytes, false);
        case Forma::Ibm850: return DePaginaDeCodigos(bytes, true);
    }
    return {};
}

}  // namespace ondalis
