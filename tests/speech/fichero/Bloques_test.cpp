// Long texts in blocks, stops from inside, and word events of a file.
#include <QElapsedTimer>
#include <QTimer>
#include <atomic>
#include <fstream>

#include "BancoFichero.h"
#include "worker/TonosPrueba.h"

namespace ondalis::prueba {
namespace {

// Resident bytes of this process that are no mapped file.
double MegasPropias() {
    std::ifstream estado("/proc/self/status");
    for (std::string campo; estado >> campo;)
        if (campo == "RssAnon:") {
            double kb = 0;
            estado >> kb;
            return kb / 1024;
        }
    return 0;
}

// Words of forty characters, so that a megabyte isn't hours of sound.
QString Megatexto(int caracteres) {
    QString texto;
    for (int i = 0; texto.size() < caracteres; ++i)
        texto += QString::number(i % 200).rightJustified(3, QLatin1Char('0')) + QString(36, QLatin1Char('x')) +
                 QLatin1Char(' ');
    return texto;
}

class Bloques : public testing::Test {
protected:
    // Every word of the tone engine at a rate lasts the same.
    static double DuraPalabra(int velocidad) {
        return static_cast<double>(tonos::MuestrasDePalabra(velocidad)) / tonos::kHercios;
    }
    BancoFichero banco{ONDALIS_MOTOR_TONO, "tono"};
};

TEST_F(Bloques, AreSpokenOneBehindTheOtherWithoutAGapOrALoss) {
    banco.Abre();
    for (const char *bloque : {"uno dos", "tres", "", "  ", "cuatro cinco seis"})
        ASSERT_FALSE(banco.voz->Speak(QLatin1String(bloque), 0));
    EXPECT_TRUE(banco.voz->WaitUntilDone(-1));
    EXPECT_EQ(banco.Cerrado().size(), 6 * tonos::MuestrasDePalabra(tonos::kVelocidad));
}

TEST_F(Bloques, MarkupIsReadOnlyWithFlag8) {
    banco.Abre();
    ASSERT_FALSE(banco.voz->Speak(QStringLiteral("<volume level='0'/> uno"), 0));
    const auto conEtiqueta = banco.Cerrado();
    EXPECT_EQ(conEtiqueta.size(), 3 * tonos::MuestrasDePalabra(tonos::kVelocidad));
    EXPECT_GT(Nivel(conEtiqueta), 1000);
}

TEST_F(Bloques, AMegabyteTakesNoMemoryThatGrowsWithIt) {
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "SKIP: a sanitizer has memory of its own, which grows with what is allocated";
#endif
    banco.voz->SetRate(10);
    banco.Abre(6);
    const QString texto = Megatexto(500'000);
    ASSERT_FALSE(banco.voz->Speak(texto, 0));  // whatever a block takes is there now
    const double antes = MegasPropias();
    double mayor = 0;
    QTimer mira;
    QObject::connect(&mira, &QTimer::timeout, [&] { mayor = std::max(mayor, MegasPropias()); });
    mira.start(20);
    for (int i = 0; i < 2; ++i) ASSERT_FALSE(banco.voz->Speak(texto, 0));
    banco.cola.DejaCorrer();
    EXPECT_TRUE(banco.voz->WaitUntilDone(-1));
    ASSERT_GT(mayor, 0);
    RecordProperty("megas", std::to_string(mayor - antes));
    // A block's text, once more in each of its forms; an hour of sound would be a hundred times that.
    EXPECT_LT(mayor - antes, 12) << "of " << antes;
    const double palabras = 3 * 12'500;
    EXPECT_NEAR(Duracion(banco.Cerrado(), 8000), palabras * DuraPalabra(510), 0.01 * palabras * DuraPalabra(510));
}

TEST_F(Bloques, AStopFromInsideEndsTheCallAtOnceAndTheFileIsTrue) {
    const QString texto = Megatexto(2'000'000);  // half an hour of work
    for (const bool purga : {true, false}) {
        banco.Abre();
        bool parada = false;
        QElapsedTimer desde;
        QTimer mira;  // as soon as there is sound in the file
        QObject::connect(&mira, &QTimer::timeout, [&] {
            if (parada || std::filesystem::file_size(banco.Ruta()) < 1'000'000) return;
            parada = true;
            desde.start();
            EXPECT_FALSE(banco.voz->Speak(QString(), 2));
        });
        mira.start(1);
        EXPECT_FALSE(banco.voz->Speak(texto, purga ? 10 : 0));
        ASSERT_TRUE(parada);
        EXPECT_LT(desde.elapsed(), 1000);
        EXPECT_GT(banco.Cerrado().size(), 450'000u);
        EXPECT_LT(desde.elapsed(), 2000);
    }
}

TEST_F(Bloques, NothingOfAStoppedSpeechGetsIntoTheNextFile) {
    for (int i = 0; i < 30; ++i) {
        banco.Abre();
        EXPECT_FALSE(banco.voz->Speak(Megatexto(200'000), 11));  // in the background
        EXPECT_FALSE(banco.voz->WaitUntilDone(i % 10));
        EXPECT_FALSE(banco.voz->Speak(QString(), 2));
        banco.Cerrado();
        ASSERT_EQ(banco.Graba(QStringLiteral("uno dos")).size(), 2 * tonos::MuestrasDePalabra(tonos::kVelocidad)) << i;
    }
}

TEST_F(Bloques, TheWordsOfAFileComeAtTheEnginesPaceAndNotAtThatOfTheSound) {
    std::vector<std::int32_t> palabras;
    EventosVoz eventos;
    eventos.alPalabra = [&](std::int32_t posicion) { palabras.push_back(posicion); };
    banco.voz->SetEventos(eventos);
    banco.Abre();
    QElapsedTimer desde;
    desde.start();
    EXPECT_FALSE(banco.voz->Speak(Megatexto(40'000), 11));  // 200 s of sound
    EXPECT_TRUE(banco.voz->WaitUntilDone(-1));
    banco.cola.DejaCorrer();
    EXPECT_LT(desde.elapsed(), 60'000);
    ASSERT_EQ(palabras.size(), 1000u);
    for (std::size_t i = 0; i < palabras.size(); ++i) ASSERT_EQ(palabras[i], static_cast<std::int32_t>(i * 40));
    EXPECT_NEAR(Duracion(banco.Cerrado()), 200, 0.1);
}

TEST_F(Bloques, AnEmptyTextGivesAnEmptyFile) {
    EXPECT_TRUE(banco.Graba(QString(), 0).empty());
    EXPECT_TRUE(banco.Graba(QString(), 10).empty());
}

// Not of the fixture: the environment changes only while no other channel's thread starts a worker with it.
TEST(BloquesConMotorMortal, AWorkerThatDiesInMidFileIsReplacedAndNoWordIsLost) {
    const CarpetaPropia carpeta;
    const std::string senal = carpeta.Ruta("una_vez");
    setenv("ONDALIS_TONO_UNAVEZ", senal.c_str(), 1);
    std::vector<std::int16_t> sonido;
    {
        BancoFichero banco(ONDALIS_MOTOR_TONO, "tono");
        carpeta.Escribe("una_vez", "");
        sonido = banco.Graba(QStringLiteral("uno dos. tres MATA cuatro. cinco seis."), 0);
    }
    unsetenv("ONDALIS_TONO_UNAVEZ");
    EXPECT_FALSE(std::filesystem::exists(senal));  // it did die
    EXPECT_GE(sonido.size(), 7 * tonos::MuestrasDePalabra(tonos::kVelocidad));
    EXPECT_LE(sonido.size(), 9 * tonos::MuestrasDePalabra(tonos::kVelocidad));
}

}  // namespace
}  // namespace ondalis::prueba
