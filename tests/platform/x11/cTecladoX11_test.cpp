#include "platform/x11/cTecladoX11.h"

#include <gmock/gmock.h>
#include <xcb/xtest.h>

#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdio>

#include "platform/x11/ServidorX.h"
#include "platform/x11/TablaTeclasX.h"

namespace ondalis {
namespace {

using pruebas::Ayudante;
using pruebas::Corre;
using pruebas::EsperaA;
using testing::Each;
using testing::ElementsAre;

class cTecladoX11Prueba : public testing::Test {
protected:
    void SetUp() override {
        if (!pruebas::ServidorX::Unico()) GTEST_SKIP() << "no Xvfb on this machine";
        if (!pruebas::Hay("xdotool") || !pruebas::Hay("setxkbmap")) GTEST_SKIP() << "no xdotool or setxkbmap";
        ASSERT_TRUE(Distribucion({QStringLiteral("es"), QStringLiteral("-option"), QStringLiteral("compose:menu")}));
        ASSERT_TRUE(Repeticion("5000", "10"));
        teclado.SetTecla([this](const TeclaEscrita &tecla) { teclas.push_back(tecla); });
        teclado.SetVentana([this](int proceso) { ventanas.push_back(proceso); });
        teclado.Inicia();
        ASSERT_TRUE(teclado.Oye());
    }
    bool Distribucion(const QStringList &cual) { return Corre(QStringLiteral("setxkbmap"), cual); }
    bool Repeticion(const char *retraso, const char *ritmo) {
        return Corre(QStringLiteral("xset"),
                     {QStringLiteral("r"), QStringLiteral("rate"), QLatin1String(retraso), QLatin1String(ritmo)});
    }
    bool Inyecta(const QStringList &argumentos) { return Corre(QStringLiteral("xdotool"), argumentos); }
    // Presses each of the keys, named or by code, and behind them one that marks the end; returns what they gave.
    QString Pulsa(std::initializer_list<const char *> combinaciones) {
        teclas.clear();
        QStringList argumentos{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("2")};
        for (const char *una : combinaciones) argumentos << QLatin1String(una);
        argumentos << QStringLiteral("F12");
        if (!Inyecta(argumentos)) return QStringLiteral("no xdotool");
        if (!EsperaA([this] { return !teclas.empty() && teclas.back().virtualKey == kMarca; }))
            return QStringLiteral("nothing came");
        teclas.pop_back();
        return Texto();
    }
    QString Texto() const {
        QString todo;
        for (const TeclaEscrita &tecla : teclas) todo += tecla.texto;
        return todo;
    }
    std::vector<int> Virtuales() const {
        std::vector<int> todas;
        for (const TeclaEscrita &tecla : teclas)
            if (tecla.virtualKey < 16 || tecla.virtualKey > 20) todas.push_back(tecla.virtualKey);  // no modifiers
        return todas;
    }

