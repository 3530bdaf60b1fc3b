// The controller over the real speech controls, with only the channel to the engine played by hand: what a copy, a key
// or a notice sends to the engine, and what its late or missing answers do to the session.
#include <random>

#include "fakes/CanalGuionado.h"
#include "reader/PruebaLector.h"

namespace ondalis::prueba {

class LecturaIntegrada : public BancoLector {
protected:
    LecturaIntegrada() {
        voz.SetEventos(principal.Eventos());
        sapi5.SetEventos(principal.Eventos());
        principal.Form_Load();
        principal.Init();
        diario.Olvida();
    }
    CanalGuionado &Canal() { return opcVoz.EsIBM() ? canalIBM : canalSAPI5; }
    void UsaSAPI5() {
        PasaASAPI5();
        motor.AplicaConfiguracion();
    }
    // Everything comes through the queue, as in the running program.
    void PonTic() {
        cola.Pon(cCola::Clase::Tic, [this] { Tic(); });
    }
    void PonTecla(const char *comando) {
        cola.Pon(cCola::Clase::Tecla, [this, comando] { principal.tecla_HotKeyPulsada(QLatin1String(comando)); });
    }
    void Pulsa(const char *comando) {
        PonTecla(comando);
        Corre();
    }
    // The tick alone: the engine's start stays in the queue.
    void Envia(const QString &texto) {
        Copia(texto);
        Tic();
    }
    void Lee(const QString &texto) {
        Copia(texto);
        PonTic();
        Corre();
    }
    void Palabra(std::uint32_t posicion) {
        Canal().Palabra(posicion);
        Corre();
    }
    void Fin() {
        Canal().Fin();
        Corre();
    }
    QString Dicho() { return QString::fromStdU16String(Canal().Texto()); }
    bool Ociosa() const {
        return !campos.Leyendo && !campos.EnPausa && !menu.Detener.Habilitada() && estado.valor == 0;
    }
    bool Hablando() const {
        return campos.Leyendo && !campos.EnPausa && menu.Detener.Habilitada() && estado.valor == 0;
    }

