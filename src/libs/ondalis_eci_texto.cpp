#include "libs/ondalis_eci_texto.h"

#include <algorithm>
#include <array>

#include "engine/Utf8.h"

namespace ondalis {

namespace {

constexpr std::string_view kMarcaUtf8 = "\xEF\xBB\xBF";
constexpr char16_t kSustituto = u'\uFFFD';

// Windows-1252 from 0x80 to 0x9F.
constexpr std::array<char16_t, 32> kWindows1252 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                   0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

unsigned char Byte(char c) { return static_cast<unsigned char>(c); }
bool EsContinuacion(char c) { return (Byte(c) & 0xC0) == 0x80; }

}  // namespace

std::u16string TextoDeECI(std::string_view bytes) {
    const bool conMarca = bytes.starts_with(kMarcaUtf8);
    if (conMarca) bytes.remove_prefix(kMarcaUtf8.size());
    std::u16string texto;
    texto.reserve(bytes.size());
    std::size_t pos = 0;
    while (pos < bytes.size()) {
        if (const auto letra = LeeUtf8(bytes, pos)) {
            AnadeUtf16(texto, *letra);
        } else if (conMarca) {
            texto += kSustituto;
            ++pos;
        } else {
            break;
        }
    }
    if (pos == bytes.size()) return texto;
    texto.clear();
    for (const char c : bytes)
        texto += Byte(c) >= 0x80 && Byte(c) < 0xA0 ? kWindows1252[Byte(c) - 0x80u] : static_cast<char16_t>(Byte(c));
    return texto;
}

std::u16string_view SinLenguaMalEscrita(std::u16string_view texto) {
    for (const std::u16string_view escrita : {u"`115.0`", u"`114.0`", u"`113.0`", u"`19.0`"})
        if (texto.starts_with(escrita)) return texto.substr(escrita.size() - 1);
    return texto;
}

bool AcabaEnAnotacion(std::u16string_view texto) {
    const std::size_t comilla = texto.find_last_not_of(u"lvsbfryh-.0123456789");
    if (comilla == texto.npos || texto[comilla] != u'`' || texto.size() - comilla < 3) return false;
    return (texto[comilla + 1] == u'l' || texto[comilla + 1] == u'v') && texto.back() >= u'0' && texto.back() <= u'9';
}

std::string_view CortaUtf8(std::string_view texto, std::size_t maximo) {
    if (texto.size() <= maximo) return texto;
    while (maximo > 0 && EsContinuacion(texto[maximo])) --maximo;
    return texto.substr(0, maximo);
}

}  // namespace ondalis
