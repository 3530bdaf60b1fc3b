// The whole live channel on a real private sound server.
#include <gtest/gtest.h>

#include <algorithm>

#include "engine/canal/BancoCanal.h"
#include "fakes/ServidorDeSonido.h"
#include "platform/audio/cSalidaPulse.h"

namespace ondalis {
namespace {

using namespace std::chrono_literals;

class CanalConServidor : public testing::Test {
protected:
    void SetUp() override {
        if (!ServidorDeSonido::Disponible()) GTEST_SKIP() << "pulseaudio isn't installed";
    }
    void ExpectaPalabras(std::size_t cuantas) {
        std::uint32_t esperada = 0;
        for (const EventoMotor &e : oyente.Eventos()) {
            if (e.tipo != EventoMotor::Tipo::Palabra) continue;
            ASSERT_EQ(e.posicion, esperada);
            esperada += 4;
        }
        EXPECT_EQ(esperada, cuantas * 4);
    }

    ServidorDeSonido sonido;
    cRelojMonotono reloj;
    LanzadorHilo lanzador;
    Oyente oyente;
};

TEST_F(CanalConServidor, WordsComeWhenTheyAreHeardAtTheSink) {
    sonido.Arranca();
    cServidorPulse servidor("prueba", sonido.Direccion());
    ASSERT_TRUE(servidor.EsperaConexion(20s));
    MonitorDeSonido monitor(sonido);
    ASSERT_TRUE(monitor.Espera([&] { return monitor.Cuantas() > MonitorDeSonido::kHz / 2; }));
    std::vector<double> momentos;
    oyente.alOir = [&](const EventoMotor &e) {
        if (e.tipo == EventoMotor::Tipo::Palabra) momentos.push_back(static_cast<double>(pa_rtclock_now()));
    };
    cSalidaPulse salida(servidor, "voz");
    cCanalMotor canal(lanzador, salida, reloj);
    canal.SetOyente(&oyente);
    const std::size_t desde = monitor.Cuantas();
    canal.Habla(LocucionDe(1, std::u16string(800, u'a')));
    ASSERT_TRUE(oyente.EsperaFin(1));
    ASSERT_TRUE(monitor.EsperaHasta(pa_rtclock_now() + 50'000));
    ExpectaPalabras(200);
    const double inicio = monitor.Momento(monitor.PrimeraQueSuena(desde));
    std::vector<double> errores;
    for (std::size_t i = 0; i < momentos.size(); ++i)
        errores.push_back(std::abs(momentos[i] - inicio - static_cast<double>(i) * 5000) / 1000);
    std::sort(errores.begin(), errores.end());
    std::printf("word event against its sound: median %.2f ms, p95 %.2f ms\n", errores[errores.size() / 2],
                errores[errores.size() * 95 / 100]);
    EXPECT_LT(errores[errores.size() / 2], 5.0);
}

TEST_F(CanalConServidor, AShortUtteranceOnANewStreamIsHeardWhole) {
    for (int i = 0; i < 8; ++i) {  // the reckoning of a new stream's position is at its worst then
        ServidorDeSonido propio;
        propio.Arranca();
        cServidorPulse servidor("prueba", propio.Direccion());
        ASSERT_TRUE(servidor.EsperaConexion(20s));
        MonitorDeSonido monitor(propio);
        ASSERT_TRUE(monitor.Espera([&] { return monitor.Cuantas() > 1000; }));
        cSalidaPulse salida(servidor, "voz");
        cCanalMotor canal(lanzador, salida, reloj);
        canal.SetOyente(&oyente);
        const auto numero = static_cast<std::uint64_t>(i) + 1;
        canal.Habla(LocucionDe(numero, std::u16string(48, u'a')));
        ASSERT_TRUE(oyente.EsperaFin(numero));
        ASSERT_TRUE(monitor.EsperaHasta(pa_rtclock_now() + 100'000));
        const auto oido = monitor.Muestras();
        const auto suenan = oido.size() - static_cast<std::size_t>(std::count(oido.begin(), oido.end(), 0));
        EXPECT_GE(suenan, 60u * MonitorDeSonido::kHz / 1000 - 100);  // 60 ms, but for the resampler's edge
    }
}

TEST_F(CanalConServidor, AServerKilledAndRestartedInMidReadingCostsNoWordAndTheSoundComesBack) {
    sonido.Arranca();
    cServidorPulse servidor("prueba", sonido.Direccion());
    ASSERT_TRUE(servidor.EsperaConexion(20s));
    cSalidaPulse salida(servidor, "voz");
    std::atomic<bool> empezada{false};
    oyente.alOir = [&](const EventoMotor &) { empezada = true; };
    cCanalMotor canal(lanzador, salida, reloj);
    canal.SetOyente(&oyente);
    canal.Habla(LocucionDe(1, std::u16string(4 * 1200, u'a')));  // six seconds
    const auto limite = std::chrono::steady_clock::now() + 20s;
    while (!empezada && std::chrono::steady_clock::now() < limite) std::this_thread::yield();
    ASSERT_TRUE(empezada);
    sonido.Para();
    sonido.Arranca();
    {
        MonitorDeSonido monitor(sonido);
        EXPECT_TRUE(monitor.Espera([&] { return monitor.PrimeraQueSuena(0) != MonitorDeSonido::npos; }));
    }
    ASSERT_TRUE(oyente.EsperaFin(1));
    ExpectaPalabras(1200);
}

TEST_F(CanalConServidor, AServerThatComesAfterTheStartIsUsedByTheReadingUnderWay) {
    cServidorPulse servidor("prueba", sonido.Direccion());
    cSalidaPulse salida(servidor, "voz");
    cCanalMotor canal(lanzador, salida, reloj);
    canal.SetOyente(&oyente);
    canal.Habla(LocucionDe(1, std::u16string(4 * 1200, u'a')));
    sonido.Arranca();
    MonitorDeSonido monitor(sonido);
    EXPECT_TRUE(monitor.Espera([&] { return monitor.PrimeraQueSuena(0) != MonitorDeSonido::npos; }));
    ASSERT_TRUE(oyente.EsperaFin(1));
    ExpectaPalabras(1200);
}

// Times that this process was scheduled.
long Despertares() {
    long total = 0;
    for (const auto &tarea : std::filesystem::directory_iterator("/proc/self/task")) {
        FILE *estado = std::fopen((tarea.path() / "status").c_str(), "r");
        char linea[256];
        long n = 0;
        while (estado && std::fgets(linea, sizeof linea, estado))
            if (std::sscanf(linea, "voluntary_ctxt_switches: %ld", &n) == 1) total += n;
        if (estado) std::fclose(estado);
    }
    return total;
}

TEST_F(CanalConServidor, AnIdleChannelHardlyWakesUp) {
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "the thread sanitizer has a thread of its own that wakes ten times a second";
#endif
    sonido.Arranca();
    cServidorPulse servidor("prueba", sonido.Direccion());
    ASSERT_TRUE(servidor.EsperaConexion(20s));
    cSalidaPulse salida(servidor, "voz");
    cCanalMotor canal(lanzador, salida, reloj);
    canal.SetOyente(&oyente);
    canal.Habla(LocucionDe(1, u"uno dos seis"));
    ASSERT_TRUE(oyente.EsperaFin(1));
    std::mutex cerrojo;
    std::condition_variable nunca;
    std::unique_lock guarda(cerrojo);
    double porSegundo = 1000;
    // Idleness is what is measured here, and a source of wake-ups shows in every stretch; the end of the sound, which a
    // busy machine draws out, only in the first ones.
    for (int tramo = 0; tramo < 4; ++tramo) {
        const long antes = Despertares();
        nunca.wait_for(guarda, 2s, [] { return false; });
        porSegundo = std::min(porSegundo, static_cast<double>(Despertares() - antes) / 2);
    }
    std::printf("idle: %.2f wake-ups a second\n", porSegundo);
    EXPECT_LT(porSegundo, 4);
}

}  // namespace
}  // namespace ondalis
