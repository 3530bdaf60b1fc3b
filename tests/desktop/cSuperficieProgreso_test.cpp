#include "desktop/cSuperficieProgreso.h"

#include <gtest/gtest.h>

namespace ondalis {
namespace {

QColor Punto(QWidget &superficie, int x) { return superficie.grab().toImage().pixelColor(x, 5); }

class cSuperficieProgresoTest : public testing::Test {
protected:
    cSuperficieProgresoTest() {
        superficie.resize(200, 10);
        progreso.Init(superficie);
        progreso.SetMaxValor(8);
    }

    cCola cola;
    cSuperficieProgreso superficie;
    cProgreso progreso{cola};
};

TEST_F(cSuperficieProgresoTest, ABarGrowsFromTheLeftGreenOnWhite) {
    progreso.SetValorActual(2);
    EXPECT_TRUE(superficie.isVisible());
    EXPECT_EQ(Punto(superficie, 0), QColor(0, 255, 0));
    EXPECT_EQ(Punto(superficie, 49), QColor(0, 255, 0));
    EXPECT_EQ(Punto(superficie, 51), QColor(255, 255, 255));
    EXPECT_EQ(Punto(superficie, 199), QColor(255, 255, 255));
    progreso.SetValorActual(8);
    EXPECT_EQ(Punto(superficie, 199), QColor(0, 255, 0));
    progreso.SetValorActual(4);
    EXPECT_EQ(Punto(superficie, 99), QColor(0, 255, 0));
    EXPECT_EQ(Punto(superficie, 101), QColor(255, 255, 255));
}

TEST_F(cSuperficieProgresoTest, HidingLeavesNothingOfTheBar) {
    progreso.SetValorActual(8);
    progreso.Oculta();
    EXPECT_FALSE(superficie.isVisible());
    EXPECT_EQ(Punto(superficie, 0), QColor(255, 255, 255));
}

TEST(cSuperficieProgreso, ColoursHaveBlueInTheHighByte) {
    cSuperficieProgreso superficie;
    superficie.resize(20, 10);
    superficie.SetColores(0x010203, 0xFF8000);
    superficie.Dibuja(10);
    EXPECT_EQ(Punto(superficie, 5), QColor(0, 0x80, 0xFF));
    EXPECT_EQ(Punto(superficie, 15), QColor(3, 2, 1));
}

}  // namespace
}  // namespace ondalis
