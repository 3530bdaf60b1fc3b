#include "platform/motor/cTokensMotor.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

#include "engine/Protocolo.h"

namespace ondalis {

namespace {

using Plazo = std::chrono::steady_clock::time_point;

bool EsperaDescriptor(int descriptor, short sucesos, Plazo hasta) {
    const auto queda = std::chrono::duration_cast<std::chrono::milliseconds>(hasta - std::chrono::steady_clock::now());
    if (queda.count() <= 0) return false;
    pollfd espera{descriptor, sucesos, 0};
    const int n = poll(&espera, 1, static_cast<int>(queda.count()));
    return n > 0 || (n < 0 && errno == EINTR);
}

bool Envia(int descriptor, const std::vector<std::uint8_t> &bytes, Plazo hasta) {
    for (std::size_t enviados = 0; enviados < bytes.size();) {
        const ssize_t n = write(descriptor, bytes.data() + enviados, bytes.size() - enviados);
        if (n > 0)
            enviados += static_cast<std::size_t>(n);
        else if ((errno != EAGAIN && errno != EINTR) || !EsperaDescriptor(descriptor, POLLOUT, hasta))
            return false;
    }
    return true;
}

std::vector<TokenVoz> Pregunta(LanzadorMotor &lanzador, std::chrono::milliseconds limite) {
    const Plazo hasta = std::chrono::steady_clock::now() + limite;
    const auto motor = lanzador.Lanza();
    std::vector<std::uint8_t> peticion;
    Codifica(TramaPideVoces{}, peticion);
    if (!motor || !Envia(motor->Descriptor(), peticion, hasta)) return {};

    std::vector<TokenVoz> tokens;
    Descodificador tramas;
    std::uint8_t bytes[16384];
    while (EsperaDescriptor(motor->Descriptor(), POLLIN, hasta)) {
        const ssize_t n = read(motor->Descriptor(), bytes, sizeof bytes);
        if (n == 0 || (n < 0 && errno != EAGAIN && errno != EINTR)) return {};
        if (n < 0) continue;
        tramas.Alimenta({bytes, static_cast<std::size_t>(n)});
        while (const auto trama = tramas.Siguiente()) {
            if (const auto *voz = std::get_if<TramaVoz>(&*trama))
                tokens.push_back({QString::fromStdString(voz->fabricante), QString::fromStdString(voz->nombre),
                                  QString::fromStdString(voz->lengua), voz->motor, voz->voz});
            if (std::holds_alternative<TramaFin>(*trama)) return tokens;
        }
        if (tramas.Roto()) return {};
    }
    return {};  // half a list would give each voice another number at the next start
}

}  // namespace

cTokensMotor::cTokensMotor(LanzadorMotor &lanzador, std::chrono::milliseconds limite)
    : m_respuesta(std::async(std::launch::async, [&lanzador, limite] { return Pregunta(lanzador, limite); })) {}

bool cTokensMotor::Listos() const {
    return !m_respuesta.valid() || m_respuesta.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

const std::vector<TokenVoz> &cTokensMotor::Tokens() const {
    if (m_respuesta.valid()) m_tokens = m_respuesta.get();
    return m_tokens;
}

}  // namespace ondalis
