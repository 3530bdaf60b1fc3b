#include "desktop/cBandeja.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QMenu>
#include <QMouseEvent>
#include <QTemporaryDir>

namespace ondalis {
namespace {

class VigiaGuion : public VigiaBandeja {
public:
    bool HayEnElBus() override { return enElBus; }
    bool HayEnX() override { return enX; }
    void SetAlAparecer(std::function<void()> aviso) override { alAparecer = std::move(aviso); }
    void SetAlDesaparecer(std::function<void()> aviso) override { alDesaparecer = std::move(aviso); }
    bool enElBus = false;
    bool enX = true;
    std::function<void()> alAparecer;
    std::function<void()> alDesaparecer;
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
    vigia.enX = false;
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

// A press of the icon's window, as the toolkit tells of it, and what follows on the screen.
void Raton(QEvent::Type tipo, Qt::MouseButton boton) {
    static QWidget ventana;
    QMouseEvent evento(tipo, QPointF(3, 3), QPointF(40, 50), boton, boton, Qt::NoModifier);
    QApplication::sendEvent(&ventana, &evento);
}

TEST_F(cBandejaPrueba, OnlyTheRightButtonsReleaseOpensTheMenu) {
    QMenu menu;
    menu.addAction(QStringLiteral("Salir"));
    bandeja.SetMenu(&menu);
    bandeja.SetImagen(1);
    bandeja.Pulsado(QSystemTrayIcon::Context);
    EXPECT_FALSE(menu.isVisible());
    Raton(QEvent::MouseButtonRelease, Qt::LeftButton);
    EXPECT_FALSE(menu.isVisible());
    Raton(QEvent::MouseButtonRelease, Qt::RightButton);
    EXPECT_TRUE(menu.isVisible());
    menu.close();
    Raton(QEvent::MouseButtonRelease, Qt::RightButton);
    EXPECT_FALSE(menu.isVisible());
    bandeja.SetMenu(nullptr);
}

TEST_F(cBandejaPrueba, AReleaseThatGoesAstrayDoesNotOpenTheMenuLater) {
    QMenu menu;
    menu.addAction(QStringLiteral("Salir"));
    bandeja.SetMenu(&menu);
    bandeja.SetImagen(1);
    bandeja.Pulsado(QSystemTrayIcon::Context);
    Raton(QEvent::MouseButtonPress, Qt::RightButton);
    Raton(QEvent::MouseButtonRelease, Qt::RightButton);
    EXPECT_FALSE(menu.isVisible());
    bandeja.SetMenu(nullptr);
}

TEST_F(cBandejaPrueba, TheProtocolOfTheFirstIconIsTheOneThatCounts) {
    bandeja.SetImagen(1);  // in a window
    EXPECT_TRUE(bandeja.HaySitio());
    vigia.enElBus = true;
    vigia.alAparecer();
    EXPECT_TRUE(bandeja.HaySitio());
    int cambios = 0;
    bandeja.AlCambiarSitio([&] { ++cambios; });
    vigia.enX = false;
    vigia.alDesaparecer();
    EXPECT_EQ(cambios, 1);
    EXPECT_FALSE(bandeja.HaySitio());
}

TEST_F(cBandejaPrueba, BeforeTheFirstIconAnyHostIsAPlace) {
    vigia.enX = false;
    EXPECT_FALSE(bandeja.HaySitio());
    vigia.enElBus = true;
    EXPECT_TRUE(bandeja.HaySitio());
    bandeja.SetImagen(1);
    vigia.enElBus = false;
    vigia.enX = true;
    EXPECT_FALSE(bandeja.HaySitio());
}

TEST_F(cBandejaPrueba, TheRightButtonIsNoHalfOfADoubleClick) {
    bandeja.Pulsado(QSystemTrayIcon::Trigger);
    bandeja.Pulsado(QSystemTrayIcon::Context);
    EXPECT_EQ(dobles, 0);
}

}  // namespace
}  // namespace ondalis
