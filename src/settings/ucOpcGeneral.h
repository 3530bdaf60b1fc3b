// The page "General" of the configuration window. Main thread.
#pragma once

#include <functional>

#include "settings/cOpcGeneral.h"
#include "settings/pagina/PaginaOpciones.h"

class QCheckBox;
class QVBoxLayout;

namespace ondalis {

class cEnlace;

class ucOpcGeneral : public PaginaOpciones {
public:
    // `sonidosAviso` opens the window of the notice sounds; empty: there is none, and its link stays disabled.
    explicit ucOpcGeneral(cOpcGeneral &opciones, std::function<void()> sonidosAviso = {});

protected:
    void Salva() override { m_opciones.GuardaValores(); }
    void Habilita() override;

private:
    cOpcGeneral &m_opciones;
    std::function<void()> m_sonidosAviso;
    QCheckBox *m_sonidos;  // children
    cEnlace *m_linkSonidos;
};

}  // namespace ondalis
