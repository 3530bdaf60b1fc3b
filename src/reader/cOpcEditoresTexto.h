// Accepted values of the dialog "Editores de texto": how the word processor follows the speech. Main thread.
#pragma once

#include "settings/TablaOpciones.h"

namespace ondalis {

class cOpcEditoresTexto : public TablaOpciones {
public:
    cOpcEditoresTexto(cRegistro &registro, cLog &log);  // reads the stored values

    bool LocPalabrasEnWord() const { return Booleano("LocalizaPalabrasWord"); }
    void SetLocPalabrasEnWord(bool valor) { SetBooleano("LocalizaPalabrasWord", valor); }
    bool LocParadaEnWord() const { return Booleano("LocalizaParadaWord"); }
    void SetLocParadaEnWord(bool valor) { SetBooleano("LocalizaParadaWord", valor); }
    bool MarcaEnWord() const { return Booleano("SeleccionaWord"); }
    void SetMarcaEnWord(bool valor) { SetBooleano("SeleccionaWord", valor); }
    // Words, -5 to 5; the tag holds the slider's position, 6 more. The store holds the words.
    int SaltoWord() const { return Entero("SliderSalto") - 6; }
    void SetSaltoWord(int palabras) { SetEntero("SliderSalto", palabras + 6); }

    void GuardaValores();
};

}  // namespace ondalis
