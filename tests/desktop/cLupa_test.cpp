#include "desktop/cLupa.h"

#include <gtest/gtest.h>

#include "fakes/MensajesGuion.h"
#include "fakes/PrioridadFalsa.h"
#include "fakes/RegistroPropio.h"
#include "fakes/TemporizadorFalso.h"
#include "settings/cOpcGeneral.h"

namespace ondalis {
namespace {

class CapturaFalsa : public CapturaPantalla {
public:
    bool GetEstado(Estado &salida) override {
        ++preguntas;
        salida = estado;
        return bien;
    }
    bool Copia(const QRect &recorte, ImagenPixeles &copia) override {
        copias.push_back(recorte);
        copia = {recorte.width(), recorte.height(),
                 std::vector<std::uint32_t>(static_cast<std::size_t>(recorte.width() * recorte.height()), color)};
        return bienCopia;
    }
    Estado estado{.puntero = {640, 400}, .tamano = {1280, 800}, .imagen = {}};
    std::uint32_t color = 0x123456;
    bool bien = true, bienCopia = true;
    int preguntas = 0;
    std::vector<QRect> copias;
};

class VistaFalsa : public VistaLupa {
public:
    QSize Interior() const override { return sitio.size() * escala; }
    double Escala() const override { return escala; }
    QRect Sitio() const override { return sitio; }
    std::vector<QRect> Monitores() const override { return monitores; }
    void Coloca(const QPoint &lugar, const QSize &tamano) override { sitio = {lugar, tamano}; }
    void Pinta(ImagenPixeles cuadro) override { cuadros.push_back(std::move(cuadro)); }

