// The channel with the real worker programs, on the null output's clock.
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <thread>

#include "BancoCanal.h"
#include "engine/cLanzadorProceso.h"

namespace ondalis {
namespace {

using namespace std::chrono_literals;

// The newest child of this process.
pid_t Trabajador() {
    pid_t pid = 0;
    const std::string carpeta = "/proc/self/task";
    for (const auto &tarea : std::filesystem::directory_iterator(carpeta)) {
        std::ifstream hijos(tarea.path() / "children");
        for (pid_t hijo = 0; hijos >> hijo;) pid = std::max(pid, hijo);
    }
    return pid;
}

// Time that flies: a reading of twenty seconds in a few. The pump then wakes late, and everything must come all the
// same.
class RelojRapido final : public Reloj {
public:
    std::chrono::nanoseconds Ahora() const override { return m_monotono.Ahora() * 8; }

private:
    cRelojMonotono m_monotono;
};

struct BancoReal {
    explicit BancoReal(const char *programa) : lanzador(programa) {
        salida.servidor = false;
        plazos.primera = 16s;
        plazos.entre = 3s;
        canal.emplace(lanzador, salida, reloj, plazos);
        canal->SetOyente(&oyente);
    }
    Locucion Di(std::uint64_t n, std::u16string texto) {
        Locucion locucion = LocucionDe(n, std::move(texto));
        locucion.voz.motor = "espeak";
        locucion.voz.voz = "roa/es";
        locucion.voz.velocidad = 400;
        return locucion;
    }
    std::vector<std::uint32_t> Palabras() {
        std::vector<std::uint32_t> palabras;
        for (const EventoMotor &e : oyente.Eventos())
            if (e.tipo == EventoMotor::Tipo::Palabra) palabras.push_back(e.posicion);
        return palabras;
    }

    RelojRapido reloj;
    cLanzadorProceso lanzador;
    SalidaGuion salida;
    PlazosMotor plazos;
    Oyente oyente;
    std::optional<cCanalMotor> canal;
};

TEST(MotorReal, EveryWordIsHeardOnceInOrder) {
    BancoReal b(ONDALIS_MOTOR);
    b.canal->Habla(b.Di(1, u"Hola a todos. Esto es una prueba."));
    ASSERT_TRUE(b.oyente.EsperaFin(1));
    EXPECT_EQ(b.Palabras(), (std::vector<std::uint32_t>{0, 5, 7, 14, 19, 22, 26}));
}

TEST(MotorReal, AnEmptyUtteranceEnds) {
    BancoReal b(ONDALIS_MOTOR);
    b.canal->Habla(b.Di(1, u""));
    EXPECT_TRUE(b.oyente.EsperaFin(1));
    b.canal->Habla(b.Di(2, u"   "));
    EXPECT_TRUE(b.oyente.EsperaFin(2));
    EXPECT_TRUE(b.Palabras().empty());
}

class Senal : public testing::TestWithParam<int> {};

TEST_P(Senal, InMidReadingTheWordsGoOnWithoutOneLostTwiceOrBackwards) {
    BancoReal b(ONDALIS_MOTOR);
    std::u16string texto;
    for (int i = 0; i < 24; ++i) texto += u"Una frase corta, otra mas. ";
    std::atomic<int> golpes{0};
    const int senal = GetParam();
    b.oyente.alOir = [&](const EventoMotor &e) {
        // On the pump thread, between two steps of it: the worker lives until the signal.
        if (e.tipo == EventoMotor::Tipo::Palabra && (e.posicion == 4 || e.posicion == 54) && golpes < 2) {
            ++golpes;
            kill(Trabajador(), senal);
        }
    };
    // Long enough to outlast the buffer, so that the worker is still speaking when it is struck.
    b.canal->Habla(b.Di(1, texto));
    ASSERT_TRUE(b.oyente.EsperaFin(1));
    EXPECT_GE(golpes, 1);
    std::vector<std::uint32_t> esperadas;
    for (std::uint32_t i = 0; i < 24; ++i)
        for (const std::uint32_t p : {0u, 4u, 10u, 17u, 22u}) esperadas.push_back(i * 27 + p);
    EXPECT_EQ(b.Palabras(), esperadas);
}

INSTANTIATE_TEST_SUITE_P(MotorReal, Senal, testing::Values(SIGKILL, SIGSTOP, SIGABRT));

TEST(MotorReal, TextsThatKillTheEngineAreSurvived) {
    BancoReal b(ONDALIS_MOTOR);
    std::u16string siglas;
    std::u16string apostrofos;
    for (int i = 0; i < 50; ++i) siglas += u"U.S.";
    for (int i = 0; i < 220; ++i) apostrofos += u"s'";
    std::uint64_t n = 0;
    for (const auto &[voz, mortal] : {std::pair{"gmw/en", siglas}, {"gmw/en", apostrofos}}) {
        const std::u16string texto = u"Hola. " + mortal + u" Fin.";
        Locucion locucion = b.Di(++n, texto);
        locucion.voz.voz = voz;
        b.canal->Habla(locucion);
        ASSERT_TRUE(b.oyente.EsperaFin(n)) << voz;
        std::vector<std::uint32_t> palabras;
        for (const EventoMotor &e : b.oyente.Eventos())
            if (e.numero == n && e.tipo == EventoMotor::Tipo::Palabra) palabras.push_back(e.posicion);
        ASSERT_FALSE(palabras.empty()) << voz;
        EXPECT_EQ(palabras.front(), 0u);
        EXPECT_EQ(palabras.back(), texto.size() - 4);
    }
}

// The reader's end, however it comes, is the end of the thread that started the worker.
TEST(MotorReal, AWorkerDiesWithTheThreadThatStartedItEvenWhileItIsStopped) {
    cLanzadorProceso lanzador{ONDALIS_MOTOR};
    std::unique_ptr<ProcesoMotor> motor;
    pid_t pid = 0;
    std::thread([&] {
        motor = lanzador.Lanza();
        if (!motor) return;
        std::vector<std::uint8_t> peticion;
        Codifica(TramaPideVoces{}, peticion);
        pollfd respuesta{motor->Descriptor(), POLLIN, 0};
        if (write(motor->Descriptor(), peticion.data(), peticion.size()) < 0 || poll(&respuesta, 1, 10'000) != 1)
            return;
        std::ifstream("/proc/thread-self/children") >> pid;
        if (pid > 0) kill(pid, SIGSTOP);
    }).join();
    ASSERT_NE(motor, nullptr);
    if (pid == 0) GTEST_SKIP() << "this kernel doesn't tell a thread's children";
    pollfd colgado{motor->Descriptor(), 0, 0};
    ASSERT_EQ(poll(&colgado, 1, 10'000), 1);
    EXPECT_NE(colgado.revents & POLLHUP, 0);
}

}  // namespace
}  // namespace ondalis
