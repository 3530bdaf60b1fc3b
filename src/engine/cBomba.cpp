#include "engine/cBomba.h"

#include <poll.h>

#include <algorithm>
#include <utility>

#include "engine/Utf8.h"

namespace ondalis {

using namespace std::chrono_literals;

namespace {
// Reads of 64 KB in one step; more wait for the next one, behind the orders.
constexpr int kLecturasPorPaso = 4;
// The output's own clock lags a little behind the reckoned moment: ask again at this distance.
constexpr std::chrono::nanoseconds kReintento = 1ms;
constexpr std::size_t kMaxAvisos = 64;
constexpr std::uint32_t kHzMin = 8000;
constexpr std::uint32_t kHzMax = 48000;

}  // namespace

PlazosMotor PlazosMotor::SinPrisa() const {
    constexpr int kVeces = 15;
    PlazosMotor plazos = *this;
    plazos.primera *= kVeces;
    plazos.entre *= kVeces;
    for (auto &[motor, plazo] : plazos.deMotor) plazo *= kVeces;
    return plazos;
}

cBomba::cBomba(LanzadorMotor &lanzador, SalidaAudio &salida, const Reloj &reloj, PlazosMotor plazos)
    : m_lanzador(lanzador), m_reloj(reloj), m_plazos(std::move(plazos)), m_reproductor(salida, reloj) {}

void cBomba::Calienta() {
    if (m_enlace) return;
    if (auto proceso = m_lanzador.Lanza()) m_enlace = std::make_unique<cEnlaceMotor>(std::move(proceso));
}

void cBomba::Habla(Locucion locucion) {
    m_reproductor.Calla();  // silence before everything else
    m_pausa = false;
    m_numero = locucion.numero;
    m_apuro.clear();
    m_inacabada = m_suena = false;
    if (TamanoDeHabla(locucion) > kMaxTrama) {  // no worker would take it: it ends like a text with nothing to say
        AvisaApuro(u"La locución es demasiado larga", Perdida::Resto);
        locucion.tramos.clear();
    }
    m_recorrido.Empieza(std::move(locucion));
    m_debe = m_retenida = false;
    // One that has died unseen since the last utterance isn't this one's failure.
    if (m_enlace && LeeTramas() == cEnlaceMotor::Lectura::Rota) m_enlace.reset();
    Pide();
}

void cBomba::Detiene() {
    m_reproductor.Calla();
    m_pausa = false;
    if (m_numero == 0) return;
    m_numero = 0;
    m_recorrido.Empieza({});
    if (m_enlace && m_debe) m_enlace->Para();
    m_debe = false;
    m_plazo.reset();
    m_retenida = false;
}

void cBomba::Pausa(bool enPausa) {
    if (m_numero == 0) return;
    m_pausa = enPausa;
    m_reproductor.Pausa(enPausa);
}

void cBomba::Paso() {
    Comunica();
    m_reproductor.Bombea();
    RevisaPlazo();
}

void cBomba::Pide() {
    m_debe = true;
    m_formato = m_respondido = m_retenida = false;
    Calienta();
    if (!m_enlace) {
        AvisaApuro(u"No se puede iniciar el motor de voz", Perdida::Resto);
        Acaba();
        return;
    }
    m_enlace->Habla(m_recorrido.Peticion());
    ArmaPlazo();
}

void cBomba::ArmaPlazo() {
    if (!m_debe) {
        m_plazo.reset();
        return;
    }
    std::chrono::milliseconds limite = m_plazos.entre;
    if (!m_respondido) {
        const auto propio = m_plazos.deMotor.find(m_recorrido.Voz().motor);
        limite = propio == m_plazos.deMotor.end() ? m_plazos.primera : propio->second;
    }
    m_plazo = m_reloj.Ahora() + limite;
    m_prorrogado = false;
    m_enviadosAlArmar = m_enlace ? m_enlace->Enviados() : 0;
}

// The full buffer of a slow or paused voice holds the worker back; that is our doing and no hang of its.
bool cBomba::Retenida() {
    const bool retenida = m_debe && m_reproductor.Lleno();
    if (retenida != m_retenida) {
        m_retenida = retenida;
        if (retenida)
            m_plazo.reset();
        else
            ArmaPlazo();
    }
    return retenida;
}

void cBomba::Comunica() {
    if (!m_enlace) return;
    const bool escrito = m_enlace->Escribe();
    if (m_plazo && m_enlace->Enviados() != m_enviadosAlArmar && !m_respondido) ArmaPlazo();
    const unsigned generacion = m_generacion;
    const auto lectura = LeeTramas();
    if (generacion != m_generacion || lectura == cEnlaceMotor::Lectura::Algo) return;
    // What it sent before it died has been read by now.
    if (lectura == cEnlaceMotor::Lectura::Rota || !escrito) Falla(u"El motor de voz ha terminado");
}

// Algo: there may be more. After garbage the worker has been replaced already.
cEnlaceMotor::Lectura cBomba::LeeTramas() {
    using Lectura = cEnlaceMotor::Lectura;
    for (int i = 0; i < kLecturasPorPaso && !Retenida(); ++i) {
        const auto lectura = m_enlace->Lee();
        bool bien = true;
        while (bien) {
            auto trama = m_enlace->Siguiente();
            if (!trama) break;
            bien = Recibe(*trama);
        }
        if (!bien || m_enlace->Basura()) {
            Falla(u"El motor de voz ha dado datos sin sentido");
            return Lectura::Algo;
        }
        if (lectura != Lectura::Algo) return lectura;
    }
    return Lectura::Algo;
}

bool cBomba::Recibe(TramaPcm &trama) {
    if (trama.muestras.size() > kMaxMuestrasPcm) return false;
    if (trama.numero != m_numero || !m_debe) return true;
    if (!m_formato) return false;
    m_suena = m_suena || std::ranges::any_of(trama.muestras, [](std::int16_t m) { return m != 0; });
    m_reproductor.Anade(trama.muestras);
    m_recorrido.Recibidas(trama.muestras.size());
    if (!trama.muestras.empty()) m_respondido = true, ArmaPlazo();
    return true;
}

// False: no worker says that.
bool cBomba::Recibe(Trama &trama) {
    const auto nuestra = [this](std::uint64_t numero) { return m_debe && numero == m_numero; };
    if (auto *pcm = std::get_if<TramaPcm>(&trama)) return Recibe(*pcm);
    bool bien = true;
    if (auto *formato = std::get_if<TramaFormato>(&trama)) {
        if (formato->hercios < kHzMin || formato->hercios > kHzMax) return false;
        if (!nuestra(formato->numero)) return true;
        const int hz = static_cast<int>(formato->hercios);
        if (m_reproductor.Hercios() == 0) m_reproductor.Empieza(hz);
        bien = m_reproductor.Hercios() == hz;  // one stream an utterance
        m_formato = true;
    } else if (auto *palabra = std::get_if<TramaPalabra>(&trama)) {
        if (!nuestra(palabra->numero)) return true;
        bien = m_recorrido.Palabra(palabra->muestra, palabra->posicion, palabra->longitud);
    } else if (auto *marca = std::get_if<TramaMarca>(&trama)) {
        if (!nuestra(marca->numero)) return true;
        bien = m_recorrido.Marca(marca->muestra, std::move(marca->nombre));
    } else if (auto *error = std::get_if<TramaError>(&trama)) {
        if (!nuestra(error->numero)) return true;
        std::u16string texto = DeUtf8(error->texto);
        std::ranges::replace_if(
            texto, [](char16_t c) { return c < u' ' || c == u'\x7F'; }, u' ');
        AvisaApuro(u"El motor de voz rechaza la locución: " + texto, Perdida::Parte);
    } else if (auto *fin = std::get_if<TramaFin>(&trama)) {
        if (!nuestra(fin->numero)) return true;
        if (m_recorrido.Sigue())
            Pide();
        else
            Acaba();
        return true;
    } else {
        return std::holds_alternative<TramaVoz>(trama);
    }
    m_respondido = true;
    ArmaPlazo();
    return bien;
}

void cBomba::Acaba() {
    m_recorrido.Acaba();
    m_reproductor.Termina();
    m_debe = m_retenida = false;
    m_plazo.reset();
}

void cBomba::Falla(const char16_t *motivo) {
    m_enlace.reset();  // kills what hangs
    ++m_generacion;
    if (!m_debe) return;
    m_plazo.reset();
    std::u16string aviso = motivo;
    switch (m_recorrido.Falla()) {
        case cRecorrido::Remedio::Reintenta:
            AvisaApuro(aviso + u"; se reinicia", Perdida::Nada);
            Pide();
            break;
        case cRecorrido::Remedio::Salta:
            AvisaApuro(aviso + u"; se reinicia y se salta una frase", Perdida::Parte);
            Pide();
            break;
        case cRecorrido::Remedio::Acaba:
            AvisaApuro(aviso + u" al final de la locución", Perdida::Nada);
            Acaba();
            break;
        case cRecorrido::Remedio::Abandona:
            AvisaApuro(aviso + u" demasiadas veces; se abandona la locución", Perdida::Resto);
            Acaba();
            break;
    }
}

void cBomba::RevisaPlazo() {
    if (!m_plazo || m_reloj.Ahora() < *m_plazo) return;
    // It may have answered while this process was held up: what has come is looked at first, once.
    pollfd sondeo{m_enlace->Descriptor(), POLLIN, 0};
    if (!std::exchange(m_prorrogado, true) && poll(&sondeo, 1, 0) > 0) return;
    Falla(u"El motor de voz no responde");
}

void cBomba::AvisaApuro(std::u16string texto, Perdida perdida) {
    m_apuro = texto;
    m_inacabada = m_inacabada || perdida == Perdida::Resto;
    if (m_avisos.size() >= kMaxAvisos) return;
    EventoMotor evento;
    evento.numero = m_numero;
    evento.tipo = EventoMotor::Tipo::Aviso;
    evento.perdida = perdida != Perdida::Nada;
    evento.texto = std::move(texto);
    m_avisos.push_back(std::move(evento));
}

std::optional<EventoMotor> cBomba::SiguienteEvento() {
    if (m_pausa) return {};
    if (!m_avisos.empty()) {
        EventoMotor aviso = std::move(m_avisos.front());
        m_avisos.pop_front();
        return aviso;
    }
    if (m_numero == 0) return {};
    if (auto evento = m_recorrido.Siguiente(m_reproductor.Oidas())) return evento;
    if (!Terminada()) return {};
    EventoMotor fin;
    fin.numero = std::exchange(m_numero, 0);
    fin.tipo = EventoMotor::Tipo::Fin;
    if (m_inacabada || !m_suena) fin.texto = std::exchange(m_apuro, {});
    m_reproductor.Reposa();
    return fin;
}

cBomba::Espera cBomba::QueEspera() {
    Espera espera;
    if (m_enlace && !Retenida()) {  // else the death of one that is held back would wake us without end
        espera.descriptor = m_enlace->Descriptor();
        espera.sucesos = static_cast<short>(m_enlace->PorEscribir() ? POLLIN | POLLOUT : POLLIN);
    }
    const auto antes = [&espera](std::optional<std::chrono::nanoseconds> momento) {
        if (momento && (!espera.hasta || *momento < *espera.hasta)) espera.hasta = momento;
    };
    antes(m_plazo);
    antes(m_reproductor.Proximo());
    if (m_numero == 0 || m_pausa) return espera;
    const auto proximo = m_reloj.Ahora() + kReintento;
    const auto alOir = [&](std::uint64_t oidas) {
        if (auto momento = m_reproductor.MomentoDe(oidas)) antes(std::max(*momento, proximo));
    };
    // One whose sound hasn't come yet waits for that.
    if (auto oidas = m_recorrido.OidasParaSiguiente(); oidas && *oidas <= m_reproductor.Total()) alOir(*oidas);
    if (!m_debe) alOir(m_reproductor.Total());
    if (m_retenida) alOir(m_reproductor.Oidas() + m_reproductor.Guardadas() / 2 + 1);
    return espera;
}

}  // namespace ondalis
