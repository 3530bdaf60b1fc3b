#include "desktop/cBandeja.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QMenu>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <cstdlib>

#include "fakes/IconoDelBusGuion.h"

namespace ondalis {
namespace {

class VigiaGuion : public VigiaBandeja {
public:
    bool HayEnElBus() override { return enElBus; }
    bool HayEnX() override { return enX; }
    void SetAlAparecer(std::function<void()> aviso) override { alAparecer = std::move(aviso); }
    void SetAlDesaparecer(std::function<void()> aviso) override { alDesaparecer = std::move(aviso); }
    bool LlegaElToolkit() override { return llega; }
    bool enElBus = false;
    bool enX = true;
    bool llega = true;
    std::function<void()> alAparecer;
    std::function<void()> alDesaparecer;
};

using prueba::IconoDelBusGuion;

class cBandejaPrueba : public testing::Test {
protected:
    QTemporaryDir carpeta;
    cLog log{carpeta.path() + QStringLiteral("/Ondalis.log")};
    VigiaGuion vigia;
    IconoDelBusGuion propio;
    cBandeja bandeja{vigia, propio, log};
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

// Seen without colour, on a panel of that shade: how many points of the two differ clearly.
int PuntosDistintos(const QImage &una, const QImage &otra, int fondo) {
    int puntos = 0;
    for (int y = 0; y < una.height(); ++y)
        for (int x = 0; x < una.width(); ++x) {
            const auto gris = [&](const QImage &imagen) {
                const QRgb p = imagen.convertToFormat(QImage::Format_ARGB32).pixel(x, y);
                return (qGray(p) * qAlpha(p) + fondo * (255 - qAlpha(p))) / 255;
            };
            puntos += std::abs(gris(una) - gris(otra)) > 48 ? 1 : 0;
        }
    return puntos;
}

TEST_F(cBandejaPrueba, TheElevenPicturesDifferPairwiseAtTheSizesOfATrayOnLightAndDarkPanels) {
    for (const int tamano : {16, 22})
        for (int a = 1; a <= cIconoBarra::NumImagenes; ++a)
            for (int b = a + 1; b <= cIconoBarra::NumImagenes; ++b) {
                const QImage una(QStringLiteral(":/iconos/%1-%2.png").arg(a).arg(tamano));
                const QImage otra(QStringLiteral(":/iconos/%1-%2.png").arg(b).arg(tamano));
                for (const int fondo : {30, 240})
                    EXPECT_GE(PuntosDistintos(una, otra, fondo), 8) << a << " and " << b << " at " << tamano;
            }
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
    vigia.enX = true;
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

// A button over a window, as the toolkit's own one for the icon gets it.
void Raton(QEvent::Type tipo, Qt::MouseButton boton, const char *ventana = "QSystemTrayIconSys") {
    QWidget una;
    una.setObjectName(QLatin1String(ventana));
    QMouseEvent evento(tipo, QPointF(3, 3), QPointF(40, 50), boton, boton, Qt::NoModifier);
    QApplication::sendEvent(&una, &evento);
}

TEST_F(cBandejaPrueba, OnlyTheRightButtonsReleaseOpensTheMenuAndItsPressDoesNothing) {
    QMenu menu;
    menu.addAction(QStringLiteral("Salir"));
    bandeja.SetMenu(&menu);
    bandeja.SetImagen(1);
    Raton(QEvent::MouseButtonPress, Qt::RightButton);
    bandeja.Pulsado(QSystemTrayIcon::Context);
    Raton(QEvent::MouseButtonRelease, Qt::LeftButton);
    Raton(QEvent::MouseButtonRelease, Qt::RightButton, "OtraVentana");
    EXPECT_FALSE(menu.isVisible());
    Raton(QEvent::MouseButtonRelease, Qt::RightButton);
    EXPECT_TRUE(menu.isVisible());
    menu.close();
    bandeja.SetMenu(nullptr);
}

TEST_F(cBandejaPrueba, TheSecondOfTwoQuickRightClicksOpensTheMenuAgain) {
    QMenu menu;
    menu.addAction(QStringLiteral("Salir"));
    bandeja.SetMenu(&menu);
    bandeja.SetImagen(1);
    bandeja.Pulsado(QSystemTrayIcon::Context);
    Raton(QEvent::MouseButtonRelease, Qt::RightButton);
    menu.close();
    Raton(QEvent::MouseButtonDblClick, Qt::RightButton);  // the toolkit tells of no click then
    Raton(QEvent::MouseButtonRelease, Qt::RightButton);
    EXPECT_TRUE(menu.isVisible());
    menu.close();
    bandeja.SetMenu(nullptr);
}

TEST_F(cBandejaPrueba, APlaceThatGoesIsTold) {
    bandeja.SetImagen(1);  // in a window
    EXPECT_TRUE(bandeja.HaySitio());
    int cambios = 0;
    bandeja.AlCambiarSitio([&] { ++cambios; });
    vigia.enX = false;
    vigia.alDesaparecer();
    EXPECT_EQ(cambios, 1);
    EXPECT_FALSE(bandeja.HaySitio());
}

TEST_F(cBandejaPrueba, AnIconInAWindowStaysThereUntilItsPanelGoesAndThenMovesToTheBus) {
    bandeja.SetImagen(1);
    vigia.enElBus = true;
    vigia.alAparecer();
    EXPECT_FALSE(propio.mostrado);
    EXPECT_TRUE(bandeja.Visible());
    vigia.enX = false;
    vigia.alDesaparecer();
    EXPECT_TRUE(propio.mostrado);
    EXPECT_TRUE(bandeja.HaySitio());
    EXPECT_TRUE(bandeja.Visible());
    ASSERT_EQ(propio.imagenes.size(), 5U);
    EXPECT_EQ(propio.imagenes[1].ancho, 22);
    EXPECT_EQ(propio.imagenes[1].pixeles.size(), 22U * 22U);
    const auto antes = propio.imagenes[0].pixeles;
    bandeja.SetImagen(9);
    EXPECT_NE(propio.imagenes[0].pixeles, antes);
    vigia.alAparecer();  // another watcher
    EXPECT_EQ(propio.veces, 2);
    vigia.enX = true;
    vigia.alAparecer();
    EXPECT_FALSE(propio.mostrado);
    EXPECT_TRUE(bandeja.Visible());
    EXPECT_EQ(bandeja.Imagen(), 9);
}

TEST_F(cBandejaPrueba, OnTheBusByOurselvesTwoClicksAreADoubleClickAndTheMenuComesWhereItIsAsked) {
    QMenu menu;
    menu.addAction(QStringLiteral("Salir"));
    bandeja.SetMenu(&menu);
    bandeja.SetImagen(1);
    vigia.enElBus = true;
    vigia.enX = false;
    vigia.alDesaparecer();
    propio.alPulsar();
    propio.alPulsar();
    EXPECT_EQ(dobles, 1);
    propio.alPedirMenu(QPoint(40, 50));
    EXPECT_TRUE(menu.isVisible());
    menu.close();
    bandeja.SetMenu(nullptr);
}

TEST_F(cBandejaPrueba, ABusThatTheToolkitHasLostIsServedByOurselves) {
    vigia.enX = false;
    vigia.enElBus = true;
    bandeja.SetImagen(1);  // by the toolkit
    EXPECT_FALSE(propio.mostrado);
    vigia.llega = false;
    vigia.alAparecer();
    EXPECT_TRUE(propio.mostrado);
    EXPECT_TRUE(bandeja.HaySitio());
}

TEST_F(cBandejaPrueba, ABusThatTheToolkitNeverReachedIsServedByOurselvesAndSoAreWindows) {
    vigia.enX = false;
    vigia.enElBus = true;
    vigia.llega = false;
    bandeja.SetImagen(1);
    EXPECT_TRUE(propio.mostrado);
    vigia.enElBus = false;
    vigia.enX = true;
    vigia.alAparecer();
    EXPECT_FALSE(propio.mostrado);
    EXPECT_TRUE(bandeja.HaySitio());
    EXPECT_TRUE(bandeja.Visible());
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
