// The player with and without a server.
#include <gtest/gtest.h>

#include "BancoBomba.h"

namespace ondalis {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t kSegundo = BancoBomba::kHz;

// Four seconds of sound with a word a second, then the end.
void DiCuatroSegundos(BancoBomba &b, std::uint64_t n) {
    b.bomba.Habla(LocucionDe(n, u"uno dos tres cuatro"));
    b.Contesta();
    const std::uint32_t inicios[] = {0, 4, 8, 13};
    for (std::uint64_t i = 0; i < 4; ++i) b.Motor().Manda(TramaPalabra{n, i * kSegundo, inicios[i], 3});
    b.Motor().MandaPcm(n, 4 * kSegundo);
    b.Motor().Manda(TramaFin{n});
    b.Paso();
}

TEST(cReproductor, WithoutAServerTheClockGivesTheSameEvents) {
    BancoBomba b;
    b.salida.CaeServidor();
    DiCuatroSegundos(b, 1);
    EXPECT_TRUE(b.bomba.Reproductor().EnNula());
    b.Avanza(1ms);
    EXPECT_EQ(b.Eventos(), "p0");
    b.Avanza(1s);
    EXPECT_EQ(b.Eventos(), "p0 p4");
    b.Avanza(2998ms);
    EXPECT_EQ(b.Eventos(), "p0 p4 p8 p13");
    b.Avanza(1ms);
    EXPECT_EQ(b.Eventos(), "p0 p4 p8 p13 f1");
    EXPECT_TRUE(b.salida.sonado.empty());
}

TEST(cReproductor, TheClockStandsStillWhilePaused) {
    BancoBomba b;
    b.salida.CaeServidor();
    DiCuatroSegundos(b, 1);
    b.Avanza(500ms);
    b.bomba.Pausa(true);
    b.Avanza(10s);
    EXPECT_EQ(b.Eventos(), "p0");
    b.bomba.Pausa(false);
    b.Avanza(499ms);
    EXPECT_EQ(b.Eventos(), "p0");
    b.Avanza(2ms);
    EXPECT_EQ(b.Eventos(), "p0 p4");
}

TEST(cReproductor, AServerLostInMidReadingLeavesTheClockToGoOnAtTheSameSample) {
    BancoBomba b;
    DiCuatroSegundos(b, 1);
    b.Suena(kSegundo + kSegundo / 2);
    b.salida.CaeServidor();
    b.Paso();
    EXPECT_EQ(b.Eventos(), "p0 p4");
    b.Avanza(499ms);
    EXPECT_EQ(b.Eventos(), "p0 p4");
    b.Avanza(2ms);
    EXPECT_EQ(b.Eventos(), "p0 p4 p8");
    b.Avanza(2s);
    EXPECT_EQ(b.Eventos(), "p0 p4 p8 p13 f1");
}

TEST(cReproductor, AServerThatComesBackInMidReadingPlaysOnAtTheSampleReached) {
    BancoBomba b;
    DiCuatroSegundos(b, 1);
    b.Suena(kSegundo);
    b.salida.CaeServidor();
    b.Paso();
    b.Avanza(1s);
    b.salida.VuelveServidor();
    b.Paso();
    EXPECT_FALSE(b.bomba.Reproductor().EnNula());
    b.Suena(2 * kSegundo);
    EXPECT_EQ(b.Eventos(), "p0 p4 p8 p13 f1");
    ASSERT_EQ(b.salida.sonado.size(), 3 * kSegundo);
    EXPECT_EQ(b.salida.sonado[kSegundo - 1], static_cast<std::int16_t>(kSegundo - 1));
    EXPECT_EQ(b.salida.sonado[kSegundo], static_cast<std::int16_t>(2 * kSegundo));
    EXPECT_EQ(b.salida.sonado.back(), static_cast<std::int16_t>(4 * kSegundo - 1));
}

TEST(cReproductor, AServerThatComesBackDuringAPauseIsSilentUntilTheResume) {
    BancoBomba b;
    DiCuatroSegundos(b, 1);
    b.Suena(kSegundo);
    b.bomba.Pausa(true);
    b.salida.CaeServidor();
    b.Avanza(5s);
    b.salida.VuelveServidor();
    b.Suena(kSegundo);
    EXPECT_EQ(b.salida.sonado.size(), kSegundo);
    b.bomba.Pausa(false);
    b.Suena(3 * kSegundo);
    ASSERT_EQ(b.salida.sonado.size(), 4 * kSegundo);
    EXPECT_EQ(b.salida.sonado[kSegundo], static_cast<std::int16_t>(kSegundo));
    EXPECT_EQ(b.Eventos(), "p0 p4 p8 p13 f1");
}

TEST(cReproductor, AServerThatComesBackWithoutAWakeUpIsFoundAll) {
    BancoBomba b;
    b.salida.CaeServidor();
    DiCuatroSegundos(b, 1);
    b.salida.servidor = true;
    const auto hasta = b.bomba.QueEspera().hasta;
    ASSERT_TRUE(hasta);
    b.Avanza(1s);
    EXPECT_FALSE(b.bomba.Reproductor().EnNula());
}

TEST(cReproductor, AServerThatTakesSamplesAndPlaysNoneIsGivenUpForTheClock) {
    BancoBomba b;
    DiCuatroSegundos(b, 1);
    b.Suena(100);
    b.Avanza(2999ms);
    EXPECT_FALSE(b.bomba.Reproductor().EnNula());
    b.Avanza(1ms);
    EXPECT_TRUE(b.bomba.Reproductor().EnNula());
    EXPECT_TRUE(b.salida.cola.empty());  // it mustn't be said later
    b.Avanza(900ms);
    EXPECT_EQ(b.Eventos(), "p0");
    b.Avanza(100ms);
    EXPECT_EQ(b.Eventos(), "p0 p4");
}

TEST(cReproductor, AStarvedOutputIsNotStuck) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno dos"));
    b.Contesta();
    b.Motor().MandaPcm(1, 100);
    b.Suena(100);
    for (int i = 0; i < 10; ++i) {
        b.Avanza(900ms);
        b.Motor().Manda(TramaPalabra{1, 100, 0, 3});  // signs of life, no sound
        b.Paso();
    }
    b.Motor().MandaPcm(1, 100);
    b.Paso();
    EXPECT_FALSE(b.bomba.Reproductor().EnNula());
    EXPECT_EQ(b.salida.cola.size(), 100u);
}

