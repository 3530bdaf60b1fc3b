#include "reader/Arranque.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "fakes/Diario.h"

namespace ondalis {
namespace {

using prueba::Diario;
using prueba::Lineas;

class Decision : public testing::Test {
protected:
    Vida De(const QString &linea) {
        return DecideVida(linea, {.restauraConfiguracion = [this] { diario.Anota("restaura"); },
                                  .ejecutaComandosRegistro = [this] { diario.Anota("comandos"); },
                                  .ejecutaLineaComandos =
                                      [this, linea] {
                                          diario.Anota("linea");
                                          return EsLineaDeLote(linea);
                                      },
                                  .entraResidente =
                                      [this] {
                                          diario.Anota("instancia");
                                          return solo;
                                      }});
    }
    Diario diario;
    bool solo = true;
};

TEST_F(Decision, AnEmptyLineIsTheResidentReader) {
    EXPECT_EQ(De(""), Vida::Residente);
    EXPECT_EQ(diario.Todo(), (Lineas{"comandos", "linea", "instancia"}));
}

TEST_F(Decision, HelpWorksInCapitalsAndBehindOtherTextAndNothingElseRuns) {
    for (const char *linea :
         {"-help", "-HELP", "-Help", "hola -help", "-clear -filetxt a.txt -outputfile b.wav -HeLp", "texto-help"})
        EXPECT_EQ(De(linea), Vida::Ayuda) << linea;
    EXPECT_EQ(diario.Todo(), Lineas{});
}

TEST_F(Decision, ClearActsBeforeAnythingElseReadsASettingAndTheStartGoesOn) {
    EXPECT_EQ(De("-clear"), Vida::Residente);
    EXPECT_EQ(diario.Todo(), (Lineas{"restaura", "comandos", "linea", "instancia"}));
}

TEST_F(Decision, ALineOfOnlyTheThreeOptionsInAnyCaseStartsTheResidentReader) {
    for (const char *linea : {"-clear -nosapi5", "-CLEAR -NOSAPI5", "-Debug", "-clear -nosapi5 -debug",
                              "-nosapi5-debug-clear", "  -debug   -debug "})
        EXPECT_EQ(De(linea), Vida::Residente) << linea;
}

TEST_F(Decision, AnyOtherTextIsABatchLineAndNoCopyIsLookedFor) {
    solo = false;
    for (const char *linea : {"hola", "-nosapi5 hola", "-filetxt a.txt", "-outputfile b.wav hola", "-desconocida"})
        EXPECT_EQ(De(linea), Vida::Lote) << linea;
    EXPECT_EQ(diario.Veces("instancia"), 0);
}

TEST_F(Decision, ClearInABatchLineActsAllTheSame) {
    EXPECT_EQ(De("hola -CLEAR"), Vida::Lote);
    EXPECT_EQ(diario.Todo(), (Lineas{"restaura", "comandos", "linea"}));
}

TEST_F(Decision, ASecondCopyIsFoundLastOfAll) {
    solo = false;
    EXPECT_EQ(De("-debug"), Vida::YaArrancado);
    EXPECT_EQ(diario.Todo(), (Lineas{"comandos", "linea", "instancia"}));
}

TEST(EsLineaDeLote, ALineNamingAnExistingFileIsABatchLineAlsoInQuotes) {
    QTemporaryDir carpeta;
    // What is left of this name without the options is nothing: only the file makes it a batch line.
    const QString antes = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(carpeta.path()));
    EXPECT_FALSE(EsLineaDeLote("-clear"));
    QFile fichero("-clear");
    ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
    EXPECT_TRUE(EsLineaDeLote("-clear"));
    EXPECT_TRUE(EsLineaDeLote("\"-clear\""));
    ASSERT_TRUE(QDir::setCurrent(antes));
}

TEST(EsLineaDeLote, AFolderOrADanglingLinkIsNoFile) {
    QTemporaryDir carpeta;
    const QString antes = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(carpeta.path()));
    ASSERT_TRUE(QDir().mkdir("-debug"));
    ASSERT_TRUE(QFile::link("nada", "-clear"));
    EXPECT_FALSE(EsLineaDeLote("-debug"));
    EXPECT_FALSE(EsLineaDeLote("-clear"));
    ASSERT_TRUE(QDir::setCurrent(antes));
}

TEST(TextosLineaComandos, TheSixLinesOfTheHelp) {
    const QStringList textos = TextosLineaComandos();
    ASSERT_EQ(textos.size(), 6);
    EXPECT_EQ(textos[0], "Uso: Ondalis  [-clear] [-debug] [-nosapi5] [-filetxt nomfich] [-outputfile nomfich] [texto]");
    EXPECT_EQ(textos[5], "texto: Lee el texto sin dejar Ondalis residente");
}

}  // namespace
}  // namespace ondalis
