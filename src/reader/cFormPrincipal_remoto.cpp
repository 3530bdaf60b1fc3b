// Commands of other programs. One is judged when it arrives, so that the sender has its answer at once; it is carried
// out from the queue, one after the other in the order of arrival, never inside another one.
#include "reader/Palabras.h"
#include "reader/cFormPrincipal.h"

namespace ondalis {

namespace {

const QString kProcedimiento = QStringLiteral("cFormPrincipal.Form_LinkExecute: ");
const QString kFinHabla = QStringLiteral("StopSpeaking");

// What may wait while a file is spoken. A sender that goes on for ever is refused before it fills the memory.
constexpr std::size_t kMaxRemotas = 10'000;
constexpr qsizetype kMaxLetrasRemotas = 64 * 1024 * 1024;

constexpr qsizetype kMaxEnMensaje = 300;  // a box with a whole book could not be shown

bool EsComando(const QString &comando) {
    return comando.startsWith(QLatin1String("FILETXT "), Qt::CaseInsensitive) ||
           comando.startsWith(QLatin1String("SPEAK "), Qt::CaseInsensitive);
}

QString Recortado(const QString &comando) {
    return comando.size() <= kMaxEnMensaje ? comando : comando.left(kMaxEnMensaje) + QStringLiteral("…");
}

}  // namespace

std::uint32_t cFormPrincipal::Form_LinkExecute(const QString &comando, std::int16_t &cancel) {
    cancel = -1;
    if (m_remotoCerrado) return 0;
    if (!EsComando(comando)) {
        const QString mensaje = QStringLiteral("Comando DDE erroneo (") + Recortado(comando) + QLatin1Char(')');
        // One event is one line of the log, whatever a sender puts into it.
        c.log.Escribe(kProcedimiento, QString(mensaje).replace(QLatin1Char('\n'), QLatin1Char(' ')));
        AvisaRemoto(mensaje);
        return 0;
    }
    if (m_remotas.size() >= kMaxRemotas || m_letrasRemotas + comando.size() > kMaxLetrasRemotas) {
        c.log.Escribe(kProcedimiento, QStringLiteral("Demasiadas órdenes en espera"));
        return 0;
    }
    if (++m_ultimaRemota == 0) ++m_ultimaRemota;
    m_remotas.push_back({m_ultimaRemota, comando});
    m_letrasRemotas += comando.size();
    c.cola.Pon(cCola::Clase::Orden, [this] { AtiendeRemota(); });
    cancel = 0;
    return m_ultimaRemota;
}

// The box comes by itself behind what is running: neither the sender nor the commands behind wait for it. While one is
// open a further one would only pile up; the log has them all.
void cFormPrincipal::AvisaRemoto(const QString &mensaje) {
    if (m_mensajeRemoto) return;
    m_mensajeRemoto = true;
    c.cola.Pon(cCola::Clase::Orden, [this, mensaje] {
        c.general.VMsg(kProcedimiento + mensaje);
        m_mensajeRemoto = false;
    });
}

void cFormPrincipal::AtiendeRemota() {
    // A stop lets pending events run: a command that comes in then waits for the end of this one.
    if (m_enRemota || m_remotas.empty()) return;
    const OrdenRemota orden = std::move(m_remotas.front());
    m_remotas.pop_front();
    m_letrasRemotas -= orden.comando.size();
    m_enRemota = true;
    Ejecuta("Form_LinkExecute", [this, &orden] { CumpleRemota(orden); });
    m_enRemota = false;
    if (m_remotaSonando != orden.numero) TerminaRemota(orden.numero);
    if (!m_remotas.empty()) c.cola.Pon(cCola::Clase::Orden, [this] { AtiendeRemota(); });
}

void cFormPrincipal::CumpleRemota(const OrdenRemota &orden) {
    SetIconoBarra(QStringLiteral("reloj"));
    SetDDELink(QString());
    const qsizetype blanco = orden.comando.indexOf(QLatin1Char(' '));
    const QString verbo = orden.comando.left(blanco);
    const QString argumento = SinBlancos(orden.comando.mid(blanco + 1));
    Detener_Click();
    // Accepted in any case, obeyed in capitals alone: old clients stop a reading with a verb in small letters.
    if (verbo == QLatin1String("SPEAK"))
        HablaRemota(orden.numero, argumento);
    else if (verbo == QLatin1String("FILETXT"))
        LeeFicheroRemoto(argumento);
    SetIconoBarra(IconoReposo());
}

void cFormPrincipal::HablaRemota(std::uint32_t numero, QString texto) {
    c.estadoVoz.valor = cEstadoVoz::Remota;
    const bool signos = c.opcGeneral.PronunciaSignosPunt();
    if (c.opcVoz.EsIBM() && signos) c.filtro.TrataSignosPuntuacion(texto);
    c.filtro.TrataConversionesDiccionario(texto);
    if (c.opcGrabar.GrabarTexto()) c.grabadora.GrabaEnFichero(texto, QString());
    // Without a speech there will be no stop: the state stays until the next one, and notices are dropped meanwhile.
    if (!c.opcGrabar.LeerTexto()) return;
    if (const Fallo fallo = c.motor.Habla(texto, signos)) throw ErrorFallo{fallo};
    m_remotaSonando = numero;
}

void cFormPrincipal::LeeFicheroRemoto(QString fichero) {
    fichero.remove(QLatin1Char('"'));
    QString texto = fichero;
    Fallo fallo;
    if (c.extractor) fallo = c.extractor->ConvierteAFichTexto(fichero, false, texto);
    if (!fallo && c.opcGrabar.GrabarTexto()) c.grabadora.GrabaEnFichero(QString(), texto);
    if (!c.opcGrabar.LeerTexto()) return;
    const bool documento = static_cast<bool>(fallo);
    if (!fallo) fallo = c.motor.HablaFichero(texto);
    if (fallo && (documento || c.opcVoz.EsIBM())) {
        if (!documento) c.log.Escribe(kProcedimiento, fallo.descripcion);
        AvisaRemoto(fallo.descripcion);
    } else if (fallo) {
        throw ErrorFallo{fallo};
    }
    // It has been waited for: this speech's end raises no event that would tell.
    SetDDELink(kFinHabla);
}

void cFormPrincipal::TerminaRemota(std::uint32_t numero) {
    if (numero != 0 && m_alTerminarRemota) m_alTerminarRemota(numero);
}

void cFormPrincipal::CierraRemoto() {
    m_remotoCerrado = true;
    m_remotas.clear();
    m_letrasRemotas = 0;
    if (m_enRemota) c.motor.CancelaEspera();
}

}  // namespace ondalis
