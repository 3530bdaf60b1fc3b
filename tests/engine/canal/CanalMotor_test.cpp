// The channel with its thread: real clock, scripted workers on a thread of their own or real processes.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

#include "BancoCanal.h"
#include "engine/cCanalMotor.h"
#include "engine/cLanzadorProceso.h"

namespace ondalis {
namespace {

TEST(cCanalMotor, GivesItsEventsInOrderOnItsOwnThread) {
    BancoCanal b;
    cCanalMotor canal(b.lanzador, b.salida, b.reloj);
    canal.SetOyente(&b.oyente);
    canal.Habla(LocucionDe(1, u"uno dos seis"));
    ASSERT_TRUE(b.oyente.EsperaFin(1));
    const auto eventos = b.oyente.Eventos();
    ASSERT_EQ(eventos.size(), 4u);
    for (std::uint32_t i = 0; i < 3; ++i) EXPECT_EQ(eventos[i].posicion, i * 4);
}

TEST(cCanalMotor, ItsListenerMayCallItBack) {
    BancoCanal b;
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
    BancoCanal b;
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
        if (i % 2) {
            ASSERT_TRUE(pasajero->EsperaFin(i));
        }
        canal.SetOyente(nullptr);
        EXPECT_FALSE(dentro);
    }
}

TEST(cCanalMotor, AStoppedUtteranceGivesNothingMoreAndTheNextOneSpeaks) {
    BancoCanal b;
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
        BancoCanal b;
        cCanalMotor canal(b.lanzador, b.salida, b.reloj);
        canal.SetOyente(&b.oyente);
        if (caso % 3 > 0) canal.Habla(LocucionDe(1, std::u16string(40000, u'a')));
        if (caso % 3 > 1) canal.Pausa();
    }
}

TEST(cCanalMotor, OrdersFromManyThreadsLeaveItSpeaking) {
    BancoCanal b;
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
    BancoCanal b;
    cLanzadorProceso lanzador("/no/existe/motor");
    cCanalMotor canal(lanzador, b.salida, b.reloj);
    canal.SetOyente(&b.oyente);
    canal.Habla(LocucionDe(1, u"uno"));
    EXPECT_TRUE(b.oyente.EsperaFin(1));
}

TEST(cCanalMotor, AProgramThatEndsAtOnceGivesTheEnd) {
    BancoCanal b;
    cLanzadorProceso lanzador("/bin/true");
    cCanalMotor canal(lanzador, b.salida, b.reloj);
    canal.SetOyente(&b.oyente);
    canal.Habla(LocucionDe(1, u"Uno. Dos. Tres. Cuatro. Cinco. Seis. Siete. Ocho."));
    EXPECT_TRUE(b.oyente.EsperaFin(1));
}

// An executable script in a folder of its own.
class Guion {
public:
    explicit Guion(const std::string &texto) {
        std::string plantilla = std::filesystem::temp_directory_path() / "canalXXXXXX";
        m_carpeta = mkdtemp(plantilla.data());
        std::ofstream(Programa()) << "#!/bin/sh\n" << texto << '\n';
        std::filesystem::permissions(Programa(), std::filesystem::perms::owner_all);
    }
    ~Guion() { std::filesystem::remove_all(m_carpeta); }
    Guion(const Guion &) = delete;
    Guion &operator=(const Guion &) = delete;
    std::string Programa() const { return m_carpeta / "motor"; }

private:
    std::filesystem::path m_carpeta;
};

TEST(cCanalMotor, AProgramThatTalksNonsenseGivesTheEnd) {
    BancoCanal b;
    Guion guion("while :; do echo basura >&$1; done");
    cLanzadorProceso lanzador(guion.Programa());
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
    const int nuestro = fcntl(STDERR_FILENO, F_DUPFD, 4);  // inheritable on purpose
    ASSERT_GE(nuestro, 4);
    ASSERT_LT(nuestro, 10);
    Guion guion("ls /proc/$$/fd >&$1");
    cLanzadorProceso lanzador(guion.Programa());
    auto proceso = lanzador.Lanza();
    ASSERT_TRUE(proceso);
    std::string lista;
    pollfd sondeo{proceso->Descriptor(), POLLIN, 0};
    while (poll(&sondeo, 1, 10000) == 1) {
        char bloque[256];
        const ssize_t n = recv(proceso->Descriptor(), bloque, sizeof bloque, 0);
        if (n <= 0) break;
        lista.append(bloque, static_cast<std::size_t>(n));
    }
    close(nuestro);
    EXPECT_NE(lista.find("\n3\n"), lista.npos) << lista;
    EXPECT_EQ(lista.find_first_of("456789"), lista.npos) << lista;  // from 10 on they are the shell's own
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
