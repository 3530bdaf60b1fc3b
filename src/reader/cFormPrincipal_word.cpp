// Foreground documents: fetching one by its application's own copy command, and moving the word processor's selection
// along with the speech.
#include "reader/cFormPrincipal.h"

namespace ondalis {

void cFormPrincipal::TeclaImprPant() {
    Ejecuta("TeclaImprPant", [this] {
        if (ProgramaActivo()) {
            m_l.PendienteTeclado = true;
            if (!c.ventanaEnFoco.EsConsola()) LeeVentanaConFoco();
            return;
        }
        SonidoGeneral(QStringLiteral("ERROR"));
        if (c.opcTeclasRap.UtilizaAvisos()) DiInactivo();
    });
}

void cFormPrincipal::LeeVentanaConFoco() {
    Ejecuta("LeeVentanaConFoco", [this] {
        if (m_menu.Detener.Habilitada()) {
            SonidoGeneral(QStringLiteral("ERROR"));
            m_l.PendienteTeclado = false;
        } else if (c.enlaceWord.EnPrimerPlano()) {
            LeeDocumento([this] { return c.enlaceWord.SeleccionaTexto(); }, 7);
        } else if (c.enlaceExplorer.EnPrimerPlano()) {
            LeeDocumento([this] { return c.enlaceExplorer.SeleccionaTexto(); }, 8);
        } else {
            m_l.PendienteTeclado = false;
            SonidoGeneral(QStringLiteral("ERROR"));
            if (c.opcTeclasRap.UtilizaAvisos()) DiFila(10);
        }
    });
}

void cFormPrincipal::LeeDocumento(const std::function<bool()> &selecciona, std::int32_t filaError) {
    // The tick must not act on a copy half done; the one after it finds the text and reads it.
    c.timerLectura.SetEnabled(false);
    if (!selecciona()) {
        SonidoGeneral(QStringLiteral("ERROR"));
        if (c.opcTeclasRap.UtilizaAvisos()) DiFila(filaError);
    }
    c.timerLectura.SetEnabled(true);
}

void cFormPrincipal::DecideSeguimiento() {
    if (m_l.SeguimientoWord == -1)
        m_l.SeguimientoWord = 0;
    else if (c.editoresTexto.LocPalabrasEnWord())
        m_l.SeguimientoWord = c.enlaceWord.Conecta() ? 1 : 0;
    else if (c.editoresTexto.LocParadaEnWord())
        m_l.SeguimientoWord = c.enlaceWord.EnPrimerPlano() ? 1 : 0;
    else
        m_l.SeguimientoWord = 0;
}

void cFormPrincipal::SiguePalabra() {
    const QString palabra =
        c.filtro.PalabraLeido2Copiado(GetTramoLectura(), QString(), c.opcGeneral.PronunciaSignosPunt());
    c.enlaceWord.LocalizaPalabra(palabra, c.editoresTexto.MarcaEnWord(), false);
}

// PosPalabra is 0 by now, so a stop finds the place where the text last began; only a pause finds the spot reached.
void cFormPrincipal::SigueParada() {
    if (c.editoresTexto.LocPalabrasEnWord()) {
        c.enlaceWord.Desconecta();
    } else if (c.editoresTexto.LocParadaEnWord()) {
        const QString palabra =
            c.filtro.PalabraLeido2Copiado(GetTramoLectura(), QString(), c.opcGeneral.PronunciaSignosPunt());
        c.enlaceWord.LocalizaTexto(palabra, c.editoresTexto.MarcaEnWord(), 0, QString());
    }
}

void cFormPrincipal::SiguePausa(bool sinSalto) {
    const QString texto = c.filtro.Leido2Copiado(GetTramoLectura(), QString(), c.opcGeneral.PronunciaSignosPunt());
    c.enlaceWord.LocalizaTexto(texto, c.editoresTexto.MarcaEnWord(), sinSalto ? 0 : c.editoresTexto.SaltoWord(),
                               QString());
}

void cFormPrincipal::SigueMovimiento(Sentido sentido) {
    const bool palabras = c.editoresTexto.LocPalabrasEnWord();
    if (!palabras && !c.editoresTexto.LocParadaEnWord()) return;
    const QString texto = c.filtro.Leido2Copiado(GetTramoLectura(), QString(), c.opcGeneral.PronunciaSignosPunt());
    // Only a retreat wraps: its spot lies behind the search's start.
    if (palabras)
        c.enlaceWord.LocalizaPalabra(texto, false, sentido == Sentido::Atras);
    else
        c.enlaceWord.LocalizaTexto(texto, c.editoresTexto.MarcaEnWord(), 0, QString());
}

}  // namespace ondalis
