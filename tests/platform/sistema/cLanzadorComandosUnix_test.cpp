#include "platform/sistema/cLanzadorComandosUnix.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <set>

namespace ondalis {
namespace {

class cLanzadorComandosUnixTest : public testing::Test {
protected:
    // A program that writes what it was given, and then a mark at the end.
    void Programa(const QString &nombre, const QByteArray &guion) const {
        QFile fichero(carpeta.filePath(nombre));
        ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
        fichero.write("#!/bin/sh\nexec > '" + Salida().toUtf8() + "'\n" + guion + "\necho fin\n");
        fichero.close();
        ASSERT_EQ(chmod(QFile::encodeName(fichero.fileName()).constData(), 0700), 0);
    }
    QString Salida() const { return carpeta.filePath(QStringLiteral("salida")); }
    QString LoEscrito() const {
        for (QDeadlineTimer plazo(10'000); !plazo.hasExpired(); QThread::yieldCurrentThread()) {
            QFile fichero(Salida());
            if (!fichero.open(QIODevice::ReadOnly)) continue;
            const QString texto = QString::fromUtf8(fichero.readAll());
            if (texto.endsWith(QLatin1String("fin\n"))) return texto.chopped(4);
        }
        return QStringLiteral("nada");
    }

    QTemporaryDir carpeta;
    cLanzadorComandosUnix lanzador;
};

TEST_F(cLanzadorComandosUnixTest, NoShellReadsTheCommand) {
    Programa(QStringLiteral("di todo"), R"(for a in "$@"; do echo "<$a>"; done)");
    EXPECT_TRUE(lanzador.Lanza(QLatin1Char('"') + carpeta.filePath(QStringLiteral("di todo")) +
                               QStringLiteral(R"(" uno "dos tres" $HOME ;echo '*' | > &)")));
    EXPECT_EQ(LoEscrito(), QStringLiteral("<uno>\n<dos tres>\n<$HOME>\n<;echo>\n<'*'>\n<|>\n<>>\n<&>\n"));
}

TEST_F(cLanzadorComandosUnixTest, AProgramThatIsNotThereIsToldAndSoIsAnEmptyCommand) {
    EXPECT_FALSE(lanzador.Lanza(carpeta.filePath(QStringLiteral("no-hay"))));
    EXPECT_FALSE(lanzador.Lanza(carpeta.path()));
    EXPECT_FALSE(lanzador.Lanza(QString()));
    EXPECT_FALSE(lanzador.Lanza(QStringLiteral("  ")));
}

TEST_F(cLanzadorComandosUnixTest, ItHasNoneOfOurDescriptors) {
    QFile nuestro(carpeta.filePath(QStringLiteral("nuestro")));
    ASSERT_TRUE(nuestro.open(QIODevice::WriteOnly));
    Programa(QStringLiteral("mira"), "for d in /proc/$$/fd/*; do readlink $d; done");
    EXPECT_TRUE(lanzador.Lanza(carpeta.filePath(QStringLiteral("mira"))));
    const QString texto = LoEscrito();
    EXPECT_TRUE(texto.startsWith(QStringLiteral("/dev/null\n"))) << texto.toStdString();
    EXPECT_FALSE(texto.contains(nuestro.fileName()));
    EXPECT_FALSE(texto.contains(QStringLiteral("socket:")));
}

// Processes whose parent is this one, dead ones that nobody has waited for included.
std::set<int> Hijos() {
    std::set<int> hijos;
    for (const QString &proceso : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        QFile estado(QStringLiteral("/proc/%1/stat").arg(proceso));
        if (!estado.open(QIODevice::ReadOnly)) continue;
        const QByteArray linea = estado.readAll();
        // Behind the name, which may hold anything: state and parent.
        const QList<QByteArray> campos = linea.mid(linea.lastIndexOf(')') + 2).split(' ');
        if (campos.value(1).toInt() == getpid()) hijos.insert(proceso.toInt());
    }
    return hijos;
}

TEST_F(cLanzadorComandosUnixTest, ItIsNoChildOfOursAndLeavesNoZombie) {
    const std::set<int> antes = Hijos();
    Programa(QStringLiteral("mira"), "true");
    EXPECT_TRUE(lanzador.Lanza(carpeta.filePath(QStringLiteral("mira"))));
    LoEscrito();
    for (const int hijo : Hijos()) EXPECT_TRUE(antes.contains(hijo)) << hijo;
}

}  // namespace
}  // namespace ondalis
