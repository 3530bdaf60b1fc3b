// The tick and the source that it serves: a copied text is found by looking, there is no queue of copies.
#include "reader/Palabras.h"
#include "reader/cFormPrincipal.h"

namespace ondalis {

namespace {

constexpr qsizetype kMaxCopiadoIBM = 65000;   // units of a copy that an "IBM" reading takes in
constexpr qsizetype kMaxFiltradoIBM = 65500;  // units of it after the filter

}  // namespace

void cFormPrincipal::TimerLectura_Timer() {
    Ejecuta("TimerLectura_Timer", [this] {
        c.cola.DejaCorrer();
        if (m_l.Leyendo) {
            if (c.opcGrabar.GrabarTexto())
                m_numIcono = m_numIcono < 8 ? m_numIcono + 1 : 6;
            else
                m_numIcono = m_numIcono < 4 ? m_numIcono + 1 : 2;
            SetIconoBarra(m_numIcono);
        } else if (m_l.EnPausa) {
            // A document that was asked for can't be read during a pause.
            if (m_l.PendienteTeclado) SonidoGeneral(QStringLiteral("ERROR"));
        } else {
            if (c.opcTipoLectura.LeePortapapeles()) InicaLecturaPortapapeles();
            if (c.opcTipoLectura.LeeTeclado()) IniciaLecturaTeclado(false);
            m_l.PendienteTeclado = false;
        }
    });
}

void cFormPrincipal::InicaLecturaPortapapeles() {
    Ejecuta("InicaLecturaPortapapeles", [this] {
        if (!c.portapapeles.HayTexto()) return;
        const QString copiado = c.portapapeles.Texto();
        if (!EsTextoLeible(copiado) || c.estadoVoz.valor == cEstadoVoz::Reservado) return;
        if (c.opcTipoLectura.IgnoraMiniTexto() && SinBlancos(copiado).size() < c.opcTipoLectura.CharsMiniTexto())
            return;
        const bool ibm = c.opcVoz.EsIBM();
        const QString tomado = ibm ? Primeros(copiado, kMaxCopiadoIBM) : copiado;
        if (tomado == m_l.TextoCopiado) return;
        SetIconoBarra(QStringLiteral("reloj"));
        m_l.TextoCopiado = tomado;
        m_l.TextoLectura = TextoFiltrado(m_l.TextoCopiado);
        if (ibm) m_l.TextoLectura = Primeros(m_l.TextoLectura, kMaxFiltradoIBM);
        IniciaLectura(1);
    });
}

}  // namespace ondalis
