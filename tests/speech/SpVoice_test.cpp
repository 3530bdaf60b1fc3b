#include "speech/SpVoice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <optional>

#include "ControlDePrueba.h"
#include "fakes/TokensFalsos.h"

namespace ondalis::prueba {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kLectura = 11;
constexpr int kAviso = 2;

class SpVoiceTest : public testing::Test {
protected:
    void SetUp() override { voz.SetEventos(banco.Eventos()); }
    // A waiting call needs an engine that comes to its end by itself.
    void TerminaSolo() {
        banco.canal.alHablar = [this] { banco.canal.Fin(); };
    }
    const Locucion &Dicha() { return banco.canal.locuciones.back(); }

    Banco banco;
    TokensFalsos tokens{TokensFalsos::Tres()};
    SpVoice voz{banco.canal, tokens, banco.cola, banco.estado, banco.registro.Log()};
};

TEST_F(SpVoiceTest, AReadingReturnsAtOnceAndHasItsThreeEvents) {
    EXPECT_FALSE(voz.Speak(QStringLiteral("hola"), kLectura));
    banco.canal.Palabra(0);
    banco.canal.Fin();
    EXPECT_THAT(banco.diario, IsEmpty());
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Word 0", "Stop 0"));
    EXPECT_EQ(Dicha().voz.motor, "espeak");
    EXPECT_EQ(Dicha().voz.voz, "es");
    EXPECT_FALSE(Dicha().voz.formantes);
}

TEST_F(SpVoiceTest, ANoticeWaitsAndItsStartAndStopComeAfterwardsUnder1WithoutWords) {
    banco.estado.valor = cEstadoVoz::Aviso;
    banco.canal.alHablar = [this] {
        banco.canal.Palabra(0);
        banco.canal.Fin();
    };
    EXPECT_FALSE(voz.Speak(QStringLiteral("hola"), kAviso));
    EXPECT_FALSE(banco.canal.sonando);
    EXPECT_THAT(banco.diario, IsEmpty());
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Stop 1"));
}

TEST_F(SpVoiceTest, ANoticeSpokenDuringAReadingPurgesItUnderItsOwnRole) {
    EXPECT_FALSE(voz.Speak(QStringLiteral("un texto largo"), kLectura));
    banco.cola.DejaCorrer();
    banco.Saca();
    TerminaSolo();
    banco.estado.valor = cEstadoVoz::Aviso;
    EXPECT_FALSE(voz.Speak(QStringLiteral("aviso"), kAviso));
    EXPECT_THAT(banco.Saca(), ElementsAre("Stop 0"));
    EXPECT_EQ(banco.estado.valor, cEstadoVoz::Aviso);
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Stop 1"));
}

TEST_F(SpVoiceTest, AnEmptyTextWithFlag2SilencesAndRaisesNoSpeechOfItsOwn) {
    EXPECT_FALSE(voz.Speak(QStringLiteral("hola"), kLectura));
    banco.cola.DejaCorrer();
    EXPECT_FALSE(voz.Speak(QString(), 2));
    EXPECT_FALSE(banco.canal.sonando);
    EXPECT_EQ(banco.canal.locuciones.size(), 1u);
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.Saca(), ElementsAre("Start", "Stop 0"));
    EXPECT_FALSE(voz.Speak(QString(), 2));
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.diario, IsEmpty());
    EXPECT_EQ(banco.canal.locuciones.size(), 1u);
}

TEST_F(SpVoiceTest, AnEmptyReadingIsAcceptedAndEnds) {
    EXPECT_FALSE(voz.Speak(QString(), kLectura));
    banco.canal.Fin();
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Stop 0"));
}

TEST_F(SpVoiceTest, BrokenMarkupIsRefusedBeforeAnythingIsPurged) {
    EXPECT_FALSE(voz.Speak(QStringLiteral("hola"), kLectura));
    banco.cola.DejaCorrer();
    banco.Saca();
    const Fallo fallo = voz.Speak(QStringLiteral("<rate speed='mucho'>hola</rate>"), kLectura);
    EXPECT_EQ(static_cast<std::uint32_t>(fallo.numero), 0x80045042u);
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.diario, IsEmpty());
    EXPECT_TRUE(banco.canal.sonando);
    EXPECT_THAT(banco.canal.ordenes, ElementsAre("habla"));
}

