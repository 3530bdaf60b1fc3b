// Characters as the engine worker needs to know them: code points of UTF-16, blanks, silent signs, joined accents.
// Pure.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ondalis {

struct PuntoCodigo {
    char32_t c = 0;
    unsigned unidades = 1;  // UTF-16 units that it takes
    bool roto = false;      // a surrogate without its other half
};

// The code point at `i`, which is below the length.
PuntoCodigo LeePunto(std::u16string_view texto, std::size_t i);
void AnadeUtf8(std::string &destino, char32_t c);

bool EsBlanco(char32_t c);
bool EsSignoMudo(char32_t c);   // punctuation: separates words and isn't one
bool EsCombinable(char32_t c);  // accent that joins the character before
bool EsAlfanumerico(char32_t c);
bool EsInvisible(char32_t c);  // format characters that split words in the engine and mean nothing to it
// Word characters begin and fill words.
inline bool EsDePalabra(char32_t c) { return !EsBlanco(c) && !EsSignoMudo(c); }

// The single character of a base and an accent behind it, 0 if there is none.
char32_t Compone(char32_t base, char32_t acento);

}  // namespace ondalis
