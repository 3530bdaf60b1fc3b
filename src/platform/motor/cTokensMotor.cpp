#include "platform/motor/cTokensMotor.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "engine/Protocolo.h"

namespace ondalis {

namespace {

using Plazo = std::chrono::steady_clock::time_point;

// No engine may take longer to its first answer, whatever it says of itself: a hang must still be seen.
constexpr std::uint32_t kMayorPlazoMs = 60'000;

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

void Anota(const TramaVoz &voz, std::vector<TokenVoz> &tokens, PlazosMotor &plazos) {
    tokens.push_back({QString::fromStdString(voz.fabricante), QString::fromStdString(voz.nombre),
                      QString::fromStdString(voz.lengua), voz.motor, voz.voz, QString::fromStdString(voz.genero),
                      QString::fromStdString(voz.edad)});
    if (voz.plazoMs == 0) return;
    auto &plazo = plazos.deMotor[voz.motor];
    plazo = std::max(plazo, std::chrono::milliseconds(std::min(voz.plazoMs, kMayorPlazoMs)));
}

}  // namespace

// The worker is started and ended by one and the same thread: it dies with the thread that started it.
cTokensMotor::Respuesta cTokensMotor::Pregunta(LanzadorMotor &lanzador, std::chrono::milliseconds limite) {
    const Plazo hasta = std::chrono::steady_clock::now() + limite;
    const auto motor = lanzador.Lanza();
    std::vector<std::uint8_t> peticion;
    Codifica(TramaPideVoces{}, peticion);
    if (!motor || !Envia(motor->Descriptor(), peticion, hasta)) return {};

    Respuesta respuesta;
    Descodificador tramas;
    std::uint8_t bytes[16384];
    while (EsperaDescriptor(motor->Descriptor(), POLLIN, hasta)) {
        const ssize_t n = read(motor->Descriptor(), bytes, sizeof bytes);
        if (n == 0 || (n < 0 && errno != EAGAIN && errno != EINTR)) return {};
        if (n < 0) continue;
        tramas.Alimenta({bytes, static_cast<std::size_t>(n)});
        while (const auto trama = tramas.Siguiente()) {
            if (const auto *voz = std::get_if<TramaVoz>(&*trama)) Anota(*voz, respuesta.tokens, respuesta.plazos);
            if (const auto *queja = std::get_if<TramaError>(&*trama))
                respuesta.quejas << QString::fromStdString(queja->texto);
            if (std::holds_alternative<TramaFin>(*trama)) return respuesta;
        }
        if (tramas.Roto()) return {};
    }
    return {};  // half a list would give each voice another number at the next start
}

cTokensMotor::cTokensMotor(LanzadorMotor &lanzador, std::chrono::milliseconds limite)
    : m_enCamino(std::async(std::launch::async, [&lanzador, limite] { return Pregunta(lanzador, limite); })) {}

bool cTokensMotor::Listos() const {
    return !m_enCamino.valid() || m_enCamino.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

const cTokensMotor::Respuesta &cTokensMotor::LaRespuesta() const {
    if (m_enCamino.valid()) m_respuesta = m_enCamino.get();
    return m_respuesta;
}

const std::vector<TokenVoz> &cTokensMotor::Tokens() const { return LaRespuesta().tokens; }

PlazosMotor cTokensMotor::Plazos() const { return LaRespuesta().plazos; }

QStringList cTokensMotor::Quejas() const { return LaRespuesta().quejas; }

}  // namespace ondalis
