#include "speech/MotorVoz.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTemporaryFile>
#include <QTimer>

#include "ControlDePrueba.h"
#include "fakes/TokensFalsos.h"
#include "fakes/VozECIFalsa.h"

namespace ondalis::prueba {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Both engine objects, each on a channel of its own, and a page that stands on the family asked for.
struct Mesa {
    explicit Mesa(const char *fabricante, const char *nombre, bool haySAPI5 = true) {
        voces.ChequeaSAPI5Compatible([] { return true; });
        voces.RecogeVocesEquipo(&tokens, false, {});
        voces.LeeValoresVoces(voz);
        banco.registro.Salva(QStringLiteral("Voz"), QStringLiteral("FabricanteActivo"), QLatin1String(fabricante));
        banco.registro.Salva(QStringLiteral("Voz"), QStringLiteral("VozActiva"), QLatin1String(nombre));
        opciones = std::make_unique<cOpcVoz>(banco.registro.Registro(), banco.registro.Log(), voces, true);
        motor = std::make_unique<MotorVoz>(voz, haySAPI5 ? &sapi5 : nullptr, &eci, *opciones);
        voz.SetEventos(banco.Eventos());
        sapi5.SetEventos(banco.Eventos());
    }
    const ParametrosVoz &Dicho() { return banco.canal.locuciones.back().voz; }