TEST_F(SpVoiceTest, WithoutFlag8MarkupIsText) {
    TerminaSolo();
    EXPECT_FALSE(voz.Speak(QStringLiteral("<rate speed='mucho'>"), kAviso));
    EXPECT_EQ(banco.canal.Texto(), u"<rate speed='mucho'>");
}

TEST_F(SpVoiceTest, Flag8MakesTheXmlActWithTheOffsetsOfTheTextGiven) {
    EXPECT_FALSE(voz.Speak(QStringLiteral("<volume level='50'/>año"), kLectura));
    ASSERT_EQ(Dicha().tramos.size(), 2u);
    EXPECT_EQ(Dicha().tramos[0].tipo, TipoTramo::Volumen);
    EXPECT_DOUBLE_EQ(Dicha().tramos[0].valor, 0.5);
    EXPECT_EQ(Dicha().tramos[1].texto, u"año");
    EXPECT_THAT(Dicha().tramos[1].cortes, ElementsAre(Corte{0, 20}));
}

TEST_F(SpVoiceTest, Flag64SpeaksTheSigns) {
    EXPECT_FALSE(voz.Speak(QStringLiteral("a, b"), 75));
    ASSERT_EQ(Dicha().tramos.size(), 2u);
    EXPECT_EQ(Dicha().tramos[0].tipo, TipoTramo::Puntuacion);
    EXPECT_EQ(Dicha().tramos[0].valor, 1);
    EXPECT_EQ(Dicha().tramos[1].texto, u"a, b");
    EXPECT_FALSE(voz.Speak(QStringLiteral("a, b"), kLectura));
    EXPECT_EQ(Dicha().tramos.size(), 1u);
}

TEST_F(SpVoiceTest, TenStepsOfRateAreAFactorOfThreeAndEachOneIsHeard) {
    const auto velocidad = [this](int rate) {
        voz.SetRate(rate);
        EXPECT_FALSE(voz.Speak(QStringLiteral("a"), kLectura));
        return Dicha().voz.velocidad;
    };
    EXPECT_EQ(velocidad(0), 170);
    EXPECT_EQ(velocidad(5), 294);
    EXPECT_EQ(velocidad(-5), 98);
    EXPECT_EQ(velocidad(10), 510);
    EXPECT_EQ(velocidad(-10), 57);
    int anterior = 0;
    for (int rate = -10; rate <= 10; ++rate) {
        EXPECT_GT(velocidad(rate), anterior) << rate;
        anterior = velocidad(rate);
    }
}

TEST_F(SpVoiceTest, RateAndVolumeNeverLeaveTheirRanges) {
    voz.SetRate(11);
    EXPECT_EQ(voz.Rate(), 10);
    voz.SetRate(-11);
    EXPECT_EQ(voz.Rate(), -10);
    voz.SetVolume(101);
    EXPECT_EQ(voz.Volume(), 100);
    voz.SetVolume(-1);
    EXPECT_EQ(voz.Volume(), 0);
}

TEST_F(SpVoiceTest, VolumeIsTheGain) {
    for (const int volumen : {0, 25, 100}) {
        voz.SetVolume(volumen);
        EXPECT_FALSE(voz.Speak(QStringLiteral("a"), kLectura));
        EXPECT_DOUBLE_EQ(Dicha().voz.ganancia, volumen / 100.0);
    }
}

