#include "worker/RasgosTexto.h"

#include <algorithm>

#include "worker/Caracteres.h"

namespace ondalis {

namespace {

constexpr double kMemoria = 150;  // words
// A figure is said in about so many letters a digit. A table of figures must not hurry the voice: of their words no
// more count than a tenth of all.
constexpr int kLetrasCifra = 5, kMaxLetrasCifras = 20;
constexpr double kParteCifras = .1;

enum class Pausa : std::uint8_t { Ninguna, Corta, Larga };

bool Entre(char16_t c, std::u16string_view signos) { return signos.find(c) != std::u16string_view::npos; }

// Of what stands between two words.
Pausa PausaDe(std::u16string_view hueco) {
    if (std::any_of(hueco.begin(), hueco.end(), [](char16_t c) { return Entre(c, u".!?:;…。"); }) ||
        hueco.find(u"\n\n") != std::u16string_view::npos)
        return Pausa::Larga;
    const bool guion = hueco.find(u" - ") != std::u16string_view::npos;
    const bool corta = std::any_of(hueco.begin(), hueco.end(), [](char16_t c) { return Entre(c, u",()—–"); });
    return corta || guion ? Pausa::Corta : Pausa::Ninguna;
}

struct Letras {
    int letras = 0, cifras = 0;
    bool otros = false;
};

Letras LetrasDe(std::u16string_view palabra) {
    Letras n;
    for (std::size_t i = 0; i < palabra.size();) {
        const PuntoCodigo p = LeePunto(palabra, i);
        i += p.unidades;
        if (EsCombinable(p.c) || std::u32string_view(U"'’-‐‑").find(p.c) != std::u32string_view::npos) continue;
        if (p.c >= U'0' && p.c <= U'9')
            n.cifras++;
        else if (EsAlfanumerico(p.c))
            n.letras++;
        else if (std::u32string_view(U".,:").find(p.c) == std::u32string_view::npos)
            n.otros = true;
    }
    return n;
}

void SumaLetras(std::u16string_view palabra, RasgosTexto &rasgos, RasgosTexto &cifras) {
    const Letras n = LetrasDe(palabra);
    if (n.otros || (n.letras > 0) == (n.cifras > 0)) return;
    RasgosTexto &suma = n.cifras > 0 ? cifras : rasgos;
    suma.medidas++;
    suma.letras += n.cifras > 0 ? std::min(n.cifras * kLetrasCifra, kMaxLetrasCifras) : n.letras;
}

}  // namespace

RasgosPieza RasgosDe(std::u16string_view texto, const Pieza &pieza, LenguaSignos lengua) {
    RasgosTexto rasgos, cifras, pausas;
    for (std::size_t i = 0; i < pieza.fichas.size(); i++) {
        const Ficha &ficha = pieza.fichas[i];
        const std::u16string_view palabra = texto.substr(ficha.inicio, ficha.fin - ficha.inicio);
        const bool ultima = i + 1 == pieza.fichas.size();
        const std::size_t detras = ultima ? std::min(pieza.siguiente, texto.size()) : pieza.fichas[i + 1].inicio;
        const bool signo = palabra.size() == 1 && EsSignoMudo(palabra[0]);
        rasgos.palabras++;
        if (signo)
            rasgos = rasgos + RasgosTexto{0, 1, static_cast<double>(NombreDeSigno(palabra[0], lengua).size()), 0, 0};
        else
            SumaLetras(palabra, rasgos, cifras);
        rasgos = rasgos + pausas;
        const std::size_t hueco = signo ? ficha.inicio : ficha.fin;
        const Pausa pausa = detras > hueco ? PausaDe(texto.substr(hueco, detras - hueco)) : Pausa::Ninguna;
        pausas = {0, 0, 0, pausa == Pausa::Corta ? 1. : 0., pausa == Pausa::Larga ? 1. : 0.};
    }
    if (cifras.medidas > 0) rasgos = rasgos + cifras * std::min(1., kParteCifras * rasgos.palabras / cifras.medidas);
    return {rasgos, pausas};
}

RasgosTexto CompasTexto::Entra(const RasgosPieza &pieza) {
    const double recuerdo = m_dicho.palabras > kMemoria ? kMemoria / m_dicho.palabras : 1;
    m_dicho = (m_dicho + m_pausa) * recuerdo + pieza.palabras;
    m_pausa = pieza.pausa;
    return m_dicho;
}

}  // namespace ondalis
