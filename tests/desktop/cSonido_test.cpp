#include "desktop/cSonido.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QtEndian>
#include <atomic>
#include <thread>

#include "fakes/SonidoFalso.h"

namespace ondalis {
namespace {

// A WAV of silence, 16 bits, mono, 22050 Hz; `antes` stands between format and data.
QByteArray Wav(int milisegundos, const QByteArray &antes = {}) {
    const auto numero = [](auto n) {
        QByteArray bytes(sizeof n, 0);
        qToLittleEndian(n, bytes.data());
        return bytes;
    };
    const QByteArray datos(22050 * 2 / 1000 * milisegundos, 0);
    QByteArray formato = numero(quint16{1}) + numero(quint16{1}) + numero(quint32{22050}) + numero(quint32{44100}) +
                         numero(quint16{2}) + numero(quint16{16});
    const QByteArray cuerpo = "WAVEfmt " + numero(static_cast<quint32>(formato.size())) + formato + antes + "data" +
                              numero(static_cast<quint32>(datos.size())) + datos;
    return "RIFF" + numero(static_cast<quint32>(cuerpo.size())) + cuerpo;
}

// The sound of a sample that isn't a resource.
class SonidoDeMuestra : public cSonido {
public:
    using cSonido::cSonido;
    using cSonido::Toca;
};

class cSonidoTest : public testing::Test {
protected:
    qint64 Toca(const QByteArray &wav) {
        QElapsedTimer reloj;
        reloj.start();
        sonido.Toca(wav);
        return reloj.elapsed();
    }

    prueba::SalidaSonidoFalsa salida;
    cCola cola;
    SonidoDeMuestra sonido{salida, cola};
};

TEST_F(cSonidoTest, AMissingResourceIsSilence) {
    sonido.Reproduce("NO EXISTE");
    sonido.Reproduce("");
    sonido.Reproduce("../sonidos/NADA");
    EXPECT_TRUE(salida.muestras.empty());
    EXPECT_TRUE(cSonido::Recurso("NO EXISTE").isEmpty());
}

TEST_F(cSonidoTest, TheCallReturnsAsSoonAsTheSoundHasEnded) {
    EXPECT_LT(Toca(Wav(60000)), 30000);
    ASSERT_EQ(salida.muestras.size(), 1u);
    EXPECT_EQ(salida.muestras[0], Wav(60000));
}

TEST_F(cSonidoTest, TheCallWaitsForAnEndThatComesFromAnotherThread) {
    // As the player does: the end is reported while the call waits.
    class Reproductor : public SalidaSonido {
    public:
        ~Reproductor() override { m_hilo.join(); }
        bool Reproduce(const QByteArray &, std::function<void()> alTerminar) override {
            m_hilo = std::thread([this, alTerminar = std::move(alTerminar)] {
                terminado = true;
                alTerminar();
            });
            return true;
        }
        std::atomic<bool> terminado{false};

    private:
        std::thread m_hilo;
    } reproductor;
    SonidoDeMuestra otro(reproductor, cola);
    otro.Toca(Wav(60000));
    EXPECT_TRUE(reproductor.terminado);
}

TEST_F(cSonidoTest, AnEndThatNeverComesIsWaitedForTheSoundsLengthAnd200MsOnly) {
    salida.terminaAlMomento = false;
    const qint64 espera = Toca(Wav(50));
    EXPECT_GE(espera, 249);
    EXPECT_LT(espera, 5000);
}

TEST_F(cSonidoTest, ChunksBeforeTheDataDoNotChangeTheLength) {
    salida.terminaAlMomento = false;
    const qint64 espera = Toca(Wav(50, QByteArray("LIST\x03\0\0\0abc\0", 12)));
    EXPECT_GE(espera, 249);
    EXPECT_LT(espera, 5000);
}

TEST_F(cSonidoTest, AHeaderOfWrongLengthsDoesNotBlock) {
    salida.terminaAlMomento = false;
    QByteArray wav = Wav(10);
    wav.replace("data", QByteArray("data\xff\xff\xff\xff", 8));
    EXPECT_LT(Toca(wav), 5000);
    for (qsizetype largo : {1, 12, 20, 30, 44}) EXPECT_LT(Toca(Wav(10).left(largo)), 5000) << largo;
    EXPECT_LT(Toca("not a sound at all"), 5000);
}

TEST_F(cSonidoTest, WithoutAServerTheCallDoesNotWait) {
    salida.hayServidor = false;
    EXPECT_LT(Toca(Wav(60000)), 30000);
    EXPECT_EQ(salida.muestras.size(), 1u);
}

TEST_F(cSonidoTest, AnEndReportedAfterTheCallAndAfterTheQueueIsHarmless) {
    salida.terminaAlMomento = false;
    {
        cCola corta;
        SonidoDeMuestra otro(salida, corta);
        otro.Toca(Wav(1));
    }
    ASSERT_TRUE(salida.pendiente);
    salida.pendiente();
    std::thread([this] { salida.pendiente(); }).join();
}

TEST_F(cSonidoTest, NothingOfTheQueueIsDeliveredDuringASoundAndAllAfterwards) {
    bool servido = false;
    cola.Pon(cCola::Clase::Motor, [&] { servido = true; });
    salida.terminaAlMomento = false;
    Toca(Wav(1));
    EXPECT_FALSE(servido);
    cola.DejaCorrer();
    EXPECT_TRUE(servido);
}

}  // namespace
}  // namespace ondalis
