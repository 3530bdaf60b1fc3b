#include "desktop/cVentanaConfiguracion.h"

#include "audio/ucOpcGrabar.h"
#include "keys/TeclasLeeTeclado.h"
#include "keys/ucOpcTeclasRap.h"
#include "reader/EditoresTexto.h"
#include "reader/PruebaConversion.h"
#include "settings/SonidosAviso.h"
#include "settings/ucOpcGeneral.h"
#include "settings/ucOpcTipoLectura.h"
#include "speech/ucOpcVoz.h"
#include "text/ucOpcDiccionario.h"

namespace ondalis {

cVentanaConfiguracion::~cVentanaConfiguracion() { c.form.AlCambiarVelocidad({}); }

void cVentanaConfiguracion::Opciones() {
    if (m_descargada) return;
    if (!m_logica) Crea();
    m_logica->Opciones_Click();
}

void cVentanaConfiguracion::AceptadoFuera() {
    if (m_logica) m_logica->AceptadoFuera();
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

DialogoOpciones::Colaboradores cVentanaConfiguracion::ParaDialogos() {
    return {.duena = m_ventana.get(),
            .registro = c.registro,
            .log = c.lector.log,
            .ayuda = [this](std::uintptr_t ventana, const QString &tema) { c.ayuda.MuestraClave(ventana, tema); },
            .alFrente = c.alFrente};
}

void cVentanaConfiguracion::CreaPaginas() {
    PonPagina(Pagina::General, new ucOpcGeneral(c.lector.opcGeneral, Abre<SonidosAviso>(c.lector.sonidosAviso)));
    auto *voces = new ucOpcVoz({.opciones = c.lector.opcVoz,
                                .voces = c.voces,
                                .general = c.lector.general,
                                .prueba = c.prueba,
                                .velocidadConSuper = c.velocidadConSuper});
    PonPagina(Pagina::Voces, voces);
    c.form.AlCambiarVelocidad([voces] { voces->EstableceVelocidad(); });
    PonPagina(Pagina::TipoLectura,
              new ucOpcTipoLectura(c.lector.opcTipoLectura,
                                   {.editoresTexto = Abre<EditoresTexto>(c.lector.editoresTexto),
                                    .teclasLeeTeclado = Abre<TeclasLeeTeclado>(c.lector.teclasLeeTeclado)}));
    PonPagina(Pagina::Grabar, new ucOpcGrabar(c.lector.opcGrabar, c.dialogo));
    PonPagina(Pagina::Diccionario, new ucOpcDiccionario(c.diccionario, c.lector.general, [this](const QString &texto) {
                  PruebaConversion(c.lector, c.form, texto);
              }));
    PonPagina(Pagina::TeclasRap, new ucOpcTeclasRap(c.lector.opcTeclasRap, c.lector.tecla, c.lector.general));
}

}  // namespace ondalis
