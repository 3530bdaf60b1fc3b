// The typing buffer, and the source that reads it: by a chosen key at once, by a sign or a change of window at a tick.
#include "reader/cFormPrincipal.h"

namespace ondalis {

namespace {

constexpr qsizetype kMaxTecleado = 65535;  // UTF-16 units; like a text box at its limit it takes no more
constexpr char32_t kRetroceso = 8, kTabulador = 9, kIntro = 13;

bool EsBlanco(QChar c) { return c == u' ' || c == u'\n' || c == u'\t'; }

// The last character as a reader counts it: a base letter goes with its marks, a surrogate pair goes whole.
qsizetype InicioUltimoCaracter(const QString &texto) {
    qsizetype i = texto.size();
    while (i > 0) {
        --i;
        if (texto[i].isLowSurrogate() && i > 0 && texto[i - 1].isHighSurrogate()) --i;
        if (!texto[i].isMark()) break;
    }
    return i;
}

void BorraUltimaPalabra(QString &texto) {
    qsizetype n = texto.size();
    while (n > 0 && EsBlanco(texto[n - 1])) --n;
    while (n > 0 && !EsBlanco(texto[n - 1])) --n;
    texto.truncate(n);
}

}  // namespace

void cFormPrincipal::SetHook(bool encendido) {
    if (encendido)
        c.gancho.IniciaHook();
    else
        c.gancho.TerminaHook();
}

void cFormPrincipal::TextoWindows_Tecleada(const TeclaEscrita &tecla) {
    Ejecuta("TextoWindows_Tecleada", [this, &tecla] {
        // A press that was still in the queue when the hook ended.
        if (!c.opcTipoLectura.LeeTeclado() || !ProgramaActivo()) return;
        // A hot key is an order to us; it isn't typed.
        if (EsTeclaRapida(tecla)) return;
        if (tecla.virtualKey != 0) TextoWindows_KeyDown(tecla.virtualKey);
        if (tecla.texto.isEmpty() && tecla.virtualKey == static_cast<int>(kRetroceso) &&
            tecla.mayusculas == TeclaEscrita::Control)
            BorraUltimaPalabra(m_l.TextoWindows);
        for (char32_t caracter : tecla.texto.toUcs4()) {
            TextoWindows_KeyPress(caracter);
            if (caracter != 0) EscribeEnTextoWindows(caracter);
        }
    });
}

bool cFormPrincipal::EsTeclaRapida(const TeclaEscrita &tecla) const {
    std::uint32_t modificadores = 0;
    if (tecla.mayusculas & TeclaEscrita::Alt) modificadores |= 1;
    if (tecla.mayusculas & TeclaEscrita::Control) modificadores |= 2;
    if (tecla.mayusculas & TeclaEscrita::Mayus) modificadores |= 4;
    for (const RegistroTecla &fila : c.tecla.Teclas())
        if (tecla.virtualKey != 0 && fila.CodigoTecla == tecla.virtualKey && fila.Modificadores == modificadores &&
            fila.NombreTecla != QLatin1String("BORRADO"))
            return true;
    return false;
}

void cFormPrincipal::TextoWindows_KeyDown(int virtualKey) {
    if (c.opcTipoLectura.LeeTeclado() && c.teclasLeeTeclado.EsTeclaParaLeer(virtualKey)) IniciaLecturaTeclado(true);
}

void cFormPrincipal::TextoWindows_KeyPress(char32_t &caracter) {
    const bool blanco = caracter == U' ' || caracter == U'\r' || caracter == U'\n' || caracter == U'\t';
    if (blanco && m_l.TextoWindows.isEmpty()) caracter = 0;
}

void cFormPrincipal::EscribeEnTextoWindows(char32_t caracter) {
    QString &texto = m_l.TextoWindows;
    if (caracter == kRetroceso) {
        texto.truncate(InicioUltimoCaracter(texto));
        return;
    }
    if (caracter == kIntro) caracter = U'\n';
    if ((caracter < U' ' && caracter != kTabulador && caracter != U'\n') || caracter == 0x7F) return;
    const QString entrada = QString::fromUcs4(&caracter, 1);
    if (texto.size() + entrada.size() <= kMaxTecleado) texto += entrada;
}

void cFormPrincipal::IniciaLecturaTeclado(bool forzar) {
    Ejecuta("IniciaLecturaTeclado", [this, forzar]() mutable {
        if (!EsTextoLeible(m_l.TextoWindows) || c.estadoVoz.valor == cEstadoVoz::Reservado) return;
        if (!forzar) {
            if (c.opcTipoLectura.LeeCambioApp()) {
                const std::uint32_t ventana = c.ventanaEnFoco.Ventana();
                if (m_ultimaVentana != 0 && m_ultimaVentana != ventana) forzar = true;
                m_ultimaVentana = ventana;
            }
            if (!forzar) forzar = c.teclasLeeTeclado.ExistenCharsParaLeer(m_l.TextoWindows);
        }
        if (!forzar) return;
        SetIconoBarra(QStringLiteral("reloj"));
        m_l.TextoLectura = TextoFiltrado(m_l.TextoWindows);
        // Also where only a file is made, which no reading follows: the text would be recorded again at each tick.
        m_l.TextoWindows.clear();
        IniciaLectura(2);
        m_ultimaVentana = 0;
    });
}

}  // namespace ondalis
