// The settings under processes that die in mid-write or write at once, full disks, locks left behind, and files that
// somebody has edited by hand.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDateTime>
#include <QElapsedTimer>
#include <QLockFile>
#include <QThread>
#include <chrono>
#include <random>

#include "fakes/DiscoLleno.h"
#include "fakes/RegistroPropio.h"

namespace ondalis {
namespace {

using prueba::RegistroPropio;

class PercancesRegistro : public testing::Test {
protected:
    static QByteArray Lee(const QString &ruta) {
        QFile fichero(ruta);
        return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
    }
    // What a process that starts now would read.
    static QString LeeDeNuevo(const RegistroPropio &p, const QString &seccion, const QString &nombre) {
        const QByteArray bytes = Lee(p.FicheroUsuario());
        RegistroPropio otro;
        RegistroPropio::Escribe(otro.FicheroUsuario(), bytes);
        return otro.Lee(seccion, nombre, "ausente");
    }
    // A process of its own that runs `cuerpo`; 0 is a good end.
    template <class F>
    static pid_t Proceso(F cuerpo) {
        const pid_t hijo = fork();
        if (hijo == 0) _exit(cuerpo());
        return hijo;
    }
    // Its end, within the limit in milliseconds; -1: it still ran, and has been killed.
    static int Espera(pid_t hijo, int limiteMs) {
        QElapsedTimer reloj;
        reloj.start();
        int estado = 0;
        while (waitpid(hijo, &estado, WNOHANG) == 0) {
            if (reloj.elapsed() < limiteMs) {
                QThread::yieldCurrentThread();
                continue;
            }
            kill(hijo, SIGKILL);
            waitpid(hijo, &estado, 0);
            return -1;
        }
        return WIFEXITED(estado) ? WEXITSTATUS(estado) : 255;
    }

