#include "worker/cServidor.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace ondalis {

namespace {
// Bytes kept on this side before the engine is made to wait; what the socket holds comes on top.
constexpr std::size_t kMaxPendiente = 16 * 1024;
}  // namespace

int cServidor::Atiende() {
    if (!Espera(false)) m_motor.Prepara();
    while (!m_cerrado) {
        if (m_siguiente)
            Habla();
        else if (m_pidenVoces)
            DiceVoces();
        else
            Espera(true);
    }
    return m_basura ? 1 : 0;
}

void cServidor::Habla() {
    const Locucion locucion = std::move(*m_siguiente);
    m_siguiente.reset();
    m_numero = locucion.numero;
    m_parada = false;
    m_motor.Habla(locucion, *this);
    EnviaDeLocucion(TramaFin{m_numero});
}

void cServidor::DiceVoces() {
    m_pidenVoces = false;
    for (TramaVoz &voz : m_motor.Voces()) Envia(std::move(voz), false);
    for (std::string &queja : m_motor.Quejas()) Envia(TramaError{0, std::move(queja)}, false);
    Envia(TramaFin{0}, false);
}

// Waits for a request, or with `bloquea` false only looks. True when there was something to do.
bool cServidor::Espera(bool bloquea) {
    pollfd p{m_zocalo, POLLIN, 0};
    if (Pendiente() > 0) p.events |= POLLOUT;
    int n = 0;
    do n = poll(&p, 1, bloquea ? -1 : 0);
    while (n < 0 && errno == EINTR);
    if (n < 0) m_cerrado = true;
    if (n <= 0) return n < 0;
    if (p.revents & (POLLIN | POLLHUP | POLLERR | POLLNVAL)) Lee();
    if (p.revents & POLLOUT) Escribe();
    return true;
}

void cServidor::Lee() {
    std::array<std::uint8_t, 65536> bytes;
    while (!m_cerrado) {
        const ssize_t n = recv(m_zocalo, bytes.data(), bytes.size(), MSG_DONTWAIT);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return;
        if (n <= 0) {
            m_cerrado = true;
            return;
        }
        m_entrada.Alimenta({bytes.data(), static_cast<std::size_t>(n)});
        while (auto trama = m_entrada.Siguiente()) Toma(std::move(*trama));
        if (m_entrada.Roto()) m_cerrado = m_basura = true;
    }
}

void cServidor::Toma(Trama &&trama) {
    if (auto *habla = std::get_if<TramaHabla>(&trama)) {
        m_parada = true;
        OlvidaLoNoEnviado();
        m_siguiente = std::move(habla->locucion);
    } else if (const auto *para = std::get_if<TramaPara>(&trama)) {
        if (m_siguiente && m_siguiente->numero == para->numero) m_siguiente.reset();
        if (m_numero == para->numero) {
            m_parada = true;
            OlvidaLoNoEnviado();
        }
    } else if (std::holds_alternative<TramaPideVoces>(trama)) {
        m_pidenVoces = true;
    } else {
        m_cerrado = m_basura = true;  // the reader sends none of the answers
    }
}

void cServidor::Encola(const Trama &trama, bool deLocucion) {
    Codifica(trama, m_salida);
    m_fronteras.push_back({m_salida.size(), deLocucion});
}

void cServidor::Envia(const Trama &trama, bool deLocucion) {
    Encola(trama, deLocucion);
    Escribe();
    while (!m_cerrado && Pendiente() > kMaxPendiente) Espera(true);
}

bool cServidor::EnviaDeLocucion(const Trama &trama) {
    // A look at the other direction first, so that a stop needs no full buffer to be seen.
    if (!Vigente()) return false;
    Envia(trama, true);
    return !m_cerrado && !m_parada;
}

void cServidor::Escribe() {
    const std::size_t antes = m_enviados;
    while (!m_cerrado && Pendiente() > 0) {
        const ssize_t n = send(m_zocalo, m_salida.data() + m_enviados, Pendiente(), MSG_DONTWAIT | MSG_NOSIGNAL);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) break;
        if (n < 0) {
            m_cerrado = true;
            return;
        }
        m_enviados += static_cast<std::size_t>(n);
    }
    if (m_enviados == antes) return;
    m_aMedias = true;
    while (!m_fronteras.empty() && m_fronteras.front().fin <= m_enviados) {
        m_aMedias = m_fronteras.front().fin < m_enviados;
        m_fronteras.pop_front();
    }
    if (Pendiente() == 0) {
        m_salida.clear();
        m_enviados = 0;
    }
}

// Drops the utterance's frames that wait here, but never the rest of one that has begun to leave.
void cServidor::OlvidaLoNoEnviado() {
    std::vector<std::uint8_t> queda;
    std::deque<Frontera> fronteras;
    std::size_t inicio = m_enviados;
    for (std::size_t i = 0; i < m_fronteras.size(); i++) {
        const Frontera frontera = m_fronteras[i];
        if ((i == 0 && m_aMedias) || !frontera.deLocucion) {
            queda.insert(queda.end(), m_salida.begin() + static_cast<std::ptrdiff_t>(inicio),
                         m_salida.begin() + static_cast<std::ptrdiff_t>(frontera.fin));
            fronteras.push_back({queda.size(), frontera.deLocucion});
        }
        inicio = frontera.fin;
    }
    m_salida = std::move(queda);
    m_fronteras = std::move(fronteras);
    m_enviados = 0;
}

bool cServidor::Formato(std::uint32_t hercios) { return EnviaDeLocucion(TramaFormato{m_numero, hercios}); }

bool cServidor::Pcm(const std::int16_t *muestras, std::size_t n) {
    for (std::size_t i = 0; i < n; i += kMaxMuestrasPcm) {
        const std::size_t tramo = std::min(kMaxMuestrasPcm, n - i);
        if (!EnviaDeLocucion(TramaPcm{m_numero, {muestras + i, muestras + i + tramo}})) return false;
    }
    return !m_cerrado && !m_parada;
}

// Nobody can hear it before the samples that follow, so it leaves with them: half as many calls and wake-ups of the
// reader.
bool cServidor::AntesDeMuestras(const Trama &trama) {
    if (m_cerrado || m_parada) return false;
    if (Pendiente() > kMaxPendiente) return EnviaDeLocucion(trama);
    Encola(trama, true);
    return true;
}

bool cServidor::Palabra(std::uint64_t muestra, std::uint32_t posicion, std::uint32_t longitud) {
    return AntesDeMuestras(TramaPalabra{m_numero, muestra, posicion, longitud});
}

bool cServidor::Marca(std::uint64_t muestra, std::u16string_view nombre) {
    return AntesDeMuestras(TramaMarca{m_numero, muestra, std::u16string(nombre)});
}

void cServidor::Error(std::string_view texto) { EnviaDeLocucion(TramaError{m_numero, std::string(texto)}); }

bool cServidor::Vigente() {
    if (!m_cerrado && !m_parada) Espera(false);
    return !m_cerrado && !m_parada;
}

}  // namespace ondalis
