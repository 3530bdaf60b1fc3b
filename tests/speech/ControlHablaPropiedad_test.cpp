// The invariant of the events' contract over long random sequences: exactly one Stop for each accepted call, in order,
// nothing while paused, and a session on top of it that always comes to rest. Seeds are fixed and shown on failure.
#include <gtest/gtest.h>

#include "ControlDePrueba.h"
#include "LlamadasSalvajes.h"
#include "SesionPequena.h"
#include "fakes/TokensFalsos.h"

namespace ondalis::prueba {
namespace {

class SemillasTest : public testing::TestWithParam<std::uint32_t> {};

TEST_P(SemillasTest, ExactlyOneStopForEachAcceptedCallWhateverIsCalledFromWherever) {
    SCOPED_TRACE("semilla " + std::to_string(GetParam()));
    Salvaje salvaje(GetParam());
    for (int paso = 0; paso < 100'000 && !HasFailure(); ++paso) {
        SCOPED_TRACE("paso " + std::to_string(paso));
        salvaje.Paso();
        if (paso % 97 == 96) salvaje.Reposa();
    }
    salvaje.Reposa();
    // The sequences reach what they are meant to reach.
    EXPECT_GT(salvaje.Aceptadas(), 10'000);
    EXPECT_GT(salvaje.Palabras(), 2'000);
    EXPECT_GT(salvaje.EnManejadores(), 5'000);
}

TEST_P(SemillasTest, TheSessionAlwaysComesToRestInBothFamilies) {
    for (const bool espera : {false, true}) {
        SCOPED_TRACE("semilla " + std::to_string(GetParam()) + (espera ? " SAPI 5" : " IBM"));
        SesionPequena sesion(GetParam(), espera);
        for (int paso = 0; paso < 100'000 && !HasFailure(); ++paso) {
            SCOPED_TRACE("paso " + std::to_string(paso));
            sesion.Paso();
            if (paso % 97 == 96) sesion.Reposa();
        }
        sesion.Reposa();
        EXPECT_EQ(sesion.Anunciadas(), sesion.Remotas());
        EXPECT_GT(sesion.Remotas(), 1'000);
        EXPECT_GT(sesion.Avances(), 500);
        EXPECT_GT(sesion.Pausas(), 200);
        EXPECT_GT(sesion.Avisos(), 500);
    }
}

// The SAPI 5 control with its own ways of being called: refused markup and the empty text that silences among them.
TEST_P(SemillasTest, ARefusedSpeechRaisesNothingAndEachAcceptedOneExactlyOneStop) {
    Azar azar(GetParam());
    Banco banco;
    const TokensFalsos tokens(TokensFalsos::Tres());
    SpVoice voz(banco.canal, tokens, banco.cola, banco.estado, banco.registro.Log());
    std::size_t paradas = 0, rechazadas = 0;
    EventosVoz eventos;
    eventos.alTerminar = [&paradas] { ++paradas; };
    voz.SetEventos(eventos);
    for (int paso = 0; paso < 100'000 && !HasFailure(); ++paso) {
        SCOPED_TRACE("semilla " + std::to_string(GetParam()) + " paso " + std::to_string(paso));
        const std::size_t aceptadas = banco.canal.locuciones.size();
        const std::size_t antes = paradas;
        banco.canal.alHablar = nullptr;
        switch (azar.Hasta(9)) {
            case 0: EXPECT_FALSE(voz.Speak(QStringLiteral("AT&T <b>"), azar.Uno(2) ? 11 : 75)); break;
            case 1: EXPECT_FALSE(voz.Speak(QString(), 11)); break;
            case 2:
                EXPECT_TRUE(voz.Speak(QStringLiteral("<rate speed='x'>"), 11));
                EXPECT_EQ(banco.canal.locuciones.size(), aceptadas);
                EXPECT_EQ(paradas, antes);
                ++rechazadas;
                break;
            case 3:
                banco.canal.alHablar = [&banco] { banco.canal.Fin(); };
                EXPECT_FALSE(voz.Speak(QStringLiteral("aviso"), 2));
                break;
            case 4:
                EXPECT_FALSE(voz.Speak(QString(), 2));
                EXPECT_EQ(banco.canal.locuciones.size(), aceptadas);
                EXPECT_EQ(paradas, banco.canal.locuciones.size());  // silence: none is owed any more
                break;
            case 5: voz.Pause(); break;
            case 6: voz.Resume(); break;
            case 7: banco.canal.Fin(); break;
            default: banco.cola.DejaCorrer(); break;
        }
        EXPECT_GE(banco.canal.locuciones.size(), paradas);
        EXPECT_LE(banco.canal.locuciones.size(), paradas + 1);
    }
    EXPECT_GT(banco.canal.locuciones.size(), 20'000u);
    EXPECT_GT(rechazadas, 5'000u);
}

INSTANTIATE_TEST_SUITE_P(ControlHabla, SemillasTest, testing::Values(1u, 20'011u, 987'654'321u));

}  // namespace
}  // namespace ondalis::prueba
