#include "platform/x11/cTeclasX11.h"

#include <gmock/gmock.h>

#include <QTemporaryDir>
#include <optional>

#include "platform/x11/ServidorX.h"

namespace ondalis {
namespace {

using pruebas::Ayudante;
using pruebas::Corre;
using pruebas::EsperaA;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr std::uint32_t kAlt = 1, kControl = 2, kMayus = 4;
constexpr std::uint8_t kTeclaUno = 10, kTeclaDos = 11;  // key codes of the digit row

class cTeclasX11Prueba : public testing::Test {
protected:
    void SetUp() override {
        if (!pruebas::ServidorX::Unico()) GTEST_SKIP() << "no Xvfb on this machine";
        if (!pruebas::Hay("xdotool") || !pruebas::Hay("setxkbmap")) GTEST_SKIP() << "no xdotool or setxkbmap";
        ASSERT_TRUE(Distribucion("es"));
        // One server for all: what a test sets must not reach the next, and a release that comes late on a busy machine
        // must not look like a key held.
        ASSERT_TRUE(Repeticion("5000", "10"));
        teclas.emplace(log, 20);
        teclas->SetPulsada([this](int id, bool repetida) { pulsadas.emplace_back(id, repetida); });
    }
    bool Distribucion(const char *nombre) { return Corre(QStringLiteral("setxkbmap"), {QLatin1String(nombre)}); }
    // Milliseconds until a key held repeats, and repetitions a second from then on.
    bool Repeticion(const char *retraso, const char *ritmo) {
        return Corre(QStringLiteral("xset"),
                     {QStringLiteral("r"), QStringLiteral("rate"), QLatin1String(retraso), QLatin1String(ritmo)});
    }
    bool Inyecta(const QStringList &argumentos) { return Corre(QStringLiteral("xdotool"), argumentos); }
    bool Pulsa(const char *combinacion) { return Inyecta({QStringLiteral("key"), QLatin1String(combinacion)}); }
    // What comes later than the presses before it: a key of this test's own behind them.
    bool Asienta() {
        if (!teclas->Concedida(99)) teclas->Registra(99, kControl | kMayus, 57);
        if (!Pulsa("ctrl+shift+9")) return false;
        const bool visto = EsperaA(
            [&] { return std::any_of(pulsadas.begin(), pulsadas.end(), [](const auto &p) { return p.first == 99; }); });
        std::erase_if(pulsadas, [](const auto &p) { return p.first == 99; });
        return visto;
    }

