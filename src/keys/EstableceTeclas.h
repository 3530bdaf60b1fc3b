// What accepting the page "Teclas rápidas" does to the hot keys in force.
#pragma once

#include "keys/cOpcTeclasRap.h"
#include "keys/cTecla.h"

namespace ondalis {

// Registers anew each configurable command whose combination has changed; one that hasn't keeps its row.
void EstableceTeclasRapidas(cTecla &tecla, const cOpcTeclasRap &opciones);

}  // namespace ondalis
