// The line to one worker: what is still to be sent and the frames that have come, both without ever blocking. Owned by
// the pump; its thread. Destroying it kills the worker.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "engine/LanzadorMotor.h"
#include "engine/Protocolo.h"

namespace ondalis {

class cEnlaceMotor {
public:
    enum class Lectura : std::uint8_t { Nada, Algo, Rota };

    explicit cEnlaceMotor(std::unique_ptr<ProcesoMotor> proceso) : m_proceso(std::move(proceso)) {}

    // Queue a request. One that isn't on its way yet is superseded, so that a stuck worker costs no memory.
    void Habla(const Locucion &locucion);
    // Drops the utterance that the worker was told last, if any.
    void Para();

    // Sends what goes. False: the worker is gone.
    [[nodiscard]] bool Escribe();
    bool PorEscribir() const { return !m_actual.bytes.empty(); }
    // Bytes sent in all: whether it moves.
    std::uint64_t Enviados() const { return m_totalEnviados; }

    // Takes one buffer's worth from the socket. Rota: its end or an error; frames that came whole before it can still
    // be fetched.
    Lectura Lee();
    std::optional<Trama> Siguiente();
    // What came is no frame of the protocol, or of no sensible size.
    bool Basura() const;

    int Descriptor() const { return m_proceso->Descriptor(); }

private:
    struct Envio {
        std::vector<std::uint8_t> bytes;
        std::uint64_t numero = 0;  // of the utterance asked for; 0: it drops one
    };

    void Encola(const Trama &trama, std::uint64_t numero);

    std::unique_ptr<ProcesoMotor> m_proceso;
    Descodificador m_descodificador;
    std::size_t m_sinTrama = 0;  // bytes that came since the last whole frame
    Envio m_actual;              // on its way; no bytes: none
    std::size_t m_enviados = 0;  // of m_actual
    std::optional<Envio> m_siguiente;
    std::uint64_t m_dicho = 0;  // the utterance that the worker was told last; 0: none
    std::uint64_t m_totalEnviados = 0;
};

}  // namespace ondalis
