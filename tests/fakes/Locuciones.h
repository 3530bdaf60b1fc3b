// Utterances for tests.
#pragma once

#include <string>

#include "engine/Locucion.h"

namespace ondalis {

inline Tramo TramoTexto(std::u16string texto, std::uint32_t origen = 0) {
    Tramo tramo;
    tramo.texto = std::move(texto);
    tramo.cortes = {{0, origen}};
    return tramo;
}

inline Tramo TramoMarca(std::u16string nombre) {
    Tramo tramo;
    tramo.tipo = TipoTramo::Marca;
    tramo.texto = std::move(nombre);
    return tramo;
}

inline Locucion LocucionDe(std::uint64_t numero, std::u16string texto) {
    Locucion locucion;
    locucion.numero = numero;
    locucion.voz.motor = "espeak";
    locucion.voz.voz = "es";
    if (!texto.empty()) locucion.tramos = {TramoTexto(std::move(texto))};
    return locucion;
}

}  // namespace ondalis
