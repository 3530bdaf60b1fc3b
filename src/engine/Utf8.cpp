#include "engine/Utf8.h"

namespace ondalis {

namespace {

constexpr char32_t kSustituto = U'\uFFFD';

bool EsSustituta(char32_t letra) { return letra >= 0xD800 && letra < 0xE000; }

}  // namespace

std::optional<char32_t> LeeUtf8(std::string_view bytes, std::size_t &pos) {
    const auto byte = [bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char primero = byte(pos);
    if (primero < 0x80) return byte(pos++);
    const std::size_t siguen = primero >= 0xF0 ? 3 : primero >= 0xE0 ? 2 : 1;
    if (primero < 0xC2 || primero > 0xF4 || bytes.size() - pos <= siguen) return std::nullopt;
    char32_t letra = primero & (0x3Fu >> siguen);
    for (std::size_t i = 1; i <= siguen; ++i) {
        if ((byte(pos + i) & 0xC0) != 0x80) return std::nullopt;
        letra = letra << 6 | (byte(pos + i) & 0x3Fu);
    }
    constexpr char32_t kMinimos[] = {0, 0x80, 0x800, 0x10000};
    if (letra < kMinimos[siguen] || letra > 0x10FFFF || EsSustituta(letra)) return std::nullopt;
    pos += siguen + 1;
    return letra;
}

void AnadeUtf16(std::u16string &texto, char32_t letra) {
    if (letra < 0x10000) {
        texto += static_cast<char16_t>(letra);
    } else {
        texto += static_cast<char16_t>(0xD800 + ((letra - 0x10000) >> 10));
        texto += static_cast<char16_t>(0xDC00 + ((letra - 0x10000) & 0x3FF));
    }
}

std::u16string DeUtf8(std::string_view bytes) {
    std::u16string texto;
    texto.reserve(bytes.size());
    for (std::size_t pos = 0; pos < bytes.size();) {
        const auto letra = LeeUtf8(bytes, pos);
        if (!letra) ++pos;
        AnadeUtf16(texto, letra.value_or(kSustituto));
    }
    return texto;
}

std::string EnUtf8(std::u16string_view texto) {
    std::string bytes;
    bytes.reserve(texto.size());
    for (std::size_t i = 0; i < texto.size(); ++i) {
        char32_t letra = texto[i];
        if (letra >= 0xD800 && letra < 0xDC00 && i + 1 < texto.size() && (texto[i + 1] & 0xFC00) == 0xDC00)
            letra = 0x10000 + ((letra - 0xD800) << 10) + (texto[++i] - 0xDC00u);
        if (EsSustituta(letra)) letra = kSustituto;
        const int siguen = letra < 0x80 ? 0 : letra < 0x800 ? 1 : letra < 0x10000 ? 2 : 3;
        constexpr char32_t kPrimeros[] = {0, 0xC0, 0xE0, 0xF0};
        bytes += static_cast<char>(kPrimeros[siguen] | letra >> (6 * siguen));
        for (int j = siguen - 1; j >= 0; --j) bytes += static_cast<char>(0x80 | ((letra >> (6 * j)) & 0x3F));
    }
    return bytes;
}

}  // namespace ondalis
