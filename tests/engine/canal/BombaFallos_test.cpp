// What the pump does when a worker dies, hangs, talks nonsense or can't be had.
#include <gtest/gtest.h>

#include "BancoBomba.h"

namespace ondalis {
namespace {

using namespace std::chrono_literals;

void ExpectaSeguidas(const std::vector<std::int16_t> &muestras, std::size_t n) {
    ASSERT_EQ(muestras.size(), n);
    for (std::size_t i = 0; i < n; ++i) ASSERT_EQ(muestras[i], static_cast<std::int16_t>(i)) << i;
}

TEST(cBombaFallos, AWorkerThatDiesInMidWordIsReplacedBehindItsLastWordAndWhatItSaidIsHeard) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno dos tres"));
    b.Contesta();
    b.Motor().Manda(TramaPalabra{1, 0, 0, 3});
    b.Motor().MandaPcm(1, 1000);
    b.Motor().Manda(TramaPalabra{1, 1000, 4, 3});
    b.Motor().MandaPcm(1, 300);
    b.Motor().Manda(TramaPalabra{1, 2000, 8, 4});  // its sound never comes
    b.Motor().Muere();
    b.Paso();
    ASSERT_EQ(b.lanzador.motores.size(), 2u);
    EXPECT_TRUE(b.lanzador.motores[0]->matado);
    const Locucion otra = b.Contesta();
    EXPECT_EQ(otra.numero, 1u);
    EXPECT_EQ(otra.desde, 7u);
    b.Motor().SigueDesde(1300);
    b.Motor().Manda(TramaPalabra{1, 10, 8, 4});
    b.Motor().MandaPcm(1, 700);
    b.Motor().Manda(TramaFin{1});
    b.Suena(1310);
    EXPECT_EQ(b.Eventos(), "p0 p4");
    b.Suena(1);
    EXPECT_EQ(b.Eventos(), "p0 p4 p8");
    b.Suena(689);
    EXPECT_EQ(b.Eventos(), "p0 p4 p8 f1");
    ExpectaSeguidas(b.salida.sonado, 2000);
    EXPECT_EQ(b.Avisos(), 1u);
}

TEST(cBombaFallos, WordsNeverGoBackWhateverAWorkerSays) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno dos tres"));
    b.Contesta();
    b.Motor().Manda(TramaPalabra{1, 0, 4, 3});
    b.Motor().MandaPcm(1, 100);
    b.Motor().Muere();
    b.Paso();
    b.Contesta();
    for (const std::uint32_t posicion : {0u, 4u, 8u, 8u, 0u, 4000u}) b.Motor().Manda(TramaPalabra{1, 0, posicion, 4});
    b.Motor().MandaPcm(1, 100);
    b.Motor().Manda(TramaFin{1});
    b.Suena(200);
    EXPECT_EQ(b.Eventos(), "p4 p8 f1");
}

TEST(cBombaFallos, MarksAlreadyPassedAreNotSaidAgain) {
    BancoBomba b;
    Locucion locucion = LocucionDe(1, u"uno ");
    locucion.tramos.push_back(TramoMarca(u"x"));
    locucion.tramos.push_back(TramoTexto(u"dos ", 4));
    locucion.tramos.push_back(TramoMarca(u"x"));
    b.bomba.Habla(locucion);
    b.Contesta();
    b.Motor().Manda(TramaPalabra{1, 0, 0, 3});
    b.Motor().Manda(TramaMarca{1, 100, u"x"});
    b.Motor().Manda(TramaPalabra{1, 100, 4, 3});
    b.Motor().MandaPcm(1, 150);
    b.Motor().Muere();
    b.Paso();
    const Locucion otra = b.Contesta();
    EXPECT_EQ(otra.desde, 7u);
    ASSERT_EQ(otra.tramos.size(), 3u);
    EXPECT_EQ(otra.tramos[2], TramoMarca(u"x"));
    b.Motor().Manda(TramaMarca{1, 50, u"x"});
    b.Motor().MandaPcm(1, 50);
    b.Motor().Manda(TramaFin{1});
    b.Suena(200);
    EXPECT_EQ(b.Eventos(), "p0 m:x p4 m:x f1");
}

TEST(cBombaFallos, AWorkerThatDoesNotAnswerWithinTheEnginesLimitIsReplaced) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno dos"));
    b.Paso();
    b.Avanza(1999ms);
    EXPECT_EQ(b.lanzador.intentos, 1);
    b.Avanza(1ms);
    EXPECT_EQ(b.lanzador.intentos, 2);
    EXPECT_TRUE(b.lanzador.motores[0]->matado);
    const Locucion otra = b.Contesta();
    EXPECT_EQ(otra.desde, 0u);
    EXPECT_EQ(otra.tramos[0].texto, u"uno dos");
}

