#include "settings/cOpcSonidosAviso.h"

#include "settings/Catalogo.h"

namespace ondalis {

namespace {
constexpr FilaOpcion kFilas[] = {
    FilaDe("CheckAvisosGenerales", "General", "SonidosAvisosGenerales"),
    FilaDe("CheckActivarDesactivar", "General", "SonidosActivarDesactivar"),
    FilaDe("CheckPortapapeles", "General", "SonidosPortapapeles"),
    FilaDe("CheckLeeTeclado", "General", "SonidosLeeTeclado"),
};
}  // namespace

cOpcSonidosAviso::cOpcSonidosAviso(cRegistro &registro, cLog &log)
    : TablaOpciones(kFilas, registro, log, QStringLiteral("SonidosAviso")) {
    CargaFilas();
}

}  // namespace ondalis
