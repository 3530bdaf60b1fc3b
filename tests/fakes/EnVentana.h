// A page in the configuration window as it is used: beside a list with the labels of all pages, which takes its width.
#pragma once

#include <memory>

#include "desktop/ListaOpciones.h"
#include "desktop/Principal.h"
#include "fakes/RegistroPropio.h"
#include "settings/pagina/PaginaOpciones.h"

namespace ondalis::prueba {

// Shown. The window takes `pagina` over.
inline std::unique_ptr<QWidget> EnVentana(RegistroPropio &r, Pagina cual, PaginaOpciones *pagina) {
    auto ventana = std::make_unique<Principal>(r.Registro(), r.Log(), Principal::Acciones{});
    for (const Pagina una :
         {Pagina::General, Pagina::Voces, Pagina::TipoLectura, Pagina::Grabar, Pagina::Diccionario, Pagina::TeclasRap})
        ventana->Lista().Anade(una);
    ventana->PonPagina(cual, pagina);
    ventana->Muestra();
    return ventana;
}

}  // namespace ondalis::prueba
