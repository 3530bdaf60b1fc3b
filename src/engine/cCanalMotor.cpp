#include "engine/cCanalMotor.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <system_error>
#include <utility>

namespace ondalis {

namespace {
int CreaTimbre() {
    const int descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (descriptor < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
    return descriptor;
}
}  // namespace

cCanalMotor::cCanalMotor(LanzadorMotor &lanzador, SalidaAudio &salida, const Reloj &reloj, PlazosMotor plazos)
    : m_reloj(reloj), m_timbre(CreaTimbre()), m_salida(salida), m_bomba(lanzador, salida, reloj, std::move(plazos)) {
    m_bomba.SetDespertador([this] { Despierta(); });
    m_hilo = std::thread([this] { Corre(); });
    m_salida.SetAsentador([this] { Asienta(); });
}

cCanalMotor::~cCanalMotor() {
    m_salida.SetAsentador(nullptr);
    {
        std::lock_guard guarda(m_cerrojo);
        m_cierra = true;
        m_hayOrdenes = true;
    }
    m_vigente = 0;
    Despierta();
    m_hilo.join();
    m_bomba.SetDespertador([] {});  // before the descriptor's number can belong to somebody else
    close(m_timbre);
}

void cCanalMotor::SetOyente(OyenteMotor *oyente) {
    std::unique_lock guarda(m_cerrojoOyente);
    m_oyente = oyente;
    // The listener itself may set another one: then the call under way is its own.
    if (std::this_thread::get_id() == m_hilo.get_id()) return;
    m_entregado.wait(guarda, [this] { return !m_entregando; });
}

void cCanalMotor::Habla(Locucion locucion) {
    {
        std::lock_guard guarda(m_cerrojo);
        m_vigente = locucion.numero;
        m_ordenes = {std::move(locucion), false, std::nullopt};
        ++m_dadas;
        m_hayOrdenes = true;
    }
    Despierta();
}

void cCanalMotor::Detiene() {
    {
        std::lock_guard guarda(m_cerrojo);
        m_vigente = 0;
        m_ordenes = {std::nullopt, true, std::nullopt};
        ++m_dadas;
        m_hayOrdenes = true;
    }
    Despierta();
}

void cCanalMotor::PonPausa(bool enPausa) {
    {
        std::lock_guard guarda(m_cerrojo);
        m_ordenes.pausa = enPausa;
        ++m_dadas;
        m_hayOrdenes = true;
    }
    Despierta();
}

void cCanalMotor::Despierta() {
    const std::uint64_t uno = 1;
    [[maybe_unused]] const ssize_t n = write(m_timbre, &uno, sizeof uno);  // full means that it rings already
}

// False at the end.
bool cCanalMotor::Cumple() {
    if (!m_hayOrdenes) return true;
    Ordenes ordenes;
    std::uint64_t dadas = 0;
    {
        std::lock_guard guarda(m_cerrojo);
        if (m_cierra) return false;
        ordenes = std::exchange(m_ordenes, {});
        dadas = m_dadas;
        m_hayOrdenes = false;
    }
    if (ordenes.detiene) m_bomba.Detiene();
    if (ordenes.habla) m_bomba.Habla(std::move(*ordenes.habla));
    if (ordenes.pausa) m_bomba.Pausa(*ordenes.pausa);
    {
        std::lock_guard guarda(m_cerrojo);
        m_cumplidas = dadas;
    }
    m_asentado.notify_all();
    return true;
}

void cCanalMotor::Asienta() {
    if (std::this_thread::get_id() == m_hilo.get_id()) return;
    std::unique_lock guarda(m_cerrojo);
    m_asentado.wait(guarda, [this, dadas = m_dadas] { return m_cierra || m_cumplidas >= dadas; });
}

void cCanalMotor::Corre() {
    m_bomba.Calienta();
    while (Cumple()) {
        m_bomba.Paso();
        while (!m_hayOrdenes) {
            const auto evento = m_bomba.SiguienteEvento();
            if (!evento) break;
            Entrega(*evento);
        }
        if (!m_hayOrdenes) Duerme();
    }
    m_bomba.Detiene();
}

void cCanalMotor::Entrega(const EventoMotor &evento) {
    OyenteMotor *oyente = nullptr;
    {
        std::lock_guard guarda(m_cerrojoOyente);
        if (evento.tipo != EventoMotor::Tipo::Aviso && evento.numero != m_vigente) return;
        oyente = m_oyente;
        m_entregando = oyente != nullptr;
    }
    if (!oyente) return;
    oyente->EventoDeMotor(evento);
    {
        std::lock_guard guarda(m_cerrojoOyente);
        m_entregando = false;
    }
    m_entregado.notify_all();
}

void cCanalMotor::Duerme() {
    const auto espera = m_bomba.QueEspera();
    pollfd sondeos[2] = {{m_timbre, POLLIN, 0}, {espera.descriptor, espera.sucesos, 0}};
    timespec plazo{};
    if (espera.hasta) {
        const auto falta = std::max(*espera.hasta - m_reloj.Ahora(), std::chrono::nanoseconds{0});
        plazo.tv_sec = falta.count() / 1'000'000'000;
        plazo.tv_nsec = falta.count() % 1'000'000'000;
    }
    ppoll(sondeos, 2, espera.hasta ? &plazo : nullptr, nullptr);
    std::uint64_t veces = 0;
    [[maybe_unused]] const ssize_t n = read(m_timbre, &veces, sizeof veces);
}

}  // namespace ondalis
