#include "platform/sistema/cLanzadorComandos.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>

namespace ondalis {
namespace {

class cLanzadorComandosTest : public testing::Test {
protected:
    // A program that writes its arguments and its open descriptors, one a line, into a FIFO of ours.
    QByteArray Lanza(const QString &argumentos) {
        const QString tubo = carpeta.filePath("tubo");
        const QString programa = carpeta.filePath("mi programa");
        EXPECT_EQ(mkfifo(tubo.toUtf8().constData(), 0600), 0);
        QFile guion(programa);
        EXPECT_TRUE(guion.open(QIODevice::WriteOnly));
        guion.write("#!/bin/sh\nexec > '" + tubo.toUtf8() +
                    "'\nfor a in \"$@\"; do echo \"[$a]\"; done\nls /proc/$$/fd\n");
        guion.close();
        guion.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        EXPECT_TRUE(cLanzadorComandos().Lanza(QStringLiteral("\"%1\" %2").arg(programa, argumentos)));
        QFile leido(tubo);
        EXPECT_TRUE(leido.open(QIODevice::ReadOnly));  // waits for the program
        return leido.readAll();
    }
    QTemporaryDir carpeta;
};

TEST_F(cLanzadorComandosTest, QuotesKeepWordsTogetherAndNoShellSeesTheLine) {
    EXPECT_TRUE(Lanza("\"dos palabras\" $HOME ; `ls` *").startsWith("[dos palabras]\n[$HOME]\n[;]\n[`ls`]\n[*]\n"));
}

TEST_F(cLanzadorComandosTest, TheCommandGetsNoneOfOurDescriptors) {
    const int nuestro = open("/dev/null", O_RDONLY | O_CLOEXEC);
    const int alto = fcntl(nuestro, F_DUPFD_CLOEXEC, 77);
    ASSERT_EQ(alto, 77);
    EXPECT_FALSE(Lanza("").contains("77\n"));
    close(alto);
    close(nuestro);
}

TEST_F(cLanzadorComandosTest, WhatCannotBeStartedIsTold) {
    EXPECT_FALSE(cLanzadorComandos().Lanza("/no/existe/programa -x"));
    EXPECT_FALSE(cLanzadorComandos().Lanza(""));
    EXPECT_FALSE(cLanzadorComandos().Lanza("   "));
    QFile texto(carpeta.filePath("texto"));
    ASSERT_TRUE(texto.open(QIODevice::WriteOnly));
    EXPECT_FALSE(cLanzadorComandos().Lanza(texto.fileName()));
}

}  // namespace
}  // namespace ondalis
