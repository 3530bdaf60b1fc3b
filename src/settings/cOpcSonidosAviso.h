// Accepted values of the dialog "Sonidos de aviso": which groups of sounds are wanted. Main thread.
#pragma once

#include "settings/TablaOpciones.h"

namespace ondalis {

class cOpcSonidosAviso : public TablaOpciones {
public:
    cOpcSonidosAviso(cRegistro &registro, cLog &log);  // reads the stored values

    bool AvisosGenerales() const { return Booleano("CheckAvisosGenerales"); }
    void SetAvisosGenerales(bool valor) { SetBooleano("CheckAvisosGenerales", valor); }
    bool ActivarDesactivar() const { return Booleano("CheckActivarDesactivar"); }
    void SetActivarDesactivar(bool valor) { SetBooleano("CheckActivarDesactivar", valor); }
    bool Portapapeles() const { return Booleano("CheckPortapapeles"); }
    void SetPortapapeles(bool valor) { SetBooleano("CheckPortapapeles", valor); }
    bool LeeTeclado() const { return Booleano("CheckLeeTeclado"); }
    void SetLeeTeclado(bool valor) { SetBooleano("CheckLeeTeclado", valor); }

    void GuardaValores() { SalvaFilas(); }
};

}  // namespace ondalis
