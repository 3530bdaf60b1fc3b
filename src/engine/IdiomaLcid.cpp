#include "engine/IdiomaLcid.h"

#include "engine/ConstructorTramos.h"

namespace ondalis {

namespace {

struct Fila {
    std::uint32_t lcid;
    std::u16string_view idioma;
};

// Where the region changes the pronunciation; a sub-language not listed speaks as its language alone.
constexpr Fila kRegiones[] = {
    {0x0404, u"zh-TW"}, {0x0409, u"en-US"}, {0x0416, u"pt-BR"}, {0x0804, u"zh-CN"},
    {0x0809, u"en-GB"}, {0x080A, u"es-MX"}, {0x0816, u"pt-PT"}, {0x0C0C, u"fr-CA"},
};

// By the primary language, the low ten bits.
constexpr Fila kIdiomas[] = {
    {0x01, u"ar"}, {0x02, u"bg"}, {0x03, u"ca"}, {0x04, u"zh"}, {0x05, u"cs"}, {0x06, u"da"}, {0x07, u"de"},
    {0x08, u"el"}, {0x09, u"en"}, {0x0A, u"es"}, {0x0B, u"fi"}, {0x0C, u"fr"}, {0x0D, u"he"}, {0x0E, u"hu"},
    {0x0F, u"is"}, {0x10, u"it"}, {0x11, u"ja"}, {0x12, u"ko"}, {0x13, u"nl"}, {0x14, u"nb"}, {0x15, u"pl"},
    {0x16, u"pt"}, {0x18, u"ro"}, {0x19, u"ru"}, {0x1A, u"hr"}, {0x1B, u"sk"}, {0x1C, u"sq"}, {0x1D, u"sv"},
    {0x1F, u"tr"}, {0x21, u"id"}, {0x22, u"uk"}, {0x24, u"sl"}, {0x25, u"et"}, {0x26, u"lv"}, {0x27, u"lt"},
    {0x29, u"fa"}, {0x2A, u"vi"}, {0x2D, u"eu"}, {0x36, u"af"}, {0x39, u"hi"}, {0x3E, u"ms"}, {0x41, u"sw"},
    {0x52, u"cy"}, {0x56, u"gl"},
};

}  // namespace

std::optional<std::uint32_t> LeeLcid(std::u16string_view texto) {
    constexpr std::uint32_t kTope = 0xFFFFFFF;  // far over any LCID, and one digit more still fits
    texto = texto.substr(0, texto.find(u';'));
    if (texto.size() > 2 && texto[0] == u'0' && Minuscula(texto[1]) == u'x') texto.remove_prefix(2);
    if (texto.empty()) return std::nullopt;
    std::uint32_t lcid = 0;
    for (const char16_t escrita : texto) {
        const char16_t c = Minuscula(escrita);
        if (!EsCifra(c) && (c < u'a' || c > u'f')) return std::nullopt;
        if (lcid <= kTope) lcid = lcid * 16 + static_cast<std::uint32_t>(EsCifra(c) ? c - u'0' : c - u'a' + 10);
    }
    return lcid;
}

std::u16string IdiomaDeLcid(std::uint32_t lcid) {
    for (const Fila &fila : kRegiones)
        if (fila.lcid == lcid) return std::u16string(fila.idioma);
    constexpr std::uint32_t kMaxLcid = 0xFFFF, kPrimario = 0x3FF;
    for (const Fila &fila : kIdiomas)
        if (lcid <= kMaxLcid && fila.lcid == (lcid & kPrimario)) return std::u16string(fila.idioma);
    return {};
}

}  // namespace ondalis
