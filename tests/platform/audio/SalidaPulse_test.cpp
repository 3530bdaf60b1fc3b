// The stream, the server and the notice sounds against a real private sound server.
#include <gtest/gtest.h>

#include <QtEndian>
#include <atomic>

#include "fakes/ServidorDeSonido.h"
#include "platform/audio/cSalidaPulse.h"
#include "platform/audio/cSonidoPulse.h"

namespace ondalis {
namespace {

using namespace std::chrono_literals;

constexpr int kHz = MonitorDeSonido::kHz;

class SalidaPulse : public testing::Test {
protected:
    void SetUp() override {
        if (!ServidorDeSonido::Disponible()) GTEST_SKIP() << "pulseaudio isn't installed";
        sonido.Arranca();
        servidor.emplace("prueba", sonido.Direccion());
        ASSERT_TRUE(servidor->EsperaConexion(20s));
        monitor.emplace(sonido);
        ASSERT_TRUE(monitor->Espera([&] { return monitor->Cuantas() > kHz / 2; }));
    }
    // Writes what goes of `muestras`; true when all has gone.
    bool Empuja(SalidaAudio &salida, const std::vector<std::int16_t> &muestras) {
        escritas += salida.Escribe(muestras.data() + escritas, muestras.size() - escritas);
        return escritas == muestras.size();
    }

