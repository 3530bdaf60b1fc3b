// The dialog "Sonidos de aviso": which groups of sounds are wanted. Main thread.
#pragma once

#include "settings/cOpcSonidosAviso.h"
#include "settings/pagina/DialogoOpciones.h"

namespace ondalis {

class SonidosAviso : public DialogoOpciones {
public:
    // `opciones` outlives the dialog.
    SonidosAviso(cOpcSonidosAviso &opciones, Colaboradores c);

protected:
    void Salva() override { m_opciones.GuardaValores(); }

private:
    cOpcSonidosAviso &m_opciones;
};

}  // namespace ondalis