    RegistroPropio p;
};

constexpr int kClaves = 12;
QString Clave(int i) { return QStringLiteral("Clave%1").arg(i); }

// The child writes all keys of a round before it begins the next, and reports each; so a value that isn't of the last
// round reported is of the one begun, in the order of writing.
TEST_F(PercancesRegistro, AfterAKillInMidWriteEveryValueIsTheOldOneOrTheNewOne) {
    for (int i = 0; i < kClaves; ++i) ASSERT_TRUE(p.Salva("Voz", Clave(i), "0"));
    ASSERT_TRUE(p.Salva("Editor", "FuenteName", "Sans, Bold"));
    std::mt19937 azar(11);
    int vuelta = 0;
    for (int muerte = 0; muerte < 50; ++muerte) {
        int tubo[2];
        ASSERT_EQ(pipe(tubo), 0);
        const int primera = vuelta + 1;
        const pid_t hijo = Proceso([&] {
            for (int v = primera;; ++v)
                for (int i = 0; i < kClaves; ++i)
                    if (!p.Salva("Voz", Clave(i), QString::number(v)) || write(tubo[1], "x", 1) != 1) return 1;
            return 0;
        });
        close(tubo[1]);
        char c;
        int hechas = 0;
        const int cuantas = 1 + static_cast<int>(azar() % 30);
        for (; hechas < cuantas && read(tubo[0], &c, 1) == 1; ++hechas) {
        }
        const auto hasta = std::chrono::steady_clock::now() + std::chrono::microseconds(azar() % 3000);
        while (std::chrono::steady_clock::now() < hasta) continue;
        ASSERT_EQ(kill(hijo, SIGKILL), 0);
        int estado = 0;
        ASSERT_EQ(waitpid(hijo, &estado, 0), hijo);
        ASSERT_TRUE(WIFSIGNALED(estado)) << "it failed to write";
        while (read(tubo[0], &c, 1) == 1) ++hechas;
        close(tubo[0]);

        const int esta = LeeDeNuevo(p, "Voz", Clave(0)).toInt();
        int anterior = esta;
        int escritas = 0;  // since this process began
        for (int i = 0; i < kClaves; ++i) {
            const int valor = LeeDeNuevo(p, "Voz", Clave(i)).toInt();
            EXPECT_TRUE(valor == anterior || (anterior == esta && valor == esta - 1)) << muerte << ' ' << i;
            anterior = valor;
            escritas += valor - primera + 1;
        }
        EXPECT_GE(escritas, hechas) << "what was reported is stored";
        EXPECT_LE(escritas, hechas + 1);
        EXPECT_EQ(LeeDeNuevo(p, "Editor", "FuenteName"), "Sans, Bold");
        vuelta = esta;
        for (int i = 0; i < kClaves; ++i) ASSERT_TRUE(p.Salva("Voz", Clave(i), QString::number(vuelta)));
    }
}

TEST_F(PercancesRegistro, ProcessesThatWriteDifferentKeysAtOnceLoseNothing) {
    ASSERT_TRUE(p.Salva("Voz", "VozActiva", "Carlos"));
    constexpr int kProcesos = 3, kSuyas = 25;
    std::vector<pid_t> hijos;
    for (int n = 0; n < kProcesos; ++n)
        hijos.push_back(Proceso([&, n] {
            for (int i = 0; i < kSuyas; ++i)
                if (!p.Salva(QStringLiteral("Seccion%1").arg(n % 2), QStringLiteral("P%1C%2").arg(n).arg(i), "sí"))
                    return 1;
            return 0;
        }));
    for (const pid_t hijo : hijos) EXPECT_EQ(Espera(hijo, 60000), 0);
    for (int n = 0; n < kProcesos; ++n)
        for (int i = 0; i < kSuyas; ++i)
            EXPECT_EQ(p.Lee(QStringLiteral("Seccion%1").arg(n % 2), QStringLiteral("P%1C%2").arg(n).arg(i)), "sí");
    EXPECT_EQ(LeeDeNuevo(p, "Voz", "VozActiva"), "Carlos");
}

// A crash of the machine leaves the lock without its text; nobody holds it.
TEST_F(PercancesRegistro, ALockThatNobodyHoldsStopsNoWriting) {
    for (const QByteArray &candado : {QByteArray(), QByteArray("basura\n"), QByteArray("1\ninit\notra-maquina\n"),
                                      QByteArray(4096, '\0'), QByteArray::number(getppid()) + "\nprueba\n\n\n"}) {
        RegistroPropio suyo;
        RegistroPropio::Escribe(suyo.FicheroUsuario() + ".lock", candado);
        QFile viejo(suyo.FicheroUsuario() + ".lock");
        ASSERT_TRUE(viejo.open(QIODevice::ReadWrite));
        ASSERT_TRUE(viejo.setFileTime(QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime));
        viejo.close();
        const pid_t hijo = Proceso([&] { return suyo.Salva("Voz", "Velocidad", "200") ? 0 : 1; });
        EXPECT_EQ(Espera(hijo, 5000), 0) << candado.left(20).toStdString();
        EXPECT_EQ(LeeDeNuevo(suyo, "Voz", "Velocidad"), "200");
    }
}

// A kill between making the lock and writing it leaves an empty one, and the next process starts at once.
TEST_F(PercancesRegistro, AnEmptyLockOfAProcessJustKilledLosesNoValue) {
    RegistroPropio::Escribe(p.FicheroUsuario() + ".lock", QByteArray());
    EXPECT_TRUE(p.Salva("Voz", "Velocidad", "200"));
    EXPECT_EQ(LeeDeNuevo(p, "Voz", "Velocidad"), "200");
}

TEST_F(PercancesRegistro, AProcessThatHoldsTheLockAndHangsStopsNobodyForLong) {
    ASSERT_TRUE(p.Salva("Voz", "Velocidad", "100"));
    QLockFile ajeno(p.FicheroUsuario() + ".lock");
    ASSERT_TRUE(ajeno.tryLock());
    const pid_t hijo = Proceso([&] {
        for (int i = 0; i < 20; ++i)
            if (p.Salva("Voz", "Velocidad", "200")) return 1;
        return p.Lee("Voz", "Velocidad") == "100" ? 0 : 2;
    });
    EXPECT_EQ(Espera(hijo, 10000), 0);
    EXPECT_TRUE(p.LineasLog().join("").contains("cRegistro.Salva: Permiso denegado (70)"));
    ajeno.unlock();
    EXPECT_TRUE(p.Salva("Voz", "Velocidad", "300"));
    EXPECT_EQ(LeeDeNuevo(p, "Voz", "Velocidad"), "300");
}

// Each of them has the lock for a moment only, but one comes behind the other for longer than a hung one is waited for.
TEST_F(PercancesRegistro, WritersThatFollowEachOtherAreWaitedFor) {
    ASSERT_TRUE(p.Salva("Voz", "Velocidad", "100"));
    int tubo[2];
    ASSERT_EQ(pipe(tubo), 0);
    const pid_t hijo = Proceso([&] {
        const QString ruta = p.FicheroUsuario() + ".lock";
        QLockFile suyo(ruta);
        if (!suyo.tryLock() || write(tubo[1], "x", 1) != 1) return 1;
        QElapsedTimer reloj;
        for (int cuantos = 0; cuantos < 6; ++cuantos) {
            for (reloj.start(); reloj.elapsed() < 300;) QThread::yieldCurrentThread();
            QFile nuevo(ruta);
            if (!nuevo.open(QIODevice::ReadWrite) ||
                !nuevo.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime))
                return 2;
        }
        return 0;
    });
    char c;
    ASSERT_EQ(read(tubo[0], &c, 1), 1);
    EXPECT_TRUE(p.Salva("Voz", "Velocidad", "200"));
    EXPECT_EQ(Espera(hijo, 10000), 0);
    EXPECT_EQ(LeeDeNuevo(p, "Voz", "Velocidad"), "200");
}

TEST_F(PercancesRegistro, AFullDiskKeepsEveryValueAndTheReaderWritesOnLater) {
    for (int i = 0; i < kClaves; ++i) ASSERT_TRUE(p.Salva("Voz", Clave(i), "vieja"));
    const QByteArray antes = Lee(p.FicheroUsuario());
    {
        const prueba::DiscoLleno lleno;
        for (int i = 0; i < kClaves; ++i) EXPECT_FALSE(p.Salva("Voz", Clave(i), "nueva"));
        EXPECT_FALSE(p.Registro().Borra("CU", Producto::Ruta(), QStringLiteral("Voz")));
    }
    EXPECT_EQ(Lee(p.FicheroUsuario()), antes);
    EXPECT_EQ(QDir(p.Ruta("usuario/Ferrano")).entryList(QDir::Files | QDir::Hidden),
              QStringList(QStringLiteral("Ondalis.ini")));
    for (int i = 0; i < kClaves; ++i) EXPECT_TRUE(p.Salva("Voz", Clave(i), "última"));
    for (int i = 0; i < kClaves; ++i) EXPECT_EQ(LeeDeNuevo(p, "Voz", Clave(i)), "última");
}

// The tests may run as root, who may write anywhere: the writing is done by somebody who may not.
TEST_F(PercancesRegistro, InAFolderThatMayOnlyBeReadTheValuesAreReadAndTheTroubleIsLogged) {
    ASSERT_TRUE(p.Salva("Voz", "Velocidad", "200"));
    for (const char *carpeta : {"", "usuario", "usuario/Ferrano"})
        ASSERT_TRUE(QFile::setPermissions(p.Ruta(carpeta), QFile::Permissions(0x5555)));
    ASSERT_TRUE(QFile::setPermissions(p.FicheroUsuario(), QFile::Permissions(0x4444)));
    RegistroPropio::Escribe(p.Log().Fichero(), "");
    ASSERT_TRUE(QFile::setPermissions(p.Log().Fichero(), QFile::Permissions(0x6666)));
    const pid_t hijo = Proceso([this] {
        if (getuid() == 0 && setuid(65534) != 0) return 2;
        RegistroPropio otro;  // new paths: nothing of this process is known there
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, p.Ruta("usuario"));
        cRegistro registro(p.Log(), p.Ruta("autostart"));
        if (registro.Lee("CU", Producto::Ruta(), "Voz", "Velocidad", 170) != "200") return 3;
        if (registro.Salva("CU", Producto::Ruta(), "Voz", "Velocidad", "300")) return 4;
        return 0;
    });
    EXPECT_EQ(Espera(hijo, 20000), 0);
    for (const char *carpeta : {"", "usuario", "usuario/Ferrano"})
        QFile::setPermissions(p.Ruta(carpeta), QFile::Permissions(0x7700));
    ASSERT_FALSE(p.LineasLog().isEmpty());
    EXPECT_TRUE(p.LineasLog()[0].contains("cRegistro.Salva: Error de acceso a la ruta o al archivo (75)"));
    EXPECT_EQ(LeeDeNuevo(p, "Voz", "Velocidad"), "200");
}

