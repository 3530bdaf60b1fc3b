#include "keys/cGanchoTeclado.h"

#include <gmock/gmock.h>

#include "fakes/RelojFalso.h"
#include "fakes/TemporizadorFalso.h"

namespace ondalis::prueba {
namespace {

using Rol = FocoAccesible::Rol;
using namespace std::chrono_literals;

class TecladoFalso : public TecladoSistema {
public:
    void Inicia() override { encendido = true; }
    void Termina() override { encendido = false; }
    void SetTecla(std::function<void(const TeclaEscrita &)> t) override { tecla = std::move(t); }
    void SetVentana(std::function<void(int)> v) override { ventana = std::move(v); }
    bool EnSecretoPropio() override { return secretoPropio; }
    std::function<void(const TeclaEscrita &)> tecla;
    std::function<void(int)> ventana;
    bool encendido = false, secretoPropio = false;
};

class FocoFalso : public FocoAccesible {
public:
    void Inicia() override { encendido = true; }
    void Termina() override { encendido = false; }
    void SetPregunta(std::function<void(int)> p) override { pregunta = std::move(p); }
    void SetRespuesta(std::function<void(int, Rol)> r) override { respuesta = std::move(r); }
    std::function<void(int)> pregunta;
    std::function<void(int, Rol)> respuesta;
    bool encendido = false;
};

class cGanchoTecladoTest : public testing::Test {
protected:
    static constexpr int kEditor = 10, kBanco = 20, kDelegado = 30;

    cGanchoTecladoTest() {
        gancho.SetTecleada([this](const TeclaEscrita &t) { oido += t.texto.toStdString(); });
        gancho.IniciaHook();
    }
    void Teclea(const char *texto) {
        for (const char *c = texto; *c; ++c) teclado.tecla({0, 0, QString(QLatin1Char(*c))});
    }
    void Tab(int mayusculas = 0) { teclado.tecla({9, mayusculas, QStringLiteral("\t")}); }
    // The window comes to the front and its program says at once what has the focus.
    void Enfoca(int proceso, Rol rol) {
        teclado.ventana(proceso);
        Cambia(proceso, rol);
    }
    void Cambia(int proceso, Rol rol) {
        foco.pregunta(proceso);
        foco.respuesta(proceso, rol);
    }
    void CalladaEnFrente(int proceso) {
        teclado.ventana(proceso);
        espera.Vence();
    }

