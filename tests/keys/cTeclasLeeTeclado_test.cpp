#include "keys/cTeclasLeeTeclado.h"

#include <gmock/gmock.h>

#include <optional>

#include "fakes/MensajesGuion.h"
#include "fakes/PrioridadFalsa.h"
#include "fakes/RegistroPropio.h"

namespace ondalis::prueba {
namespace {

using testing::ElementsAre;

class TeclasLeeTecladoTest : public testing::Test {
protected:
    void Fichero(const QByteArray &texto) {
        almacen.Escribe(almacen.Ruta(QStringLiteral("datos/codstcd.dat")), texto);
        Crea();
    }
    void Crea() {
        teclas.emplace(almacen.Registro(), general,
                       QStringList{almacen.Ruta(QStringLiteral("no-hay")), almacen.Ruta(QStringLiteral("datos"))});
    }
    void Guardado(const QString &tag) { almacen.Salva(QStringLiteral("TipoLectura"), kAjuste, tag); }
    QString Guardado() { return almacen.Lee(QStringLiteral("TipoLectura"), kAjuste); }
    std::vector<std::string> Marcadas() {
        std::vector<std::string> claves;
        for (const FilaTeclaLectura &fila : teclas->ListaTeclas())
            if (fila.marcada) claves.push_back(fila.clave.toStdString());
        return claves;
    }

