// The adapter on the real operations, a scripted channel and the queue: what is waited for, and what is cut.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include "ControlDePrueba.h"
#include "fakes/CarpetaPropia.h"
#include "fakes/LectorWav.h"
#include "libs/ondalis_eci_servicio.h"
#include "speech/cVozECI.h"

namespace ondalis::prueba {
namespace {

class cVozECIEnCanal : public testing::Test {
protected:
    QString Fichero(const char *nombre, const QByteArray &bytes) {
        carpeta.Escribe(nombre, bytes.toStdString());
        return Ruta(nombre);
    }
    QString Ruta(const char *nombre) const { return QString::fromStdString(carpeta.Ruta(nombre)); }
    bool Espera(const QString &ruta) { return voz.HablaFichero(ruta, true, QString(), false); }
    // `accion` comes in from the event loop while the speech that begins next is waited for.
    void Mientras(CanalGuionado &canal, std::function<void()> accion) {
        canal.alHablar = [this, accion] { QTimer::singleShot(0, &banco.cola, accion); };
    }

    CarpetaPropia carpeta;
    Banco banco;
    CanalGuionado ficheros;
    cSalidaFichero salida;
    cServicioECI servicio{{.vivo = &banco.canal,
                           .fichero = &ficheros,
                           .salida = &salida,
                           .espera = [this](const auto &listo) { banco.cola.EsperaBloqueando(listo, -1); },
                           .despierta = [this] { banco.cola.Despierta(); },
                           .avisa = [](const std::u16string &) {}}};
    cVozECI voz{banco.registro.Log()};
};

TEST_F(cVozECIEnCanal, AFileIsSpokenWholeWithItsAnnotationsAndTheCallWaitsForItsEnd) {
    Mientras(banco.canal, [this] { banco.canal.Fin(); });
    EXPECT_TRUE(Espera(Fichero("a.txt", "el a\xF1o \\Spd=300\\ <b>`vs200 x")));
    EXPECT_EQ(banco.canal.Texto(), u" el año \\Spd=300\\ <b> x");
    EXPECT_FALSE(banco.canal.sonando);
    EXPECT_EQ(voz.UltimoError(), QStringLiteral("cVozECI: "));
}

TEST_F(cVozECIEnCanal, CancelledFromOutsideItFallsSilentAndTheCallReturnsWithoutAFailure) {
    Mientras(banco.canal, [this] { voz.Cancela(); });
    EXPECT_TRUE(Espera(Fichero("a.txt", "hola")));
    EXPECT_FALSE(banco.canal.sonando);
    EXPECT_EQ(banco.canal.ordenes.back(), "detiene");
    EXPECT_FALSE(voz.EstaHablando());
}

TEST_F(cVozECIEnCanal, NothingOfTheQueueRunsWhileItWaitsAndTheSessionsStateIsLeftAlone) {
    banco.estado.valor = cEstadoVoz::Remota;
    bool dentro = true, corrioDentro = false;
    banco.cola.Pon(cCola::Clase::Orden, [&] { corrioDentro = dentro; });
    Mientras(banco.canal, [this] { banco.canal.Fin(); });
    EXPECT_TRUE(Espera(Fichero("a.txt", "hola")));
    dentro = false;
    banco.cola.DejaCorrer();
    EXPECT_FALSE(corrioDentro);
    EXPECT_EQ(banco.estado.valor, cEstadoVoz::Remota);
}

TEST_F(cVozECIEnCanal, AFileThatBeginsWithDigitsLosesNoneToTheAnnotationBefore) {
    Mientras(banco.canal, [this] { banco.canal.Fin(); });
    voz.SetVelocidad(170);
    EXPECT_TRUE(Espera(Fichero("a.txt", "2024 fue")));
    EXPECT_EQ(banco.canal.Texto(), u" 2024 fue");
}

TEST_F(cVozECIEnCanal, LanguagesWithoutAVoiceOfOursAreNotReadOutAtTheHeadOfEachSpeech) {
    for (const int lcid : {1030, 1035, 1041, 1044, 1046, 1053, 2070}) {
        voz.SetHablante(QStringLiteral("Anna"), lcid);
        EXPECT_TRUE(voz.Habla(QStringLiteral("hej `115.0"), false, QString(), false));
        EXPECT_EQ(banco.canal.Texto(), u" hej `115.0") << lcid;
    }
}

TEST_F(cVozECIEnCanal, WithoutWaitingTheSpeechIsAskedForUntilItsEnd) {
    EXPECT_TRUE(voz.Habla(QStringLiteral("hola"), false, QString(), false));
    EXPECT_TRUE(voz.EstaHablando());
    banco.canal.Fin();
    EXPECT_FALSE(voz.EstaHablando());
    EXPECT_TRUE(voz.Habla(QStringLiteral("hola"), false, QString(), false));
    voz.Cancela();
    EXPECT_FALSE(voz.EstaHablando());
    EXPECT_FALSE(banco.canal.sonando);
}

TEST_F(cVozECIEnCanal, ARecordingCancelledWhileItIsWaitedForLeavesAPlayableFile) {
    const std::vector<std::int16_t> muestras(5000, 7);
    Mientras(ficheros, [&] {
        salida.Abre(11025);
        salida.Escribe(muestras.data(), muestras.size());
        voz.Cancela();
    });
    EXPECT_TRUE(voz.HablaFichero(Fichero("a.txt", "hola"), true, Ruta("a.wav"), true));
    const auto wav = LeeWav(carpeta.Lee("a.wav"));
    ASSERT_TRUE(wav);
    EXPECT_EQ(wav->muestras, muestras);
    EXPECT_EQ(ficheros.ordenes.back(), "detiene");
    EXPECT_THAT(banco.canal.ordenes, testing::IsEmpty());
}

TEST_F(cVozECIEnCanal, ATargetThatCannotBeWrittenIsToldWithItsPathAndTheReason) {
    EXPECT_FALSE(voz.Habla(QStringLiteral("hola"), true, Ruta("no/a.wav"), false));
    EXPECT_TRUE(voz.UltimoError().startsWith(QStringLiteral("cVozECI: Error al establecer el fichero de grabación ") +
                                             Ruta("no/a.wav") + QStringLiteral("\r\nNo existe la carpeta")));
    EXPECT_THAT(ficheros.ordenes, testing::IsEmpty());
}

TEST_F(cVozECIEnCanal, ItsEndSilencesWhatIsSounding) {
    {
        cVozECI otra(banco.registro.Log());
        EXPECT_TRUE(otra.Habla(QStringLiteral("hola"), false, QString(), false));
        EXPECT_TRUE(banco.canal.sonando);
    }
    EXPECT_FALSE(banco.canal.sonando);
}

}  // namespace
}  // namespace ondalis::prueba
