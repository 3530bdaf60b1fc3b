#include "speech/ControlHabla.h"

#include <algorithm>
#include <atomic>
#include <limits>
#include <mutex>
#include <utility>

namespace ondalis {

namespace {

// One counter for all controls: a number means one utterance in the whole process.
std::atomic<std::uint64_t> g_ultimoNumero{0};

// How long a waiting notice may take at the very most. Two seconds a character is several times what the slowest voice
// needs to spell it.
int LimiteEspera(const std::vector<Tramo> &tramos, int margenMs) {
    double ms = margenMs;
    for (const Tramo &tramo : tramos) {
        if (tramo.tipo == TipoTramo::Texto) ms += 2000.0 * static_cast<double>(tramo.texto.size());
        if (tramo.tipo == TipoTramo::Pausa) ms += std::max(0.0, tramo.valor);
    }
    return static_cast<int>(std::min<double>(ms, std::numeric_limits<int>::max()));
}

}  // namespace

struct ControlHabla::Interno {
    ControlHabla *control;  // null once it is gone; main thread

    std::mutex cerrojo;
    std::deque<EventoMotor> pendientes;  // Words and Ends not yet delivered, as they came; under cerrojo
    std::uint64_t ultimoFin = 0;         // whose End came last; under cerrojo
    std::u16string apuro;                // that it came with; under cerrojo
    std::uint64_t aceptada = 0;          // the utterance accepted last, unless it was stopped; under cerrojo
    bool incompleta = false;             // the engine has skipped a part of it; under cerrojo
    std::uint64_t sinPalabras = 0;  // the utterance whose Words nobody wants: a book's would pile up; under cerrojo
};

ControlHabla::ControlHabla(CanalVoz &canal, cCola &cola, cEstadoVoz &estado, cLog &log)
    : m_interno(std::make_shared<Interno>()), m_canal(canal), m_cola(cola), m_estado(estado), m_log(log) {
    m_interno->control = this;
    m_canal.SetOyente(this);
}

ControlHabla::~ControlHabla() {
    m_canal.SetOyente(nullptr);
    if (m_actual) m_canal.Detiene();
    m_interno->control = nullptr;
}

void ControlHabla::Acepta(const ParametrosVoz &voz, std::vector<Tramo> tramos, Modo modo) {
    const std::shared_ptr<Interno> vivo = m_interno;
    while (m_actual) {
        m_estado.valor = Retira().rol;
        LanzaStop();
        if (vivo->control == nullptr) return;  // the handler has dropped this object
    }

    const bool aviso = modo == Modo::Aviso || modo == Modo::AvisoEsperando;
    const bool espera = modo == Modo::LecturaEsperando || modo == Modo::AvisoEsperando;
    if (aviso) m_estado.valor = cEstadoVoz::Aviso;
    const std::int32_t rol = aviso                                  ? cEstadoVoz::Aviso
                             : m_estado.valor == cEstadoVoz::Remota ? cEstadoVoz::Remota
                                                                    : cEstadoVoz::Lectura;
    const std::uint64_t numero = ++g_ultimoNumero;
    const int limiteMs = espera ? LimiteEspera(tramos, m_margenEsperaMs) : 0;
    m_actual = Emision{numero, rol, aviso || espera};
    {
        const std::lock_guard cerrojo(m_interno->cerrojo);
        m_interno->sinPalabras = aviso || espera ? numero : 0;
        m_interno->apuro.clear();
        m_interno->aceptada = numero;
        m_interno->incompleta = false;
    }
    // Queued before the channel knows of it: no Word and no End can be ahead of it.
    m_cola.Pon(cCola::Clase::Inicio, [interno = m_interno, numero] {
        if (interno->control != nullptr) interno->control->EntregaInicio(numero);
    });
    Locucion locucion;
    locucion.numero = numero;
    locucion.voz = voz;
    locucion.tramos = std::move(tramos);
    m_canal.Habla(std::move(locucion));
    if (espera) EsperaFin(numero, limiteMs);
}

bool ControlHabla::EsperaHasta(std::uint64_t numero, int limiteMs) {
    const std::shared_ptr<Interno> interno = m_interno;
    const auto terminado = [interno, numero] {
        if (interno->control == nullptr) return true;
        const auto &actual = interno->control->m_actual;
        if (!actual || actual->numero != numero) return true;
        const std::lock_guard cerrojo(interno->cerrojo);
        return interno->ultimoFin == numero;
    };
    return m_cola.EsperaBloqueando(terminado, limiteMs);
}

bool ControlHabla::EsperaActual(int limiteMs) { return !m_actual || EsperaHasta(m_actual->numero, limiteMs); }

QString ControlHabla::Apuro() const {
    const std::lock_guard cerrojo(m_interno->cerrojo);
    return QString::fromStdU16String(m_interno->apuro);
}

bool ControlHabla::Incompleta() const {
    const std::lock_guard cerrojo(m_interno->cerrojo);
    return m_interno->incompleta;
}

void ControlHabla::EsperaFin(std::uint64_t numero, int limiteMs) {
    // Its Start and its End wait in the queue meanwhile and are delivered after the call, with EstadoVoz still 1.
    if (EsperaHasta(numero, limiteMs)) return;
    m_log.Escribe(QStringLiteral("ControlHabla.Acepta: "),
                  QStringLiteral("la locución %1 no ha terminado en %2 ms").arg(numero).arg(limiteMs));
    m_canal.Detiene();
    EventoMotor fin;
    fin.numero = numero;
    fin.texto = u"El motor de voz no termina";
    EventoDeMotor(fin);
}

void ControlHabla::Pausa() {
    if (!m_actual) return;
    m_reanudaPendiente = false;
    ++m_turnoReanuda;
    if (m_enPausa) return;
    m_enPausa = true;
    m_canal.Pausa();
}

void ControlHabla::Reanuda() {
    if (!m_enPausa || m_reanudaPendiente) return;
    m_reanudaPendiente = true;
    const auto reanuda = [interno = m_interno, turno = ++m_turnoReanuda] {
        if (interno->control != nullptr) interno->control->ReanudaYa(turno);
    };
    if (m_cola.EnManejador())
        m_cola.AlTerminar(reanuda);
    else
        m_cola.Pon(cCola::Clase::Inicio, reanuda);
}

void ControlHabla::ReanudaYa(std::uint64_t turno) {
    if (!m_reanudaPendiente || turno != m_turnoReanuda) return;
    m_reanudaPendiente = false;
    m_enPausa = false;
    m_canal.Reanuda();
    std::size_t retenidos = 0;
    {
        const std::lock_guard cerrojo(m_interno->cerrojo);
        retenidos = m_interno->pendientes.size();
    }
    // Their deliveries came while we were paused and found nothing to do.
    for (; retenidos > 0; --retenidos) PideEntrega();
}

void ControlHabla::Detiene() {
    if (!m_actual) return;
    Retira();
    LanzaStop();
}

ControlHabla::Emision ControlHabla::Retira() {
    m_canal.Detiene();
    m_enPausa = false;
    m_reanudaPendiente = false;
    ++m_turnoReanuda;
    {
        const std::lock_guard cerrojo(m_interno->cerrojo);
        m_interno->pendientes.clear();
        m_interno->aceptada = 0;
        m_interno->incompleta = false;
    }
    return *std::exchange(m_actual, std::nullopt);
}

// The handlers are copied before the call: one of them may set others or drop this object.
void ControlHabla::LanzaStop() {
    const auto manejador = m_eventos.alTerminar;
    if (manejador) manejador();
}

void ControlHabla::EntregaInicio(std::uint64_t numero) {
    if (!m_actual || m_actual->numero != numero) return;
    const auto manejador = m_eventos.alEmpezar;
    if (manejador) manejador();
}

void ControlHabla::EntregaEvento() {
    if (m_enPausa) return;
    EventoMotor evento;
    {
        const std::lock_guard cerrojo(m_interno->cerrojo);
        if (m_interno->pendientes.empty()) return;
        evento = std::move(m_interno->pendientes.front());
        m_interno->pendientes.pop_front();
    }
    if (!m_actual || evento.numero != m_actual->numero) return;
    if (evento.tipo == EventoMotor::Tipo::Fin) {
        m_actual.reset();
        LanzaStop();
        return;
    }
    const std::int64_t posicion = evento.posicion;
    // A worker that was replaced may say a word again; the reading never goes back for it.
    if (m_actual->sinPalabras || posicion < m_actual->ultimaPosicion ||
        posicion > std::numeric_limits<std::int32_t>::max())
        return;
    m_actual->ultimaPosicion = posicion;
    const auto manejador = m_eventos.alPalabra;
    if (manejador) manejador(static_cast<std::int32_t>(posicion));
}

void ControlHabla::PideEntrega() {
    m_cola.Pon(cCola::Clase::Motor, [interno = m_interno] {
        if (interno->control != nullptr) interno->control->EntregaEvento();
    });
}

void ControlHabla::EventoDeMotor(const EventoMotor &evento) {
    if (evento.tipo == EventoMotor::Tipo::Aviso) {
        if (evento.perdida) {
            const std::lock_guard cerrojo(m_interno->cerrojo);
            m_interno->incompleta = m_interno->incompleta || evento.numero == m_interno->aceptada;
        }
        m_log.Escribe(QStringLiteral("ControlHabla.EventoDeMotor: "), QString::fromStdU16String(evento.texto));
        return;
    }
    if (evento.tipo == EventoMotor::Tipo::Marca) return;  // no handler of the session takes bookmarks
    const bool fin = evento.tipo == EventoMotor::Tipo::Fin;
    {
        const std::lock_guard cerrojo(m_interno->cerrojo);
        if (!fin && evento.numero == m_interno->sinPalabras) return;
        m_interno->pendientes.push_back(evento);
        if (fin) {
            m_interno->ultimoFin = evento.numero;
            m_interno->apuro = evento.texto;
        }
    }
    PideEntrega();
    if (fin) m_cola.Despierta();
}

}  // namespace ondalis
