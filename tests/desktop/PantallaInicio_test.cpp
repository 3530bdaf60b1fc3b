#include "desktop/PantallaInicio.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>

#include "fakes/MensajesGuion.h"
#include "fakes/PrioridadFalsa.h"
#include "fakes/RegistroPropio.h"

namespace ondalis {
namespace {

class PantallaInicioPrueba : public testing::Test {
protected:
    prueba::RegistroPropio r;
    prueba::MensajesGuion mensajes;
    prueba::PrioridadFalsa prioridad;
    cGeneral general{r.Log(), mensajes, prioridad};
    int corridas = 0;
    PantallaInicio ventana{general, [this] { ++corridas; }};

    QString Rotulo(const char *nombre) { return ventana.findChild<QLabel *>(QLatin1String(nombre))->text(); }
    QPushButton &Salir() { return *ventana.findChild<QPushButton *>(QStringLiteral("Salir")); }
    void Raton(QEvent::Type tipo, const QPoint &donde) {
        const Qt::MouseButton boton = tipo == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent evento(tipo, donde, ventana.mapToGlobal(donde), boton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&ventana, &evento);
    }
};

TEST_F(PantallaInicioPrueba, TheLabelsTellEditionAndVersion) {
    EXPECT_EQ(Rotulo("Edicion"), QStringLiteral("Edición 1.0 Libre"));
    EXPECT_EQ(Rotulo("Vmayor"), QStringLiteral("1"));
    EXPECT_EQ(Rotulo("Vmenor"), QStringLiteral("0"));
    EXPECT_EQ(Rotulo("Revision"), QStringLiteral("0"));
    EXPECT_EQ(Rotulo("CargandoVoces"), QStringLiteral("Cargando voces..."));
    EXPECT_TRUE(r.LineasLog().isEmpty());
}

TEST_F(PantallaInicioPrueba, ItHasTheShapeOfItsPictureWithTheTail) {
    EXPECT_FALSE(ventana.mask().contains(QPoint(0, 0)));
    EXPECT_TRUE(ventana.mask().contains(QPoint(240, 100)));
    EXPECT_TRUE(ventana.mask().contains(QPoint(66, 300)));
    EXPECT_FALSE(ventana.mask().contains(QPoint(300, 300)));
    const QImage visto = ventana.grab().toImage();
    for (int y = 0; y < visto.height(); ++y)
        for (int x = 0; x < visto.width(); ++x) ASSERT_NE(visto.pixel(x, y) & 0xFFFFFF, 0x00FF00U) << x << ',' << y;
}

TEST_F(PantallaInicioPrueba, AsASplashItHasNoButtonAndTakesNoFocus) {
    ventana.MuestraCargando();
    EXPECT_TRUE(ventana.isVisible());
    EXPECT_TRUE(ventana.findChild<QLabel *>(QStringLiteral("CargandoVoces"))->isVisible());
    EXPECT_FALSE(Salir().isVisible());
    EXPECT_TRUE(ventana.testAttribute(Qt::WA_ShowWithoutActivating));
    ventana.OcultaCargando();
    EXPECT_FALSE(ventana.isVisible());
    ventana.MuestraAcercaDe();
    EXPECT_FALSE(ventana.findChild<QLabel *>(QStringLiteral("CargandoVoces"))->isVisible());
}

TEST_F(PantallaInicioPrueba, AsAboutBoxItsButtonSaysAceptarAndHidesIt) {
    EXPECT_EQ(Salir().text(), QStringLiteral("Salir"));
    ventana.MuestraAcercaDe();
    EXPECT_EQ(Salir().text(), QStringLiteral("Aceptar"));
    Salir().click();
    EXPECT_FALSE(ventana.isVisible());
    ventana.MuestraAcercaDe();
    EXPECT_TRUE(ventana.isVisible());
}

TEST_F(PantallaInicioPrueba, EscClosesTheAboutBoxWhicheverControlHasTheFocus) {
    ventana.MuestraAcercaDe();
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(&Salir(), &escape);
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(PantallaInicioPrueba, ItIsDraggedByItsBackgroundWhileTheTagSaysSo) {
    ventana.MuestraAcercaDe();
    const QPoint antes = ventana.pos();
    Raton(QEvent::MouseMove, {50, 50});
    EXPECT_EQ(ventana.pos(), antes);
    Raton(QEvent::MouseButtonPress, {50, 50});
    EXPECT_EQ(ventana.Etiqueta(), QStringLiteral("mueve"));
    Raton(QEvent::MouseMove, {60, 45});
    EXPECT_EQ(ventana.pos(), antes + QPoint(10, -5));
    EXPECT_EQ(corridas, 1);
    Raton(QEvent::MouseButtonRelease, {50, 50});
    EXPECT_EQ(ventana.Etiqueta(), QString());
    Raton(QEvent::MouseMove, {90, 90});
    EXPECT_EQ(ventana.pos(), antes + QPoint(10, -5));
}

TEST_F(PantallaInicioPrueba, TheButtonsTextTurnsDarkBlueWhenTheMouseMovesOverTheBackground) {
    ventana.MuestraAcercaDe();
    QEvent entra(QEvent::Enter);
    QApplication::sendEvent(&Salir(), &entra);
    EXPECT_FALSE(Salir().styleSheet().contains(QStringLiteral("#000080")));
    Raton(QEvent::MouseMove, {50, 50});
    EXPECT_TRUE(Salir().styleSheet().contains(QStringLiteral("color: #000080")));
}

TEST_F(PantallaInicioPrueba, AScreenReaderHearsWhatThePictureShows) {
    EXPECT_TRUE(ventana.accessibleDescription().contains(QStringLiteral("Edición 1.0 Libre")));
    EXPECT_TRUE(ventana.accessibleDescription().contains(QStringLiteral("1.0.00")));
}

TEST_F(PantallaInicioPrueba, NothingIsCutWithALargeLetter) {
    const QFont propia = QApplication::font();
    QFont grande = propia;
    grande.setPointSize(24);
    QApplication::setFont(grande);
    {
        PantallaInicio otra(general);
        otra.MuestraAcercaDe();
        for (const QLabel *uno : otra.findChildren<QLabel *>())
            if (uno->isVisible()) {
                EXPECT_GE(uno->width(), uno->sizeHint().width()) << uno->objectName().toStdString();
                EXPECT_GE(uno->height(), uno->sizeHint().height()) << uno->objectName().toStdString();
            }
        const auto *boton = otra.findChild<QPushButton *>(QStringLiteral("Salir"));
        EXPECT_GE(boton->height(), boton->sizeHint().height());
        EXPECT_LE(boton->geometry().bottom(), 256);
    }
    QApplication::setFont(propia);
}

}  // namespace
}  // namespace ondalis