    CanalGuionado canalIBM, canalSAPI5;
    ActorSvr voz{canalIBM, cola, estado, log};
    SpVoice sapi5{canalSAPI5, tokens, cola, estado, log};
    MotorVoz motor{voz, &sapi5, nullptr, opcVoz};
    cFormPrincipal principal{Colaboradores(motor)};
    cFormPrincipal::Lectura &campos = principal.Campos();
    MenuIcono &menu = principal.Menu();
    const QString m_texto = QStringLiteral("uno dos tres cuatro cinco");
};

TEST_F(LecturaIntegrada, ACopyIsHeardFromItsStartToItsStop) {
    Lee(m_texto);
    EXPECT_EQ(Dicho(), m_texto);
    EXPECT_TRUE(Hablando());
    Palabra(0);
    Palabra(4);
    EXPECT_EQ(campos.PosPalabra, 4);
    Fin();
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(Sonidos(), Lineas{"DETENER"});
}

TEST_F(LecturaIntegrada, TheStartNeverComesInsideTheCall) {
    Envia(m_texto);
    EXPECT_TRUE(campos.Leyendo);
    EXPECT_FALSE(menu.Detener.Habilitada());
    Corre();
    EXPECT_TRUE(Hablando());
}

TEST_F(LecturaIntegrada, AStopKeyQueuedBeforeTheStartStillFindsTheReadingStarted) {
    Copia(m_texto);
    cola.Pon(cCola::Clase::Orden, [this] {
        PonTecla("Detener");
        Tic();
    });
    Corre();
    EXPECT_FALSE(canalIBM.sonando);
    EXPECT_EQ(canalIBM.ordenes, (std::vector<std::string>{"habla", "detiene"}));
    EXPECT_EQ(Sonidos(), Lineas{"DETENER"});
}

TEST_F(LecturaIntegrada, AStopInMidWordGivesOneSoundAndSilence) {
    Lee(m_texto);
    Palabra(4);
    Pulsa("Detener");
    EXPECT_TRUE(Ociosa());
    EXPECT_FALSE(canalIBM.sonando);
    canalIBM.Palabra(8);  // late answers of the utterance that was stopped
    canalIBM.Fin();
    Corre();
    EXPECT_EQ(campos.PosPalabra, 0);
    EXPECT_EQ(Sonidos(), Lineas{"DETENER"});
}

TEST_F(LecturaIntegrada, AnAdvanceSpeaksTheRestFromTheWordReached) {
    opcTeclasRap.SetNroPalAvance(2);
    Lee(m_texto);
    Palabra(4);
    const std::uint64_t primera = canalIBM.Numero();
    Pulsa("Avanzar");
    EXPECT_EQ(Dicho(), QStringLiteral("cuatro cinco"));
    EXPECT_TRUE(Hablando());
    canalIBM.Palabra(20, primera);
    canalIBM.Fin(primera);
    Corre();
    EXPECT_TRUE(Hablando());
    EXPECT_EQ(campos.PosPalabra, 0);
    EXPECT_EQ(Sonidos(), Lineas{"AVANZARRETROCEDER"});
    Palabra(7);
    EXPECT_EQ(principal.GetTramoLectura(), QStringLiteral("cinco"));
    Fin();
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(Sonidos().back(), "DETENER");
}

TEST_F(LecturaIntegrada, ARetreatSpeaksFromAnEarlierWord) {
    opcTeclasRap.SetNroPalRetroceso(2);
    Lee(m_texto);
    Palabra(13);
    Pulsa("Retroceder");
    EXPECT_EQ(Dicho(), QStringLiteral("dos tres cuatro cinco"));
    EXPECT_TRUE(Hablando());
}

TEST_F(LecturaIntegrada, AnAdvanceOffTheEndEndsTheReadingOnce) {
    Lee(m_texto);
    Palabra(4);
    Pulsa("Avanzar");
    EXPECT_TRUE(Ociosa());
    EXPECT_FALSE(canalIBM.sonando);
    EXPECT_EQ(Sonidos(), (Lineas{"AVANZARRETROCEDER", "DETENER"}));
}

TEST_F(LecturaIntegrada, WordsWaitDuringAPauseAndComeWithTheResume) {
    Lee(m_texto);
    Palabra(4);
    Pulsa("Pausa");
    EXPECT_TRUE(canalIBM.enPausa);
    Palabra(8);
    EXPECT_EQ(campos.PosPalabra, 4);
    Pulsa("Pausa");
    Corre();
    EXPECT_FALSE(canalIBM.enPausa);
    EXPECT_EQ(campos.PosPalabra, 8);
    EXPECT_TRUE(Hablando());
}

TEST_F(LecturaIntegrada, AStopDuringAPauseIsInaudible) {
    for (const bool sapi : {false, true}) {
        if (sapi) UsaSAPI5();
        campos.TextoCopiado.clear();
        Lee(m_texto);
        Palabra(4);
        Pulsa("Pausa");
        Canal().ordenes.clear();
        Pulsa("Detener");
        EXPECT_EQ(Canal().ordenes, std::vector<std::string>{"detiene"});
        EXPECT_TRUE(Ociosa());
        EXPECT_TRUE(menu.PausaReanudar.Rotulo().startsWith(QStringLiteral("Pausa (")));
    }
}

TEST_F(LecturaIntegrada, AnAdvanceDuringAPauseIsInaudibleUntilTheNewPlace) {
    opcTeclasRap.SetNroPalAvance(1);
    Lee(m_texto);
    Palabra(4);
    Pulsa("Pausa");
    canalIBM.ordenes.clear();
    Pulsa("Avanzar");
    EXPECT_EQ(canalIBM.ordenes, (std::vector<std::string>{"detiene", "habla"}));
    EXPECT_EQ(Dicho(), QStringLiteral("tres cuatro cinco"));
    EXPECT_TRUE(Hablando());
}

TEST_F(LecturaIntegrada, ANoticeDuringSentPurgesTheReadingAndLeavesNothingWaiting) {
    Envia(m_texto);
    ASSERT_FALSE(menu.Detener.Habilitada());
    principal.DiAviso(QStringLiteral("aviso"));
    EXPECT_EQ(Dicho(), QStringLiteral("aviso"));
    EXPECT_EQ(Estado(), 1);
    EXPECT_FALSE(campos.Leyendo);
    Fin();
    EXPECT_TRUE(Ociosa());
    Lee(QStringLiteral("otro texto"));
    EXPECT_TRUE(Hablando());
}

TEST_F(LecturaIntegrada, ANoticeHasNoWords) {
    Pulsa("Detener");
    EXPECT_EQ(Dicho(), QStringLiteral("No hay lectura para detener"));
    Palabra(3);
    EXPECT_EQ(campos.PosPalabra, 0);
    Fin();
    EXPECT_TRUE(Ociosa());
}

TEST_F(LecturaIntegrada, ASAPI5NoticeIsWaitedForAndItsEventsComeAfterwards) {
    UsaSAPI5();
    canalSAPI5.alHablar = [this] { canalSAPI5.Fin(); };
    std::int32_t despues = -1;
    cola.Pon(cCola::Clase::Tecla, [this, &despues] {
        principal.tecla_HotKeyPulsada(QStringLiteral("Detener"));
        despues = Estado();
    });
    Corre();
    EXPECT_EQ(despues, 1);
    EXPECT_TRUE(Ociosa());
}

TEST_F(LecturaIntegrada, AKeyboardReadingPurgesTheOneUnderWayWithOneStop) {
    sonidosAviso.SetPortapapeles(true);
    Lee(m_texto);
    Palabra(4);
    campos.TextoLectura = QStringLiteral("tecleado");
    principal.IniciaLectura(2);
    EXPECT_EQ(Dicho(), QStringLiteral("tecleado"));
    Corre();
    EXPECT_TRUE(Hablando());
    EXPECT_EQ(campos.PosPalabra, 0);
    Fin();
    EXPECT_TRUE(Ociosa());
}

TEST_F(LecturaIntegrada, ARefusedMarkupPurgesNothingAndBringsNoEvent) {
    UsaSAPI5();
    Lee(m_texto);
    campos.TextoLectura = QStringLiteral("<rate absspeed='rápido'>tecleado</rate>");
    principal.IniciaLectura(2);
    Corre();
    ASSERT_EQ(mensajes.cajas.size(), 1U);
    EXPECT_EQ(mensajes.cajas[0].texto,
              QStringLiteral("cFormPrincipal.IniciaLectura: Error de sintaxis en la etiquetas del texto"));
    EXPECT_EQ(Dicho(), m_texto);
    EXPECT_TRUE(canalSAPI5.sonando);
    EXPECT_TRUE(Hablando());
}

TEST_F(LecturaIntegrada, ATextOfManyBlanksPassesThroughSentAndEnds) {
    Lee(QString(201, QLatin1Char(' ')));
    EXPECT_TRUE(Hablando());
    Fin();
    EXPECT_TRUE(Ociosa());
}

TEST_F(LecturaIntegrada, ATextCopiedDuringAReadingIsReadAfterIt) {
    Lee(m_texto);
    Lee(QStringLiteral("el siguiente"));
    EXPECT_EQ(Dicho(), m_texto);
    Fin();
    PonTic();
    Corre();
    EXPECT_EQ(Dicho(), QStringLiteral("el siguiente"));
}

TEST_F(LecturaIntegrada, UnloadInMidReadingLeavesSilence) {
    Lee(m_texto);
    Palabra(4);
    principal.Form_Unload();
    EXPECT_FALSE(canalIBM.sonando);
    EXPECT_TRUE(Ociosa());
}

// Whatever the user and the engine do, a silent engine never leaves the session waiting for it.
TEST_F(LecturaIntegrada, TheSessionNeverWaitsForAnEngineThatOwesNothing) {
    const char *const comandos[] = {"Pausa", "Detener", "Repetir", "Avanzar", "Retroceder", "Activar", "MasVel"};
    for (const bool sapi : {false, true}) {
        if (sapi) UsaSAPI5();
        // A SAPI 5 notice is waited for inside the call: it ends there. Readings end when the test says so.
        canalSAPI5.alHablar = [this] {
            if (Estado() == 1) canalSAPI5.Fin();
        };
        std::mt19937 azar(20240 + sapi);
        int copias = 0;
        for (int paso = 0; paso < 3000; ++paso) {
            switch (azar() % 7) {
                case 0: Lee(m_texto.repeated(1 + azar() % 4) + QString::number(++copias)); break;
                case 1: Palabra(azar() % 20); break;
                case 2:
                    if (!Canal().enPausa) Fin();  // a paused engine has no last sample
                    break;
                case 3: PonTic(); break;
                case 4: cola.Pon(cCola::Clase::Orden, [this] { principal.DiAviso(QStringLiteral("aviso")); }); break;
                default: PonTecla(comandos[azar() % std::size(comandos)]); break;
            }
            if (azar() % 3 != 0) continue;  // often several things meet in the queue
            Corre();
            const bool suena = Canal().sonando;
            ASSERT_TRUE(suena || (!campos.Leyendo && !campos.EnPausa && !menu.Detener.Habilitada()))
                << "step " << paso << " state " << Estado();
            ASSERT_TRUE(suena || Estado() == 0) << "step " << paso << " state " << Estado();
        }
        if (!principal.ProgramaActivo()) Pulsa("Activar");
        Pulsa("Detener");
        Fin();
        EXPECT_TRUE(Ociosa());
    }
}

}  // namespace ondalis::prueba
