#include "platform/motor/cTokensMotor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

#include "engine/Protocolo.h"
#include "engine/cLanzadorProceso.h"

namespace ondalis {
namespace {

// A worker that has written its whole answer beforehand; the other end stays open unless it is to hang up.
class MotorEscrito : public LanzadorMotor {
public:
    explicit MotorEscrito(std::vector<std::uint8_t> respuesta, bool cuelga = false)
        : m_respuesta(std::move(respuesta)), m_cuelga(cuelga) {}
    ~MotorEscrito() override {
        if (m_otro >= 0) close(m_otro);
    }
    int veces = 0;

    std::unique_ptr<ProcesoMotor> Lanza() override {
        ++veces;
        struct Proceso : ProcesoMotor {
            int fd = -1;
            ~Proceso() override { close(fd); }
            int Descriptor() const override { return fd; }
        };
        int par[2];
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, par) != 0) return nullptr;
        fcntl(par[0], F_SETFL, O_NONBLOCK);
        EXPECT_EQ(write(par[1], m_respuesta.data(), m_respuesta.size()), static_cast<ssize_t>(m_respuesta.size()));
        if (m_cuelga) shutdown(par[1], SHUT_WR);
        m_otro = par[1];
        auto proceso = std::make_unique<Proceso>();
        proceso->fd = par[0];
        return proceso;
    }

private:
    std::vector<std::uint8_t> m_respuesta;
    bool m_cuelga;
    int m_otro = -1;
};

class SinMotor : public LanzadorMotor {
public:
    std::unique_ptr<ProcesoMotor> Lanza() override { return nullptr; }
};

std::vector<std::uint8_t> Tramas(std::initializer_list<Trama> tramas) {
    std::vector<std::uint8_t> bytes;
    for (const Trama &trama : tramas) Codifica(trama, bytes);
    return bytes;
}

const TramaVoz kPablo{"motor", "es", "Pablo", "40A;C0A", "Nadie", 0, "Male", "Teen"};

TEST(cTokensMotor, EachVoiceOfTheWorkerIsOneToken) {
    MotorEscrito motor(Tramas({kPablo, TramaFin{}}));
    const cTokensMotor tokens(motor);
    ASSERT_EQ(tokens.Tokens().size(), 1u);
    EXPECT_EQ(tokens.Tokens()[0], (TokenVoz{QStringLiteral("Nadie"), QStringLiteral("Pablo"), QStringLiteral("40A;C0A"),
                                            "motor", "es", QStringLiteral("Male"), QStringLiteral("Teen")}));
    EXPECT_EQ(&tokens.Tokens(), &tokens.Tokens());
}

TEST(cTokensMotor, AnEnginesOwnLimitToItsFirstAnswerIsTheChannelsAndNeverMoreThanAMinute) {
    using std::chrono::milliseconds;
    MotorEscrito motor(
        Tramas({kPablo, TramaVoz{"lento", "a", "A", "409", "X", 7000}, TramaVoz{"lento", "b", "B", "409", "X", 9000},
                TramaVoz{"eterno", "c", "C", "409", "X", 4'000'000'000}, TramaFin{}}));
    const PlazosMotor plazos = cTokensMotor(motor).Plazos();
    const std::map<std::string, milliseconds> esperados{{"lento", milliseconds(9000)},
                                                        {"eterno", milliseconds(60'000)}};
    EXPECT_EQ(plazos.deMotor, esperados);
    EXPECT_EQ(plazos.primera, PlazosMotor{}.primera);
    SinMotor ninguno;
    EXPECT_TRUE(cTokensMotor(ninguno).Plazos().deMotor.empty());
}

TEST(cTokensMotor, AThousandVoicesComeInTheWorkersOrderAndAreFrozenForTheProcess) {
    std::vector<std::uint8_t> bytes;
    for (int i = 0; i < 1000; ++i)
        Codifica(TramaVoz{"motor", std::to_string(i), "Voz " + std::to_string(i), "409", "M", 0}, bytes);
    Codifica(TramaFin{}, bytes);
    MotorEscrito motor(bytes);
    const cTokensMotor tokens(motor);
    ASSERT_EQ(tokens.Tokens().size(), 1000u);
    for (std::size_t i = 0; i < 1000; ++i) ASSERT_EQ(tokens.Tokens()[i].voz, std::to_string(i));
    EXPECT_EQ(tokens.Plazos().deMotor.size(), 0u);
    EXPECT_EQ(motor.veces, 1);  // a voice installed since then has no number that another one holds
}

TEST(cTokensMotor, WhatTheWorkerSaysOfADescriptionIsKeptForTheLogAndCostsNoVoice) {
    MotorEscrito motor(Tramas({kPablo, TramaError{0, "a.motor: línea 2"}, TramaError{0, "b.motor: roto"}, TramaFin{}}));
    const cTokensMotor tokens(motor);
    EXPECT_EQ(tokens.Quejas(), (QStringList{QStringLiteral("a.motor: línea 2"), QStringLiteral("b.motor: roto")}));
    EXPECT_EQ(tokens.Tokens().size(), 1u);
    SinMotor ninguno;
    EXPECT_TRUE(cTokensMotor(ninguno).Quejas().isEmpty());
}

TEST(cTokensMotor, AListThatDoesNotEndIsNoList) {
    MotorEscrito cuelga(Tramas({kPablo}), true);
    EXPECT_TRUE(cTokensMotor(cuelga).Tokens().empty());
    MotorEscrito calla(Tramas({kPablo}));
    EXPECT_TRUE(cTokensMotor(calla, std::chrono::milliseconds(30)).Tokens().empty());
}

TEST(cTokensMotor, GarbageOrNoWorkerIsNoList) {
    MotorEscrito basura({2, 0, 0, 0, 250, 250});
    EXPECT_TRUE(cTokensMotor(basura).Tokens().empty());
    SinMotor ninguno;
    EXPECT_TRUE(cTokensMotor(ninguno).Tokens().empty());
}

TEST(cTokensMotor, TheRealWorkerHasSpanishVoicesWhoseNoticesComeInSpanish) {
    cLanzadorProceso motor(MOTOR);
    const cTokensMotor tokens(motor);
    EXPECT_TRUE(std::any_of(tokens.Tokens().begin(), tokens.Tokens().end(), [](const TokenVoz &t) {
        return t.fabricante == QStringLiteral("eSpeak NG") && t.lengua == QStringLiteral("40A;C0A");
    }));
}

}  // namespace
}  // namespace ondalis
