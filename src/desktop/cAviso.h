// What the assistant of the first start decides, apart from its widgets: which of its five pages is shown, what they
// show at first, and the saving, which takes effect at once. Made with the window; owned by it. Main thread.
#pragma once

#include <array>
#include <functional>

#include "reader/cFormPrincipal.h"
#include "settings/cRegistro.h"
#include "speech/Voces.h"

namespace ondalis {

class cAviso {
public:
    static constexpr int NumPaginas = 5;
    static constexpr int NumTeclas = 3;
    // The commands of page 4 in the order of its rows. They are saved in another: Pausa, Detener, Repetir.
    static constexpr std::array<const char *, NumTeclas> Comandos{"Detener", "Pausa", "Repetir"};

    struct Colaboradores {
        const ColaboradoresPrincipal &lector;
        cFormPrincipal &form;
        cRegistro &registro;
        std::function<void(bool)> gancho = {};  // starts and ends the hearing of typed keys; may be empty
        std::function<void()> aceptado = {};    // an open configuration window takes the new values; may be empty
    };
    struct Tecla {
        int modificador = 0;  // position in "Control", "Alt", "Shift"
        int virtualKey = 0;
        bool operator==(const Tecla &) const = default;
    };
    // What stands on the pages.
    struct Valores {
        bool noMostrar = false;
        bool portapapeles = false;
        bool teclado = false;
        QString fabricante, voz;  // empty: nothing is selected, and what is accepted stays
        std::array<Tecla, NumTeclas> teclas;
    };

    explicit cAviso(Colaboradores colaboradores) : c(std::move(colaboradores)) {}

    void Empieza() { m_pagina = 1; }
    int Pagina() const { return m_pagina; }  // 1 to NumPaginas
    bool HayAtras() const { return m_pagina > 1; }
    bool EnUltima() const { return m_pagina == NumPaginas; }
    QString RotuloSiguiente() const;  // "Siguiente >", on the last page "Finalizar"
    void Siguiente();                 // stays on the last page
    void Atras();                     // stays on the first page
    QString TemaAyuda() const;        // empty: the help's start page

    Valores Lee() const;
    // To the options pages and the store; the engine, the hot keys and the hearing of typed keys follow at once. A
    // reading in course ends when the voice is another one.
    void Guarda(const Valores &valores);
    // The same to the store alone: the program is ending.
    void GuardaSinAplicar(const Valores &valores);

private:
    void Salva(const char *seccion, const QString &clave, const QString &valor);
    void SalvaLectura(const Valores &valores);
    void SalvaVoz(const Valores &valores);
    void SalvaTeclas(const Valores &valores);
    void AplicaGancho(bool leiaTeclado);

    Colaboradores c;
    int m_pagina = 1;
};

}  // namespace ondalis
