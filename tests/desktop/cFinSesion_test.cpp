#include "desktop/cFinSesion.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>

namespace ondalis {
namespace {

TEST(cFinSesion, TheOrderToQuitIsTakenInPlaceOfTheToolkit) {
    int veces = 0;
    const cFinSesion fin([&] { ++veces; });
    QWidget ventana;
    ventana.show();
    QEvent orden(QEvent::Quit);
    QApplication::sendEvent(qApp, &orden);
    EXPECT_EQ(veces, 1);
    EXPECT_TRUE(ventana.isVisible());
}

TEST(cFinSesion, OtherEventsPass) {
    int veces = 0;
    const cFinSesion fin([&] { ++veces; });
    QObject objeto;
    QEvent orden(QEvent::Quit);
    QApplication::sendEvent(&objeto, &orden);
    QEvent letra(QEvent::ApplicationFontChange);
    QApplication::sendEvent(qApp, &letra);
    EXPECT_EQ(veces, 0);
}

}  // namespace
}  // namespace ondalis
