// A channel with its thread on the real clock, a listener that can be waited for, and a worker on a thread.
#pragma once

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "engine/Protocolo.h"
#include "engine/cCanalMotor.h"
#include "fakes/Locuciones.h"
#include "fakes/SalidaGuion.h"

namespace ondalis {

class Oyente : public OyenteMotor {
public:
    void EventoDeMotor(const EventoMotor &evento) override {
        if (alOir) alOir(evento);
        std::lock_guard guarda(m_cerrojo);
        m_eventos.push_back(evento);
        m_cambio.notify_all();
    }
    // False after half a minute without it.
    bool EsperaFin(std::uint64_t numero) {
        std::unique_lock guarda(m_cerrojo);
        return m_cambio.wait_for(guarda, std::chrono::seconds(30), [&] {
            for (const EventoMotor &e : m_eventos)
                if (e.numero == numero && e.tipo == EventoMotor::Tipo::Fin) return true;
            return false;
        });
    }
    std::vector<EventoMotor> Eventos() {
        std::lock_guard guarda(m_cerrojo);
        return m_eventos;
    }

    std::function<void(const EventoMotor &)> alOir;

private:
    std::mutex m_cerrojo;
    std::condition_variable m_cambio;
    std::vector<EventoMotor> m_eventos;
};

// A worker on a thread: each word is 40 samples at 8000 Hz (5 ms).
class LanzadorHilo final : public LanzadorMotor {
public:
    std::unique_ptr<ProcesoMotor> Lanza() override {
        int extremos[2];
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, extremos) != 0) return nullptr;
        return std::make_unique<Proceso>(extremos[0], extremos[1]);
    }

private:
    class Proceso final : public ProcesoMotor {
    public:
        Proceso(int nuestro, int suyo) : m_descriptor(nuestro), m_hilo([suyo] { Corre(suyo); }) {}
        ~Proceso() override {
            shutdown(m_descriptor, SHUT_RDWR);
            m_hilo.join();
            close(m_descriptor);
        }
        Proceso(const Proceso &) = delete;
        Proceso &operator=(const Proceso &) = delete;
        int Descriptor() const override { return m_descriptor; }

    private:
        static void Corre(int zocalo) {
            Descodificador descodificador;
            std::array<std::uint8_t, 4096> bloque;
            ssize_t n = 0;
            while ((n = recv(zocalo, bloque.data(), bloque.size(), 0)) > 0) {
                descodificador.Alimenta({bloque.data(), static_cast<std::size_t>(n)});
                while (auto trama = descodificador.Siguiente())
                    if (auto *habla = std::get_if<TramaHabla>(&*trama)) Di(zocalo, habla->locucion);
            }
            close(zocalo);
        }
        static void Di(int zocalo, const Locucion &locucion) {
            std::vector<std::uint8_t> bytes;
            Codifica(TramaFormato{locucion.numero, 8000}, bytes);
            std::uint64_t muestra = 0;
            const std::size_t largo = locucion.tramos.empty() ? 0 : locucion.tramos[0].texto.size();
            for (std::uint32_t i = locucion.desde; i < largo; i += 4, muestra += 40) {
                Codifica(TramaPalabra{locucion.numero, muestra, i, 3}, bytes);
                Codifica(TramaPcm{locucion.numero, std::vector<std::int16_t>(40, 8000)}, bytes);
            }
            Codifica(TramaFin{locucion.numero}, bytes);
            std::size_t enviados = 0;
            while (enviados < bytes.size()) {
                const ssize_t n = send(zocalo, bytes.data() + enviados, bytes.size() - enviados, MSG_NOSIGNAL);
                if (n <= 0) return;
                enviados += static_cast<std::size_t>(n);
            }
        }

        int m_descriptor;
        std::thread m_hilo;
    };
};

struct BancoCanal {
    BancoCanal() { salida.servidor = false; }
    cRelojMonotono reloj;
    LanzadorHilo lanzador;
    SalidaGuion salida;
    Oyente oyente;
};

}  // namespace ondalis
