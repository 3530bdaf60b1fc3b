#include "settings/SitioVentana.h"

#include <gtest/gtest.h>

#include "fakes/RegistroPropio.h"

namespace ondalis {
namespace {

const QRect kMonitor(0, 0, 1280, 800);

class SitioVentanaPrueba : public testing::Test {
protected:
    prueba::RegistroPropio r;
    SitioVentana sitio{r.Registro(), r.Log(), QStringLiteral("Lupa")};

    void Pon(const char *clave, const char *valor) {
        r.Salva(QStringLiteral("Ventana"), QLatin1String(clave), QLatin1String(valor));
    }
    QPoint Lugar(std::vector<QRect> monitores = {kMonitor}) { return sitio.LeeLugar({400, 300}, monitores); }
};

TEST_F(SitioVentanaPrueba, AFreshWindowStandsOneAndAFifthOfItsSizeFromTheScreensEnd) {
    EXPECT_EQ(Lugar(), QPoint(1280 - 480, 800 - 360));
}

TEST_F(SitioVentanaPrueba, EachAxisBeyondTheScreenFallsBackOnItsOwn) {
    Pon("LeftLupa", "1500");
    Pon("TopLupa", "12001");
    EXPECT_EQ(Lugar(), QPoint(100, 440));
}

TEST_F(SitioVentanaPrueba, ANegativeEdgeIsZero) {
    Pon("LeftLupa", "-300");
    Pon("TopLupa", "15");
    EXPECT_EQ(Lugar(), QPoint(0, 1));
}

TEST_F(SitioVentanaPrueba, TheScreenIsTheUnionOfTheMonitors) {
    Pon("LeftLupa", "30000");
    Pon("TopLupa", "0");
    EXPECT_EQ(Lugar({kMonitor, {1280, 0, 1280, 800}}), QPoint(2000, 0));
}

TEST_F(SitioVentanaPrueba, ACornerThatNoMonitorShowsTakesTheFreshPlaceOfTheFirst) {
    // The second monitor is taller: below the first one there is nothing.
    Pon("LeftLupa", "1500");
    Pon("TopLupa", "13500");
    EXPECT_EQ(Lugar({kMonitor, {1280, 0, 1280, 1024}}), QPoint(800, 440));
}

TEST_F(SitioVentanaPrueba, WhatMakesNoSenseIsTheDefaultAndIsLogged) {
    Pon("LeftLupa", "izquierda");
    Pon("WidthLupa", "nan");
    Pon("HeightLupa", "-60");
    EXPECT_EQ(Lugar(), QPoint(800, 440));
    EXPECT_EQ(sitio.LeeTamano({400, 300}), QSize(400, 300));
    EXPECT_EQ(r.LineasLog().size(), 2);
}

TEST_F(SitioVentanaPrueba, FractionsOfATwipAreReadAndAHugeValueDoesNotOverflow) {
    Pon("WidthLupa", "4807.5");
    Pon("HeightLupa", "1e30");
    EXPECT_EQ(sitio.LeeTamano({400, 300}), QSize(320, 32767));
}

TEST_F(SitioVentanaPrueba, WhatWasKeptComesBack) {
    sitio.GuardaLugar({33, 44});
    sitio.GuardaTamano({555, 222});
    EXPECT_EQ(Lugar(), QPoint(33, 44));
    EXPECT_EQ(sitio.LeeTamano({400, 300}), QSize(555, 222));
}

}  // namespace
}  // namespace ondalis
