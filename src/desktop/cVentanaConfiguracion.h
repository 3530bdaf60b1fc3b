// The configuration window with its pages and its logic, made together on first use: the one place that knows which
// pages there are. Owned by main. Main thread.
#pragma once

#include <functional>
#include <memory>

#include "desktop/Principal.h"
#include "desktop/cAyuda.h"
#include "reader/cConfiguracion.h"
#include "reader/cPruebaVoz.h"
#include "settings/cDialogoFichero.h"
#include "settings/pagina/DialogoOpciones.h"
#include "text/cOpcDiccionario.h"

namespace ondalis {

class cVentanaConfiguracion {
public:
    struct Colaboradores {
        const ColaboradoresPrincipal &lector;
        cFormPrincipal &form;
        cRegistro &registro;
        cOpcDiccionario &diccionario;
        cAyuda &ayuda;
        cDialogoFichero &dialogo;
        const cVoces &voces;
        cPruebaVoz &prueba;
        std::function<bool()> velocidadConSuper;  // as the page of voices has it
        std::function<void()> pagWeb;
        std::function<void(WId)> alFrente;  // may be empty
        QString comandoAutoarranque;        // as a desktop entry's Exec has it
    };
    explicit cVentanaConfiguracion(Colaboradores c) : c(std::move(c)) {}
    ~cVentanaConfiguracion();
    cVentanaConfiguracion(const cVentanaConfiguracion &) = delete;
    cVentanaConfiguracion &operator=(const cVentanaConfiguracion &) = delete;

    // Throws as cConfiguracion::Opciones_Click does.
    void Opciones();
    // As cConfiguracion::AceptadoFuera; harmless when there is no window.
    void AceptadoFuera();
    // The program ends; harmless when there is no window.
    void Descarga();
    Principal *Ventana() { return m_ventana.get(); }  // null before the first use

private:
    void Crea();
    void CreaPaginas();
    // What opens a dialog of a page's link, made on first use: the window takes it over.
    template <class Dialogo, class Opciones>
    std::function<void()> Abre(Opciones &opciones) {
        return [this, &opciones, dialogo = static_cast<Dialogo *>(nullptr)]() mutable {
            if (!dialogo) dialogo = new Dialogo(opciones, ParaDialogos());
            dialogo->Init();
        };
    }
    DialogoOpciones::Colaboradores ParaDialogos();
    // The window takes `pagina` over.
    void PonPagina(Pagina cual, PaginaOpciones *pagina);

    Colaboradores c;
    bool m_descargada = false;
    std::unique_ptr<Principal> m_ventana;
    std::unique_ptr<cConfiguracion> m_logica;
};

}  // namespace ondalis