    Banco banco;
    CanalGuionado canalSAPI5;
    TokensFalsos tokens{TokensFalsos::Tres()};
    cVoces voces{banco.registro.Log()};
    ActorSvr voz{banco.canal, banco.cola, banco.estado, banco.registro.Log()};
    SpVoice sapi5{canalSAPI5, tokens, banco.cola, banco.estado, banco.registro.Log()};
    VozECIFalsa eci;
    std::unique_ptr<cOpcVoz> opciones;
    std::unique_ptr<MotorVoz> motor;
};

// A test of a voice may be of the family that isn't accepted.

TEST(MotorVoz, AReadingSilencesATestOfTheOtherFamilyAndBeginsUnderItsOwnState) {
    Mesa mesa("eSpeak NG", "Spanish");
    mesa.banco.estado.valor = cEstadoVoz::Aviso;
    mesa.voz.SetTexto(QStringLiteral("una prueba"));
    mesa.voz.Habla(true);
    mesa.banco.cola.DejaCorrer();
    mesa.banco.Saca();
    EXPECT_FALSE(mesa.motor->Habla(QStringLiteral("una lectura"), false));
    EXPECT_FALSE(mesa.banco.canal.sonando);
    EXPECT_TRUE(mesa.canalSAPI5.sonando);
    EXPECT_THAT(mesa.banco.Saca(), ElementsAre("Stop 1"));
}

TEST(MotorVoz, AStopSilencesWhicheverFamilySounds) {
    Mesa mesa("eSpeak NG", "Spanish");
    mesa.voz.SetTexto(QStringLiteral("una prueba"));
    mesa.voz.Habla(true);
    mesa.motor->Detiene();
    EXPECT_FALSE(mesa.banco.canal.sonando);
    mesa.motor->Detiene();
    EXPECT_THAT(mesa.banco.canal.ordenes, ElementsAre("habla", "detiene"));
}

// "IBM"

TEST(MotorVoz, TheSameVoiceAndNumbersGoToTheLiveControlAndToTheRecordingEngine) {
    Mesa mesa("IBM", "Pilar");
    mesa.opciones->SetVelocidad(200);
    mesa.opciones->SetVolumen(40000);
    mesa.motor->AplicaConfiguracion();
    const RegistroVoz &pilar = *mesa.voces.BuscaNombre(QStringLiteral("Pilar"));
    EXPECT_THAT(
        mesa.eci.ordenes,
        ElementsAre("hablante Pilar 1034", "velocidad 200", "volumen 40000",
                    "avanzados " + std::to_string(pilar.TonoDefecto) + " " + std::to_string(pilar.FluctuacionDefecto) +
                        " " + std::to_string(pilar.AsperezaDefecto) + " " + std::to_string(pilar.DiafoniaDefecto) +
                        " " + std::to_string(pilar.TamCabezaDefecto)));
    EXPECT_EQ(mesa.motor->VelocidadMotor(), 200);
    EXPECT_FALSE(mesa.motor->Habla(QStringLiteral("hola"), false));
    EXPECT_EQ(mesa.banco.canal.Texto(), u"hola");
    EXPECT_EQ(mesa.Dicho().voz, "roa/es");
    EXPECT_EQ(mesa.Dicho().velocidad, 200);
    EXPECT_EQ(mesa.Dicho().tono, pilar.TonoDefecto);
    EXPECT_NEAR(mesa.Dicho().ganancia, 40.0 / 65.0, 1e-9);
    EXPECT_THAT(mesa.canalSAPI5.ordenes, IsEmpty());
}

TEST(MotorVoz, AdvancedValuesOfThePageReplaceTheVoicesOwn) {
    Mesa mesa("IBM", "Carlos");
    mesa.opciones->SetValoresAvanzados(true);
    mesa.opciones->SetTag(QStringLiteral("ScrollTono"), QStringLiteral("300"));
    mesa.opciones->SetTag(QStringLiteral("ScrollAspereza"), QStringLiteral("77"));
    mesa.motor->AplicaConfiguracion();
    EXPECT_EQ(mesa.voz.Tono(), 300);
    EXPECT_EQ(mesa.voz.Aspereza(), 77);
    // Switched off and accepted, the engine uses the voice's own again.
    mesa.opciones->SetValoresAvanzados(false);
    mesa.opciones->GuardaValores();
    mesa.motor->AplicaConfiguracion();
    EXPECT_EQ(mesa.voz.Tono(), mesa.voces.BuscaNombre(QStringLiteral("Carlos"))->TonoDefecto);
}

TEST(MotorVoz, AnIbmNoticeReturnsAtOnceAndHasNoWords) {
    Mesa mesa("IBM", "Carlos");
    mesa.banco.estado.valor = cEstadoVoz::Aviso;
    EXPECT_FALSE(mesa.motor->HablaAviso(QStringLiteral("está inactivo")));
    mesa.banco.canal.Palabra(0);
    mesa.banco.canal.Fin();
    mesa.banco.cola.DejaCorrer();
    EXPECT_THAT(mesa.banco.diario, ElementsAre("Start", "Stop 1"));
}

TEST(MotorVoz, AnIbmStopWhilePausedResumesFirstAndStaysInaudible) {
    Mesa mesa("IBM", "Carlos");
    EXPECT_FALSE(mesa.motor->Habla(QStringLiteral("hola"), false));
    mesa.motor->Pausa();
    mesa.banco.ComoTecla([&] { mesa.motor->Detiene(); });
    EXPECT_THAT(mesa.banco.canal.ordenes, ElementsAre("habla", "pausa", "detiene"));
    EXPECT_THAT(mesa.banco.diario, ElementsAre("Start", "Stop 0"));
    EXPECT_FALSE(mesa.voz.EnPausa());
}

TEST(MotorVoz, AnIbmPauseIsFollowedByItsResume) {
    Mesa mesa("IBM", "Carlos");
    EXPECT_FALSE(mesa.motor->Habla(QStringLiteral("hola"), false));
    mesa.motor->Pausa();
    EXPECT_TRUE(mesa.banco.canal.enPausa);
    mesa.banco.ComoTecla([&] { mesa.motor->Reanuda(); });
    EXPECT_FALSE(mesa.banco.canal.enPausa);
    EXPECT_TRUE(mesa.banco.canal.sonando);
}

TEST(MotorVoz, CancelSilencesTheRecordingEngine) {
    Mesa mesa("IBM", "Carlos");
    mesa.motor->CancelaECI();
    EXPECT_THAT(mesa.eci.ordenes, ElementsAre("cancela"));
}

TEST(MotorVoz, AnIbmFileGoesToTheWaitingEngineWithoutTheAdvancedValues) {
    Mesa mesa("IBM", "Carlos");
    EXPECT_FALSE(mesa.motor->HablaFichero(QStringLiteral("/x/a.txt")));
    EXPECT_THAT(mesa.eci.ordenes, ElementsAre("fichero /x/a.txt espera <>"));
    EXPECT_THAT(mesa.banco.canal.ordenes, IsEmpty());
    mesa.eci.error = QStringLiteral("algo");
    EXPECT_EQ(mesa.motor->HablaFichero(QStringLiteral("/x/a.txt")).descripcion, QStringLiteral("cVozECI: algo"));
}

TEST(MotorVoz, AFileOfOtherFamiliesIsReadAsTextWithMarkupAndWaitedFor) {
    Mesa mesa("eSpeak NG", "Spanish");
    QTemporaryFile fichero;
    ASSERT_TRUE(fichero.open());
    fichero.write("a\xF1o <silence msec='100'/>");
    fichero.flush();
    mesa.canalSAPI5.alHablar = [&] { QTimer::singleShot(0, &mesa.banco.cola, [&] { mesa.canalSAPI5.Fin(); }); };
    EXPECT_FALSE(mesa.motor->HablaFichero(fichero.fileName()));
    EXPECT_EQ(mesa.canalSAPI5.Texto(), u"año ");
    EXPECT_FALSE(mesa.canalSAPI5.sonando);
    EXPECT_EQ(mesa.motor->HablaFichero(QStringLiteral("/no/existe.txt")).numero, Fallo::FicheroNoEncontrado);
}

TEST(MotorVoz, AWaitForAFileIsEndedFromOutsideInBothFamilies) {
    Mesa ibm("IBM", "Carlos");
    ibm.motor->CancelaEspera();
    EXPECT_THAT(ibm.eci.ordenes, ElementsAre("cancela"));
    Mesa mesa("eSpeak NG", "Spanish");
    QTemporaryFile fichero;
    ASSERT_TRUE(fichero.open());
    fichero.write("hola");
    fichero.flush();
    mesa.canalSAPI5.alHablar = [&] { QTimer::singleShot(0, &mesa.banco.cola, [&] { mesa.motor->CancelaEspera(); }); };
    EXPECT_FALSE(mesa.motor->HablaFichero(fichero.fileName()));
    EXPECT_FALSE(mesa.canalSAPI5.sonando);
}

TEST(MotorVoz, WithoutTheRecordingEngineTheLiveControlIsSetAlone) {
    Mesa mesa("IBM", "Pilar");
    MotorVoz solo(mesa.voz, nullptr, nullptr, *mesa.opciones);
    solo.AplicaConfiguracion();
    solo.CancelaECI();
    EXPECT_FALSE(solo.Habla(QStringLiteral("hola"), false));
    EXPECT_EQ(mesa.Dicho().tono, mesa.voces.BuscaNombre(QStringLiteral("Pilar"))->TonoDefecto);
    EXPECT_THAT(mesa.eci.ordenes, IsEmpty());
}

// SAPI 5

TEST(MotorVoz, SAPI5TakesTheTokenAtTheVoicesNumberAndNothingGoesToTheIbmEngines) {
    Mesa mesa("Flite", "kal");
    mesa.opciones->SetVelocidad(-10);
    mesa.opciones->SetVolumen(25);
    mesa.motor->AplicaConfiguracion();
    EXPECT_EQ(mesa.sapi5.Voice()->nombre, QStringLiteral("kal"));
    EXPECT_EQ(mesa.sapi5.Rate(), -10);
    EXPECT_EQ(mesa.sapi5.Volume(), 25);
    EXPECT_EQ(mesa.motor->VelocidadMotor(), -10);
    EXPECT_FALSE(mesa.motor->Habla(QStringLiteral("hola"), false));
    EXPECT_EQ(mesa.canalSAPI5.locuciones.back().voz.voz, "kal");
    EXPECT_THAT(mesa.banco.canal.ordenes, IsEmpty());
    EXPECT_THAT(mesa.eci.ordenes, IsEmpty());
}

TEST(MotorVoz, OnlySAPI5TakesThePunctuationFlag) {
    Mesa mesa("eSpeak NG", "Spanish");
    EXPECT_FALSE(mesa.motor->Habla(QStringLiteral("a, b"), true));
    EXPECT_EQ(mesa.canalSAPI5.locuciones.back().tramos.front().tipo, TipoTramo::Puntuacion);
    EXPECT_FALSE(mesa.motor->Habla(QStringLiteral("a, b"), false));
    EXPECT_EQ(mesa.canalSAPI5.locuciones.back().tramos.front().tipo, TipoTramo::Texto);
    Mesa ibm("IBM", "Carlos");
    EXPECT_FALSE(ibm.motor->Habla(QStringLiteral("a, b"), true));
    EXPECT_EQ(ibm.banco.canal.locuciones.back().tramos.front().tipo, TipoTramo::Texto);
}

TEST(MotorVoz, ASAPI5ReadingTakesXmlAndRefusesBrokenMarkup) {
    Mesa mesa("eSpeak NG", "Spanish");
    EXPECT_FALSE(mesa.motor->Habla(QStringLiteral("<volume level='50'/>a"), false));
    EXPECT_EQ(mesa.canalSAPI5.locuciones.back().tramos.front().tipo, TipoTramo::Volumen);
    EXPECT_EQ(mesa.motor->Habla(QStringLiteral("<volume level='x'/>a"), false).numero, Fallo::SintaxisDeEtiquetas);
    EXPECT_EQ(mesa.canalSAPI5.locuciones.size(), 1u);
}

TEST(MotorVoz, ASAPI5NoticeWaitsAndPurgesTheReadingUnder0) {
    Mesa mesa("eSpeak NG", "Spanish");
    EXPECT_FALSE(mesa.motor->Habla(QStringLiteral("un texto"), false));
    mesa.banco.cola.DejaCorrer();
    mesa.canalSAPI5.alHablar = [&] { mesa.canalSAPI5.Fin(); };
    mesa.banco.estado.valor = cEstadoVoz::Aviso;
    EXPECT_FALSE(mesa.motor->HablaAviso(QStringLiteral("aviso")));
    mesa.banco.cola.DejaCorrer();
    EXPECT_THAT(mesa.banco.diario, ElementsAre("Start", "Stop 0", "Start", "Stop 1"));
}

TEST(MotorVoz, ASAPI5StopWhilePausedResumesFirstAndStaysInaudible) {
    Mesa mesa("eSpeak NG", "Spanish");
    EXPECT_FALSE(mesa.motor->Habla(QStringLiteral("hola"), false));
    mesa.motor->Pausa();
    mesa.banco.ComoTecla([&] { mesa.motor->Detiene(); });
    EXPECT_THAT(mesa.canalSAPI5.ordenes, ElementsAre("habla", "pausa", "detiene"));
    EXPECT_THAT(mesa.banco.diario, ElementsAre("Start", "Stop 0"));
    EXPECT_FALSE(mesa.sapi5.EnPausa());
}

TEST(MotorVoz, AStopWhenIdleRaisesNothingInEitherFamily) {
    for (const char *fabricante : {"IBM", "eSpeak NG"}) {
        Mesa mesa(fabricante, "Carlos");
        mesa.motor->Detiene();
        mesa.banco.cola.DejaCorrer();
        EXPECT_THAT(mesa.banco.diario, IsEmpty()) << fabricante;
    }
}

TEST(MotorVoz, ASAPI5VoiceThatIsGoneMakesTheFirstTokenSpeak) {
    Mesa mesa("eSpeak NG", "Nadie");
    mesa.motor->AplicaConfiguracion();
    EXPECT_EQ(mesa.sapi5.Voice()->nombre, QStringLiteral("Spanish"));
}

TEST(MotorVoz, WithoutTheSAPI5ObjectSpeechFailsAndTheRestIsHarmless) {
    Mesa mesa("eSpeak NG", "Spanish", false);
    mesa.motor->AplicaConfiguracion();
    mesa.motor->Pausa();
    mesa.motor->Reanuda();
    mesa.motor->Detiene();
    EXPECT_EQ(mesa.motor->Habla(QStringLiteral("a"), false).numero, Fallo::LlamadaNoValida);
    EXPECT_EQ(mesa.motor->HablaAviso(QStringLiteral("a")).numero, Fallo::LlamadaNoValida);
    EXPECT_THAT(mesa.banco.canal.ordenes, IsEmpty());
}

}  // namespace
}  // namespace ondalis::prueba
