// Words a minute over running texts, their pauses included.
#include <gtest/gtest.h>

#include "worker/Caracteres.h"
#include "worker/Locuciones.h"
#include "worker/TextosEspanoles.h"
#include "worker/TextosLenguas.h"

namespace ondalis {
namespace {

// As a reader counts them: between blanks, and of something that is said. The engine joins some short words.
std::size_t Palabras(std::u16string_view texto) {
    std::size_t n = 0;
    bool dentro = false;
    for (std::size_t i = 0; i < texto.size(); i++) {
        if (EsBlanco(texto[i])) dentro = false;
        if (dentro || !EsAlfanumerico(texto[i])) continue;
        dentro = true;
        n++;
    }
    return n;
}

double PalabrasPorMinuto(cTrabajador &motor, const ParametrosVoz &voz, std::u16string_view texto) {
    const Oido oido = motor.Di(Una(voz, std::u16string(texto)));
    EXPECT_TRUE(oido.fin);
    EXPECT_FALSE(oido.tarde);
    return static_cast<double>(Palabras(texto)) * 60 * 22050 / static_cast<double>(oido.pcm.size());
}

TEST(RitmoVoz, SpanishSpeaksTheWordsAMinuteAskedForInEveryVoiceAndStyle) {
    double peor = 0;
    for (const HablanteIBM &h : HablantesIBM()) {
        if (h.lengua != 1034) continue;
        cTrabajador motor(ONDALIS_MOTOR);
        const bool carlos = h.nombre == std::string_view("Carlos");
        for (const int v : carlos ? std::vector{70, 170, 250, 300, 450} : std::vector{400}) {
            ParametrosVoz voz = ConSusValores(h);
            voz.velocidad = v;
            const auto mira = [&](const char *nombre, std::u16string_view texto) {
                const double oidas = PalabrasPorMinuto(motor, voz, texto);
                EXPECT_NEAR(oidas, v, v * .05) << h.nombre << ' ' << nombre << ' ' << v;
                peor = std::max(peor, std::abs(oidas / v - 1));
            };
            for (const TextoEspanol &t : kTextosEspanoles) mira(t.nombre, t.texto);
            for (const std::u16string_view texto : {kTextos[0].calibracion, kTextos[0].prueba, kGuiaEspanola})
                mira("otro", texto);
        }
    }
    std::printf("farthest from the words a minute asked for: %.1f %%\n", 100 * peor);
}

TEST(RitmoVoz, AtAnyPitchToo) {
    cTrabajador motor(ONDALIS_MOTOR);
    for (const int tono : {40, 250, 422})
        for (const int v : {70, 170, 300, 450}) {
            ParametrosVoz voz = Carlos();
            voz.tono = tono, voz.velocidad = v;
            EXPECT_NEAR(PalabrasPorMinuto(motor, voz, kTextos[0].prueba), v, v * .05) << tono << ' ' << v;
        }
}

// Beyond, the voice would not be the one that was chosen.
TEST(RitmoVoz, WordsOfSevenLettersAreReachedUpToACommonPaceAndNearlyAtAQuickOne) {
    cTrabajador motor(ONDALIS_MOTOR);
    for (const int v : {100, 170, 300}) {
        ParametrosVoz voz = Carlos();
        voz.velocidad = v;
        const double oidas = PalabrasPorMinuto(motor, voz, kTextoDensoEspanol);
        EXPECT_NEAR(oidas, v, v * (v < 200 ? .05 : .11)) << v;
    }
}

TEST(RitmoVoz, AShortSentenceOfLongWordsHasNearlyTheCommonPace) {
    cTrabajador motor(ONDALIS_MOTOR);
    const auto segundos = [&](std::u16string texto) {
        return static_cast<double>(motor.Di(Una(Carlos(), std::move(texto))).pcm.size()) / 22050;
    };
    const double sola = segundos(u"extraordinariamente");
    std::u16string muchas;
    for (int i = 0; i < 60; i++) muchas += u"extraordinariamente ";
    EXPECT_GT(sola, segundos(muchas) / 60 * 1.1);
}

TEST(RitmoVoz, ALongTextKeepsThePaceThroughAllOfItsPieces) {
    std::u16string texto;
    for (const TextoEspanol &t : kTextosEspanoles) texto += std::u16string(t.texto) + u"\n\n";
    cTrabajador motor(ONDALIS_MOTOR);
    for (const int v : {170, 350}) {
        ParametrosVoz voz = Carlos();
        voz.velocidad = v;
        EXPECT_NEAR(PalabrasPorMinuto(motor, voz, texto), v, v * .05) << v;
    }
}

TEST(RitmoVoz, TheOtherLanguagesDoToo) {
    cTrabajador motor(ONDALIS_MOTOR);
    for (const char *idioma : {"gmw/en", "gmw/en-US", "roa/fr", "gmw/de", "roa/it"}) {
        const std::string_view propio = idioma == std::string_view("gmw/en-US") ? "gmw/en" : idioma;
        const auto texto = std::find_if(kTextos.begin(), kTextos.end(),
                                        [propio](const TextosLengua &t) { return t.idioma == propio; });
        ASSERT_NE(texto, kTextos.end());
        ParametrosVoz voz = Carlos();
        voz.voz = idioma;
        for (const int v : {70, 100, 170, 250, 350, 450}) {
            voz.velocidad = v;
            EXPECT_NEAR(PalabrasPorMinuto(motor, voz, texto->prueba), v, v * .05) << idioma << ' ' << v;
        }
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
