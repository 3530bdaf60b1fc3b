#include "desktop/Lupa.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>

#include "fakes/MensajesGuion.h"
#include "fakes/PrioridadFalsa.h"
#include "fakes/RegistroPropio.h"
#include "fakes/TemporizadorFalso.h"

namespace ondalis {
namespace {

class PantallaLisa : public CapturaPantalla {
public:
    bool GetEstado(Estado &estado) override {
        estado = {.puntero = {100, 100}, .tamano = {800, 600}, .imagen = {}};
        return true;
    }
    bool Copia(const QRect &recorte, ImagenPixeles &copia) override {
        copia = {recorte.width(), recorte.height(),
                 std::vector<std::uint32_t>(static_cast<std::size_t>(recorte.width() * recorte.height()), 0x336699)};
        return true;
    }
};

class LupaPrueba : public testing::Test {
protected:
    prueba::RegistroPropio r;
    prueba::MensajesGuion mensajes;
    prueba::PrioridadFalsa prioridad;
    cGeneral general{r.Log(), mensajes, prioridad};
    PantallaLisa pantalla;
    prueba::TemporizadorFalso timer;
    Lupa lupa{pantalla, timer, r.Registro(), general};

    QString VerLupa() { return r.Lee(QStringLiteral("General"), QStringLiteral("VerLupa"), true); }
};

TEST_F(LupaPrueba, ItHasTheProgramsTitleStaysInFrontAndTakesNoFocus) {
    EXPECT_EQ(lupa.windowTitle(), QStringLiteral("Ondalis"));
    EXPECT_TRUE(lupa.windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_TRUE(lupa.testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_FALSE(lupa.accessibleName().isEmpty());
}

TEST_F(LupaPrueba, ThePictureFillsTheWindowAndShowsTheScreensColours) {
    lupa.Muestra();
    EXPECT_TRUE(timer.Enabled());
    timer.Vence();
    EXPECT_EQ(lupa.Cuadro().size(), lupa.Interior());
    const QImage visto = lupa.grab().toImage();
    EXPECT_EQ(visto.pixel(visto.width() - 1, visto.height() - 1) & 0xFFFFFF, 0x336699U);
    EXPECT_EQ(visto.pixel(visto.width() / 2, visto.height() / 2) & 0xFFFFFF, 0xC00000U);
}

TEST_F(LupaPrueba, TheProgramsEndKeepsTheOptionAndThePlace) {
    lupa.Muestra();
    lupa.Descarga();
    EXPECT_FALSE(lupa.isVisible());
    EXPECT_FALSE(timer.Enabled());
    EXPECT_EQ(VerLupa(), QStringLiteral("True"));
    EXPECT_FALSE(r.Lee(QStringLiteral("Ventana"), QStringLiteral("WidthLupa")).isEmpty());
    lupa.Descarga();  // harmless
}

TEST_F(LupaPrueba, AHiddenOrMinimisedWindowIsNotServed) {
    lupa.Muestra();
    lupa.setWindowState(Qt::WindowMinimized);
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(timer.Enabled());
    lupa.setWindowState(Qt::WindowNoState);
    QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(timer.Enabled());
}

// Runs where the desktop has two screens (desktop_ui_dos_monitores).
class LupaConDosMonitores : public LupaPrueba {
protected:
    void SetUp() override {
        if (QGuiApplication::screens().size() < 2) GTEST_SKIP() << "one screen only; see desktop_ui_dos_monitores";
    }
    void Guarda(int x, int y) {
        for (const auto &[clave, valor] : {std::pair("LeftLupa", x), std::pair("TopLupa", y)})
            r.Salva(QStringLiteral("Ventana"), QLatin1String(clave), QString::number(valor * 15));
    }
    QPoint Lugar() {
        lupa.Muestra();
        QCoreApplication::sendPostedEvents();
        return lupa.pos();
    }
};

TEST_F(LupaConDosMonitores, TheScreenIsTheUnionOfTheMonitors) {
    EXPECT_THAT(lupa.Monitores(), testing::UnorderedElementsAre(QRect(0, 200, 800, 600), QRect(800, 0, 1280, 800)));
    EXPECT_EQ(Lugar(), QPoint(2080 - 480, 800 - 360));
}

TEST_F(LupaConDosMonitores, AMagnifierLeftOnTheSecondMonitorComesBackThere) {
    Guarda(900, 50);
    EXPECT_EQ(Lugar(), QPoint(900, 50));
    EXPECT_EQ(lupa.screen()->geometry(), QRect(800, 0, 1280, 800));
}

TEST_F(LupaConDosMonitores, ATitleBarThatNoMonitorShowsTakesTheFreshPlaceOfTheFirst) {
    Guarda(100, 50);  // above the first monitor, whose top is lower
    const QRect primero = lupa.Monitores().front();
    EXPECT_EQ(Lugar(), primero.topLeft() + QPoint(primero.width() - 480, primero.height() - 360));
}

}  // namespace
}  // namespace ondalis
