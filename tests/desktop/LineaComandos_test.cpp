#include "desktop/LineaComandos.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include "fakes/Aspectos.h"
#include "reader/Arranque.h"

namespace ondalis {
namespace {

TEST(LineaComandos, TheWindowHoldsTheSixLinesAndOneButton) {
    const LineaComandos ventana;
    EXPECT_EQ(ventana.windowTitle(), "Ondalis");
    EXPECT_TRUE(ventana.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    QStringList lineas;
    for (const QLabel *linea : ventana.findChildren<QLabel *>()) lineas << linea->text();
    EXPECT_EQ(lineas, TextosLineaComandos());
    ASSERT_EQ(ventana.findChildren<QPushButton *>().size(), 1);
    EXPECT_EQ(ventana.findChild<QPushButton *>("Aceptar")->text(), "Aceptar");
}

TEST(LineaComandos, EveryControlHasAnAccessibleNameAndThePlaceOfItsOwnInTheTabOrder) {
    const LineaComandos ventana;
    for (const QWidget *control : ventana.findChildren<QWidget *>()) {
        EXPECT_FALSE(control->accessibleName().isEmpty()) << control->objectName().toStdString();
        EXPECT_TRUE(control->focusPolicy() & Qt::TabFocus) << control->objectName().toStdString();
    }
}

TEST(LineaComandos, EnterAndEscapeClose) {
    for (const int tecla : {Qt::Key_Return, Qt::Key_Escape}) {
        LineaComandos ventana;
        QTimer::singleShot(0, &ventana, [&] {
            QKeyEvent baja(QEvent::KeyPress, tecla, Qt::NoModifier);
            QApplication::sendEvent(&ventana, &baja);
        });
        ventana.exec();
        EXPECT_FALSE(ventana.isVisible());
    }
}

TEST(LineaComandos, ItIsWholeInEveryLook) {
    prueba::CompruebaAspectos(
        [] {
            auto ventana = std::make_unique<LineaComandos>();
            ventana->show();
            return ventana;
        },
        {}, prueba::Letras::LasQueHaya);
}

}  // namespace
}  // namespace ondalis
