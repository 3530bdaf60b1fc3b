#include <gtest/gtest.h>

#include "BancoBomba.h"

namespace ondalis {
namespace {

using namespace std::chrono_literals;

// "uno dos": words at 0 and 4, 1000 samples each, then the end.
void DiUnoDos(BancoBomba &b, std::uint64_t n) {
    b.Contesta();
    b.Motor().Manda(TramaPalabra{n, 0, 0, 3});
    b.Motor().Manda(TramaPalabra{n, 1000, 4, 3});
    b.Motor().MandaPcm(n, 2000);
    b.Motor().Manda(TramaFin{n});
}

TEST(cBomba, AWordIsRaisedWhenItsSampleIsHeardAndTheEndWhenTheLastOneIs) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno dos"));
    DiUnoDos(b, 1);
    b.Paso();
    EXPECT_EQ(b.Eventos(), "");
    b.salida.Suena(1);
    b.Paso();
    EXPECT_EQ(b.Eventos(), "p0");
    b.salida.Suena(999);
    b.Paso();
    EXPECT_EQ(b.Eventos(), "p0");
    b.salida.Suena(1);
    b.Paso();
    EXPECT_EQ(b.Eventos(), "p0 p4");
    b.salida.Suena(998);
    b.Paso();
    EXPECT_EQ(b.Eventos(), "p0 p4");
    b.salida.Suena(1);
    b.Paso();
    EXPECT_EQ(b.Eventos(), "p0 p4 f1");
    EXPECT_TRUE(b.salida.completada);
    EXPECT_TRUE(b.salida.reposando);
}

TEST(cBomba, TheFirstSampleIsWrittenAsSoonAsTheFirstPcmHasCome) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno"));
    b.Contesta();
    b.Motor().MandaPcm(1, 10);
    b.bomba.Paso();
    EXPECT_EQ(b.salida.cola.size(), 10u);
}

TEST(cBomba, AnUtteranceWithoutTextHasItsMarksAndOneEnd) {
    BancoBomba b;
    Locucion locucion = LocucionDe(1, u"");
    locucion.tramos = {TramoMarca(u"x")};
    b.bomba.Habla(locucion);
    b.Contesta();
    b.Motor().Manda(TramaMarca{1, 0, u"x"});
    b.Paso();
    EXPECT_EQ(b.Eventos(), "");
    b.Motor().Manda(TramaFin{1});
    b.Paso();
    EXPECT_EQ(b.Eventos(), "m:x f1");
}

TEST(cBomba, AMarkBehindTheLastSampleComesWithItBeforeTheEnd) {
    BancoBomba b;
    Locucion locucion = LocucionDe(1, u"uno");
    locucion.tramos.push_back(TramoMarca(u"x"));
    b.bomba.Habla(locucion);
    b.Contesta();
    b.Motor().MandaPcm(1, 100);
    b.Motor().Manda(TramaMarca{1, 100, u"x"});
    b.Motor().Manda(TramaFin{1});
    b.Suena(99);
    EXPECT_EQ(b.Eventos(), "");
    b.Suena(1);
    EXPECT_EQ(b.Eventos(), "m:x f1");
}

TEST(cBomba, ARefusedUtteranceEndsWithALineForTheLog) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno"));
    b.Paso();
    b.Motor().Manda(TramaError{1, "no such voice"});
    b.Motor().Manda(TramaFin{1});
    b.Paso();
    EXPECT_EQ(b.Eventos(true), "a f1");
}

TEST(cBomba, ANewUtteranceSilencesTheOldOneAndTheOldOnesAnswersAreDropped) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno dos"));
    b.Contesta();
    b.Motor().Manda(TramaPalabra{1, 0, 0, 3});
    b.Motor().MandaPcm(1, 500);
    b.Suena(100);
    b.bomba.Habla(LocucionDe(2, u"tres"));
    EXPECT_TRUE(b.salida.cola.empty());
    b.Motor().MandaPcm(1, 500);
    b.Motor().Manda(TramaFin{1});
    b.Paso();
    EXPECT_TRUE(b.salida.cola.empty());
    b.Contesta();
    b.Motor().Manda(TramaPalabra{2, 0, 0, 4});
    b.Motor().MandaPcm(2, 50);
    b.Motor().Manda(TramaFin{2});
    b.Suena(50);
    EXPECT_EQ(b.Eventos(), "p0 p0 f2");
    EXPECT_EQ(b.lanzador.intentos, 1);  // the worker stays warm
}

TEST(cBomba, StoppingIsSilenceAtOnceAndOwesNoEnd) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno dos"));
    DiUnoDos(b, 1);
    b.Suena(500);
    b.bomba.Detiene();
    EXPECT_TRUE(b.salida.cola.empty());
    b.Paso();
    EXPECT_EQ(b.Eventos(), "p0");
    EXPECT_EQ(b.bomba.QueEspera().hasta, std::nullopt);  // nothing to wake up for
    b.bomba.Detiene();
    b.Paso();
    EXPECT_EQ(b.Eventos(), "p0");
}

TEST(cBomba, StoppingTellsTheWorkerToDropTheUtterance) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(7, u"uno dos"));
    b.Contesta();
    b.Paso();
    b.bomba.Detiene();
    b.Paso();
    const auto tramas = b.Motor().Tramas();
    ASSERT_EQ(tramas.size(), 1u);
    EXPECT_EQ(std::get<TramaPara>(tramas[0]).numero, 7u);
}

