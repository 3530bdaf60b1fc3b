#include "keys/EstableceTeclas.h"

namespace ondalis {

void EstableceTeclasRapidas(cTecla &tecla, const cOpcTeclasRap &opciones) {
    for (const QString nombre : ComandosConfigurables()) {
        const int modificador = opciones.GetModif(nombre);
        const auto codigo = static_cast<std::int16_t>(opciones.GetAscii(nombre));
        if (tecla.Registrada(modificador, codigo, nombre)) continue;
        tecla.BorraTecla(nombre);
        tecla.AddTecla(modificador, codigo, nombre);
    }
}

}  // namespace ondalis
