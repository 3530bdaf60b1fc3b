#include "desktop/cVentanaConfiguracion.h"

#include "reader/PruebaConversion.h"
#include "settings/ucOpcGeneral.h"
#include "settings/ucOpcTipoLectura.h"
#include "text/ucOpcDiccionario.h"

namespace ondalis {

cVentanaConfiguracion::~cVentanaConfiguracion() = default;

void cVentanaConfiguracion::Opciones() {
    if (m_descargada) return;
    if (!m_logica) Crea();
    m_logica->Opciones_Click();
}

void cVentanaConfiguracion::Descarga() {
    m_descargada = true;
    if (m_logica) m_logica->Descarga();
}

void cVentanaConfiguracion::Crea() {
    m_ventana = std::make_unique<Principal>(
        c.registro, c.lector.log,
        Principal::Acciones{
            .aceptar = [this] { m_logica->Aceptar_Click(); },
            .cancelar = [this] { m_logica->Cancelar_Click(); },
            .ayuda = [this](std::uintptr_t ventana, const QString &tema) { c.ayuda.MuestraClave(ventana, tema); },
            .pagWeb = c.pagWeb,
            .alFrente = c.alFrente});
    m_logica =
        std::make_unique<cConfiguracion>(ColaboradoresConfiguracion{.lector = c.lector,
                                                                    .form = c.form,
                                                                    .registro = c.registro,
                                                                    .vista = *m_ventana,
                                                                    .comandoAutoarranque = c.comandoAutoarranque});
    CreaPaginas();
}

void cVentanaConfiguracion::PonPagina(Pagina cual, PaginaOpciones *pagina) {
    m_logica->PonPagina(cual, *pagina);
    m_ventana->PonPagina(cual, pagina);
}

void cVentanaConfiguracion::CreaPaginas() {
    PonPagina(Pagina::General, new ucOpcGeneral(c.lector.opcGeneral));
    PonPagina(Pagina::TipoLectura, new ucOpcTipoLectura(c.lector.opcTipoLectura));
    PonPagina(Pagina::Diccionario, new ucOpcDiccionario(c.diccionario, c.lector.general, [this](const QString &texto) {
                  PruebaConversion(c.lector, c.form, texto);
              }));
}

}  // namespace ondalis
