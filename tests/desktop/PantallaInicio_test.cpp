#include "desktop/PantallaInicio.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QTemporaryDir>

#include "desktop/RegionImagen.h"
#include "fakes/MensajesGuion.h"
#include "fakes/PrioridadFalsa.h"

namespace ondalis {
namespace {

// A picture from rows of signs: "." is transparent.
QImage Imagen(const QStringList &filas) {
    QImage imagen(static_cast<int>(filas[0].size()), static_cast<int>(filas.size()), QImage::Format_RGB32);
    for (int y = 0; y < imagen.height(); ++y)
        for (int x = 0; x < imagen.width(); ++x)
            imagen.setPixel(x, y, filas[y][x] == QLatin1Char('.') ? kTransparente : qRgb(0, 255, 1));
    return imagen;
}

TEST(GetRegionImg, TheRegionIsWhatIsNotTheTransparentColour) {
    EXPECT_EQ(GetRegionImg(Imagen({".##.", "#..#", "....", ".#.."})),
              QRegion(1, 0, 2, 1) + QRegion(0, 1, 1, 1) + QRegion(3, 1, 1, 1) + QRegion(1, 3, 1, 1));
}

TEST(GetRegionImg, AFullyOpaqueRowEndsInOneRectangleReachingTheBottom) {
    EXPECT_EQ(GetRegionImg(Imagen({".##.", "####", "....", ".#.."})), QRegion(1, 0, 2, 1) + QRegion(0, 1, 4, 3));
}

TEST(GetRegionImg, APictureOfNothingIsAnEmptyRegion) { EXPECT_TRUE(GetRegionImg(Imagen({"....", "...."})).isEmpty()); }

class PantallaInicioTest : public testing::Test {
protected:
    QTemporaryDir carpeta;
    cLog log{carpeta.filePath("Ondalis.log")};
    prueba::MensajesGuion mensajes;
    prueba::PrioridadFalsa prioridad;
    cGeneral general{log, mensajes, prioridad};
    int corridas = 0;
    PantallaInicio ventana{general, [this] { ++corridas; }};
    QLabel *Rotulo(const char *nombre) { return ventana.findChild<QLabel *>(QLatin1String(nombre)); }
    QPushButton *Salir() { return ventana.findChild<QPushButton *>("Salir"); }
    void Raton(QEvent::Type tipo, QPoint punto) {
        QMouseEvent evento(tipo, punto, ventana.mapToGlobal(punto), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&ventana, &evento);
    }
};

TEST_F(PantallaInicioTest, TheSplashSaysThatVoicesAreLoadedAndTakesNoFocus) {
    ventana.MuestraCargando();
    EXPECT_TRUE(ventana.isVisible());
    EXPECT_TRUE(Rotulo("CargandoVoces")->isVisible());
    EXPECT_EQ(Rotulo("CargandoVoces")->text(), "Cargando voces...");
    EXPECT_TRUE(ventana.testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_TRUE(ventana.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(Salir()->text(), "Salir");
    ventana.OcultaCargando();
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(PantallaInicioTest, EditionAndVersionAreShown) {
    EXPECT_EQ(Rotulo("Edicion")->text(), "Edición 1.0 Libre");
    EXPECT_EQ(Rotulo("Vmayor")->text(), "1");
    EXPECT_EQ(Rotulo("Vmenor")->text(), "0");
    EXPECT_EQ(Rotulo("Revision")->text(), "0");
}

TEST_F(PantallaInicioTest, TheAboutBoxHasAceptarAndNoWordOfVoices) {
    ventana.MuestraAcercaDe();
    EXPECT_TRUE(ventana.isVisible());
    EXPECT_EQ(Salir()->text(), "Aceptar");
    EXPECT_FALSE(Rotulo("CargandoVoces")->isVisible());
    Salir()->click();
    EXPECT_FALSE(ventana.isVisible());
    ventana.MuestraAcercaDe();
    EXPECT_TRUE(ventana.isVisible());
}

TEST_F(PantallaInicioTest, EscapeAndEnterOnlyHideIt) {
    for (const int tecla : {Qt::Key_Escape, Qt::Key_Return}) {
        ventana.MuestraAcercaDe();
        QKeyEvent baja(QEvent::KeyPress, tecla, Qt::NoModifier);
        QApplication::sendEvent(&ventana, &baja);
        EXPECT_FALSE(ventana.isVisible());
    }
}

TEST_F(PantallaInicioTest, ItIsABubbleAndNoRectangle) {
    ventana.MuestraCargando();  // the layout acts with the first showing
    const QRegion forma = ventana.mask();
    EXPECT_FALSE(forma.contains(QPoint(0, 0)));
    EXPECT_FALSE(forma.contains(ventana.rect().bottomRight()));
    EXPECT_TRUE(forma.contains(ventana.rect().center()));
    EXPECT_TRUE(forma.contains(QPoint(50, ventana.height() - 12)));  // the tail
    for (const QWidget *hijo : ventana.findChildren<QWidget *>())
        EXPECT_TRUE(QRegion(hijo->geometry()).subtracted(forma).isEmpty()) << hijo->objectName().toStdString();
}

TEST_F(PantallaInicioTest, ItIsDraggedByItsBackground) {
    ventana.MuestraAcercaDe();
    const QPoint antes = ventana.pos();
    Raton(QEvent::MouseMove, {20, 20});
    EXPECT_EQ(ventana.pos(), antes);
    Raton(QEvent::MouseButtonPress, {20, 20});
    Raton(QEvent::MouseMove, {27, 31});
    EXPECT_EQ(ventana.pos(), antes + QPoint(7, 11));
    EXPECT_EQ(corridas, 1);
    Raton(QEvent::MouseButtonRelease, {20, 20});
    Raton(QEvent::MouseMove, {60, 60});
    EXPECT_EQ(ventana.pos(), antes + QPoint(7, 11));
}

TEST_F(PantallaInicioTest, TheMouseOverTheBackgroundColoursTheButtonsText) {
    Raton(QEvent::MouseMove, {20, 20});
    EXPECT_EQ(Salir()->palette().color(QPalette::ButtonText), QColor(0, 0, 128));
}

TEST_F(PantallaInicioTest, EveryControlHasAnAccessibleName) {
    for (const QWidget *control : ventana.findChildren<QWidget *>())
        EXPECT_FALSE(control->accessibleName().isEmpty()) << control->objectName().toStdString();
}

}  // namespace
}  // namespace ondalis
