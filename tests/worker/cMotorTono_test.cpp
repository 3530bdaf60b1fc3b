// The test engine itself: what other tests read from its sound has to be so.
#include <fcntl.h>
#include <gtest/gtest.h>

#include "worker/Locuciones.h"
#include "worker/TonosPrueba.h"

namespace ondalis {
namespace {

using Lista = std::vector<std::u16string>;

TEST(TonosPrueba, ANumberInAWordIsItsToneAndOtherWordsGetOneAboveThem) {
    EXPECT_EQ(tonos::NumeroDe(u"p17"), 17);
    EXPECT_EQ(tonos::NumeroDe(u"x217y5"), 17);
    EXPECT_GE(tonos::NumeroDe(u"hola"), 200);
    EXPECT_LT(tonos::NumeroDe(u"hola"), 220);
    EXPECT_EQ(tonos::Frecuencia(17), 810);
}

TEST(TonosPrueba, EveryToneIsReadBackFromItsSoundAtEverySpeed) {
    for (const double velocidad : {70., 170., 450.})
        for (int k = 0; k < tonos::kTonos; k++) {
            const auto sonido = tonos::Sonido(k, velocidad, .5);
            ASSERT_EQ(tonos::NumeroOido(sonido.data(), sonido.size() * 3 / 4), k) << velocidad;
        }
    const std::vector<std::int16_t> silencio(1000, 0);
    EXPECT_EQ(tonos::NumeroOido(silencio.data(), silencio.size()), -1);
}

TEST(cMotorTono, EachWordIsHeardAsItsToneAtItsSample) {
    cTrabajador motor(ONDALIS_MOTOR_TONO);
    const std::u16string texto = u"p1 «p17», 42.\n— hola p199";
    const Oido oido = motor.Di(Una(Llana("lo que sea"), texto));
    ASSERT_TRUE(oido.fin);
    EXPECT_EQ(PalabrasDe(oido, texto), (Lista{u"p1", u"p17", u"42", u"hola", u"p199"}));
    EXPECT_EQ(oido.pcm.size(), 5u * 4410);
    const int esperados[] = {1, 17, 42, tonos::NumeroDe(u"hola"), 199};
    for (std::size_t i = 0; i < 5; i++) {
        EXPECT_EQ(oido.palabras[i].muestra, i * 4410);
        EXPECT_EQ(tonos::NumeroOido(oido.pcm.data() + i * 4410, 3000), esperados[i]);
        EXPECT_EQ(tonos::NumeroOido(oido.pcm.data() + i * 4410 + 3600, 800), -1);
    }
}

TEST(cMotorTono, SpeedVolumePausesMarksAndTheStartAreHonoured) {
    cTrabajador motor(ONDALIS_MOTOR_TONO);
    Locucion l =
        Una(Llana("x"), {Orden(TipoTramo::Velocidad, 340, true), Texto(u"p1 p2", 0), Orden(TipoTramo::Pausa, 100),
                         Nombrado(TipoTramo::Marca, u"m"), Orden(TipoTramo::Volumen, .5, true), Texto(u"p3", 20)});
    l.desde = 3;
    const Oido oido = motor.Di(l);
    ASSERT_EQ(oido.palabras.size(), 2u);
    EXPECT_EQ(oido.palabras[0].posicion, 3u);
    EXPECT_EQ(oido.palabras[1].posicion, 20u);
    EXPECT_EQ(oido.palabras[1].muestra, 2205u + 2205u);
    ASSERT_EQ(oido.marcas.size(), 1u);
    EXPECT_EQ(oido.marcas[0].muestra, 4410u);
    EXPECT_EQ(oido.pcm.size(), 3u * 2205);
    const std::span pcm(oido.pcm);
    EXPECT_NEAR(Nivel(pcm.first(2205)), 2 * Nivel(pcm.last(2205)), 100);
}

TEST(cMotorTono, ALoneSignIsAWordInAFormantVoiceOnly) {
    cTrabajador motor(ONDALIS_MOTOR_TONO);
    const std::u16string texto = u"p1   ,  p2";
    EXPECT_EQ(PalabrasDe(motor.Di(Una(Carlos(), texto)), texto), (Lista{u"p1", u",", u"p2"}));
    EXPECT_EQ(PalabrasDe(motor.Di(Una(Llana("x"), texto)), texto), (Lista{u"p1", u"p2"}));
}

TEST(cMotorTono, MATAEndsTheProgramAtThatWord) {
    cTrabajador motor(ONDALIS_MOTOR_TONO);
    motor.Envia(TramaHabla{[] {
        Locucion l = Una(Carlos(), u"p1 MATA p2");
        l.numero = 1;
        return l;
    }()});
    const Oido oido = motor.Recoge(1);
    EXPECT_FALSE(oido.fin);
    EXPECT_EQ(oido.palabras.size(), 1u);
    const auto estado = motor.EsperaSalida();
    ASSERT_TRUE(estado.has_value());
    EXPECT_TRUE(WIFSIGNALED(*estado));
}

TEST(cMotorTono, CUELGAAnswersNothingMore) {
    cTrabajador motor(ONDALIS_MOTOR_TONO);
    Locucion l = Una(Carlos(), u"p1 CUELGA p2");
    l.numero = 1;
    motor.Envia(TramaHabla{l});
    const Oido oido = motor.Recoge(1, 300);
    EXPECT_FALSE(oido.fin);
    EXPECT_EQ(oido.palabras.size(), 1u);
    EXPECT_FALSE(motor.EsperaSalida(50).has_value());
}

TEST(cMotorTono, BASURABreaksTheConnection) {
    cTrabajador motor(ONDALIS_MOTOR_TONO);
    Locucion l = Una(Carlos(), u"p1 BASURA p2");
    l.numero = 1;
    motor.Envia(TramaHabla{l});
    EXPECT_FALSE(motor.Recoge(1).fin);
    EXPECT_TRUE(motor.Roto());
}

TEST(cMotorTono, WithAFileItMisbehavesOnceOnly) {
    std::string fichero = std::string(std::getenv("HOME")) + "/una-vez";
    close(open(fichero.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    const std::vector<std::string> entorno{"ONDALIS_TONO_UNAVEZ=" + fichero};
    EXPECT_FALSE(cTrabajador(ONDALIS_MOTOR_TONO, entorno).Di(Una(Carlos(), u"MATA p2")).fin);
    EXPECT_NE(access(fichero.c_str(), F_OK), 0);
    EXPECT_TRUE(cTrabajador(ONDALIS_MOTOR_TONO, entorno).Di(Una(Carlos(), u"MATA p2")).fin);
}

}  // namespace
}  // namespace ondalis
