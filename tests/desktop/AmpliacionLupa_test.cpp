#include "desktop/AmpliacionLupa.h"

#include <gtest/gtest.h>

namespace ondalis {
namespace {

constexpr std::uint32_t kCruz = 0xC00000;

// A screen in which every pixel has a colour of its own.
std::uint32_t Color(int x, int y) { return static_cast<std::uint32_t>(x * 1000 + y); }

ImagenPixeles Recorta(const QRect &recorte) {
    ImagenPixeles copia{recorte.width(), recorte.height(), {}};
    for (int y = recorte.top(); y <= recorte.bottom(); ++y)
        for (int x = recorte.left(); x <= recorte.right(); ++x) copia.pixeles.push_back(Color(x, y));
    return copia;
}

std::uint32_t Pixel(const ImagenPixeles &imagen, int x, int y) {
    return imagen.pixeles[static_cast<std::size_t>(y * imagen.ancho + x)];
}

ImagenPixeles Compon(const QPoint &puntero, const QSize &ventana, const QSize &pantalla,
                     const ImagenPuntero &dibujo = {}) {
    const QRect origen = OrigenLupa(puntero, ventana);
    const QRect recorte = origen.intersected(QRect(QPoint(0, 0), pantalla));
    return ComponLupa(
        {.ventana = ventana, .origen = origen, .recorte = recorte, .puntero = puntero, .brazo = 5, .grosor = 1},
        Recorta(recorte), dibujo);
}

TEST(AmpliacionLupa, TheSourceIsHalfTheWindowAroundThePointer) {
    EXPECT_EQ(OrigenLupa({500, 300}, {400, 300}), QRect(400, 225, 200, 150));
}

TEST(AmpliacionLupa, DivisionsRoundToTheNearestWithTiesToTheEvenNumber) {
    const int mitades[][2] = {{0, 0}, {1, 0}, {2, 1}, {3, 2}, {5, 2}, {7, 4}, {401, 200}, {403, 202}};
    for (const auto &[n, mitad] : mitades) EXPECT_EQ(Mitad(n), mitad) << n;
    const int cuartos[][2] = {{0, 0}, {1, 0}, {2, 0}, {3, 1}, {5, 1}, {6, 2}, {7, 2}, {10, 2}, {14, 4}, {402, 100}};
    for (const auto &[n, cuarto] : cuartos) EXPECT_EQ(Cuarto(n), cuarto) << n;
}

TEST(AmpliacionLupa, EveryPixelOfTheScreenBecomesTwoByTwo) {
    const ImagenPixeles cuadro = Compon({100, 80}, {40, 30}, {300, 200});
    const QRect origen = OrigenLupa({100, 80}, {40, 30});
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x) {
            if (Pixel(cuadro, x, y) == kCruz) continue;
            EXPECT_EQ(Pixel(cuadro, x, y), Color(origen.x() + x / 2, origen.y() + y / 2)) << x << ',' << y;
        }
}

TEST(AmpliacionLupa, AWindowTwiceAsLargeShowsASourceTwiceAsLarge) {
    const QRect una = OrigenLupa({500, 300}, {400, 300});
    const QRect doble = OrigenLupa({500, 300}, {800, 600});
    EXPECT_EQ(doble.size(), una.size() * 2);
    EXPECT_EQ(doble.topLeft(), QPoint(300, 150));
}

TEST(AmpliacionLupa, AtAScreensCornerTheSourceLiesPartlyOutsideAndThatPartStaysBlack) {
    const ImagenPixeles cuadro = Compon({0, 0}, {40, 40}, {300, 200});
    EXPECT_EQ(Pixel(cuadro, 5, 5), 0U);
    EXPECT_EQ(Pixel(cuadro, 19, 30), 0U);
    EXPECT_EQ(Pixel(cuadro, 30, 30), Color(5, 5));
    const ImagenPixeles ultima = Compon({299, 199}, {40, 40}, {300, 200});
    EXPECT_EQ(Pixel(ultima, 10, 10), Color(294, 194));
    EXPECT_EQ(Pixel(ultima, 22, 10), 0U);
}

TEST(AmpliacionLupa, ThePointerFarOutsideTheScreenGivesABlackPictureWithItsCross) {
    const ImagenPixeles cuadro = Compon({5000, 5000}, {40, 40}, {300, 200});
    EXPECT_EQ(Pixel(cuadro, 20, 20), kCruz);
    EXPECT_EQ(Pixel(cuadro, 0, 0), 0U);
}

TEST(AmpliacionLupa, TheCrossGoesThroughTheCentreAndIsDarkRed) {
    const ImagenPixeles cuadro = Compon({100, 80}, {60, 40}, {300, 200});
    for (int paso = -5; paso < 5; ++paso) {
        EXPECT_EQ(Pixel(cuadro, 30 + paso, 20), kCruz);
        EXPECT_EQ(Pixel(cuadro, 30, 20 + paso), kCruz);
    }
    EXPECT_NE(Pixel(cuadro, 24, 20), kCruz);
    EXPECT_NE(Pixel(cuadro, 31, 21), kCruz);
}

TEST(AmpliacionLupa, ThePointerIsDrawnTwiceItsSizeWithItsTipAtTheCentre) {
    ImagenPuntero puntero;
    puntero.imagen = {4, 4, std::vector<std::uint32_t>(16, 0xFF00FF00)};
    puntero.punta = {1, 1};
    const ImagenPixeles cuadro = Compon({100, 80}, {80, 60}, {300, 200}, puntero);
    // From one pixel before the tip to three behind it, doubled.
    EXPECT_EQ(Pixel(cuadro, 38, 28), 0x00FF00U);
    EXPECT_EQ(Pixel(cuadro, 45, 35), 0x00FF00U);
    EXPECT_NE(Pixel(cuadro, 37, 28), 0x00FF00U);
    EXPECT_NE(Pixel(cuadro, 46, 35), 0x00FF00U);
}

TEST(AmpliacionLupa, AHalfTransparentPointerLetsTheScreenThrough) {
    ImagenPuntero puntero;
    puntero.imagen = {1, 1, {0x80800000}};  // premultiplied: red, half
    const QRect origen = OrigenLupa({10, 10}, {40, 40});
    ImagenPixeles copia{origen.width(), origen.height(), std::vector<std::uint32_t>(400, 0x0000FF)};
    const ImagenPixeles cuadro = ComponLupa(
        {.ventana = {40, 40}, .origen = origen, .recorte = origen, .puntero = {10, 10}, .brazo = 0, .grosor = 1}, copia,
        puntero);
    EXPECT_EQ(Pixel(cuadro, 20, 20), 0x80007FU);
}

}  // namespace
}  // namespace ondalis
