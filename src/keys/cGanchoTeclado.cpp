#include "keys/cGanchoTeclado.h"

namespace ondalis {

namespace {
// A focus event may come a little before the window manager has told of the window.
constexpr std::chrono::milliseconds kAdelanto(300);
constexpr int kTabulador = 9;  // virtual key
}  // namespace

cGanchoTeclado::cGanchoTeclado(TecladoSistema &teclado, FocoAccesible &foco, Temporizador &espera, const Reloj &reloj)
    : m_teclado(teclado), m_foco(foco), m_espera(espera), m_reloj(reloj) {
    m_teclado.SetTecla([this](const TeclaEscrita &tecla) { Tecla(tecla); });
    m_teclado.SetVentana([this](int proceso) { Ventana(proceso); });
    m_foco.SetPregunta([this](int proceso) { Pregunta(proceso); });
    m_foco.SetRespuesta([this](int proceso, Rol rol) { Responde(proceso, rol); });
    m_espera.SetManejador([this] {
        AcabaSuMomento();
        if (!Habla(m_enFrente)) m_callados.insert(m_enFrente);
        SueltaEspera();
    });
}

void cGanchoTeclado::IniciaHook() {
    if (m_encendido) return;
    m_encendido = true;
    m_foco.Inicia();
    m_teclado.Inicia();
}

void cGanchoTeclado::TerminaHook() {
    if (!m_encendido) return;
    m_encendido = false;
    AcabaSuMomento();
    m_teclado.Termina();
    m_foco.Termina();
    m_enEspera.clear();
    m_programas.clear();
    m_conVentana.clear();
    m_callados.clear();
    m_enFrente = m_suelto = 0;
}

void cGanchoTeclado::Ventana(int proceso) {
    if (!m_encendido) return;
    // What was typed before was meant for the window before: it is judged by what is known of that one.
    // Behind a Tab, or where an answer didn't come in time, it is better lost than a password told.
    std::deque<TeclaEscrita> anteriores;
    anteriores.swap(m_enEspera);
    if (m_trasTab) anteriores.clear();
    AcabaSuMomento();
    for (const TeclaEscrita &tecla : anteriores)
        if (!Esperando()) Dice(tecla);
    m_enFrente = proceso;
    if (proceso != 0) m_conVentana.insert(proceso);
    const bool adelantado = m_suelto != 0 && m_reloj.Ahora() - m_sueltoDesde < kAdelanto;
    const bool yaHaDicho = adelantado && m_suelto == proceso;
    if (!adelantado || yaHaDicho) m_suelto = 0;
    if (!yaHaDicho) DaSuMomento(m_callados.contains(proceso) ? kEsperaCalladoMs : kEsperaFocoMs);
}

void cGanchoTeclado::AcabaSuMomento() {
    m_enSuMomento = m_trasTab = false;
    m_espera.SetEnabled(false);
}

void cGanchoTeclado::DaSuMomento(int milisegundos) {
    AcabaSuMomento();
    m_enSuMomento = true;
    m_espera.SetIntervalo(milisegundos);
    m_espera.SetEnabled(true);
}

// For the window in front counts its own program's word, and that of a process without windows which has spoken since
// the window came, as a sandboxed program does through its proxy.
void cGanchoTeclado::AnotaSuelto(int proceso) {
    if (proceso == m_enFrente || m_conVentana.contains(proceso)) return;
    m_suelto = proceso;
    m_sueltoDesde = m_reloj.Ahora();
}

void cGanchoTeclado::Pregunta(int proceso) {
    if (!m_encendido) return;
    AnotaSuelto(proceso);
    m_programas[proceso].preguntado = true;
}

void cGanchoTeclado::Responde(int proceso, Rol rol) {
    if (!m_encendido) return;
    AnotaSuelto(proceso);
    // What waited for an answer that never came: better lost than a password told.
    Programa &programa = m_programas[proceso];
    const bool enJuego = proceso == m_enFrente || proceso == m_suelto;
    if (rol == Rol::Desconocido && programa.preguntado && enJuego) m_enEspera.clear();
    programa = {rol, false};
    if (enJuego) {
        if (rol != Rol::Desconocido) m_callados.erase(m_enFrente);
        AcabaSuMomento();
    }
    SueltaEspera();
}

bool cGanchoTeclado::Habla(int proceso) const {
    const auto dice = [this](int uno) {
        const auto programa = m_programas.find(uno);
        return uno != 0 && programa != m_programas.end() && programa->second.rol != Rol::Desconocido;
    };
    return dice(proceso) || dice(m_suelto);
}

bool cGanchoTeclado::Esperando() const {
    const auto preguntado = [this](int proceso) {
        const auto programa = m_programas.find(proceso);
        return programa != m_programas.end() && programa->second.preguntado;
    };
    return m_enSuMomento || preguntado(m_enFrente) || (m_suelto != 0 && preguntado(m_suelto));
}

void cGanchoTeclado::Tecla(const TeclaEscrita &tecla) {
    if (!m_encendido) return;
    if (m_teclado.EnSecretoPropio()) return;
    if (!Esperando()) {
        Entrega(tecla);
        return;
    }
    m_enEspera.push_back(tecla);
    if (m_enEspera.size() > kMaxEnEspera) m_enEspera.pop_front();
}

void cGanchoTeclado::Entrega(const TeclaEscrita &tecla) {
    Dice(tecla);
    constexpr int kOrden = TeclaEscrita::Control | TeclaEscrita::Alt | TeclaEscrita::Super;
    if (tecla.virtualKey == kTabulador && (tecla.mayusculas & kOrden) == 0 && Habla(m_enFrente)) {
        DaSuMomento(kEsperaTabMs);
        m_trasTab = true;
    }
}

void cGanchoTeclado::Dice(const TeclaEscrita &tecla) {
    for (const int proceso : {m_enFrente, m_suelto}) {
        const auto programa = m_programas.find(proceso);
        if (proceso != 0 && programa != m_programas.end() && programa->second.rol == Rol::Secreto) return;
    }
    if (m_tecleada) m_tecleada(tecla);
}

void cGanchoTeclado::SueltaEspera() {
    while (!m_enEspera.empty() && !Esperando()) {
        const TeclaEscrita tecla = m_enEspera.front();
        m_enEspera.pop_front();
        Entrega(tecla);
    }
}

}  // namespace ondalis