    ServidorDeSonido sonido;
    std::optional<cServidorPulse> servidor;
    std::optional<MonitorDeSonido> monitor;
    std::size_t escritas = 0;
};

TEST_F(SalidaPulse, ThePositionIsWithinFiveMillisecondsOfTheTruthAndNeverRunsBack) {
    cSalidaPulse salida(*servidor, "voz");
    ASSERT_TRUE(salida.Abre(kHz));
    std::vector<std::int16_t> clics(3 * kHz);
    for (std::size_t i = 2000; i < clics.size(); i += 2000) clics[i] = 20000;
    const std::size_t antes = monitor->Cuantas();
    std::vector<std::pair<double, double>> posiciones;
    std::uint64_t ultima = 0;
    ASSERT_TRUE(monitor->Espera([&] {
        if (Empuja(salida, clics)) salida.Completa();
        const std::uint64_t oidas = salida.Oidas();
        EXPECT_GE(oidas, ultima);
        EXPECT_LE(oidas, escritas);
        ultima = oidas;
        posiciones.emplace_back(static_cast<double>(pa_rtclock_now()), static_cast<double>(oidas));
        return oidas == clics.size();
    }));
    ASSERT_TRUE(monitor->EsperaHasta(pa_rtclock_now()));
    const auto oido = monitor->Muestras();
    std::vector<double> errores;
    std::size_t clic = 0;
    for (std::size_t i = antes; i < oido.size(); ++i) {
        if (oido[i] < 10000) continue;
        const double momento = monitor->Momento(i);
        clic += 2000;
        const auto mas = std::lower_bound(posiciones.begin(), posiciones.end(), std::pair(momento, 0.0));
        if (mas == posiciones.begin() || mas == posiciones.end()) continue;
        const auto menos = mas - 1;
        if (menos->second < 1) continue;
        const double parte = (momento - menos->first) / (mas->first - menos->first);
        const double posicion = menos->second + parte * (mas->second - menos->second);
        errores.push_back(std::abs(posicion - static_cast<double>(clic)) * 1000 / kHz);
    }
    EXPECT_EQ(clic, 2000u * 33);
    ASSERT_GT(errores.size(), 20u);
    std::sort(errores.begin(), errores.end());
    RecordProperty("median_ms", std::to_string(errores[errores.size() / 2]));
    std::printf("position error: median %.2f ms, worst %.2f ms\n", errores[errores.size() / 2], errores.back());
    EXPECT_LT(errores[errores.size() / 2], 5.0);
}

TEST_F(SalidaPulse, EmptyingItIsSilenceSoonAndPositionsCountFromZeroAgain) {
    cSalidaPulse salida(*servidor, "voz");
    ASSERT_TRUE(salida.Abre(kHz));
    const std::vector<std::int16_t> continuo(10 * kHz, 8000);
    ASSERT_TRUE(monitor->Espera([&] {
        Empuja(salida, continuo);
        return salida.Oidas() > kHz / 2;
    }));
    const auto orden = static_cast<double>(pa_rtclock_now());
    salida.Vacia();
    EXPECT_EQ(salida.Oidas(), 0u);
    ASSERT_TRUE(monitor->EsperaHasta(pa_rtclock_now() + 200'000));
    const double silencio = monitor->Momento(monitor->UltimaQueSuena()) - orden;
    std::printf("flush to silence: %.2f ms\n", silencio / 1000);
    EXPECT_LT(silencio, 50'000);
    EXPECT_EQ(salida.Oidas(), 0u);
    // And it plays again, from 0.
    const std::size_t desde = monitor->Cuantas();
    escritas = 0;
    const std::vector<std::int16_t> corto(kHz / 5, 9000);
    ASSERT_TRUE(monitor->Espera([&] {
        if (Empuja(salida, corto)) salida.Completa();
        return salida.Oidas() == corto.size();
    }));
    ASSERT_TRUE(monitor->EsperaHasta(pa_rtclock_now() + 100'000));
    const auto oido = monitor->Muestras();
    EXPECT_EQ(static_cast<std::size_t>(std::count(oido.begin() + static_cast<std::ptrdiff_t>(desde), oido.end(), 9000)),
              corto.size());
}

TEST_F(SalidaPulse, APauseResumesAtTheSameSample) {
    cSalidaPulse salida(*servidor, "voz");
    ASSERT_TRUE(salida.Abre(kHz));
    std::vector<std::int16_t> rampa(kHz);
    for (std::size_t i = 0; i < rampa.size(); ++i) rampa[i] = static_cast<std::int16_t>(i + 1);
    const std::size_t desde = monitor->Cuantas();
    ASSERT_TRUE(monitor->Espera([&] {
        Empuja(salida, rampa);
        return salida.Oidas() > kHz / 4;
    }));
    salida.Pausa(true);
    const pa_usec_t orden = pa_rtclock_now();
    ASSERT_TRUE(monitor->EsperaHasta(orden + 500'000));
    const std::uint64_t quieta = salida.Oidas();
    ASSERT_TRUE(monitor->EsperaHasta(orden + 700'000));
    EXPECT_EQ(salida.Oidas(), quieta);
    salida.Pausa(false);
    ASSERT_TRUE(monitor->Espera([&] {
        if (Empuja(salida, rampa)) salida.Completa();
        return salida.Oidas() == rampa.size();
    }));
    ASSERT_TRUE(monitor->EsperaHasta(pa_rtclock_now() + 100'000));
    std::vector<std::int16_t> oido = monitor->Muestras();
    oido.erase(oido.begin(), oido.begin() + static_cast<std::ptrdiff_t>(desde));
    std::erase(oido, 0);
    EXPECT_EQ(oido, rampa);  // nothing lost, nothing twice
}

TEST_F(SalidaPulse, AWriterHeldUpForATenthOfASecondIsNotHeard) {
    cSalidaPulse salida(*servidor, "voz");
    ASSERT_TRUE(salida.Abre(kHz));
    const std::vector<std::int16_t> continuo(3 * kHz, 8000);
    const std::size_t desde = monitor->Cuantas();
    for (std::uint64_t hasta : {kHz / 2, kHz, 3 * kHz / 2, 2 * kHz}) {
        ASSERT_TRUE(monitor->Espera([&] {
            Empuja(salida, continuo);
            return salida.Oidas() > hasta;
        }));
        ASSERT_TRUE(monitor->EsperaHasta(pa_rtclock_now() + 100'000));  // nothing is written meanwhile
    }
    ASSERT_TRUE(monitor->Espera([&] {
        if (Empuja(salida, continuo)) salida.Completa();
        return salida.Oidas() == continuo.size();
    }));
    ASSERT_TRUE(monitor->EsperaHasta(pa_rtclock_now() + 100'000));
    EXPECT_EQ(monitor->UltimaQueSuena() - monitor->PrimeraQueSuena(desde) + 1, continuo.size());
}

TEST_F(SalidaPulse, AServerThatIsKilledIsSeenAndTheStreamCanBeHadAgainFromTheNextOne) {
    cSalidaPulse salida(*servidor, "voz");
    std::atomic<int> avisos{0};
    std::mutex cerrojo;
    std::condition_variable cambio;
    salida.SetDespertador([&] {
        std::lock_guard guarda(cerrojo);
        ++avisos;
        cambio.notify_all();
    });
    const auto espera = [&](const std::function<bool()> &listo) {
        const auto limite = std::chrono::steady_clock::now() + 20s;
        while (!listo()) {
            std::unique_lock guarda(cerrojo);
            cambio.wait_for(guarda, 50ms);
            if (std::chrono::steady_clock::now() > limite) return false;
        }
        return true;
    };
    ASSERT_TRUE(salida.Abre(kHz));
    ASSERT_TRUE(salida.Viva());
    const std::vector<std::int16_t> continuo(kHz, 8000);
    ASSERT_TRUE(espera([&] {
        Empuja(salida, continuo);
        return salida.Oidas() > 100;
    }));
    monitor.reset();
    sonido.Para();
    ASSERT_TRUE(espera([&] { return !salida.Viva(); }));
    const std::uint64_t alCaer = salida.Oidas();
    EXPECT_EQ(salida.Escribe(continuo.data(), 100), 0u);
    salida.Pausa(true), salida.Vacia(), salida.Completa(), salida.Reposa();
    EXPECT_LE(alCaer, escritas);
    EXPECT_FALSE(salida.Abre(kHz));
    EXPECT_TRUE(servidor->Dispositivos().empty());
    avisos = 0;
    sonido.Arranca();
    ASSERT_TRUE(espera([&] { return avisos > 0 && salida.Abre(kHz); }));
    escritas = 0;
    EXPECT_TRUE(espera([&] {
        Empuja(salida, continuo);
        return salida.Oidas() > 100;
    }));
    salida.SetDespertador(nullptr);
}

TEST_F(SalidaPulse, TheDevicesAreTheSinks) {
    const auto dispositivos = servidor->Dispositivos();
    ASSERT_EQ(dispositivos.size(), 1u);
    EXPECT_EQ(dispositivos[0].nombre, "nul");
}

QByteArray Wav(const std::vector<std::int16_t> &muestras) {
    QByteArray wav("RIFF....WAVEfmt \x10\0\0\0\1\0\1\0\x22\x56\0\0\x44\xac\0\0\2\0\x10\0data....", 44);
    qToLittleEndian<quint32>(static_cast<quint32>(36 + muestras.size() * 2), wav.data() + 4);
    qToLittleEndian<quint32>(static_cast<quint32>(muestras.size() * 2), wav.data() + 40);
    return wav +
           QByteArray(reinterpret_cast<const char *>(muestras.data()), static_cast<qsizetype>(muestras.size() * 2));
}

TEST_F(SalidaPulse, ANoticeSoundIsHeardWholeAndTellsItsEndOnce) {
    cSonidoPulse avisos(*servidor);
    std::atomic<int> fines{0};
    const std::size_t desde = monitor->Cuantas();
    const std::vector<std::int16_t> muestras(kHz / 4, 7000);
    ASSERT_TRUE(avisos.Reproduce(Wav(muestras), [&] { ++fines; }));
    EXPECT_EQ(fines, 0);
    ASSERT_TRUE(monitor->Espera([&] { return fines > 0; }));
    ASSERT_TRUE(monitor->EsperaHasta(pa_rtclock_now() + 100'000));
    const auto oido = monitor->Muestras();
    EXPECT_EQ(static_cast<std::size_t>(std::count(oido.begin() + static_cast<std::ptrdiff_t>(desde), oido.end(), 7000)),
              muestras.size());
    EXPECT_EQ(fines, 1);
}

TEST_F(SalidaPulse, ANoticeSoundThatIsNoWavIsRefused) {
    cSonidoPulse avisos(*servidor);
    EXPECT_FALSE(avisos.Reproduce("no es un wav", [] { ADD_FAILURE(); }));
    EXPECT_FALSE(avisos.Reproduce(Wav({}).left(40), [] { ADD_FAILURE(); }));
}

TEST_F(SalidaPulse, ANoticeSoundDroppedByTheServersDeathTellsItsEndOnce) {
    std::atomic<int> fines{0};
    {
        cSonidoPulse avisos(*servidor);
        ASSERT_TRUE(avisos.Reproduce(Wav(std::vector<std::int16_t>(20 * kHz, 7000)), [&] { ++fines; }));
        monitor.reset();
        sonido.Para();
        const auto limite = std::chrono::steady_clock::now() + 20s;
        while (fines == 0 && std::chrono::steady_clock::now() < limite) std::this_thread::yield();
        EXPECT_EQ(fines, 1);
        EXPECT_FALSE(avisos.Reproduce(Wav(std::vector<std::int16_t>(10)), [&] { ++fines; }));
    }
    EXPECT_EQ(fines, 1);
}

TEST(cServidorPulse, WithoutAServerNothingBlocks) {
    ServidorDeSonido nadie;
    const auto inicio = std::chrono::steady_clock::now();
    cServidorPulse servidor("prueba", nadie.Direccion());
    EXPECT_FALSE(servidor.Conectado());
    EXPECT_TRUE(servidor.Dispositivos().empty());
    cSalidaPulse salida(servidor, "voz");
    EXPECT_FALSE(salida.Abre(kHz));
    EXPECT_FALSE(salida.Viva());
    EXPECT_LT(std::chrono::steady_clock::now() - inicio, 1s);
}

TEST(cServidorPulse, AServerThatStartsLateIsFound) {
    if (!ServidorDeSonido::Disponible()) GTEST_SKIP() << "pulseaudio isn't installed";
    ServidorDeSonido sonido;
    cServidorPulse servidor("prueba", sonido.Direccion());
    EXPECT_FALSE(servidor.EsperaConexion(150ms));
    sonido.Arranca();
    EXPECT_TRUE(servidor.EsperaConexion(20s));
}

}  // namespace
}  // namespace ondalis
