#include "desktop/cBandeja.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QMenu>
#include <QTemporaryDir>

namespace ondalis {
namespace {

class VigiaGuion : public VigiaBandeja {
public:
    bool HayAnfitrion() override { return hay; }
    void SetAlAparecer(std::function<void()> aviso) override { alAparecer = std::move(aviso); }
    bool hay = true;
    std::function<void()> alAparecer;
};

class cBandejaPrueba : public testing::Test {
protected:
    QTemporaryDir carpeta;
    cLog log{carpeta.path() + QStringLiteral("/Ondalis.log")};
    VigiaGuion vigia;
    cBandeja bandeja{vigia, log};
    int dobles = 0;
    void SetUp() override {
        bandeja.AlDobleClick([this] { ++dobles; });
    }
};

TEST_F(cBandejaPrueba, AllElevenPicturesAreThereInAllSizes) {
    for (int numero = 1; numero <= cIconoBarra::NumImagenes; ++numero)
        for (const int tamano : {16, 22, 24, 32, 48, 64, 128}) {
            const QImage imagen(QStringLiteral(":/iconos/%1-%2.png").arg(numero).arg(tamano));
            EXPECT_EQ(imagen.size(), QSize(tamano, tamano)) << numero;
        }
}

TEST_F(cBandejaPrueba, TheElevenPicturesAllDiffer) {
    for (int a = 1; a <= cIconoBarra::NumImagenes; ++a)
        for (int b = a + 1; b <= cIconoBarra::NumImagenes; ++b)
            EXPECT_NE(QImage(QStringLiteral(":/iconos/%1-16.png").arg(a)),
                      QImage(QStringLiteral(":/iconos/%1-16.png").arg(b)))
                << a << " and " << b;
}

TEST_F(cBandejaPrueba, EveryPictureIsLightInsideADarkOutline) {
    for (int numero = 1; numero <= cIconoBarra::NumImagenes; ++numero) {
        const QImage imagen(QStringLiteral(":/iconos/%1-64.png").arg(numero));
        EXPECT_LT(qGray(imagen.pixel(32, 2)), 60) << numero;
        EXPECT_GT(qGray(imagen.pixel(32, 7)), 80) << numero;
    }
}

TEST_F(cBandejaPrueba, TheFirstPictureBringsTheIconUp) {
    EXPECT_FALSE(bandeja.Visible());
    bandeja.SetImagen(9);
    EXPECT_TRUE(bandeja.Visible());
    EXPECT_EQ(bandeja.Imagen(), 9);
}

TEST_F(cBandejaPrueba, WithoutAPlaceForItThereIsALogLineAndTheIconComesWithTheHost) {
    vigia.hay = false;
    bandeja.SetImagen(1);
    EXPECT_FALSE(bandeja.Visible());
    QFile fichero(log.Fichero());
    ASSERT_TRUE(fichero.open(QIODevice::ReadOnly));
    EXPECT_TRUE(fichero.readAll().contains("al crear el icono de notificación"));
    bandeja.SetImagen(9);
    vigia.alAparecer();
    EXPECT_TRUE(bandeja.Visible());
}

TEST_F(cBandejaPrueba, ARestartedHostGetsTheIconAgain) {
    QMenu menu;
    bandeja.SetMenu(&menu);
    bandeja.SetImagen(1);
    vigia.alAparecer();
    EXPECT_TRUE(bandeja.Visible());
    bandeja.SetMenu(nullptr);
}

TEST_F(cBandejaPrueba, ANumberOutsideTheListChangesNothing) {
    bandeja.SetImagen(2);
    bandeja.SetImagen(12);
    bandeja.SetImagen(0);
    EXPECT_EQ(bandeja.Imagen(), 2);
}

TEST_F(cBandejaPrueba, TwoClicksWithinTheIntervalAreADoubleClick) {
    bandeja.Pulsado(QSystemTrayIcon::Trigger);
    EXPECT_EQ(dobles, 0);
    bandeja.Pulsado(QSystemTrayIcon::Trigger);
    EXPECT_EQ(dobles, 1);
    bandeja.Pulsado(QSystemTrayIcon::Trigger);
    EXPECT_EQ(dobles, 1);
}

TEST_F(cBandejaPrueba, AHostThatTellsOfTheDoubleClickItselfIsNotCountedTwice) {
    bandeja.Pulsado(QSystemTrayIcon::Trigger);
    bandeja.Pulsado(QSystemTrayIcon::DoubleClick);
    bandeja.Pulsado(QSystemTrayIcon::Trigger);
    EXPECT_EQ(dobles, 1);
}

TEST_F(cBandejaPrueba, TheRightButtonIsNoHalfOfADoubleClick) {
    bandeja.Pulsado(QSystemTrayIcon::Trigger);
    bandeja.Pulsado(QSystemTrayIcon::Context);
    EXPECT_EQ(dobles, 0);
}

}  // namespace
}  // namespace ondalis