    QRect sitio{0, 0, 40, 30};
    double escala = 1;
    std::vector<QRect> monitores{{0, 0, 1280, 800}};
    std::vector<ImagenPixeles> cuadros;
};

class cLupaPrueba : public testing::Test {
protected:
    prueba::RegistroPropio r;
    prueba::MensajesGuion mensajes;
    prueba::PrioridadFalsa prioridad;
    cGeneral general{r.Log(), mensajes, prioridad};
    CapturaFalsa captura;
    VistaFalsa vista;
    prueba::TemporizadorFalso timer;
    cLupa lupa{captura, vista, timer, r.Registro(), general};
};

TEST_F(cLupaPrueba, ItLooksTenTimesASecondAndOnlyWhileItCanBeSeen) {
    EXPECT_EQ(timer.intervalo, 100);
    timer.Vence();
    EXPECT_EQ(captura.preguntas, 0);
    lupa.SetVisible(true);
    timer.Vence();
    EXPECT_EQ(captura.preguntas, 1);
    lupa.SetVisible(false);
    timer.Vence();
    EXPECT_EQ(captura.preguntas, 1);
}

TEST_F(cLupaPrueba, AnUnchangedScreenIsNotPaintedAgain) {
    lupa.SetVisible(true);
    timer.Vence();
    timer.Vence();
    EXPECT_EQ(vista.cuadros.size(), 1U);
    captura.color = 0x654321;
    timer.Vence();
    EXPECT_EQ(vista.cuadros.size(), 2U);
    captura.estado.puntero += QPoint(1, 0);
    timer.Vence();
    EXPECT_EQ(vista.cuadros.size(), 3U);
}

TEST_F(cLupaPrueba, AResizedWindowIsPaintedAtItsNewSize) {
    lupa.SetVisible(true);
    timer.Vence();
    vista.sitio.setSize({80, 60});
    timer.Vence();
    ASSERT_EQ(vista.cuadros.size(), 2U);
    EXPECT_EQ(vista.cuadros[1].ancho, 80);
    EXPECT_EQ(captura.copias[1].size(), captura.copias[0].size() * 2);
}

TEST_F(cLupaPrueba, AtACornerOnlyWhatIsOnTheScreenIsCopied) {
    captura.estado.puntero = {0, 0};
    lupa.SetVisible(true);
    timer.Vence();
    EXPECT_EQ(captura.copias.at(0), QRect(0, 0, 10, 7));
    captura.estado.puntero = {1279, 799};
    timer.Vence();
    EXPECT_EQ(captura.copias.at(1), QRect(1269, 791, 11, 9));
}

TEST_F(cLupaPrueba, SizesAreInDevicePixelsAndTheCrossGrowsWithThem) {
    vista.escala = 2;
    lupa.SetVisible(true);
    timer.Vence();
    EXPECT_EQ(captura.copias.at(0).size(), QSize(40, 30));
    const ImagenPixeles &cuadro = vista.cuadros.at(0);
    const auto pixel = [&](int x, int y) { return cuadro.pixeles[static_cast<std::size_t>(y * cuadro.ancho + x)]; };
    EXPECT_EQ(cuadro.ancho, 80);
    EXPECT_EQ(pixel(40 - 9, 30), 0xC00000U);
    EXPECT_EQ(pixel(40, 30 + 8), 0xC00000U);
    EXPECT_NE(pixel(40 - 10, 30), 0xC00000U);
}

TEST_F(cLupaPrueba, AFailureIsLoggedOnceARowAndTheNextTickTriesAgain) {
    captura.bienCopia = false;
    lupa.SetVisible(true);
    for (int i = 0; i < 5; ++i) timer.Vence();
    EXPECT_EQ(r.LineasLog().filter(QStringLiteral("Lupa.Amplia: ")).size(), 1);
    captura.bienCopia = true;
    timer.Vence();
    EXPECT_EQ(vista.cuadros.size(), 1U);
    captura.bien = false;
    timer.Vence();
    EXPECT_EQ(r.LineasLog().filter(QStringLiteral("Lupa.Amplia: ")).size(), 2);
}

TEST_F(cLupaPrueba, AFreshMagnifierStandsNearTheBottomRightCornerAtItsDesignSize) {
    lupa.Form_Load();
    EXPECT_EQ(vista.sitio, QRect(1280 - 480, 800 - 360, 400, 300));
}

TEST_F(cLupaPrueba, AStoredPlaceBeyondTheScreenFallsBackToTheFreshOne) {
    r.Salva(QStringLiteral("Ventana"), QStringLiteral("LeftLupa"), QStringLiteral("19201"));
    r.Salva(QStringLiteral("Ventana"), QStringLiteral("TopLupa"), QStringLiteral("150"));
    lupa.Form_Load();
    EXPECT_EQ(vista.sitio.topLeft(), QPoint(800, 10));
}

TEST_F(cLupaPrueba, WithSeveralMonitorsTheFreshPlaceIsThatOfTheirUnion) {
    vista.monitores = {{0, 0, 1280, 800}, {1280, 0, 1920, 1080}};
    lupa.Form_Load();
    EXPECT_EQ(vista.sitio, QRect(3200 - 480, 1080 - 360, 400, 300));
}

TEST_F(cLupaPrueba, APlaceThatNoMonitorShowsAnyMoreFallsBackToOneThatIsSeen) {
    r.Salva(QStringLiteral("Ventana"), QStringLiteral("LeftLupa"), QString::number(1500 * 15));
    r.Salva(QStringLiteral("Ventana"), QStringLiteral("TopLupa"), QString::number(900 * 15));
    vista.monitores = {{0, 0, 1280, 800}, {1280, 0, 1920, 1080}};
    lupa.Form_Load();
    EXPECT_EQ(vista.sitio.topLeft(), QPoint(1500, 900));
    vista.monitores = {{0, 0, 1280, 1080}, {1280, 0, 1920, 800}};  // the second is lower no more
    lupa.Form_Load();
    EXPECT_TRUE(vista.monitores[0].contains(vista.sitio.topLeft()));
}

TEST_F(cLupaPrueba, AcrossTheBorderOfTwoMonitorsTheCopyIsOfBoth) {
    captura.estado.tamano = {3200, 1080};
    captura.estado.puntero = {1280, 500};
    lupa.SetVisible(true);
    timer.Vence();
    ASSERT_EQ(captura.copias.size(), 1U);
    EXPECT_EQ(captura.copias[0], OrigenLupa({1280, 500}, {40, 30}));
    EXPECT_LT(captura.copias[0].left(), 1280);
    EXPECT_GT(captura.copias[0].right(), 1280);
    captura.estado.puntero = {3199, 1079};  // the far corner of the last one
    timer.Vence();
    EXPECT_EQ(captura.copias[1].bottomRight(), QPoint(3199, 1079));
}

TEST_F(cLupaPrueba, ClosedByHandTheConfigurationPageShowsItOffWhenNextOpened) {
    r.Salva(QStringLiteral("General"), QStringLiteral("VerLupa"), QStringLiteral("True"));
    EXPECT_TRUE(cOpcGeneral(r.Registro(), r.Log()).VerLupa());
    lupa.Form_QueryUnload(cLupa::PorElUsuario);
    EXPECT_FALSE(cOpcGeneral(r.Registro(), r.Log()).VerLupa());
}

TEST_F(cLupaPrueba, ClosingByHandWritesTheOptionOffAndClosingOtherwiseDoesNot) {
    r.Salva(QStringLiteral("General"), QStringLiteral("VerLupa"), QStringLiteral("True"));
    lupa.Form_QueryUnload(cLupa::PorElPrograma);
    EXPECT_EQ(r.Lee(QStringLiteral("General"), QStringLiteral("VerLupa")), QStringLiteral("True"));
    lupa.Form_QueryUnload(cLupa::PorElUsuario);
    EXPECT_EQ(r.Lee(QStringLiteral("General"), QStringLiteral("VerLupa")), QStringLiteral("0"));
}

TEST_F(cLupaPrueba, UnloadingKeepsPlaceAndSizeInTwips) {
    lupa.SetVisible(true);
    vista.sitio = {10, 20, 320, 200};
    lupa.Form_Unload();
    EXPECT_FALSE(timer.Enabled());
    const auto lee = [this](const char *clave) {
        return r.Lee(QStringLiteral("Ventana"), QLatin1String(clave)).toStdString();
    };
    EXPECT_EQ(lee("LeftLupa"), "150");
    EXPECT_EQ(lee("TopLupa"), "300");
    EXPECT_EQ(lee("WidthLupa"), "4800");
    EXPECT_EQ(lee("HeightLupa"), "3000");
    vista.sitio = {};
    lupa.Form_Load();
    EXPECT_EQ(vista.sitio, QRect(10, 20, 320, 200));
}

}  // namespace
}  // namespace ondalis
