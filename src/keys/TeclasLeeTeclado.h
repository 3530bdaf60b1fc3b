// The window "Teclas que inician la lectura": a list of keys and signs with check boxes, modal above the configuration
// window. It stays loaded, hidden, between its uses. Main thread.
#pragma once

#include "keys/cTeclasLeeTeclado.h"
#include "settings/pagina/DialogoOpciones.h"

class QListWidget;

namespace ondalis {

class TeclasLeeTeclado : public DialogoOpciones {
public:
    // `teclas` outlives the dialog.
    TeclasLeeTeclado(cTeclasLeeTeclado &teclas, Colaboradores c);

    // Shows it with the accepted choice; returns when it closes. When it stands there already, it comes to the front.
    void Init();

    void done(int resultado) override;  // every way out

protected:
    void SetTags() override;
    void EstableceValores() override;
    void Salva() override { m_teclas.Acepta(); }

private:
    cTeclasLeeTeclado &m_teclas;
    QListWidget *m_lista;  // child
};

}  // namespace ondalis
