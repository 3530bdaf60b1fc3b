#include "speech/cOpcVoz.h"

#include <gtest/gtest.h>

#include "ControlDePrueba.h"
#include "fakes/TokensFalsos.h"

namespace ondalis::prueba {
namespace {

class cOpcVozTest : public testing::Test {
protected:
    void SetUp() override {
        voces.ChequeaSAPI5Compatible([] { return true; });
        voces.RecogeVocesEquipo(&tokens, false, {});
        voces.LeeValoresVoces(voz);
    }
    bool Guarda(const char *clave, const char *valor) {
        return banco.registro.Salva(QStringLiteral("Voz"), QLatin1String(clave), QString::fromUtf8(valor));
    }
    QString Guardado(const char *clave) {
        return banco.registro.Lee(QStringLiteral("Voz"), QLatin1String(clave), QStringLiteral("(nada)"));
    }
    std::unique_ptr<cOpcVoz> Abre(bool haySAPI5 = true) {
        return std::make_unique<cOpcVoz>(banco.registro.Registro(), banco.registro.Log(), voces, haySAPI5);
    }
    const RegistroVoz &Fila(const char *nombre) { return *voces.BuscaNombre(QString::fromUtf8(nombre)); }

    Banco banco;
    TokensFalsos tokens{TokensFalsos::Tres()};
    cVoces voces{banco.registro.Log()};
    ActorSvr voz{banco.canal, banco.cola, banco.estado, banco.registro.Log()};
};

TEST_F(cOpcVozTest, AMachineWithoutStoredSettingsSpeaksWithCarlos) {
    const auto pagina = Abre();
    EXPECT_TRUE(pagina->EsIBM());
    EXPECT_EQ(pagina->VozActiva(), QStringLiteral("Carlos"));
    EXPECT_EQ(pagina->GuidActiva(), QLatin1Char('{') + Fila("Carlos").IdModo + QLatin1Char('}'));
    EXPECT_EQ(pagina->LenguaVoz(), 1034);
    EXPECT_EQ(pagina->NumeroVoz(), -1);
    EXPECT_EQ(pagina->Velocidad(), 170);
    EXPECT_EQ(pagina->Volumen(), 65000);
    EXPECT_FALSE(pagina->ValoresAvanzados());
    EXPECT_EQ(pagina->Tono(), Fila("Carlos").TonoDefecto);
    EXPECT_EQ(pagina->Fluctuacion(), Fila("Carlos").FluctuacionDefecto);
    EXPECT_EQ(pagina->Aspereza(), Fila("Carlos").AsperezaDefecto);
    EXPECT_EQ(pagina->Diafonia(), Fila("Carlos").DiafoniaDefecto);
    EXPECT_EQ(pagina->TamCabeza(), Fila("Carlos").TamCabezaDefecto);
}

TEST_F(cOpcVozTest, AVoiceChosenOutsideThePageBringsItsOwnFiveValues) {
    const auto pagina = Abre();
    pagina->SetVelocidad(300);
    pagina->SetValoresAvanzados(true);
    pagina->SetTag(QStringLiteral("ScrollTono"), QStringLiteral("400"));
    EXPECT_FALSE(pagina->CambiaVoz(QStringLiteral("IBM"), QStringLiteral("Carlos")));
    EXPECT_EQ(pagina->Tono(), 400);
    EXPECT_TRUE(pagina->CambiaVoz(QStringLiteral("IBM"), QStringLiteral("Pilar")));
    EXPECT_EQ(pagina->Tono(), Fila("Pilar").TonoDefecto);
    EXPECT_EQ(pagina->Velocidad(), 300);
    EXPECT_TRUE(pagina->ValoresAvanzados());
}

TEST_F(cOpcVozTest, AMakerChosenOutsideThePageTakesSpeedAndVolumeToItsDefaults) {
    const auto pagina = Abre();
    pagina->SetVelocidad(300);
    pagina->SetValoresAvanzados(true);
    EXPECT_TRUE(pagina->CambiaVoz(QStringLiteral("Flite"), QStringLiteral("kal")));
    EXPECT_EQ(pagina->Velocidad(), 0);
    EXPECT_EQ(pagina->Volumen(), 100);
    EXPECT_FALSE(pagina->ValoresAvanzados());
    EXPECT_EQ(pagina->NumeroVoz(), 2);
}

TEST_F(cOpcVozTest, EveryStoredValueIsLoaded) {
    Guarda("FabricanteActivo", "IBM");
    Guarda("VozActiva", "Oma");
    Guarda("Velocidad", "300");
    Guarda("Volumen", "40000");
    Guarda("ValoresAvanzados", "True");
    Guarda("Tono", "150");
    Guarda("Fluctuacion", "1");
    Guarda("Aspereza", "2");
    Guarda("Diafonia", "3");
    Guarda("TamCabeza", "100");
    const auto pagina = Abre();
    EXPECT_EQ(pagina->VozActiva(), QStringLiteral("Oma"));
    EXPECT_EQ(pagina->LenguaVoz(), 1031);
    EXPECT_EQ(pagina->Velocidad(), 300);
    EXPECT_EQ(pagina->Volumen(), 40000);
    EXPECT_EQ(pagina->Tono(), 150);
    EXPECT_EQ(pagina->Fluctuacion(), 1);
    EXPECT_EQ(pagina->Aspereza(), 2);
    EXPECT_EQ(pagina->Diafonia(), 3);
    EXPECT_EQ(pagina->TamCabeza(), 100);
}

TEST_F(cOpcVozTest, AStoredMakerOfSAPI5TakesItsOwnRangesAndDefaults) {
    Guarda("FabricanteActivo", "Flite");
    Guarda("VozActiva", "kal");
    const auto pagina = Abre();
    EXPECT_FALSE(pagina->EsIBM());
    EXPECT_EQ(pagina->NumeroVoz(), 2);
    EXPECT_EQ(pagina->Velocidad(), 0);
    EXPECT_EQ(pagina->Volumen(), 100);
    EXPECT_EQ(pagina->Tag(QStringLiteral("ScrollVelocidad")), QStringLiteral("10"));
    pagina->SetVelocidad(-10);
    EXPECT_EQ(pagina->Tag(QStringLiteral("ScrollVelocidad")), QStringLiteral("0"));
    EXPECT_EQ(pagina->Velocidad(), -10);
}

TEST_F(cOpcVozTest, AStoredMakerOtherThanIbmWithoutSAPI5FallsBackToIbmAndSkipsEverythingElse) {
    Guarda("FabricanteActivo", "Flite");
    Guarda("VozActiva", "kal");
    Guarda("Velocidad", "300");
    Guarda("Volumen", "40000");
    Guarda("ValoresAvanzados", "True");
    Guarda("Tono", "150");
    const auto pagina = Abre(false);
    EXPECT_TRUE(pagina->EsIBM());
    EXPECT_EQ(pagina->VozActiva(), QStringLiteral("Carlos"));
    EXPECT_EQ(pagina->Velocidad(), 170);
    EXPECT_EQ(pagina->Volumen(), 65000);
    EXPECT_FALSE(pagina->ValoresAvanzados());
    EXPECT_EQ(pagina->Tono(), Fila("Carlos").TonoDefecto);
    EXPECT_EQ(Guardado("FabricanteActivo"), QStringLiteral("Flite"));  // nothing is stored by loading
}

TEST_F(cOpcVozTest, AStoredMakerThatIsNoneGivesTheDefaultAndItsVoiceAndKeepsTheRest) {
    Guarda("FabricanteActivo", "Nadie");
    Guarda("VozActiva", "kal");  // another maker's
    Guarda("Velocidad", "300");
    const auto pagina = Abre();
    EXPECT_EQ(pagina->FabricanteActivo(), QStringLiteral("IBM"));
    EXPECT_EQ(pagina->VozActiva(), QStringLiteral("Carlos"));
    EXPECT_EQ(pagina->Velocidad(), 300);
    EXPECT_EQ(Guardado("FabricanteActivo"), QStringLiteral("Nadie"));  // nothing is stored by loading
    ASSERT_EQ(banco.registro.LineasLog().size(), 1);
    EXPECT_TRUE(banco.registro.LineasLog()[0].contains(QStringLiteral("Voz\\FabricanteActivo")));
    Guarda("VozActiva", "Pilar");
    EXPECT_EQ(Abre()->VozActiva(), QStringLiteral("Pilar"));
}

TEST_F(cOpcVozTest, AStoredMakerIbmWithoutSAPI5LoadsEverything) {
    Guarda("FabricanteActivo", "IBM");
    Guarda("VozActiva", "Pilar");
    Guarda("Velocidad", "300");
    const auto pagina = Abre(false);
    EXPECT_EQ(pagina->VozActiva(), QStringLiteral("Pilar"));
    EXPECT_EQ(pagina->Velocidad(), 300);
}

TEST_F(cOpcVozTest, AStoredSpeedOfMinus5IsRefusedForIbmSoThat170Remains) {
    Guarda("Velocidad", "-5");
    EXPECT_EQ(Abre()->Velocidad(), 170);
}

TEST_F(cOpcVozTest, AStoredSpeedOrVolumeOutsideTheFamilysRangeIsLogged) {
    Guarda("Velocidad", "9999");
    Guarda("Volumen", "499");
    const auto pagina = Abre();
    EXPECT_EQ(pagina->Velocidad(), 170);
    EXPECT_EQ(pagina->Volumen(), 65000);
    ASSERT_EQ(banco.registro.LineasLog().size(), 2);
    EXPECT_TRUE(banco.registro.LineasLog()[0].endsWith("[Voz\\Velocidad]"));
    EXPECT_TRUE(banco.registro.LineasLog()[1].endsWith("[Voz\\Volumen]"));
}

TEST_F(cOpcVozTest, StoredNonsenseIsTheDefaultAndLogged) {
    Guarda("Velocidad", "mucha");
    Guarda("ValoresAvanzados", "True");
    Guarda("Tono", "9999");
    Guarda("Diafonia", "-1");
    const auto pagina = Abre();
    EXPECT_EQ(pagina->Velocidad(), 170);
    EXPECT_EQ(pagina->Tono(), 230);
    EXPECT_EQ(pagina->Diafonia(), 50);
    EXPECT_EQ(banco.registro.LineasLog().size(), 3);
    EXPECT_TRUE(banco.registro.LineasLog().front().contains(QStringLiteral("ucOpcVoz")));
}

TEST_F(cOpcVozTest, IbmSpeedNeverLeaves70To450) {
    const auto pagina = Abre();
    for (const int velocidad : {69, 451, -5, 0, 100000}) {
        pagina->SetVelocidad(velocidad);
        EXPECT_EQ(pagina->Velocidad(), 170) << velocidad;
    }
    for (const int velocidad : {70, 450}) {
        pagina->SetVelocidad(velocidad);
        EXPECT_EQ(pagina->Velocidad(), velocidad);
    }
    pagina->SetVelocidad(450 + 25);  // a hot key at the limit
    EXPECT_EQ(pagina->Velocidad(), 450);
}

TEST_F(cOpcVozTest, SAPI5SpeedNeverLeavesMinus10To10) {
    Guarda("FabricanteActivo", "eSpeak NG");
    const auto pagina = Abre();
    pagina->SetVelocidad(10);
    for (const int velocidad : {11, -11, 170, 2147483647, -2147483647 - 1}) {
        pagina->SetVelocidad(velocidad);
        EXPECT_EQ(pagina->Velocidad(), 10) << velocidad;
    }
    pagina->SetVelocidad(-10);
    EXPECT_EQ(pagina->Velocidad(), -10);
}

TEST_F(cOpcVozTest, AnIbmVolumeOf1499Stores1AndReadsBack1000) {
    const auto pagina = Abre();
    pagina->SetVolumen(1499);
    EXPECT_EQ(pagina->Tag(QStringLiteral("ScrollVolumen")), QStringLiteral("1"));
    EXPECT_EQ(pagina->Volumen(), 1000);
}

TEST_F(cOpcVozTest, AnIbmVolumeRoundsHalfToEven) {
    const auto pagina = Abre();
    pagina->SetVolumen(2500);
    EXPECT_EQ(pagina->Volumen(), 2000);
    pagina->SetVolumen(3500);
    EXPECT_EQ(pagina->Volumen(), 4000);
}

TEST_F(cOpcVozTest, AVolumeOutsideTheRangeIsRefused) {
    const auto pagina = Abre();
    for (const int volumen : {400, 0, -1000, 65501, 2147483647}) {
        pagina->SetVolumen(volumen);
        EXPECT_EQ(pagina->Volumen(), 65000) << volumen;
    }
    Guarda("FabricanteActivo", "eSpeak NG");
    const auto otra = Abre();
    otra->SetVolumen(0);
    EXPECT_EQ(otra->Volumen(), 0);
    otra->SetVolumen(101);
    otra->SetVolumen(-1);
    EXPECT_EQ(otra->Volumen(), 0);
}

TEST_F(cOpcVozTest, WithTheAdvancedValuesOffTheFiveTagsAreTheVoicesDefaults) {
    const auto pagina = Abre();
    pagina->SetVozActiva(QStringLiteral("Abuelo"));
    pagina->SetTagsAvanzados();
    EXPECT_EQ(pagina->Tono(), Fila("Abuelo").TonoDefecto);
    EXPECT_EQ(pagina->Aspereza(), Fila("Abuelo").AsperezaDefecto);
    pagina->SetValoresAvanzados(true);
    pagina->SetVozActiva(QStringLiteral("Carlos"));
    pagina->SetTagsAvanzados();
    EXPECT_EQ(pagina->Tono(), Fila("Abuelo").TonoDefecto);  // on: they stay as they are
}

TEST_F(cOpcVozTest, SwitchingTheAdvancedValuesOffAndAcceptingPutsTheVoicesDefaults) {
    Guarda("ValoresAvanzados", "True");
    Guarda("Tono", "300");
    const auto pagina = Abre();
    EXPECT_EQ(pagina->Tono(), 300);
    pagina->SetValoresAvanzados(false);
    pagina->GuardaValores();
    EXPECT_EQ(pagina->Tono(), Fila("Carlos").TonoDefecto);
    EXPECT_EQ(Guardado("ValoresAvanzados"), QStringLiteral("False"));
    EXPECT_EQ(Guardado("Tono"), QStringLiteral("300"));  // stored only while they are on
}

TEST_F(cOpcVozTest, StoredAdvancedValuesAreIgnoredWhileTheyAreOff) {
    Guarda("Tono", "300");
    EXPECT_EQ(Abre()->Tono(), Fila("Carlos").TonoDefecto);
}

TEST_F(cOpcVozTest, TheFirstFiveAreStoredInTheEnginesTermsAndTheOthersWhenOn) {
    const auto pagina = Abre();
    pagina->SetVelocidad(200);
    pagina->SetVolumen(30000);
    pagina->GuardaValores();
    EXPECT_EQ(Guardado("FabricanteActivo"), QStringLiteral("IBM"));
    EXPECT_EQ(Guardado("VozActiva"), QStringLiteral("Carlos"));
    EXPECT_EQ(Guardado("Velocidad"), QStringLiteral("200"));
    EXPECT_EQ(Guardado("Volumen"), QStringLiteral("30000"));
    EXPECT_EQ(Guardado("ValoresAvanzados"), QStringLiteral("False"));
    EXPECT_EQ(Guardado("Tono"), QStringLiteral("(nada)"));
    pagina->SetValoresAvanzados(true);
    pagina->GuardaValores();
    EXPECT_EQ(Guardado("Tono"), QString::number(Fila("Carlos").TonoDefecto));
    EXPECT_EQ(Guardado("TamCabeza"), QString::number(Fila("Carlos").TamCabezaDefecto));

    Guarda("FabricanteActivo", "eSpeak NG");
    Guarda("VozActiva", "Spanish");
    const auto otra = Abre();
    otra->SetVelocidad(-3);
    otra->GuardaValores();
    EXPECT_EQ(Guardado("Velocidad"), QStringLiteral("-3"));
    EXPECT_EQ(Abre()->Velocidad(), -3);
}

TEST_F(cOpcVozTest, ASpeedIsStoredAlone) {
    const auto pagina = Abre();
    pagina->SalvaVelocidad(195);
    EXPECT_EQ(Guardado("Velocidad"), QStringLiteral("195"));
    EXPECT_EQ(Guardado("Volumen"), QStringLiteral("(nada)"));
}

TEST_F(cOpcVozTest, OneNameUnderTwoMakersResolvesToTheFirstForModeAndLanguageAndToTheMakersForTheNumber) {
    const TokensFalsos doble({TokensFalsos::Token("Otra", "Pilar", "409"), TokensFalsos::Token("Mas", "Pilar", "410")});
    voces.RecogeVocesEquipo(&doble, false, {});
    Guarda("FabricanteActivo", "Mas");
    Guarda("VozActiva", "Pilar");
    const auto pagina = Abre();
    EXPECT_EQ(pagina->NumeroVoz(), 1);
    EXPECT_EQ(pagina->LenguaVoz(), 1034);
    EXPECT_EQ(pagina->GuidActiva(), QLatin1Char('{') + Fila("Pilar").IdModo + QLatin1Char('}'));
}

TEST_F(cOpcVozTest, AVoiceThatIsNotThereGives0And0AndAnEmptyText) {
    Guarda("VozActiva", "Nadie");
    const auto pagina = Abre();
    EXPECT_EQ(pagina->NumeroVoz(), 0);
    EXPECT_EQ(pagina->LenguaVoz(), 0);
    EXPECT_EQ(pagina->GuidActiva(), QString());
}

TEST_F(cOpcVozTest, InThePlaceOfAVoiceThatIsNotThereCarlosSpeaksAsHimself) {
    const auto carlos = Abre();
    Guarda("VozActiva", "Nadie");
    const auto pagina = Abre();
    EXPECT_EQ(pagina->VozActiva(), "Nadie");  // it may come back
    EXPECT_EQ(pagina->Tono(), carlos->Tono());
    EXPECT_EQ(pagina->Fluctuacion(), carlos->Fluctuacion());
    EXPECT_EQ(pagina->Aspereza(), carlos->Aspereza());
    EXPECT_EQ(pagina->Diafonia(), carlos->Diafonia());
    EXPECT_EQ(pagina->TamCabeza(), carlos->TamCabeza());
}

TEST_F(cOpcVozTest, WithoutAnyIbmVoiceCarlosIsNotSelectedAndAStoredIbmFindsNoRow) {
    const std::vector<HablanteIBM> ninguno;
    cVoces solo(banco.registro.Log(), ninguno);
    solo.ChequeaSAPI5Compatible([] { return true; });
    solo.RecogeVocesEquipo(&tokens, false, {});
    {
        const cOpcVoz pagina(banco.registro.Registro(), banco.registro.Log(), solo, true);
        EXPECT_FALSE(pagina.EsIBM());
        EXPECT_EQ(pagina.VozActiva(), QString());
    }
    Guarda("FabricanteActivo", "IBM");
    Guarda("VozActiva", "Carlos");
    const cOpcVoz pagina(banco.registro.Registro(), banco.registro.Log(), solo, true);
    EXPECT_TRUE(pagina.EsIBM());
    EXPECT_EQ(pagina.GuidActiva(), QString());
    EXPECT_EQ(pagina.LenguaVoz(), 0);
    EXPECT_EQ(pagina.Tono(), 230);
}

TEST_F(cOpcVozTest, TheScrollBarsRangesAreThoseOfTheFamily) {
    EXPECT_EQ(cOpcVoz::RangoVelocidad(true).maximo, 450);
    EXPECT_EQ(cOpcVoz::RangoVelocidad(false).maximo, 20);
    EXPECT_EQ(cOpcVoz::RangoVolumen(true).minimo, 1);
    EXPECT_EQ(cOpcVoz::RangoVolumen(false).defecto, 100);
    EXPECT_EQ(cOpcVoz::RangoTono().maximo, 422);
    EXPECT_EQ(cOpcVoz::RangoOtros().pasoGrande, 15);
}

}  // namespace
}  // namespace ondalis::prueba
