#include "desktop/Recursos.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QtEndian>

namespace ondalis {
namespace {

QByteArray Sonido(const char *nombre) {
    RegistraSonidos();
    QFile fichero(QStringLiteral(":/sonidos/%1.wav").arg(QLatin1String(nombre)));
    return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
}

struct Fila {
    const char *nombre;
    int bytes;
};
constexpr Fila kSonidos[] = {{"ACTIVAR", 12108},        {"DESACTIVAR", 22120},     {"ERROR", 6500},
                             {"VOLUMEN", 2394},         {"DETENER", 5212},         {"PAUSA", 5824},
                             {"REPETIRLECTURA", 10696}, {"AVANZARRETROCEDER", 424}};

TEST(Recursos, EachSoundIsACompleteWaveFileOfItsSize) {
    for (const Fila &fila : kSonidos) {
        const QByteArray wav = Sonido(fila.nombre);
        ASSERT_EQ(wav.size(), fila.bytes) << fila.nombre;
        EXPECT_TRUE(wav.startsWith("RIFF"));
        EXPECT_EQ(qFromLittleEndian<quint32>(wav.constData() + 4), fila.bytes - 8);
        EXPECT_EQ(qFromLittleEndian<quint16>(wav.constData() + 22), 1);
        EXPECT_EQ(qFromLittleEndian<quint32>(wav.constData() + 24), 22050);
        EXPECT_EQ(qFromLittleEndian<quint16>(wav.constData() + 34), 16);
        EXPECT_EQ(qFromLittleEndian<quint32>(wav.constData() + 40), fila.bytes - 44);
    }
}

TEST(Recursos, TheSoundsPeakTwelveDecibelsBelowFullScaleAndEndInSilence) {
    for (const Fila &fila : kSonidos) {
        const QByteArray wav = Sonido(fila.nombre);
        int pico = 0;
        for (qsizetype i = 44; i + 1 < wav.size(); i += 2)
            pico = std::max(pico, std::abs(int{qFromLittleEndian<qint16>(wav.constData() + i)}));
        EXPECT_NEAR(pico, 8231, 40) << fila.nombre;
        EXPECT_LT(std::abs(qFromLittleEndian<qint16>(wav.constData() + wav.size() - 2)), 60) << fila.nombre;
    }
}

}  // namespace
}  // namespace ondalis