    QTemporaryDir carpeta;
    cLog log{carpeta.path() + QStringLiteral("/Ondalis.log")};
    std::vector<std::pair<int, bool>> pulsadas;
    std::optional<cTeclasX11> teclas;
};

TEST_F(cTeclasX11Prueba, OnePressIsToldOnce) {
    ASSERT_TRUE(teclas->Registra(1, kControl, 49));
    ASSERT_TRUE(Pulsa("ctrl+1"));
    ASSERT_TRUE(Asienta());
    EXPECT_THAT(pulsadas, ElementsAre(Pair(1, false)));
}

TEST_F(cTeclasX11Prueba, OtherModifiersAreAnotherCombination) {
    ASSERT_TRUE(teclas->Registra(1, kControl, 49));
    ASSERT_TRUE(teclas->Registra(2, kAlt, 49));
    ASSERT_TRUE(Pulsa("1"));
    ASSERT_TRUE(Pulsa("ctrl+shift+1"));
    ASSERT_TRUE(Pulsa("alt+1"));
    ASSERT_TRUE(Asienta());
    EXPECT_THAT(pulsadas, ElementsAre(Pair(2, false)));
}

TEST_F(cTeclasX11Prueba, NumLockAndCapsLockMakeNoDifference) {
    ASSERT_TRUE(teclas->Registra(1, kControl, 49));
    for (const char *bloqueo : {"Num_Lock", "Caps_Lock", "Num_Lock", "Caps_Lock"}) {
        ASSERT_TRUE(Pulsa(bloqueo));
        pulsadas.clear();
        ASSERT_TRUE(Pulsa("ctrl+1"));
        ASSERT_TRUE(Asienta());
        EXPECT_THAT(pulsadas, ElementsAre(Pair(1, false))) << bloqueo;
    }
}

TEST_F(cTeclasX11Prueba, AKeyGivenBackIsSilent) {
    ASSERT_TRUE(teclas->Registra(1, kControl, 49));
    teclas->Libera(1);
    ASSERT_TRUE(Pulsa("ctrl+1"));
    ASSERT_TRUE(Asienta());
    EXPECT_THAT(pulsadas, IsEmpty());
}

TEST_F(cTeclasX11Prueba, AKeyHeldDownRepeatsUntilItsRelease) {
    ASSERT_TRUE(Repeticion("50", "100"));
    ASSERT_TRUE(teclas->Registra(1, kControl, 49));
    ASSERT_TRUE(
        Inyecta({QStringLiteral("keydown"), QStringLiteral("ctrl"), QStringLiteral("keydown"), QStringLiteral("1")}));
    ASSERT_TRUE(EsperaA([this] { return pulsadas.size() >= 4; }));
    ASSERT_TRUE(
        Inyecta({QStringLiteral("keyup"), QStringLiteral("1"), QStringLiteral("keyup"), QStringLiteral("ctrl")}));
    ASSERT_TRUE(Asienta());
    EXPECT_EQ(pulsadas.front(), std::pair(1, false));
    for (std::size_t i = 1; i < pulsadas.size(); ++i) EXPECT_EQ(pulsadas[i], std::pair(1, true)) << i;
    ASSERT_TRUE(Repeticion("5000", "10"));
    pulsadas.clear();
    ASSERT_TRUE(Pulsa("ctrl+1"));
    ASSERT_TRUE(Asienta());
    EXPECT_EQ(pulsadas.front(), std::pair(1, false));
}

TEST_F(cTeclasX11Prueba, ACombinationHeldByAnotherProgramIsRefusedAndTakenWhenItIsFree) {
    Ayudante otro({QStringLiteral("captura-tecla"), QString::number(BitsX::Control), QString::number(kTeclaUno)});
    ASSERT_TRUE(otro.Listo());
    EXPECT_FALSE(teclas->Registra(1, kControl, 49));
    EXPECT_FALSE(teclas->Concedida(1));
    ASSERT_TRUE(Pulsa("ctrl+1"));
    ASSERT_TRUE(Asienta());
    EXPECT_THAT(pulsadas, IsEmpty());  // raw events don't serve what isn't ours
    ASSERT_TRUE(otro.Suelta());
    ASSERT_TRUE(EsperaA([this] { return teclas->Concedida(1); }));
    ASSERT_TRUE(Pulsa("ctrl+1"));
    ASSERT_TRUE(Asienta());
    EXPECT_THAT(pulsadas, ElementsAre(Pair(1, false)));
}

TEST_F(cTeclasX11Prueba, OfTwoRowsWithOneCombinationTheSecondWaitsForTheFirst) {
    EXPECT_TRUE(teclas->Registra(1, kControl, 49));
    EXPECT_FALSE(teclas->Registra(2, kControl, 49));
    ASSERT_TRUE(Pulsa("ctrl+1"));
    ASSERT_TRUE(Asienta());
    EXPECT_THAT(pulsadas, ElementsAre(Pair(1, false)));
    teclas->Libera(1);
    EXPECT_TRUE(teclas->Concedida(2));
    pulsadas.clear();
    ASSERT_TRUE(Pulsa("ctrl+1"));
    ASSERT_TRUE(Asienta());
    EXPECT_THAT(pulsadas, ElementsAre(Pair(2, false)));
}

TEST_F(cTeclasX11Prueba, AFailedRowLeavesNothingGrabbed) {
    // Only one of the four states of the locks is taken: the other three are given back.
    Ayudante otro(
        {QStringLiteral("captura-tecla"), QString::number(BitsX::Control | BitsX::Mod2), QString::number(kTeclaDos)});
    ASSERT_TRUE(otro.Listo());
    ASSERT_FALSE(teclas->Registra(1, kControl, 50));
    teclas->Libera(1);
    Ayudante tercero({QStringLiteral("captura-tecla"), QString::number(BitsX::Control), QString::number(kTeclaDos)});
    EXPECT_TRUE(tercero.Listo());
}

TEST_F(cTeclasX11Prueba, APopupOfAnotherProgramDoesNotDeafenUs) {
    ASSERT_TRUE(teclas->Registra(1, kControl, 49));
    Ayudante ventana({QStringLiteral("captura-teclado")});
    ASSERT_TRUE(ventana.Listo());
    ASSERT_TRUE(Pulsa("ctrl+1"));
    ASSERT_TRUE(Pulsa("ctrl+1"));
    ASSERT_TRUE(Asienta());
    EXPECT_THAT(pulsadas, ElementsAre(Pair(1, false), Pair(1, false)));
}

TEST_F(cTeclasX11Prueba, ADigitOnTheFrenchLayoutIsItsKeyWithoutShift) {
    ASSERT_TRUE(Distribucion("fr"));
    teclas.emplace(log, 20);
    teclas->SetPulsada([this](int id, bool repetida) { pulsadas.emplace_back(id, repetida); });
    ASSERT_TRUE(teclas->Registra(1, kControl, 49));
    ASSERT_TRUE(Pulsa("ctrl+ampersand"));
    ASSERT_TRUE(EsperaA([this] { return !pulsadas.empty(); }));
    EXPECT_THAT(pulsadas, ElementsAre(Pair(1, false)));
}

TEST_F(cTeclasX11Prueba, AKeyFollowsTheKeyboardToAnotherLayout) {
    ASSERT_TRUE(teclas->Registra(1, kControl, 49));
    ASSERT_TRUE(Corre(QStringLiteral("xmodmap"), {QStringLiteral("-e"), QStringLiteral("keycode 10 = x X"),
                                                  QStringLiteral("-e"), QStringLiteral("keycode 53 = 1 exclam")}) ||
                !pruebas::Hay("xmodmap"));
    if (!pruebas::Hay("xmodmap")) GTEST_SKIP() << "no xmodmap on this machine";
    ASSERT_TRUE(EsperaA([this] {
        pulsadas.clear();
        Inyecta({QStringLiteral("key"), QStringLiteral("ctrl+53")});
        return EsperaA([this] { return !pulsadas.empty(); }, 50);
    }));
    EXPECT_EQ(pulsadas.front(), std::pair(1, false));
}

TEST_F(cTeclasX11Prueba, ANewLayoutLeavesTheKeysWorking) {
    ASSERT_TRUE(teclas->Registra(1, kControl, 49));
    ASSERT_TRUE(Distribucion("us"));
    ASSERT_TRUE(Pulsa("ctrl+1"));
    ASSERT_TRUE(Asienta());
    ASSERT_TRUE(Distribucion("es"));
    ASSERT_TRUE(Pulsa("ctrl+1"));
    ASSERT_TRUE(Asienta());
    EXPECT_THAT(pulsadas, ElementsAre(Pair(1, false), Pair(1, false)));
}

TEST_F(cTeclasX11Prueba, WhereTheKeymapSwitchesTerminalsSuperAndControlAreRegistered) {
    ASSERT_TRUE(teclas->Registra(1, kControl | kAlt, 120));  // F9
    ASSERT_TRUE(teclas->Registra(2, kControl, 120));
    EXPECT_THAT(teclas->ConSuper(), ElementsAre(1));
    ASSERT_TRUE(Pulsa("super+ctrl+F9"));
    ASSERT_TRUE(Asienta());
    EXPECT_THAT(pulsadas, ElementsAre(Pair(1, false)));
}

TEST_F(cTeclasX11Prueba, AKeypadDigitWorksWithAndWithoutNumLock) {
    ASSERT_TRUE(teclas->Registra(1, kControl, 96));
    ASSERT_TRUE(Inyecta({QStringLiteral("key"), QStringLiteral("ctrl+90")}));
    ASSERT_TRUE(Pulsa("Num_Lock"));
    ASSERT_TRUE(Inyecta({QStringLiteral("key"), QStringLiteral("ctrl+90")}));
    ASSERT_TRUE(Pulsa("Num_Lock"));
    ASSERT_TRUE(Asienta());
    EXPECT_THAT(pulsadas, ElementsAre(Pair(1, false), Pair(1, false)));
}

TEST_F(cTeclasX11Prueba, WithoutAServerNothingIsGranted) {
    const QByteArray pantalla = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":nowhere");
    cTeclasX11 sorda(log);
    qputenv("DISPLAY", pantalla);
    EXPECT_FALSE(sorda.Conectado());
    EXPECT_FALSE(sorda.Registra(1, kControl, 49));
    sorda.Libera(1);
}

}  // namespace
}  // namespace ondalis
