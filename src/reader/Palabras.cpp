#include "reader/Palabras.h"

#include <algorithm>
#include <array>

namespace ondalis {

namespace {

// Windows-1252 from 0x80 to 0x9F; 0 where the code page has no character.
constexpr std::array<char16_t, 32> kAltos = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                             0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                             0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                             0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char ByteDe(char16_t unidad) {
    if ((unidad > 0 && unidad < 0x80) || (unidad >= 0xA0 && unidad <= 0xFF)) return static_cast<char>(unidad);
    if (unidad >= 0x152) {
        const auto *alto = std::find(kAltos.begin(), kAltos.end(), unidad);
        if (alto != kAltos.end()) return static_cast<char>(0x80 + (alto - kAltos.begin()));
    }
    return '?';
}

}  // namespace

std::string BytesDePalabras(const QString &texto) {
    std::string bytes(static_cast<std::size_t>(texto.size()), '?');
    std::transform(texto.utf16(), texto.utf16() + texto.size(), bytes.begin(),
                   [](ushort unidad) { return ByteDe(unidad); });
    return bytes;
}

QString SinBlancos(const QString &texto) {
    qsizetype desde = 0;
    qsizetype hasta = texto.size();
    while (desde < hasta && texto[desde] == QLatin1Char(' ')) ++desde;
    while (hasta > desde && texto[hasta - 1] == QLatin1Char(' ')) --hasta;
    return texto.mid(desde, hasta - desde);
}

QString Primeros(const QString &texto, qsizetype maximo) {
    if (texto.size() <= maximo) return texto;
    if (maximo > 0 && texto[maximo - 1].isHighSurrogate() && texto[maximo].isLowSurrogate()) --maximo;
    return texto.left(maximo);
}

}  // namespace ondalis
