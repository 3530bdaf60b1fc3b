#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cerrno>

#include "fakes/DiscoLleno.h"
#include "settings/Renombrado.h"
#include "settings/cGeneral.h"

namespace ondalis {
namespace {

QByteArray Lee(const QString &ruta) {
    QFile fichero(ruta);
    return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray("<absent>");
}

void Escribe(const QString &ruta, const QByteArray &texto) {
    QFile fichero(ruta);
    ASSERT_TRUE(fichero.open(QIODevice::WriteOnly) && fichero.write(texto) == texto.size()) << qPrintable(ruta);
}

QStringList Nombres(const QString &carpeta) {
    return QDir(carpeta).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

dev_t Disco(const QString &ruta) {
    struct stat datos {};
    return stat(QFile::encodeName(ruta).constData(), &datos) == 0 ? datos.st_dev : 0;
}

class NombraTest : public testing::Test {
protected:
    void SetUp() override { Escribe(de, "sonido"); }
    int Nombra(const QString &a) { return cGeneral::Nombra(de, a).numero; }
    std::string Ruta(const char *nombre) const { return carpeta.filePath(nombre).toStdString(); }

    QTemporaryDir carpeta;
    QString de = carpeta.filePath("~temp.wav");
    QString a = carpeta.filePath("Lectura.wav");
};

// The same on two file systems: a folder in memory as the target.
class NombraLejosTest : public NombraTest {
protected:
    void SetUp() override {
        if (Disco("/dev/shm") == 0 || Disco("/dev/shm") == Disco(carpeta.path()))
            GTEST_SKIP() << "/dev/shm and the folder of tests are one file system here";
        NombraTest::SetUp();
        ASSERT_TRUE(lejos.isValid());
        a = lejos.filePath("Lectura.wav");
    }
    QTemporaryDir lejos{QStringLiteral("/dev/shm/ondalis-XXXXXX")};
};

TEST_F(NombraTest, TheFileHasTheNewNameOnly) {
    EXPECT_EQ(Nombra(a), 0);
    EXPECT_EQ(Lee(a), "sonido");
    EXPECT_EQ(Nombres(carpeta.path()), QStringList("Lectura.wav"));
}

TEST_F(NombraTest, AnExistingTargetIsFailure58AndBothStand) {
    Escribe(a, "viejo");
    EXPECT_EQ(Nombra(a), 58);
    EXPECT_EQ(Lee(a), "viejo");
    EXPECT_EQ(Lee(de), "sonido");
    EXPECT_EQ(Nombra(de), 58);
}

TEST_F(NombraTest, AFolderOrALinkThatLeadsNowhereIsAnExistingTarget) {
    ASSERT_TRUE(QDir().mkdir(a));
    EXPECT_EQ(Nombra(a), 58);
    const QString enlace = carpeta.filePath("enlace.wav");
    ASSERT_EQ(symlink("/no/existe", QFile::encodeName(enlace).constData()), 0);
    EXPECT_EQ(Nombra(enlace), 58);
    EXPECT_EQ(Lee(de), "sonido");
}

TEST_F(NombraTest, AnAbsentSourceIsFailure53) {
    EXPECT_EQ(cGeneral::Nombra(carpeta.filePath("nada"), a).numero, 53);
    EXPECT_EQ(cGeneral::Nombra("", a).numero, 53);
    EXPECT_EQ(cGeneral::Nombra(carpeta.path(), a).numero, 53);
}

TEST_F(NombraTest, AnAbsentFolderIsFailure76AndAnEmptyNameFailure75) {
    EXPECT_EQ(Nombra(carpeta.filePath("no/Lectura.wav")), 76);
    EXPECT_EQ(Nombra(de + "/Lectura.wav"), 76);
    EXPECT_EQ(Nombra(""), 75);
    EXPECT_EQ(Nombra(carpeta.filePath(QString(300, 'a'))), 75);
    EXPECT_EQ(Lee(de), "sonido");
}

TEST_F(NombraTest, AFolderThatCantBeWrittenIsAFailureAndTheSourceStands) {
    // Nobody, not even root, may make files there.
    const int numero = Nombra("/proc/Lectura.wav");
    EXPECT_TRUE(numero == 70 || numero == 75 || numero == 76) << numero;
    EXPECT_EQ(Lee(de), "sonido");
}

TEST_F(NombraTest, EachOfTheThreeWaysRenamesAndNoneTakesAPlace) {
    for (const auto manera : {RenombraPorBandera, RenombraPorEnlace, RenombraPorHueco}) {
        Escribe(de, "sonido");
        QFile::remove(a);
        EXPECT_EQ(manera(Ruta("~temp.wav"), Ruta("Lectura.wav")), 0);
        EXPECT_EQ(Lee(a), "sonido");
        EXPECT_FALSE(QFile::exists(de));
        Escribe(de, "otro");
        EXPECT_EQ(manera(Ruta("~temp.wav"), Ruta("Lectura.wav")), EEXIST);
        EXPECT_EQ(Lee(a), "sonido");
        EXPECT_EQ(Lee(de), "otro");
        EXPECT_EQ(manera(Ruta("nada"), Ruta("nuevo")), ENOENT);
        EXPECT_FALSE(QFile::exists(carpeta.filePath("nuevo")));
    }
}

TEST_F(NombraLejosTest, AcrossFileSystemsTheFileIsCopiedWholeAndTheSourceGoes) {
    const QByteArray grande(3'000'001, 'x');
    Escribe(de, grande);
    ASSERT_EQ(chmod(QFile::encodeName(de).constData(), 0640), 0);
    EXPECT_EQ(Nombra(a), 0);
    EXPECT_EQ(Lee(a), grande);
    EXPECT_EQ(Nombres(lejos.path()), QStringList("Lectura.wav"));
    EXPECT_FALSE(QFile::exists(de));
    struct stat datos {};
    ASSERT_EQ(stat(QFile::encodeName(a).constData(), &datos), 0);
    EXPECT_EQ(datos.st_mode & 0777, 0640u);
}

TEST_F(NombraLejosTest, AcrossFileSystemsAnExistingTargetIsFailure58AndBothStand) {
    Escribe(a, "viejo");
    EXPECT_EQ(Nombra(a), 58);
    EXPECT_EQ(Lee(a), "viejo");
    EXPECT_EQ(Lee(de), "sonido");
    EXPECT_EQ(Nombra(lejos.filePath("no/Lectura.wav")), 76);
}

TEST_F(NombraLejosTest, AFullDiskIsFailure61NothingPartialStandsAndTheSourceStays) {
    {
        const prueba::DiscoLleno lleno;
        EXPECT_EQ(Nombra(a), 61);
    }
    EXPECT_TRUE(Nombres(lejos.path()).isEmpty());
    EXPECT_EQ(Lee(de), "sonido");
}

TEST_F(NombraTest, ASmallFileSystemThatIsReallyFullIsFailure61) {
    const QString disco = carpeta.filePath("disco");
    ASSERT_TRUE(QDir().mkdir(disco));
    const QByteArray punto = QFile::encodeName(disco);
    if (mount("none", punto.constData(), "tmpfs", 0, "size=64k") != 0) GTEST_SKIP() << "no right to mount here";
    Escribe(de, QByteArray(200'000, 'x'));
    EXPECT_EQ(Nombra(disco + "/Lectura.wav"), 61);
    EXPECT_TRUE(Nombres(disco).isEmpty());
    EXPECT_EQ(QFileInfo(de).size(), 200'000);
    EXPECT_EQ(umount(punto.constData()), 0);
}

}  // namespace
}  // namespace ondalis
