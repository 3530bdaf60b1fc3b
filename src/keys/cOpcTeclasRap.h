// Accepted values of the page "Teclas rápidas": the six configurable hot keys, the word counts, spoken refusals. Main
// thread.
#pragma once

#include <span>

#include "settings/TablaOpciones.h"

namespace ondalis {

struct FilaTecla {
    const char *rotulo;
    int virtualKey;
};
// The 45 keys of the key lists, in order. "Supr" is 12: stored settings depend on it.
std::span<const FilaTecla> TablaTeclas();
// "Activar", "Pausa", "Detener", "Repetir", "Avanzar", "Retroceder", in the order of the page.
std::span<const char *const> ComandosConfigurables();

class cOpcTeclasRap : public TablaOpciones {
public:
    static constexpr int MinPalabras = 1;
    static constexpr int MaxPalabras = 100;

    cOpcTeclasRap(cRegistro &registro, cLog &log);  // reads the stored values

    int GetModif(const QString &nombre) const;  // position in "Control", "Alt", "Shift"
    void SetModif(const QString &nombre, int posicion);
    int GetAscii(const QString &nombre) const;             // virtual key
    void SetAscii(const QString &nombre, int virtualKey);  // an unknown key gives position 0
    int NroPalAvance() const { return Entero("SaltoAvanzar"); }
    void SetNroPalAvance(int palabras);  // refused outside MinPalabras..MaxPalabras
    int NroPalRetroceso() const { return Entero("SaltoRetroceder"); }
    void SetNroPalRetroceso(int palabras);
    bool UtilizaAvisos() const { return Booleano("CheckAvisos"); }
    void SetUtilizaAvisos(bool valor) { SetBooleano("CheckAvisos", valor); }
    // "Ctrl + 1": modifier and key as the menus show them.
    QString GetNombre(const QString &nombre) const;

    void GuardaValores();  // writes the fifteen settings; the registration of keys belongs to the caller
};

}  // namespace ondalis
