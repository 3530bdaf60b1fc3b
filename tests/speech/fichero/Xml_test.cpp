// What the XML of SAPI 5 does to the engine's real sound.
#include "BancoFichero.h"

namespace ondalis::prueba {
namespace {

const QString kFrase = QStringLiteral("El perro de San Roque no tiene rabo porque Ramón se lo ha cortado");

class XmlEnFichero : public testing::Test {
protected:
    // Said by a worker that has said nothing before, so that samples can be compared.
    std::vector<std::int16_t> Fresca(const QString &texto, int flags = 10) {
        BancoFichero fresco(ONDALIS_MOTOR);
        return fresco.Graba(texto, flags);
    }
    double Segundos(const QString &texto) { return Duracion(banco.Graba(texto)); }

    BancoFichero banco{ONDALIS_MOTOR};
};

TEST_F(XmlEnFichero, SilenceLastsItsMilliseconds) {
    const double sin = Segundos(QStringLiteral("uno<silence msec='0'/>dos"));
    EXPECT_NEAR(Segundos(QStringLiteral("uno<silence msec='1500'/>dos")) - sin, 1.5, 0.02);
    EXPECT_NEAR(Segundos(QStringLiteral("<silence msec='700'/>")), 0.7, 0.01);
}

TEST_F(XmlEnFichero, RateIsAFactorOfThreeInTenStepsRelativeOrAbsolute) {
    const double normal = Segundos(kFrase);
    const double rapida = Segundos(QStringLiteral("<rate speed='5'>") + kFrase);
    EXPECT_NEAR(normal / rapida, 1.732, 0.12);
    EXPECT_NEAR(Segundos(QStringLiteral("<rate absspeed='-4'>") + kFrase) / normal, 1.552, 0.12);
    // Nested ones add up, and the end brings the outer one back.
    EXPECT_NEAR(Segundos(QStringLiteral("<rate speed='2'><rate speed='3'>") + kFrase), rapida, rapida * 0.03);
    EXPECT_NEAR(Segundos(QStringLiteral("<rate speed='5'></rate>") + kFrase), normal, normal * 0.03);
    banco.voz->SetRate(5);
    EXPECT_NEAR(Segundos(kFrase), rapida, rapida * 0.03);
    EXPECT_NEAR(Segundos(QStringLiteral("<rate speed='-5'>") + kFrase), normal, normal * 0.03);
}

TEST_F(XmlEnFichero, VolumeIsTheLevelAndMultipliesTheVoices) {
    const double entero = Nivel(banco.Graba(kFrase));
    EXPECT_NEAR(Nivel(banco.Graba(QStringLiteral("<volume level='50'>") + kFrase)), entero / 2, entero * 0.02);
    EXPECT_EQ(Nivel(banco.Graba(QStringLiteral("<volume level='0'>") + kFrase)), 0);
    banco.voz->SetVolume(50);
    EXPECT_NEAR(Nivel(banco.Graba(QStringLiteral("<volume level='50'>") + kFrase)), entero / 4, entero * 0.02);
}

TEST_F(XmlEnFichero, PitchIsTwentyFourthsOfAnOctaveRelativeOrAbsolute) {
    const double normal = TonoMediano(banco.Graba(kFrase), 22050);
    for (const char *etiqueta :
         {"<pitch middle='10'>", "<pitch absmiddle='10'>", "<pitch middle='4'><pitch middle='6'>"})
        EXPECT_NEAR(TonoMediano(banco.Graba(QLatin1String(etiqueta) + kFrase), 22050) / normal, 1.335, 0.08)
            << etiqueta;
    EXPECT_NEAR(TonoMediano(banco.Graba(QStringLiteral("<pitch middle='-10'>") + kFrase), 22050) / normal, 0.749, 0.06);
}

TEST_F(XmlEnFichero, VoiceSpeaksWithAnotherOfTheEngineAndComesBack) {
    const auto espanol = Fresca(QStringLiteral("Jorge"));
    BancoFichero ingles(ONDALIS_MOTOR);
    ingles.voz->SetVoice(ingles.tokens.Tokens()[1]);
    EXPECT_EQ(Fresca(QStringLiteral("<voice required='Name=English'>Jorge</voice>")),
              ingles.Graba(QStringLiteral("Jorge")));
    EXPECT_NE(Fresca(QStringLiteral("<voice required='Language=409'>Jorge")), espanol);
    EXPECT_EQ(Fresca(QStringLiteral("<voice required='Language=409'></voice>Jorge")), espanol);
}

TEST_F(XmlEnFichero, AVoiceOfAnotherEngineOrOneThatIsNotThereLeavesTheSoundAsItIs) {
    const auto espanol = Fresca(QStringLiteral("Jorge"));
    EXPECT_EQ(Fresca(QStringLiteral("<voice required='Name=Ajena'>Jorge</voice>")), espanol);
    EXPECT_EQ(Fresca(QStringLiteral("<voice required='Gender=Female'>Jorge</voice>")), espanol);
    EXPECT_EQ(Fresca(QStringLiteral("<voice optional='Age=Child'>Jorge</voice>")), espanol);
}

TEST_F(XmlEnFichero, LangPronouncesInAnotherLanguageAndComesBack) {
    const auto espanol = Fresca(QStringLiteral("Jorge"));
    const auto ingles = Fresca(QStringLiteral("<lang langid='409'>Jorge</lang>"));
    EXPECT_NE(ingles, espanol);
    EXPECT_EQ(Fresca(QStringLiteral("<lang langid='409'></lang>Jorge")), espanol);
    EXPECT_EQ(Fresca(QStringLiteral("<lang langid='FFFF'>Jorge</lang>")), espanol);
}

TEST_F(XmlEnFichero, SpellSaysLettersAndEmphIsLouder) {
    EXPECT_GT(Segundos(QStringLiteral("<spell>perro</spell>")), Segundos(QStringLiteral("perro")) * 2);
    const auto llana = banco.Graba(kFrase);
    EXPECT_GT(Nivel(banco.Graba(QStringLiteral("<emph>") + kFrase)), Nivel(llana) * 1.1);
}

TEST_F(XmlEnFichero, WhatHasNoEffectIsNotHeard) {
    const auto llana = Fresca(QStringLiteral("uno dos"));
    for (const char *texto : {"<sapi>uno dos</sapi>", "<partofsp part='noun'>uno dos</partofsp>",
                              "<context id='date_mdy'>uno dos</context>", "<pron sym='h eh'/>uno dos",
                              "<!-- tres -->uno dos", "<bookmark mark='1'/>uno dos", "<BookMark Mark='x'/>uno dos",
                              "<![CDATA[uno]]> dos", "&#117;no dos", "</rate>uno dos", "<RATE SPEED='0'>uno dos"})
        EXPECT_EQ(Fresca(QLatin1String(texto)), llana) << texto;
}

TEST_F(XmlEnFichero, BareSignsOfMarkupAreSpokenAsTheyAreWithoutFlag8) {
    for (const char *texto : {"AT&T", "a < b y c > d", "5 <6"})
        EXPECT_EQ(Fresca(QLatin1String(texto)), Fresca(QLatin1String(texto), 2)) << texto;
}

TEST_F(XmlEnFichero, RefusedMarkupWritesNothingAndTheFileStaysGood) {
    banco.Abre();
    EXPECT_FALSE(banco.voz->Speak(QStringLiteral("uno"), 10));
    for (const char *texto : {"<rate speed='mucho'>dos", "<silence/>", "<volume level=50>dos", "<voice>dos"})
        EXPECT_EQ(static_cast<std::uint32_t>(banco.voz->Speak(QLatin1String(texto), 10).numero), 0x80045042u) << texto;
    const auto sonido = banco.Cerrado();
    EXPECT_NEAR(Duracion(sonido), Duracion(banco.Graba(QStringLiteral("uno"))), 0.02);
}

}  // namespace
}  // namespace ondalis::prueba