    TecladoFalso teclado;
    FocoFalso foco;
    TemporizadorFalso espera;
    RelojFalso reloj;
    cGanchoTeclado gancho{teclado, foco, espera, reloj};
    std::string oido;
};

TEST_F(cGanchoTecladoTest, AnOrdinaryFieldIsHeard) {
    Enfoca(kEditor, Rol::Corriente);
    Teclea("hola");
    EXPECT_EQ(oido, "hola");
}

TEST_F(cGanchoTecladoTest, NothingTypedIntoAPasswordFieldIsHeard) {
    Enfoca(kBanco, Rol::Secreto);
    Teclea("1234");
    EXPECT_EQ(oido, "");
    Cambia(kBanco, Rol::Corriente);
    Teclea("hola");
    EXPECT_EQ(oido, "hola");
}

TEST_F(cGanchoTecladoTest, AProgramThatSaysNothingIsHeard) {
    CalladaEnFrente(kEditor);
    Teclea("hola");
    EXPECT_EQ(oido, "hola");
}

TEST_F(cGanchoTecladoTest, AProgramThatSaysNothingIsHeardBehindAPasswordField) {
    Enfoca(kBanco, Rol::Secreto);
    reloj.Avanza(1s);
    CalladaEnFrente(kEditor);
    Teclea("hola");
    EXPECT_EQ(oido, "hola");
}

TEST_F(cGanchoTecladoTest, KeysWaitInOrderForTheAnswer) {
    Enfoca(kEditor, Rol::Corriente);
    foco.pregunta(kEditor);
    Teclea("ho");
    EXPECT_EQ(oido, "");
    foco.respuesta(kEditor, Rol::Corriente);
    Teclea("la");
    EXPECT_EQ(oido, "hola");
}

TEST_F(cGanchoTecladoTest, KeysThatWaitedForAPasswordFieldAreGone) {
    Enfoca(kBanco, Rol::Corriente);
    foco.pregunta(kBanco);
    Teclea("12");
    foco.respuesta(kBanco, Rol::Secreto);
    Teclea("34");
    EXPECT_EQ(oido, "");
}

// A busy program says late that its field hides what is typed.
TEST_F(cGanchoTecladoTest, KeysWaitForALateAnswerBeyondTheMomentOfItsWindow) {
    for (const Rol rol : {Rol::Secreto, Rol::Corriente}) {
        oido.clear();
        teclado.ventana(kBanco);
        foco.pregunta(kBanco);
        Teclea("12");
        espera.Vence();
        Teclea("34");
        EXPECT_EQ(oido, "");
        foco.respuesta(kBanco, rol);
        EXPECT_EQ(oido, rol == Rol::Corriente ? "1234" : "");
    }
}

TEST_F(cGanchoTecladoTest, WhatWaitedForAnAnswerThatNeverComesIsLostAndTheProgramHeardFromThenOn) {
    Enfoca(kEditor, Rol::Corriente);
    foco.pregunta(kEditor);
    Teclea("clave");
    foco.respuesta(kEditor, Rol::Desconocido);
    EXPECT_EQ(oido, "");
    Teclea("hola");
    EXPECT_EQ(oido, "hola");
}

TEST_F(cGanchoTecladoTest, AProgramBehindThatNeverAnswersCostsTheOneInFrontNothing) {
    Enfoca(kBanco, Rol::Corriente);
    Enfoca(kEditor, Rol::Corriente);
    foco.pregunta(kBanco);
    Teclea("ho");
    EXPECT_EQ(oido, "ho");
    foco.pregunta(kEditor);
    Teclea("la");
    foco.respuesta(kBanco, Rol::Desconocido);
    foco.respuesta(kEditor, Rol::Corriente);
    EXPECT_EQ(oido, "hola");
}

TEST_F(cGanchoTecladoTest, AWindowThatComesToTheFrontHasAMomentForSayingWhereItsFocusIs) {
    teclado.ventana(kBanco);
    EXPECT_TRUE(espera.Enabled());
    EXPECT_EQ(espera.intervalo, cGanchoTeclado::kEsperaFocoMs);
    Teclea("1");
    EXPECT_EQ(oido, "");
    foco.pregunta(kBanco);
    Teclea("2");
    foco.respuesta(kBanco, Rol::Secreto);
    espera.Vence();
    EXPECT_EQ(oido, "");
}

// A program that is just starting on a busy machine reaches the accessibility service late.
TEST_F(cGanchoTecladoTest, AProgramThatHasSaidNothingYetHasLongerThanOneThatLetItsTimePass) {
    static_assert(cGanchoTeclado::kEsperaFocoMs > cGanchoTeclado::kEsperaCalladoMs);
    CalladaEnFrente(kEditor);
    EXPECT_EQ(espera.intervalo, cGanchoTeclado::kEsperaFocoMs);
    teclado.ventana(kBanco);
    EXPECT_EQ(espera.intervalo, cGanchoTeclado::kEsperaFocoMs);
    teclado.ventana(kEditor);
    EXPECT_EQ(espera.intervalo, cGanchoTeclado::kEsperaCalladoMs);
    Cambia(kEditor, Rol::Corriente);
    teclado.ventana(kBanco);
    teclado.ventana(kEditor);
    EXPECT_EQ(espera.intervalo, cGanchoTeclado::kEsperaFocoMs);
}

TEST_F(cGanchoTecladoTest, AProgramThatSpeaksKeepsItsTimeAlsoWhenItOnceLetItPass) {
    Enfoca(kBanco, Rol::Corriente);
    teclado.ventana(kEditor);
    CalladaEnFrente(kBanco);
    teclado.ventana(kEditor);
    teclado.ventana(kBanco);
    EXPECT_EQ(espera.intervalo, cGanchoTeclado::kEsperaFocoMs);
}

TEST_F(cGanchoTecladoTest, BehindATabKeysWaitForTheFieldThatMayHaveTheFocus) {
    Enfoca(kBanco, Rol::Corriente);
    Teclea("yo");
    Tab();
    EXPECT_TRUE(espera.Enabled());
    EXPECT_EQ(espera.intervalo, cGanchoTeclado::kEsperaTabMs);
    Teclea("12");
    Cambia(kBanco, Rol::Secreto);
    Teclea("34");
    EXPECT_EQ(oido, "yo\t");
    Tab(TeclaEscrita::Mayus);
    Teclea("tu");
    EXPECT_EQ(oido, "yo\t");
    Cambia(kBanco, Rol::Corriente);
    EXPECT_EQ(oido, "yo\ttu");
}

TEST_F(cGanchoTecladoTest, ATabThatMovesNoFocusDelaysForAMomentOnly) {
    Enfoca(kEditor, Rol::Corriente);
    Tab();
    Teclea("a");
    EXPECT_EQ(oido, "\t");
    espera.Vence();
    Teclea("b");
    EXPECT_EQ(oido, "\tab");
}

TEST_F(cGanchoTecladoTest, ATabThatWaitedMakesTheNextKeysWaitToo) {
    Enfoca(kBanco, Rol::Corriente);
    foco.pregunta(kBanco);
    Teclea("a");
    Tab();
    Teclea("1");
    foco.respuesta(kBanco, Rol::Corriente);
    EXPECT_EQ(oido, "a\t");
    Cambia(kBanco, Rol::Secreto);
    EXPECT_EQ(oido, "a\t");
}

TEST_F(cGanchoTecladoTest, WhatWaitsBehindATabIsLostWithItsWindow) {
    Enfoca(kBanco, Rol::Corriente);
    Tab();
    Teclea("12");
    Enfoca(kEditor, Rol::Corriente);
    Teclea("a");
    EXPECT_EQ(oido, "\ta");
}

TEST_F(cGanchoTecladoTest, ATabDelaysNothingWhereFieldsAreNotToldNorAsACommand) {
    CalladaEnFrente(kEditor);
    Tab();
    Teclea("a");
    EXPECT_EQ(oido, "\ta");
    Enfoca(kBanco, Rol::Corriente);
    for (const int orden : {TeclaEscrita::Control, TeclaEscrita::Alt, TeclaEscrita::Super}) Tab(orden);
    Teclea("b");
    EXPECT_EQ(oido, "\ta\t\t\tb");
}

TEST_F(cGanchoTecladoTest, BackInAWindowItsLastFieldCountsUntilItSaysOtherwise) {
    Enfoca(kBanco, Rol::Secreto);
    Enfoca(kEditor, Rol::Corriente);
    reloj.Avanza(1s);
    CalladaEnFrente(kBanco);
    Teclea("1234");
    EXPECT_EQ(oido, "");
}

TEST_F(cGanchoTecladoTest, KeysTypedBeforeAChangeOfWindowAreJudgedByTheWindowBefore) {
    Enfoca(kEditor, Rol::Corriente);
    CalladaEnFrente(kEditor);
    teclado.ventana(kEditor);
    Teclea("hola");
    teclado.ventana(kBanco);
    EXPECT_EQ(oido, "hola");
    Cambia(kBanco, Rol::Secreto);
    Teclea("1234");
    EXPECT_EQ(oido, "hola");
}

TEST_F(cGanchoTecladoTest, AFocusInAnotherWindowsProgramChangesNothing) {
    Enfoca(kBanco, Rol::Corriente);
    Enfoca(kEditor, Rol::Corriente);
    Cambia(kBanco, Rol::Secreto);
    Teclea("hola");
    EXPECT_EQ(oido, "hola");
}

TEST_F(cGanchoTecladoTest, ASandboxedProgramSpeaksThroughAProcessWithoutWindows) {
    teclado.ventana(2);
    Cambia(kDelegado, Rol::Secreto);
    Teclea("1234");
    EXPECT_EQ(oido, "");
    Cambia(kDelegado, Rol::Corriente);
    Teclea("a");
    EXPECT_EQ(oido, "a");
    Cambia(kDelegado, Rol::Secreto);
    reloj.Avanza(1s);
    CalladaEnFrente(kEditor);
    Teclea("b");
    EXPECT_EQ(oido, "ab");
}

TEST_F(cGanchoTecladoTest, AFocusThatIsToldJustBeforeItsWindowCounts) {
    Cambia(kBanco, Rol::Secreto);
    reloj.Avanza(50ms);
    teclado.ventana(kBanco);
    Teclea("1234");
    espera.Vence();
    Teclea("5");
    EXPECT_EQ(oido, "");
}

TEST_F(cGanchoTecladoTest, APasswordFieldOfOurOwnIsNotHeard) {
    CalladaEnFrente(kEditor);
    teclado.secretoPropio = true;
    Teclea("1234");
    teclado.secretoPropio = false;
    Teclea("hola");
    EXPECT_EQ(oido, "hola");
}

TEST_F(cGanchoTecladoTest, EndedItHearsNothingAndForgetsWhatWaited) {
    teclado.ventana(kEditor);
    Teclea("ho");
    gancho.TerminaHook();
    EXPECT_FALSE(teclado.encendido);
    EXPECT_FALSE(foco.encendido);
    EXPECT_FALSE(espera.Enabled());
    gancho.IniciaHook();
    EXPECT_TRUE(teclado.encendido && foco.encendido);
    CalladaEnFrente(kEditor);
    Teclea("x");
    EXPECT_EQ(oido, "x");
}

TEST_F(cGanchoTecladoTest, StartingAndEndingTwiceIsHarmless) {
    gancho.IniciaHook();
    gancho.TerminaHook();
    gancho.TerminaHook();
    EXPECT_FALSE(teclado.encendido);
}

TEST_F(cGanchoTecladoTest, WhatWaitsIsBounded) {
    teclado.ventana(kEditor);
    for (std::size_t i = 0; i < 2 * cGanchoTeclado::kMaxEnEspera; ++i) Teclea("x");
    espera.Vence();
    EXPECT_EQ(oido.size(), cGanchoTeclado::kMaxEnEspera);
}

}  // namespace
}  // namespace ondalis::prueba
