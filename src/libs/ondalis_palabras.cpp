#include "libs/ondalis_palabras.h"

#include <cstring>

namespace {

bool EsBlanco(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// `indice` counts from 0 and lies inside the text.
bool EmpiezaPalabra(const char *texto, std::size_t indice) {
    return !EsBlanco(texto[indice]) && (indice == 0 || EsBlanco(texto[indice - 1]));
}

// The result's 16 bits are part of the contract: beyond 32767 it turns negative, and 65536 comes back as 0.
int16_t Posicion(std::size_t indice) { return static_cast<int16_t>(static_cast<uint16_t>(indice + 1)); }

// Index of `posicion`; false beyond the end. Looks no further than the position itself.
bool Indice(int32_t posicion, const char *texto, std::size_t &indice) {
    indice = posicion < 1 ? 0 : static_cast<std::size_t>(posicion) - 1;
    return texto && std::memchr(texto, '\0', indice + 1) == nullptr;
}

}  // namespace

int16_t SigPosPalabra(int32_t posicion, const char *texto) {
    std::size_t indice = 0;
    if (!Indice(posicion, texto, indice)) return 0;
    for (; texto[indice] != '\0'; ++indice)
        if (EmpiezaPalabra(texto, indice)) return Posicion(indice);
    return 0;
}

int16_t AntPosPalabra(int32_t posicion, const char *texto) {
    std::size_t indice = 0;
    if (!Indice(posicion, texto, indice)) return 0;
    for (;; --indice) {
        if (EmpiezaPalabra(texto, indice)) return Posicion(indice);
        if (indice == 0) return 0;
    }
}
