#include "desktop/Lupa.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCloseEvent>

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

}  // namespace
}  // namespace ondalis