TEST_F(SpVoiceTest, GetVoicesGivesTheTokensThatMatchBlindToCase) {
    const auto nombres = [this](const char *requeridos, const char *opcionales = "") {
        std::vector<std::string> resultado;
        for (const TokenVoz &token : voz.GetVoices(QLatin1String(requeridos), QLatin1String(opcionales)))
            resultado.push_back(token.nombre.toStdString());
        return resultado;
    };
    EXPECT_THAT(nombres(""), ElementsAre("Spanish", "English", "kal"));
    EXPECT_THAT(nombres("Name=spanish"), ElementsAre("Spanish"));
    EXPECT_THAT(nombres("Language=C0A"), ElementsAre("Spanish"));
    EXPECT_THAT(nombres("language=409"), ElementsAre("English", "kal"));
    EXPECT_THAT(nombres("Language=409;Vendor=Flite"), ElementsAre("kal"));
    EXPECT_THAT(nombres("Language=40"), IsEmpty());
    EXPECT_THAT(nombres("Gender=Male"), IsEmpty());
    EXPECT_THAT(nombres("", "Vendor=Flite"), ElementsAre("kal", "Spanish", "English"));
    EXPECT_THAT(nombres("Name=nadie"), IsEmpty());
    EXPECT_THAT(nombres("Vendor!=Flite"), ElementsAre("Spanish", "English"));
    EXPECT_THAT(nombres("Language != c0a; Name!=kal"), ElementsAre("English"));
    EXPECT_THAT(nombres("Age!=Child"), ElementsAre("Spanish", "English", "kal"));
    EXPECT_THAT(nombres("", "Vendor!=eSpeak NG"), ElementsAre("kal", "Spanish", "English"));
}

TEST_F(SpVoiceTest, ATokenGivesItsAttributesAndNothingForOneThatItLacks) {
    const TokenVoz token = voz.GetVoices({}, {}).front();
    EXPECT_EQ(token.GetAttribute(QStringLiteral("Vendor")), QStringLiteral("eSpeak NG"));
    EXPECT_EQ(token.GetAttribute(QStringLiteral("Name")), QStringLiteral("Spanish"));
    EXPECT_EQ(token.GetAttribute(QStringLiteral("Language")), QStringLiteral("40A;C0A"));
    EXPECT_EQ(token.GetAttribute(QStringLiteral("Age")), QString());
    TokenVoz joven = token;
    joven.genero = QStringLiteral("Female");
    joven.edad = QStringLiteral("Teen");
    EXPECT_EQ(joven.GetAttribute(QStringLiteral("gender")), QStringLiteral("Female"));
    EXPECT_EQ(joven.GetAttribute(QStringLiteral("AGE")), QStringLiteral("Teen"));
}

TEST_F(SpVoiceTest, AVoiceTagSelectsAVoiceOfTheEngineThatSpeaksAndAnyOtherChangesNothing) {
    EXPECT_FALSE(voz.Speak(QStringLiteral("<voice required='Language=409'>one</voice> dos"), kLectura));
    std::vector<std::u16string> voces;
    for (const Tramo &tramo : Dicha().tramos)
        if (tramo.tipo == TipoTramo::Voz) voces.push_back(tramo.texto);
    EXPECT_THAT(voces, ElementsAre(u"en-us", u""));
    EXPECT_FALSE(voz.Speak(QStringLiteral("<voice required='Name=kal'>one"), kLectura));
    for (const Tramo &tramo : Dicha().tramos) EXPECT_TRUE(tramo.tipo != TipoTramo::Voz || tramo.texto.empty());
}

std::vector<std::u16string> VocesDe(const Locucion &locucion) {
    std::vector<std::u16string> voces;
    for (const Tramo &tramo : locucion.tramos)
        if (tramo.tipo == TipoTramo::Voz) voces.push_back(tramo.texto);
    return voces;
}

class SpVoiceConVoces : public testing::Test {
protected:
    SpVoiceConVoces() {
        const auto una = [](const char *nombre, const char *lengua, const char *motor, const char *genero) {
            TokenVoz token = TokensFalsos::Token("M", nombre, lengua, motor, nombre);
            token.genero = QLatin1String(genero);
            return token;
        };
        tokens = TokensFalsos({una("af", "436", "espeak", "Male"), una("es", "40A;C0A", "espeak", "Male"),
                               una("ana", "40A;C0A", "espeak", "Female"), una("zoe", "409", "otro", "Female"),
                               una("eva", "409", "espeak", "Female")});
        voz.emplace(banco.canal, tokens, banco.cola, banco.estado, banco.registro.Log());
        voz->SetVoice(tokens.Tokens()[1]);
    }
    std::u16string Elegida(const char *etiqueta) {
        EXPECT_FALSE(voz->Speak(QLatin1String("<voice ") + QLatin1String(etiqueta) + QLatin1String("/>a"), kLectura));
        const auto voces = VocesDe(banco.canal.locuciones.back());
        return voces.empty() ? u"la misma" : voces.front();
    }
    Banco banco;
    TokensFalsos tokens;
    std::optional<SpVoice> voz;
};

