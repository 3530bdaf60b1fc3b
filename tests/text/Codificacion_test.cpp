#include "text/Codificacion.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace ondalis {
namespace {

const QString kTexto = QStringLiteral("Año: ¿piña o café? 10 €");

TEST(Codificacion, WhollyValidUtf8IsTakenAsThat) {
    EXPECT_EQ(TextoDeBytes(kTexto.toUtf8(), QStringLiteral("a.txt")), kTexto);
    EXPECT_EQ(TextoDeBytes(kTexto.toUtf8(), QStringLiteral("a.asc")), kTexto);
    EXPECT_EQ(TextoDeBytes("", QStringLiteral("a.txt")), QString());
}

TEST(Codificacion, AByteOrderMarkDecidesAndIsNoText) {
    EXPECT_EQ(TextoDeBytes("\xEF\xBB\xBF" + kTexto.toUtf8(), {}), kTexto);
    QByteArray pequeno("\xFF\xFE"), grande("\xFE\xFF");
    for (const QChar letra : kTexto) {
        pequeno.append(static_cast<char>(letra.cell())).append(static_cast<char>(letra.row()));
        grande.append(static_cast<char>(letra.row())).append(static_cast<char>(letra.cell()));
    }
    EXPECT_EQ(TextoDeBytes(pequeno, {}), kTexto);
    EXPECT_EQ(TextoDeBytes(grande, QStringLiteral("x.asc")), kTexto);
}

TEST(Codificacion, OneInvalidSequenceMakesTheWholeFileWindows1252) {
    EXPECT_EQ(TextoDeBytes("A\xF1o: \xBFpi\xF1"
                           "a o caf\xE9? 10 \x80",
                           QStringLiteral("a.txt")),
              kTexto);
    // Valid but for its last letter, which is cut short.
    EXPECT_EQ(TextoDeBytes("a\xC3\xB1o \xC3", {}), QStringLiteral("aÃ±o Ã"));
    EXPECT_EQ(TextoDeBytes("\x93hola\x94", {}), QStringLiteral("“hola”"));
}

TEST(Codificacion, ANameInAscIsIbm850BlindToCase) {
    EXPECT_EQ(TextoDeBytes("a\xA4o \xA8qu\x82?", QStringLiteral("/x/VIEJO.ASC")), QStringLiteral("año ¿qué?"));
    EXPECT_EQ(TextoDeBytes("a\xA4o", QStringLiteral("/x/asc")), QStringLiteral("a¤o"));
}

TEST(Codificacion, AZeroByteIsNoTextButInUtf16) {
    EXPECT_TRUE(EsBinario(QByteArray("a\0b", 3)));
    EXPECT_FALSE(
        EsBinario(QByteArray("\xFF\xFE"
                             "a\0",
                             4)));
    EXPECT_FALSE(EsBinario("hola"));
}

TEST(Codificacion, AFolderAPipeADanglingLinkAndNothingAreAbsent) {
    QTemporaryDir carpeta;
    const QString tubo = carpeta.filePath(QStringLiteral("tubo"));
    ASSERT_EQ(mkfifo(QFile::encodeName(tubo).constData(), 0600), 0);
    const QString enlace = carpeta.filePath(QStringLiteral("enlace"));
    QFile::link(QStringLiteral("/no/existe"), enlace);
    QString texto;
    for (const QString &ruta : {carpeta.path(), tubo, enlace, QStringLiteral("/no/existe"), QString()})
        EXPECT_EQ(LeeFicheroTexto(ruta, texto).numero, Fallo::FicheroNoEncontrado) << ruta.toStdString();
}

TEST(Codificacion, AFileBeyondTheLimitIsRefusedAndOneAtItIsRead) {
    QTemporaryDir carpeta;
    QFile fichero(carpeta.filePath(QStringLiteral("grande.txt")));
    ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
    fichero.write(QByteArray(kMaxFicheroTexto, 'a'));
    fichero.flush();
    QString texto;
    EXPECT_FALSE(LeeFicheroTexto(fichero.fileName(), texto));
    EXPECT_EQ(texto.size(), kMaxFicheroTexto);
    fichero.write("a");
    fichero.close();
    EXPECT_EQ(LeeFicheroTexto(fichero.fileName(), texto).numero, Fallo::SinMemoria);
}

}  // namespace
}  // namespace ondalis