TEST(cBomba, APauseFreezesAndResumesAtTheSameSampleWithoutEventsBetween) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno dos"));
    DiUnoDos(b, 1);
    b.Suena(600);
    b.bomba.Pausa(true);
    b.bomba.Pausa(true);
    b.salida.Suena(900);
    b.Avanza(10s);
    EXPECT_EQ(b.salida.sonado.size(), 600u);
    EXPECT_EQ(b.Eventos(), "p0");
    b.bomba.Pausa(false);
    b.Suena(1400);
    ASSERT_EQ(b.salida.sonado.size(), 2000u);
    for (std::size_t i = 0; i < 2000; ++i) ASSERT_EQ(b.salida.sonado[i], static_cast<std::int16_t>(i));
    EXPECT_EQ(b.Eventos(), "p0 p4 f1");
}

TEST(cBomba, NoEndComesWhilePausedAlsoWithoutAnySound) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u""));
    b.bomba.Pausa(true);
    b.Contesta();
    b.Motor().Manda(TramaFin{1});
    b.Paso();
    EXPECT_EQ(b.Eventos(), "");
    b.bomba.Pausa(false);
    b.Paso();
    EXPECT_EQ(b.Eventos(), "f1");
}

TEST(cBomba, APauseBeforeTheFirstSampleHolds) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno dos"));
    b.bomba.Pausa(true);
    DiUnoDos(b, 1);
    b.Suena(500);
    EXPECT_TRUE(b.salida.sonado.empty());
    b.bomba.Pausa(false);
    b.Suena(2000);
    EXPECT_EQ(b.Eventos(), "p0 p4 f1");
}

TEST(cBomba, SpeakingClearsThePause) {
    BancoBomba b;
    b.bomba.Habla(LocucionDe(1, u"uno dos"));
    DiUnoDos(b, 1);
    b.Suena(10);
    b.bomba.Pausa(true);
    b.bomba.Habla(LocucionDe(2, u"uno dos"));
    DiUnoDos(b, 2);
    b.Suena(2000);
    EXPECT_EQ(b.Eventos(), "p0 p0 p4 f2");
}

TEST(cBomba, PausingIsHarmlessWhenIdle) {
    BancoBomba b;
    b.bomba.Pausa(true);
    b.bomba.Pausa(false);
    b.bomba.Pausa(true);
    b.Paso();
    EXPECT_EQ(b.Eventos(true), "");
    b.bomba.Habla(LocucionDe(1, u"uno dos"));
    DiUnoDos(b, 1);
    b.Suena(2000);
    EXPECT_EQ(b.Eventos(), "p0 p4 f1");
}

TEST(cBomba, MemoryStaysBoundedForALongTextAndTheWorkerIsHeldBack) {
    BancoBomba b;
    std::u16string texto;
    while (texto.size() < 1'000'000) texto += u"palabra ";
    b.bomba.Habla(LocucionDe(1, texto));
    std::optional<Locucion> peticion;
    for (int i = 0; i < 200 && !peticion; ++i) {
        b.Paso();
        peticion = b.Motor().Peticion();
    }
    ASSERT_TRUE(peticion);
    EXPECT_EQ(peticion->tramos[0].texto, texto);
    b.Motor().Manda(TramaFormato{1, BancoBomba::kHz});
    b.Motor().MandaPcm(1, 60 * BancoBomba::kHz);
    b.Paso();
    const std::size_t limite = static_cast<std::size_t>(cReproductor::kSegundosGuardados) * BancoBomba::kHz;
    EXPECT_GE(b.bomba.Reproductor().Guardadas(), limite);
    EXPECT_LE(b.bomba.Reproductor().Guardadas(), limite + 64 * 1024);
    EXPECT_FALSE(b.Motor().Empuja());
    EXPECT_EQ(b.bomba.QueEspera().descriptor, -1);
    // As sound goes out more is taken, and all of it comes in order.
    b.Suena(60 * BancoBomba::kHz);
    ASSERT_EQ(b.salida.sonado.size(), static_cast<std::size_t>(60) * BancoBomba::kHz);
    for (std::size_t i = 0; i < b.salida.sonado.size(); ++i)
        ASSERT_EQ(b.salida.sonado[i], static_cast<std::int16_t>(i)) << i;
}

TEST(cBomba, AnUtteranceOfWhichNothingCouldBeSaidEndsWithTheReason) {
    for (const bool suena : {false, true}) {
        BancoBomba b;
        b.bomba.Habla(LocucionDe(1, u"uno dos"));
        b.Contesta();
        b.Motor().Manda(TramaPcm{1, std::vector<std::int16_t>(100, 0)});  // a pause of the text's own is nothing said
        b.Motor().Manda(TramaError{1, "el programa ha muerto por la señal 11\n\xFF"});
        if (suena) b.Motor().MandaPcm(1, 100);
        b.Motor().Manda(TramaFin{1});
        b.Suena(200);
        ASSERT_EQ(b.Eventos(), "f1");
        const std::u16string motivo =
            u"El motor de voz rechaza la locución: el programa ha muerto por la señal 11 \uFFFD";
        EXPECT_EQ(b.eventos.front().texto, motivo);  // the log has it in both cases
        EXPECT_EQ(b.eventos.back().texto, suena ? u"" : motivo);
    }
}

TEST(cBomba, AReasonIsNotThatOfTheNextUtterance) {
    BancoBomba b;
    b.lanzador.puede = false;
    b.bomba.Habla(LocucionDe(1, u"uno"));
    b.Paso();
    EXPECT_EQ(b.eventos.back().texto, u"No se puede iniciar el motor de voz");
    b.lanzador.puede = true;
    b.bomba.Habla(LocucionDe(2, u" "));
    b.Contesta();
    b.Motor().Manda(TramaFin{2});
    b.Paso();
    EXPECT_EQ(b.Eventos(), "f1 f2");
    EXPECT_EQ(b.eventos.back().texto, u"");
}

}  // namespace
}  // namespace ondalis