    const QString kAjuste = QStringLiteral("TeclasLeeTeclado");
    RegistroPropio almacen;
    MensajesGuion mensajes;
    PrioridadFalsa prioridad;
    cGeneral general{almacen.Log(), mensajes, prioridad};
    std::optional<cTeclasLeeTeclado> teclas;
};

TEST_F(TeclasLeeTecladoTest, AKeyLineGivesItsNumberDefaultAndLabel) {
    const auto fila = cTeclasLeeTeclado::LeeLinea(QStringLiteral("00131Intro"));
    ASSERT_TRUE(fila);
    EXPECT_EQ(fila->clave, QStringLiteral("k013"));
    EXPECT_TRUE(fila->marcada);
    EXPECT_EQ(fila->rotulo, QStringLiteral("Intro"));
    EXPECT_FALSE(cTeclasLeeTeclado::LeeLinea(QStringLiteral("00130Intro"))->marcada);
}

TEST_F(TeclasLeeTecladoTest, AGroupLineGivesItsCharactersFromTheirCodes) {
    const auto fila = cTeclasLeeTeclado::LeeLinea(QStringLiteral("x20461330Punto y puntos"));
    ASSERT_TRUE(fila);
    EXPECT_EQ(fila->clave, QString::fromUtf8("c.…"));
    EXPECT_FALSE(fila->marcada);
    EXPECT_EQ(fila->rotulo, QStringLiteral("Punto y puntos"));
}

TEST_F(TeclasLeeTecladoTest, LinesThatMakeNoSenseAreRefused) {
    for (const char *linea : {"", "0", "001", "0x131Intro", "1", "1x046", "1004", "12046", "12046x33", "10Nada",
                              "11000Nulo", "111290hueco", "19033033033033033033033033033Nueve"})
        EXPECT_FALSE(cTeclasLeeTeclado::LeeLinea(QLatin1String(linea))) << linea;
    EXPECT_TRUE(cTeclasLeeTeclado::LeeLinea(QStringLiteral("18033033033033033033033033")));
    EXPECT_TRUE(cTeclasLeeTeclado::LeeLinea(QStringLiteral("0013")));
}

TEST_F(TeclasLeeTecladoTest, ABadLineCostsALogLineAndNoMore) {
    Fichero("00131Intro\r\nbasura\r\n110631Pregunta\r\n");
    EXPECT_THAT(Marcadas(), ElementsAre("k013", "c?"));
    ASSERT_EQ(almacen.LineasLog().size(), 1);
    EXPECT_TRUE(almacen.LineasLog()[0].contains(QStringLiteral("TeclasLeeTeclado.CargaTeclas: ")));
    EXPECT_TRUE(almacen.LineasLog()[0].contains(QStringLiteral("la línea 2")));
}

TEST_F(TeclasLeeTecladoTest, TheFileIsInWindows1252) {
    Fichero(
        "111331Puntos \x85 y se\xF1"
        "as\n");
    EXPECT_EQ(teclas->ListaTeclas().at(0).rotulo, QString::fromUtf8("Puntos … y señas"));
    EXPECT_TRUE(teclas->ExistenCharsParaLeer(QString::fromUtf8("y luego…")));
}

TEST_F(TeclasLeeTecladoTest, WithoutASettingTheDefaultsOfTheFileHold) {
    Fichero("00131Intro\n00090Tabulador\n110631Pregunta\n");
    EXPECT_EQ(teclas->Tag(), QStringLiteral("4k0132c?"));
    EXPECT_TRUE(teclas->EsTeclaParaLeer(13));
    EXPECT_FALSE(teclas->EsTeclaParaLeer(9));
    EXPECT_TRUE(teclas->ExistenCharsParaLeer(QStringLiteral("¿sí?")));
    EXPECT_FALSE(teclas->ExistenCharsParaLeer(QStringLiteral("sí")));
}

TEST_F(TeclasLeeTecladoTest, TheStoredChoiceHoldsAgainstTheDefaults) {
    Guardado(QStringLiteral("4k009"));
    Fichero("00131Intro\n00090Tabulador\n");
    EXPECT_THAT(Marcadas(), ElementsAre("k009"));
    EXPECT_FALSE(teclas->EsTeclaParaLeer(13));
    EXPECT_TRUE(teclas->EsTeclaParaLeer(9));
}

TEST_F(TeclasLeeTecladoTest, AnEmptyTagMakesBothAnswersFalse) {
    Guardado(QString());
    Fichero("00131Intro\n110631Pregunta\n");
    EXPECT_FALSE(teclas->EsTeclaParaLeer(13));
    EXPECT_FALSE(teclas->ExistenCharsParaLeer(QStringLiteral("?")));
}

TEST_F(TeclasLeeTecladoTest, AGroupIsSearchedWholeAndByCase) {
    Guardado(QStringLiteral("3c. 3cFi"));
    Fichero("00131Intro\n");
    EXPECT_FALSE(teclas->ExistenCharsParaLeer(QStringLiteral("3.14 fi")));
    EXPECT_TRUE(teclas->ExistenCharsParaLeer(QStringLiteral("uno. Dos")));
    EXPECT_TRUE(teclas->ExistenCharsParaLeer(QStringLiteral("Fin")));
}

TEST_F(TeclasLeeTecladoTest, AChoiceThatTheFileNoLongerHasAnswersUntilTheNextSave) {
    Guardado(QStringLiteral("4k0132c#"));
    Fichero("00131Intro\n");
    EXPECT_THAT(Marcadas(), ElementsAre("k013"));
    EXPECT_TRUE(teclas->ExistenCharsParaLeer(QStringLiteral("#")));
    teclas->Acepta();
    EXPECT_EQ(Guardado(), QStringLiteral("4k013"));
    EXPECT_FALSE(teclas->ExistenCharsParaLeer(QStringLiteral("#")));
}

TEST_F(TeclasLeeTecladoTest, TheFinalCharacterStartsNoEntry) {
    std::vector<std::string> vistas;
    const auto anota = [&](QChar clase, const QString &datos) {
        vistas.push_back((QString(clase) + datos).toStdString());
        return false;
    };
    cTeclasLeeTeclado::Recorre(QStringLiteral("4k0132c?2"), anota);
    EXPECT_THAT(vistas, ElementsAre("k013", "c?"));
}

TEST_F(TeclasLeeTecladoTest, ADamagedTagEndsTheWalk) {
    const auto visita = [](QChar, const QString &datos) { return datos == QLatin1String("013"); };
    EXPECT_TRUE(cTeclasLeeTeclado::Recorre(QStringLiteral("2c?4k013"), visita));
    for (const char *tag : {"xk013", "0k013", "2c?x4k013", "9"})
        EXPECT_FALSE(cTeclasLeeTeclado::Recorre(QLatin1String(tag), visita)) << tag;
}

TEST_F(TeclasLeeTecladoTest, AStoredTextThatIsNoChoiceIsTheDefaultAndLogged) {
    for (const char *tag : {"disparate", "xk013", "0k013", "4k01", "1c", "1k", "9", "4k0x3", "2c#9x"}) {
        Guardado(QLatin1String(tag));
        const qsizetype antes = almacen.LineasLog().size();
        Fichero("00131Intro\n");
        EXPECT_TRUE(teclas->EsTeclaParaLeer(13)) << tag;
        EXPECT_FALSE(teclas->ExistenCharsParaLeer(QStringLiteral("x#"))) << tag;
        ASSERT_EQ(almacen.LineasLog().size(), antes + 1) << tag;
        EXPECT_TRUE(almacen.LineasLog().last().endsWith("[TipoLectura\\TeclasLeeTeclado]"));
    }
}

TEST_F(TeclasLeeTecladoTest, AnAcceptedChoiceIsStoredAndReadAgain) {
    Fichero("00131Intro\n120460321Punto y espacio\n111331Puntos\n110590Punto y coma\n");
    teclas->ListaTeclas();
    teclas->Marca(0, false);
    teclas->Marca(3, true);
    teclas->Acepta();
    EXPECT_EQ(Guardado(), QString::fromUtf8("3c. 2c…2c;"));
    Crea();
    EXPECT_THAT(Marcadas(), ElementsAre("c. ", "c\u2026", "c;"));
}

TEST_F(TeclasLeeTecladoTest, ACancelledChoiceGoesBack) {
    Fichero("00131Intro\n00090Tabulador\n");
    teclas->ListaTeclas();
    teclas->Marca(1, true);
    teclas->EstableceValores();
    EXPECT_THAT(Marcadas(), ElementsAre("k013"));
}

TEST_F(TeclasLeeTecladoTest, WithoutTheFileBothAnswersAreFalseAndTheLogSaysSoOnce) {
    Guardado(QStringLiteral("4k013"));
    Crea();
    EXPECT_FALSE(teclas->EsTeclaParaLeer(13));
    EXPECT_FALSE(teclas->ExistenCharsParaLeer(QStringLiteral("?")));
    ASSERT_EQ(almacen.LineasLog().size(), 1);
    EXPECT_TRUE(almacen.LineasLog()[0].contains(QStringLiteral("TeclasLeeTeclado.CargaTeclas: ")));
    EXPECT_TRUE(mensajes.cajas.empty());
    teclas->Acepta();
    EXPECT_EQ(Guardado(), QStringLiteral("4k013"));  // not lost with the file
}

TEST_F(TeclasLeeTecladoTest, WhoOpensTheWindowIsToldOfAMissingFileAndAFileThatCameIsTaken) {
    Crea();
    EXPECT_FALSE(teclas->EsTeclaParaLeer(13));
    teclas->Carga(cGeneral::Aviso::Mensaje);
    ASSERT_EQ(mensajes.cajas.size(), 1U);
    EXPECT_TRUE(mensajes.cajas[0].texto.startsWith(QStringLiteral("TeclasLeeTeclado.CargaTeclas: ")));
    almacen.Escribe(almacen.Ruta(QStringLiteral("datos/codstcd.dat")), "00131Intro\n");
    teclas->Carga(cGeneral::Aviso::Mensaje);
    EXPECT_TRUE(teclas->EsTeclaParaLeer(13));
    EXPECT_EQ(mensajes.cajas.size(), 1U);
}

TEST_F(TeclasLeeTecladoTest, TheShippedFileIsWhole) {
    teclas.emplace(almacen.Registro(), general, QStringList{QStringLiteral(DATOS_DEL_PROGRAMA)});
    EXPECT_GE(teclas->ListaTeclas().size(), 15U);
    EXPECT_TRUE(almacen.LineasLog().isEmpty());
    EXPECT_TRUE(teclas->EsTeclaParaLeer(13));
    for (const char *texto : {"hola?", "hola!", "hola. ", "hola…"})
        EXPECT_TRUE(teclas->ExistenCharsParaLeer(QString::fromUtf8(texto))) << texto;
    for (const FilaTeclaLectura &fila : teclas->ListaTeclas()) EXPECT_FALSE(fila.rotulo.isEmpty());
}

}  // namespace
}  // namespace ondalis::prueba
