#include "worker/Caracteres.h"

#include <algorithm>
#include <array>

namespace ondalis {

namespace {

struct Composicion {
    char32_t acento;
    std::u32string_view bases, compuestos;
};

// Texts from macOS and from PDF files come decomposed, which the engine would read as a letter and an accent's name.
constexpr std::array kComposiciones{
    Composicion{0x300, U"AEIOUaeiouNn", U"ÀÈÌÒÙàèìòùǸǹ"},
    Composicion{0x301, U"AEIOUYaeiouyCcLlNnRrSsZz", U"ÁÉÍÓÚÝáéíóúýĆćĹĺŃńŔŕŚśŹź"},
    Composicion{0x302, U"AEIOUaeiouCcGgHhJjSsWwYy", U"ÂÊÎÔÛâêîôûĈĉĜĝĤĥĴĵŜŝŴŵŶŷ"},
    Composicion{0x303, U"ANOanoIiUu", U"ÃÑÕãñõĨĩŨũ"},
    Composicion{0x304, U"AEIOUaeiou", U"ĀĒĪŌŪāēīōū"},
    Composicion{0x306, U"AaGgUu", U"ĂăĞğŬŭ"},
    Composicion{0x307, U"CcEeGgIZz", U"ĊċĖėĠġİŻż"},
    Composicion{0x308, U"AEIOUaeiouyY", U"ÄËÏÖÜäëïöüÿŸ"},
    Composicion{0x30A, U"AaUu", U"ÅåŮů"},
    Composicion{0x30B, U"OoUu", U"ŐőŰű"},
    Composicion{0x30C, U"CcDdEeNnRrSsTtZz", U"ČčĎďĚěŇňŘřŠšŤťŽž"},
    Composicion{0x327, U"CcSsTt", U"ÇçŞşŢţ"},
    Composicion{0x328, U"AaEeIiUu", U"ĄąĘęĮįŲų"},
};

}  // namespace

PuntoCodigo LeePunto(std::u16string_view texto, std::size_t i) {
    const char32_t c = texto[i];
    if (c < 0xD800 || c > 0xDFFF) return {c, 1, false};
    if (c < 0xDC00 && i + 1 < texto.size() && texto[i + 1] >= 0xDC00 && texto[i + 1] <= 0xDFFF)
        return {0x10000 + ((c - 0xD800) << 10) + (texto[i + 1] - 0xDC00u), 2, false};
    return {c, 1, true};
}

void AnadeUtf8(std::string &destino, char32_t c) {
    const auto pon = [&destino](char32_t byte) { destino.push_back(static_cast<char>(byte)); };
    if (c < 0x80) return pon(c);
    if (c < 0x800) {
        pon(0xC0 | c >> 6);
    } else {
        if (c < 0x10000) {
            pon(0xE0 | c >> 12);
        } else {
            pon(0xF0 | c >> 18);
            pon(0x80 | (c >> 12 & 0x3F));
        }
        pon(0x80 | (c >> 6 & 0x3F));
    }
    pon(0x80 | (c & 0x3F));
}

bool EsBlanco(char32_t c) {
    return c <= 0x20 || (c >= 0x7F && c <= 0xA0) || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x2028 ||
           c == 0x2029 || c == 0x202F || c == 0x205F || c == 0x3000;
}

bool EsSignoMudo(char32_t c) {
    constexpr std::u32string_view kSignos = U".,;:!?¿¡()[]{}\"'«»“”„‘’‚‹›-‐‑‒–—―…·_`´^~|\\/¨•";
    return kSignos.find(c) != std::u32string_view::npos;
}

bool EsCombinable(char32_t c) { return c >= 0x300 && c <= 0x36F; }

bool EsAlfanumerico(char32_t c) {
    if (c < 0x80) return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    if (c < 0xC0) return c == 0xAA || c == 0xB5 || c == 0xBA;
    return EsDePalabra(c) && c != 0xD7 && c != 0xF7 && !(c >= 0x2010 && c <= 0x2BFF);
}

bool EsInvisible(char32_t c) {
    return c == 0xAD || c == 0x200B || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) || c == 0x2060 ||
           (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF;
}

char32_t Compone(char32_t base, char32_t acento) {
    const auto c = std::find_if(kComposiciones.begin(), kComposiciones.end(),
                                [acento](const Composicion &una) { return una.acento == acento; });
    if (c == kComposiciones.end()) return 0;
    const std::size_t i = c->bases.find(base);
    return i == std::u32string_view::npos ? 0 : c->compuestos[i];
}

}  // namespace ondalis
