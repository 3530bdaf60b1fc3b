// The boxes' process is a shell script here: it notes what it was told and answers by its exit code.
#include "platform/sistema/cMensajesAparte.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

namespace ondalis {
namespace {

class MensajesAparte : public testing::Test {
protected:
    QString Guion(const QByteArray &final) {
        const QString ruta = m_carpeta.filePath("caja");
        QFile fichero(ruta);
        EXPECT_TRUE(fichero.open(QIODevice::WriteOnly));
        const QByteArray diario = m_carpeta.filePath("dicho").toLocal8Bit();
        fichero.write("#!/bin/sh\n{ printf '%s|' \"$@\"; cat; } > '" + diario + "'\n" + final + "\n");
        fichero.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return ruta;
    }
    QString Dicho() const {
        QFile fichero(m_carpeta.filePath("dicho"));
        return fichero.open(QIODevice::ReadOnly) ? QString::fromUtf8(fichero.readAll()) : QString("<nada>");
    }
    QTemporaryDir m_carpeta;
};

bool Hay() { return true; }
bool NoHay() { return false; }

TEST_F(MensajesAparte, TheTextGoesToStandardInputAndTheKindAndTitleAreArguments) {
    cMensajesAparte mensajes(Guion("exit 10"), Hay);
    EXPECT_TRUE(mensajes.Muestra("El fichero «á» ya existe.\r\n¿Desea sobrescribirlo?", true, false, "Ondalis"));
    EXPECT_EQ(Dicho(), "--ondalis-caja|pregunta-no|Ondalis|El fichero «á» ya existe.\r\n¿Desea sobrescribirlo?");
    mensajes.Muestra("x", true, true, "Otro");
    EXPECT_EQ(Dicho(), "--ondalis-caja|pregunta-si|Otro|x");
    EXPECT_TRUE(mensajes.Muestra("x", false, false, "Ondalis"));
    EXPECT_EQ(Dicho(), "--ondalis-caja|aviso|Ondalis|x");
}

TEST_F(MensajesAparte, TheExitCodeIsTheAnswerAndNothingIsWritten) {
    testing::internal::CaptureStderr();
    EXPECT_FALSE(cMensajesAparte(Guion("exit 11"), Hay).Muestra("x", true, true, "Ondalis"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(MensajesAparte, WithoutADesktopTheTextGoesToStandardErrorAndTheAnswerIsNo) {
    cMensajesAparte mensajes(Guion("exit 10"), NoHay);
    testing::internal::CaptureStderr();
    EXPECT_FALSE(mensajes.Muestra("El fichero a ya existe.\r\n¿Desea sobrescribirlo?", true, true, "Ondalis"));
    EXPECT_FALSE(mensajes.Muestra("Un error", false, false, "Ondalis"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ondalis: El fichero a ya existe.\n¿Desea sobrescribirlo? (no hay escritorio donde preguntar: No)\n"
              "ondalis: Un error\n");
    EXPECT_EQ(Dicho(), "<nada>");
}

TEST_F(MensajesAparte, ABoxThatCannotBeShownIsTheSameAsNoDesktop) {
    for (const QString &programa : {Guion("exit 3"), Guion("kill -ABRT $$"), Guion("exit 0"), QString("/no/existe")}) {
        cMensajesAparte mensajes(programa, Hay);
        testing::internal::CaptureStderr();
        EXPECT_FALSE(mensajes.Muestra("Un error", true, true, "Ondalis"));
        EXPECT_NE(testing::internal::GetCapturedStderr().find("Un error"), std::string::npos) << programa.toStdString();
    }
}

TEST_F(MensajesAparte, AProcessThatEndsWithoutReadingAVeryLongTextIsAnAnswerToo) {
    const QString ruta = m_carpeta.filePath("sorda");
    QFile fichero(ruta);
    ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
    fichero.write("#!/bin/sh\nexit 10\n");
    fichero.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    fichero.close();
    EXPECT_TRUE(cMensajesAparte(ruta, Hay).Muestra(QString(1'000'000, 'x'), true, false, "Ondalis"));
}

TEST_F(MensajesAparte, ClosingEndsTheOpenBoxWithNoAndLaterOnesAreNotShown) {
    cMensajesAparte mensajes(Guion("exec sleep 60"), Hay);
    QTimer::singleShot(0, [&mensajes] { mensajes.Cierra(); });
    testing::internal::CaptureStderr();
    EXPECT_FALSE(mensajes.Muestra("x", true, true, "Ondalis"));
    EXPECT_FALSE(mensajes.Muestra("otra", false, false, "Ondalis"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_FALSE(Dicho().contains("otra"));
}

}  // namespace
}  // namespace ondalis
