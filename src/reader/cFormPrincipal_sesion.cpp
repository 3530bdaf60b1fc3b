// The reading itself: how one begins, what the engine's events do to it, and the spoken notices beside it.
#include <algorithm>
#include <new>
#include <utility>

#include "reader/Palabras.h"
#include "reader/cFormPrincipal.h"

namespace ondalis {

namespace {

constexpr qsizetype kSiempreLeible = 200;  // a longer text is read without a look at it
constexpr qsizetype kTramo = 100;          // longest search key for the word processor

}  // namespace

bool cFormPrincipal::EsTextoLeible(const QString &texto) const {
    if (texto.size() > kSiempreLeible) return true;
    return std::any_of(texto.begin(), texto.end(), [](QChar letra) {
        return letra != QLatin1Char(' ') && letra != QLatin1Char('\r') && letra != QLatin1Char('\n') &&
               letra != QLatin1Char('\t');
    });
}

QString cFormPrincipal::TextoFiltrado(const QString &texto) {
    QString copia = texto;
    Ejecuta("TextoFiltrado", [&] {
        // A SAPI 5 engine names the signs itself, by a flag of the call.
        if (c.opcVoz.EsIBM() && c.opcGeneral.PronunciaSignosPunt()) c.filtro.TrataSignosPuntuacion(copia);
        c.filtro.TrataConversionesDiccionario(copia);
    });
    return copia;
}

void cFormPrincipal::IniciaLectura(std::int32_t tipo) {
    Fallo fallo;
    try {
        Envia(tipo);
    } catch (const ErrorFallo &error) {
        fallo = error.fallo;
    } catch (const std::bad_alloc &) {
        fallo = Fallo::De(Fallo::SinMemoria);
    } catch (const std::exception &error) {
        fallo = Fallo::De(Fallo::LlamadaNoValida, QString::fromUtf8(error.what()));
    } catch (...) {
        fallo = Fallo::De(Fallo::LlamadaNoValida);
    }
    if (fallo) InformaFalloDeLectura(fallo);
    IconoTrasInicio();
}

void cFormPrincipal::Envia(std::int32_t tipo) {
    m_l.PosBase = 1;
    if (tipo != 3 && c.opcGrabar.GrabarTexto()) c.grabadora.GrabaEnFichero(m_l.TextoLectura, QString());
    if (!c.opcGrabar.LeerTexto() && tipo != 3) return;
    m_l.TipoLectura = tipo;
    m_l.TextoWindows.clear();
    // A recording that goes on beside the reading belongs to the same engine: it must not be cancelled.
    if (c.opcVoz.EsIBM() && !c.opcGrabar.GrabarTexto()) c.motor.CancelaECI();
    if (const Fallo fallo = c.motor.Habla(m_l.TextoLectura, c.opcGeneral.PronunciaSignosPunt()))
        throw ErrorFallo{fallo};
    m_l.Leyendo = true;
    m_l.EnPausa = false;
}

void cFormPrincipal::InformaFalloDeLectura(const Fallo &fallo) {
    const QString procedimiento = QStringLiteral("cFormPrincipal.IniciaLectura: ");
    QString mensaje;
    if (fallo.numero == Fallo::SintaxisDeEtiquetas) {
        mensaje = QStringLiteral("Error de sintaxis en la etiquetas del texto");
    } else {
        mensaje = cGeneral::VBError(fallo);
        c.log.Escribe(procedimiento, fallo, QString::number(fallo.linea));
    }
    c.general.VMsg(procedimiento + mensaje);
}

void cFormPrincipal::IconoTrasInicio() {
    if (!ProgramaActivo())
        SetIconoBarra(QStringLiteral("inactivo"));
    else
        SetIconoBarra(c.opcGrabar.GrabarTexto() ? QStringLiteral("activorojo1") : QStringLiteral("activoblanco1"));
}

void cFormPrincipal::Voz_StartSpeaking() {
    Ejecuta("Voz_StartSpeaking", [this] {
        if (c.estadoVoz.valor == cEstadoVoz::Aviso) return;
        if (c.estadoVoz.valor == cEstadoVoz::Reinicio) {
            c.estadoVoz.valor = cEstadoVoz::Lectura;
            return;
        }
        if (!ProgramaActivo()) return;
        m_l.Leyendo = true;
        m_l.EnPausa = false;
        const bool reservado = c.estadoVoz.valor == cEstadoVoz::Reservado;
        m_menu.PausaReanudar.SetHabilitada(true);
        m_menu.Detener.SetHabilitada(true);
        m_menu.RepetirLectura.SetHabilitada(false);
        m_menu.AvanzarPalabras.SetHabilitada(true);
        m_menu.RetrocederPalabras.SetHabilitada(!reservado);
        m_menu.AvanzarPalabras.SetRotulo(reservado ? QStringLiteral("Avanzar variable") : RotuloAvanzar());
        if (m_l.TipoLectura == 1) DecideSeguimiento();
    });
}

void cFormPrincipal::Voz_WordPosition(std::int32_t pos) {
    Ejecuta("Voz_WordPosition", [this, pos] {
        m_l.PosPalabra = pos;
        if (m_l.TipoLectura == 3 && c.estadoVoz.valor == cEstadoVoz::Lectura && c.editor)
            c.editor->LocalizaPalabra(pos);
        if (m_l.TipoLectura == 1 && m_l.SeguimientoWord == 1 && c.editoresTexto.LocPalabrasEnWord()) SiguePalabra();
    });
}

QString cFormPrincipal::GetTramoLectura() const {
    QString tramo;
    c.general.Ejecuta(QStringLiteral("cFormPrincipal.GetTramoLectura: "), cGeneral::Aviso::SoloLog, [this, &tramo] {
        const qsizetype desde = qsizetype{m_l.PosBase} + m_l.PosPalabra;
        if (desde < 1) throw ErrorFallo{Fallo::De(Fallo::LlamadaNoValida)};
        tramo = m_l.TextoLectura.mid(desde - 1, kTramo);
        if (tramo.size() < kTramo) return;
        // The fragment is searched for in a document: half a word at its end would not be found.
        const qsizetype blanco = tramo.lastIndexOf(QLatin1Char(' '));
        if (blanco >= 1)
            tramo.truncate(blanco);
        else if (tramo.back().isHighSurrogate())
            tramo.chop(1);
    });
    return tramo;
}

// Comes twice for one stop of the user, by the engine and by the direct call: the second time it must do no harm.
void cFormPrincipal::Voz_StopSpeaking() {
    Ejecuta("Voz_StopSpeaking", [this] {
        if (m_l.TipoLectura == 3) BotonesEditorEnReposo();
        if (c.estadoVoz.valor == cEstadoVoz::Aviso) {
            c.estadoVoz.valor = cEstadoVoz::Lectura;
            return;
        }
        if (c.estadoVoz.valor == cEstadoVoz::Reinicio) return;
        m_numIcono = ProgramaActivo() ? IconoReposo() : 9;
        SetIconoBarra(m_numIcono);
        m_l.PosPalabra = 0;
        m_l.Leyendo = false;
        m_l.EnPausa = false;
        TerminaRemota(std::exchange(m_remotaSonando, 0));
        if (!m_menu.Detener.Habilitada()) return;
        if (c.estadoVoz.valor == cEstadoVoz::Remota) {
            SetDDELink(QStringLiteral("StopSpeaking"));
            c.estadoVoz.valor = cEstadoVoz::Lectura;
        }
        // A SAPI 5 voice must not stay paused for the next speech.
        if (!c.opcVoz.EsIBM() && m_menu.PausaReanudar.Rotulo().startsWith(QLatin1String("Reanudar"))) {
            m_l.SeguimientoWord = 0;
            c.motor.Reanuda();
            m_menu.PausaReanudar.SetRotulo(RotuloPausa(false));
        }
        TerminaMenus();
        if (ProgramaActivo()) TerminaActivo();
    });
}

void cFormPrincipal::BotonesEditorEnReposo() {
    if (!c.editor) return;
    for (const char *boton : {"leer", "grabar", "etiqueta"}) c.editor->HabilitaBoton(QLatin1String(boton), true);
    for (const char *boton : {"pausar", "detener"}) c.editor->HabilitaBoton(QLatin1String(boton), false);
}

void cFormPrincipal::TerminaMenus() {
    m_menu.PausaReanudar.SetHabilitada(false);
    m_menu.Detener.SetHabilitada(false);
    m_menu.AvanzarPalabras.SetRotulo(RotuloAvanzar());
    m_menu.AvanzarPalabras.SetHabilitada(false);
    m_menu.RetrocederPalabras.SetHabilitada(false);
}

void cFormPrincipal::TerminaActivo() {
    m_menu.RepetirLectura.SetHabilitada(true);
    SonidoDeLectura(QStringLiteral("DETENER"));
    if (m_l.TipoLectura == 1 && m_l.SeguimientoWord == 1) SigueParada();
}

void cFormPrincipal::DiAviso(const QString &texto) {
    Ejecuta("DiAviso", [this, &texto] {
        if (c.estadoVoz.valor != cEstadoVoz::Lectura) return;
        c.estadoVoz.valor = cEstadoVoz::Aviso;  // before the engine is touched: its events may come inside the call
        if (const Fallo fallo = c.motor.HablaAviso(texto)) throw ErrorFallo{fallo};
    });
}

void cFormPrincipal::DiFila(std::int32_t fila) { DiAviso(c.txtLengua.GetTexto(c.opcVoz.LenguaVoz(), fila)); }

void cFormPrincipal::DiInactivo() {
    DiAviso(QLatin1String(Producto::Titulo) + QLatin1Char(' ') + c.txtLengua.GetTexto(c.opcVoz.LenguaVoz(), 1));
}

void cFormPrincipal::SonidoDeLectura(const QString &nombre) {
    if (!c.opcGeneral.UtilizaSonidos()) return;
    if ((c.sonidosAviso.Portapapeles() && m_l.TipoLectura == 1) ||
        (c.sonidosAviso.LeeTeclado() && m_l.TipoLectura == 2))
        c.sonido.Reproduce(nombre);
}

void cFormPrincipal::SonidoGeneral(const QString &nombre) {
    if (c.opcGeneral.UtilizaSonidos() && c.sonidosAviso.AvisosGenerales()) c.sonido.Reproduce(nombre);
}

}  // namespace ondalis
