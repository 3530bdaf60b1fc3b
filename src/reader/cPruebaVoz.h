// The test of a voice: speaks "Esta es la voz de ..." in the voice's language with the values on screen, before they
// are accepted. The page "Voces" and the assistant share it. It leaves the engine object as it was tested: nothing
// restores it until values are accepted. Owned by main. Main thread.
#pragma once

#include "reader/cFormPrincipal.h"
#include "settings/cCursor.h"
#include "speech/Voces.h"

namespace ondalis {

// The page's scroll bars, with the numbers that they show. The five are used with `avanzados` only, and by "IBM" only.
struct ValoresPrueba {
    int velocidad = 0;
    int volumen = 0;
    bool avanzados = false;
    int tono = 0, fluctuacion = 0, aspereza = 0, diafonia = 0, tamCabeza = 0;
};

class cPruebaVoz {
public:
    struct Colaboradores {
        const ColaboradoresPrincipal &lector;
        cFormPrincipal &form;
        PunteroPantalla &puntero;
        const cVoces &voces;
        ActorSvr &voz;
        SpVoice *sapi5;  // null: there is none
    };
    explicit cPruebaVoz(const Colaboradores &colaboradores) : c(colaboradores) {}

    // Of the page: a reading in course ends, the icon shows the clock meanwhile. A maker and name that the catalogue
    // doesn't hold, or an engine that refuses, is logged and shown.
    void PruebaPagina(const QString &fabricante, const QString &nombre, const ValoresPrueba &valores);
    // Of the assistant: with the values that the engine has.
    void PruebaAsistente(const QString &fabricante, const QString &nombre);

private:
    void Prueba(const QString &fabricante, const QString &nombre, const ValoresPrueba *valores);
    void HablaIBM(const RegistroVoz &fila, const ValoresPrueba *valores);
    [[nodiscard]] Fallo HablaSAPI5(const RegistroVoz &fila, const ValoresPrueba *valores);
    QString Texto(const RegistroVoz &fila) const;

    Colaboradores c;
};

}  // namespace ondalis