TEST_F(SpVoiceConVoces, AVoiceTagKeepsTheVoiceThatFitsThenItsLanguageThenTheOrderOfTheTokens) {
    EXPECT_EQ(Elegida("required='Gender=Male'"), u"es");
    EXPECT_EQ(Elegida("required='Gender=Female'"), u"ana");
    EXPECT_EQ(Elegida("required='gender=female;language=409'"), u"eva");
    EXPECT_EQ(Elegida("required='Language=436'"), u"af");
}

TEST_F(SpVoiceConVoces, ATagWithinATagKeepsToTheVoiceThatSpeaksThereAndItsEndGivesThatOneBack) {
    const auto voces = [this](const char *texto) {
        EXPECT_FALSE(voz->Speak(QLatin1String(texto), kLectura));
        return VocesDe(banco.canal.locuciones.back());
    };
    EXPECT_THAT(
        voces("<voice required='Gender=Female'>a<voice required='Language=409;Gender=Female'>b</voice>c</voice>d"),
        ElementsAre(u"ana", u"eva", u"ana", u""));
    // Of the voices that aren't Spanish, whose language none shares: the one of the gender that speaks.
    EXPECT_THAT(voces("<voice required='Language!=40A'>a</voice>"), ElementsAre(u"af", u""));
    EXPECT_THAT(voces("<voice required='Gender=Female'>a<voice required='Language!=40A'>b</voice>c</voice>"
                      "<voice required='Gender=Male'>d<voice required='Language!=40A'>e</voice></voice>"),
                ElementsAre(u"ana", u"eva", u"ana", u"", u"es", u"af", u"es", u""));
    EXPECT_THAT(voces("<voice required='Name=eva'>a<voice required='Name=nadie'>b</voice>c</voice>"),
                ElementsAre(u"eva", u"eva", u""));
}

TEST_F(SpVoiceConVoces, WishesRankTheVoicesAndNoneFulfilledChangesNothing) {
    EXPECT_EQ(Elegida("optional='Gender=Female'"), u"ana");
    EXPECT_EQ(Elegida("optional='Gender=Female;Language=409;Age=Child'"), u"eva");
    EXPECT_EQ(Elegida("optional='Age=Child'"), u"la misma");
    EXPECT_EQ(Elegida("required='Gender=Female' optional='Language=409'"), u"eva");
    EXPECT_EQ(Elegida("required='Gender=Female' optional='Age=Child'"), u"ana");
}

TEST_F(SpVoiceConVoces, AVoiceOfAnotherEngineOrNoneAtAllIsHarmless) {
    EXPECT_EQ(Elegida("required='Name=zoe'"), u"la misma");
    EXPECT_EQ(Elegida("required='Name=nadie'"), u"la misma");
    EXPECT_EQ(Elegida("required='Age=Child'"), u"la misma");
    EXPECT_EQ(Elegida("required=''"), u"");  // back to the voice that was set
    EXPECT_EQ(banco.canal.locuciones.back().voz.motor, "espeak");
    EXPECT_EQ(banco.canal.locuciones.back().voz.voz, "es");
}

TEST_F(SpVoiceTest, Flag16MakesMarkupTextAndFlag4IsRefusedWithoutPurging) {
    EXPECT_FALSE(voz.Speak(QStringLiteral("<spell>a"), kLectura | 16));
    EXPECT_EQ(banco.canal.Texto(), u"<spell>a");
    EXPECT_EQ(voz.Speak(QStringLiteral("a.txt"), kLectura | 4).numero, Fallo::LlamadaNoValida);
    EXPECT_TRUE(banco.canal.sonando);
    EXPECT_THAT(banco.canal.ordenes, ElementsAre("habla"));
}

