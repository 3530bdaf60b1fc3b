// The windows that stand round the reader: magnifier, help, about box. Each is made on first use, and all of them close
// at the program's end. Owned by main. Main thread.
#pragma once

#include <QStringList>
#include <functional>
#include <memory>

#include "desktop/Lupa.h"
#include "desktop/PantallaInicio.h"
#include "desktop/VentanaAyuda.h"
#include "desktop/cMenuAyuda.h"
#include "desktop/cMenuBandeja.h"
#include "settings/cTemporizador.h"

namespace ondalis {

class cSuperficie {
public:
    struct Colaboradores {
        cRegistro &registro;
        cGeneral &general;
        cCola &cola;
        AbridorEscritorio &abridor;
        std::function<std::unique_ptr<CapturaPantalla>()> captura;
        std::function<void(WId)> alFrente;  // may be empty
        QStringList carpetas;               // where the program's data files are looked for, its own folder last
        QString pagina;                     // its address in the web
    };
    explicit cSuperficie(Colaboradores colaboradores);
    ~cSuperficie();
    cSuperficie(const cSuperficie &) = delete;
    cSuperficie &operator=(const cSuperficie &) = delete;

    // Gives the entries of the help menu their work and enables them.
    void Conecta(MenuIcono &estado, cMenuBandeja &menu);

    cAyuda &Ayuda() { return m_ayuda; }
    void MuestraLupa();
    void DescargaLupa();
    void AcercaDe_Click();
    void PagWebOndalis_Click() { m_menuAyuda.PagWebOndalis_Click(); }
    PantallaInicio &Pantalla();
    void DescargaFormularios();

private:
    Colaboradores c;
    cVisorAyuda m_visor;
    cAyuda m_ayuda;
    cMenuAyuda m_menuAyuda;
    cTemporizador m_chequeaPantalla;
    std::unique_ptr<CapturaPantalla> m_captura;  // with the first magnifier
    std::unique_ptr<Lupa> m_lupa;
    std::unique_ptr<PantallaInicio> m_pantalla;
};

}  // namespace ondalis
