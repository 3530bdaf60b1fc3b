// Tray icon, captions of its menu, the active state, and the entries that only open a window.
#include "reader/cFormPrincipal.h"

namespace ondalis {

namespace {

struct ImagenConNombre {
    const char *clave;
    int numero;
};
constexpr ImagenConNombre kImagenes[] = {
    {"activoblanco1", 1}, {"activorojo1", 5}, {"inactivo", 9}, {"reloj", 10}, {"pausado", 11},
};

constexpr int kImagenActivo = 1;
constexpr int kImagenGrabando = 5;

}  // namespace

bool cFormPrincipal::ProgramaActivo() const {
    return m_menu.ActivarDesactivar.Rotulo().startsWith(QLatin1String("Desactivar"));
}

int cFormPrincipal::IconoReposo() const { return c.opcGrabar.GrabarTexto() ? kImagenGrabando : kImagenActivo; }

void cFormPrincipal::SetIconoBarra(int icono) {
    Ejecuta("SetIconoBarra", [this, icono] {
        m_numIcono = icono;
        if (icono < 1 || icono > cIconoBarra::NumImagenes) throw ErrorFallo{Fallo::De(Fallo::LlamadaNoValida)};
        c.iconoBarra.SetImagen(icono);
    });
}

void cFormPrincipal::SetIconoBarra(const QString &icono) {
    Ejecuta("SetIconoBarra", [this, &icono] {
        for (const ImagenConNombre &imagen : kImagenes) {
            if (icono != QLatin1String(imagen.clave)) continue;
            SetIconoBarra(imagen.numero);
            return;
        }
        throw ErrorFallo{Fallo::De(Fallo::LlamadaNoValida)};
    });
}

void cFormPrincipal::RotulaMenu() {
    const auto conTecla = [this](const QString &rotulo, const char *comando) {
        return QStringLiteral("%1 (%2)").arg(rotulo, c.opcTeclasRap.GetNombre(QLatin1String(comando)));
    };
    // The first word is the state itself: an inactive start must stay one.
    m_menu.ActivarDesactivar.SetRotulo(
        conTecla(ProgramaActivo() ? QStringLiteral("Desactivar") : QStringLiteral("Activar"), "Activar"));
    m_menu.PausaReanudar.SetRotulo(conTecla(QStringLiteral("Pausa"), "Pausa"));
    m_menu.Detener.SetRotulo(conTecla(m_menu.Detener.Etiqueta(), "Detener"));
    m_menu.RepetirLectura.SetRotulo(conTecla(m_menu.RepetirLectura.Etiqueta(), "Repetir"));
    m_menu.AvanzarPalabras.SetRotulo(conTecla(m_menu.AvanzarPalabras.Etiqueta(), "Avanzar"));
    m_menu.RetrocederPalabras.SetRotulo(conTecla(m_menu.RetrocederPalabras.Etiqueta(), "Retroceder"));
}

void cFormPrincipal::RotulaMenuLectura() {
    const auto conTecla = [this](EntradaMenu &entrada, const QString &palabra, const char *comando) {
        entrada.SetRotulo(QStringLiteral("%1 (%2)").arg(palabra, c.opcTeclasRap.GetNombre(QLatin1String(comando))));
    };
    const QString pausa = m_menu.PausaReanudar.Rotulo();
    const qsizetype parentesis = pausa.indexOf(QLatin1Char('('));
    const QString palabra = parentesis < 0 ? QString() : pausa.left(parentesis).trimmed();
    conTecla(m_menu.PausaReanudar, palabra.isEmpty() ? QStringLiteral("Pausa") : palabra, "Pausa");
    conTecla(m_menu.Detener, QStringLiteral("Detener"), "Detener");
    conTecla(m_menu.RepetirLectura, QStringLiteral("Repetir"), "Repetir");
    conTecla(m_menu.AvanzarPalabras, QStringLiteral("Avanzar"), "Avanzar");
    conTecla(m_menu.RetrocederPalabras, QStringLiteral("Retroceder"), "Retroceder");
    // Its first word is the program's state, which an acceptance leaves alone; the key's name may be another one.
    conTecla(m_menu.ActivarDesactivar, ProgramaActivo() ? QStringLiteral("Desactivar") : QStringLiteral("Activar"),
             "Activar");
}

QString cFormPrincipal::RotuloPausa(bool reanudar) const {
    return QStringLiteral("%1 (%2)").arg(reanudar ? QStringLiteral("Reanudar") : QStringLiteral("Pausa"),
                                         c.opcTeclasRap.GetNombre(QStringLiteral("Pausa")));
}

QString cFormPrincipal::RotuloAvanzar() const {
    return QStringLiteral("%1 (%2)").arg(m_menu.AvanzarPalabras.Etiqueta(),
                                         c.opcTeclasRap.GetNombre(QStringLiteral("Avanzar")));
}

void cFormPrincipal::ActivarDesactivar_Click() {
    Ejecuta(
        "ActivarDesactivar_Click",
        [this] {
            if (ProgramaActivo())
                Desactiva();
            else
                Activa();
            SetIconoBarra(m_numIcono);
        },
        cGeneral::Aviso::Mensaje);
}

void cFormPrincipal::Desactiva() {
    c.timerLectura.SetEnabled(false);
    m_menu.ActivarDesactivar.SetRotulo(
        QStringLiteral("Activar (%1)").arg(c.opcTeclasRap.GetNombre(QStringLiteral("Activar"))));
    m_menu.RepetirLectura.SetHabilitada(false);
    // A reading of the editor goes on, under the editor's own buttons.
    if (m_l.TipoLectura != 3) Detener_Click();
    if (c.opcGeneral.UtilizaSonidos() && c.sonidosAviso.ActivarDesactivar())
        c.sonido.Reproduce(QStringLiteral("DESACTIVAR"));
    if (c.opcTipoLectura.LeeTeclado()) SetHook(false);
    SetIconoBarra(QStringLiteral("inactivo"));
}

void cFormPrincipal::Activa() {
    if (c.opcGeneral.UtilizaSonidos() && c.sonidosAviso.ActivarDesactivar())
        c.sonido.Reproduce(QStringLiteral("ACTIVAR"));
    // What was copied while inactive is not read now.
    c.portapapeles.Vacia();
    m_l.TextoCopiado.clear();
    if (c.opcTipoLectura.LeeTeclado()) SetHook(true);
    c.timerLectura.SetEnabled(true);
    m_numIcono = IconoReposo();
    m_menu.ActivarDesactivar.SetRotulo(
        QStringLiteral("Desactivar (%1)").arg(c.opcTeclasRap.GetNombre(QStringLiteral("Activar"))));
}

void cFormPrincipal::Opciones_Click() {
    // The box that says why it can't be opened is a modal window itself: one of it is enough.
    if (m_enOpciones) return;
    m_enOpciones = true;
    Ejecuta(
        "Opciones_Click", [this] { c.ventanas.Opciones(); }, cGeneral::Aviso::Mensaje);
    m_enOpciones = false;
}

void cFormPrincipal::AbrirEditor_Click() {
    Ejecuta("AbrirEditor_Click", [this] { c.ventanas.AbrirEditor(); });
}

void cFormPrincipal::Salir_Click() {
    Ejecuta("Salir_Click", [this] { c.ventanas.Salir(); });
}

void cFormPrincipal::SetDDELink(const QString &texto) {
    m_ddeLink = texto;
    if (m_alCambiarDDELink) m_alCambiarDDELink(m_ddeLink);
}

}  // namespace ondalis
