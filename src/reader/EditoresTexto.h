// The dialog "Editores de texto": how the word processor follows the speech. Main thread.
#pragma once

#include "reader/cOpcEditoresTexto.h"
#include "settings/pagina/DialogoOpciones.h"

class QCheckBox;
class QGroupBox;
class QLabel;

namespace ondalis {

class DeslizadorSalto;

class EditoresTexto : public DialogoOpciones {
public:
    // `opciones` outlives the dialog.
    EditoresTexto(cOpcEditoresTexto &opciones, Colaboradores c);

    // A number of words as it is shown and said: "3 palabras atrás".
    static QString TextoSalto(int palabras);

protected:
    void Salva() override { m_opciones.GuardaValores(); }
    void Habilita() override;

private:
    QGroupBox *MarcoWord();
    void LocalizaPalabrasWord_Click(bool marcada);
    void LocalizaParadaWord_Click(bool marcada);

    cOpcEditoresTexto &m_opciones;
    QCheckBox *m_palabras, *m_parada, *m_selecciona;  // children
    QLabel *m_etiqSalto, *m_valorSalto;
    DeslizadorSalto *m_salto;
};

}  // namespace ondalis