    static constexpr int kMarca = 123;  // F12
    QTemporaryDir carpeta;
    cLog log{carpeta.path() + QStringLiteral("/Ondalis.log")};
    std::vector<TeclaEscrita> teclas;
    std::vector<int> ventanas;
    cTecladoX11 teclado{log};
};

TEST_F(cTecladoX11Prueba, LettersComeWithTheirVirtualKeys) {
    EXPECT_EQ(Pulsa({"h", "shift+o", "1"}), QStringLiteral("hO1"));
    EXPECT_THAT(Virtuales(), ElementsAre('H', 'O', '1'));
}

TEST_F(cTecladoX11Prueba, SpanishLettersAndSignsComeOutRight) {
    // By its code: the sign stands on another key's third level too.
    EXPECT_EQ(Pulsa({"ntilde", "shift+ntilde", "21", "shift+21", "ccedilla"}), QString::fromUtf8("ñÑ¡¿ç"));
}

TEST_F(cTecladoX11Prueba, DeadKeysMakeAccentedLetters) {
    EXPECT_EQ(Pulsa({"dead_acute", "a", "shift+dead_acute", "u", "dead_grave", "e", "dead_acute", "shift+o"}),
              QString::fromUtf8("áüèÓ"));
}

TEST_F(cTecladoX11Prueba, ADeadKeyWithoutAPairLeavesTheSecondKey) {
    EXPECT_EQ(Pulsa({"dead_acute", "b", "c"}), QStringLiteral("bc"));
}

TEST_F(cTecladoX11Prueba, AltGrGivesItsCharacters) {
    EXPECT_EQ(Pulsa({"ISO_Level3_Shift+e", "ISO_Level3_Shift+2"}), QString::fromUtf8("€@"));
}

TEST_F(cTecladoX11Prueba, ComposeSequencesMakeCharacters) {
    EXPECT_EQ(Pulsa({"Multi_key", "apostrophe", "i"}), QString::fromUtf8("í"));
}

TEST_F(cTecladoX11Prueba, CapsLockMakesCapitals) {
    EXPECT_EQ(Pulsa({"Caps_Lock", "a", "ntilde", "shift+b", "Caps_Lock", "c"}), QString::fromUtf8("AÑbc"));
}

TEST_F(cTecladoX11Prueba, CombinationsGiveNoCharacters) {
    EXPECT_EQ(Pulsa({"ctrl+a", "alt+b", "super+c", "ctrl+shift+v", "x"}), QStringLiteral("x"));
    EXPECT_THAT(Virtuales(), testing::IsSupersetOf({int{'A'}, int{'B'}, int{'C'}, int{'V'}, int{'X'}}));
}

TEST_F(cTecladoX11Prueba, TheKeypadGivesItsDigitsWithNumLock) {
    // Key codes of the keypad's 7 and its point; xdotool would choose another key for the names.
    EXPECT_EQ(Pulsa({"Num_Lock", "79", "Num_Lock", "79"}), QStringLiteral("7"));
    EXPECT_THAT(Virtuales(), ElementsAre(144, 103, 144, 36));
    EXPECT_EQ(Pulsa({"KP_Add", "KP_Divide"}), QStringLiteral("+/"));
    EXPECT_THAT(Virtuales(), ElementsAre(107, 111));
}

TEST_F(cTecladoX11Prueba, KeysThatEditAndMoveHaveTheirNumbers) {
    EXPECT_EQ(Pulsa({"Return", "Tab", "BackSpace", "Escape", "space"}), QStringLiteral("\r\t\b\x1b "));
    EXPECT_THAT(Virtuales(), ElementsAre(13, 9, 8, 27, 32));
    EXPECT_EQ(Pulsa({"Left", "Up", "Prior", "End", "F5"}), QString());
    EXPECT_THAT(Virtuales(), ElementsAre(37, 38, 33, 35, 116));
    Pulsa({"shift+Tab", "KP_Enter"});
    EXPECT_THAT(Virtuales(), ElementsAre(9, 13));
}

TEST_F(cTecladoX11Prueba, ANewLayoutIsFollowed) {
    ASSERT_TRUE(Distribucion({QStringLiteral("de")}));
    EXPECT_TRUE(EsperaA([this] { return Pulsa({"29"}) == QStringLiteral("z"); }));  // y in the Spanish one
    ASSERT_TRUE(Distribucion({QStringLiteral("ru")}));
    EXPECT_TRUE(EsperaA([this] { return Pulsa({"38"}) == QString::fromUtf8("ф"); }));
    ASSERT_TRUE(Distribucion({QStringLiteral("fr")}));
    EXPECT_TRUE(EsperaA([this] { return Pulsa({"10"}) == QStringLiteral("&"); }));
    EXPECT_THAT(Virtuales(), ElementsAre('1'));
}

TEST_F(cTecladoX11Prueba, AKeyHeldRepeatsUntilItsRelease) {
    ASSERT_TRUE(Repeticion("100", "50"));
    Pulsa({"b"});
    teclas.clear();
    ASSERT_TRUE(Inyecta({QStringLiteral("keydown"), QStringLiteral("a")}));
    ASSERT_TRUE(EsperaA([this] { return teclas.size() >= 6; }));
    ASSERT_TRUE(Inyecta({QStringLiteral("keyup"), QStringLiteral("a")}));
    EXPECT_THAT(teclas, Each(testing::Field(&TeclaEscrita::texto, QStringLiteral("a"))));
    EXPECT_EQ(Pulsa({"c"}).right(1), QStringLiteral("c"));
    EXPECT_EQ(Pulsa({"d"}), QStringLiteral("d"));  // and no more of the first
}

TEST_F(cTecladoX11Prueba, AModifierHeldGivesNothing) {
    ASSERT_TRUE(Repeticion("50", "100"));
    Pulsa({"b"});
    teclas.clear();
    ASSERT_TRUE(Inyecta({QStringLiteral("keydown"), QStringLiteral("shift"), QStringLiteral("sleep"),
                         QStringLiteral("0.3"), QStringLiteral("keyup"), QStringLiteral("shift")}));
    EXPECT_EQ(Pulsa({"c"}), QStringLiteral("c"));
}

TEST_F(cTecladoX11Prueba, AProgramThatHoldsTheKeyboardForItselfIsNotHeard) {
    {
        Ayudante candado({QStringLiteral("captura-teclado")});
        ASSERT_TRUE(candado.Listo());
        teclas.clear();
        ASSERT_TRUE(Inyecta({QStringLiteral("key"), QStringLiteral("s"), QStringLiteral("e")}));
        ASSERT_TRUE(candado.Suelta());
    }
    EXPECT_EQ(Pulsa({"x"}), QStringLiteral("x"));
}

TEST_F(cTecladoX11Prueba, ItTakesNoKeyAwayAndTellsOfTheWindowAtTheStart) {
    EXPECT_EQ(ventanas.size(), 1U);
    cTecladoX11 otro(log);
    QString oido;
    otro.SetTecla([&oido](const TeclaEscrita &tecla) { oido += tecla.texto; });
    otro.Inicia();
    EXPECT_EQ(Pulsa({"h"}), QStringLiteral("h"));
    EXPECT_TRUE(EsperaA([&oido] { return oido == QStringLiteral("h"); }));
}

TEST_F(cTecladoX11Prueba, AKeyReachesItsHandlerAtOnce) {
    Pulsa({"a"});
    xcb_connection_t *x = xcb_connect(nullptr, nullptr);
    constexpr std::uint8_t kTeclaA = 38;
    std::vector<double> tardan;  // microseconds
    for (int i = 0; i < 200; ++i) {
        teclas.clear();
        const auto antes = std::chrono::steady_clock::now();
        xcb_test_fake_input(x, XCB_KEY_PRESS, kTeclaA, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        xcb_flush(x);
        while (teclas.empty()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        tardan.push_back(std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - antes).count());
        xcb_test_fake_input(x, XCB_KEY_RELEASE, kTeclaA, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        xcb_flush(x);
    }
    xcb_disconnect(x);
    std::sort(tardan.begin(), tardan.end());
    std::printf("key to handler: median %.0f us, 95th percentile %.0f us\n", tardan[100], tardan[190]);
    EXPECT_LT(tardan[100], 20'000);
}

TEST_F(cTecladoX11Prueba, EndedItHearsNothingAndCanStartAgain) {
    teclado.Termina();
    EXPECT_FALSE(teclado.Oye());
    teclas.clear();
    ASSERT_TRUE(Inyecta({QStringLiteral("key"), QStringLiteral("a")}));
    teclado.Inicia();
    teclado.Inicia();
    EXPECT_EQ(Pulsa({"b"}), QStringLiteral("b"));
    teclado.Termina();
    teclado.Termina();
}

TEST_F(cTecladoX11Prueba, WithoutAServerItSaysSoInTheLog) {
    const QByteArray pantalla = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":nowhere");
    cTecladoX11 sordo(log);
    sordo.Inicia();
    qputenv("DISPLAY", pantalla);
    EXPECT_FALSE(sordo.Oye());
    EXPECT_TRUE(QFile::exists(log.Fichero()));
}

TEST(VirtualKeyDe, AgreesWithTheTableOfTheHotKeys) {
    for (int tecla = 1; tecla < 256; ++tecla)
        for (const std::uint32_t simbolo : SimbolosDe(tecla).siempre) EXPECT_EQ(VirtualKeyDe(simbolo), tecla);
}

}  // namespace
}  // namespace ondalis
