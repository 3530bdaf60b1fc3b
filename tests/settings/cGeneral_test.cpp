#include "settings/cGeneral.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <new>
#include <stdexcept>

#include "fakes/MensajesGuion.h"
#include "fakes/PrioridadFalsa.h"
#include "fakes/RegistroPropio.h"

namespace ondalis {
namespace {

class cGeneralTest : public testing::Test {
protected:
    prueba::RegistroPropio p;
    prueba::MensajesGuion mensajes;
    prueba::PrioridadFalsa prioridad;
    cGeneral general{p.Log(), mensajes, prioridad};
};

TEST_F(cGeneralTest, AParameterIsFoundAnywhereBlindToCase) {
    EXPECT_TRUE(cGeneral::GetParam("hola -HELP", "help"));
    EXPECT_TRUE(cGeneral::GetParam("-clear -nosapi5", "NOSAPI5"));
    EXPECT_TRUE(cGeneral::GetParam("-helpme", "help"));
    EXPECT_FALSE(cGeneral::GetParam("help", "help"));
    EXPECT_FALSE(cGeneral::GetParam("", "help"));
}

TEST_F(cGeneralTest, AParametersValueIsTrimmedAndKeepsItsCase) {
    QString valor;
    EXPECT_TRUE(cGeneral::GetParam("-FILETXT  Mi Libro.TXT  -outputfile x.wav", "filetxt", &valor));
    EXPECT_EQ(valor, "Mi Libro.TXT");
    EXPECT_TRUE(cGeneral::GetParam("-FILETXT  Mi Libro.TXT  -outputfile x.wav", "outputfile", &valor));
    EXPECT_EQ(valor, "x.wav");
    EXPECT_TRUE(cGeneral::GetParam("-filetxt", "filetxt", &valor));
    EXPECT_EQ(valor, "");
}

TEST_F(cGeneralTest, TheNextHyphenEndsAParametersValueAlsoInsideAWord) {
    QString valor;
    EXPECT_TRUE(cGeneral::GetParam("-filetxt mi-libro.txt", "filetxt", &valor));
    EXPECT_EQ(valor, "mi");
}

TEST_F(cGeneralTest, LettersWhoseCaseChangesTheirLengthDoNotShiftAValue) {
    QString valor;
    EXPECT_TRUE(cGeneral::GetParam(QStringLiteral("ßßßß İİ -filetxt straße.txt"), "filetxt", &valor));
    EXPECT_EQ(valor, QStringLiteral("straße.txt"));
}

TEST_F(cGeneralTest, AnAbsentParameterLeavesTheValueAlone) {
    QString valor = "antes";
    EXPECT_FALSE(cGeneral::GetParam("-clear", "filetxt", &valor));
    EXPECT_EQ(valor, "antes");
}

TEST_F(cGeneralTest, AFieldIsCountedFrom1AndEmptyBeyondTheLast) {
    EXPECT_EQ(cGeneral::GetCampo("a;b;c", 1, ";"), "a");
    EXPECT_EQ(cGeneral::GetCampo("a;b;c", 3, ";"), "c");
    EXPECT_EQ(cGeneral::GetCampo("a;b;c", 4, ";"), "");
    EXPECT_EQ(cGeneral::GetCampo("a;b;c", 0, ";"), "");
    EXPECT_EQ(cGeneral::GetCampo("a;b;c", -1, ";"), "");
    EXPECT_EQ(cGeneral::GetCampo("", 1, ";"), "");
    EXPECT_EQ(cGeneral::GetCampo("a", 1, ""), "");
    EXPECT_EQ(cGeneral::GetCampo("a::b::c", 2, "::"), "b");
    EXPECT_EQ(cGeneral::GetCampo("a;;c", 2, ";"), "");
    EXPECT_EQ(cGeneral::GetCampo("aaaa", 2, "aa"), "");
}

TEST_F(cGeneralTest, SeparatorsAreCountedEachBehindTheOneBefore) {
    EXPECT_EQ(cGeneral::NroSeparadores("a;b;c", ";"), 2);
    EXPECT_EQ(cGeneral::NroSeparadores("aaaa", "aa"), 2);
    EXPECT_EQ(cGeneral::NroSeparadores("", ";"), 0);
    EXPECT_EQ(cGeneral::NroSeparadores("a", ""), 0);
}

TEST_F(cGeneralTest, AFolderAFifoAndADanglingLinkAreNoFiles) {
    const QString carpeta = p.Ruta("carpeta"), fifo = p.Ruta("fifo"), enlace = p.Ruta("enlace");
    ASSERT_TRUE(QDir().mkpath(carpeta));
    ASSERT_EQ(mkfifo(fifo.toUtf8().constData(), 0600), 0);
    ASSERT_EQ(symlink("/no/existe", enlace.toUtf8().constData()), 0);
    EXPECT_FALSE(cGeneral::ExisteFichero(carpeta));
    EXPECT_FALSE(cGeneral::ExisteFichero(fifo));
    EXPECT_FALSE(cGeneral::ExisteFichero(enlace));
    EXPECT_FALSE(cGeneral::ExisteFichero(p.Ruta("nada")));
    EXPECT_FALSE(cGeneral::ExisteFichero(""));
}

TEST_F(cGeneralTest, ARegularFileExistsAlsoThroughALink) {
    const QString fichero = p.Ruta("fichero"), enlace = p.Ruta("enlace");
    prueba::RegistroPropio::Escribe(fichero, "");
    ASSERT_EQ(symlink(fichero.toUtf8().constData(), enlace.toUtf8().constData()), 0);
    EXPECT_TRUE(cGeneral::ExisteFichero(fichero));
    EXPECT_TRUE(cGeneral::ExisteFichero(enlace));
}

TEST_F(cGeneralTest, ThePathEndsWithItsLastSlash) {
    EXPECT_EQ(cGeneral::GetRutaFich("/a/b/c.wav"), "/a/b/");
    EXPECT_EQ(cGeneral::GetRutaFich("/c"), "/");
    EXPECT_EQ(cGeneral::GetRutaFich("~temp.wav"), "");
    EXPECT_EQ(cGeneral::GetRutaFich(""), "");
}

TEST_F(cGeneralTest, DeletingIsTrueWhenTheFileIsGoneOrWasNotThere) {
    const QString fichero = p.Ruta("fichero");
    prueba::RegistroPropio::Escribe(fichero, "x");
    EXPECT_TRUE(cGeneral::BorraFichero(fichero));
    EXPECT_FALSE(QFile::exists(fichero));
    EXPECT_TRUE(cGeneral::BorraFichero(fichero));
    EXPECT_TRUE(cGeneral::BorraFichero(fichero + "/dentro"));
}

TEST_F(cGeneralTest, DeletingAFileThatMustNotGoIsFalse) {
    // Nobody, not even root, may unlink here.
    ASSERT_TRUE(cGeneral::ExisteFichero("/proc/self/status"));
    EXPECT_FALSE(cGeneral::BorraFichero("/proc/self/status"));
}

TEST_F(cGeneralTest, TheTemporaryFolderEndsWithASlash) {
    EXPECT_TRUE(cGeneral::DirectorioWindowsTemp().endsWith('/'));
    EXPECT_TRUE(QDir(cGeneral::DirectorioWindowsTemp()).exists());
}

TEST_F(cGeneralTest, TheVersionPadsARevisionOf0ToTwoZeros) {
    EXPECT_EQ(cGeneral::MiVersion("."), "1.0.00");
    EXPECT_EQ(cGeneral::MiVersion(""), "1000");
    EXPECT_EQ(cGeneral::MiVersion("%1"), "1%10%100");
}

TEST_F(cGeneralTest, AnErrorsTextIsItsDescriptionAndNumber) {
    EXPECT_EQ(cGeneral::VBError(Fallo::De(Fallo::FicheroNoEncontrado)), "No se encontró el archivo (53)");
    EXPECT_EQ(cGeneral::VBError({7, "100%1", 0}), "100%1 (7)");
}

TEST_F(cGeneralTest, AMessageIsTitledWithTheProgramUnlessToldOtherwise) {
    EXPECT_TRUE(general.VMsg("hola"));
    general.VMsg("hola", false, false, "Otro");
    ASSERT_EQ(mensajes.cajas.size(), 2u);
    EXPECT_EQ(mensajes.cajas[0].titulo, "Ondalis");
    EXPECT_FALSE(mensajes.cajas[0].pregunta);
    EXPECT_EQ(mensajes.cajas[1].titulo, "Otro");
}

TEST_F(cGeneralTest, AQuestionWithoutDefaultYesHasNoAsItsDefault) {
    EXPECT_FALSE(general.VMsg("¿Seguro?", true, false));
    EXPECT_TRUE(general.VMsg("¿Seguro?", true, true));
    ASSERT_EQ(mensajes.cajas.size(), 2u);
    EXPECT_FALSE(mensajes.cajas[0].defectoSi);
    EXPECT_TRUE(mensajes.cajas[0].pregunta);
    mensajes.respuestas = {true};
    EXPECT_TRUE(general.VMsg("¿Seguro?", true, false));
}

TEST_F(cGeneralTest, PriorityIsSetForProcessAndThread) {
    general.SetPrioridadAlta(true);
    EXPECT_EQ(prioridad.clase, std::optional<bool>(true));
    EXPECT_EQ(prioridad.hilo, std::optional<bool>(true));
    general.SetPrioridadAlta(false);
    EXPECT_EQ(prioridad.clase, std::optional<bool>(false));
    EXPECT_TRUE(p.LineasLog().isEmpty());
}

TEST_F(cGeneralTest, ARefusedPriorityIsLoggedAndTheThreadIsTriedAllTheSame) {
    prioridad.niegaClase = prioridad.niegaHilo = true;
    general.SetPrioridadAlta(true);
    ASSERT_EQ(p.LineasLog().size(), 2);
    EXPECT_TRUE(p.LineasLog()[0].contains("[SetPriorityClass: Imposible establecer la prioridad necesaria.]"));
    EXPECT_TRUE(p.LineasLog()[1].contains("[SetThreadPriority: Imposible establecer la prioridad necesaria.]"));
}

TEST_F(cGeneralTest, ABodyThatEndsWellIsNotLogged) {
    EXPECT_TRUE(general.Ejecuta("cFormPrincipal.Init: ", cGeneral::Aviso::Mensaje, [] {}));
    EXPECT_TRUE(p.LineasLog().isEmpty());
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(cGeneralTest, AFailureIsLoggedWithItsNumberAndLine) {
    int linea = 0;
    EXPECT_FALSE(general.Ejecuta("cFormPrincipal.Init: ", cGeneral::Aviso::SoloLog, [&] {
        const Fallo fallo = Fallo::De(Fallo::DiscoLleno);
        linea = fallo.linea;
        throw ErrorFallo{fallo};
    }));
    ASSERT_EQ(p.LineasLog().size(), 1);
    EXPECT_TRUE(p.LineasLog()[0].endsWith(QStringLiteral("cFormPrincipal.Init: Disco lleno (61) [%1]").arg(linea)))
        << p.LineasLog()[0].toStdString();
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(cGeneralTest, WhereTheUserWaitsTheFailureIsShownAsWell) {
    general.Ejecuta("cFormPrincipal.Aceptar_Click: ", cGeneral::Aviso::Mensaje,
                    [] { throw ErrorFallo{Fallo::De(Fallo::PermisoDenegado)}; });
    ASSERT_EQ(mensajes.cajas.size(), 1u);
    EXPECT_EQ(mensajes.cajas[0].texto, "cFormPrincipal.Aceptar_Click: Permiso denegado [70]");
    EXPECT_EQ(p.LineasLog().size(), 1);
    general.Ejecuta("a.B: ", cGeneral::Aviso::Mensaje, [] { throw ErrorFallo{{7, "100%1", 0}}; });
    EXPECT_EQ(mensajes.cajas[1].texto, "a.B: 100%1 [7]");
}

TEST_F(cGeneralTest, NoExceptionCrossesTheBorder) {
    EXPECT_FALSE(general.Ejecuta("a.B: ", cGeneral::Aviso::SoloLog, [] { throw std::runtime_error("roto"); }));
    EXPECT_FALSE(general.Ejecuta("a.B: ", cGeneral::Aviso::SoloLog, [] { throw std::bad_alloc(); }));
    EXPECT_FALSE(general.Ejecuta("a.B: ", cGeneral::Aviso::SoloLog, [] { throw 3; }));
    ASSERT_EQ(p.LineasLog().size(), 3);
    EXPECT_TRUE(p.LineasLog()[0].endsWith("a.B: roto (5) [0]"));
    EXPECT_TRUE(p.LineasLog()[1].endsWith("a.B: Memoria insuficiente (7) [0]"));
    EXPECT_TRUE(p.LineasLog()[2].contains(" (5) [0]"));
}

TEST_F(cGeneralTest, TextsAndNumbersDoNotFollowASpanishLocale) {
    const QLocale antes;
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    EXPECT_EQ(cGeneral::VBError({1234567, "x", 0}), "x (1234567)");
    EXPECT_EQ(cGeneral::MiVersion("."), "1.0.00");
    QLocale::setDefault(antes);
}

TEST_F(cGeneralTest, AnEventWithNeitherErrorNorTextWritesNoLogLine) {
    p.Log().Escribe("a.B: ", Fallo{}, "");
    EXPECT_FALSE(QFile::exists(p.Log().Fichero()));
    p.Log().Escribe("a.B: ", Fallo{}, "  extra ");
    ASSERT_EQ(p.LineasLog().size(), 1);
    EXPECT_TRUE(p.LineasLog()[0].endsWith(" a.B:  [extra]"));
}

TEST_F(cGeneralTest, AnEventIsOneLineOfTheLogWhateverItsText) {
    p.Log().Escribe("a.B: ", Fallo{5, "uno\ndos", 0}, "tres\r\ncuatro");
    ASSERT_EQ(p.LineasLog().size(), 1);
    EXPECT_TRUE(p.LineasLog()[0].endsWith("a.B: uno dos (5) [tres  cuatro]")) << p.LineasLog()[0].toStdString();
}

TEST_F(cGeneralTest, TheLogIsItsUsersAloneAndOneThatIsThereKeepsItsPermissions) {
    p.Log().Escribe("a.B: ", "x");
    const QByteArray ruta = QFile::encodeName(p.Log().Fichero());
    struct stat datos {};
    ASSERT_EQ(stat(ruta.constData(), &datos), 0);
    EXPECT_EQ(datos.st_mode & 0777, 0600u);
    ASSERT_EQ(chmod(ruta.constData(), 0640), 0);
    p.Log().Escribe("a.B: ", "y");
    ASSERT_EQ(stat(ruta.constData(), &datos), 0);
    EXPECT_EQ(datos.st_mode & 0777, 0640u);
    EXPECT_EQ(p.LineasLog().size(), 2);
}

TEST_F(cGeneralTest, AFifoOrAFolderInTheLogsPlaceHoldsNobodyAndIsLeftAlone) {
    p.Log().Escribe("a.B: ", "x");
    ASSERT_TRUE(QFile::remove(p.Log().Fichero()));
    ASSERT_EQ(mkfifo(QFile::encodeName(p.Log().Fichero()).constData(), 0600), 0);
    p.Log().Escribe("a.B: ", "y");
    ASSERT_TRUE(QFile::remove(p.Log().Fichero()));
    ASSERT_TRUE(QDir().mkpath(p.Log().Fichero()));
    p.Log().Escribe("a.B: ", "z");
    EXPECT_TRUE(QFileInfo(p.Log().Fichero()).isDir());
}

TEST_F(cGeneralTest, ALogThatCannotBeWrittenDisturbsNobody) {
    cLog log(p.Log().Fichero() + "/dentro/Ondalis.log");
    p.Log().Escribe("a.B: ", "x");
    log.Escribe("a.B: ", "y");
    EXPECT_EQ(p.LineasLog().size(), 1);
}

}  // namespace
}  // namespace ondalis
