#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "PruebaGrabadora.h"

namespace ondalis {
namespace {

using Lista = std::vector<std::string>;

class cGrabadoraTest : public prueba::PruebaGrabadora {};

TEST_F(cGrabadoraTest, AReadingIsSpokenIntoTheTemporaryAndRenamed) {
    Graba("hola");
    EXPECT_EQ(eci.ordenes, Lista{"habla hola espera <~temp.wav> avanzados"});
    EXPECT_EQ(Lee("Lectura.wav"), "hola");
    EXPECT_TRUE(EnActual().isEmpty());
    EXPECT_TRUE(p.LineasLog().isEmpty());
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(cGrabadoraTest, ATextFileIsSpokenByTheEngineItselfAndAlwaysWaitedFor) {
    opc.SetGrabaSincrono(false);
    Pon("libro.txt", "capítulo");
    grabadora->GrabaEnFichero("otro", Musica("libro.txt"));
    EXPECT_EQ(eci.ordenes, Lista{"fichero " + Musica("libro.txt").toStdString() + " espera <~temp.wav> avanzados"});
    EXPECT_EQ(Lee("Lectura.wav"), "capítulo");
    EXPECT_FALSE(timer.Enabled());
}

TEST_F(cGrabadoraTest, OverwritingReplacesTheTarget) {
    Pon("Lectura.wav", "viejo");
    Graba("uno");
    Graba("dos");
    EXPECT_EQ(Lee("Lectura.wav"), "dos");
}

TEST_F(cGrabadoraTest, ATargetThatCantBeDeletedIsToldAndNothingIsRecorded) {
    // Nobody, not even root, may unlink there.
    opc.SetNombreFichero("/proc/self/status");
    Graba("hola");
    EXPECT_EQ(Cajas(), QStringList("Imposible sobrescribir el fichero /proc/self/status"));
    EXPECT_TRUE(eci.ordenes.empty());
    EXPECT_TRUE(EnActual().isEmpty());
}

TEST_F(cGrabadoraTest, ATemporaryThatCantBeDeletedIsToldAndNothingIsRecorded) {
    Numera();
    opc.SetNombreFichero(Musica("no/Lectura.wav"));
    Graba("uno");  // stays in the temporary
    ASSERT_EQ(grabadora->NroFichero(), 2);
    // What something is mounted on can't be unlinked, not even by root.
    if (mount("~temp.wav", "~temp.wav", nullptr, MS_BIND, nullptr) != 0) GTEST_SKIP() << "no right to mount here";
    Graba("dos");
    EXPECT_EQ(Cajas(), QStringList("Imposible sobrescribir el fichero temporal"));
    EXPECT_EQ(grabadora->NroFichero(), 2);
    EXPECT_EQ(eci.ordenes.size(), 1u);
    EXPECT_EQ(prueba::LeeFichero("~temp.wav"), "uno");
    EXPECT_EQ(umount("~temp.wav"), 0);
}

TEST_F(cGrabadoraTest, NumberedATargetThatCantBeDeletedLeavesTheNumber) {
    Numera();
    opc.SetNombreFichero("/proc/self/status");
    Graba("hola");
    EXPECT_EQ(Cajas(), QStringList("Imposible sobrescribir el fichero /proc/self/status"));
    EXPECT_EQ(grabadora->NroFichero(), 2);  // the file itself counts
    EXPECT_TRUE(eci.ordenes.empty());
}

TEST_F(cGrabadoraTest, AnEngineFailureIsShownAndLoggedAndTheFinishStillRuns) {
    eci.error = "Error al realizar la lectura";
    eci.dejaAlgo = true;
    Graba("medio");
    EXPECT_EQ(Cajas(), QStringList("cVozECI: Error al realizar la lectura"));
    EXPECT_EQ(LineasCon("cFormPrincipal.GrabaEnFichero:  [cVozECI: Error al realizar la lectura]"), 1);
    EXPECT_EQ(Lee("Lectura.wav"), "medio");
}

TEST_F(cGrabadoraTest, AnEngineFailureBeforeAnySoundLeavesNoFileAnywhere) {
    eci.error = "Error al establecer el fichero de grabación ~temp.wav";
    Graba("hola");
    EXPECT_EQ(Cajas().size(), 1);
    EXPECT_EQ(LineasCon("No se encontró el archivo (53)"), 1);
    EXPECT_TRUE(EnMusica().isEmpty());
    EXPECT_TRUE(EnActual().isEmpty());
}

TEST_F(cGrabadoraTest, ATargetFolderThatIsAbsentKeepsTheTemporaryAndIsLogged) {
    opc.SetNombreFichero(Musica("no/Lectura.wav"));
    Graba("hola");
    EXPECT_TRUE(mensajes.cajas.empty());
    EXPECT_EQ(LineasCon("cFormPrincipal.GrabaEnFichero: No se encontró la ruta (76)"), 1);
    EXPECT_EQ(prueba::LeeFichero("~temp.wav"), "hola");
    // It is ours: the next recording takes its place.
    opc.SetNombreFichero(Musica("Lectura.wav"));
    Graba("otra");
    EXPECT_EQ(Lee("Lectura.wav"), "otra");
    EXPECT_TRUE(EnActual().isEmpty());
}

TEST_F(cGrabadoraTest, ATargetThatIsAFolderIsLoggedAndKeepsTheTemporary) {
    QDir().mkpath(Musica("Lectura.wav"));
    Graba("hola");
    EXPECT_EQ(LineasCon("El archivo ya existe (58)"), 1);
    EXPECT_EQ(prueba::LeeFichero("~temp.wav"), "hola");
    EXPECT_TRUE(QFileInfo(Musica("Lectura.wav")).isDir());
}

// Numbering.

TEST_F(cGrabadoraTest, EachReadingGetsAFileOfItsOwnFromTheFirstFreeCountOn) {
    Numera();
    Graba("uno");
    Graba("dos");
    EXPECT_EQ(EnMusica(), (QStringList{"lectura1.wav", "lectura2.wav"}));
    EXPECT_EQ(Lee("lectura2.wav"), "dos");
    EXPECT_EQ(grabadora->NroFichero(), 3);
}

TEST_F(cGrabadoraTest, TheUnnumberedNameAndStrangeMatchesCountButFoldersDoNot) {
    for (const char *nombre : {"Lectura.wav", "LECTURA7.WAV", "lectura de ayer.wav"}) Pon(nombre, "x");
    for (const char *nombre : {"mi lectura.wav", "lectura1.mp3", "lectur.wav"}) Pon(nombre, "x");
    QDir().mkpath(Musica("lectura9.wav"));
    EXPECT_EQ(grabadora->GetSiguienteNumeroFichAudio(Musica("Lectura.wav")), 4);
    EXPECT_EQ(grabadora->GetSiguienteNumeroFichAudio(p.Ruta("no/Lectura.wav")), 1);
}

TEST_F(cGrabadoraTest, AGapInTheNumbersChangesTheCountAndTheFileWithThatNumberIsReplaced) {
    Numera();
    Pon("lectura1.wav", "x");
    Pon("lectura3.wav", "viejo");
    Graba("nuevo");
    EXPECT_EQ(Lee("lectura3.wav"), "nuevo");
}

TEST_F(cGrabadoraTest, AnUpperCaseExtensionIsLoweredAndGetsTheNumber) {
    Numera();
    opc.SetNombreFichero(Musica("Mi LIBRO.WAV"));
    Graba("hola");
    EXPECT_EQ(EnMusica(), QStringList("mi libro1.wav"));
}

TEST_F(cGrabadoraTest, FoldersKeepTheirCaseAndGetNoNumber) {
    Numera();
    QDir().mkpath(Musica("Discos.wav"));
    opc.SetNombreFichero(Musica("Discos.wav/A.wav"));
    Graba("hola");
    EXPECT_EQ(Lee("Discos.wav/a1.wav"), "hola");
}

TEST_F(cGrabadoraTest, ANameWithoutTheExtensionGetsNoNumberAndEachReadingTakesItsPlace) {
    Numera();
    opc.SetNombreFichero(Musica("Lectura"));
    Graba("uno");
    Graba("dos");
    EXPECT_EQ(EnMusica(), QStringList("lectura"));
    EXPECT_EQ(Lee("lectura"), "dos");
    EXPECT_EQ(grabadora->NroFichero(), 3);
}

TEST_F(cGrabadoraTest, AnExtensionTwiceInTheNameGetsTheNumberAtBothPlaces) {
    Numera();
    opc.SetNombreFichero(Musica("a.wav.b.wav"));
    Pon("a5.wav.b5.wav", "x");
    Graba("hola");
    EXPECT_EQ(EnMusica(), (QStringList{"a2.wav.b2.wav", "a5.wav.b5.wav"}));
}

TEST_F(cGrabadoraTest, SignsThatOtherSystemsTakeForPatternsAreLettersOfAName) {
    Pon("x1.wav", "x");
    Pon("[a]1.wav", "x");
    EXPECT_EQ(grabadora->GetSiguienteNumeroFichAudio(Musica("?.wav")), 1);
    EXPECT_EQ(grabadora->GetSiguienteNumeroFichAudio(Musica("*.wav")), 1);
    EXPECT_EQ(grabadora->GetSiguienteNumeroFichAudio(Musica("[a].wav")), 2);
}

TEST_F(cGrabadoraTest, Mp3IsCountedAndNumberedByItsOwnExtension) {
    Numera();
    opc.SetGrabaEnWAV(false);
    opc.SetNombreFichero(Musica("Lectura.mp3"));
    Pon("lectura1.wav", "x");
    Pon("Lectura.mp3", "x");
    Graba("hola");
    EXPECT_EQ(Lee("lectura2.mp3"), "mp3:hola");
}

TEST_F(cGrabadoraTest, TheNumberIsCountedOnceAndAgainOnAcceptanceOnly) {
    Numera();
    Graba("uno");
    Pon("lectura7.wav", "x");
    Graba("dos");
    EXPECT_EQ(Lee("lectura2.wav"), "dos");
    grabadora->EstableceNroFichero();
    EXPECT_EQ(grabadora->NroFichero(), 4);
    Sobrescribe();
    Pon("lectura8.wav", "x");
    grabadora->EstableceNroFichero();
    EXPECT_EQ(grabadora->NroFichero(), 4);
}

TEST_F(cGrabadoraTest, ACountDuringARecordingCountsTheFileThatItWillMake) {
    Numera();
    opc.SetGrabaSincrono(false);
    Graba("uno");
    grabadora->EstableceNroFichero();
    EXPECT_EQ(grabadora->NroFichero(), 2);
    Graba("dos");
    eci.hablando = false;
    timer.Vence();
    EXPECT_EQ(Lee("lectura1.wav"), "uno");
    EXPECT_EQ(Lee("lectura2.wav"), "dos");
    grabadora->EstableceNroFichero();
    EXPECT_EQ(grabadora->NroFichero(), 3);
}

// Appending.

TEST_F(cGrabadoraTest, AppendingToAWavKeepsTheTargetsSoundAndTheTemporaryWithALogLine) {
    Anade();
    Graba("uno ");
    EXPECT_EQ(Lee("Lectura.wav"), "uno ");
    EXPECT_TRUE(EnActual().isEmpty());
    Graba("dos ");
    EXPECT_EQ(Lee("Lectura.wav"), "uno ");
    EXPECT_EQ(LineasCon("cFormPrincipal.GrabaEnFichero: El archivo ya existe (58)"), 1);
    EXPECT_TRUE(mensajes.cajas.empty());
    Graba("tres");
    EXPECT_EQ(prueba::LeeFichero("~temp.wav"), "dos tres");
}

TEST_F(cGrabadoraTest, AppendingToAnMp3EncodesTheWholeGrowingTemporaryAgain) {
    Anade();
    opc.SetGrabaEnWAV(false);
    opc.SetNombreFichero(Musica("Lectura.mp3"));
    Graba("uno ");
    Graba("dos");
    EXPECT_EQ(Lee("Lectura.mp3"), "mp3:uno dos");
    EXPECT_EQ(prueba::LeeFichero("~temp.wav"), "uno dos");
}

TEST_F(cGrabadoraTest, AppendingGoesOnWithWhatAnEarlierRunLeft) {
    prueba::EscribeDetras("~temp.wav", "antes ");
    Anade();
    Graba("ahora");
    EXPECT_EQ(Lee("Lectura.wav"), "antes ahora");
}

TEST_F(cGrabadoraTest, ARecordingFromTheEditorNeverNumbersAndNeverAppends) {
    const OpcionesGrabacion opciones{.NombreFichero = Musica("Editor.WAV"), .CalidadkHz = 8000, .GrabaEnWAV = true};
    opc.SetGrabaSincrono(false);
    Anade();
    Pon("Lectura.wav", "viejo");
    Graba("uno ");
    timer.Vence();  // it is still speaking
    eci.hablando = false;
    timer.Vence();
    EXPECT_TRUE(QFile::exists("~temp.wav"));
    grabadora->GrabaEnFichero("dos", QString(), &opciones);
    EXPECT_EQ(Lee("Editor.WAV"), "dos");
    Numera();
    grabadora->GrabaEnFichero("tres", QString(), &opciones);
    EXPECT_EQ(Lee("Editor.WAV"), "tres");
    EXPECT_EQ(eci.ordenes.back(), "habla tres espera <~temp.wav> avanzados");
    EXPECT_EQ(grabadora->NroFichero(), 0);
}

TEST_F(cGrabadoraTest, TheEditorIsToldOfAnyFailure) {
    const OpcionesGrabacion opciones{.NombreFichero = Musica("no/x.wav")};
    grabadora->GrabaEnFichero("uno", QString(), &opciones);
    EXPECT_EQ(Cajas(), QStringList("cFormPrincipal.GrabaEnFichero: No se encontró la ruta [76]"));
    EXPECT_EQ(LineasCon("(76)"), 1);
}

TEST_F(cGrabadoraTest, ATargetOnAnotherFileSystemGetsTheWholeSound) {
    struct stat lejos {
    }, aqui{};
    if (stat("/dev/shm", &lejos) != 0 || stat(".", &aqui) != 0 || lejos.st_dev == aqui.st_dev)
        GTEST_SKIP() << "/dev/shm and the folder of tests are one file system here";
    const QTemporaryDir memoria(QStringLiteral("/dev/shm/ondalis-XXXXXX"));
    opc.SetNombreFichero(memoria.filePath("Lectura.wav"));
    Graba("hola");
    EXPECT_EQ(prueba::LeeFichero(memoria.filePath("Lectura.wav")), "hola");
    EXPECT_EQ(Nombres(memoria.path()), QStringList("Lectura.wav"));
    EXPECT_TRUE(EnActual().isEmpty());
}

TEST_F(cGrabadoraTest, TheEnginesBufferBehindItsErrorIsNotShown) {
    eci.error = QString("Error al realizar la lectura\r\nDisco lleno") + QString(200, QChar(u'\0'));
    Graba("hola");
    EXPECT_EQ(Cajas(), QStringList("cVozECI: Error al realizar la lectura\r\nDisco lleno"));
    EXPECT_EQ(LineasCon("Disco lleno]"), 1);
}

TEST_F(cGrabadoraTest, ACurrentFolderThatCantBeWrittenSendsTheTemporaryToAPrivateOne) {
    ASSERT_TRUE(QDir::setCurrent("/proc/self"));  // nobody, not even root, may make files there
    Graba("hola");
    EXPECT_EQ(Lee("Lectura.wav"), "hola");
    EXPECT_TRUE(mensajes.cajas.empty());
    EXPECT_EQ(LineasCon("cTemporalAudio.Prepara: "), 1);
}

// MP3.

TEST_F(cGrabadoraTest, Mp3OfTheIbmFamilyIsAlwaysResampledFrom11025) {
    opc.SetGrabaEnWAV(false);
    opc.SetNombreFichero(Musica("Lectura.mp3"));
    opc.SetCalidadkbps(32);
    opc.SetCalidadkHz(11025);
    Graba("hola");
    opc.SetCalidadkHz(44100);
    Graba("hola");
    EXPECT_EQ(conversor.llamadas, (Lista{"11025 32 11025", "11025 32 44100"}));
    EXPECT_EQ(Lee("Lectura.mp3"), "mp3:hola");
    EXPECT_TRUE(EnActual().isEmpty());
}

TEST_F(cGrabadoraTest, Mp3OfSAPI5IsNotResampled) {
    UsaSAPI5();
    opc.SetGrabaEnWAV(false);
    opc.SetNombreFichero(Musica("Lectura.mp3"));
    opc.SetCalidadkHz(22050);
    Graba("hola");
    EXPECT_EQ(conversor.llamadas, Lista{"22050 24 -1"});
    EXPECT_TRUE(EnActual().isEmpty());
}

TEST_F(cGrabadoraTest, AFailedConversionKeepsTheOnlyCopyOfTheSound) {
    opc.SetGrabaEnWAV(false);
    opc.SetNombreFichero(Musica("Lectura.mp3"));
    conversor.bien = false;
    Graba("hola");
    EXPECT_EQ(prueba::LeeFichero("~temp.wav"), "hola");
}

TEST_F(cGrabadoraTest, WithoutAnEncoderMp3IsRefusedBeforeAnythingIsDeleted) {
    colaboradores.conversor = nullptr;
    grabadora = std::make_unique<cGrabadora>(colaboradores);
    opc.SetGrabaEnWAV(false);
    opc.SetNombreFichero(Musica("Lectura.mp3"));
    Pon("Lectura.mp3", "viejo");
    Graba("hola");
    EXPECT_EQ(Cajas(), QStringList("La grabación en MP3 no está disponible en esta versión."));
    EXPECT_EQ(LineasCon("La grabación en MP3 no está disponible"), 1);
    EXPECT_EQ(Lee("Lectura.mp3"), "viejo");
    EXPECT_TRUE(EnActual().isEmpty());
}

}  // namespace
}  // namespace ondalis
