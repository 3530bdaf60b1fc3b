// The page "Tipo lectura" of the configuration window: which texts are read. Main thread.
#pragma once

#include <functional>

#include "settings/cOpcTipoLectura.h"
#include "settings/pagina/PaginaOpciones.h"

class QCheckBox;
class QLabel;
class QVBoxLayout;

namespace ondalis {

class cCajaNumero;
class cEnlace;

class ucOpcTipoLectura : public PaginaOpciones {
public:
    // What the links open; an empty one has no window, and its link stays disabled.
    struct Enlaces {
        std::function<void()> editoresTexto, teclasLeeTeclado;
    };
    explicit ucOpcTipoLectura(cOpcTipoLectura &opciones, Enlaces enlaces = {});

protected:
    void Salva() override { m_opciones.GuardaValores(); }
    void Habilita() override;

private:
    void PonPortapapeles(QVBoxLayout &columna);
    void PonTeclado(QVBoxLayout &columna);

    cOpcTipoLectura &m_opciones;
    Enlaces m_enlaces;
    QCheckBox *m_portapapeles, *m_miniTexto, *m_editores, *m_pausas, *m_leeTeclado, *m_leeCambioApp;  // children
    cCajaNumero *m_valorMiniTexto;
    QLabel *m_etiqueta, *m_linkPausas;
    cEnlace *m_linkEditores, *m_linkLeeConTeclas;
};

}  // namespace ondalis
