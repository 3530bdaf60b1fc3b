#include "text/cBloquesTexto.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>
#include <vector>

inline void PrintTo(const QString &texto, std::ostream *salida) {
    *salida << texto.size() << " characters: \"" << texto.left(40).toStdString() << '"';
}

namespace ondalis {
namespace {

class cBloquesTextoTest : public testing::Test {
protected:
    std::vector<QString> Bloques(const QByteArray &bytes, const char *nombre = "libro.txt") {
        const QString ruta = carpeta.filePath(nombre);
        QFile fichero(ruta);
        EXPECT_TRUE(fichero.open(QIODevice::WriteOnly) && fichero.write(bytes) == bytes.size());
        fichero.close();
        cBloquesTexto bloques;
        EXPECT_FALSE(bloques.Abre(ruta));
        std::vector<QString> todos;
        QString bloque;
        while (bloques.Siguiente(bloque)) todos.push_back(bloque);
        EXPECT_FALSE(bloques.Error());
        return todos;
    }
    QTemporaryDir carpeta;
};

TEST_F(cBloquesTextoTest, AnEmptyFileHasNoBlock) { EXPECT_TRUE(Bloques("").empty()); }

TEST_F(cBloquesTextoTest, ASmallFileIsOneBlockWithoutWhatTheBufferHasBehindIt) {
    EXPECT_EQ(Bloques("año"), std::vector<QString>{QStringLiteral("año")});
}

TEST_F(cBloquesTextoTest, ACharacterThatABlockWouldCutBeginsTheNextOne) {
    // Its first byte is the last of the buffer.
    const auto todos = Bloques(QByteArray(500'000, 'a') + "ñb");
    ASSERT_EQ(todos.size(), 2u);
    EXPECT_EQ(todos[0], QString(500'000, 'a'));
    EXPECT_EQ(todos[1], QStringLiteral("ñb") + QString(500'000 - 3, 'a'));
}

TEST_F(cBloquesTextoTest, TheTailOfTheBlockBeforeBeginsAtACharacter) {
    QByteArray bytes;
    for (int i = 0; i < 250'000; ++i) bytes += "ñ";
    bytes += "a";  // the buffer is full, the block whole
    bytes += "b";  // and one byte covers half of the first character
    const auto todos = Bloques(bytes);
    ASSERT_EQ(todos.size(), 2u);
    EXPECT_EQ(todos[1], QStringLiteral("b") + QString(249'999, QChar(0xF1)) + 'a');
}

TEST_F(cBloquesTextoTest, TheEncodingIsDecidedOnceForTheWholeFile) {
    // Valid in UTF-8 up to the last block, which isn't: all of it is Windows-1252.
    const auto todos = Bloques(QByteArray("ñ") + QByteArray(600'000, 'a') + "\xF1");
    ASSERT_EQ(todos.size(), 2u);
    EXPECT_TRUE(todos[0].startsWith(QStringLiteral("Ã±a")));
    EXPECT_EQ(todos[1].at(600'003 - 500'001 - 1), QChar(0xF1));
    EXPECT_EQ(Bloques("a\xA4o", "viejo.ASC"), std::vector<QString>{QStringLiteral("año")});
    EXPECT_EQ(Bloques("ab\xC3"), std::vector<QString>{QStringLiteral("abÃ")});
}

TEST_F(cBloquesTextoTest, Utf16IsNotCutInACharacterNorInAPair) {
    QByteArray bytes("\xFF\xFE");
    for (int i = 0; i < 249'998; ++i) bytes += QByteArray("a\0", 2);
    // The pair's first half is the last whole unit of the buffer, which has an odd length.
    bytes += QByteArray("\x3D\xD8\x00\xDE", 4);
    bytes += QByteArray("b\0", 2);
    const auto todos = Bloques(bytes);
    ASSERT_EQ(todos.size(), 2u);
    EXPECT_EQ(todos[0], QString(249'998, 'a'));
    EXPECT_TRUE(todos[1].startsWith(QStringLiteral("\U0001F600ba")));
}

TEST_F(cBloquesTextoTest, AFolderAndAnAbsentFileAreFailure53) {
    cBloquesTexto bloques;
    EXPECT_EQ(bloques.Abre(carpeta.path()).numero, 53);
    EXPECT_EQ(bloques.Abre("/no/existe").numero, 53);
    QString bloque;
    EXPECT_FALSE(bloques.Siguiente(bloque));
}

}  // namespace
}  // namespace ondalis
