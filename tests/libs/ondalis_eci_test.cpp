#include "libs/ondalis_eci.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

#include "BancoECI.h"
#include "fakes/DiscoLleno.h"

namespace ondalis::prueba {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ECI : public testing::Test {
protected:
    BancoECI b;
    std::string Ruta(const char *nombre) const { return b.carpeta.Ruta(nombre); }
    // A whole speech into a file, waited for.
    bool Graba(const char *nombre, std::size_t muestras) {
        b.alEsperar = [this, muestras] { b.Graba(muestras); };
        return SetDestinoECI(Ruta(nombre).c_str()) == 1 && AddTextoECI("hola") == 1 && HablaECI(1) == 1;
    }
};

TEST(ECISinServicio, EveryOperationIsHarmlessAndFails) {
    CreaVozECI();
    RestauraECI();
    CallaECI();
    char bufer[ONDALIS_ECI_TAM_ERROR] = {'x'};
    UltimoErrorECI(bufer);
    EXPECT_EQ('\0', bufer[0]);
    EXPECT_EQ(0, SetDestinoECI("/tmp/x.wav"));
    EXPECT_EQ(0, AddTextoECI("hola"));
    EXPECT_EQ(0, HablaECI(1));
    EXPECT_EQ(0, EstaHablandoECI());
    BorraVozECI();
}

TEST_F(ECI, CarlosSpeaksBeforeAnyAnnotation) {
    AddTextoECI("hola");
    EXPECT_EQ(1, HablaECI(0));
    const ParametrosVoz voz = b.vivo.locuciones.back().voz;
    EXPECT_EQ("espeak", voz.motor);
    EXPECT_EQ("roa/es", voz.voz);
    EXPECT_TRUE(voz.formantes);
    EXPECT_EQ(170, voz.velocidad);
    EXPECT_EQ(1.0, voz.ganancia);
    EXPECT_EQ(106, voz.tono);
    EXPECT_EQ(50, voz.tamCabeza);
}

TEST_F(ECI, TextsAddUpAndAnAnnotationHoldsForThoseBehindIt) {
    AddTextoECI("uno `vs200");
    AddTextoECI("2 dos");
    AddTextoECI(" tres");
    EXPECT_EQ(1, HablaECI(0));
    EXPECT_EQ(u"uno  2 dos tres", b.vivo.Texto());
    const auto &tramos = b.vivo.locuciones.back().tramos;
    ASSERT_EQ(3u, tramos.size());
    EXPECT_EQ(200, tramos[1].valor);
}

TEST_F(ECI, WhatWasSpokenIsPendingNoMore) {
    AddTextoECI("uno");
    HablaECI(0);
    b.vivo.Fin();
    EXPECT_EQ(1, HablaECI(0));  // also an empty one speaks
    EXPECT_EQ(u"", b.vivo.Texto());
    EXPECT_EQ(2u, b.vivo.locuciones.size());
}

TEST_F(ECI, TheEncodingIsDecidedOnceACall) {
    AddTextoECI("a\xC3\xB1o ");
    AddTextoECI("a\xF1o ");
    AddTextoECI("\xEF\xBB\xBF\xC3\xB1\xFF");
    EXPECT_EQ(1, HablaECI(0));
    EXPECT_EQ(u"año año ñ\uFFFD", b.vivo.Texto());
}

TEST_F(ECI, NoTextIsAnEmptyOne) {
    EXPECT_EQ(1, AddTextoECI(nullptr));
    EXPECT_EQ(1, AddTextoECI(""));
    EXPECT_EQ(1, HablaECI(0));
    EXPECT_EQ(u"", b.vivo.Texto());
}

TEST_F(ECI, ItSpeaksUntilTheLastSampleWasHeard) {
    EXPECT_EQ(0, EstaHablandoECI());
    AddTextoECI("hola");
    EXPECT_EQ(1, HablaECI(0));
    EXPECT_EQ(1, EstaHablandoECI());
    b.vivo.Palabra(0);
    EXPECT_EQ(1, EstaHablandoECI());
    b.vivo.Fin();
    EXPECT_EQ(0, EstaHablandoECI());
    EXPECT_EQ(0, b.esperas);
}

TEST_F(ECI, WaitingTheCallReturnsAtTheEnd) {
    b.alEsperar = [this] { b.vivo.Fin(); };
    EXPECT_EQ(1, HablaECI(1));
    EXPECT_EQ(1, b.esperas);
    EXPECT_GE(b.despertares, 1);
}

TEST_F(ECI, AStopSilencesDropsWhatIsPendingAndEndsTheWait) {
    b.alEsperar = [] { CallaECI(); };
    AddTextoECI("hola");
    EXPECT_EQ(1, HablaECI(1));
    EXPECT_FALSE(b.vivo.sonando);
    AddTextoECI("uno");
    CallaECI();
    EXPECT_EQ(1, HablaECI(0));
    EXPECT_EQ(u"", b.vivo.Texto());
}

TEST_F(ECI, IdleAStopTellsTheChannelNothing) {
    CallaECI();
    EXPECT_THAT(b.vivo.ordenes, IsEmpty());
    EXPECT_THAT(b.ficheros.ordenes, IsEmpty());
}

TEST_F(ECI, ALateEndOfAStoppedSpeechIsNotThatOfTheNext) {
    HablaECI(0);
    const std::uint64_t primera = b.vivo.Numero();
    CallaECI();
    HablaECI(0);
    EXPECT_NE(primera, b.vivo.Numero());
    b.vivo.Fin(primera);
    EXPECT_EQ(1, EstaHablandoECI());
    b.vivo.Fin();
    EXPECT_EQ(0, EstaHablandoECI());
}

TEST_F(ECI, WhileItSpeaksAnotherSpeechOrTargetIsRefused) {
    HablaECI(0);
    EXPECT_EQ(0, HablaECI(0));
    EXPECT_EQ("La voz está ocupada", b.Error());
    EXPECT_EQ(0, SetDestinoECI(Ruta("a.wav").c_str()));
    EXPECT_FALSE(std::filesystem::exists(Ruta("a.wav")));
    RestauraECI();
    EXPECT_TRUE(b.vivo.sonando);
}

TEST_F(ECI, RestoringDropsTheTextAndTheTarget) {
    AddTextoECI("uno");
    EXPECT_EQ(1, SetDestinoECI(Ruta("a.wav").c_str()));
    RestauraECI();
    EXPECT_EQ(1, HablaECI(0));
    EXPECT_EQ(u"", b.vivo.Texto());
    EXPECT_THAT(b.ficheros.ordenes, IsEmpty());
    ASSERT_TRUE(b.Leido("a.wav"));
    EXPECT_THAT(b.Leido("a.wav")->muestras, IsEmpty());
}

TEST_F(ECI, AFileIsCompleteWhenTheCallReturnsAndTheNextSpeechGoesToTheDevice) {
    ASSERT_TRUE(Graba("a.wav", 5000));
    ASSERT_TRUE(b.Leido("a.wav"));
    EXPECT_EQ(11025, b.Leido("a.wav")->hercios);
    EXPECT_EQ(5000u, b.Leido("a.wav")->muestras.size());
    EXPECT_EQ(1, HablaECI(0));
    EXPECT_TRUE(b.vivo.sonando);
}

TEST_F(ECI, AFileBeingMadeIsSpeakingUntilItIsComplete) {
    SetDestinoECI(Ruta("a.wav").c_str());
    EXPECT_EQ(1, HablaECI(0));
    b.Escribe(100);
    EXPECT_EQ(1, EstaHablandoECI());
    b.Graba(100);
    EXPECT_EQ(0, EstaHablandoECI());
    EXPECT_EQ(200u, b.Leido("a.wav")->muestras.size());
}

TEST_F(ECI, AWavFileOfOurFormIsAddedTo) {
    ASSERT_TRUE(Graba("a.wav", 5000));
    ASSERT_TRUE(Graba("a.wav", 300));
    EXPECT_EQ(5300u, b.Leido("a.wav")->muestras.size());
}

TEST_F(ECI, AnotherExistingFileIsRefusedAndStays) {
    b.carpeta.Escribe("a.wav", "una carta de mi madre");
    EXPECT_EQ(0, SetDestinoECI(Ruta("a.wav").c_str()));
    EXPECT_EQ("Ya existe y no es un fichero WAV de 11025 Hz, 16 bits y mono", b.Error());
    EXPECT_EQ("una carta de mi madre", b.carpeta.Lee("a.wav"));
}

TEST_F(ECI, APathThatCannotBeWrittenFailsAndSaysWhy) {
    b.carpeta.Escribe("fichero", "x");
    const std::pair<std::string, const char *> casos[] = {
        {Ruta("no/a.wav"), "No existe la carpeta"},
        {Ruta("fichero/a.wav"), "No existe la carpeta"},
        {Ruta(""), "Es una carpeta"},
        {Ruta(std::string(300, 'a').c_str()), "El nombre es demasiado largo"},
        {"", "Falta el nombre del fichero"},
    };
    for (const auto &[ruta, motivo] : casos) {
        EXPECT_EQ(0, SetDestinoECI(ruta.c_str())) << ruta;
        EXPECT_EQ(motivo, b.Error());
    }
    EXPECT_EQ(0, SetDestinoECI(nullptr));
    EXPECT_EQ(1, HablaECI(0));
    EXPECT_TRUE(b.vivo.sonando);  // a failed target is none
}

TEST_F(ECI, ARecordingThatIsStoppedKeepsATrueHeader) {
    SetDestinoECI(Ruta("a.wav").c_str());
    b.alEsperar = [this] {
        b.Escribe(1234);
        CallaECI();
    };
    EXPECT_EQ(1, HablaECI(1));
    EXPECT_EQ("detiene", b.ficheros.ordenes.back());
    ASSERT_TRUE(b.Leido("a.wav"));
    EXPECT_EQ(1234u, b.Leido("a.wav")->muestras.size());
}

TEST_F(ECI, AFullDiskEndsTheWaitAtTheNextWordAndIsTold) {
    SetDestinoECI(Ruta("a.wav").c_str());
    b.alEsperar = [this] {
        b.Escribe(1000);
        const DiscoLleno lleno(44 + 3000);
        b.Escribe(10000);
        b.ficheros.Palabra(0);
    };
    EXPECT_EQ(0, HablaECI(1));
    EXPECT_EQ("El fichero está lleno", b.Error());  // what a limit on the file's size gives in the place of a full disk
    EXPECT_EQ("detiene", b.ficheros.ordenes.back());
    ASSERT_TRUE(b.Leido("a.wav"));
    EXPECT_EQ(1500u, b.Leido("a.wav")->muestras.size());
    EXPECT_TRUE(Graba("b.wav", 10));  // and the next one is a new matter
}

TEST_F(ECI, WithoutWaitingAFullDiskIsKeptForTheQuestionAndLogged) {
    SetDestinoECI(Ruta("a.wav").c_str());
    EXPECT_EQ(1, HablaECI(0));
    {
        const DiscoLleno lleno(1000);
        b.Graba(10000);
    }
    EXPECT_EQ(0, EstaHablandoECI());
    EXPECT_EQ("El fichero está lleno", b.Error());
    EXPECT_THAT(b.avisos, ElementsAre(u"El fichero está lleno"));
}

TEST_F(ECI, AFileWithoutAPartOfItsTextIsAFailure) {
    SetDestinoECI(Ruta("a.wav").c_str());
    EXPECT_EQ(1, HablaECI(0));
    b.ficheros.Salta();
    b.Graba(100);
    EXPECT_EQ(0, EstaHablandoECI());
    EXPECT_EQ("El motor de voz no ha podido decir una parte del texto", b.Error());
    EXPECT_TRUE(Graba("b.wav", 10));
    EXPECT_EQ("", b.Error());  // the next one is a new matter
}

TEST_F(ECI, WhatTheEngineCouldNotSayIsAFailureWithItsReason) {
    for (const bool aFichero : {false, true}) {
        if (aFichero) {
            ASSERT_EQ(1, SetDestinoECI(Ruta("a.wav").c_str()));
        }
        CanalGuionado &canal = aFichero ? b.ficheros : b.vivo;
        b.alEsperar = [&canal] { canal.Fin(canal.Numero(), u"El motor de voz está mudo 😀"); };
        EXPECT_EQ(0, HablaECI(1));
        EXPECT_EQ("El motor de voz está mudo 😀", b.Error());
        EXPECT_EQ(0, EstaHablandoECI());
        b.alEsperar = [this] { b.vivo.Fin(); };
        EXPECT_EQ(1, HablaECI(1)) << "the next one is a new matter";
        if (!aFichero) continue;
        ASSERT_TRUE(b.Leido("a.wav"));
        EXPECT_TRUE(b.Leido("a.wav")->muestras.empty());
    }
}

TEST_F(ECI, TheChannelsNoticesGoToTheLog) {
    EventoMotor aviso;
    aviso.tipo = EventoMotor::Tipo::Aviso;
    aviso.texto = u"El motor de voz ha terminado; se reinicia";
    b.vivo.Emite(aviso);
    EXPECT_THAT(b.avisos, ElementsAre(aviso.texto));
}

TEST_F(ECI, TheInstancesEndStopsAndCompletesTheFile) {
    SetDestinoECI(Ruta("a.wav").c_str());
    HablaECI(0);
    b.Escribe(321);
    BorraVozECI();
    EXPECT_FALSE(b.ficheros.TieneOyente());
    EXPECT_EQ(321u, b.Leido("a.wav")->muestras.size());
    EXPECT_EQ(0, HablaECI(0));
    CreaVozECI();
    CreaVozECI();  // there is one
    EXPECT_EQ(1, HablaECI(0));
}

TEST_F(ECI, GivenBackWhileItIsWaitedForTheWaitEnds) {
    b.alEsperar = [] { BorraVozECI(); };
    EXPECT_EQ(1, HablaECI(1));
    EXPECT_FALSE(b.vivo.TieneOyente());
}

TEST_F(ECI, ATextOfAMegabyteGoesToTheChannelInOneCall) {
    std::string texto;
    while (texto.size() < 1'000'000) texto += "palabra tras palabra, ";
    EXPECT_EQ(1, AddTextoECI(texto.c_str()));
    EXPECT_EQ(1, HablaECI(0));
    EXPECT_EQ(texto.size(), b.vivo.Texto().size());
    EXPECT_EQ(1u, b.vivo.locuciones.size());
}

TEST_F(ECI, ATextThatNoWorkerWouldTakeIsRefused) {
    const std::string texto(64 * 1024 * 1024, 'a');
    EXPECT_EQ(1, AddTextoECI(texto.c_str()));
    EXPECT_EQ(0, AddTextoECI(texto.c_str()));
    EXPECT_EQ("El texto es demasiado largo", b.Error());
    CallaECI();
}

}  // namespace
}  // namespace ondalis::prueba
