#include "platform/sistema/cAbridorXdg.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>
#include <optional>

namespace ondalis {
namespace {

class cAbridorXdgPrueba : public testing::Test {
protected:
    QTemporaryDir carpeta;
    std::optional<bool> respuesta;
    int veces = 0;

    std::string Programa(const QByteArray &cuerpo) {
        QFile fichero(carpeta.filePath(QStringLiteral("abre")));
        EXPECT_TRUE(fichero.open(QIODevice::WriteOnly));
        fichero.write("#!/bin/sh\n" + cuerpo + '\n');
        fichero.close();
        fichero.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return fichero.fileName().toStdString();
    }
    QString Fichero() {
        QFile fichero(carpeta.filePath(QStringLiteral("un fichero.txt")));
        EXPECT_TRUE(fichero.open(QIODevice::WriteOnly));
        return fichero.fileName();
    }
    QByteArray Lee(const char *nombre) {
        QFile fichero(carpeta.filePath(QLatin1String(nombre)));
        return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
    }
    void Abre(cAbridorXdg &abridor, const QString &objeto) {
        abridor.Abre(objeto, [this](bool bien) {
            respuesta = bien;
            ++veces;
        });
        EXPECT_FALSE(respuesta.has_value());  // never inside the call
        QElapsedTimer reloj;
        reloj.start();
        while (!respuesta && reloj.elapsed() < 20000) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
};

TEST_F(cAbridorXdgPrueba, AFileThatIsNotThereFailsWithoutStartingAnything) {
    cAbridorXdg abridor(Programa("echo x > \"$(dirname \"$0\")/huella\""));
    Abre(abridor, carpeta.filePath(QStringLiteral("no-esta.txt")));
    EXPECT_EQ(respuesta, false);
    EXPECT_TRUE(Lee("huella").isEmpty());
}

TEST_F(cAbridorXdgPrueba, TheProgramGetsThePathInOnePieceAndItsSuccessIsTold) {
    cAbridorXdg abridor(Programa("printf %s \"$1\" > \"$(dirname \"$0\")/huella\""));
    Abre(abridor, Fichero());
    EXPECT_EQ(respuesta, true);
    EXPECT_EQ(Lee("huella"), Fichero().toUtf8());
}

TEST_F(cAbridorXdgPrueba, AnAddressNeedsNoFile) {
    cAbridorXdg abridor(Programa("exit 0"));
    Abre(abridor, QStringLiteral("https://sitio.example/"));
    EXPECT_EQ(respuesta, true);
}

TEST_F(cAbridorXdgPrueba, AFailureOfTheProgramIsTold) {
    cAbridorXdg abridor(Programa("exit 3"));
    Abre(abridor, Fichero());
    EXPECT_EQ(respuesta, false);
}

TEST_F(cAbridorXdgPrueba, AProgramThatIsNotInstalledIsAFailure) {
    cAbridorXdg abridor("/nonexistent/xdg-open");
    Abre(abridor, Fichero());
    EXPECT_EQ(respuesta, false);
}

TEST_F(cAbridorXdgPrueba, OneThatStaysInTheForegroundIsASuccessAndGoesOnWithoutUs) {
    const std::string programa = Programa("echo $$ > \"$(dirname \"$0\")/pid\"; exec sleep 60");
    {
        cAbridorXdg abridor(programa, 300);
        Abre(abridor, Fichero());
        EXPECT_EQ(respuesta, true);
    }
    const int pid = Lee("pid").trimmed().toInt();
    ASSERT_GT(pid, 0);
    EXPECT_EQ(kill(pid, 0), 0);
    EXPECT_EQ(getsid(pid), pid);  // a session of its own
    kill(pid, SIGKILL);
}

TEST_F(cAbridorXdgPrueba, ItGetsNoneOfOurDescriptors) {
    int tubo[2];
    ASSERT_EQ(pipe(tubo), 0);  // inherited by whoever doesn't close it
    cAbridorXdg abridor(Programa("ls -l /proc/$$/fd > \"$(dirname \"$0\")/huella\""));
    Abre(abridor, Fichero());
    EXPECT_EQ(respuesta, true);
    const QByteArray visto = Lee("huella");
    EXPECT_TRUE(visto.contains("/dev/null"));
    EXPECT_FALSE(visto.contains("pipe:")) << visto.toStdString();
    close(tubo[0]);
    close(tubo[1]);
}

}  // namespace
}  // namespace ondalis
