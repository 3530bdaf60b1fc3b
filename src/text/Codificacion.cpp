#include "text/Codificacion.h"

#include <QFile>
#include <QStringDecoder>
#include <array>

#include "settings/cGeneral.h"

namespace ondalis {

namespace {

// Windows-1252 from 0x80 to 0x9F; the five codes without a character stay what they are.
constexpr std::array<char16_t, 32> kWindows1252 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                   0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// IBM850 from 0x80 on.
constexpr std::array<char16_t, 128> kIbm850 = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7, 0x00EA, 0x00EB, 0x00E8, 0x00EF, 0x00EE,
    0x00EC, 0x00C4, 0x00C5, 0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9, 0x00FF, 0x00D6,
    0x00DC, 0x00F8, 0x00A3, 0x00D8, 0x00D7, 0x0192, 0x00E1, 0x00ED, 0x00F3, 0x00FA, 0x00F1, 0x00D1, 0x00AA,
    0x00BA, 0x00BF, 0x00AE, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB, 0x2591, 0x2592, 0x2593, 0x2502,
    0x2524, 0x00C1, 0x00C2, 0x00C0, 0x00A9, 0x2563, 0x2551, 0x2557, 0x255D, 0x00A2, 0x00A5, 0x2510, 0x2514,
    0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x00E3, 0x00C3, 0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550,
    0x256C, 0x00A4, 0x00F0, 0x00D0, 0x00CA, 0x00CB, 0x00C8, 0x0131, 0x00CD, 0x00CE, 0x00CF, 0x2518, 0x250C,
    0x2588, 0x2584, 0x00A6, 0x00CC, 0x2580, 0x00D3, 0x00DF, 0x00D4, 0x00D2, 0x00F5, 0x00D5, 0x00B5, 0x00FE,
    0x00DE, 0x00DA, 0x00DB, 0x00D9, 0x00FD, 0x00DD, 0x00AF, 0x00B4, 0x00AD, 0x00B1, 0x2017, 0x00BE, 0x00B6,
    0x00A7, 0x00F7, 0x00B8, 0x00B0, 0x00A8, 0x00B7, 0x00B9, 0x00B3, 0x00B2, 0x25A0, 0x00A0};

bool MarcaUtf16(const QByteArray &bytes) { return bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF"); }

}  // namespace

QString DePaginaDeCodigos(const QByteArray &bytes, bool ibm850) {
    QString texto(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        char16_t letra = byte;
        if (ibm850 && byte >= 0x80) letra = kIbm850[byte - 0x80u];
        if (!ibm850 && byte >= 0x80 && byte < 0xA0) letra = kWindows1252[byte - 0x80u];
        texto[i] = QChar(letra);
    }
    return texto;
}

QString TextoDeBytes(const QByteArray &bytes, const QString &ruta) {
    if (MarcaUtf16(bytes)) {
        QStringDecoder utf16(QStringDecoder::Utf16);
        return utf16.decode(bytes);
    }
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString texto = utf8.decode(bytes);
    // A stateless end would hide a sequence that is cut short.
    texto += utf8.decode(QByteArrayView());
    const bool marcaUtf8 = bytes.startsWith("\xEF\xBB\xBF");
    if (marcaUtf8 || (!utf8.hasError() && QString::fromUtf8(bytes).toUtf8() == bytes)) return texto;
    return DePaginaDeCodigos(bytes, ruta.endsWith(QLatin1String(".asc"), Qt::CaseInsensitive));
}

bool EsBinario(const QByteArray &bytes) { return !MarcaUtf16(bytes) && bytes.contains('\0'); }

Fallo LeeFicheroTexto(const QString &ruta, QString &texto) {
    texto.clear();
    if (!cGeneral::ExisteFichero(ruta)) return Fallo::De(Fallo::FicheroNoEncontrado);
    QFile fichero(ruta);
    if (!fichero.open(QIODevice::ReadOnly)) return Fallo::De(Fallo::ErrorDeAcceso);
    // One byte more than allowed: a file may grow after it has been measured.
    const QByteArray bytes = fichero.read(kMaxFicheroTexto + 1);
    if (fichero.error() != QFileDevice::NoError) return Fallo::De(Fallo::ErrorDeAcceso);
    if (bytes.size() > kMaxFicheroTexto) return Fallo::De(Fallo::SinMemoria);
    texto = TextoDeBytes(bytes, ruta);
    return {};
}

}  // namespace ondalis
