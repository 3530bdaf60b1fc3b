// What the configuration window does when it is opened, accepted and cancelled, apart from its widgets: the order of
// the pages, the corrections that a voice of SAPI 5 asks for, and what takes effect on acceptance. Made with the
// window, on first use; owned by main. Main thread.
#pragma once

#include <array>
#include <functional>

#include "reader/cFormPrincipal.h"
#include "settings/PaginaConfiguracion.h"
#include "settings/cRegistro.h"

namespace ondalis {

// The configuration window as its logic uses it.
class VistaConfiguracion {
public:
    virtual ~VistaConfiguracion() = default;
    virtual bool Visible() const = 0;   // shown, be it minimised
    virtual bool HayModal() const = 0;  // some window of the program lets no other be used
    virtual void Muestra() = 0;         // in its kept place, with the focus
    virtual void TraeAlFrente() = 0;    // it is visible already
    virtual void Oculta() = 0;          // harmless when it is hidden
    virtual void EnfocaAceptar() = 0;   // and lets pending events run, user input too
};

struct ColaboradoresConfiguracion {
    const ColaboradoresPrincipal &lector;
    cFormPrincipal &form;
    cRegistro &registro;
    VistaConfiguracion &vista;
    QString comandoAutoarranque = {};  // of this run, as a desktop entry's Exec has it
};

class cConfiguracion {
public:
    explicit cConfiguracion(ColaboradoresConfiguracion c) : c(std::move(c)) {}
    cConfiguracion(const cConfiguracion &) = delete;
    cConfiguracion &operator=(const cConfiguracion &) = delete;

    // `pagina` outlives this object. A page that isn't there is passed over: its accepted values stay as they are.
    void PonPagina(Pagina cual, PaginaConfiguracion &pagina);

    // Throws ErrorFallo (401) when the window can't be shown because a modal one is open.
    void Opciones_Click();
    // Refuses nothing. A failure ends it where it is: what has been accepted and stored so far stays.
    void Aceptar_Click();
    void Cancelar_Click();
    // Values have been accepted elsewhere: an open window shows them, so that accepting it keeps them.
    void AceptadoFuera();
    // The program ends: the window is hidden, and an acceptance that waits further out stores the values and no more.
    void Descarga();

private:
    void Acepta();
    PaginaConfiguracion *De(Pagina cual) const { return m_paginas[static_cast<std::size_t>(cual)]; }
    void Establece(Pagina cual);
    void CorrigeGrabacion();
    void RehaceGrabacion();
    void AplicaVoz();
    void AplicaAutoarranque();
    void AplicaActivo(bool leiaTeclado);
    void AplicaLupa();

    ColaboradoresConfiguracion c;
    std::array<PaginaConfiguracion *, kNumPaginas> m_paginas{};
    bool m_aceptando = false;
    bool m_descargada = false;
};

}  // namespace ondalis
