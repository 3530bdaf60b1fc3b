#include "reader/PruebaLector.h"

namespace ondalis::prueba {

class Teclas : public PruebaLector {
protected:
    Teclas() { Arranca(); }
    void TerminaAviso() {
        Corre();
        TerminaTexto();
        diario.Olvida();
    }
};

TEST_F(Teclas, AnUnknownNameDoesNothing) {
    Pulsa("BORRADO");
    Pulsa("activar");
    EXPECT_EQ(diario.Todo(), Lineas{});
}

TEST_F(Teclas, ActivarSwitchesTheProgramOffAndOn) {
    Pulsa("Activar");
    EXPECT_FALSE(principal.ProgramaActivo());
    Pulsa("Activar");
    EXPECT_TRUE(principal.ProgramaActivo());
}

TEST_F(Teclas, WindowsOpenWhetherTheProgramIsActiveOrNot) {
    for (int i = 0; i < 2; ++i) {
        diario.Olvida();
        Pulsa("MostrarConf");
        Pulsa("MostrarEditor");
        EXPECT_EQ(diario.Todo(), (Lineas{"ventanas.Opciones", "ventanas.AbrirEditor"}));
        Pulsa("Activar");
    }
}

TEST_F(Teclas, EachCommandWithoutAReadingIsRefusedWithItsSoundAndItsNotice) {
    const std::pair<const char *, const char *> casos[] = {
        {"Detener", "HablaAviso(No hay lectura para detener)"},
        {"Pausa", "HablaAviso(No hay lectura para reanudar)"},
        {"Repetir", "HablaAviso(No hay texto para leer)"},
        {"Avanzar", "HablaAviso(No hay lectura para avanzar)"},
        {"Retroceder", "HablaAviso(No hay lectura para retroceder)"},
    };
    for (const auto &[comando, aviso] : casos) {
        Pulsa(comando);
        EXPECT_EQ(diario.Todo(), (Lineas{"sonido.ERROR", std::string("motor.") + aviso}));
        TerminaAviso();
    }
}

TEST_F(Teclas, WhileInactiveTheTitleAndNotice1AreSpoken) {
    Pulsa("Activar");
    diario.Olvida();
    for (const char *comando : {"Detener", "Pausa", "Repetir", "Avanzar", "Retroceder", "ImprPant", "MasVel"}) {
        Pulsa(comando);
        EXPECT_EQ(diario.Todo(), (Lineas{"sonido.ERROR", "motor.HablaAviso(Ondalis está inactivo)"})) << comando;
        TerminaAviso();
    }
}

TEST_F(Teclas, NoticesAreInTheLanguageOfTheVoice) {
    opcVoz.SetVozActiva(QStringLiteral("Justin"));
    Pulsa("Activar");
    diario.Olvida();
    Pulsa("Detener");
    EXPECT_EQ(diario.Todo(), (Lineas{"sonido.ERROR", "motor.HablaAviso(Ondalis is inactive)"}));
}

TEST_F(Teclas, WithUtilizaAvisosOffOnlyTheSoundIsLeft) {
    opcTeclasRap.SetUtilizaAvisos(false);
    Pulsa("Detener");
    EXPECT_EQ(diario.Todo(), Lineas{"sonido.ERROR"});
}

TEST_F(Teclas, NoticesDoNotDependOnTheSounds) {
    opcGeneral.SetUtilizaSonidos(false);
    Pulsa("Detener");
    EXPECT_EQ(diario.Todo(), Lineas{"motor.HablaAviso(No hay lectura para detener)"});
    TerminaAviso();
    opcGeneral.SetUtilizaSonidos(true);
    sonidosAviso.SetAvisosGenerales(false);
    Pulsa("Detener");
    EXPECT_EQ(diario.Todo(), Lineas{"motor.HablaAviso(No hay lectura para detener)"});
}

TEST_F(Teclas, ANoticeKeyDoesNotInterruptTheNoticeUnderWay) {
    Pulsa("Detener");
    Corre();
    diario.Olvida();
    Pulsa("Pausa");
    EXPECT_EQ(diario.Todo(), Lineas{"sonido.ERROR"});
    EXPECT_EQ(Estado(), 1);
}

TEST_F(Teclas, ARepeatDuringAReadingIsRefusedByTheSoundAlone) {
    Lee(QStringLiteral("uno dos"));
    Pulsa("Repetir");
    EXPECT_EQ(diario.Todo(), Lineas{"sonido.ERROR"});
    EXPECT_TRUE(Hablando());
}

TEST_F(Teclas, AnEnabledEntryRunsItsCommand) {
    Lee(QStringLiteral("uno dos tres cuatro cinco"));
    motor.Palabra(4);
    Pulsa("Pausa");
    EXPECT_TRUE(Pausada());
    Pulsa("Pausa");
    EXPECT_TRUE(Hablando());
    Pulsa("Retroceder");
    EXPECT_TRUE(Reiniciando());
    Corre();
    Pulsa("Detener");
    EXPECT_TRUE(Ociosa());
    Pulsa("Repetir");
    EXPECT_TRUE(Enviada());
}

TEST_F(Teclas, InAnEditorReadingStopAndPauseWorkAndTheOtherThreeAreDead) {
    LeeDe(3, QStringLiteral("uno dos"));
    motor.Palabra(4);
    diario.Olvida();
    for (const char *comando : {"Repetir", "Avanzar", "Retroceder"}) Pulsa(comando);
    EXPECT_EQ(diario.Todo(), Lineas{});
    Pulsa("Pausa");
    EXPECT_TRUE(Pausada());
    Pulsa("Detener");
    EXPECT_TRUE(Ociosa());
}

TEST_F(Teclas, AfterAnEditorReadingTheRefusalsOfItsKeysAreSilent) {
    LeeDe(3, QStringLiteral("uno dos"));
    TerminaTexto();
    diario.Olvida();
    for (const char *comando : {"Detener", "Pausa", "Repetir", "Avanzar", "Retroceder"}) Pulsa(comando);
    EXPECT_EQ(diario.Todo(), Lineas{});
}

// --- Speed

TEST_F(Teclas, MasVelAdds25WordsAMinuteForIBMAndStoresThemAtOnce) {
    Pulsa("MasVel");
    EXPECT_EQ(diario.Todo(), (Lineas{"motor.FijaVelocidad(195)", "sonido.VOLUMEN", "motor.HablaAviso(Velocidad 195)"}));
    EXPECT_EQ(opcVoz.Velocidad(), 195);
    EXPECT_EQ(almacen.Lee(QStringLiteral("Voz"), QStringLiteral("Velocidad")), QStringLiteral("195"));
}

TEST_F(Teclas, MenosVelTakes25WordsAMinuteAway) {
    Pulsa("MenosVel");
    EXPECT_EQ(Motor(), (Lineas{"FijaVelocidad(145)", "HablaAviso(Velocidad 145)"}));
}

TEST_F(Teclas, SAPI5GoesByOneAndSpeaksTheNumber10Higher) {
    PasaASAPI5();
    Pulsa("MasVel");
    EXPECT_EQ(Motor(), (Lineas{"FijaVelocidad(1)", "HablaAviso(Velocidad 11)"}));
    EXPECT_EQ(almacen.Lee(QStringLiteral("Voz"), QStringLiteral("Velocidad")), QStringLiteral("1"));
    TerminaAviso();
    Pulsa("MenosVel");
    TerminaAviso();
    Pulsa("MenosVel");
    EXPECT_EQ(Motor(), (Lineas{"FijaVelocidad(-1)", "HablaAviso(Velocidad 9)"}));
}

TEST_F(Teclas, AtTheLimitTheSpeedStaysAndTheNoticeStillSaysIt) {
    opcVoz.SetVelocidad(450);
    Pulsa("MasVel");
    EXPECT_EQ(Motor(), (Lineas{"FijaVelocidad(450)", "HablaAviso(Velocidad 450)"}));
    TerminaAviso();
    opcVoz.SetVelocidad(80);
    Pulsa("MenosVel");  // 55 is refused whole, it isn't clamped
    EXPECT_EQ(opcVoz.Velocidad(), 80);
    TerminaAviso();
    PasaASAPI5();
    opcVoz.SetVelocidad(-10);
    Pulsa("MenosVel");
    EXPECT_EQ(Motor(), (Lineas{"FijaVelocidad(-10)", "HablaAviso(Velocidad 0)"}));
}

TEST_F(Teclas, WhatIsStoredIsReadBackFromTheEngine) {
    motor.velocidadMaxima = 180;
    Pulsa("MasVel");
    EXPECT_EQ(opcVoz.Velocidad(), 195);
    EXPECT_EQ(almacen.Lee(QStringLiteral("Voz"), QStringLiteral("Velocidad")), QStringLiteral("180"));
}

TEST_F(Teclas, DuringAReadingASpeedKeyIsSilentAndChangesNothing) {
    Lee(QStringLiteral("uno dos"));
    Pulsa("MasVel");
    Pulsa("MenosVel");
    EXPECT_EQ(diario.Todo(), Lineas{});
    EXPECT_EQ(opcVoz.Velocidad(), 170);
}

TEST_F(Teclas, WhileInactiveTheSpeedStays) {
    Pulsa("Activar");
    Pulsa("MasVel");
    EXPECT_EQ(opcVoz.Velocidad(), 170);
}

TEST_F(Teclas, WithSoundsAndNoticesOffTheSpeedStillChanges) {
    opcGeneral.SetUtilizaSonidos(false);
    opcTeclasRap.SetUtilizaAvisos(false);
    Pulsa("MasVel");
    EXPECT_EQ(diario.Todo(), Lineas{"motor.FijaVelocidad(195)"});
}

TEST_F(Teclas, AHeldKeyRepeatsSpeedAndMovesOnly) {
    const auto repite = [this](std::uint32_t modificadores, int virtualKey) {
        diario.Olvida();
        teclas.Pulsa(modificadores, virtualKey, true);
        Corre();
        TerminaTexto();
        return !diario.Todo().empty();
    };
    EXPECT_TRUE(repite(3, 121));
    EXPECT_TRUE(repite(3, 120));
    EXPECT_TRUE(repite(2, 52));
    EXPECT_TRUE(repite(2, 53));
    EXPECT_FALSE(repite(2, 49));
    EXPECT_FALSE(repite(2, 50));
    EXPECT_FALSE(repite(3, 112));
}

}  // namespace ondalis::prueba