TEST(cReproductor, TheStreamIsMadeBeforeItIsNeededAndAgainWhenTheServerIsBack) {
    BancoBomba b;
    EXPECT_EQ(b.salida.aperturas, 1);
    EXPECT_TRUE(b.salida.reposando);
    b.salida.CaeServidor();
    b.Avanza(1s);
    EXPECT_FALSE(b.salida.Viva());
    b.salida.VuelveServidor();
    b.Paso();
    EXPECT_TRUE(b.salida.Viva());
    const int aperturas = b.salida.aperturas;
    DiCuatroSegundos(b, 1);
    EXPECT_EQ(b.salida.aperturas, aperturas);  // the same one
}

TEST(cReproductor, AnotherRateOpensAnotherStream) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno"));
    b.Paso();
    b.Motor().Manda(TramaFormato{1, 16000});
    b.Motor().MandaPcm(1, 10);
    b.Paso();
    EXPECT_EQ(b.salida.hz, 16000);
    EXPECT_EQ(b.salida.cola.size(), 10u);
}

TEST(cSalidaNula, CountsHoursWithoutDrift) {
    RelojFalso reloj;
    cSalidaNula nula(reloj);
    nula.Abre(44100);
    std::vector<std::int16_t> segundo(44100);
    for (int i = 0; i < 36000; ++i) nula.Escribe(segundo.data(), segundo.size());
    reloj.Avanza(9h + 500ms);
    EXPECT_EQ(nula.Oidas(), 9ull * 3600 * 44100 + 22050);
    reloj.Avanza(2h);
    EXPECT_EQ(nula.Oidas(), 10ull * 3600 * 44100);
}

TEST(cSalidaNula, AGapBetweenSamplesIsNotMadeUpFor) {
    RelojFalso reloj;
    cSalidaNula nula(reloj);
    nula.Abre(8000);
    std::vector<std::int16_t> muestras(8000);
    nula.Escribe(muestras.data(), 8000);
    reloj.Avanza(5s);
    nula.Escribe(muestras.data(), 8000);
    EXPECT_EQ(nula.Oidas(), 8000u);
    reloj.Avanza(500ms);
    EXPECT_EQ(nula.Oidas(), 12000u);
}

}  // namespace
}  // namespace ondalis
