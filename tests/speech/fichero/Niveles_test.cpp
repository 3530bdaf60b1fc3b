// Rate and volume over their whole ranges, by the real sound.
#include "BancoFichero.h"

namespace ondalis::prueba {
namespace {

const QString kTexto =
    QStringLiteral("La abuela guardaba las llaves del desván en una caja de galletas, 24 en total; nadie subía.");

class Niveles : public testing::TestWithParam<const char *> {
protected:
    Niveles() {
        TokenVoz token = banco.tokens.Tokens().front();
        token.voz = GetParam();
        banco.voz->SetVoice(token);
    }
    BancoFichero banco{ONDALIS_MOTOR};
};

TEST_P(Niveles, EachStepOfRateShortens) {
    double anterior = 1e9;
    for (int rate = -10; rate <= 10; ++rate) {
        banco.voz->SetRate(rate);
        const double dura = Duracion(banco.Graba(kTexto));
        EXPECT_GT(dura, 0.5) << rate;
        EXPECT_LT(dura, anterior * 0.98) << rate;
        anterior = dura;
    }
}

TEST_P(Niveles, AHigherVolumeIsLouder) {
    double anterior = -1;
    for (int volumen = 0; volumen <= 100; volumen += 10) {
        banco.voz->SetVolume(volumen);
        const double nivel = Nivel(banco.Graba(kTexto));
        EXPECT_GT(nivel, anterior) << volumen;
        EXPECT_EQ(nivel == 0, volumen == 0) << volumen;
        anterior = nivel;
    }
    EXPECT_GT(anterior, 1000);
}

INSTANTIATE_TEST_SUITE_P(VocesLlanas, Niveles,
                         testing::Values("roa/es", "roa/es-419", "gmw/en-US", "gmw/en", "gmw/de", "roa/fr", "roa/it"),
                         [](const auto &info) {
                             std::string nombre = info.param;
                             for (char &c : nombre)
                                 if (c == '/' || c == '-') c = '_';
                             return nombre;
                         });

// The nine rates of the recording page: as long as it sounds, at the level that it has.
TEST(NivelesDeFichero, TheRateOfTheFileChangesNeitherLengthNorLevel) {
    BancoFichero banco(ONDALIS_MOTOR);
    const auto propio = banco.Graba(kTexto);
    for (const auto &[tipo, hercios] : {std::pair{6, 8000},
                                        {10, 11025},
                                        {14, 12000},
                                        {18, 16000},
                                        {22, 22050},
                                        {26, 24000},
                                        {30, 32000},
                                        {34, 44100},
                                        {38, 48000}}) {
        banco.Abre(tipo);
        ASSERT_FALSE(banco.voz->Speak(kTexto, 10));
        const auto sonido = banco.Cerrado();
        EXPECT_NEAR(Duracion(sonido, hercios), Duracion(propio), 0.03) << hercios;
        // What lies above half the lower rates is only the hiss of consonants.
        EXPECT_NEAR(20 * std::log10(Nivel(sonido) / Nivel(propio)), 0, hercios < 11025 ? 1 : 0.5) << hercios;
    }
}

}  // namespace
}  // namespace ondalis::prueba
