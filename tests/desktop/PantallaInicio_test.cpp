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

// The region of a picture from rows of signs: "." is transparent.
QRegion Region(const QStringList &filas) {
    std::vector<std::uint32_t> pixeles;
    for (const QString &fila : filas)
        for (const QChar signo : fila) pixeles.push_back(signo == QLatin1Char('.') ? kVerdeTransparente : 0x00FF01);
    QRegion region;
    for (const QRect &parte :
         GetRegionImg(pixeles, {static_cast<int>(filas[0].size()), static_cast<int>(filas.size())}))
        region |= parte;
    return region;
}

TEST(GetRegionImg, TheRegionIsWhatIsNotTheTransparentColour) {
    EXPECT_EQ(Region({".##.", "#..#", "....", ".#.."}),
              QRegion(1, 0, 2, 1) + QRegion(0, 1, 1, 1) + QRegion(3, 1, 1, 1) + QRegion(1, 3, 1, 1));
}

TEST(GetRegionImg, AFullyOpaqueRowEndsInOneRectangleReachingTheBottom) {
    EXPECT_EQ(Region({".##.", "####", "....", ".#.."}), QRegion(1, 0, 2, 1) + QRegion(0, 1, 4, 3));
}

TEST(GetRegionImg, APictureOfNothingIsAnEmptyRegion) { EXPECT_TRUE(Region({"....", "...."}).isEmpty()); }

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
    EXPECT_FALSE(Salir()->isVisible());
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

TEST_F(PantallaInicioTest, ItHasAShapeThatHoldsAllItsControls) {
    ventana.MuestraCargando();  // the layout acts on what is shown
    ventana.MuestraAcercaDe();
    const QRegion forma = ventana.mask();
    EXPECT_FALSE(forma.contains(QPoint(0, 0)));
    EXPECT_FALSE(forma.contains(ventana.rect().bottomRight()));
    EXPECT_TRUE(forma.contains(ventana.rect().center()));
    for (const QWidget *hijo : ventana.findChildren<QWidget *>())
        EXPECT_TRUE(QRegion(hijo->geometry()).subtracted(forma).isEmpty()) << hijo->objectName().toStdString();
}

TEST_F(PantallaInicioTest, ItIsDraggedByItsBackground) {
    ventana.MuestraAcercaDe();
    const QPoint antes = ventana.pos();
    Raton(QEvent::MouseMove, {200, 120});
    EXPECT_EQ(ventana.pos(), antes);
    Raton(QEvent::MouseButtonPress, {200, 120});
    Raton(QEvent::MouseMove, {207, 131});
    EXPECT_EQ(ventana.pos(), antes + QPoint(7, 11));
    EXPECT_EQ(corridas, 1);
    Raton(QEvent::MouseButtonRelease, {200, 120});
    Raton(QEvent::MouseMove, {240, 160});
    EXPECT_EQ(ventana.pos(), antes + QPoint(7, 11));
}

}  // namespace
}  // namespace ondalis
