// A long recording with the real worker on the program's own queue: the desktop is served meanwhile, and the program's
// end cuts it.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <string>
#include <utility>

#include "engine/Reloj.h"
#include "engine/cCanalMotor.h"
#include "engine/cLanzadorProceso.h"
#include "engine/cSalidaNula.h"
#include "fakes/CarpetaPropia.h"
#include "fakes/LectorWav.h"
#include "fakes/RegistroPropio.h"
#include "libs/ondalis_eci_servicio.h"
#include "settings/cCola.h"
#include "speech/cVozECI.h"

namespace ondalis::prueba {
namespace {

class cVozECIConMotor : public testing::Test {
protected:
    explicit cVozECIConMotor(std::string programa = ONDALIS_MOTOR) : lanzador(std::move(programa), {"--nice", "10"}) {}
    QString Ruta(const char *nombre) const { return QString::fromStdString(carpeta.Ruta(nombre)); }
    static QString Libro() {
        const QString frase = QStringLiteral("En un lugar de la Mancha, de cuyo nombre no quiero acordarme. ");
        return frase.repeated(1'000'000 / frase.size());
    }

    CarpetaPropia carpeta;
    RegistroPropio registro;
    cCola cola;
    cRelojMonotono reloj;
    cLanzadorProceso lanzador;
    cSalidaNula nula{reloj};
    cSalidaFichero salida;
    cCanalMotor vivo{lanzador, nula, reloj};
    cCanalMotor ficheros{lanzador, salida, reloj, PlazosMotor{}.SinPrisa()};
    cServicioECI servicio{{.vivo = &vivo,
                           .fichero = &ficheros,
                           .salida = &salida,
                           .espera = [this](const auto &listo) { cola.EsperaBloqueando(listo, -1); },
                           .despierta = [this] { cola.Despierta(); },
                           .avisa = [](const std::u16string &) {}}};
    cVozECI voz{registro.Log()};
};

TEST_F(cVozECIConMotor, ARecordingThatIsWaitedForLeavesTheDesktopServedAndIsCutByTheProgramsEnd) {
    constexpr std::uintmax_t kBytesAlCortar = 5'000'000;
    QElapsedTimer desde, cortada;
    qint64 ultimo = 0, peor = 0;
    int veces = 0;
    QTimer pulso;
    QObject::connect(&pulso, &QTimer::timeout, &cola, [&] {
        peor = std::max(peor, desde.elapsed() - ultimo);
        ultimo = desde.elapsed();
        ++veces;
        if (cortada.isValid() || std::filesystem::file_size(carpeta.Ruta("a.wav")) < kBytesAlCortar) return;
        cortada.start();
        voz.Cancela();
    });
    const QString texto = Libro();
    desde.start();
    pulso.start(5);
    voz.SetHablante(QStringLiteral("Pilar"), 1034);
    voz.SetVelocidad(170);
    voz.SetVolumen(65000);
    EXPECT_TRUE(voz.Habla(texto, true, Ruta("a.wav"), false));
    ASSERT_TRUE(cortada.isValid()) << "it ended by itself";
    std::printf("%d ticks of 5 ms, the worst gap %lld ms, back %lld ms behind the cut\n", veces,
                static_cast<long long>(peor), static_cast<long long>(cortada.elapsed()));
    EXPECT_LT(cortada.elapsed(), 2000);
    EXPECT_LT(peor, 1000);
    EXPECT_GT(veces, 10);
    EXPECT_FALSE(voz.EstaHablando());
    const auto wav = LeeWav(carpeta.Lee("a.wav"));
    ASSERT_TRUE(wav);
    EXPECT_GE(wav->muestras.size() * 2, kBytesAlCortar - 44);
}

TEST_F(cVozECIConMotor, AFileThatIsSpokenIntoAFileSoundsAsTheTextInMemory) {
    carpeta.Escribe("a.txt", "2024 fue un a\xF1o bisiesto.");
    voz.SetHablante(QStringLiteral("Carlos"), 1034);
    voz.SetVelocidad(170);
    voz.SetVolumen(65000);
    EXPECT_TRUE(voz.HablaFichero(Ruta("a.txt"), true, Ruta("a.wav"), false));
    EXPECT_TRUE(voz.Habla(QStringLiteral("2024 fue un año bisiesto."), true, Ruta("b.wav"), false));
    const auto a = LeeWav(carpeta.Lee("a.wav")), b = LeeWav(carpeta.Lee("b.wav"));
    ASSERT_TRUE(a && b);
    EXPECT_GT(a->muestras.size(), 11025u * 2);
    EXPECT_NEAR(static_cast<double>(a->muestras.size()), static_cast<double>(b->muestras.size()), 11025 * .05);
}

class cVozECISinMotor : public cVozECIConMotor {
protected:
    cVozECISinMotor() : cVozECIConMotor("/no/hay/motor") {}
};

TEST_F(cVozECISinMotor, AFileOfAnEngineThatCantStartIsAFailureAndHoldsNoSound) {
    const QString error =
        QStringLiteral("cVozECI: Error al realizar la lectura\r\nNo se puede iniciar el motor de voz");
    EXPECT_FALSE(voz.Habla(QStringLiteral("hola"), true, Ruta("a.wav"), true));
    EXPECT_EQ(voz.UltimoError().section(QChar(u'\0'), 0, 0), error);
    EXPECT_EQ(std::filesystem::file_size(carpeta.Ruta("a.wav")), 44u);  // which the recorder takes away
    ASSERT_TRUE(voz.Habla(QStringLiteral("hola"), false, Ruta("b.wav"), true));
    cola.EsperaBloqueando([this] { return !voz.EstaHablando(); }, 20000);
    EXPECT_TRUE(voz.Fallida());
    EXPECT_EQ(voz.UltimoError().section(QChar(u'\0'), 0, 0), error);
    EXPECT_FALSE(voz.Fallida());
}

}  // namespace
}  // namespace ondalis::prueba
