// Drives a real worker program over a socket pair, as the reader does. Used by the tests and the benchmark.
#pragma once

#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/Protocolo.h"

namespace ondalis {

struct Oido {
    bool fin = false;  // a Fin came
    std::uint32_t hercios = 0;
    std::vector<std::int16_t> pcm;
    std::vector<TramaPalabra> palabras;
    std::vector<TramaMarca> marcas;
    std::string error;
    bool tarde = false;  // a word or mark came behind the samples that hold it
};

class cTrabajador {
public:
    explicit cTrabajador(const std::string &programa, std::vector<std::string> entorno = {},
                         std::vector<std::string> argumentos = {}) {
        std::array<int, 2> par{};
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, par.data()) != 0) std::abort();
        m_zocalo = par[0];
        std::vector<std::string> argv{programa, "3"};
        argv.insert(argv.end(), argumentos.begin(), argumentos.end());
        for (char **variable = environ; *variable; variable++) entorno.emplace_back(*variable);  // ours come first
        posix_spawn_file_actions_t acciones;
        posix_spawn_file_actions_init(&acciones);
        // Through a number above, as dup2 onto itself would leave close-on-exec set.
        posix_spawn_file_actions_adddup2(&acciones, par[1], 200);
        posix_spawn_file_actions_adddup2(&acciones, 200, 3);
        posix_spawn_file_actions_addclose(&acciones, 200);
        if (posix_spawn(&m_pid, programa.c_str(), &acciones, nullptr, Punteros(argv).data(),
                        Punteros(entorno).data()) != 0)
            m_pid = -1;
        posix_spawn_file_actions_destroy(&acciones);
        close(par[1]);
    }
    ~cTrabajador() {
        Cierra();
        if (m_pid > 0) {
            kill(m_pid, SIGKILL);
            waitpid(m_pid, nullptr, 0);
        }
    }
    cTrabajador(const cTrabajador &) = delete;
    cTrabajador &operator=(const cTrabajador &) = delete;

    pid_t Pid() const { return m_pid; }

    void Envia(const Trama &trama) {
        std::vector<std::uint8_t> bytes;
        Codifica(trama, bytes);
        EnviaBytes(bytes);
    }
    void EnviaBytes(const std::vector<std::uint8_t> &bytes) {
        for (std::size_t i = 0; i < bytes.size();) {
            const ssize_t n = send(m_zocalo, bytes.data() + i, bytes.size() - i, MSG_NOSIGNAL);
            if (n <= 0) return;
            i += static_cast<std::size_t>(n);
        }
    }

    // The next frame; nothing when the worker closed, sent garbage or said nothing for the limit.
    std::optional<Trama> Siguiente(int limiteMs = 20000) {
        while (true) {
            if (auto trama = m_entrada.Siguiente()) return trama;
            if (m_entrada.Roto() || !Lee(limiteMs)) return std::nullopt;
        }
    }
    bool Roto() const { return m_entrada.Roto(); }

    // All that comes of utterance `numero`, until its Fin or until nothing comes.
    Oido Recoge(std::uint64_t numero, int limiteMs = 20000) {
        Oido oido;
        while (const auto trama = Siguiente(limiteMs)) {
            if (const auto *f = std::get_if<TramaFormato>(&*trama); f && f->numero == numero) oido.hercios = f->hercios;
            if (const auto *p = std::get_if<TramaPcm>(&*trama); p && p->numero == numero)
                oido.pcm.insert(oido.pcm.end(), p->muestras.begin(), p->muestras.end());
            if (const auto *w = std::get_if<TramaPalabra>(&*trama); w && w->numero == numero) {
                oido.tarde |= w->muestra < oido.pcm.size();
                oido.palabras.push_back(*w);
            }
            if (const auto *m = std::get_if<TramaMarca>(&*trama); m && m->numero == numero) {
                oido.tarde |= m->muestra < oido.pcm.size();
                oido.marcas.push_back(*m);
            }
            if (const auto *e = std::get_if<TramaError>(&*trama); e && e->numero == numero) oido.error = e->texto;
            if (const auto *f = std::get_if<TramaFin>(&*trama); f && f->numero == numero) {
                oido.fin = true;
                break;
            }
        }
        return oido;
    }

    Oido Di(Locucion locucion) {
        locucion.numero = ++m_numero;
        Envia(TramaHabla{std::move(locucion)});
        return Recoge(m_numero);
    }

    void Cierra() {
        if (m_zocalo >= 0) close(m_zocalo);
        m_zocalo = -1;
    }

    // Exit status as of waitpid; nothing when it still runs after the limit.
    std::optional<int> EsperaSalida(int limiteMs = 10000) {
        const auto limite = std::chrono::steady_clock::now() + std::chrono::milliseconds(limiteMs);
        int estado = 0;
        while (std::chrono::steady_clock::now() < limite) {
            if (waitpid(m_pid, &estado, WNOHANG) == m_pid) {
                m_pid = -1;
                return estado;
            }
            poll(nullptr, 0, 1);
        }
        return std::nullopt;
    }

private:
    static std::vector<char *> Punteros(std::vector<std::string> &textos) {
        std::vector<char *> punteros;
        for (std::string &texto : textos) punteros.push_back(texto.data());
        punteros.push_back(nullptr);
        return punteros;
    }

    bool Lee(int limiteMs) {
        pollfd p{m_zocalo, POLLIN, 0};
        if (poll(&p, 1, limiteMs) <= 0) return false;
        std::array<std::uint8_t, 65536> bytes;
        const ssize_t n = recv(m_zocalo, bytes.data(), bytes.size(), 0);
        if (n <= 0) return false;
        m_entrada.Alimenta({bytes.data(), static_cast<std::size_t>(n)});
        return true;
    }

    int m_zocalo = -1;
    pid_t m_pid = -1;
    std::uint64_t m_numero = 0;
    Descodificador m_entrada;
};

}  // namespace ondalis