TEST_F(SpVoiceTest, WaitUntilDoneTellsWhetherTheSpeechIsOver) {
    EXPECT_TRUE(voz.WaitUntilDone(0));
    EXPECT_TRUE(voz.WaitUntilDone(-1));
    EXPECT_FALSE(voz.Speak(QStringLiteral("uno dos"), kLectura));
    EXPECT_FALSE(voz.WaitUntilDone(0));
    EXPECT_FALSE(voz.WaitUntilDone(5));
    QTimer::singleShot(0, [this] { banco.canal.Fin(); });
    EXPECT_TRUE(voz.WaitUntilDone(-1));
    EXPECT_THAT(banco.diario, IsEmpty());  // its events wait for the queue
    EXPECT_TRUE(voz.WaitUntilDone(0));
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Stop 0"));
}

TEST_F(SpVoiceTest, WhatTheEngineCouldNotSayIsAFailureForWhoeverAsksAndNotForASpeech) {
    banco.canal.alHablar = [this] { banco.canal.Fin(banco.canal.Numero(), u"El motor de voz no responde"); };
    EXPECT_FALSE(voz.Speak(QStringLiteral("uno"), 0));
    EXPECT_EQ(voz.FalloDelMotor().numero, 5);
    EXPECT_EQ(voz.FalloDelMotor().descripcion, QStringLiteral("El motor de voz no responde"));
    TerminaSolo();
    EXPECT_FALSE(voz.Speak(QStringLiteral("dos"), 0));
    EXPECT_FALSE(voz.FalloDelMotor());
    banco.canal.alHablar = {};
    QTimer::singleShot(0, [this] { static_cast<void>(voz.Speak(QString(), 2)); });
    EXPECT_FALSE(voz.Speak(QStringLiteral("tres"), 0));
    EXPECT_FALSE(voz.FalloDelMotor()) << "it was silenced";
    banco.cola.DejaCorrer();
    EXPECT_EQ(std::ranges::count(banco.diario, "Stop 0"), 3);
}

TEST_F(SpVoiceTest, ASkippedClauseIsAFailureForAFileAndNotForALiveSpeech) {
    banco.canal.alHablar = [this] {
        banco.canal.Salta();
        banco.canal.Fin();
    };
    EXPECT_FALSE(voz.Speak(QStringLiteral("uno. dos."), 0));
    EXPECT_FALSE(voz.FalloDelMotor());
    EXPECT_EQ(voz.FalloDelFichero().numero, 5);
    EXPECT_EQ(voz.FalloDelFichero().descripcion,
              QStringLiteral("El motor de voz no ha podido decir una parte del texto"));
    TerminaSolo();
    EXPECT_FALSE(voz.Speak(QStringLiteral("tres"), 0));
    EXPECT_FALSE(voz.FalloDelFichero()) << "the next one is a new matter";
    banco.canal.alHablar = [this] { banco.canal.Salta(); };
    QTimer::singleShot(0, [this] { static_cast<void>(voz.Speak(QString(), 2)); });
    EXPECT_FALSE(voz.Speak(QStringLiteral("cuatro"), 0));
    EXPECT_FALSE(voz.FalloDelFichero()) << "it was silenced";
}

TEST_F(SpVoiceTest, TheReasonOfATextGivenUpComesBeforeItsMissingPart) {
    banco.canal.alHablar = [this] {
        banco.canal.Salta();
        banco.canal.Fin(banco.canal.Numero(), u"El motor de voz no responde");
    };
    EXPECT_FALSE(voz.Speak(QStringLiteral("uno"), 0));
    EXPECT_EQ(voz.FalloDelFichero().descripcion, QStringLiteral("El motor de voz no responde"));
}

TEST_F(SpVoiceTest, AStopFromInsideEndsTheWait) {
    EXPECT_FALSE(voz.Speak(QStringLiteral("uno dos"), kLectura));
    QTimer::singleShot(0, [this] { static_cast<void>(voz.Speak(QString(), 2)); });
    EXPECT_TRUE(voz.WaitUntilDone(-1));
    EXPECT_FALSE(banco.canal.sonando);
    QTimer::singleShot(0, [this] { static_cast<void>(voz.Speak(QString(), 2)); });
    EXPECT_FALSE(voz.Speak(QStringLiteral("un bloque"), 0));  // nobody ends it but the stop
    EXPECT_FALSE(banco.canal.sonando);
}

