// The one voice behind the ECI operations: pending text, destination, the speech under way and the last error. Its
// operations belong to one thread; the channels' events come on theirs. No Qt.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <string_view>

#include "libs/ondalis_eci_servicio.h"

namespace ondalis {

class cInstanciaECI final : private OyenteMotor {
public:
    explicit cInstanciaECI(const ServicioECI &servicio);
    ~cInstanciaECI() override;  // as Calla
    cInstanciaECI(const cInstanciaECI &) = delete;
    cInstanciaECI &operator=(const cInstanciaECI &) = delete;

    void Restaura();
    bool SetDestino(const char *ruta);
    bool AddTexto(std::string_view bytes);
    bool Habla(bool espera);
    bool EstaHablando() const { return m_numero != 0; }
    void Calla();
    // UTF-8; empty while nothing has failed.
    std::string UltimoError() const;
    // False, for the caller to give back.
    bool Falla(std::string texto);

private:
    void EventoDeMotor(const EventoMotor &evento) override;  // a channel's thread

    void CierraDestino();
    bool CompletaFichero();

    const ServicioECI &m_servicio;
    std::u16string m_pendiente;
    bool m_conDestino = false;  // the next speech goes into the file that is open

    std::atomic<std::uint64_t> m_numero{0};  // the utterance under way; 0: none. Written under m_cerrojo
    mutable std::mutex m_cerrojo;            // the rest
    bool m_enFichero = false;                // the speech under way goes into a file
    std::uint64_t m_fallida = 0;             // that couldn't be said or written to its end
    bool m_perdida = false;                  // the file under way lacks a part of its text
    std::string m_error;
};

}  // namespace ondalis
