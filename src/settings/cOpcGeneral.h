// Accepted values of the page "General". Main thread.
#pragma once

#include "settings/TablaOpciones.h"

namespace ondalis {

class cOpcGeneral : public TablaOpciones {
public:
    cOpcGeneral(cRegistro &registro, cLog &log);  // reads the stored values

    bool ArrancaEnInicio() const { return Booleano("CheckInicio"); }
    void SetArrancaEnInicio(bool valor) { SetBooleano("CheckInicio", valor); }
    bool ActivaAlArrancar() const { return Booleano("CheckActivo"); }
    void SetActivaAlArrancar(bool valor) { SetBooleano("CheckActivo", valor); }
    bool PrioridadAlta() const { return Booleano("CheckPrioridad"); }
    void SetPrioridadAlta(bool valor) { SetBooleano("CheckPrioridad", valor); }
    bool UtilizaSonidos() const { return Booleano("CheckSonidos"); }
    void SetUtilizaSonidos(bool valor) { SetBooleano("CheckSonidos", valor); }
    bool VerLupa() const { return Booleano("CheckVerLupa"); }
    void SetVerLupa(bool valor) { SetBooleano("CheckVerLupa", valor); }
    bool PronunciaSignosPunt() const { return Booleano("CheckSignosPunt"); }
    void SetPronunciaSignosPunt(bool valor) { SetBooleano("CheckSignosPunt", valor); }

    // The magnifier closed by hand has changed the store.
    void ReleeVerLupa();
    // Whether the assistant comes at the next start: a setting without a control of the page, read from the store and
    // written to it.
    bool Aviso();
    void SalvaAviso(bool valor);
    void GuardaValores() { SalvaFilas(); }
};

}  // namespace ondalis
