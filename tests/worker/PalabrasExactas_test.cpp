// Every word is told at its exact place in the source, and at the sample where it begins to sound.
#include <gtest/gtest.h>

#include "worker/Locuciones.h"

namespace ondalis {
namespace {

using Lista = std::vector<std::u16string>;

// A pause put before the words makes their sound stand between silences: the sample told is compared with it.
Locucion ConPausas(const ParametrosVoz &voz, const Lista &palabras) {
    std::vector<Tramo> tramos;
    std::uint32_t origen = 0;
    for (const std::u16string &palabra : palabras) {
        tramos.push_back(Orden(TipoTramo::Pausa, 400));
        tramos.push_back(Texto(palabra, origen));
        origen += static_cast<std::uint32_t>(palabra.size()) + 1;
    }
    return Una(voz, tramos);
}

TEST(PalabrasExactas, TheSampleOfAWordIsWhereItsSoundBeginsAtEverySpeedAndRoughness) {
    const Lista palabras{u"mano", u"luna", u"año", u"rosa", u"nube", u"limón"};
    for (const int velocidad : {70, 82, 170, 300, 425, 450})
        for (const int aspereza : {0, 100}) {
            cTrabajador motor(ONDALIS_MOTOR);
            ParametrosVoz voz = Carlos();
            voz.velocidad = velocidad, voz.aspereza = aspereza;
            const Oido oido = motor.Di(ConPausas(voz, palabras));
            ASSERT_EQ(oido.palabras.size(), palabras.size()) << velocidad;
            EXPECT_FALSE(oido.tarde);
            for (const TramaPalabra &p : oido.palabras) {
                std::size_t suena = p.muestra;
                while (suena < oido.pcm.size() && std::abs(oido.pcm[suena]) < 150) suena++;
                EXPECT_LT(suena - p.muestra, 22050u / 20) << velocidad;  // 50 ms
                const std::size_t antes = p.muestra > 441 ? p.muestra - 441 : 0;
                EXPECT_LT(Nivel(std::span(oido.pcm).subspan(antes, p.muestra - antes)), 100) << velocidad;
            }
        }
}

TEST(PalabrasExactas, InStretchedAndShortenedSpeechTheWordsKeepTheirPlaceInProportion) {
    const std::u16string texto =
        u"uno dos tres cuatro cinco seis siete ocho nueve diez once doce trece catorce quince dieciséis y uno más aún";
    // Parts of the whole.
    const auto partes = [&texto](int velocidad, double &segundos) {
        ParametrosVoz voz = Carlos();
        voz.velocidad = velocidad;
        const Oido oido = DiFresco(ONDALIS_MOTOR, Una(voz, texto));
        segundos = static_cast<double>(oido.pcm.size()) / 22050;
        std::vector<double> donde;
        for (const TramaPalabra &p : oido.palabras)
            donde.push_back(static_cast<double>(p.muestra) / static_cast<double>(oido.pcm.size()));
        return donde;
    };
    // Each pair has one speed of the engine and differs by our own stretching alone.
    for (const auto &[propia, nuestra] : {std::pair{91, 70}, std::pair{418, 450}}) {
        double segundos = 0, otros = 0;
        const auto a = partes(propia, otros), b = partes(nuestra, segundos);
        ASSERT_EQ(a.size(), 20u);
        ASSERT_EQ(b.size(), a.size());
        for (std::size_t i = 0; i < a.size(); i++) EXPECT_NEAR(a[i] * segundos, b[i] * segundos, .03) << i;
    }
}

TEST(PalabrasExactas, TagsAccentsEmojiMarksNumbersAndAbbreviationsKeepTheOffsetsInEverySpan) {
    cTrabajador motor(ONDALIS_MOTOR);
    const Lista trozos{u"El Sr. Núñez, p. ej., pagó 1.234,50 € el 3/4/2021. ",
                       u"👩‍👩‍👧 mañana café\u0301 cafe\u0301 😀 fin. ",
                       u"EE.UU. y la O.N.U. dicen: «¡sí!» — ¿no? (quizá) 25% ", u"a@b.es https://x.es/y?z=1 L'été c++ ",
                       u"العربية עברית Ελλάδα привет fin"};
    std::u16string fuente;
    std::vector<Tramo> tramos;
    for (std::size_t i = 0; i < trozos.size(); i++) {
        fuente += u"\\Spd=200\\";
        tramos.push_back(Orden(TipoTramo::Velocidad, 200 + 10. * static_cast<double>(i), true));
        tramos.push_back(Texto(trozos[i], static_cast<std::uint32_t>(fuente.size())));
        fuente += trozos[i];
    }
    const Oido oido = motor.Di(Una(Carlos(), tramos));
    EXPECT_FALSE(oido.tarde);
    EXPECT_EQ(PalabrasDe(oido, fuente), (Lista{u"El",
                                               u"Sr",
                                               u"Núñez",
                                               u"p",
                                               u"ej",
                                               u"pagó",
                                               u"1.234,50",
                                               u"€",
                                               u"el",
                                               u"3",
                                               u"4",
                                               u"2021",
                                               u"👩‍👩‍👧",
                                               u"mañana",
                                               u"café\u0301",
                                               u"cafe\u0301",
                                               u"😀",
                                               u"fin",
                                               u"EE.UU",
                                               u"y",
                                               u"la",
                                               u"O.N.U",
                                               u"dicen",
                                               u"sí",
                                               u"no",
                                               u"quizá",
                                               u"25%",
                                               u"a@b.es",
                                               u"https",
                                               u"x.es",
                                               u"y?z=1",
                                               u"L'été",
                                               u"c++",
                                               u"العربية",
                                               u"עברית",
                                               u"Ελλάδα",
                                               u"привет",
                                               u"fin"}));
}

TEST(PalabrasExactas, SpelledTextTellsEachLetterAtItsSampleBetweenOtherText) {
    cTrabajador motor(ONDALIS_MOTOR);
    const std::u16string fuente = u"antes año\u0301 ñ1 después";
    const Oido oido =
        motor.Di(Una(Carlos(), {Texto(u"antes ", 0), Orden(TipoTramo::Deletreo, 1), Texto(u"año\u0301 ñ1", 6),
                                Orden(TipoTramo::Deletreo, 0), Texto(u" después", 13)}));
    EXPECT_FALSE(oido.tarde);
    EXPECT_EQ(PalabrasDe(oido, fuente), (Lista{u"antes", u"a", u"ñ", u"o\u0301", u"ñ", u"1", u"después"}));
    for (std::size_t i = 1; i < oido.palabras.size(); i++)
        EXPECT_GT(oido.palabras[i].muestra, oido.palabras[i - 1].muestra + 2205) << i;
}

}  // namespace
}  // namespace ondalis
