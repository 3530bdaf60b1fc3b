// What in a text decides how long its words last: the letters they have and the pauses between them. Pure.
#pragma once

#include <string_view>

#include "worker/PiezaTexto.h"

namespace ondalis {

// Counts, or their mean for one word where `palabras` is 1.
struct RasgosTexto {
    double palabras = 0;
    double medidas = 0, letras = 0;  // words of letters only and a few figures, and the letters that they are said in
    double comas = 0, puntos = 0;    // short and long pauses

    RasgosTexto operator*(double n) const { return {palabras * n, medidas * n, letras * n, comas * n, puntos * n}; }
    RasgosTexto operator+(const RasgosTexto &o) const {
        return {palabras + o.palabras, medidas + o.medidas, letras + o.letras, comas + o.comas, puntos + o.puntos};
    }
    bool operator==(const RasgosTexto &) const = default;
};

struct RasgosPieza {
    RasgosTexto palabras;  // all but the pause behind the last word, which is made only if something follows
    RasgosTexto pausa;     // that pause
};

// Of a piece of `texto`. The signs that are words of their own are said by their names in `lengua`.
RasgosPieza RasgosDe(std::u16string_view texto, const Pieza &pieza, LenguaSignos lengua);

// The text of an utterance as its listener has it in the ear: the last hundred and fifty words and the piece to come,
// so that a change of style is followed and no single sentence drives the pace.
class CompasTexto {
public:
    RasgosTexto Entra(const RasgosPieza &pieza);
    void Olvida() { m_dicho = m_pausa = {}; }  // another language

private:
    RasgosTexto m_dicho;
    RasgosTexto m_pausa;  // behind the last word
};

}  // namespace ondalis
