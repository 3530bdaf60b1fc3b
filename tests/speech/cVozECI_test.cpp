// The adapter alone, on scripted operations: which it calls, with what, and what it makes of their answers.
#include "speech/cVozECI.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "engine/HablantesIBM.h"
#include "fakes/RegistroPropio.h"

namespace ondalis::prueba {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the operations were told, and what they answer.
struct Guion {
    Guion();
    std::vector<std::string> llamadas;
    std::set<std::string> fallan;  // "destino", "texto N" (the N-th of a speech), "habla"
    std::int16_t hablando = 0;
    std::string error = "motor roto";
    std::string cola;  // what the buffer holds behind the error's zero
    int textos = 0;
};
Guion *g_guion = nullptr;
Guion::Guion() { g_guion = this; }

std::int16_t Responde(const std::string &nombre) { return g_guion->fallan.contains(nombre) ? 0 : 1; }
void Anota(const std::string &llamada) { g_guion->llamadas.push_back(llamada); }

OperacionesECI Guionadas() {
    OperacionesECI o;
    o.crea = [] { Anota("crea"); };
    o.borra = [] { Anota("borra"); };
    o.restaura = [] { Anota("restaura"), g_guion->textos = 0; };
    o.calla = [] { Anota("calla"); };
    o.setDestino = [](const char *ruta) { return Anota(std::string("destino ") + ruta), Responde("destino"); };
    o.addTexto = [](const char *texto) {
        return Anota(std::string("texto ") + texto), Responde("texto " + std::to_string(++g_guion->textos));
    };
    o.habla = [](std::int16_t espera) { return Anota("habla " + std::to_string(espera)), Responde("habla"); };
    o.estaHablando = [] { return g_guion->hablando; };
    o.ultimoError = [](char *bufer) {
        const std::string todo = g_guion->error + '\0' + g_guion->cola;
        std::copy_n(todo.begin(), std::min<std::size_t>(todo.size(), 256), bufer);
    };
    return o;
}

class cVozECITest : public testing::Test {
protected:
    QString Fichero(const char *nombre, const QByteArray &bytes) {
        const QString ruta = carpeta.filePath(QLatin1String(nombre));
        QFile fichero(ruta);
        EXPECT_TRUE(fichero.open(QIODevice::WriteOnly));
        fichero.write(bytes);
        return ruta;
    }
    std::vector<std::string> Saca() { return std::exchange(guion.llamadas, {}); }
    // The annotation that a speech begins with.
    std::string Anotacion(const QString &nombre, std::int32_t lengua) {
        voz.SetHablante(nombre, lengua);
        guion.llamadas.clear();
        EXPECT_TRUE(voz.Habla(QStringLiteral("x"), false, QString(), false));
        const std::string texto = guion.llamadas.at(2);
        return texto.substr(6, texto.find("`vs") - 6);
    }
    QString Motivo() const { return QStringLiteral("motor roto") + QString(246, QChar(u'\0')); }

