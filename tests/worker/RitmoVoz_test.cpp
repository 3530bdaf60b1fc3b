// Words a minute over running texts that the calibration was not measured on, their pauses included.
#include <gtest/gtest.h>

#include "worker/Locuciones.h"
#include "worker/TextosLenguas.h"

namespace ondalis {
namespace {

double PalabrasPorMinuto(cTrabajador &motor, const char *idioma, int velocidad, std::u16string_view texto) {
    ParametrosVoz voz = Carlos();
    voz.voz = idioma, voz.velocidad = velocidad;
    const Oido oido = motor.Di(Una(voz, std::u16string(texto)));
    EXPECT_FALSE(oido.tarde);
    return static_cast<double>(oido.palabras.size()) * 60 * 22050 / static_cast<double>(oido.pcm.size());
}

TEST(RitmoVoz, SpanishSpeaksTheWordsAMinuteAskedForOverTheWholeRange) {
    cTrabajador motor(ONDALIS_MOTOR);
    for (const std::u16string_view texto : {kTextos[0].prueba, kGuiaEspanola})
        for (const int v : {70, 100, 170, 250, 350, 450}) {
            const double oidas = PalabrasPorMinuto(motor, "roa/es", v, texto);
            RecordProperty("ppm_" + std::to_string(v), std::to_string(oidas));
            EXPECT_NEAR(oidas, v, v * .05) << v;
        }
}

TEST(RitmoVoz, TheOtherLanguagesDoToo) {
    cTrabajador motor(ONDALIS_MOTOR);
    for (const char *idioma : {"gmw/en", "gmw/en-US", "roa/fr", "gmw/de", "roa/it"}) {
        const std::string_view propio = idioma == std::string_view("gmw/en-US") ? "gmw/en" : idioma;
        const auto texto = std::find_if(kTextos.begin(), kTextos.end(),
                                        [propio](const TextosLengua &t) { return t.idioma == propio; });
        ASSERT_NE(texto, kTextos.end());
        for (const int v : {70, 100, 170, 250, 350, 450})
            EXPECT_NEAR(PalabrasPorMinuto(motor, idioma, v, texto->prueba), v, v * .05) << idioma << ' ' << v;
    }
}

TEST(RitmoVoz, TheWholeVoiceGoesAtTheSameSpeed) {
    cTrabajador motor(ONDALIS_MOTOR);
    const std::u16string texto(kTextos[0].prueba.substr(0, 400));
    const auto largo = [&](const ParametrosVoz &voz) {
        return static_cast<double>(motor.Di(Una(voz, texto)).pcm.size());
    };
    ParametrosVoz aguda = Carlos(), rota = Carlos();
    aguda.tono = 300, aguda.tamCabeza = 5, rota.aspereza = 90, rota.diafonia = 60;
    const double propio = largo(Carlos());
    EXPECT_NEAR(largo(aguda), propio, propio * .02);
    EXPECT_NEAR(largo(rota), propio, propio * .02);
}

}  // namespace
}  // namespace ondalis