TEST_F(PercancesRegistro, AQuoteThatIsNotClosedSwallowsNoOtherValue) {
    const QByteArray escrito =
        "[Grabar]\nNombreFichero=\"/musica/a.wav\nCalidadkHz=8000\n[Voz]\nVelocidad=200\nVozActiva=\"Diana\"\n";
    RegistroPropio::Escribe(p.FicheroUsuario(), escrito);
    EXPECT_EQ(p.Lee("Grabar", "CalidadkHz", "no"), "8000");
    EXPECT_EQ(p.Lee("Voz", "Velocidad", "no"), "200");
    EXPECT_EQ(p.Lee("Voz", "VozActiva", "no"), "Diana");
    EXPECT_EQ(p.Lee("Grabar", "NombreFichero", "no"), "\"/musica/a.wav");
    ASSERT_TRUE(p.Salva("Voz", "Tono", "1"));
    EXPECT_EQ(LeeDeNuevo(p, "Grabar", "CalidadkHz"), "8000");
    EXPECT_EQ(LeeDeNuevo(p, "Voz", "Velocidad"), "200");
    EXPECT_EQ(Lee(p.FicheroUsuario() + ".1.mal"), escrito);
}

TEST_F(PercancesRegistro, ABackslashAtALinesEndSwallowsNoOtherValue) {
    RegistroPropio::Escribe(p.FicheroUsuario(), "[Grabar]\r\nNombreFichero=C:\\\\x\\\r\nCalidadkHz=8000\r\n");
    EXPECT_EQ(p.Lee("Grabar", "NombreFichero"), "C:\\x\\");
    EXPECT_EQ(p.Lee("Grabar", "CalidadkHz", "no"), "8000");
    ASSERT_TRUE(p.Salva("Voz", "Tono", "1"));
    EXPECT_EQ(LeeDeNuevo(p, "Grabar", "CalidadkHz"), "8000");
}

