#include "reader/cConfiguracion.h"

namespace ondalis {

namespace {

const QString kProcedimiento = QStringLiteral("cFormPrincipal.Aceptar_Click: ");

// Raised for as long as it lives, also when the procedure fails.
class Marcado {
public:
    explicit Marcado(bool &marca) : m_marca(marca) { m_marca = true; }
    ~Marcado() { m_marca = false; }
    Marcado(const Marcado &) = delete;
    Marcado &operator=(const Marcado &) = delete;

private:
    bool &m_marca;
};

}  // namespace

void cConfiguracion::PonPagina(Pagina cual, PaginaConfiguracion &pagina) {
    m_paginas[static_cast<std::size_t>(cual)] = &pagina;
}

void cConfiguracion::Establece(Pagina cual) {
    if (PaginaConfiguracion *pagina = De(cual)) pagina->EstableceValores();
}

void cConfiguracion::Opciones_Click() {
    if (m_descargada) return;
    if (c.vista.Visible()) {
        c.vista.TraeAlFrente();
        return;
    }
    if (c.vista.HayModal()) throw ErrorFallo{Fallo::De(Fallo::VentanaModal)};
    Establece(Pagina::Voces);
    c.lector.opcGeneral.SetArrancaEnInicio(c.registro.GetAutoarranque(QLatin1String(Producto::Titulo)));
    c.lector.opcGeneral.ReleeVerLupa();
    for (const Pagina cual :
         {Pagina::General, Pagina::TipoLectura, Pagina::Grabar, Pagina::Diccionario, Pagina::TeclasRap})
        Establece(cual);
    c.vista.Muestra();
}

void cConfiguracion::Cancelar_Click() { c.vista.Oculta(); }

void cConfiguracion::AceptadoFuera() {
    if (!c.vista.Visible()) return;
    for (PaginaConfiguracion *pagina : m_paginas)
        if (pagina) pagina->EstableceCambiados();
}

void cConfiguracion::Descarga() {
    m_descargada = true;
    c.vista.Oculta();
}

void cConfiguracion::Aceptar_Click() {
    if (m_aceptando) return;  // pressed again while it waits
    const Marcado aceptando(m_aceptando);
    if (c.lector.general.Ejecuta(kProcedimiento, cGeneral::Aviso::Mensaje, [this] { Acepta(); })) return;
    c.vista.Oculta();
    AplicaLupa();
}

void cConfiguracion::Acepta() {
    const bool leiaTeclado = c.lector.opcTipoLectura.LeeTeclado();
    if (c.form.Menu().Detener.Habilitada()) c.form.Detener_Click();
    c.vista.EnfocaAceptar();
    for (PaginaConfiguracion *pagina : m_paginas)
        if (pagina) pagina->TerminaEdicion();
    for (PaginaConfiguracion *pagina : m_paginas)
        if (pagina) pagina->GuardaValores();
    CorrigeGrabacion();
    if (m_descargada) return;
    AplicaVoz();
    AplicaAutoarranque();
    if (c.lector.opcGrabar.NumerarFich()) c.lector.grabadora.EstableceNroFichero();
    c.form.RotulaMenuLectura();
    AplicaActivo(leiaTeclado);
    c.vista.Oculta();
    AplicaLupa();
    c.lector.general.SetPrioridadAlta(c.lector.opcGeneral.PrioridadAlta());
}

// What a voice of SAPI 5 can't do is put right, and the user is told.
void cConfiguracion::CorrigeGrabacion() {
    cOpcGrabar &grabar = c.lector.opcGrabar;
    if (c.lector.opcVoz.EsIBM() || !grabar.GrabarTexto()) return;
    if (!grabar.GrabaSincrono()) {
        c.lector.general.VMsg(
            QStringLiteral("La voz elegida no permite grabar el texto leído de forma Asíncrona.\n"
                           "La grabación del audio se hará de forma Síncrona."));
        grabar.SetGrabaSincrono(true);
        RehaceGrabacion();
    }
    if (grabar.AnadirFich()) {
        c.lector.general.VMsg(QStringLiteral("La voz elegida no permite añadir el audio al fichero existente.\n"
                                             "La grabación sobrescribirá el fichero ") +
                              grabar.NombreFichero());
        grabar.SetAnadirFich(false);
        grabar.SetSobrescribirFich(true);
        RehaceGrabacion();
    }
}

// Without its page the corrected values are stored all the same.
void cConfiguracion::RehaceGrabacion() {
    if (PaginaConfiguracion *pagina = De(Pagina::Grabar)) {
        pagina->EstableceValores();
        pagina->GuardaValores();
    } else {
        c.lector.opcGrabar.GuardaValores();
    }
}

void cConfiguracion::AplicaVoz() {
    c.lector.motor.AplicaConfiguracion();
    c.lector.filtro.SetMarca(c.lector.opcVoz.Marca());
}

void cConfiguracion::AplicaAutoarranque() {
    const QString titulo = QLatin1String(Producto::Titulo);
    if (c.lector.opcGeneral.ArrancaEnInicio())
        c.registro.SalvaAutoarranque(titulo, c.comandoAutoarranque);
    else
        c.registro.BorraAutoarranque(titulo);
}

void cConfiguracion::AplicaActivo(bool leiaTeclado) {
    if (!c.form.ProgramaActivo()) return;
    c.form.SetIconoBarra(c.form.IconoReposo());
    const bool lee = c.lector.opcTipoLectura.LeeTeclado();
    if (lee == leiaTeclado) return;
    if (lee) c.form.Campos().TextoWindows.clear();
    c.form.SetHook(lee);
}

void cConfiguracion::AplicaLupa() {
    if (m_descargada) return;
    if (c.lector.opcGeneral.VerLupa())
        c.lector.ventanas.MuestraLupa();
    else
        c.lector.ventanas.DescargaLupa();
}

}  // namespace ondalis
