#include "reader/cLineaLote.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace ondalis {
namespace {

QString Hablada(const QString &orden) {
    const auto linea = cLineaLote::De(orden);
    return linea ? linea->Hablada() : QStringLiteral("<no es de lote>");
}

QString Valor(const QString &orden, const char *opcion) {
    QString valor = QStringLiteral("<no está>");
    const auto linea = cLineaLote::De(orden);
    if (linea) linea->Valor(QString::fromLatin1(opcion), &valor);
    return valor;
}

TEST(LineaLote, APlainTextIsInCapitalsAlsoItsAccentedLetters) {
    EXPECT_EQ(Hablada("hola, señor Núñez"), "HOLA, SEÑOR NÚÑEZ");
}

TEST(LineaLote, CapitalsNeverChangeTheLength) {
    // "ß" and "ŉ" have no single capital, "𐐨" is one of two units with one.
    EXPECT_EQ(cLineaLote::Mayusculas(QString::fromUtf8("straße ŉ ﬁ 𐐨 ÿ")), QString::fromUtf8("STRAßE ŉ ﬁ 𐐀 Ÿ"));
    const QString suelto = QString(QChar(0xD801)) + "a" + QString(QChar(0xDC28)) + QString(QChar(0xD801));
    EXPECT_EQ(cLineaLote::Mayusculas(suelto).size(), 4);
}

TEST(LineaLote, EachOfTheThreeOptionsIsDeletedWhereverItStandsInAnyCase) {
    EXPECT_EQ(Hablada("-nosapi5 uno -Clear-DEBUG dos -clear"), "UNO  DOS");
    EXPECT_EQ(Hablada("una-clearidad"), "UNAIDAD");
    EXPECT_EQ(Hablada("-cle-clearar uno"), "-CLEAR UNO");  // looked for once, from left to right
    EXPECT_EQ(Hablada("-de-clearbug uno"), "UNO");         // -DEBUG is deleted behind -CLEAR
}

TEST(LineaLote, WhatIsLeftEmptyIsNoBatchLine) {
    for (const char *orden : {"", "   ", "-clear", "-DEBUG -nosapi5 ", "\t-clear"})
        EXPECT_FALSE(cLineaLote::De(orden)) << orden;
}

TEST(LineaLote, AValueIsTheOneWrittenAndEndsAtTheNextHyphen) {
    EXPECT_EQ(Valor("-FileTxt  Mi Libro.txt  -OUTPUTFILE Salida.Wav", "FILETXT"), "Mi Libro.txt");
    EXPECT_EQ(Valor("-FileTxt  Mi Libro.txt  -OUTPUTFILE Salida.Wav", "OUTPUTFILE"), "Salida.Wav");
    EXPECT_EQ(Valor("-filetxt mi-libro.txt", "FILETXT"), "mi");
    EXPECT_EQ(Valor("-clear -filetxt Ñ𐐨.txt -debug", "FILETXT"), QString::fromUtf8("Ñ𐐨.txt"));
    EXPECT_EQ(Valor("hola -outputfile", "OUTPUTFILE"), "");
}

TEST(LineaLote, TheValueTakesEverythingBehindTheOptionAlsoAText) {
    EXPECT_EQ(Valor("-outputfile a.wav hola", "OUTPUTFILE"), "a.wav hola");
}

TEST(LineaLote, OptionAndValueAreDeletedEachTimeTheyOccurBlindToCase) {
    auto linea = *cLineaLote::De("uno -outputfile a.wav");
    linea.Quita("OUTPUTFILE", "a.wav");
    EXPECT_EQ(linea.Hablada(), "UNO ");
    linea = *cLineaLote::De("uno -outputfile A.wav -OutputFile a.WAV dos");
    linea.Quita("OUTPUTFILE", "A.wav");
    EXPECT_EQ(linea.Hablada(), "UNO   DOS");
}

TEST(LineaLote, WithTwoBlanksBehindTheOptionNothingIsDeleted) {
    auto linea = *cLineaLote::De("uno -outputfile  a.wav");
    linea.Quita("OUTPUTFILE", "a.wav");
    EXPECT_EQ(linea.Hablada(), "UNO -OUTPUTFILE  A.WAV");
}

class ConFichero : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(QDir::setCurrent(carpeta.path())); }
    void TearDown() override { ASSERT_TRUE(QDir::setCurrent(antes)); }
    static void Crea(const QString &nombre) {
        QFile fichero(nombre);
        ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
    }
    QString antes = QDir::currentPath();
    QTemporaryDir carpeta;
};

TEST_F(ConFichero, ALineThatNamesAFileIsTheLineOfThatFileAsWritten) {
    Crea("Mi Libro.txt");
    EXPECT_EQ(Valor("Mi Libro.txt", "FILETXT"), "Mi Libro.txt");
    EXPECT_EQ(Valor("\"Mi Libro.txt\"", "FILETXT"), "\"Mi Libro.txt\"");
    EXPECT_EQ(Hablada("mi libro.txt"), "MI LIBRO.TXT");  // another name: a text
}

TEST_F(ConFichero, AloneOnTheLineAPathIsCutAtItsHyphenToo) {
    Crea("mi-libro.txt");
    EXPECT_EQ(Valor("mi-libro.txt", "FILETXT"), "mi");
}

TEST_F(ConFichero, TheOptionsOfAFilesOwnNameAreNotDeleted) {
    Crea("a-clear.txt");
    EXPECT_EQ(Valor("a-clear.txt", "FILETXT"), "a");
    EXPECT_EQ(Valor("a-clear.txt", "CLEAR"), "txt");
}

TEST_F(ConFichero, AFolderIsAText) {
    ASSERT_TRUE(QDir().mkdir("casa"));
    EXPECT_EQ(Hablada("casa"), "CASA");
}

}  // namespace
}  // namespace ondalis
