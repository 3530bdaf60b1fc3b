#include "platform/sistema/cInstancia.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <atomic>
#include <csignal>
#include <thread>
#include <vector>

namespace ondalis {
namespace {

// Each object has the file open for itself, as another process has: what holds between two of them holds between two
// processes.
class cInstanciaTest : public testing::Test {
protected:
    QTemporaryDir carpeta;
    QString fichero = carpeta.filePath("ondalis.lock");
    cLog log{carpeta.filePath("Ondalis.log")};
};

TEST_F(cInstanciaTest, TheFirstResidentStaysAndTheSecondDoesNot) {
    cInstancia primera(fichero, log);
    EXPECT_FALSE(primera.HayOtra());
    ASSERT_TRUE(primera.EntraResidente());
    cInstancia segunda(fichero, log);
    EXPECT_TRUE(segunda.HayOtra());
    EXPECT_FALSE(segunda.EntraResidente());
    EXPECT_FALSE(primera.HayOtra());  // who was turned away doesn't count
}

TEST_F(cInstanciaTest, AResidentThatEndsMakesRoom) {
    {
        cInstancia primera(fichero, log);
        ASSERT_TRUE(primera.EntraResidente());
    }
    cInstancia segunda(fichero, log);
    EXPECT_TRUE(segunda.EntraResidente());
}

TEST_F(cInstanciaTest, ABatchCopyRunsBesideAResidentAndBesideOthers) {
    cInstancia residente(fichero, log);
    ASSERT_TRUE(residente.EntraResidente());
    cInstancia lote(fichero, log);
    cInstancia otro(fichero, log);
    EXPECT_TRUE(lote.EntraLote());
    EXPECT_TRUE(otro.EntraLote());
    EXPECT_TRUE(residente.HayOtra());
}

TEST_F(cInstanciaTest, ARunningBatchCopyKeepsAResidentFromStarting) {
    cInstancia lote(fichero, log);
    ASSERT_TRUE(lote.EntraLote());
    cInstancia residente(fichero, log);
    EXPECT_TRUE(residente.HayOtra());
    EXPECT_FALSE(residente.EntraResidente());
}

TEST_F(cInstanciaTest, ACopyKilledInTheMiddleLeavesNoLock) {
    int tubo[2];
    ASSERT_EQ(pipe(tubo), 0);
    const pid_t hijo = fork();
    if (hijo == 0) {
        cInstancia suya(fichero, log);
        const char dicho = suya.EntraResidente() ? 's' : 'n';
        (void)!write(tubo[1], &dicho, 1);
        pause();
        _exit(0);
    }
    char dicho = 0;
    ASSERT_EQ(read(tubo[0], &dicho, 1), 1);
    EXPECT_EQ(dicho, 's');
    cInstancia mia(fichero, log);
    EXPECT_FALSE(mia.EntraResidente());
    kill(hijo, SIGKILL);
    ASSERT_EQ(waitpid(hijo, nullptr, 0), hijo);
    EXPECT_TRUE(mia.EntraResidente());
    close(tubo[0]);
    close(tubo[1]);
}

TEST_F(cInstanciaTest, AProgramStartedMeanwhileDoesNotKeepTheLock) {
    QProcess otro;
    {
        cInstancia primera(fichero, log);
        ASSERT_TRUE(primera.EntraResidente());
        otro.start("cat", QStringList());  // lives until its input ends
        ASSERT_TRUE(otro.waitForStarted());
    }
    cInstancia segunda(fichero, log);
    EXPECT_TRUE(segunda.EntraResidente());
    otro.closeWriteChannel();
    otro.waitForFinished();
}

TEST_F(cInstanciaTest, OfManyStartedAtOnceExactlyOneStays) {
    constexpr int kCopias = 6;
    for (int vuelta = 0; vuelta < 300; ++vuelta) {
        std::vector<std::unique_ptr<cInstancia>> copias;
        for (int i = 0; i < kCopias; ++i) copias.push_back(std::make_unique<cInstancia>(fichero, log));
        std::atomic<int> quedan = 0;
        std::atomic<bool> ya = false;
        std::vector<std::thread> hilos;
        for (auto &copia : copias)
            hilos.emplace_back([&] {
                while (!ya) {
                }
                quedan += copia->EntraResidente();
            });
        ya = true;
        for (std::thread &hilo : hilos) hilo.join();
        ASSERT_EQ(quedan, 1) << "round " << vuelta;
    }
}

TEST_F(cInstanciaTest, ABatchCopyGetsInWhileResidentsComeAndGo) {
    std::atomic<bool> fin = false;
    std::atomic<int> entradas = 0;
    std::thread otros([&] {
        while (!fin) entradas += cInstancia(fichero, log).EntraResidente();
    });
    // Until both have had many turns among the other's.
    for (int i = 0; i < 200 || entradas < 200; ++i)
        ASSERT_TRUE(cInstancia(fichero, log).EntraLote(std::chrono::seconds(10)));
    fin = true;
    otros.join();
}

TEST_F(cInstanciaTest, TheFileIsTheUsersOwnAndSurvivesTheFoldersCleaner) {
    const cInstancia instancia(fichero, log);
    struct stat datos {};
    ASSERT_EQ(stat(fichero.toUtf8().constData(), &datos), 0);
    EXPECT_EQ(datos.st_mode & 07777, 01600u);
}

TEST_F(cInstanciaTest, WhereTheFileCannotBeTheReaderStartsAndTheLogTells) {
    QFile estorbo(carpeta.filePath("plano"));
    ASSERT_TRUE(estorbo.open(QIODevice::WriteOnly));
    cInstancia instancia(carpeta.filePath("plano/ondalis.lock"), log);
    EXPECT_FALSE(instancia.HayOtra());
    EXPECT_TRUE(instancia.EntraResidente());
    QFile lineas(log.Fichero());
    ASSERT_TRUE(lineas.open(QIODevice::ReadOnly));
    EXPECT_TRUE(lineas.readAll().contains("cInstancia: "));
}

TEST_F(cInstanciaTest, ALinkIsNotFollowed) {
    QFile ajeno(carpeta.filePath("ajeno"));
    ASSERT_TRUE(ajeno.open(QIODevice::WriteOnly));
    ASSERT_TRUE(QFile::link(ajeno.fileName(), fichero));
    const auto antes = ajeno.permissions();
    const cInstancia instancia(fichero, log);
    EXPECT_EQ(ajeno.permissions(), antes);
}

TEST_F(cInstanciaTest, TheFileIsNamedAfterTheExecutableInTheRunTimeFolderElseInTheStateFolder) {
    const QByteArray antes = qgetenv("XDG_RUNTIME_DIR");
    qputenv("XDG_RUNTIME_DIR", carpeta.path().toUtf8());
    EXPECT_EQ(cInstancia::Fichero("/usr/bin/ondalis", "/estado"), carpeta.filePath("ondalis.lock"));
    for (const char *mala : {"", "relativa", "/no/existe"}) {
        qputenv("XDG_RUNTIME_DIR", mala);
        EXPECT_EQ(cInstancia::Fichero("/usr/bin/ondalis", "/estado"), "/estado/ondalis.lock") << mala;
    }
    qputenv("XDG_RUNTIME_DIR", antes);
}

}  // namespace
}  // namespace ondalis
