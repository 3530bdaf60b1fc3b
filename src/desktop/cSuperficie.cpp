#include "desktop/cSuperficie.h"

namespace ondalis {

cSuperficie::cSuperficie(Colaboradores colaboradores)
    : c(std::move(colaboradores)),
      m_visor(c.alFrente),
      m_ayuda(c.general, m_visor),
      m_menuAyuda(c.general, c.cola, m_ayuda, c.abridor, c.carpetas, c.pagina),
      m_chequeaPantalla(c.cola) {
    const QString nombre = QLatin1Char('/') + cAyuda::NombreFichero(QLatin1String(Producto::Comentarios));
    QString fichero;
    for (const QString &carpeta : c.carpetas) {
        fichero = carpeta + nombre;
        if (cGeneral::ExisteFichero(fichero)) break;
    }
    m_ayuda.Init(fichero);
}

cSuperficie::~cSuperficie() = default;

void cSuperficie::Conecta(MenuIcono &estado, cMenuBandeja &menu) {
    menu.AlPulsar(estado.AyudaOndalis, [this] { m_menuAyuda.AyudaOndalis_Click(); });
    menu.AlPulsar(estado.VerLeame, [this] { m_menuAyuda.VerLeame_Click(); });
    menu.AlPulsar(estado.AcercaDe, [this] { AcercaDe_Click(); });
    menu.AlPulsar(estado.PagWebOndalis, [this] { m_menuAyuda.PagWebOndalis_Click(); });
    for (EntradaMenu *entrada :
         {&estado.MenuAyuda, &estado.AyudaOndalis, &estado.VerLeame, &estado.AcercaDe, &estado.PagWebOndalis})
        entrada->SetHabilitada(true);
}

void cSuperficie::MuestraLupa() {
    if (!m_captura) m_captura = c.captura();
    if (!m_lupa) m_lupa = std::make_unique<Lupa>(*m_captura, m_chequeaPantalla, c.registro, c.general);
    m_lupa->Muestra();
}

void cSuperficie::DescargaLupa() {
    if (m_lupa) m_lupa->Descarga();
}

PantallaInicio &cSuperficie::Pantalla() {
    if (!m_pantalla) m_pantalla = std::make_unique<PantallaInicio>(c.general, [this] { c.cola.DejaCorrer(); });
    return *m_pantalla;
}

void cSuperficie::AcercaDe_Click() {
    Pantalla().MuestraAcercaDe();
    if (c.alFrente) c.alFrente(Pantalla().winId());
}

void cSuperficie::DescargaFormularios() {
    DescargaLupa();
    m_visor.Cierra();
    if (m_pantalla) m_pantalla->hide();
}

}  // namespace ondalis
