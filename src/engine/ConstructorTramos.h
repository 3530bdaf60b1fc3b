// Gathers the spans of a marked text for the dialect parsers: joins characters into text spans and keeps the cuts that
// lead back to the source. Used by one parser at a time.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "engine/Locucion.h"

namespace ondalis {

class ConstructorTramos {
public:
    // Text whose first unit stands at source index `origen` and the rest behind it.
    void Texto(std::u16string_view trozo, std::size_t origen);
    void Orden(TipoTramo tipo, double valor, bool absoluto = false);
    void Orden(TipoTramo tipo, std::u16string texto);

    // The spans gathered; the object is spent.
    std::vector<Tramo> Termina();

private:
    void CierraTexto();

    std::vector<Tramo> m_tramos;
    Tramo m_texto;
    std::size_t m_siguienteOrigen = 0;
};

// The letters that tags are made of, without their case; other characters as they are.
constexpr char16_t Minuscula(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; }
// `minusculas` must be in small letters.
bool IgualSinCaja(std::u16string_view texto, std::u16string_view minusculas);

constexpr bool EsCifra(char16_t c) { return c >= u'0' && c <= u'9'; }

// Reads an optional sign and decimal digits at `pos` and leaves it behind them. False: no digit there. A number over
// `kTopeNumero` in either direction comes as that.
inline constexpr long kTopeNumero = 1000000000;
bool LeeNumero(std::u16string_view texto, std::size_t &pos, long &numero);

}  // namespace ondalis
