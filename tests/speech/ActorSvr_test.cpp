#include "speech/ActorSvr.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ControlDePrueba.h"
#include "speech/Voces.h"

namespace ondalis::prueba {
namespace {

using testing::ElementsAre;

class ActorSvrTest : public testing::Test {
protected:
    void SetUp() override { voz.SetEventos(banco.Eventos()); }
    const HablanteIBM &Hablante(const char *nombre) {
        for (const HablanteIBM &hablante : HablantesIBM())
            if (std::string(hablante.nombre) == nombre) return hablante;
        ADD_FAILURE() << nombre;
        return HablantesIBM().front();
    }
    const ParametrosVoz &Dicho() { return banco.canal.locuciones.back().voz; }

    Banco banco;
    ActorSvr voz{banco.canal, banco.cola, banco.estado, banco.registro.Log()};
};

TEST_F(ActorSvrTest, UntilItIsToldSomethingItSaysThatItHasNothingToSayWithCarlos) {
    EXPECT_EQ(voz.Texto(), QStringLiteral("No tengo nada que decir."));
    voz.Habla();
    EXPECT_EQ(banco.canal.Texto(), u"No tengo nada que decir.");
    const HablanteIBM &carlos = Hablante("Carlos");
    EXPECT_EQ(Dicho().voz, carlos.idioma);
    EXPECT_EQ(Dicho().tono, carlos.tono);
    EXPECT_EQ(Dicho().velocidad, 170);
    EXPECT_DOUBLE_EQ(Dicho().ganancia, 1.0);
    EXPECT_TRUE(Dicho().formantes);
}

TEST_F(ActorSvrTest, AModeSetsTheVoicesOwnFiveValues) {
    const HablanteIBM &oma = Hablante("Oma");
    voz.SetTono(400);
    voz.SetModo(QStringLiteral("{%1}").arg(QLatin1String(oma.idModo)));
    EXPECT_EQ(voz.Tono(), oma.tono);
    EXPECT_EQ(voz.Fluctuacion(), oma.fluctuacion);
    EXPECT_EQ(voz.Aspereza(), oma.aspereza);
    EXPECT_EQ(voz.Diafonia(), oma.diafonia);
    EXPECT_EQ(voz.TamCabeza(), oma.tamCabeza);
    voz.Habla();
    EXPECT_EQ(Dicho().voz, "gmw/de");
}

TEST_F(ActorSvrTest, AnUnknownModeSelectsCarlos) {
    voz.SetModo(QStringLiteral("{%1}").arg(QLatin1String(Hablante("Oma").idModo)));
    voz.SetModo(QStringLiteral("{00000000-0000-0000-0000-000000000000}"));
    EXPECT_EQ(voz.Tono(), Hablante("Carlos").tono);
    voz.SetModo(QStringLiteral("{%1}").arg(QLatin1String(Hablante("Oma").idModo)));
    voz.SetModo(QStringLiteral("{}"));
    EXPECT_EQ(voz.Tono(), Hablante("Carlos").tono);
}

TEST_F(ActorSvrTest, TheMembersReachTheEngine) {
    voz.SetVelocidad(300);
    voz.SetTono(220);
    voz.SetFluctuacion(11);
    voz.SetAspereza(22);
    voz.SetDiafonia(33);
    voz.SetTamCabeza(44);
    voz.Habla();
    EXPECT_EQ(Dicho().velocidad, 300);
    EXPECT_EQ(Dicho().tono, 220);
    EXPECT_EQ(Dicho().fluctuacion, 11);
    EXPECT_EQ(Dicho().aspereza, 22);
    EXPECT_EQ(Dicho().diafonia, 33);
    EXPECT_EQ(Dicho().tamCabeza, 44);
    EXPECT_EQ(Dicho().motor, "espeak");
}

TEST_F(ActorSvrTest, ValuesOutsideTheEnginesRangesAreBroughtIntoThem) {
    voz.SetVelocidad(9999);
    voz.SetTono(-5);
    voz.SetAspereza(101);
    voz.SetVolumen(1'000'000);
    voz.Habla();
    EXPECT_EQ(Dicho().velocidad, 450);
    EXPECT_EQ(Dicho().tono, 40);
    EXPECT_EQ(Dicho().aspereza, 100);
    EXPECT_DOUBLE_EQ(Dicho().ganancia, 1.0);
}

TEST_F(ActorSvrTest, TheGainGrowsWithEachStepOfTheVolumeUpTo1At65000) {
    double anterior = 0;
    for (int volumen = 1000; volumen <= 65000; volumen += 1000) {
        voz.SetVolumen(volumen);
        voz.Habla();
        EXPECT_GT(Dicho().ganancia, anterior) << volumen;
        anterior = Dicho().ganancia;
    }
    EXPECT_DOUBLE_EQ(anterior, 1.0);
}

TEST_F(ActorSvrTest, BackslashTagsActAndTheOffsetsAreThoseOfTheTextGiven) {
    voz.SetTexto(QStringLiteral("\\Spd=300\\Señor"));
    voz.Habla();
    const auto &tramos = banco.canal.locuciones.back().tramos;
    ASSERT_EQ(tramos.size(), 2u);
    EXPECT_EQ(tramos[0].tipo, TipoTramo::Velocidad);
    EXPECT_EQ(tramos[0].valor, 300);
    EXPECT_EQ(tramos[1].texto, u"Señor");
    EXPECT_THAT(tramos[1].cortes, ElementsAre(Corte{0, 9}));
}

TEST_F(ActorSvrTest, XmlIsTextInThisFamily) {
    voz.SetTexto(QStringLiteral("<rate speed='5'>a"));
    voz.Habla();
    EXPECT_EQ(banco.canal.Texto(), u"<rate speed='5'>a");
}

TEST_F(ActorSvrTest, AReadingHasWordsAndANoticeHasNone) {
    voz.SetTexto(QStringLiteral("uno dos"));
    voz.Habla();
    banco.canal.Palabra(4);
    banco.canal.Fin();
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.Saca(), ElementsAre("Start", "Word 4", "Stop 0"));
    banco.estado.valor = cEstadoVoz::Aviso;
    voz.Habla(true);
    banco.canal.Palabra(4);
    banco.canal.Fin();
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Stop 1"));
}

TEST_F(ActorSvrTest, ANoticeReturnsAtOnce) {
    voz.Habla(true);
    EXPECT_TRUE(banco.canal.sonando);
}

TEST_F(ActorSvrTest, AnEmptyABlankAndATagsOnlyTextAreAcceptedLikeAnyOther) {
    for (const char *texto : {"", "   \n", "\\Pau=10\\\\Mrk=1\\"}) {
        voz.SetTexto(QString::fromUtf8(texto));
        voz.Habla();
        banco.canal.Fin();
        banco.cola.DejaCorrer();
        EXPECT_THAT(banco.Saca(), ElementsAre("Start", "Stop 0")) << texto;
    }
}

TEST_F(ActorSvrTest, StopWhilePausedResumesFirstSoThatTheNextSpeechSounds) {
    voz.Habla();
    voz.Pausa();
    EXPECT_TRUE(voz.EnPausa());
    voz.Reanuda();
    voz.Detiene();
    EXPECT_FALSE(voz.EnPausa());
    voz.Habla();
    EXPECT_FALSE(banco.canal.enPausa);
    EXPECT_TRUE(banco.canal.sonando);
}

}  // namespace
}  // namespace ondalis::prueba
