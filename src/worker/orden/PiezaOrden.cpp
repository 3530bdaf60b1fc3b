#include "worker/orden/PiezaOrden.h"

#include <charconv>

#include "worker/Caracteres.h"

namespace ondalis {

namespace {

constexpr std::size_t kPrimera = 60;        // units from which on a clause will do for the first sound
constexpr std::size_t kMaxAbreviatura = 3;  // letters: Sr. Dra. Mr. etc.

bool EsFinal(char32_t c) { return std::u32string_view(U".!?…。！？").find(c) != std::u32string_view::npos; }
bool EsCierre(char32_t c) { return std::u32string_view(U"\"')]}»”’").find(c) != std::u32string_view::npos; }
bool EsPausa(char32_t c) { return std::u32string_view(U",;:)—–").find(c) != std::u32string_view::npos; }

bool EsMinuscula(char16_t c) { return (c >= u'a' && c <= u'z') || (c >= u'ß' && c <= u'ÿ' && c != u'÷'); }

// The full stop before `blanco` ends no sentence: a short word with a capital letter or a small letter behind it.
bool EsAbreviatura(std::u16string_view t, std::size_t inicio, std::size_t blanco) {
    if (blanco == 0 || t[blanco - 1] != u'.') return false;
    std::size_t sigue = blanco;
    while (sigue < t.size() && EsBlanco(t[sigue])) sigue++;
    if (sigue < t.size() && EsMinuscula(t[sigue])) return true;
    std::size_t primera = blanco - 1;
    while (primera > inicio && !EsBlanco(t[primera - 1]) && t[primera - 1] != u'.') primera--;
    const std::size_t letras = blanco - 1 - primera;
    return letras > 0 && letras <= kMaxAbreviatura && t[primera] >= u'A' && t[primera] <= u'Z';
}

bool EsParrafo(std::u16string_view t, std::size_t i) { return t[i] == u'\n' && i + 1 < t.size() && t[i + 1] == u'\n'; }

std::size_t SinPartir(std::u16string_view t, std::size_t inicio, std::size_t fin) {
    while (fin > inicio + 1 && EsCombinable(t[fin])) fin--;
    if (fin > inicio + 1 && (t[fin] & 0xFC00) == 0xDC00) fin--;
    return fin;
}

}  // namespace

std::size_t FinDeFrase(std::u16string_view t, std::size_t inicio, std::size_t maximo, bool pronto) {
    const std::size_t limite = std::min(t.size(), inicio + maximo);
    std::size_t pausa = 0, blanco = 0;
    bool final = false, hayTexto = false;
    for (std::size_t i = inicio; i < limite; i++) {
        const char16_t c = t[i];
        if (EsBlanco(c)) {
            if (hayTexto && (EsParrafo(t, i) || (final && !EsAbreviatura(t, inicio, i)))) return i + 1;
            if (i > inicio && EsPausa(t[i - 1])) pausa = i + 1;
            if (hayTexto) blanco = i + 1;
            if (pronto && pausa == i + 1 && i - inicio >= kPrimera) return pausa;
            final = false;
        } else {
            final = EsFinal(c) || (final && EsCierre(c));
            hayTexto = hayTexto || EsDePalabra(c);
        }
    }
    if (limite == t.size()) return limite;
    if (pausa > inicio) return pausa;
    return blanco > inicio ? blanco : SinPartir(t, inicio, limite);
}

Pieza PiezaDeletreada(std::u16string_view t, std::size_t inicio, std::size_t maximo, LenguaSignos lengua) {
    Pieza pieza;
    std::size_t i = inicio;
    const auto pon = [&pieza](char32_t c) {
        AnadeUtf8(pieza.utf8, c);
        pieza.caracteres++;
    };
    while (i < t.size() && pieza.caracteres + 40 < std::max<std::size_t>(maximo, 60)) {
        PuntoCodigo p = LeePunto(t, i);
        const std::size_t primera = i;
        i += p.unidades;
        while (i < t.size() && EsCombinable(t[i])) {
            if (const char32_t junto = Compone(p.c, t[i])) p.c = junto;
            i++;
        }
        if (EsBlanco(p.c) || p.roto || EsInvisible(p.c)) continue;
        if (!pieza.fichas.empty()) pon(U','), pon(U' ');
        const auto posicion = static_cast<std::uint32_t>(pieza.caracteres);
        pieza.fichas.push_back(
            {posicion, posicion, static_cast<std::uint32_t>(primera), static_cast<std::uint32_t>(i), false});
        const auto nombre = NombreDeSigno(p.c, lengua);
        if (nombre.empty()) pon(p.c);
        for (const char32_t c : nombre) pon(c);
    }
    pieza.hablable = !pieza.fichas.empty();
    pieza.siguiente = i;
    return pieza;
}

LenguaSignos LenguaDeLcid(std::string_view lengua) {
    unsigned lcid = 0;
    std::from_chars(lengua.data(), lengua.data() + lengua.size(), lcid, 16);
    switch (lcid & 0x3FF) {  // the primary language
        case 0x0A: return LenguaSignos::Espanol;
        case 0x09: return lcid == 0x809 ? LenguaSignos::InglesBritanico : LenguaSignos::InglesAmericano;
        case 0x0C: return LenguaSignos::Frances;
        case 0x07: return LenguaSignos::Aleman;
        case 0x10: return LenguaSignos::Italiano;
        default: return LenguaSignos::Ninguna;
    }
}

}  // namespace ondalis
