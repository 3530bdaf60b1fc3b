#include "reader/cReproduccion.h"

#include "reader/PruebaLector.h"

namespace ondalis::prueba {

class Reproduccion : public PruebaLector {
protected:
    Reproduccion() { Arranca(); }
    using Estado_ = cReproduccion::Estado;
    void Haz(void (cReproduccion::*orden)()) {
        (controles.*orden)();
        Corre();
    }

    cReproduccion controles{menu, cola, [this](const QString &nombre) { principal.tecla_HotKeyPulsada(nombre); },
                            [this] { return campos.TextoLectura; }};
    const QString m_texto = QStringLiteral("uno dos tres cuatro cinco seis");
};

TEST_F(Reproduccion, TheStateFollowsTheReading) {
    EXPECT_EQ(controles.GetEstado(), Estado_::Parada);
    EXPECT_FALSE(controles.PuedeReproducir() || controles.PuedePausar() || controles.PuedeAvanzar());
    Lee(m_texto);
    EXPECT_EQ(controles.GetEstado(), Estado_::Sonando);
    EXPECT_TRUE(controles.PuedePausar() && controles.PuedeAvanzar() && controles.PuedeRetroceder());
    motor.Palabra(4);
    Haz(&cReproduccion::Pausa);
    EXPECT_EQ(controles.GetEstado(), Estado_::EnPausa);
    EXPECT_TRUE(Pausada());
    Haz(&cReproduccion::Reproduce);
    EXPECT_EQ(controles.GetEstado(), Estado_::Sonando);
    Haz(&cReproduccion::Detiene);
    EXPECT_EQ(controles.GetEstado(), Estado_::Parada);
    EXPECT_TRUE(Ociosa());
    EXPECT_TRUE(controles.PuedeReproducir());
    Haz(&cReproduccion::Reproduce);
    EXPECT_EQ(controles.GetEstado(), Estado_::Sonando);
    EXPECT_EQ(Motor().back(), "Habla(uno dos tres cuatro cinco seis)");
}

TEST_F(Reproduccion, OneButtonPausesResumesAndRepeats) {
    Lee(m_texto);
    motor.Palabra(4);
    Haz(&cReproduccion::ReproduceOPausa);
    EXPECT_TRUE(Pausada());
    Haz(&cReproduccion::ReproduceOPausa);
    EXPECT_TRUE(Hablando());
    TerminaTexto();
    Haz(&cReproduccion::ReproduceOPausa);
    EXPECT_TRUE(Hablando());
}

TEST_F(Reproduccion, WhatMakesNoSenseDoesNothingAndIsNotHeard) {
    for (const auto orden : {&cReproduccion::Reproduce, &cReproduccion::Pausa, &cReproduccion::ReproduceOPausa,
                             &cReproduccion::Detiene, &cReproduccion::Avanza, &cReproduccion::Retrocede})
        Haz(orden);
    EXPECT_EQ(diario.Todo(), Lineas{});
    Lee(m_texto);
    motor.Palabra(4);
    Haz(&cReproduccion::Reproduce);  // it sounds already
    EXPECT_EQ(diario.Todo(), Lineas{});
    Haz(&cReproduccion::Pausa);
    diario.Olvida();
    Haz(&cReproduccion::Pausa);  // it is paused already
    EXPECT_EQ(diario.Todo(), Lineas{});
}

TEST_F(Reproduccion, AheadAndBackMoveByWords) {
    Lee(m_texto);
    motor.Palabra(4);
    opcTeclasRap.SetNroPalAvance(2);
    Haz(&cReproduccion::Avanza);
    EXPECT_TRUE(Motor().size() >= 2 && Motor()[0] == "Detiene") << testing::PrintToString(Motor());
    Corre();
    motor.Palabra(0);
    Haz(&cReproduccion::Retrocede);
    EXPECT_EQ(diario.Veces("sonido.AVANZARRETROCEDER"), 2);
}

TEST_F(Reproduccion, TheTitleIsTheFirstWordsAndNothingWhenThereIsNone) {
    EXPECT_EQ(controles.Titulo(), QString());
    Lee(QStringLiteral("  Platero es\n pequeño,\tpeludo, suave  "));
    EXPECT_EQ(controles.Titulo(), QStringLiteral("Platero es pequeño, peludo, suave"));
    campos.TextoLectura = QStringLiteral("palabra ").repeated(100);
    EXPECT_LE(controles.Titulo().size(), 60);
    EXPECT_TRUE(controles.Titulo().endsWith(QStringLiteral("palabra…")));
    campos.TextoLectura = QString(58, QLatin1Char('a')) + QStringLiteral("😀").repeated(20);
    EXPECT_EQ(controles.Titulo(), QString(58, QLatin1Char('a')) + QStringLiteral("…"));  // no half of a pair
}

TEST_F(Reproduccion, ChangesAreToldAndTheMenusOwnMirrorIsTooAndNoneAfterTheEnd) {
    int avisos = 0, espejo = 0;
    menu.Detener.AlCambiar([&espejo] { ++espejo; });
    controles.AlCambiar([&avisos] { ++avisos; });
    Lee(m_texto);
    EXPECT_GT(avisos, 0);
    EXPECT_EQ(espejo, 1);
    {
        int otros = 0;
        cReproduccion efimera{menu, cola, {}, {}};
        efimera.AlCambiar([&otros] { ++otros; });
        menu.Detener.SetHabilitada(false);
        EXPECT_EQ(otros, 1);
    }
    avisos = 0;
    menu.Detener.SetHabilitada(true);
    EXPECT_EQ(avisos, 1);
}

}  // namespace ondalis::prueba