TEST(cBombaFallos, AnEngineMayHaveALimitOfItsOwn) {
    RelojFalso reloj;
    LanzadorGuion lanzador;
    SalidaGuion salida;
    PlazosMotor plazos;
    plazos.deMotor["espeak"] = 10s;
    cBomba bomba(lanzador, salida, reloj, plazos);
    bomba.Habla(LocucionDe(1, u"uno"));
    bomba.Paso();
    reloj.Avanza(9999ms);
    bomba.Paso();
    EXPECT_EQ(lanzador.intentos, 1);
    reloj.Avanza(1ms);
    bomba.Paso();
    EXPECT_EQ(lanzador.intentos, 2);
}

TEST(cBombaFallos, BetweenAnswersTheLimitIsASecondAndEachAnswerRenewsIt) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno dos"));
    b.Contesta();
    b.Paso();
    for (int i = 0; i < 5; ++i) {
        b.Avanza(900ms);
        b.Motor().MandaPcm(1, 10);
        b.Paso();
    }
    EXPECT_EQ(b.lanzador.intentos, 1);
    b.Avanza(1000ms);
    EXPECT_EQ(b.lanzador.intentos, 2);
}

TEST(cBombaFallos, ChatterAboutAnotherUtteranceIsNoAnswer) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno"));
    b.Contesta();
    b.Paso();
    b.bomba.Habla(LocucionDe(2, u"dos"));
    for (int i = 0; i < 21; ++i) {
        b.Motor().MandaPcm(1, 100);
        b.reloj.Avanza(100ms);
        b.Paso();
    }
    EXPECT_EQ(b.lanzador.intentos, 2);
}

TEST(cBombaFallos, TheFullBufferOfAPausedVoiceIsNoHang) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno dos"));
    b.bomba.Pausa(true);
    b.Contesta();
    b.Motor().MandaPcm(1, 20 * BancoBomba::kHz);
    b.Paso();
    b.Avanza(1h);
    EXPECT_EQ(b.lanzador.intentos, 1);
    b.bomba.Pausa(false);
    b.Suena(19 * BancoBomba::kHz);
    EXPECT_EQ(b.lanzador.intentos, 1);
    b.Motor().Manda(TramaFin{1});
    b.Suena(BancoBomba::kHz);
    EXPECT_EQ(b.Eventos(true), "f1");
    ASSERT_EQ(b.salida.sonado.size(), static_cast<std::size_t>(20) * BancoBomba::kHz);
}

TEST(cBombaFallos, WhenTheBufferHasRoomAgainTheLimitCountsFromThen) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno dos"));
    b.bomba.Pausa(true);
    b.Contesta();
    b.Motor().MandaPcm(1, 4 * BancoBomba::kHz);
    b.Paso();
    b.Avanza(1h);
    b.bomba.Pausa(false);
    b.Suena(2 * BancoBomba::kHz);
    EXPECT_EQ(b.lanzador.intentos, 1);
    b.Avanza(999ms);
    EXPECT_EQ(b.lanzador.intentos, 1);
    b.Avanza(1ms);
    EXPECT_EQ(b.lanzador.intentos, 2);
}

TEST(cBombaFallos, AWorkerThatDiesBehindAFullBufferIsSeenWhenThereIsRoomAndNothingIsLost) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno dos"));
    b.bomba.Pausa(true);
    b.Contesta();
    b.Motor().Manda(TramaPalabra{1, 0, 0, 3});
    b.Motor().MandaPcm(1, 4 * BancoBomba::kHz + 1000);
    b.Paso();
    b.Motor().Muere();
    b.Paso();
    EXPECT_EQ(b.lanzador.intentos, 1);
    b.bomba.Pausa(false);
    b.Suena(2 * BancoBomba::kHz + 1000);
    EXPECT_EQ(b.lanzador.intentos, 2);
    EXPECT_EQ(b.Contesta().desde, 3u);
    b.Motor().Manda(TramaFin{1});
    b.Suena(2 * BancoBomba::kHz);
    ExpectaSeguidas(b.salida.sonado, 4 * BancoBomba::kHz + 1000);
    EXPECT_EQ(b.Eventos(), "p0 f1");
}

class Basura : public testing::TestWithParam<int> {};