    QTemporaryDir carpeta;
    Guion guion;
    RegistroPropio registro;
    cVozECI voz{registro.Log(), Guionadas()};
};

TEST_F(cVozECITest, TheVoiceIsMadeOnceAndGivenBackAtTheEnd) {
    {
        const cVozECI otra(registro.Log(), Guionadas());
        EXPECT_THAT(guion.llamadas, ElementsAre("crea", "crea"));
    }
    EXPECT_EQ(guion.llamadas.back(), "borra");
}

TEST_F(cVozECITest, ASpeechIsPrefixBlankAndTextInOneGoBehindAStopAndARestore) {
    voz.SetHablante(QStringLiteral("Carlos"), 1034);
    voz.SetVelocidad(170);
    voz.SetVolumen(65000);
    Saca();
    EXPECT_TRUE(voz.Habla(QStringLiteral("el año"), true, QString(), false));
    EXPECT_THAT(guion.llamadas, ElementsAre("calla", "restaura", "texto `l2.0`v1`vs170`vv65000 el año", "habla 1"));
    EXPECT_EQ(voz.UltimoError(), QStringLiteral("cVozECI: "));
}

TEST_F(cVozECITest, TheAdvancedValuesComeBehindOnlyWhenAskedFor) {
    voz.SetHablante(QStringLiteral("Opa"), 0);
    voz.SetVelocidad(-7);
    voz.SetVolumen(-100000);
    voz.SetAvanzados(106, 50, -1, 10, 32767);
    Saca();
    EXPECT_TRUE(voz.Habla(QString(), false, QStringLiteral("~temp.wav"), true));
    EXPECT_THAT(guion.llamadas, ElementsAre("calla", "restaura", "destino ~temp.wav",
                                            "texto `l4.0`v8`vs-7`vv-100000`vb106`vf50`vr-1`vy10`vh32767 ", "habla 0"));
}

TEST_F(cVozECITest, NoValueIsSetUntilACallerSetsIt) {
    Saca();
    EXPECT_TRUE(voz.Habla(QStringLiteral("hola"), false, QString(), true));
    EXPECT_EQ(guion.llamadas.at(2), "texto `vs0`vv0`vb0`vf0`vr0`vy0`vh0 hola");
}

TEST_F(cVozECITest, EachVoiceOfTheCatalogueHasItsOwnAnnotation) {
    for (const HablanteIBM &h : HablantesIBM()) {
        // A row that comes earlier and whose name occurs in this one wins: none does among the thirty.
        EXPECT_EQ(Anotacion(QString::fromUtf8(h.nombre), 0),
                  std::string("`l") + h.dialecto + "`v" + std::to_string(h.preset))
            << h.nombre;
    }
}

TEST_F(cVozECITest, TheFirstRowWhoseNameOccursInTheArgumentWinsLetterForLetter) {
    EXPECT_EQ(Anotacion(QStringLiteral("La voz de Pilar, no de Pepe"), 1033), "`l2.0`v2");
    EXPECT_EQ(Anotacion(QStringLiteral("Pepe y Pilar"), 1033), "`l2.0`v2");
    EXPECT_EQ(Anotacion(QStringLiteral("CARLOS"), 1033), "`l1.0");
    EXPECT_EQ(Anotacion(QStringLiteral("Abuelo"), 0), "`l2.0`v8");
}

TEST_F(cVozECITest, AVoiceOfAnotherMakerSelectsItsLanguageWithoutAVoiceNumber) {
    const std::pair<int, const char *> filas[] = {{1030, "`115.0"}, {1031, "`l4.0"}, {1033, "`l1.0"},  {1034, "`l2.0"},
                                                  {1035, "`19.0"},  {1036, "`l3.0"}, {1040, "`l5.0"},  {1041, "`l8.0"},
                                                  {1044, "`113.0"}, {1046, "`l7.0"}, {1053, "`114.0"}, {2057, "`l1.1"},
                                                  {2070, "`l7"}};
    for (const auto &[lcid, anotacion] : filas) EXPECT_EQ(Anotacion(QStringLiteral("Anna"), lcid), anotacion) << lcid;
}

TEST_F(cVozECITest, AnUnknownNameOfAnUnknownLanguageLeavesThePrefixWithoutAnAnnotation) {
    voz.SetHablante(QStringLiteral("Carlos"), 1034);
    EXPECT_EQ(Anotacion(QStringLiteral("Anna"), 3082), "");
    EXPECT_EQ(Anotacion(QString(), 0), "");
    EXPECT_TRUE(guion.llamadas.at(2).starts_with("texto `vs"));
}

TEST_F(cVozECITest, AnEmptyTextStillSendsPrefixAndBlankAndStartsTheEngine) {
    Saca();
    EXPECT_TRUE(voz.Habla(QString(), false, QString(), false));
    EXPECT_THAT(guion.llamadas, ElementsAre("calla", "restaura", "texto `vs0`vv0 ", "habla 0"));
}

TEST_F(cVozECITest, AFileIsThePrefixAloneAndThenItsContent) {
    const QString ruta = Fichero("a.txt", "el a\xF1o `vs90");
    Saca();
    EXPECT_TRUE(voz.HablaFichero(ruta, true, QStringLiteral("/x/y.wav"), false));
    EXPECT_THAT(guion.llamadas, ElementsAre("calla", "restaura", "destino /x/y.wav", "texto `vs0`vv0",
                                            "texto el año `vs90", "habla 1"));
}

TEST_F(cVozECITest, AZeroInATextOrFileIsABlankAndCutsNothingOff) {
    Saca();
    EXPECT_TRUE(voz.Habla(QStringLiteral("uno") + QChar(u'\0') + QStringLiteral("dos"), false, QString(), false));
    EXPECT_EQ(guion.llamadas.at(2), "texto `vs0`vv0 uno dos");
    Saca();
    EXPECT_TRUE(voz.HablaFichero(Fichero("a.txt", QByteArray("uno\0dos", 7)), false, QString(), false));
    EXPECT_EQ(guion.llamadas.at(3), "texto uno dos");
}

TEST_F(cVozECITest, AnEmptyFileFailsWithTheRunTimeErrorsDescriptionAndIsNotSpoken) {
    const QString ruta = Fichero("vacio.txt", "");
    Saca();
    EXPECT_FALSE(voz.HablaFichero(ruta, true, QString(), false));
    EXPECT_THAT(guion.llamadas, ElementsAre("calla", "restaura", "texto `vs0`vv0"));
    EXPECT_EQ(voz.UltimoError(), QStringLiteral("cVozECI: Argumento o llamada a procedimiento no válidos (5)"));
}

TEST_F(cVozECITest, AMissingFileIsAClearErrorWithOneLogLine) {
    EXPECT_FALSE(voz.HablaFichero(QStringLiteral("/no/existe.txt"), true, QString(), false));
    EXPECT_EQ(voz.UltimoError(), QStringLiteral("cVozECI: No se encontró el archivo (53)"));
    ASSERT_EQ(registro.LineasLog().size(), 1);
    EXPECT_TRUE(registro.LineasLog().back().endsWith(
        QStringLiteral("cVozECI.HablaFichero:  [No se encontró el archivo (53)]")));
}

TEST_F(cVozECITest, ErrorsHaveTheStepsTextALineEndAndTheEnginesWhole256Characters) {
    const QString ruta = Fichero("a.txt", "hola");
    const auto error = [this](const char *falla, bool fichero, const QString &entrada) {
        guion.fallan = {falla};
        const QString destino = QStringLiteral("/x.wav");
        EXPECT_FALSE(fichero ? voz.HablaFichero(entrada, false, destino, false)
                             : voz.Habla(entrada, false, destino, false));
        return voz.UltimoError();
    };
    const auto esperado = [this](const char *texto) {
        return QStringLiteral("cVozECI: ") + QString::fromUtf8(texto) + QStringLiteral("\r\n") + Motivo();
    };
    EXPECT_EQ(error("destino", false, QString()), esperado("Error al establecer el fichero de grabación /x.wav"));
    EXPECT_EQ(error("destino", true, ruta), esperado("Error al establecer el fichero de audio /x.wav"));
    EXPECT_EQ(error("texto 1", true, ruta), esperado("Error al establecer los parámetros de voz"));
    EXPECT_EQ(error("texto 1", false, QString()), esperado("Error al establecer el texto para leer"));
    EXPECT_EQ(error("texto 2", true, ruta), esperado("Error al establecer el texto para leer"));
    EXPECT_EQ(error("habla", false, QString()), esperado("Error al realizar la lectura"));
    EXPECT_EQ(error("habla", true, ruta), esperado("Error al realizar la lectura"));
    ASSERT_EQ(registro.LineasLog().size(), 7);
    EXPECT_TRUE(registro.LineasLog().front().endsWith(
        QStringLiteral("cVozECI.Habla:  [Error al establecer el fichero de grabación /x.wav  motor roto]")));
    EXPECT_FALSE(registro.LineasLog().join(QLatin1Char(' ')).contains(QChar(u'\0')));
}

TEST_F(cVozECITest, WhatLiesBehindTheEnginesErrorStaysPartOfItAndAnUnendedOneIsNoHarm) {
    guion.fallan = {"habla"};
    guion.cola = "resto";
    EXPECT_FALSE(voz.Habla(QString(), false, QString(), false));
    EXPECT_TRUE(voz.UltimoError().contains(QStringLiteral("motor roto") + QChar(u'\0') + QStringLiteral("resto")));
    guion.error = std::string(300, 'x');
    EXPECT_FALSE(voz.Habla(QString(), false, QString(), false));
    EXPECT_TRUE(voz.UltimoError().endsWith(QStringLiteral("\r\n") + QString(256, QLatin1Char('x'))));
}

TEST_F(cVozECITest, AFailedStepEndsTheSpeechAndNothingIsCleanedUp) {
    guion.fallan = {"destino"};
    Saca();
    EXPECT_FALSE(voz.Habla(QStringLiteral("hola"), true, QStringLiteral("/x.wav"), false));
    EXPECT_THAT(Saca(), ElementsAre("calla", "restaura", "destino /x.wav"));
    guion.fallan = {"texto 1"};
    EXPECT_FALSE(voz.HablaFichero(QStringLiteral("/no/existe.txt"), true, QString(), false));
    EXPECT_THAT(Saca(), ElementsAre("calla", "restaura", "texto `vs0`vv0"));
    guion.fallan = {};
    EXPECT_TRUE(voz.Habla(QStringLiteral("hola"), true, QString(), false));
    EXPECT_EQ(voz.UltimoError(), QStringLiteral("cVozECI: "));  // a success leaves none
}

TEST_F(cVozECITest, ItIsSpeakingForTheAnswerOneAlone) {
    for (const std::int16_t respuesta : {0, 2, -1}) {
        guion.hablando = respuesta;
        EXPECT_FALSE(voz.EstaHablando()) << respuesta;
    }
    guion.hablando = 1;
    EXPECT_TRUE(voz.EstaHablando());
}

TEST_F(cVozECITest, CancelIsAStopAndNothingElse) {
    Saca();
    voz.Cancela();
    EXPECT_THAT(guion.llamadas, ElementsAre("calla"));
}

}  // namespace
}  // namespace ondalis::prueba
