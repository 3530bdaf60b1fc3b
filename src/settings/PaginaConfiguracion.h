// The pages of the configuration window, and one of them as the window's logic uses it. The pages of `ui` implement it,
// tests fake it. Main thread.
#pragma once

namespace ondalis {

// In the order in which they are accepted and shown.
enum class Pagina { General, Voces, TipoLectura, Grabar, Diccionario, TeclasRap };
inline constexpr int kNumPaginas = 6;

class PaginaConfiguracion {
public:
    virtual ~PaginaConfiguracion() = default;
    // The controls show the accepted values: edits of a visit that was cancelled are gone.
    virtual void EstableceValores() = 0;
    // Of a page that is being edited: what has been accepted elsewhere since it was shown or stored goes to the
    // controls; the other edits stay.
    virtual void EstableceCambiados() = 0;
    // What is still being edited takes its final value: before any page's GuardaValores. Can't refuse.
    virtual void TerminaEdicion() = 0;
    // The edits become the accepted values, and those are stored.
    virtual void GuardaValores() = 0;
};

}  // namespace ondalis
