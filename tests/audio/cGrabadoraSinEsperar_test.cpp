#include <sys/stat.h>

#include "PruebaGrabadora.h"

namespace ondalis {
namespace {

using Lista = std::vector<std::string>;

class cGrabadoraSinEsperarTest : public prueba::PruebaGrabadora {};

TEST_F(cGrabadoraSinEsperarTest, WithoutWaitingTheFileGetsItsNameWhenTheEngineHasFallenSilent) {
    opc.SetGrabaSincrono(false);
    Graba("hola");
    EXPECT_EQ(eci.ordenes, Lista{"habla hola <~temp.wav> avanzados"});
    EXPECT_TRUE(timer.Enabled());
    EXPECT_EQ(timer.intervalo, 100);
    timer.Vence();
    EXPECT_TRUE(EnMusica().isEmpty());
    eci.hablando = false;
    timer.Vence();
    EXPECT_EQ(Lee("Lectura.wav"), "hola");
    EXPECT_FALSE(timer.Enabled());
    EXPECT_EQ(eci.ordenes.size(), 1u);
}

TEST_F(cGrabadoraSinEsperarTest, WithoutWaitingAFailureIsToldAtOnceAndFinished) {
    opc.SetGrabaSincrono(false);
    eci.error = "Error al realizar la lectura";
    Graba("hola");
    EXPECT_EQ(Cajas().size(), 1);
    EXPECT_FALSE(timer.Enabled());
}

TEST_F(cGrabadoraSinEsperarTest, AFailureSeenAtTheEndIsToldOnceAndFinished) {
    opc.SetGrabaSincrono(false);
    Graba("hola");
    eci.hablando = false;
    eci.fallaAlFinal = true;
    eci.error = QString("Error al realizar la lectura\r\nDisco lleno") + QString(200, QChar(u'\0'));
    timer.Vence();
    EXPECT_EQ(Cajas(), QStringList("cVozECI: Error al realizar la lectura\r\nDisco lleno"));
    EXPECT_EQ(LineasCon("Disco lleno]"), 1);
    EXPECT_EQ(Lee("Lectura.wav"), "hola");
    EXPECT_FALSE(timer.Enabled());
}

TEST_F(cGrabadoraSinEsperarTest, AFailureSeenAtTheProgramsEndIsLoggedWithoutABox) {
    opc.SetGrabaSincrono(false);
    Graba("hola");
    eci.fallaAlFinal = true;
    eci.error = "Error al realizar la lectura";
    grabadora.reset();
    EXPECT_TRUE(mensajes.cajas.empty());
    EXPECT_EQ(LineasCon("Error al realizar la lectura"), 1);
}

TEST_F(cGrabadoraSinEsperarTest, ANewRecordingCutsTheOneBeforeAndFinishesItFirst) {
    opc.SetGrabaSincrono(false);
    Numera();
    Graba("uno");
    Graba("dos");
    EXPECT_EQ(eci.ordenes, (Lista{"habla uno <~temp.wav> avanzados", "cancela", "habla dos <~temp.wav> avanzados"}));
    EXPECT_EQ(Lee("lectura1.wav"), "uno");
    EXPECT_FALSE(QFile::exists(Musica("lectura2.wav")));
    eci.hablando = false;
    timer.Vence();
    EXPECT_EQ(Lee("lectura2.wav"), "dos");
}

TEST_F(cGrabadoraSinEsperarTest, OptionsThatChangeMeanwhileDoNotTouchWhatIsUnderWay) {
    opc.SetGrabaSincrono(false);
    Graba("uno");
    opc.SetNombreFichero(Musica("Otro.wav"));
    Numera();
    opc.SetGrabaEnWAV(false);
    eci.hablando = false;
    timer.Vence();
    EXPECT_EQ(EnMusica(), QStringList("Lectura.wav"));
}

TEST_F(cGrabadoraSinEsperarTest, ASilenceThatAnotherOrderedFinishesTheRecordingWithWhatThereIs) {
    opc.SetGrabaSincrono(false);
    Graba("uno");
    opc.SetGrabarTexto(false);
    eci.Cancela();  // by the next live reading, which doesn't record
    timer.Vence();
    EXPECT_EQ(Lee("Lectura.wav"), "uno");
    EXPECT_TRUE(EnActual().isEmpty());
}

TEST_F(cGrabadoraSinEsperarTest, TheProgramsEndFinishesTheRecordingCutShortAndWithoutABox) {
    opc.SetGrabaSincrono(false);
    Graba("uno");
    grabadora.reset();
    EXPECT_EQ(eci.ordenes.back(), "cancela");
    EXPECT_EQ(Lee("Lectura.wav"), "uno");
    EXPECT_FALSE(timer.Enabled());
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(cGrabadoraSinEsperarTest, ACancelDuringAWaitedRecordingSilencesTheEngineAndTheFileIsFinished) {
    eci.alHablar = [this] { grabadora->Cancela(); };
    Graba("uno");
    EXPECT_EQ(eci.ordenes.front(), "cancela");
    EXPECT_EQ(Lee("Lectura.wav"), "uno");
    eci.alHablar = {};
    grabadora->Cancela();
    grabadora->TerminaPendiente();
    EXPECT_EQ(eci.ordenes.size(), 2u);
}

TEST_F(cGrabadoraSinEsperarTest, ARecordingAskedForWhileAMessageIsOpenComesBehindAndNothingIsMixed) {
    Numera();
    eci.error = "Error al realizar la lectura";
    eci.dejaAlgo = true;
    mensajes.alMostrar = [this] {
        mensajes.alMostrar = {};
        eci.error.clear();
        Graba("dos");
        EXPECT_EQ(eci.ordenes.size(), 1u);
    };
    Graba("uno");
    EXPECT_EQ(Lee("lectura1.wav"), "uno");
    EXPECT_EQ(Lee("lectura2.wav"), "dos");
}

TEST_F(cGrabadoraSinEsperarTest, WithoutWaitingTheCopyToAnotherFileSystemGoesOnBesideTheReader) {
    struct stat lejos {
    }, aqui{};
    if (stat("/dev/shm", &lejos) != 0 || stat(".", &aqui) != 0 || lejos.st_dev == aqui.st_dev)
        GTEST_SKIP() << "/dev/shm and the folder of tests are one file system here";
    const QTemporaryDir memoria(QStringLiteral("/dev/shm/ondalis-XXXXXX"));
    opc.SetGrabaSincrono(false);
    Numera();
    opc.SetNombreFichero(memoria.filePath("a.wav"));
    Graba("uno");
    eci.hablando = false;
    timer.Vence();
    EXPECT_TRUE(timer.Enabled());
    while (timer.Enabled()) timer.Vence();
    EXPECT_EQ(prueba::LeeFichero(memoria.filePath("a1.wav")), "uno");
    Graba("dos");
    eci.hablando = false;
    timer.Vence();
    Graba("tres");  // comes behind the copy
    EXPECT_EQ(prueba::LeeFichero(memoria.filePath("a2.wav")), "dos");
    opc.SetNombreFichero(memoria.filePath("no/a.wav"));
    grabadora.reset();
    EXPECT_EQ(prueba::LeeFichero(memoria.filePath("a3.wav")), "tres");
    EXPECT_EQ(Nombres(memoria.path()), (QStringList{"a1.wav", "a2.wav", "a3.wav"}));
    EXPECT_TRUE(EnActual().isEmpty());
}

}  // namespace
}  // namespace ondalis
