#include "desktop/cLupa.h"

#include <algorithm>
#include <cmath>

namespace ondalis {

namespace {
constexpr int kIntervalo = 100;  // milliseconds
constexpr int kBrazoTwips = 70;  // half the cross
}  // namespace

cLupa::cLupa(CapturaPantalla &captura, VistaLupa &vista, Temporizador &chequeaPantalla, cRegistro &registro,
             cGeneral &general)
    : m_captura(captura),
      m_vista(vista),
      m_chequeaPantalla(chequeaPantalla),
      m_registro(registro),
      m_general(general),
      m_sitio(registro, general.Log(), QStringLiteral("Lupa")) {
    m_chequeaPantalla.SetIntervalo(kIntervalo);
    m_chequeaPantalla.SetManejador([this] { ChequeaPantalla_Timer(); });
}

void cLupa::Form_Load() {
    m_general.Ejecuta(QStringLiteral("Lupa.Form_Load: "), cGeneral::Aviso::SoloLog, [this] {
        const std::vector<QRect> monitores = m_vista.Monitores();
        QSize tamano = m_sitio.LeeTamano(TamanoDiseno);
        QRect pantalla;
        for (const QRect &uno : monitores) pantalla = pantalla.united(uno);
        if (!pantalla.isEmpty()) tamano = tamano.boundedTo(pantalla.size());
        m_vista.Coloca(m_sitio.LeeLugar(tamano, monitores), tamano);
    });
}

void cLupa::Form_QueryUnload(ModoDescarga modo) {
    if (modo != PorElUsuario) return;
    m_registro.Salva(QStringLiteral("CU"), Producto::Ruta(), QStringLiteral("General"), QStringLiteral("VerLupa"),
                     QStringLiteral("0"));
}

void cLupa::Form_Unload() {
    SetVisible(false);
    const QRect sitio = m_vista.Sitio();
    m_sitio.GuardaLugar(sitio.topLeft());
    m_sitio.GuardaTamano(sitio.size());
}

void cLupa::SetVisible(bool visible) {
    if (visible == m_chequeaPantalla.Enabled()) return;
    m_hecho.reset();
    m_chequeaPantalla.SetEnabled(visible);
}

void cLupa::ChequeaPantalla_Timer() {
    CapturaPantalla::Estado estado;
    const bool bien = m_captura.GetEstado(estado);
    const auto procede = [&] {
        if (!bien) throw ErrorFallo{Fallo::De(Fallo::LlamadaNoValida)};
        Amplia(estado);
    };
    if (!m_fallando) {
        m_fallando = !m_general.Ejecuta(QStringLiteral("Lupa.Amplia: "), cGeneral::Aviso::SoloLog, procede);
        return;
    }
    try {
        procede();
        m_fallando = false;
    } catch (const ErrorFallo &) {
        // The row of failures goes on.
    }
}

void cLupa::Amplia(const CapturaPantalla::Estado &estado) {
    const QSize ventana = m_vista.Interior();
    if (ventana.isEmpty()) return;
    const QRect origen = OrigenLupa(estado.puntero, ventana);
    const QRect recorte = origen.intersected(QRect(QPoint(0, 0), estado.tamano));
    ImagenPixeles copia;
    if (!recorte.isEmpty() && !m_captura.Copia(recorte, copia)) throw ErrorFallo{Fallo::De(Fallo::LlamadaNoValida)};
    if (m_hecho && m_hecho->estado == estado && m_hecho->ventana == ventana && m_hecho->copia == copia) return;
    const double escala = m_vista.Escala();
    const PeticionLupa peticion{.ventana = ventana,
                                .origen = origen,
                                .recorte = recorte,
                                .puntero = estado.puntero,
                                .brazo = static_cast<int>(std::nearbyint(kBrazoTwips * escala / kTwipsPorPixel)),
                                .grosor = std::max(1, static_cast<int>(std::nearbyint(escala)))};
    m_vista.Pinta(ComponLupa(peticion, copia, estado.imagen));
    m_hecho = Hecho{estado, ventana, std::move(copia)};
}

}  // namespace ondalis