TEST_F(PercancesRegistro, AFileInAnotherEncodingIsCopiedAsideBeforeTheFirstWrite) {
    const QString texto = QStringLiteral("[Voz]\nVelocidad=200\n");
    const QByteArray ancho = "\xFF\xFE" + QByteArray(reinterpret_cast<const char *>(texto.utf16()), texto.size() * 2);
    const QByteArray latino = "[Grabar]\nNombreFichero=/m\xFAsica/a\xF1o.wav\n";
    for (const QByteArray &escrito : {ancho, latino}) {
        RegistroPropio suyo;
        RegistroPropio::Escribe(suyo.FicheroUsuario(), escrito);
        EXPECT_EQ(suyo.Lee("Voz", "Tono", "no"), "no");
        EXPECT_EQ(Lee(suyo.FicheroUsuario()), escrito) << "reading alone touches nothing";
        ASSERT_TRUE(suyo.Salva("Voz", "Tono", "100"));
        EXPECT_EQ(Lee(suyo.FicheroUsuario() + ".1.mal"), escrito);
        EXPECT_EQ(LeeDeNuevo(suyo, "Voz", "Tono"), "100");
        ASSERT_TRUE(suyo.Salva("Voz", "Tono", "101"));
        EXPECT_FALSE(QFile::exists(suyo.FicheroUsuario() + ".2.mal"));
    }
}

}  // namespace
}  // namespace ondalis
