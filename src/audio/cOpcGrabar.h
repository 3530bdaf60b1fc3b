// Accepted values of the page "Grabar". Main thread.
#pragma once

#include <span>

#include "settings/TablaOpciones.h"

namespace ondalis {

// An entry of a list that keeps a number beside its text.
struct EntradaCalidad {
    const char *texto;
    int valor;
};
std::span<const EntradaCalidad> TablakHz();   // nine rates, hertz
std::span<const EntradaCalidad> Tablakbps();  // eighteen bit rates, kbit/s
// SpeechAudioFormatType of 16-bit mono at `hercios`; 0 for a rate outside the table.
int FormatoSAPI5(int hercios);

class cOpcGrabar : public TablaOpciones {
public:
    // `ficheroDefecto`: absolute path of the default target, "Lectura.wav" in the music folder. Reads the stored
    // values; those that contradict each other become what the page can show, and the log says so.
    cOpcGrabar(cRegistro &registro, cLog &log, const QString &ficheroDefecto);

    bool LeerTexto() const { return Booleano("CheckLeer"); }
    void SetLeerTexto(bool valor) { SetBooleano("CheckLeer", valor); }
    bool GrabarTexto() const { return Booleano("CheckGrabar"); }
    void SetGrabarTexto(bool valor) { SetBooleano("CheckGrabar", valor); }
    bool GrabaEnWAV() const;
    void SetGrabaEnWAV(bool valor);
    bool GrabaSincrono() const;
    void SetGrabaSincrono(bool valor);
    QString NombreFichero() const { return Tag(QStringLiteral("NomFichero")); }
    void SetNombreFichero(const QString &ruta) { SetTag(QStringLiteral("NomFichero"), ruta); }
    bool AnadirFich() const { return Booleano("OpcionAnadir"); }
    void SetAnadirFich(bool valor) { SetBooleano("OpcionAnadir", valor); }
    bool SobrescribirFich() const { return Booleano("OpcionSobrescribir"); }
    void SetSobrescribirFich(bool valor) { SetBooleano("OpcionSobrescribir", valor); }
    bool NumerarFich() const { return Booleano("OpcionNumerar"); }
    void SetNumerarFich(bool valor) { SetBooleano("OpcionNumerar", valor); }
    int CalidadkHz() const { return Entero("CombokHz"); }  // hertz
    void SetCalidadkHz(int hercios) { SetEntero("CombokHz", hercios); }
    int Calidadkbps() const { return Entero("Combokbps"); }  // kbit/s
    void SetCalidadkbps(int kbps) { SetEntero("Combokbps", kbps); }

    void GuardaValores();

private:
    void CorrigeContradicciones();
};

}  // namespace ondalis