std::vector<std::uint8_t> BytesDeBasura(int caso) {
    std::vector<std::uint8_t> bytes;
    switch (caso) {
        case 0: return {0xff, 0xff, 0xff, 0xff, 0x00};
        case 1: return {1, 0, 0, 0, 0xee};
        case 2: Codifica(TramaHabla{LocucionDe(1, u"eco")}, bytes); break;
        case 3: Codifica(TramaFormato{1, 8000}, bytes), bytes[13] = 7, bytes[14] = 0; break;  // 7 Hz
        case 4: Codifica(TramaFormato{1, 44100}, bytes); break;            // another rate in mid-utterance
        case 5: bytes.assign(3 * 1024 * 1024, 0), bytes[2] = 0xf0; break;  // a frame of 15 MB that never ends
        default:
            for (std::size_t i = 0; i < 2 * cRecorrido::kMaxEventos; ++i)
                Codifica(TramaPalabra{1, 1'000'000'000, static_cast<std::uint32_t>(i + 1), 1}, bytes);
    }
    return bytes;
}

TEST_P(Basura, ReplacesTheWorkerAndTheSpeechGoesOn) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, std::u16string(140'000, u'a')));
    b.Contesta();
    b.Motor().MandaPcm(1, 100);
    b.Motor().MandaBytes(BytesDeBasura(GetParam()));
    for (int i = 0; i < 20; ++i) b.Paso();
    ASSERT_EQ(b.lanzador.intentos, 2);
    EXPECT_TRUE(b.lanzador.motores[0]->matado);
    EXPECT_EQ(b.Contesta().numero, 1u);
    b.Motor().SigueDesde(100);
    b.Motor().MandaPcm(1, 100);
    b.Motor().Manda(TramaFin{1});
    b.Suena(200);
    ExpectaSeguidas(b.salida.sonado, 200);
    EXPECT_EQ(b.Eventos(), "f1");
}

INSTANTIATE_TEST_SUITE_P(cBombaFallos, Basura, testing::Range(0, 7));

TEST(cBombaFallos, SoundBeforeItsRateIsGarbage) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno"));
    b.Paso();
    b.Motor().MandaPcm(1, 10);
    b.Paso();
    EXPECT_EQ(b.lanzador.intentos, 2);
}

TEST(cBombaFallos, AClauseThatFailsTwiceIsSkippedAndTold) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"Uno dos. Malo malo. Tres."));
    b.Contesta();
    b.Motor().Manda(TramaPalabra{1, 0, 0, 3});
    b.Motor().Manda(TramaPalabra{1, 50, 4, 3});
    b.Motor().MandaPcm(1, 100);
    b.Motor().Muere();
    b.Paso();
    EXPECT_EQ(b.Contesta().desde, 7u);
    b.Motor().Muere();
    b.Paso();
    EXPECT_EQ(b.Contesta().desde, 19u);
    b.Motor().Manda(TramaPalabra{1, 0, 20, 4});
    b.Motor().MandaPcm(1, 100);
    b.Motor().Manda(TramaFin{1});
    b.Suena(200);
    EXPECT_EQ(b.Eventos(), "p0 p4 p20 f1");
    ASSERT_EQ(b.Avisos(), 2u);
    EXPECT_NE(b.eventos[1].texto.find(u"se salta"), std::u16string::npos);
}

TEST(cBombaFallos, BehindAFailureTheNextClauseIsAskedForAloneSoThatNoInnocentOneIsLost) {
    BancoBomba b;
    Locucion locucion = LocucionDe(1, u"Uno. Malo. ");
    locucion.tramos.push_back(TramoTexto(u"Tres.", 20));
    b.bomba.Habla(locucion);
    b.Contesta();
    b.Motor().Muere();  // before any sound: whose fault it was can't be known
    b.Paso();
    Locucion otra = b.Contesta();
    ASSERT_EQ(otra.tramos.size(), 1u);
    EXPECT_EQ(otra.tramos[0].texto, u"Uno.");
    b.Motor().Manda(TramaPalabra{1, 0, 0, 3});
    b.Motor().MandaPcm(1, 100);
    b.Motor().Manda(TramaFin{1});
    b.Paso();
    otra = b.Contesta();
    EXPECT_EQ(otra.desde, 4u);
    EXPECT_EQ(otra.tramos, locucion.tramos);
    b.Motor().Muere();
    b.Paso();
    otra = b.Contesta();
    EXPECT_EQ(otra.desde, 4u);
    EXPECT_EQ(otra.tramos[0].texto, u"Uno. Malo.");
    b.Motor().Muere();
    b.Paso();
    otra = b.Contesta();
    EXPECT_EQ(otra.desde, 10u);
    EXPECT_EQ(otra.tramos, locucion.tramos);
    b.Motor().Manda(TramaPalabra{1, 0, 20, 4});
    b.Motor().MandaPcm(1, 100);
    b.Motor().Manda(TramaFin{1});
    b.Suena(200);
    EXPECT_EQ(b.Eventos(), "p0 p20 f1");
}

