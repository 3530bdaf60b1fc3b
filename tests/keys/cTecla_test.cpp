#include "keys/cTecla.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>
#include <stdexcept>

#include "fakes/RegistroPropio.h"
#include "fakes/TeclasFalsas.h"

namespace ondalis {
namespace {

using prueba::TeclasFalsas;
constexpr int kId = cTecla::PrimerIdentificador;

class cTeclaTest : public testing::Test {
protected:
    cTeclaTest() {
        tecla.SetHotKeyPulsada([this](const QString &nombre) { pulsadas << nombre; });
        tecla.SetRepetible([](const QString &nombre) { return nombre == "MasVel"; });
    }
    void Prepara() { tecla.Init(1); }

    prueba::RegistroPropio propio;
    TeclasFalsas sistema;
    cCola cola;
    cTecla tecla{sistema, cola, propio.Log()};
    QStringList pulsadas;
};

TEST_F(cTeclaTest, BeforeInitAddTeclaDoesNotTouchTheTable) {
    tecla.AddTecla(0, 49, "Pausa");
    EXPECT_EQ(tecla.Teclas().size(), 1u);
    EXPECT_TRUE(tecla.Teclas()[0].NombreTecla.isEmpty());
    EXPECT_TRUE(sistema.registradas.empty());
    EXPECT_FALSE(tecla.Registrada(0, 49, "Pausa"));
}

TEST_F(cTeclaTest, BeforeInitTheLoopReturnsAtOnce) { tecla.EsperaTeclas(); }

TEST_F(cTeclaTest, EachKeyFillsTheSpareRowAndIsRegisteredByItsRow) {
    Prepara();
    tecla.AddTecla(-1, 44, "ImprPant");
    tecla.AddTecla(4, 120, "MenosVel");
    ASSERT_EQ(tecla.Teclas().size(), 3u);
    EXPECT_EQ(sistema.registradas[kId], TeclasFalsas::Combinacion(0, 44));
    EXPECT_EQ(sistema.registradas[kId + 1], TeclasFalsas::Combinacion(3, 120));
}

TEST_F(cTeclaTest, ModifierCodesBecomeMasks) {
    EXPECT_EQ(cTecla::Mascara(-1), 0u);
    EXPECT_EQ(cTecla::Mascara(0), 2u);
    EXPECT_EQ(cTecla::Mascara(1), 1u);
    EXPECT_EQ(cTecla::Mascara(2), 4u);
    EXPECT_EQ(cTecla::Mascara(3), 0u);
    EXPECT_EQ(cTecla::Mascara(4), 3u);
    EXPECT_EQ(cTecla::Mascara(99), 0u);
}

TEST_F(cTeclaTest, AfterRemovalTheSameNameGetsANewIdentifierAndTheOldCombinationIsGone) {
    Prepara();
    tecla.AddTecla(0, 49, "Pausa");
    tecla.BorraTecla("Pausa");
    tecla.AddTecla(0, 50, "Pausa");
    EXPECT_FALSE(tecla.Registrada(0, 49, "Pausa"));
    EXPECT_TRUE(tecla.Registrada(0, 50, "Pausa"));
    EXPECT_EQ(tecla.Teclas()[0].NombreTecla, "BORRADO");
    EXPECT_FALSE(sistema.registradas.contains(kId));
    EXPECT_TRUE(sistema.registradas.contains(kId + 1));
}

TEST_F(cTeclaTest, RemovalTakesTheFirstRowOfThatNameOnly) {
    Prepara();
    tecla.AddTecla(0, 49, "Pausa");
    tecla.AddTecla(0, 50, "Pausa");
    tecla.BorraTecla("Pausa");
    EXPECT_FALSE(sistema.registradas.contains(kId));
    EXPECT_TRUE(sistema.registradas.contains(kId + 1));
    tecla.BorraTecla("Otra");
    EXPECT_EQ(sistema.registradas.size(), 1u);
}

TEST_F(cTeclaTest, AStalePressOfARemovedRowRaisesNothing) {
    Prepara();
    tecla.AddTecla(0, 49, "Pausa");
    sistema.PulsaIdentificador(kId);
    tecla.BorraTecla("Pausa");  // the press waits in the queue
    cola.DejaCorrer();
    sistema.PulsaIdentificador(kId);  // and one comes late
    cola.DejaCorrer();
    EXPECT_TRUE(pulsadas.isEmpty());
}

TEST_F(cTeclaTest, APressOfARowThatDoesNotExistRaisesNothing) {
    Prepara();
    tecla.AddTecla(0, 49, "Pausa");
    for (const int id : {0, kId - 1, kId + 1, kId + 1000}) sistema.PulsaIdentificador(id);
    cola.DejaCorrer();
    EXPECT_TRUE(pulsadas.isEmpty());
}

TEST_F(cTeclaTest, ModifierCodes3AndMinus1BothCompareAsNoModifier) {
    Prepara();
    tecla.AddTecla(-1, 44, "ImprPant");
    EXPECT_TRUE(tecla.Registrada(3, 44, "ImprPant"));
    EXPECT_TRUE(tecla.Registrada(-1, 44, "ImprPant"));
    EXPECT_FALSE(tecla.Registrada(0, 44, "ImprPant"));
    EXPECT_FALSE(tecla.Registrada(-1, 45, "ImprPant"));
    EXPECT_FALSE(tecla.Registrada(-1, 44, "Pausa"));
}

TEST_F(cTeclaTest, TwoRowsWithOneCombinationCannotFireTwice) {
    Prepara();
    tecla.AddTecla(0, 49, "Pausa");
    tecla.AddTecla(0, 49, "Detener");
    EXPECT_EQ(tecla.Teclas().size(), 3u);
    sistema.Pulsa(2, 49);
    cola.DejaCorrer();
    EXPECT_EQ(pulsadas, QStringList{"Pausa"});
}

TEST_F(cTeclaTest, ACombinationHeldByAnotherProgramStaysInTheTableAndNeverFires) {
    Prepara();
    sistema.ajenas.insert({2, 49});
    tecla.AddTecla(0, 49, "Pausa");
    EXPECT_TRUE(tecla.Registrada(0, 49, "Pausa"));
    EXPECT_FALSE(sistema.Pulsa(2, 49));
    ASSERT_EQ(propio.LineasLog().size(), 1);
    EXPECT_TRUE(propio.LineasLog()[0].contains("cTecla.AddTecla: "));
}

TEST_F(cTeclaTest, PressesAreRaisedFromTheQueueNotInsideThePress) {
    Prepara();
    tecla.AddTecla(0, 49, "Pausa");
    sistema.Pulsa(2, 49);
    EXPECT_TRUE(pulsadas.isEmpty());
    cola.DejaCorrer();
    EXPECT_EQ(pulsadas, QStringList{"Pausa"});
}

TEST_F(cTeclaTest, ASecondKeyWaitsUntilTheFirstOnesHandlerReturns) {
    Prepara();
    tecla.AddTecla(0, 49, "Pausa");
    tecla.AddTecla(0, 50, "Detener");
    tecla.SetHotKeyPulsada([this](const QString &nombre) {
        pulsadas << "[" << nombre;
        if (nombre == "Pausa") sistema.Pulsa(2, 50);
        cola.DejaCorrer();
        pulsadas << "]";
    });
    sistema.Pulsa(2, 49);
    cola.DejaCorrer();
    EXPECT_EQ(pulsadas, (QStringList{"[", "Pausa", "]", "[", "Detener", "]"}));
}

TEST_F(cTeclaTest, AutoRepeatIsDropped) {
    Prepara();
    tecla.AddTecla(0, 49, "Pausa");
    sistema.Pulsa(2, 49);
    for (int i = 0; i < 5; ++i) sistema.Pulsa(2, 49, true);
    cola.DejaCorrer();
    sistema.Pulsa(2, 49, true);
    cola.DejaCorrer();
    EXPECT_EQ(pulsadas, QStringList{"Pausa"});
}

TEST_F(cTeclaTest, ARepeatableCommandRepeatsWithAtMostOnePressWaiting) {
    Prepara();
    tecla.AddTecla(4, 121, "MasVel");
    sistema.Pulsa(3, 121);
    for (int i = 0; i < 5; ++i) sistema.Pulsa(3, 121, true);
    cola.DejaCorrer();
    EXPECT_EQ(pulsadas.size(), 1);
    for (int i = 0; i < 5; ++i) sistema.Pulsa(3, 121, true);
    cola.DejaCorrer();
    EXPECT_EQ(pulsadas.size(), 2);
}

TEST_F(cTeclaTest, ARepeatThatComesDuringItsOwnHandlerWaitsOnce) {
    Prepara();
    tecla.AddTecla(4, 121, "MasVel");
    tecla.SetHotKeyPulsada([this](const QString &nombre) {
        pulsadas << nombre;
        if (pulsadas.size() == 1)
            for (int i = 0; i < 5; ++i) sistema.Pulsa(3, 121, true);
    });
    sistema.Pulsa(3, 121);
    cola.DejaCorrer();
    EXPECT_EQ(pulsadas.size(), 2);
}

TEST_F(cTeclaTest, PressesOfTheUsersOwnAreNeverJoined) {
    Prepara();
    tecla.AddTecla(0, 49, "Pausa");
    for (int i = 0; i < 3; ++i) sistema.Pulsa(2, 49);
    cola.DejaCorrer();
    EXPECT_EQ(pulsadas.size(), 3);
}

TEST_F(cTeclaTest, TheLoopServesKeysAndEverythingElseUntilTermina) {
    Prepara();
    tecla.AddTecla(0, 49, "Pausa");
    int tics = 0;
    QTimer otro;
    QObject::connect(&otro, &QTimer::timeout, [&] {
        if (++tics == 1) sistema.Pulsa(2, 49);
    });
    otro.start(1);
    tecla.SetHotKeyPulsada([this](const QString &nombre) {
        pulsadas << nombre;
        tecla.Termina();
    });
    tecla.EsperaTeclas();
    EXPECT_EQ(pulsadas, QStringList{"Pausa"});
    EXPECT_GE(tics, 1);
}

TEST_F(cTeclaTest, TerminaEndsALoopThatWouldWaitForEver) {
    Prepara();
    QTimer::singleShot(0, [this] { tecla.Termina(); });
    tecla.EsperaTeclas();
}

TEST_F(cTeclaTest, AfterAnErrorOfAHandlerTheLoopEndsAndTheLogTells) {
    Prepara();
    tecla.AddTecla(0, 49, "Pausa");
    tecla.SetHotKeyPulsada([](const QString &) { throw std::runtime_error("roto"); });
    QTimer::singleShot(0, [this] { sistema.Pulsa(2, 49); });
    tecla.EsperaTeclas();
    ASSERT_EQ(propio.LineasLog().size(), 1);
    EXPECT_TRUE(propio.LineasLog()[0].contains("cTecla.EsperaTeclas: roto (5)"));
}

TEST_F(cTeclaTest, AHandlerMayReplaceItsOwnKey) {
    Prepara();
    tecla.AddTecla(0, 49, "Pausa");
    tecla.SetHotKeyPulsada([this](const QString &nombre) {
        tecla.BorraTecla(nombre);
        for (int i = 0; i < 50; ++i) tecla.AddTecla(0, static_cast<std::int16_t>(60 + i), nombre);
        pulsadas << nombre;
    });
    sistema.Pulsa(2, 49);
    cola.DejaCorrer();
    EXPECT_EQ(pulsadas, QStringList{"Pausa"});
    EXPECT_TRUE(tecla.Registrada(0, 60, "Pausa"));
}

TEST(cTecla, AtItsEndEveryKeyStillHeldIsReleasedOnce) {
    prueba::RegistroPropio propio;
    TeclasFalsas sistema;
    cCola cola;
    {
        cTecla tecla(sistema, cola, propio.Log());
        tecla.Init(1);
        tecla.AddTecla(0, 49, "Pausa");
        tecla.AddTecla(0, 50, "Detener");
        tecla.BorraTecla("Pausa");
        sistema.Pulsa(2, 50);
    }
    cola.DejaCorrer();  // a press that comes after the end
    sistema.PulsaIdentificador(kId + 1);
    EXPECT_TRUE(sistema.registradas.empty());
    EXPECT_EQ(sistema.liberadas, (std::map<int, int>{{kId, 1}, {kId + 1, 1}}));
}

}  // namespace
}  // namespace ondalis
