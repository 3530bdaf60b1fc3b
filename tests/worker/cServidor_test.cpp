// The worker's connection, with real programs at its end.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "worker/Locuciones.h"

namespace ondalis {
namespace {

Locucion Larga(std::uint64_t numero) {
    std::u16string texto;
    for (int i = 0; i < 20000; i++) texto += u"palabra ";
    Locucion l = Una(Carlos(), texto);
    l.numero = numero;
    return l;
}

Locucion Corta(std::uint64_t numero) {
    Locucion l = Una(Carlos(), u"hola");
    l.numero = numero;
    return l;
}

class cServidor : public testing::TestWithParam<const char *> {
protected:
    cTrabajador m_motor{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Programas, cServidor, testing::Values(ONDALIS_MOTOR, ONDALIS_MOTOR_TONO),
                         [](const auto &info) { return info.index == 0 ? "Espeak" : "Tono"; });

// Nothing is taken from the worker before the stop: it stands in a full socket.
TEST_P(cServidor, AStopIsSeenWhileNothingCanBeSent) {
    m_motor.Envia(TramaHabla{Larga(1)});
    ASSERT_TRUE(m_motor.Siguiente().has_value());
    m_motor.Envia(TramaPara{1});
    m_motor.Envia(TramaHabla{Corta(2)});
    std::size_t viejas = 0;
    bool fin = false, nueva = false;
    while (const auto trama = m_motor.Siguiente()) {
        if (const auto *pcm = std::get_if<TramaPcm>(&*trama)) {
            if (pcm->numero == 1) viejas += pcm->muestras.size();
            if (pcm->numero == 2) nueva = true;
            EXPECT_FALSE(nueva && pcm->numero == 1);
        }
        if (const auto *f = std::get_if<TramaFin>(&*trama)) {
            EXPECT_EQ(f->numero, 2u);  // a stopped utterance is owed no end
            fin = true;
            break;
        }
    }
    EXPECT_TRUE(fin);
    EXPECT_TRUE(nueva);
    EXPECT_LT(viejas, 22050u * 30);  // what was in flight, of a text of hours
}

TEST_P(cServidor, ANewRequestReplacesTheOneUnderWay) {
    m_motor.Envia(TramaHabla{Larga(1)});
    ASSERT_TRUE(m_motor.Siguiente().has_value());
    m_motor.Envia(TramaHabla{Larga(2)});
    m_motor.Envia(TramaHabla{Corta(3)});
    std::vector<std::uint64_t> fines;
    while (const auto trama = m_motor.Siguiente())
        if (const auto *f = std::get_if<TramaFin>(&*trama)) {
            fines.push_back(f->numero);
            break;
        }
    EXPECT_EQ(fines, std::vector<std::uint64_t>{3});
}

TEST_P(cServidor, AStopOfAnotherUtteranceStopsNothing) {
    m_motor.Envia(TramaHabla{Corta(5)});
    m_motor.Envia(TramaPara{4});
    EXPECT_TRUE(m_motor.Recoge(5).fin);
    m_motor.Envia(TramaPara{5});
    m_motor.Envia(TramaHabla{Corta(6)});
    EXPECT_TRUE(m_motor.Recoge(6).fin);
}

TEST_P(cServidor, VoicesAskedForDuringAnUtteranceComeAfterIt) {
    m_motor.Envia(TramaHabla{Corta(1)});
    m_motor.Envia(TramaPideVoces{});
    EXPECT_TRUE(m_motor.Recoge(1).fin);
    int voces = 0;
    std::optional<Trama> trama;
    while ((trama = m_motor.Siguiente()) && std::holds_alternative<TramaVoz>(*trama)) voces++;
    EXPECT_GT(voces, 1);
    EXPECT_EQ(trama, std::optional<Trama>(TramaFin{0}));
}

TEST_P(cServidor, ItEndsWhenTheReaderClosesIdleOrSpeaking) {
    {
        cTrabajador hablando(GetParam());
        hablando.Envia(TramaHabla{Larga(1)});
        ASSERT_TRUE(hablando.Siguiente().has_value());
        hablando.Cierra();
        EXPECT_EQ(hablando.EsperaSalida(), std::optional<int>(0));
    }
    m_motor.Envia(TramaHabla{Corta(1)});
    EXPECT_TRUE(m_motor.Recoge(1).fin);
    m_motor.Cierra();
    EXPECT_EQ(m_motor.EsperaSalida(), std::optional<int>(0));
}

TEST_P(cServidor, GarbageFromTheReaderEndsItWithOne) {
    m_motor.EnviaBytes(std::vector<std::uint8_t>(64, 0xFF));
    const auto estado = m_motor.EsperaSalida();
    ASSERT_TRUE(estado.has_value());
    EXPECT_EQ(WEXITSTATUS(*estado), 1);
}

TEST_P(cServidor, AnAnswerSentByTheReaderIsGarbage) {
    m_motor.Envia(TramaFin{1});
    const auto estado = m_motor.EsperaSalida();
    ASSERT_TRUE(estado.has_value());
    EXPECT_EQ(WEXITSTATUS(*estado), 1);
}

TEST_P(cServidor, FormatComesBeforeTheFirstSamplesOnce) {
    m_motor.Envia(TramaHabla{Corta(1)});
    int formatos = 0;
    bool pcm = false;
    while (const auto trama = m_motor.Siguiente()) {
        if (std::holds_alternative<TramaFormato>(*trama)) {
            EXPECT_FALSE(pcm);
            formatos++;
        }
        pcm |= std::holds_alternative<TramaPcm>(*trama);
        if (std::holds_alternative<TramaFin>(*trama)) break;
    }
    EXPECT_EQ(formatos, 1);
    EXPECT_TRUE(pcm);
}

TEST_P(cServidor, NiceIsTheArgumentsValue) {
    cTrabajador amable(GetParam(), {}, {"--nice", "10"});
    amable.Envia(TramaHabla{Corta(1)});
    ASSERT_TRUE(amable.Recoge(1).fin);
    EXPECT_EQ(getpriority(PRIO_PROCESS, static_cast<id_t>(amable.Pid())), 10);
}

TEST_P(cServidor, WrongArgumentsEndItAtOnceWithSixtyFour) {
    for (const std::vector<std::string> &argumentos :
         {std::vector<std::string>{"--nice"}, {"--nice", "x"}, {"--prisa", "1"}}) {
        cTrabajador malo(GetParam(), {}, argumentos);
        const auto estado = malo.EsperaSalida();
        ASSERT_TRUE(estado.has_value());
        EXPECT_EQ(WEXITSTATUS(*estado), 64);
    }
}

}  // namespace
}  // namespace ondalis
