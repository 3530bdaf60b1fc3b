// Accepted values of the page "Tipo lectura". Main thread.
#pragma once

#include "settings/TablaOpciones.h"

namespace ondalis {

class cOpcTipoLectura : public TablaOpciones {
public:
    static constexpr int MaxMiniTexto = 32767;  // characters; a stored limit beyond it, or below 0, makes no sense

    cOpcTipoLectura(cRegistro &registro, cLog &log);  // reads the stored values

    bool LeePortapapeles() const { return Booleano("CheckPortapapeles"); }
    void SetLeePortapapeles(bool valor) { SetBooleano("CheckPortapapeles", valor); }
    bool IgnoraMiniTexto() const { return Booleano("CheckMiniTexto"); }
    void SetIgnoraMiniTexto(bool valor) { SetBooleano("CheckMiniTexto", valor); }
    int CharsMiniTexto() const { return Entero("ValorMiniTexto"); }  // characters
    void SetCharsMiniTexto(int valor) { SetEntero("ValorMiniTexto", valor); }
    bool TrataEditores() const { return Booleano("CheckEditores"); }
    void SetTrataEditores(bool valor) { SetBooleano("CheckEditores", valor); }
    bool LeeTeclado() const { return Booleano("CheckLeeTeclado"); }
    void SetLeeTeclado(bool valor) { SetBooleano("CheckLeeTeclado", valor); }
    bool LeeCambioApp() const { return Booleano("CheckLeeCambioApp"); }
    void SetLeeCambioApp(bool valor) { SetBooleano("CheckLeeCambioApp", valor); }

    void GuardaValores() { SalvaFilas(); }
};

}  // namespace ondalis
