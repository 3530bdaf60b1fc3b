// The channel with its thread: real clock, scripted workers on a thread of their own or real processes.
#include "engine/cCanalMotor.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <filesystem>
#include <random>

#include "engine/cLanzadorProceso.h"
#include "fakes/Locuciones.h"
#include "fakes/RelojFalso.h"
#include "fakes/SalidaGuion.h"

namespace ondalis {
namespace {

using namespace std::chrono_literals;

class Oyente : public OyenteMotor {
public:
    void EventoDeMotor(const EventoMotor &evento) override {
        if (alOir) alOir(evento);
        std::lock_guard guarda(m_cerrojo);
        m_eventos.push_back(evento);
        m_cambio.notify_all();
    }
    // False after ten seconds without it.
    bool EsperaFin(std::uint64_t numero) {
        std::unique_lock guarda(m_cerrojo);
        return m_cambio.wait_for(guarda, 10s, [&] {
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
                Codifica(TramaPcm{locucion.numero, std::vector<std::int16_t>(40)}, bytes);
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

struct Banco {
    Banco() { salida.servidor = false; }
    cRelojMonotono reloj;
    LanzadorHilo lanzador;
    SalidaGuion salida;
    Oyente oyente;
};

TEST(cCanalMotor, GivesItsEventsInOrderOnItsOwnThread) {
    Banco b;
    cCanalMotor canal(b.lanzador, b.salida, b.reloj);
    canal.SetOyente(&b.oyente);
    canal.Habla(LocucionDe(1, u"uno dos seis"));
    ASSERT_TRUE(b.oyente.EsperaFin(1));
    const auto eventos = b.oyente.Eventos();
    ASSERT_EQ(eventos.size(), 4u);
    for (std::uint32_t i = 0; i < 3; ++i) EXPECT_EQ(eventos[i].posicion, i * 4);
}

TEST(cCanalMotor, ItsListenerMayCallItBack) {
    Banco b;
    cCanalMotor canal(b.lanzador, b.salida, b.reloj);
    b.oyente.alOir = [&](const EventoMotor &evento) {
        if (evento.numero == 1 && evento.tipo == EventoMotor::Tipo::Palabra) {
            canal.SetOyente(&b.oyente);
            canal.Habla(LocucionDe(2, u"dos"));
        }
    };
    canal.SetOyente(&b.oyente);
    canal.Habla(LocucionDe(1, u"uno dos seis"));
    ASSERT_TRUE(b.oyente.EsperaFin(2));
    for (const EventoMotor &e : b.oyente.Eventos())
        EXPECT_FALSE(e.numero == 1 && e.tipo == EventoMotor::Tipo::Fin) << "the replaced one ended";
}

TEST(cCanalMotor, WhenSetOyenteReturnsNoCallToTheFormerOneIsUnderWayOrComes) {
    Banco b;
    cCanalMotor canal(b.lanzador, b.salida, b.reloj);
    for (std::uint64_t i = 1; i <= 50; ++i) {
        auto pasajero = std::make_unique<Oyente>();
        std::atomic<bool> dentro{false};
        pasajero->alOir = [&](const EventoMotor &) {
            dentro = true;
            std::this_thread::yield();
            dentro = false;
        };
        canal.SetOyente(pasajero.get());
        canal.Habla(LocucionDe(i, u"uno dos"));
        if (i % 2) ASSERT_TRUE(pasajero->EsperaFin(i));
        canal.SetOyente(nullptr);
        EXPECT_FALSE(dentro);
    }
}

TEST(cCanalMotor, AStoppedUtteranceGivesNothingMoreAndTheNextOneSpeaks) {
    Banco b;
    cCanalMotor canal(b.lanzador, b.salida, b.reloj);
    canal.SetOyente(&b.oyente);
    canal.Habla(LocucionDe(1, std::u16string(40000, u'a')));
    canal.Detiene();
    canal.Habla(LocucionDe(2, u"dos"));
    ASSERT_TRUE(b.oyente.EsperaFin(2));
    for (const EventoMotor &e : b.oyente.Eventos()) EXPECT_EQ(e.numero, 2u);
}

TEST(cCanalMotor, EndsWhileSpeakingPausedOrIdle) {
    for (int caso = 0; caso < 30; ++caso) {
        Banco b;
        cCanalMotor canal(b.lanzador, b.salida, b.reloj);
        canal.SetOyente(&b.oyente);
        if (caso % 3 > 0) canal.Habla(LocucionDe(1, std::u16string(40000, u'a')));
        if (caso % 3 > 1) canal.Pausa();
    }
}

TEST(cCanalMotor, OrdersFromManyThreadsLeaveItSpeaking) {
    Banco b;
    cCanalMotor canal(b.lanzador, b.salida, b.reloj);
    canal.SetOyente(&b.oyente);
    std::atomic<std::uint64_t> numero{0};
    std::vector<std::thread> hilos;
    for (unsigned h = 0; h < 3; ++h)
        hilos.emplace_back([&, h] {
            std::mt19937 azar(h);
            for (int i = 0; i < 300; ++i) switch (azar() % 4) {
                    case 0: canal.Habla(LocucionDe(++numero, u"uno dos seis")); break;
                    case 1: canal.Pausa(); break;
                    case 2: canal.Reanuda(); break;
                    default: canal.Detiene();
                }
        });
    for (std::thread &hilo : hilos) hilo.join();
    const std::uint64_t ultimo = ++numero;
    canal.Habla(LocucionDe(ultimo, u"uno"));
    EXPECT_TRUE(b.oyente.EsperaFin(ultimo));
}

TEST(cCanalMotor, AProgramThatIsNotThereGivesTheEnd) {
    Banco b;
    cLanzadorProceso lanzador("/no/existe/motor");
    cCanalMotor canal(lanzador, b.salida, b.reloj);
    canal.SetOyente(&b.oyente);
    canal.Habla(LocucionDe(1, u"uno"));
    EXPECT_TRUE(b.oyente.EsperaFin(1));
}

TEST(cCanalMotor, AProgramThatEndsAtOnceGivesTheEnd) {
    Banco b;
    cLanzadorProceso lanzador("/bin/true");
    cCanalMotor canal(lanzador, b.salida, b.reloj);
    canal.SetOyente(&b.oyente);
    canal.Habla(LocucionDe(1, u"Uno. Dos. Tres. Cuatro. Cinco. Seis. Siete. Ocho."));
    EXPECT_TRUE(b.oyente.EsperaFin(1));
}

TEST(cCanalMotor, AProgramThatTalksNonsenseGivesTheEnd) {
    Banco b;
    cLanzadorProceso lanzador("/usr/bin/env", {});
    cCanalMotor canal(lanzador, b.salida, b.reloj);
    canal.SetOyente(&b.oyente);
    canal.Habla(LocucionDe(1, u"Uno. Dos."));
    EXPECT_TRUE(b.oyente.EsperaFin(1));
}

std::size_t DescriptoresAbiertos() {
    std::size_t n = 0;
    for ([[maybe_unused]] const auto &d : std::filesystem::directory_iterator("/proc/self/fd")) ++n;
    return n;
}

TEST(cLanzadorProceso, AWorkerGetsItsSocketAndNoOtherDescriptorOfOurs) {
    int tubo[2];
    ASSERT_EQ(pipe(tubo), 0);  // inheritable on purpose
    cLanzadorProceso lanzador("/bin/sh", {"-c", "ignored"});
    // "sh 3 ..." runs the script named 3: instead look at what a shell would see.
    cLanzadorProceso mira("/usr/bin/ls", {"/proc/self/fd"});
    auto proceso = mira.Lanza();
    ASSERT_TRUE(proceso);
    close(tubo[0]);
    close(tubo[1]);
    // Nothing comes on the socket and its end closes: nobody else holds it.
    pollfd sondeo{proceso->Descriptor(), POLLIN, 0};
    ASSERT_EQ(poll(&sondeo, 1, 10000), 1);
    char c = 0;
    EXPECT_EQ(recv(proceso->Descriptor(), &c, 1, 0), 0);
}

TEST(cLanzadorProceso, AStoppedWorkerIsKilledWithoutLeavingAnythingBehind) {
    const std::size_t antes = DescriptoresAbiertos();
    for (int i = 0; i < 20; ++i) {
        cLanzadorProceso lanzador("/usr/bin/tail", {"-f", "/dev/null"});
        auto proceso = lanzador.Lanza();
        ASSERT_TRUE(proceso);
    }
    EXPECT_EQ(DescriptoresAbiertos(), antes);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);  // no child is left, dead or alive
}

}  // namespace
}  // namespace ondalis
