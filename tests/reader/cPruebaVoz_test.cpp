#include "reader/PruebaVoz.h"

namespace ondalis::prueba {
namespace {

class PruebaDeVoz : public BancoVoz {
protected:
    static ValoresPrueba Sencillos() { return {.velocidad = 200, .volumen = 40}; }
    void PruebaPilar(const ValoresPrueba &valores = Sencillos()) {
        prueba.PruebaPagina(QStringLiteral("IBM"), QStringLiteral("Pilar"), valores);
    }
};

TEST_F(PruebaDeVoz, ThePageStopsTheReadingShowsTheClockSpeaksAndPutsTheIconBack) {
    Lee(QStringLiteral("un texto largo"));
    PruebaPilar();
    EXPECT_EQ(diario.Todo(), (Lineas{"puntero.11", "motor.Detiene", "icono.1", "sonido.DETENER", "icono.1", "icono.10",
                                     "habla.IBM.1", "icono.1", "puntero.0"}));
    EXPECT_FALSE(menu.Detener.Habilitada());
    EXPECT_EQ(Texto(canalIBM), "Esta es la voz de Pilar");
}

TEST_F(PruebaDeVoz, InactiveNothingIsStoppedAndTheIconStays) {
    opcGeneral.SetUtilizaSonidos(false);
    principal.ActivarDesactivar_Click();
    diario.Olvida();
    PruebaPilar();
    EXPECT_EQ(diario.Todo(), (Lineas{"puntero.11", "habla.IBM.1", "puntero.0"}));
}

TEST_F(PruebaDeVoz, AnIBMVoiceTakesTheBarsNumbersAndItsOwnFiveValues) {
    PruebaPilar();
    const ParametrosVoz &dicho = canalIBM.locuciones.back().voz;
    EXPECT_EQ(vozIBM.Velocidad(), 200);
    EXPECT_EQ(dicho.velocidad, 200);
    EXPECT_NEAR(dicho.ganancia, 40.0 / 65, 1e-6);
    EXPECT_EQ(vozIBM.Tono(), Voz("Pilar").TonoDefecto);
    EXPECT_EQ(vozIBM.TamCabeza(), Voz("Pilar").TamCabezaDefecto);
}

TEST_F(PruebaDeVoz, AdvancedValuesComeFromTheBars) {
    PruebaPilar({.velocidad = 170,
                 .volumen = 65,
                 .avanzados = true,
                 .tono = 99,
                 .fluctuacion = 1,
                 .aspereza = 2,
                 .diafonia = 3,
                 .tamCabeza = 4});
    EXPECT_EQ(vozIBM.Tono(), 99);
    EXPECT_EQ(vozIBM.Fluctuacion(), 1);
    EXPECT_EQ(vozIBM.Aspereza(), 2);
    EXPECT_EQ(vozIBM.Diafonia(), 3);
    EXPECT_EQ(vozIBM.TamCabeza(), 4);
}

TEST_F(PruebaDeVoz, ASAPI5VoiceIsHeardInsideTheCallAtTheBarsNumbers) {
    prueba.PruebaPagina(QStringLiteral("eSpeak NG"), QStringLiteral("Español"), {.velocidad = 13, .volumen = 80});
    EXPECT_EQ(diario.Todo(), (Lineas{"puntero.11", "icono.10", "habla.SAPI5.1", "icono.1", "puntero.0"}));
    EXPECT_EQ(sapi5.Rate(), 3);
    EXPECT_EQ(sapi5.Volume(), 80);
    EXPECT_EQ(Texto(canalSAPI5), "Esta es la voz de Español");
    // Its Start and its Stop have come as the pointer was put back, under the state of a test.
    EXPECT_TRUE(Ociosa());
}

TEST_F(PruebaDeVoz, TheTestsEventsLeaveTheSessionAlone) {
    PruebaPilar();
    EXPECT_EQ(Estado(), 1);
    Corre();
    EXPECT_FALSE(menu.Detener.Habilitada());
    canalIBM.Fin();
    Corre();
    EXPECT_TRUE(Ociosa());
}

TEST_F(PruebaDeVoz, AVoiceThatIsNotThereIsToldAndNothingStaysAsDuringTheTest) {
    prueba.PruebaPagina(QStringLiteral("IBM"), QStringLiteral("Nadie"), Sencillos());
    EXPECT_EQ(diario.Todo(), (Lineas{"puntero.11", "icono.10", "icono.1", "puntero.0"}));
    EXPECT_EQ(Estado(), 0);
    ASSERT_EQ(mensajes.cajas.size(), 1U);
    EXPECT_TRUE(mensajes.cajas.front().texto.startsWith(QStringLiteral("ucOpcVoz.Probar_Click: ")));
    EXPECT_TRUE(Log().back().contains(QStringLiteral("ucOpcVoz.Probar_Click: ")));
}

TEST_F(PruebaDeVoz, ARefusedSpeechDoesNotMuteTheNoticesAfterIt) {
    cPruebaVoz sin{
        {.lector = lector, .form = principal, .puntero = puntero, .voces = voces, .voz = vozIBM, .sapi5 = nullptr}};
    sin.PruebaAsistente(QStringLiteral("eSpeak NG"), QStringLiteral("Español"));
    EXPECT_EQ(Estado(), 0);
    ASSERT_EQ(mensajes.cajas.size(), 1U);
    EXPECT_TRUE(mensajes.cajas.front().texto.startsWith(QStringLiteral("Aviso.Probar_Click: ")));
    principal.DiAviso(QStringLiteral("hola"));
    EXPECT_EQ(diario.Veces("motor.HablaAviso(hola)"), 1);
}

TEST_F(PruebaDeVoz, ATestOfTheOtherFamilySilencesTheOneThatSounds) {
    PruebaPilar();
    Corre();
    prueba.PruebaPagina(QStringLiteral("eSpeak NG"), QStringLiteral("Español"), {.velocidad = 10, .volumen = 100});
    EXPECT_FALSE(canalIBM.sonando);
    EXPECT_EQ(diario.Veces("habla.SAPI5.1"), 1);
    EXPECT_TRUE(Ociosa());
}

TEST_F(PruebaDeVoz, TheAssistantLeavesIconReadingSpeedAndVolumeAsTheyAre) {
    vozIBM.SetVelocidad(333);
    prueba.PruebaAsistente(QStringLiteral("IBM"), QStringLiteral("Pilar"));
    EXPECT_EQ(diario.Todo(), (Lineas{"puntero.11", "habla.IBM.1", "puntero.0"}));
    EXPECT_EQ(vozIBM.Velocidad(), 333);
    EXPECT_EQ(vozIBM.Tono(), Voz("Pilar").TonoDefecto);
    EXPECT_EQ(Texto(canalIBM), "Esta es la voz de Pilar");
    EXPECT_EQ(opcVoz.VozActiva(), QStringLiteral("Carlos"));
}

TEST_F(PruebaDeVoz, TheAssistantStopsTheSAPI5VoiceBeforeItSpeaksAndTheSessionNotices) {
    canalSAPI5.alHablar = {};
    EXPECT_FALSE(sapi5.Speak(QStringLiteral("una lectura"), SpVoice::Asincrono | SpVoice::Purga));
    Corre();
    ASSERT_TRUE(menu.Detener.Habilitada());
    canalSAPI5.alHablar = [this] { canalSAPI5.Fin(); };
    sapi5.SetRate(4);
    prueba.PruebaAsistente(QStringLiteral("eSpeak NG"), QStringLiteral("Español"));
    EXPECT_FALSE(menu.Detener.Habilitada());
    EXPECT_EQ(canalSAPI5.ordenes, (std::vector<std::string>{"habla", "detiene", "habla"}));
    EXPECT_EQ(sapi5.Rate(), 4);
    Corre();
    EXPECT_TRUE(Ociosa());
}

TEST_F(PruebaDeVoz, TheTextIsInTheVoicesLanguage) {
    prueba.PruebaAsistente(QStringLiteral("IBM"), QStringLiteral("Oma"));
    EXPECT_EQ(Texto(canalIBM), "Dieses ist die Stimme von Oma");
}

}  // namespace
}  // namespace ondalis::prueba