TEST(cBombaFallos, WhenTheLastClauseFailsTwiceTheUtteranceEnds) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"Uno. Malo."));
    b.Contesta();
    b.Motor().Manda(TramaPalabra{1, 0, 0, 3});
    b.Motor().MandaPcm(1, 100);
    b.Motor().Muere();
    b.Paso();
    b.Contesta();
    b.Motor().Muere();
    b.Paso();
    EXPECT_EQ(b.lanzador.intentos, 2);
    b.Suena(100);
    EXPECT_EQ(b.Eventos(), "p0 f1");
}

TEST(cBombaFallos, AWorkerThatAlwaysDiesEndsALongTextSoon) {
    BancoBomba b;
    std::u16string texto;
    for (int i = 0; i < 1000; ++i) texto += u"Una frase mala. ";
    b.bomba.Habla(LocucionDe(1, texto));
    for (int i = 0; i < 100 && b.Eventos().empty(); ++i) {
        b.Paso();
        if (b.bomba.Numero() != 0) b.Motor().Muere();
    }
    EXPECT_EQ(b.Eventos(), "f1");
    EXPECT_EQ(b.eventos.back().texto, u"El motor de voz ha terminado demasiadas veces; se abandona la locución");
    EXPECT_LE(b.lanzador.intentos, cRecorrido::kMaxFallosSeguidos + 1);
    // And the next utterance works.
    b.bomba.Habla(LocucionDe(2, u"uno"));
    b.Contesta();
    b.Motor().MandaPcm(2, 10);
    b.Motor().Manda(TramaFin{2});
    b.Suena(10);
    EXPECT_EQ(b.Eventos(), "f1 f2");
}

TEST(cBombaFallos, AWorkerThatCannotBeStartedGivesTheEndAndTheNextUtteranceTriesAgain) {
    BancoBomba b;
    b.lanzador.puede = false;
    b.bomba.Habla(LocucionDe(1, u"uno"));
    b.Paso();
    EXPECT_EQ(b.Eventos(true), "a f1");
    b.lanzador.puede = true;
    b.bomba.Habla(LocucionDe(2, u"uno"));
    b.Contesta();
    b.Motor().MandaPcm(2, 10);
    b.Motor().Manda(TramaFin{2});
    b.Suena(10);
    EXPECT_EQ(b.Eventos(), "f1 f2");
}

TEST(cBombaFallos, AWorkerThatCannotBeReplacedLetsWhatWasReceivedBeHeard) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno dos"));
    b.Contesta();
    b.Motor().Manda(TramaPalabra{1, 0, 0, 3});
    b.Motor().MandaPcm(1, 500);
    b.Paso();
    b.lanzador.puede = false;
    b.Motor().Muere();
    b.Suena(499);
    EXPECT_EQ(b.Eventos(), "p0");
    b.Suena(1);
    EXPECT_EQ(b.Eventos(), "p0 f1");
    EXPECT_EQ(b.eventos.back().texto, u"No se puede iniciar el motor de voz");  // it isn't whole
}

TEST(cBombaFallos, AnIdleWorkersDeathIsNoFailureOfTheNextUtterance) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u""));
    b.Contesta();
    b.Motor().Manda(TramaFin{1});
    b.Paso();
    b.Motor().Muere();
    b.bomba.Habla(LocucionDe(2, u"uno"));
    b.Contesta();
    b.Motor().MandaPcm(2, 10);
    b.Motor().Manda(TramaFin{2});
    b.Suena(10);
    EXPECT_EQ(b.Eventos(true), "f1 f2");
}

TEST(cBombaFallos, AStoppedWorkerThatReadsNothingCostsNoMemoryAndIsReplaced) {
    BancoBomba b;
    const std::u16string largo(500'000, u'a');
    for (std::uint64_t i = 1; i <= 20; ++i) {
        b.bomba.Habla(LocucionDe(i, largo));
        b.bomba.Paso();
    }
    b.bomba.Habla(LocucionDe(21, u"uno"));
    b.bomba.Paso();
    b.Avanza(2s);
    EXPECT_EQ(b.lanzador.intentos, 2);
    EXPECT_EQ(b.Contesta().numero, 21u);
}

TEST(cBombaFallos, AnUtteranceThatNoFrameHoldsEndsOnceAndIsLogged) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, std::u16string(kMaxTrama / sizeof(char16_t), u'a')));
    EXPECT_TRUE(b.Contesta().tramos.empty());
    b.Motor().Manda(TramaFin{1});
    b.Paso();
    EXPECT_EQ(b.Eventos(), "f1");
    EXPECT_EQ(b.Avisos(), 1u);
    EXPECT_EQ(b.lanzador.motores.size(), 1u);
}

}  // namespace
}  // namespace ondalis
