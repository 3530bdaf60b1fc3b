// The real worker with eSpeak NG: how it sounds, measured, and what it survives.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <set>

#include "worker/Locuciones.h"
#include "worker/TextosLenguas.h"

namespace ondalis {
namespace {

const std::u16string kFrase =
    u"El perro de San Roque no tiene rabo porque Ramón Ramírez se lo ha cortado; mañana vendrá a contarlo.";

class cMotorEspeakVoz : public testing::Test {
protected:
    Oido Di(const ParametrosVoz &voz, const std::u16string &texto = kFrase) {
        Oido oido = m_motor.Di(Una(voz, texto));
        EXPECT_TRUE(oido.fin);
        EXPECT_EQ(oido.error, "");
        return oido;
    }
    cTrabajador m_motor{ONDALIS_MOTOR};
};

TEST_F(cMotorEspeakVoz, PitchIsTheHertzAskedForWithinAFewPerCent) {
    for (const int tono : {70, 105, 160, 210}) {
        ParametrosVoz voz = Carlos();
        voz.tono = tono;
        const Oido oido = Di(voz, std::u16string(kTextos[0].prueba.substr(0, 600)));
        EXPECT_NEAR(TonoMediano(oido.pcm, 22050), tono, tono * .05) << tono;
    }
}

TEST_F(cMotorEspeakVoz, FluctuationWidensThePitch) {
    ParametrosVoz plana = Carlos(), viva = Carlos();
    plana.fluctuacion = 0, viva.fluctuacion = 100;
    EXPECT_NEAR(TonoMediano(Di(plana).pcm, 22050), 105, 6);
    EXPECT_LT(Dispersion(Di(plana).pcm) * 3, Dispersion(Di(viva).pcm));
}

TEST_F(cMotorEspeakVoz, EachOfTheFiveValuesIsHeard) {
    const auto fresca = [](const ParametrosVoz &voz) { return DiFresco(ONDALIS_MOTOR, Una(voz, u"hola")).pcm; };
    ASSERT_EQ(fresca(Carlos()), fresca(Carlos()));
    std::set<std::vector<std::int16_t>> sonidos{fresca(Carlos())};
    for (int cual = 0; cual < 5; cual++) {
        ParametrosVoz voz = Carlos();
        (cual == 0   ? voz.tono
         : cual == 1 ? voz.fluctuacion
         : cual == 2 ? voz.aspereza
         : cual == 3 ? voz.diafonia
                     : voz.tamCabeza) = 80;
        sonidos.insert(fresca(voz));
    }
    EXPECT_EQ(sonidos.size(), 6u);
}

TEST_F(cMotorEspeakVoz, ThePlainVoiceOfAFileIsNotTheFormantVoice) {
    const auto fresca = [](const ParametrosVoz &voz) { return DiFresco(ONDALIS_MOTOR, Una(voz, u"hola")).pcm; };
    EXPECT_NE(fresca(Llana("roa/es")), fresca(Carlos()));
    EXPECT_EQ(fresca(Llana("es")), fresca(Llana("roa/es")));
}

TEST_F(cMotorEspeakVoz, LouderIsLouderAndSilentIsSilentWithoutAnyOtherChange) {
    std::vector<double> niveles;
    for (const double ganancia : {0., .25, .5, 1.}) {
        ParametrosVoz voz = Carlos();
        voz.ganancia = ganancia;
        niveles.push_back(Nivel(Di(voz).pcm));
    }
    EXPECT_EQ(niveles[0], 0);
    EXPECT_NEAR(niveles[1] * 4, niveles[3], niveles[3] * .01);
    EXPECT_NEAR(niveles[2] * 2, niveles[3], niveles[3] * .01);
}

TEST_F(cMotorEspeakVoz, FullVolumeDoesNotClip) {
    for (const ParametrosVoz &voz : {Carlos(), Llana("roa/es"), Llana("gmw/en-US"), Llana("roa/fr")}) {
        std::size_t topes = 0;
        for (const std::int16_t m : Di(voz).pcm) topes += m > 32700 || m < -32700;
        EXPECT_LE(topes, 2u) << voz.voz;
    }
}

TEST_F(cMotorEspeakVoz, FasterIsShorterOverTheWholeRange) {
    std::size_t antes = SIZE_MAX;
    for (const int v : {70, 75, 80, 90, 120, 170, 250, 350, 445}) {
        ParametrosVoz voz = Carlos();
        voz.velocidad = v;
        const std::size_t n = Di(voz).pcm.size();
        EXPECT_LT(n, antes) << v;
        antes = n;
    }
}

TEST_F(cMotorEspeakVoz, TheSpeedIsRealWordsAMinute) {
    // A narrative of 60 words other than the one that the calibration was measured on.
    const std::u16string texto =
        u"La abuela guardaba las llaves del desván en una caja de galletas. Nadie se atrevía a subir, porque decían "
        u"que allí dormía un gato enorme. Una tarde de lluvia, los niños decidieron averiguarlo. Abrieron la puerta "
        u"despacio, encendieron una vela y miraron alrededor. Sólo encontraron cartas antiguas, un reloj parado y "
        u"el retrato de una mujer que sonreía.";
    for (const int v : {70, 120, 170, 250, 350}) {
        ParametrosVoz voz = Carlos();
        voz.velocidad = v;
        const Oido oido = Di(voz, texto);
        const double minutos = static_cast<double>(oido.pcm.size()) / 22050 / 60;
        EXPECT_NEAR(static_cast<double>(oido.palabras.size()) / minutos, v, v * .15) << v;
    }
}

TEST_F(cMotorEspeakVoz, SpeedVolumePitchAndEmphasisOfASpanAct) {
    const auto dice = [this](const ParametrosVoz &voz, std::vector<Tramo> tramos) {
        tramos.push_back(Texto(kFrase));
        const Oido oido = m_motor.Di(Una(voz, std::move(tramos)));
        EXPECT_TRUE(oido.fin);
        return oido;
    };
    for (const ParametrosVoz &voz : {Carlos(), Llana("roa/es")}) {
        const Oido propia = dice(voz, {});
        const double largo = static_cast<double>(propia.pcm.size()), tono = TonoMediano(propia.pcm, 22050);
        const auto doble = dice(voz, {Orden(TipoTramo::Velocidad, 2)});
        EXPECT_NEAR(static_cast<double>(doble.pcm.size()), largo / 2, largo * .08) << voz.formantes;
        const auto bajo = dice(voz, {Orden(TipoTramo::Volumen, .5)});
        EXPECT_NEAR(Nivel(bajo.pcm), Nivel(propia.pcm) / 2, Nivel(propia.pcm) * .03) << voz.formantes;
        const auto agudo = dice(voz, {Orden(TipoTramo::Tono, 1.5)});
        EXPECT_NEAR(TonoMediano(agudo.pcm, 22050), tono * 1.5, tono * .1) << voz.formantes;
        const auto vuelta = dice(voz, {Orden(TipoTramo::Tono, 1.5), Orden(TipoTramo::Tono, 1)});
        EXPECT_NEAR(TonoMediano(vuelta.pcm, 22050), tono, tono * .05) << voz.formantes;
        const auto fuerte = dice(voz, {Orden(TipoTramo::Enfasis, 1)});
        EXPECT_GT(static_cast<double>(fuerte.pcm.size()), largo * 1.05) << voz.formantes;
        EXPECT_GT(Nivel(fuerte.pcm), Nivel(propia.pcm) * 1.1) << voz.formantes;
    }
}

TEST_F(cMotorEspeakVoz, StretchedSpeechKeepsItsPitchAndItsWords) {
    ParametrosVoz voz = Carlos();
    voz.velocidad = 70;
    const Oido lenta = Di(voz), normal = Di(Carlos());
    EXPECT_FALSE(lenta.tarde);
    EXPECT_EQ(PalabrasDe(lenta, kFrase), PalabrasDe(normal, kFrase));
    EXPECT_NEAR(TonoMediano(lenta.pcm, 22050), 105, 8);
}

TEST_F(cMotorEspeakVoz, TextsKnownToKillTheEngineAreSpoken) {
    const auto veces = [](const char16_t *unidad, int n) {
        std::u16string texto;
        for (int i = 0; i < n; i++) texto += unidad;
        return texto;
    };
    ParametrosVoz es = Llana("roa/es"), en = Llana("gmw/en");
    es.velocidad = en.velocidad = 450;
    EXPECT_GT(Di(es, veces(u"a.", 85)).pcm.size(), 22050u);
    EXPECT_GT(Di(es, veces(u"U.S.", 50)).pcm.size(), 22050u);
    EXPECT_GT(Di(en, veces(u"s'", 220)).pcm.size(), 22050u);
    EXPECT_GT(Di(en, veces(u"s’", 220)).pcm.size(), 22050u);
    EXPECT_GT(Di(en, veces(u"U.S.", 500)).pcm.size(), 22050u);
    EXPECT_GT(Di(en, veces(u"e.g. ", 100)).pcm.size(), 22050u);
    EXPECT_GT(Di(Llana("gmw/en-US"), veces(u" .ñ", 290)).pcm.size(), 22050u);
    Di(Llana("roa/fr"), veces(u".\u0301 ", 247));
    EXPECT_GT(Di(es, veces(u"x", 5000)).pcm.size(), 22050u);
    EXPECT_EQ(Di(es, u"sigue viva").palabras.size(), 2u);
}

TEST_F(cMotorEspeakVoz, AnUnknownVoiceIsAnErrorAndAnEndAndTheNextUtteranceIsSpoken) {
    for (const char *voz : {"roa/xx", "", "zz", "../../etc/passwd", "/etc/passwd", "roa", "mb/mb-es1"}) {
        for (const bool formantes : {false, true}) {
            ParametrosVoz p = Carlos();
            p.voz = voz, p.formantes = formantes;
            const Oido oido = m_motor.Di(Una(p, u"hola"));
            EXPECT_TRUE(oido.fin) << voz;
            EXPECT_NE(oido.error, "") << voz;
            EXPECT_EQ(oido.hercios, 0u) << voz;
            EXPECT_TRUE(oido.pcm.empty()) << voz;
        }
    }
    ParametrosVoz otro = Carlos();
    otro.motor = "nadie";
    EXPECT_NE(m_motor.Di(Una(otro, u"hola")).error, "");
    EXPECT_EQ(Di(Carlos(), u"hola").palabras.size(), 1u);
}

TEST_F(cMotorEspeakVoz, TheVoicesAreThePlainOnesWithoutThoseThatAreNotInstalled) {
    cTrabajador motor{ONDALIS_MOTOR, {"ONDALIS_MOTORES=/nada"}};  // no command engines
    motor.Envia(TramaPideVoces{});
    std::vector<TramaVoz> voces;
    std::optional<Trama> trama;
    while ((trama = motor.Siguiente()) && std::holds_alternative<TramaVoz>(*trama))
        voces.push_back(std::get<TramaVoz>(*trama));
    EXPECT_EQ(trama, std::optional<Trama>(TramaFin{0}));
    EXPECT_GT(voces.size(), 80u);
    std::set<std::string> distintas;
    const std::map<std::string, std::string> esperados{
        {"roa/es", "40A;C0A"}, {"roa/es-419", "40A;C0A"}, {"gmw/en-US", "409"}, {"gmw/en", "809"},
        {"gmw/de", "407"},     {"roa/fr", "40C"},         {"roa/it", "410"}};
    for (const TramaVoz &v : voces) {
        EXPECT_EQ(v.motor, "espeak");
        EXPECT_EQ(v.fabricante, "eSpeak NG");
        EXPECT_EQ(v.voz.find("mb"), std::string::npos) << v.voz;
        EXPECT_NE(v.nombre, "");
        EXPECT_GT(v.plazoMs, 0u);
        EXPECT_TRUE(v.genero == "Male" || v.genero == "Female" || v.genero.empty()) << v.genero;
        const auto lcid = esperados.find(v.voz);
        if (lcid != esperados.end()) {
            EXPECT_EQ(v.lengua, lcid->second) << v.voz;
        }
        distintas.insert(v.voz);
    }
    EXPECT_EQ(distintas.size(), voces.size());
    for (const auto &[voz, lcid] : esperados) EXPECT_TRUE(distintas.contains(voz)) << voz;
    // Each can be spoken with.
    for (std::size_t i = 0; i < voces.size(); i += 10)
        EXPECT_FALSE(Di(Llana(voces[i].voz), u"1 2").pcm.empty()) << voces[i].voz;
}

TEST_F(cMotorEspeakVoz, ListingTheVoicesLeavesTheSoundAsItWas) {
    m_motor.Envia(TramaPideVoces{});
    const Oido despues = Di(Carlos()), fresca = DiFresco(ONDALIS_MOTOR, Una(Carlos(), kFrase));
    EXPECT_EQ(despues.pcm, fresca.pcm);
}

TEST_F(cMotorEspeakVoz, NumbersAreReadAsTheCLocaleWritesThemInASpanishSession) {
    // Made in the test's own folder where the machine has its sources; the folder is searched beside the system's.
    const std::string carpeta = std::string(std::getenv("HOME")) + "/locales";
    const std::string orden = "locale -a 2>/dev/null | grep -qi '^es_ES.utf-\\?8$' || { mkdir -p '" + carpeta +
                              "' && localedef -i es_ES -f UTF-8 '" + carpeta + "/es_ES.UTF-8' >/dev/null 2>&1; }";
    if (std::system(orden.c_str()) != 0) GTEST_SKIP() << "no locale es_ES.UTF-8 here and no localedef to make it";
    cTrabajador espanol(ONDALIS_MOTOR, {"LC_ALL=es_ES.UTF-8", "LANG=es_ES.UTF-8", "LOCPATH=" + carpeta});
    ParametrosVoz voz = Carlos();
    voz.aspereza = 37, voz.diafonia = 23, voz.tamCabeza = 61;
    EXPECT_EQ(espanol.Di(Una(voz, kFrase)).pcm, DiFresco(ONDALIS_MOTOR, Una(voz, kFrase)).pcm);
}

}  // namespace
}  // namespace ondalis
