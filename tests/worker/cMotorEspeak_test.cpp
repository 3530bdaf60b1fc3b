// The real worker with eSpeak NG: what is said when.
#include <gtest/gtest.h>

#include "worker/Locuciones.h"

namespace ondalis {
namespace {

using Lista = std::vector<std::u16string>;

class cMotorEspeak : public testing::Test {
protected:
    Oido Di(const Locucion &l) {
        Oido oido = m_motor.Di(l);
        EXPECT_TRUE(oido.fin);
        EXPECT_FALSE(oido.tarde);
        EXPECT_EQ(oido.error, "");
        for (std::size_t i = 1; i < oido.palabras.size(); i++)
            EXPECT_GE(oido.palabras[i].muestra, oido.palabras[i - 1].muestra);
        for (const TramaPalabra &p : oido.palabras) EXPECT_LT(p.muestra, oido.pcm.size());
        return oido;
    }
    Lista Palabras(const ParametrosVoz &voz, const std::u16string &texto) {
        return PalabrasDe(Di(Una(voz, texto)), texto);
    }

    cTrabajador m_motor{ONDALIS_MOTOR};
};

TEST_F(cMotorEspeak, EveryWordIsToldOnceWithItsPlaceInTheSource) {
    EXPECT_EQ(Palabras(Carlos(), u"El niño comió jamón; después, ¡qué sueño!"),
              (Lista{u"El", u"niño", u"comió", u"jamón", u"después", u"qué", u"sueño"}));
}

TEST_F(cMotorEspeak, NumbersAddressesAndAbbreviationsAreOneWordEach) {
    EXPECT_EQ(Palabras(Carlos(), u"Pagó 12.345,67 euros, el 25% de a@b.es, p. ej. ñandú etc. fue en EE.UU. dice."),
              (Lista{u"Pagó", u"12.345,67", u"euros", u"el", u"25%", u"de", u"a@b.es", u"p", u"ej", u"ñandú", u"etc",
                     u"fue", u"en", u"EE.UU", u"dice"}));
    EXPECT_EQ(Palabras(Llana("gmw/en-US"), u"Mr. Smith's dog can't. U.S. army e.g. one 1,234,567 times."),
              (Lista{u"Mr", u"Smith's", u"dog", u"can't", u"U.S", u"army", u"e.g", u"one", u"1,234,567", u"times"}));
    EXPECT_EQ(Palabras(Llana("roa/fr"), u"L'homme n'est pas M. Dupont aujourd'hui."),
              (Lista{u"L'homme", u"n'est", u"pas", u"M", u"Dupont", u"aujourd'hui"}));
}

TEST_F(cMotorEspeak, EmojiAndDecomposedAccentsKeepTheOffsetsRight) {
    EXPECT_EQ(Palabras(Carlos(), u"uno 😀 dos an\u0303o 👍🏽 camio\u0301n tres"),
              (Lista{u"uno", u"😀", u"dos", u"an\u0303o", u"👍🏽", u"camio\u0301n", u"tres"}));
}

TEST_F(cMotorEspeak, RightToLeftTextIsFollowedWordByWord) {
    EXPECT_EQ(Palabras(Llana("sem/he"), u"שלום עולם טוב"), (Lista{u"שלום", u"עולם", u"טוב"}));
    EXPECT_EQ(Palabras(Llana("sem/ar"), u"مرحبا بالعالم"), (Lista{u"مرحبا", u"بالعالم"}));
}

TEST_F(cMotorEspeak, CutsCarryTheOffsetsOfMarkedText) {
    // Source: `\Spd=200\uno &amp; dos`, where the ampersand's five units became one.
    Tramo tramo = Texto(u"uno & dos", 9);
    tramo.cortes.push_back({5, 18});
    const Oido oido = Di(Una(Carlos(), {Orden(TipoTramo::Velocidad, 200, true), tramo}));
    ASSERT_EQ(oido.palabras.size(), 3u);
    EXPECT_EQ(oido.palabras[0].posicion, 9u);
    EXPECT_EQ(oido.palabras[1].posicion, 13u);
    EXPECT_EQ(oido.palabras[2].posicion, 19u);
    EXPECT_EQ(oido.palabras[2].longitud, 3u);
}

TEST_F(cMotorEspeak, AWordBeginsAtTheSampleWhereItSounds) {
    // A pause moves the second word by exactly its own length.
    const Oido sin = DiFresco(ONDALIS_MOTOR, Una(Carlos(), {Texto(u"uno", 0), Texto(u"dos", 10)}));
    const Oido con =
        DiFresco(ONDALIS_MOTOR, Una(Carlos(), {Texto(u"uno", 0), Orden(TipoTramo::Pausa, 500), Texto(u"dos", 10)}));
    ASSERT_EQ(sin.palabras.size(), 2u);
    ASSERT_EQ(con.palabras.size(), 2u);
    EXPECT_EQ(con.palabras[1].muestra, sin.palabras[1].muestra + 11025);
    EXPECT_EQ(con.pcm.size(), sin.pcm.size() + 11025);
    const auto pausa = std::span(con.pcm).subspan(sin.palabras[1].muestra, 11025);
    EXPECT_EQ(Nivel(pausa), 0);
}

TEST_F(cMotorEspeak, PausesAreExactInSamples) {
    for (const double ms : {0., 1., 37., 1000., 60000.}) {
        const Oido oido = Di(Una(Carlos(), {Orden(TipoTramo::Pausa, ms)}));
        EXPECT_EQ(oido.pcm.size(), static_cast<std::size_t>(std::llround(ms * 22.05))) << ms;
    }
}

TEST_F(cMotorEspeak, MarksComeWhereTheyStand) {
    const Oido oido =
        Di(Una(Carlos(), {Nombrado(TipoTramo::Marca, u"a ñ"), Texto(u"uno.", 0), Nombrado(TipoTramo::Marca, u"b"),
                          Orden(TipoTramo::Pausa, 100), Nombrado(TipoTramo::Marca, u"")}));
    ASSERT_EQ(oido.marcas.size(), 3u);
    EXPECT_EQ(oido.marcas[0].nombre, u"a ñ");
    EXPECT_EQ(oido.marcas[0].muestra, 0u);
    EXPECT_EQ(oido.marcas[1].nombre, u"b");
    EXPECT_EQ(oido.marcas[1].muestra + 2205, oido.pcm.size());
    EXPECT_EQ(oido.marcas[2].muestra, oido.pcm.size());
}

TEST_F(cMotorEspeak, TextBeforeTheStartIsNotSpokenAndTagsBeforeItAct) {
    Locucion todo = Una(Carlos(), {Orden(TipoTramo::Velocidad, 300, true), Texto(u"uno dos tres cuatro", 5)});
    Locucion parte = todo;
    parte.desde = 13;
    const std::u16string fuente = u"     uno dos tres cuatro";
    EXPECT_EQ(PalabrasDe(Di(parte), fuente), (Lista{u"tres", u"cuatro"}));
    Locucion igual = Una(Carlos(), {Orden(TipoTramo::Velocidad, 300, true), Texto(u"tres cuatro", 13)});
    EXPECT_EQ(DiFresco(ONDALIS_MOTOR, parte).pcm, DiFresco(ONDALIS_MOTOR, igual).pcm);
    parte.desde = 1000;
    EXPECT_TRUE(Di(parte).pcm.empty());
}

TEST_F(cMotorEspeak, EmptyBlankAndTagsOnlyTextGivesNothingButTheEnd) {
    for (const Locucion &l : {Una(Carlos(), std::vector<Tramo>{}), Una(Carlos(), u""), Una(Carlos(), u" \n\t "),
                              Una(Carlos(), u"... — \"\""), Una(Carlos(), {Orden(TipoTramo::Velocidad, 200, true)})}) {
        const Oido oido = Di(l);
        EXPECT_TRUE(oido.pcm.empty());
        EXPECT_TRUE(oido.palabras.empty());
    }
}

TEST_F(cMotorEspeak, NothingOfAnUtteranceReachesTheNextOne) {
    const Oido limpia = Di(Una(Carlos(), u"Una frase limpia."));
    Di(Una(Llana("gmw/en-US"),
           {Orden(TipoTramo::Velocidad, 400, true), Orden(TipoTramo::Tono, 2), Orden(TipoTramo::Volumen, .1, true),
            Orden(TipoTramo::Puntuacion, 1), Orden(TipoTramo::Deletreo, 1), Orden(TipoTramo::Enfasis, 1),
            Texto(u"\u0001200S <b>x")}));
    const Oido despues = Di(Una(Carlos(), u"Una frase limpia."));
    // The phase of its waves is carried over: a period of the pitch more or less.
    EXPECT_NEAR(static_cast<double>(despues.pcm.size()), static_cast<double>(limpia.pcm.size()), 22050 * 2 / 105.);
    EXPECT_NEAR(Nivel(despues.pcm), Nivel(limpia.pcm), Nivel(limpia.pcm) * .03);
    EXPECT_NEAR(TonoMediano(despues.pcm, 22050), TonoMediano(limpia.pcm, 22050), 4);
    EXPECT_EQ(despues.palabras.size(), 3u);
}

TEST_F(cMotorEspeak, MarkupOfTheEngineIsPlainText) {
    const Oido oido = Di(Una(Carlos(), u"antes <break time='9s'/> después"));
    EXPECT_LT(oido.pcm.size(), 22050u * 8);
    const std::u16string fuente = u"antes <break time='9s'/> después";
    EXPECT_EQ(PalabrasDe(oido, fuente).back(), u"después");
}

TEST_F(cMotorEspeak, SpellingTellsEveryLetter) {
    const std::u16string texto = u"Año, 3";
    const Oido oido = Di(Una(Carlos(), {Orden(TipoTramo::Deletreo, 1), Texto(texto)}));
    EXPECT_EQ(PalabrasDe(oido, texto), (Lista{u"A", u"ñ", u"o", u",", u"3"}));
    const Oido junta = Di(Una(Carlos(), {Orden(TipoTramo::Deletreo, 1), Orden(TipoTramo::Deletreo, 0), Texto(texto)}));
    EXPECT_EQ(PalabrasDe(junta, texto), (Lista{u"Año", u"3"}));
}

TEST_F(cMotorEspeak, SpokenPunctuationNamesTheSignsAndKeepsTheWords) {
    for (const ParametrosVoz &voz : {Carlos(), Llana("roa/es"), Llana("roa/pt"), Llana("zle/ru")}) {
        const std::u16string texto = u"uno, dos; (tres)";
        const Oido sin = Di(Una(voz, texto));
        const Oido con = Di(Una(voz, {Orden(TipoTramo::Puntuacion, 1), Texto(texto)}));
        EXPECT_GT(con.pcm.size(), sin.pcm.size() * 3 / 2) << voz.voz;
        EXPECT_EQ(PalabrasDe(con, texto), PalabrasDe(sin, texto)) << voz.voz;
    }
}

TEST_F(cMotorEspeak, InAFormantVoiceASignAloneBetweenBlanksIsSpokenByItsName) {
    const std::u16string suelta = u"hola   ,  mundo", junta = u"hola, mundo";
    EXPECT_EQ(Palabras(Carlos(), suelta), (Lista{u"hola", u",", u"mundo"}));
    const auto largo = [this](const ParametrosVoz &voz, const std::u16string &t) { return Di(Una(voz, t)).pcm.size(); };
    EXPECT_GT(largo(Carlos(), suelta), largo(Carlos(), junta) + 5000);
    EXPECT_EQ(Palabras(Llana("roa/es"), suelta), (Lista{u"hola", u"mundo"}));
}

TEST_F(cMotorEspeak, AVoiceOrLanguageInTheTextActsAndUnknownOnesChangeNothing) {
    const auto dice = [](std::vector<Tramo> antes) {
        antes.push_back(Texto(u"casa"));
        return DiFresco(ONDALIS_MOTOR, Una(Carlos(), antes)).pcm;
    };
    const auto propia = dice({});
    EXPECT_NE(dice({Nombrado(TipoTramo::Idioma, u"en-US")}), propia);
    EXPECT_EQ(dice({Nombrado(TipoTramo::Idioma, u"en-US")}), dice({Nombrado(TipoTramo::Voz, u"gmw/en-US")}));
    EXPECT_EQ(dice({Nombrado(TipoTramo::Idioma, u"en-US"), Nombrado(TipoTramo::Idioma, u"")}), propia);
    EXPECT_EQ(dice({Nombrado(TipoTramo::Voz, u"roa/xx")}), propia);
    EXPECT_EQ(dice({Nombrado(TipoTramo::Idioma, u"tlh-XX")}), propia);
    EXPECT_EQ(dice({Nombrado(TipoTramo::Voz, u"../roa/es")}), propia);
}

TEST_F(cMotorEspeak, ALongTextIsToldToItsLastWordInOrder) {
    std::u16string texto;
    std::size_t cuenta = 0;
    for (int i = 0; i < 600; i++) {
        texto += i % 7 == 6 ? u"Fin de la frase larga.\n\n" : u"Después vino otra cosa, ";
        cuenta += i % 7 == 6 ? 5 : 4;
    }
    ParametrosVoz voz = Carlos();
    voz.velocidad = 450;
    const Oido oido = Di(Una(voz, texto));
    EXPECT_EQ(oido.palabras.size(), cuenta);
    EXPECT_EQ(PalabrasDe(oido, texto).back(), u"cosa");
}

}  // namespace
}  // namespace ondalis