TEST_F(SpVoiceTest, BlocksWithoutFlag2AreSpokenOneAfterTheOther) {
    std::vector<std::u16string> hablados;
    banco.canal.alHablar = [&] {
        hablados.push_back(banco.canal.Texto());
        banco.canal.Palabra(0);
        banco.canal.Fin();
    };
    for (const char *bloque : {"uno", "dos", "tres"}) EXPECT_FALSE(voz.Speak(QLatin1String(bloque), 0));
    EXPECT_THAT(hablados, ElementsAre(u"uno", u"dos", u"tres"));
    banco.cola.DejaCorrer();
    // The Stops of the first two come as the next begins, the last one from the queue; no Words, no Starts of the past.
    EXPECT_THAT(banco.diario, ElementsAre("Stop 0", "Stop 0", "Start", "Stop 0"));
}

TEST_F(SpVoiceTest, TheWordsOfAWaitingCallDoNotPileUp) {
    banco.canal.alHablar = [this] {
        for (std::uint32_t i = 0; i < 20'000; ++i) banco.canal.Palabra(i);
        banco.canal.Fin();
    };
    EXPECT_FALSE(voz.Speak(QStringLiteral("un libro"), 0));
    banco.cola.DejaCorrer();  // delivers ten thousand at most
    EXPECT_THAT(banco.diario, ElementsAre("Start", "Stop 0"));
}

TEST(SpVoice, ManyVoicesAndManyTagsHoldNoCallUp) {
    Banco banco;
    std::vector<TokenVoz> muchas;
    for (int i = 0; i < 3000; ++i) {
        const std::string nombre = "voz" + std::to_string(i);
        muchas.push_back(TokensFalsos::Token("M", nombre.c_str(), i % 2 ? "409" : "40A;C0A", "espeak", nombre.c_str()));
    }
    const TokensFalsos tokens(muchas);
    SpVoice voz(banco.canal, tokens, banco.cola, banco.estado, banco.registro.Log());
    EXPECT_EQ(voz.GetVoices({}, {}), muchas);
    EXPECT_EQ(voz.GetVoices(QStringLiteral("Name=voz2999"), {}).size(), 1u);
    EXPECT_EQ(voz.GetVoices(QStringLiteral("Language=409"), {}).size(), 1500u);
    EXPECT_EQ(voz.GetVoices({}, QStringLiteral("Name=voz2999")).front().nombre, QStringLiteral("voz2999"));
    QString iguales, distintas;
    for (int i = 0; i < 20'000; ++i) {
        iguales += QStringLiteral("<voice required='Name=voz7'/>a");
        distintas += QStringLiteral("<voice required='Name=voz%1'/>a").arg(i);
    }
    QElapsedTimer desde;
    desde.start();
    EXPECT_FALSE(voz.Speak(iguales, kLectura));
    EXPECT_EQ(VocesDe(banco.canal.locuciones.back()).size(), 20'000u);
    EXPECT_FALSE(voz.Speak(distintas, kLectura));
    EXPECT_EQ(VocesDe(banco.canal.locuciones.back()).size(), 200u);
    EXPECT_LT(desde.elapsed(), 5000);  // one by one it would be half a minute
}

TEST(SpVoice, WithoutAnyTokenASpeechFailsAndSilencingDoesNot) {
    Banco banco;
    const TokensFalsos ninguno;
    SpVoice voz(banco.canal, ninguno, banco.cola, banco.estado, banco.registro.Log());
    voz.SetEventos(banco.Eventos());
    EXPECT_EQ(voz.Speak(QStringLiteral("hola"), kLectura).numero, Fallo::LlamadaNoValida);
    EXPECT_FALSE(voz.Speak(QString(), 2));
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.diario, IsEmpty());
}

TEST_F(SpVoiceTest, PauseHoldsWordsBackUntilTheResume) {
    EXPECT_FALSE(voz.Speak(QStringLiteral("uno dos"), kLectura));
    banco.cola.DejaCorrer();
    banco.canal.Palabra(4);
    voz.Pause();
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.Saca(), ElementsAre("Start"));
    voz.Resume();
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.diario, ElementsAre("Word 4"));
}

}  // namespace
}  // namespace ondalis::prueba
