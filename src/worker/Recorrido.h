// Walks an utterance span by span and keeps what the tags before have set. Pure; borrowed utterance.
#pragma once

#include <optional>
#include <string>

#include "engine/Locucion.h"

namespace ondalis {

// What holds for a stretch of text.
struct EstadoHabla {
    double velocidad = 170;                                               // words a minute
    double ganancia = 1;                                                  // linear, 0 to 1
    double tono = 100;                                                    // hertz
    double fluctuacion = 50, aspereza = 0, diafonia = 0, tamCabeza = 50;  // 0 to 100; of a formant voice
    std::string voz;
    std::string idioma;  // BCP 47; empty: the voice's own
    bool deletreo = false, puntuacion = false, enfasis = false;
    bool operator==(const EstadoHabla &) const = default;
};

struct Paso {
    enum class Tipo { Texto, Pausa, Marca };
    Tipo tipo = Tipo::Texto;
    const Tramo *tramo = nullptr;
    std::size_t inicio = 0;  // Texto: first index of the span's text to be spoken
    double ms = 0;           // Pausa: 0 to one hour
};

// Source offset of text index `indice`. Without cuts the text is its own source.
std::uint32_t Origen(const Tramo &tramo, std::size_t indice);

class Recorrido {
public:
    explicit Recorrido(const Locucion &locucion);

    // The next thing to be done, nothing at the end. Text, pauses and bookmarks before the utterance's `desde` are
    // left out; the other tags act.
    std::optional<Paso> Siguiente();
    const EstadoHabla &Estado() const { return m_estado; }

private:
    void Aplica(const Tramo &tramo);
    std::optional<std::size_t> PrimeroDeTexto(const Tramo &tramo);

    const Locucion &m_locucion;
    std::size_t m_indice = 0;
    bool m_alcanzado;  // `desde` lies behind us
    EstadoHabla m_estado;
};

std::string AUtf8(std::u16string_view texto);  // lone surrogates become U+FFFD

}  // namespace ondalis
