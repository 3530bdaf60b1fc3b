// The operations of the ECI interface as cVozECI calls them: the real ones of libs, or a test's. Plain pointers.
#pragma once

#include <cstdint>

#include "libs/ondalis_eci.h"

namespace ondalis {

struct OperacionesECI {
    void (*crea)() = CreaVozECI;
    void (*borra)() = BorraVozECI;
    void (*restaura)() = RestauraECI;
    std::int16_t (*setDestino)(const char *ruta) = SetDestinoECI;
    std::int16_t (*addTexto)(const char *texto) = AddTextoECI;
    std::int16_t (*habla)(std::int16_t espera) = HablaECI;
    std::int16_t (*estaHablando)() = EstaHablandoECI;
    void (*calla)() = CallaECI;
    void (*ultimoError)(char *bufer) = UltimoErrorECI;
};

}  // namespace ondalis
