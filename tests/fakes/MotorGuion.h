// Workers that a test scripts in its own process, over a real socket pair.
#pragma once

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "engine/LanzadorMotor.h"
#include "engine/Protocolo.h"

namespace ondalis {

// The worker's end. Never blocks: what doesn't go yet waits and goes with Empuja.
class MotorGuion {
public:
    explicit MotorGuion(int zocalo) : m_zocalo(zocalo) {}
    ~MotorGuion() { Muere(); }
    MotorGuion(const MotorGuion &) = delete;
    MotorGuion &operator=(const MotorGuion &) = delete;

    // Dies with its answers in the socket still to be read.
    void Muere() {
        if (m_zocalo >= 0) close(m_zocalo);
        m_zocalo = -1;
    }
    bool Vivo() const { return m_zocalo >= 0; }

    // Reads what the reader sent and gives the last utterance asked for; nothing when there was none.
    std::optional<Locucion> Peticion() {
        std::optional<Locucion> ultima;
        for (Trama &trama : Tramas())
            if (auto *habla = std::get_if<TramaHabla>(&trama)) ultima = std::move(habla->locucion);
        return ultima;
    }
    std::vector<Trama> Tramas() {
        std::vector<Trama> tramas;
        std::array<std::uint8_t, 65536> bloque;
        ssize_t n = 0;
        while (Vivo() && (n = recv(m_zocalo, bloque.data(), bloque.size(), MSG_DONTWAIT)) > 0)
            m_descodificador.Alimenta({bloque.data(), static_cast<std::size_t>(n)});
        while (auto trama = m_descodificador.Siguiente()) tramas.push_back(std::move(*trama));
        return tramas;
    }

    void Manda(const Trama &trama) {
        Codifica(trama, m_salida);
        Empuja();
    }
    void MandaBytes(const std::vector<std::uint8_t> &bytes) {
        m_salida.insert(m_salida.end(), bytes.begin(), bytes.end());
        Empuja();
    }
    // The next `n` samples; they count up, so that a test sees which were heard.
    void MandaPcm(std::uint64_t numero, std::size_t n) {
        while (n > 0) {
            TramaPcm trama{numero, std::vector<std::int16_t>(std::min(n, kMaxMuestrasPcm))};
            std::iota(trama.muestras.begin(), trama.muestras.end(), m_muestra);
            m_muestra = static_cast<std::int16_t>(m_muestra + static_cast<std::int16_t>(trama.muestras.size()));
            n -= trama.muestras.size();
            Manda(trama);
        }
    }
    void SigueDesde(std::int16_t muestra) { m_muestra = muestra; }
    // True when everything has gone.
    bool Empuja() {
        while (Vivo() && !m_salida.empty()) {
            const ssize_t n = send(m_zocalo, m_salida.data(), m_salida.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
            if (n <= 0) break;
            m_salida.erase(m_salida.begin(), m_salida.begin() + n);
        }
        return m_salida.empty();
    }

    bool matado = false;  // the reader let go of it

private:
    int m_zocalo;
    Descodificador m_descodificador;
    std::vector<std::uint8_t> m_salida;
    std::int16_t m_muestra = 0;
};

class LanzadorGuion final : public LanzadorMotor {
public:
    std::unique_ptr<ProcesoMotor> Lanza() override {
        ++intentos;
        if (!puede) return nullptr;
        int extremos[2];
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, extremos) != 0) return nullptr;
        motores.push_back(std::make_shared<MotorGuion>(extremos[1]));
        return std::make_unique<Proceso>(extremos[0], motores.back());
    }
    MotorGuion &Ultimo() { return *motores.back(); }

    bool puede = true;
    int intentos = 0;
    std::vector<std::shared_ptr<MotorGuion>> motores;

private:
    class Proceso final : public ProcesoMotor {
    public:
        Proceso(int descriptor, std::shared_ptr<MotorGuion> motor)
            : m_descriptor(descriptor), m_motor(std::move(motor)) {}
        ~Proceso() override {
            m_motor->matado = true;
            close(m_descriptor);
        }
        Proceso(const Proceso &) = delete;
        Proceso &operator=(const Proceso &) = delete;
        int Descriptor() const override { return m_descriptor; }

    private:
        int m_descriptor;
        std::shared_ptr<MotorGuion> m_motor;
    };
};

}  // namespace ondalis
