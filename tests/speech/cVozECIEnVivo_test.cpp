#include "speech/cVozECIEnVivo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include "ControlDePrueba.h"
#include "fakes/TokensFalsos.h"
#include "speech/SpVoice.h"
#include "speech/Voces.h"

namespace ondalis::prueba {
namespace {

class cVozECIEnVivoTest : public testing::Test {
protected:
    QString Fichero(const char *nombre, const QByteArray &bytes) {
        const QString ruta = carpeta.filePath(QLatin1String(nombre));
        QFile fichero(ruta);
        EXPECT_TRUE(fichero.open(QIODevice::WriteOnly));
        fichero.write(bytes);
        return ruta;
    }
    bool Espera(const QString &ruta) { return voz.HablaFichero(ruta, true, QString(), false); }
    const ParametrosVoz &Dicho() { return banco.canal.locuciones.back().voz; }

    QTemporaryDir carpeta;
    Banco banco;
    cVozECIEnVivo voz{banco.canal, banco.cola, banco.registro.Log()};
};

TEST_F(cVozECIEnVivoTest, AFileIsSpokenAsItStandsAndTheCallWaitsForItsEnd) {
    banco.canal.alHablar = [this] { QTimer::singleShot(0, &banco.cola, [this] { banco.canal.Fin(); }); };
    EXPECT_TRUE(Espera(Fichero("a.txt", "el a\xF1o \\Spd=300\\ <b>")));
    EXPECT_EQ(banco.canal.Texto(), u"el año \\Spd=300\\ <b>");
    EXPECT_FALSE(banco.canal.sonando);
    EXPECT_EQ(voz.UltimoError(), QStringLiteral("cVozECI: "));
}

TEST_F(cVozECIEnVivoTest, CancelledFromOutsideItFallsSilentAndTheCallReturnsWithoutAFailure) {
    banco.canal.alHablar = [this] { QTimer::singleShot(0, &banco.cola, [this] { voz.Cancela(); }); };
    EXPECT_TRUE(Espera(Fichero("a.txt", "hola")));
    EXPECT_FALSE(banco.canal.sonando);
    EXPECT_EQ(banco.canal.ordenes.back(), "detiene");
}

TEST_F(cVozECIEnVivoTest, NothingOfTheQueueRunsWhileItWaitsAndTheSessionsStateIsLeftAlone) {
    banco.estado.valor = cEstadoVoz::Remota;
    bool dentro = true, corrioDentro = false;
    banco.cola.Pon(cCola::Clase::Orden, [&] { corrioDentro = dentro; });
    banco.canal.alHablar = [this] { QTimer::singleShot(0, &banco.cola, [this] { banco.canal.Fin(); }); };
    EXPECT_TRUE(Espera(Fichero("a.txt", "hola")));
    dentro = false;
    banco.cola.DejaCorrer();
    EXPECT_FALSE(corrioDentro);
    EXPECT_EQ(banco.estado.valor, cEstadoVoz::Remota);
}

TEST_F(cVozECIEnVivoTest, WithoutTheAdvancedValuesTheVoicesOwnHold) {
    voz.SetHablante(QStringLiteral("La voz de Pilar, joven"), 1033);
    voz.SetVelocidad(200);
    voz.SetVolumen(32500);
    voz.SetAvanzados(300, 1, 2, 3, 4);
    const QString ruta = Fichero("a.txt", "hola");
    EXPECT_TRUE(voz.HablaFichero(ruta, false, QString(), false));
    const auto &todos = HablantesIBM();
    const auto pilar =
        std::ranges::find_if(todos, [](const HablanteIBM &h) { return std::string_view(h.nombre) == "Pilar"; });
    ASSERT_NE(pilar, todos.end());
    EXPECT_EQ(Dicho().tono, pilar->tono);
    EXPECT_EQ(Dicho().tamCabeza, pilar->tamCabeza);
    EXPECT_EQ(Dicho().velocidad, 200);
    EXPECT_NEAR(Dicho().ganancia, 0.5, 1e-9);
    EXPECT_TRUE(voz.HablaFichero(ruta, false, QString(), true));
    EXPECT_EQ(Dicho().tono, 300);
    EXPECT_EQ(Dicho().tamCabeza, 4);
}

TEST_F(cVozECIEnVivoTest, AnUnknownNameTakesTheLanguageAndAnUnknownLanguageCarlos) {
    const QString ruta = Fichero("a.txt", "hola");
    voz.SetHablante(QStringLiteral("Microsoft Anna"), 1031);
    EXPECT_TRUE(voz.HablaFichero(ruta, false, QString(), false));
    EXPECT_EQ(Dicho().voz, std::ranges::find(HablantesIBM(), 1031, &HablanteIBM::lengua)->idioma);
    voz.SetHablante(QStringLiteral("Microsoft Anna"), 1);
    EXPECT_TRUE(voz.HablaFichero(ruta, false, QString(), false));
    EXPECT_EQ(Dicho().voz, HablanteDeModo(QString()).idioma);
}

TEST_F(cVozECIEnVivoTest, AMissingFileIsAClearErrorAndNothingBlocks) {
    EXPECT_FALSE(Espera(QStringLiteral("/no/existe.txt")));
    EXPECT_EQ(voz.UltimoError(), QStringLiteral("cVozECI: No se encontró el archivo (53)"));
    EXPECT_THAT(banco.canal.ordenes, testing::IsEmpty());
    ASSERT_EQ(banco.registro.LineasLog().size(), 1);
    EXPECT_TRUE(banco.registro.LineasLog().back().contains(QStringLiteral("cVozECI.HablaFichero: ")));
}

TEST_F(cVozECIEnVivoTest, AnEmptyFileFailsAndATargetFileToo) {
    EXPECT_FALSE(Espera(Fichero("vacio.txt", "")));
    EXPECT_FALSE(voz.HablaFichero(Fichero("a.txt", "hola"), true, QStringLiteral("/tmp/x.wav"), false));
    EXPECT_TRUE(voz.UltimoError().contains(QStringLiteral("fichero de audio /tmp/x.wav")));
    banco.canal.alHablar = [this] { QTimer::singleShot(0, &banco.cola, [this] { banco.canal.Fin(); }); };
    EXPECT_TRUE(Espera(Fichero("a.txt", "hola")));
    EXPECT_EQ(voz.UltimoError(), QStringLiteral("cVozECI: "));  // a success leaves no error
}

// SAPI 5: the same without a notice's state.

TEST_F(cVozECIEnVivoTest, AWaitingSpeechOfSAPI5IsNoNoticeAndItsEventsComeAfterwardsWithoutWords) {
    TokensFalsos tokens{TokensFalsos::Tres()};
    CanalGuionado canal;
    SpVoice sapi5(canal, tokens, banco.cola, banco.estado, banco.registro.Log());
    sapi5.SetEventos(banco.Eventos());
    canal.alHablar = [&] {
        QTimer::singleShot(0, &banco.cola, [&] {
            canal.Palabra(0);
            canal.Fin();
        });
    };
    EXPECT_FALSE(sapi5.Speak(QStringLiteral("hola"), SpVoice::XML));
    EXPECT_THAT(banco.diario, testing::IsEmpty());
    EXPECT_EQ(banco.estado.valor, cEstadoVoz::Lectura);
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.diario, testing::ElementsAre("Start", "Stop 0"));
}

TEST_F(cVozECIEnVivoTest, AWaitingSpeechOfSAPI5IsSilencedFromOutside) {
    TokensFalsos tokens{TokensFalsos::Tres()};
    CanalGuionado canal;
    SpVoice sapi5(canal, tokens, banco.cola, banco.estado, banco.registro.Log());
    canal.alHablar = [&] {
        QTimer::singleShot(0, &banco.cola, [&] { EXPECT_FALSE(sapi5.Speak(QString(), SpVoice::Purga)); });
    };
    EXPECT_FALSE(sapi5.Speak(QStringLiteral("hola"), SpVoice::XML));
    EXPECT_FALSE(canal.sonando);
}

}  // namespace
}  // namespace ondalis::prueba
