#include "engine/cEnlaceMotor.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <utility>

namespace ondalis {

namespace {
constexpr std::size_t kBloque = std::size_t{64} * 1024;
// No answer of a worker is longer: PCM frames hold at most kMaxMuestrasPcm, marks and errors are texts of a page.
constexpr std::size_t kMaxRespuesta = std::size_t{1024} * 1024;
}  // namespace

void cEnlaceMotor::Encola(const Trama &trama, std::uint64_t numero) {
    Envio envio;
    Codifica(trama, envio.bytes);
    envio.numero = numero;
    if (m_enviados > 0) {
        m_siguiente = std::move(envio);
        return;
    }
    m_actual = std::move(envio);
    m_siguiente.reset();
}

void cEnlaceMotor::Habla(const Locucion &locucion) { Encola(TramaHabla{locucion}, locucion.numero); }

void cEnlaceMotor::Para() {
    m_siguiente.reset();
    if (m_enviados == 0) m_actual = {};
    const std::uint64_t numero = m_enviados > 0 ? m_actual.numero : m_dicho;
    if (numero != 0) Encola(TramaPara{numero}, 0);
}

bool cEnlaceMotor::Escribe() {
    while (PorEscribir()) {
        const ssize_t n = send(Descriptor(), m_actual.bytes.data() + m_enviados, m_actual.bytes.size() - m_enviados,
                               MSG_NOSIGNAL | MSG_DONTWAIT);
        if (n < 0) {
            if (errno == EINTR) continue;
            return errno == EAGAIN || errno == EWOULDBLOCK;
        }
        m_enviados += static_cast<std::size_t>(n);
        m_totalEnviados += static_cast<std::uint64_t>(n);
        if (m_enviados < m_actual.bytes.size()) continue;
        m_dicho = m_actual.numero;
        m_actual = m_siguiente ? std::move(*m_siguiente) : Envio{};
        m_siguiente.reset();
        m_enviados = 0;
    }
    return true;
}

cEnlaceMotor::Lectura cEnlaceMotor::Lee() {
    std::array<std::uint8_t, kBloque> bloque;
    ssize_t n = 0;
    do {
        n = recv(Descriptor(), bloque.data(), bloque.size(), MSG_DONTWAIT);
    } while (n < 0 && errno == EINTR);
    if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return Lectura::Nada;
    if (n <= 0) return Lectura::Rota;
    m_sinTrama += static_cast<std::size_t>(n);
    m_descodificador.Alimenta({bloque.data(), static_cast<std::size_t>(n)});
    return Lectura::Algo;
}

std::optional<Trama> cEnlaceMotor::Siguiente() {
    auto trama = m_descodificador.Siguiente();
    if (trama) m_sinTrama = 0;
    return trama;
}

bool cEnlaceMotor::Basura() const { return m_descodificador.Roto() || m_sinTrama > kMaxRespuesta; }

}  // namespace ondalis
