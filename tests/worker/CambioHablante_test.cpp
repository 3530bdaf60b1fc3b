// The voice changed in mid-utterance: its values and its language, one by one and together as another speaker.
#include <gtest/gtest.h>

#include "worker/Locuciones.h"
#include "worker/MedidasVoz.h"

namespace ondalis {
namespace {

const std::u16string kFrase =
    u"La casa de la colina tenía una ventana muy grande, y desde ella se veía el mar entero cuando amanecía.";

const HablanteIBM &Hablante(std::string_view nombre) {
    for (const HablanteIBM &h : HablantesIBM())
        if (h.nombre == nombre) return h;
    std::abort();
}

std::vector<Tramo> CambioA(const HablanteIBM &h) {
    return {Nombrado(TipoTramo::Voz, std::u16string(h.idioma, h.idioma + std::string_view(h.idioma).size())),
            Orden(TipoTramo::Tono, h.tono, true),
            Orden(TipoTramo::Fluctuacion, h.fluctuacion, true),
            Orden(TipoTramo::Aspereza, h.aspereza, true),
            Orden(TipoTramo::Diafonia, h.diafonia, true),
            Orden(TipoTramo::TamCabeza, h.tamCabeza, true)};
}

TEST(CambioHablante, EachValueActsFromItsPlaceOnAsIfTheVoiceHadIt) {
    struct Caso {
        TipoTramo tipo;
        int ParametrosVoz::*campo;
        int valor;
    };
    for (const Caso &c : {Caso{TipoTramo::Fluctuacion, &ParametrosVoz::fluctuacion, 90},
                          Caso{TipoTramo::Aspereza, &ParametrosVoz::aspereza, 70},
                          Caso{TipoTramo::Diafonia, &ParametrosVoz::diafonia, 60},
                          Caso{TipoTramo::TamCabeza, &ParametrosVoz::tamCabeza, 10}}) {
        ParametrosVoz voz = Carlos();
        voz.*c.campo = c.valor;
        const auto directa = DiFresco(ONDALIS_MOTOR, Una(voz, kFrase)).pcm;
        const auto etiqueta = DiFresco(ONDALIS_MOTOR, Una(Carlos(), {Orden(c.tipo, c.valor, true), Texto(kFrase)})).pcm;
        EXPECT_EQ(etiqueta, directa) << static_cast<int>(c.tipo);
        EXPECT_NE(etiqueta, DiFresco(ONDALIS_MOTOR, Una(Carlos(), kFrase)).pcm) << static_cast<int>(c.tipo);
    }
}

TEST(CambioHablante, WhatStandsBeforeTheChangeSoundsAsWithoutIt) {
    const Oido sola = DiFresco(ONDALIS_MOTOR, Una(Carlos(), kFrase));
    std::vector<Tramo> tramos{Texto(kFrase)};
    for (Tramo &tramo : CambioA(Hablante("Gisela"))) tramos.push_back(std::move(tramo));
    tramos.push_back(Texto(u"Guten Tag.", 200));
    const Oido dos = DiFresco(ONDALIS_MOTOR, Una(Carlos(), tramos));
    ASSERT_GT(dos.pcm.size(), sola.pcm.size());
    // The last sentence of an utterance goes without its pause.
    const std::size_t mudo = sola.pcm.size() - 22050 / 4;
    EXPECT_TRUE(std::equal(sola.pcm.begin(), sola.pcm.begin() + static_cast<std::ptrdiff_t>(mudo), dos.pcm.begin()));
}

TEST(CambioHablante, LanguageFilePitchAndFourValuesTogetherAreTheOtherSpeaker) {
    for (const char *nombre : {"Pilar", "Pepe", "Abuelo", "Jane", "Reed", "Mamie", "Opa", "Lucia"}) {
        const HablanteIBM &h = Hablante(nombre);
        std::vector<Tramo> tramos = CambioA(h);
        tramos.push_back(Texto(kFrase));
        EXPECT_EQ(DiFresco(ONDALIS_MOTOR, Una(Carlos(), tramos)).pcm,
                  DiFresco(ONDALIS_MOTOR, Una(ConSusValores(h), kFrase)).pcm)
            << nombre;
    }
}

TEST(CambioHablante, SeveralSpeakersInOneUtteranceAreHeardEachAtItsPitchWithEveryWordAtItsPlace) {
    cTrabajador motor(ONDALIS_MOTOR);
    const std::vector<const char *> quienes{"Carlos", "Pilar", "Abuelo", "Pepe"};
    std::vector<Tramo> tramos;
    std::u16string fuente;
    std::vector<std::uint32_t> limites;
    for (const char *quien : quienes) {
        for (Tramo &tramo : CambioA(Hablante(quien))) tramos.push_back(std::move(tramo));
        fuente += u"{voz}";  // the place of a tag in the source
        limites.push_back(static_cast<std::uint32_t>(fuente.size()));
        tramos.push_back(Texto(kFrase + u" ", static_cast<std::uint32_t>(fuente.size())));
        fuente += kFrase + u" ";
    }
    const Oido oido = motor.Di(Una(Carlos(), tramos));
    EXPECT_FALSE(oido.tarde);
    const std::size_t cada = oido.palabras.size() / quienes.size();
    ASSERT_EQ(cada, 20u);
    for (std::size_t i = 0; i < quienes.size(); i++) {
        EXPECT_EQ(oido.palabras[i * cada].posicion, limites[i]);
        const std::size_t desde = oido.palabras[i * cada].muestra;
        const std::size_t hasta = i + 1 < quienes.size() ? oido.palabras[(i + 1) * cada].muestra : oido.pcm.size();
        const int tono = Hablante(quienes[i]).tono;
        EXPECT_NEAR(Mide(std::span(oido.pcm).subspan(desde, hasta - desde)).tono, tono, tono * .07) << quienes[i];
    }
    for (const std::u16string &palabra : PalabrasDe(oido, fuente)) EXPECT_NE(kFrase.find(palabra), kFrase.npos);
}

TEST(CambioHablante, RecoveryKeepsTheSpeakerThatTheTextHadReached) {
    const HablanteIBM &pilar = Hablante("Pilar");
    std::vector<Tramo> tramos{Texto(u"Uno dos tres. ", 0)};
    for (Tramo &tramo : CambioA(pilar)) tramos.push_back(std::move(tramo));
    tramos.push_back(Texto(u"cuatro " + kFrase, 100));
    Locucion resto = Una(Carlos(), tramos);
    resto.desde = 107;
    EXPECT_EQ(DiFresco(ONDALIS_MOTOR, resto).pcm, DiFresco(ONDALIS_MOTOR, Una(ConSusValores(pilar), kFrase)).pcm);
}

TEST(CambioHablante, AbsurdValuesAreClampedAndAPlainVoiceKeepsItsOwn) {
    const auto dice = [](ParametrosVoz voz, TipoTramo tipo, double valor) {
        return DiFresco(ONDALIS_MOTOR, Una(std::move(voz), {Orden(tipo, valor, true), Texto(u"hola")})).pcm;
    };
    for (const TipoTramo tipo :
         {TipoTramo::Fluctuacion, TipoTramo::Aspereza, TipoTramo::Diafonia, TipoTramo::TamCabeza}) {
        EXPECT_EQ(dice(Carlos(), tipo, 1e30), dice(Carlos(), tipo, 100));
        EXPECT_EQ(dice(Carlos(), tipo, -7), dice(Carlos(), tipo, 0));
        EXPECT_EQ(dice(Carlos(), tipo, std::nan("")), DiFresco(ONDALIS_MOTOR, Una(Carlos(), u"hola")).pcm);
        EXPECT_EQ(dice(Llana("roa/es"), tipo, 80), DiFresco(ONDALIS_MOTOR, Una(Llana("roa/es"), u"hola")).pcm);
    }
}

}  // namespace
}  // namespace ondalis
