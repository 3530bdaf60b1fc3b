#include "engine/cReproductor.h"

#include <algorithm>

namespace ondalis {

using namespace std::chrono_literals;

namespace {
// The rate of the live engine: a stream made for it before the first utterance saves that one the wait.
constexpr int kHzPrevistos = 22050;
// A sink may need a second or two to wake (Bluetooth); longer than this it is held to be hung.
constexpr std::chrono::nanoseconds kAtasco = 3s;
constexpr std::chrono::nanoseconds kIntervaloMin = 1s;
constexpr std::chrono::nanoseconds kIntervaloMax = 30s;
// Before another attempt when a stream dies as soon as it is made.
constexpr std::chrono::nanoseconds kEntreIntentos = 500ms;
}  // namespace

cReproductor::cReproductor(SalidaAudio &real, const Reloj &reloj)
    : m_real(real), m_reloj(reloj), m_nula(reloj), m_intervalo(kIntervaloMin) {}

cReproductor::~cReproductor() { m_real.SetDespertador(nullptr); }

void cReproductor::SetDespertador(std::function<void()> despierta) {
    m_real.SetDespertador([this, despierta = std::move(despierta)] {
        m_despertado = true;
        despierta();
    });
}

void cReproductor::Calla() {
    if (m_donde == Donde::Real) m_real.Vacia();
    m_donde = Donde::Ninguna;
    m_hz = 0;
    m_pausa = m_terminado = m_completada = m_lleno = false;
    m_muestras.clear();
    m_cabeza = 0;
    m_total = m_oidas = m_escritas = m_base = 0;
}

void cReproductor::Empieza(int hz) {
    m_hz = hz;
    if (m_real.Viva() && m_hzReal == hz && !m_atascada)
        Toma(Donde::Real);
    else if (!(m_atascada && m_reloj.Ahora() < m_proximoIntento) && m_real.Abre(hz)) {
        m_hzReal = hz;
        Toma(Donde::Real);
    } else
        Toma(Donde::Nula);
}

void cReproductor::Anade(std::span<const std::int16_t> muestras) {
    if (TodoOido()) m_ultimoAvance = m_reloj.Ahora();  // what stood still for want of samples was not stuck
    m_muestras.insert(m_muestras.end(), muestras.begin(), muestras.end());
    m_total += muestras.size();
}

void cReproductor::Pausa(bool enPausa) {
    if (enPausa == m_pausa) return;
    m_pausa = enPausa;
    if (m_donde != Donde::Ninguna) Salida().Pausa(enPausa);
    m_ultimoAvance = m_reloj.Ahora();
}

void cReproductor::Reposa() {
    if (m_donde == Donde::Real) m_real.Reposa();
}

void cReproductor::Bombea() {
    const bool despertado = m_despertado.exchange(false);
    if (m_donde == Donde::Ninguna) {
        if (despertado) Calienta();
        return;
    }
    Escucha();
    CompruebaReal(despertado);
    Escribe();
    Escucha();  // a file has heard them already
    VigilaAtasco();
}

bool cReproductor::Lleno() {
    const std::size_t limite = static_cast<std::size_t>(m_hz) * kSegundosGuardados;
    // Hysteresis: the worker is read again when half is gone, and not frame by frame.
    if (m_hz == 0)
        m_lleno = false;
    else if (Guardadas() >= limite)
        m_lleno = true;
    else if (Guardadas() <= limite / 2)
        m_lleno = false;
    return m_lleno;
}

std::optional<std::chrono::nanoseconds> cReproductor::MomentoDe(std::uint64_t oidas) const {
    if (m_hz == 0 || m_pausa || m_donde == Donde::Ninguna) return {};
    if (oidas <= m_oidas) return m_reloj.Ahora();
    const std::uint64_t faltan = oidas - m_oidas;
    if (faltan > static_cast<std::uint64_t>(m_hz) * 3600) return {};  // not within the hour: something else wakes us
    return m_reloj.Ahora() + std::chrono::nanoseconds(faltan * 1'000'000'000 / static_cast<std::uint64_t>(m_hz) + 1);
}

std::optional<std::chrono::nanoseconds> cReproductor::Proximo() const {
    if (m_pausa || TodoOido()) return {};
    if (m_donde == Donde::Real) return m_ultimoAvance + kAtasco;
    if (m_donde == Donde::Nula) return m_proximoIntento;
    return {};
}

// A stream ready before it is needed, at start and after the server has been away.
void cReproductor::Calienta() {
    if (m_real.Viva() || m_reloj.Ahora() < m_noAntes) return;
    if (!m_real.Abre(kHzPrevistos)) return;
    m_noAntes = m_reloj.Ahora() + kEntreIntentos;
    m_hzReal = kHzPrevistos;
    m_real.Reposa();
}

void cReproductor::CompruebaReal(bool despertado) {
    const auto ahora = m_reloj.Ahora();
    if (m_donde == Donde::Real && !m_real.Viva()) {
        // Only its sink may have gone: another stream can often be had at once.
        if (!IntentaReal()) Toma(Donde::Nula);
    } else if (m_donde == Donde::Nula) {
        if (despertado) m_proximoIntento = ahora;
        if (!TodoOido() && ahora >= m_proximoIntento) IntentaReal();
    }
}

bool cReproductor::IntentaReal() {
    const auto ahora = m_reloj.Ahora();
    if (ahora < m_noAntes) {
        m_proximoIntento = m_noAntes;
        return false;
    }
    if (!m_real.Abre(m_hz)) {
        Aplaza();
        return false;
    }
    m_noAntes = ahora + kEntreIntentos;
    m_hzReal = m_hz;
    Toma(Donde::Real);
    return true;
}

void cReproductor::Toma(Donde donde) {
    m_donde = donde;
    m_base = m_escritas = m_oidas;
    m_completada = false;
    m_ultimoAvance = m_reloj.Ahora();
    if (donde == Donde::Nula) {
        m_nula.Abre(m_hz);
        m_proximoIntento = std::max(m_proximoIntento, m_ultimoAvance + kEntreIntentos);
    }
    if (m_pausa) Salida().Pausa(true);
}

void cReproductor::Escucha() {
    const std::uint64_t oidas = std::min(m_base + Salida().Oidas(), m_escritas);
    if (oidas <= m_oidas) return;
    m_cabeza += oidas - m_oidas;
    m_oidas = oidas;
    m_ultimoAvance = m_reloj.Ahora();
    if (m_donde == Donde::Real && m_oidas - m_base > static_cast<std::uint64_t>(m_hz)) {
        m_intervalo = kIntervaloMin;
        m_atascada = false;
    }
    if (m_cabeza * 2 < m_muestras.size()) return;
    m_muestras.erase(m_muestras.begin(), m_muestras.begin() + static_cast<std::ptrdiff_t>(m_cabeza));
    m_cabeza = 0;
}

void cReproductor::Escribe() {
    SalidaAudio &salida = Salida();
    while (m_escritas < m_total) {
        const std::size_t desde = m_cabeza + (m_escritas - m_oidas);
        const std::size_t tomadas = salida.Escribe(m_muestras.data() + desde, m_muestras.size() - desde);
        if (tomadas == 0) break;
        m_escritas += tomadas;
    }
    if (!m_terminado || m_completada || m_escritas < m_total) return;
    salida.Completa();
    m_completada = true;
}

void cReproductor::VigilaAtasco() {
    if (m_donde != Donde::Real || m_pausa || TodoOido()) return;
    if (m_reloj.Ahora() < m_ultimoAvance + kAtasco) return;
    m_real.Vacia();  // if it wakes up later it mustn't say what the null clock has said
    m_atascada = true;
    Aplaza();
    Toma(Donde::Nula);
    Escribe();
}

void cReproductor::Aplaza() {
    m_proximoIntento = m_reloj.Ahora() + m_intervalo;
    m_intervalo = std::min(m_intervalo * 2, kIntervaloMax);
}

}  // namespace ondalis
