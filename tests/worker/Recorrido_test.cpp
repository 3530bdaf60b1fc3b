#include "worker/Recorrido.h"

#include <gtest/gtest.h>

#include <limits>

#include "worker/Locuciones.h"

namespace ondalis {
namespace {

TEST(Recorrido, ACutMovesOffsetsFromItsPlaceOn) {
    Tramo tramo = Texto(u"abcdef", 10);
    tramo.cortes.push_back({3, 40});
    EXPECT_EQ(Origen(tramo, 0), 10u);
    EXPECT_EQ(Origen(tramo, 2), 12u);
    EXPECT_EQ(Origen(tramo, 3), 40u);
    EXPECT_EQ(Origen(tramo, 5), 42u);
    tramo.cortes.clear();
    EXPECT_EQ(Origen(tramo, 5), 5u);
}

TEST(Recorrido, TagsActUntilTheyAreTakenBack) {
    const Locucion l =
        Una(Carlos(), {Orden(TipoTramo::Velocidad, 300, true), Texto(u"a"), Orden(TipoTramo::Velocidad, 1),
                       Orden(TipoTramo::Volumen, .5), Texto(u"b"), Orden(TipoTramo::Tono, 2),
                       Nombrado(TipoTramo::Idioma, u"en"), Texto(u"c"), Nombrado(TipoTramo::Idioma, u""), Texto(u"d")});
    Recorrido r(l);
    ASSERT_TRUE(r.Siguiente());
    EXPECT_EQ(r.Estado().velocidad, 300);
    ASSERT_TRUE(r.Siguiente());
    EXPECT_EQ(r.Estado().velocidad, 170);
    EXPECT_EQ(r.Estado().ganancia, .5);
    ASSERT_TRUE(r.Siguiente());
    EXPECT_EQ(r.Estado().tono, 210);
    EXPECT_EQ(r.Estado().idioma, "en");
    ASSERT_TRUE(r.Siguiente());
    EXPECT_EQ(r.Estado().idioma, "");
    EXPECT_FALSE(r.Siguiente());
}

TEST(Recorrido, BeforeTheStartTextPausesAndMarksAreLeftOutButTagsAct) {
    Locucion l = Una(Carlos(), {Texto(u"uno dos ", 0), Nombrado(TipoTramo::Marca, u"m"), Orden(TipoTramo::Pausa, 500),
                                Orden(TipoTramo::Velocidad, 300, true), Texto(u"tres cuatro", 20)});
    l.desde = 25;
    Recorrido r(l);
    const auto paso = r.Siguiente();
    ASSERT_TRUE(paso);
    EXPECT_EQ(paso->tramo->texto.substr(paso->inicio), u"cuatro");
    EXPECT_EQ(r.Estado().velocidad, 300);
    EXPECT_FALSE(r.Siguiente());
}

TEST(Recorrido, AStartBehindTheLastWordKeepsThePauseAndMarkThatFollowIt) {
    Locucion l = Una(Carlos(), {Texto(u"uno dos", 0), Nombrado(TipoTramo::Marca, u"m"), Texto(u"tres", 20)});
    l.desde = 7;
    Recorrido r(l);
    EXPECT_EQ(r.Siguiente()->tipo, Paso::Tipo::Marca);
    EXPECT_EQ(r.Siguiente()->tipo, Paso::Tipo::Texto);
    l.desde = 20;
    Recorrido directo(l);
    EXPECT_EQ(directo.Siguiente()->tipo, Paso::Tipo::Texto);
}

TEST(Recorrido, AStartBehindEverythingSpeaksNothing) {
    Locucion l = Una(Carlos(), u"uno dos");
    l.desde = 1000;
    EXPECT_FALSE(Recorrido(l).Siguiente());
}

TEST(Recorrido, TheFourValuesOfAFormantVoiceAreTheVoicesUntilATagAndTagsBeforeTheStartActToo) {
    ParametrosVoz voz = Carlos();
    voz.fluctuacion = 11, voz.aspereza = 22, voz.diafonia = 33, voz.tamCabeza = 44;
    Locucion l = Una(voz, {Texto(u"a", 0), Orden(TipoTramo::Fluctuacion, 1, true), Orden(TipoTramo::Aspereza, 2, true),
                           Orden(TipoTramo::Diafonia, 3), Orden(TipoTramo::TamCabeza, 400, true), Texto(u"b", 50)});
    Recorrido r(l);
    ASSERT_TRUE(r.Siguiente());
    EXPECT_EQ(r.Estado().fluctuacion, 11);
    EXPECT_EQ(r.Estado().aspereza, 22);
    EXPECT_EQ(r.Estado().diafonia, 33);
    EXPECT_EQ(r.Estado().tamCabeza, 44);
    l.desde = 50;
    Recorrido desde(l);
    ASSERT_TRUE(desde.Siguiente());
    EXPECT_EQ(desde.Estado().fluctuacion, 1);
    EXPECT_EQ(desde.Estado().aspereza, 2);
    EXPECT_EQ(desde.Estado().diafonia, 3);
    EXPECT_EQ(desde.Estado().tamCabeza, 100);
}

TEST(Recorrido, AbsurdValuesDoNoHarm) {
    const double nada = std::numeric_limits<double>::quiet_NaN(), infinito = std::numeric_limits<double>::infinity();
    ParametrosVoz voz = Carlos();
    voz.velocidad = -5, voz.ganancia = nada, voz.tono = 0;
    const Locucion l = Una(voz, {Orden(TipoTramo::Velocidad, infinito, true), Orden(TipoTramo::Volumen, nada, true),
                                 Orden(TipoTramo::Tono, -infinito, true), Orden(TipoTramo::Pausa, infinito),
                                 Orden(TipoTramo::Pausa, nada), Orden(TipoTramo::Pausa, -3)});
    Recorrido r(l);
    EXPECT_EQ(r.Estado().velocidad, 1);
    EXPECT_EQ(r.Siguiente()->ms, 3600e3);
    EXPECT_EQ(r.Siguiente()->ms, 0);
    EXPECT_EQ(r.Siguiente()->ms, 0);
    EXPECT_EQ(r.Estado().velocidad, 2000);
    EXPECT_EQ(r.Estado().ganancia, 1);
    EXPECT_EQ(r.Estado().tono, 1);
}

TEST(Recorrido, TextsBecomeUtf8AndLoneSurrogatesTheReplacementCharacter) {
    EXPECT_EQ(AUtf8(u"ñ€😀"), "ñ€😀");
    EXPECT_EQ(AUtf8(std::u16string{0xD83D, u'a'}),
              "\xEF\xBF\xBD"
              "a");
}

}  // namespace
}  // namespace ondalis
