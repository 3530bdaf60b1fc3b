// What the user does to a reading: stop, pause and resume, repeat, and moves by words. Engines can't seek, so a move is
// a restart: stop, find the new start in the text, speak the rest.
#include "libs/ondalis_palabras.h"
#include "reader/Palabras.h"
#include "reader/cFormPrincipal.h"

namespace ondalis {

void cFormPrincipal::Detener_Click() {
    Ejecuta("Detener_Click", [this] {
        if (m_l.EnPausa) {
            // The engine has to be running before it can be stopped cleanly.
            m_l.SeguimientoWord = 0;
            c.motor.Reanuda();
            m_menu.PausaReanudar.SetRotulo(RotuloPausa(false));
            if (m_l.TipoLectura == 3 && c.editor) c.editor->RotulaPausa(QStringLiteral("Pausar"), QString());
            c.cola.DejaCorrer();
        }
        c.motor.Detiene();
        Voz_StopSpeaking();
    });
}

void cFormPrincipal::PausaReanudar_Click() {
    Ejecuta("PausaReanudar_Click", [this] {
        if (m_l.PosPalabra != 0) PausaReanudaLectura(false, false);
    });
}

void cFormPrincipal::PausaReanudaLectura(bool sinSalto, bool reinicia) {
    Ejecuta("PausaReanudaLectura", [this, sinSalto, reinicia] {
        // The tick must not look at the clipboard between the two states.
        if (ProgramaActivo()) c.timerLectura.SetEnabled(false);
        if (m_l.Leyendo)
            Pausa(sinSalto, reinicia);
        else
            Reanuda(reinicia);
        if (ProgramaActivo()) c.timerLectura.SetEnabled(true);
    });
}

void cFormPrincipal::Reanuda(bool reinicia) {
    SonidoDeLectura(QStringLiteral("PAUSA"));
    if (reinicia) {
        IniciaLectura(m_l.TipoLectura);
        return;
    }
    m_l.Leyendo = true;
    m_l.EnPausa = false;
    c.motor.Reanuda();
    m_menu.PausaReanudar.SetRotulo(RotuloPausa(false));
    if (m_l.TipoLectura == 3 && c.editor) c.editor->RotulaPausa(QStringLiteral("Pausar"), QStringLiteral("Pausar"));
}

void cFormPrincipal::Pausa(bool sinSalto, bool reinicia) {
    m_l.Leyendo = false;
    if (!reinicia) {
        c.motor.Pausa();
        m_l.EnPausa = true;
    }
    m_menu.PausaReanudar.SetRotulo(RotuloPausa(true));
    // The button is short.
    if (m_l.TipoLectura == 3 && c.editor) c.editor->RotulaPausa(QStringLiteral("Reanud"), QStringLiteral("Reanudar"));
    SonidoDeLectura(QStringLiteral("PAUSA"));
    if (c.editoresTexto.LocParadaEnWord() && m_l.TipoLectura == 1 && m_l.SeguimientoWord == 1) SiguePausa(sinSalto);
}

void cFormPrincipal::RepetirLectura_Click() {
    Ejecuta("RepetirLectura_Click", [this] {
        if (m_l.TipoLectura == 3) return;  // the editor has its own buttons
        c.timerLectura.SetEnabled(false);
        // The clipboard is looked at although the text to repeat is ours: emptying it forbids the repeat.
        if (m_l.TipoLectura == 1 && SinBlancos(c.portapapeles.Texto()).isEmpty()) {
            SonidoGeneral(QStringLiteral("ERROR"));
            if (c.opcTeclasRap.UtilizaAvisos()) DiFila(4);
        } else {
            SetIconoBarra(QStringLiteral("reloj"));
            SonidoDeLectura(QStringLiteral("REPETIRLECTURA"));
            if (m_l.TipoLectura == 1) m_l.SeguimientoWord = -1;
            IniciaLectura(m_l.TipoLectura);
        }
        // Keys are obeyed while the box of a refused text is open: the program may have been switched off meanwhile.
        if (ProgramaActivo()) c.timerLectura.SetEnabled(true);
    });
}

void cFormPrincipal::AvanzarPalabras_Click() {
    Ejecuta("AvanzarPalabras_Click", [this] {
        if (!PreparaMovimiento()) return;
        if (!AvanzaPosicion()) {
            const QString texto = SinBlancos(m_l.TextoLectura);
            m_l.PosPalabra = 0;
            m_l.PosBase = static_cast<std::int32_t>(texto.lastIndexOf(QLatin1Char(' '))) + 2;
            c.estadoVoz.valor = cEstadoVoz::Lectura;
            Voz_StopSpeaking();
            return;
        }
        m_l.PosPalabra = 0;
        if (m_l.SeguimientoWord == 1) SigueMovimiento(Sentido::Adelante);
        HablaResto();
    });
}

void cFormPrincipal::RetrocederPalabras_Click() {
    Ejecuta("RetrocederPalabras_Click", [this] {
        if (!PreparaMovimiento()) return;
        RetrocedePosicion();
        m_l.PosPalabra = 0;
        if (m_l.SeguimientoWord == 1) SigueMovimiento(Sentido::Atras);
        HablaResto();
    });
}

// The common beginning of both moves; false when there is nothing to move. Afterwards the engine is silent and PosBase
// is the word that was being spoken.
bool cFormPrincipal::PreparaMovimiento() {
    if (m_l.TipoLectura != 1) return false;
    if (m_l.EnPausa) PausaReanudaLectura(false, false);
    c.estadoVoz.valor = cEstadoVoz::Reinicio;  // before the engine is touched: its stop comes inside the call
    c.motor.Detiene();
    SonidoDeLectura(QStringLiteral("AVANZARRETROCEDER"));
    m_l.PosBase += m_l.PosPalabra;
    return true;
}

// False when the end of the text has been passed.
bool cFormPrincipal::AvanzaPosicion() {
    const std::string bytes = BytesDePalabras(m_l.TextoLectura);
    for (int i = 0; i < c.opcTeclasRap.NroPalAvance(); ++i) {
        m_l.PosBase = SigPosPalabra(m_l.PosBase + 1, bytes.c_str());
        if (m_l.PosBase == 0) return false;
        // Beyond 32767 the position has wrapped: there is no way on from it, and the restart will refuse it.
        if (m_l.PosBase < 0) break;
    }
    return true;
}

void cFormPrincipal::RetrocedePosicion() {
    if (m_l.PosBase <= 1) {
        m_l.PosBase = 1;
        return;
    }
    const std::string bytes = BytesDePalabras(m_l.TextoLectura);
    for (int i = 0; i < c.opcTeclasRap.NroPalRetroceso(); ++i) {
        m_l.PosBase = AntPosPalabra(m_l.PosBase - 1, bytes.c_str());
        if (m_l.PosBase > 1) continue;
        m_l.PosBase = 1;
        break;
    }
}

void cFormPrincipal::HablaResto() {
    if (m_l.PosBase < 1) throw ErrorFallo{Fallo::De(Fallo::LlamadaNoValida)};
    // A restart never asks the engine to name the signs, whatever the option says.
    if (const Fallo fallo = c.motor.Habla(m_l.TextoLectura.mid(m_l.PosBase - 1), false)) throw ErrorFallo{fallo};
}

}  // namespace ondalis
