#include "platform/x11/cCapturaX11.h"

#include <gtest/gtest.h>

#include <cstring>

#include "ServidorX.h"

namespace ondalis {
namespace {

using namespace pruebas;

TEST(cCapturaX11, PixelsOf32BitsAreTakenAsTheyAre) {
    const FormatoPixeles formato{.bits = 32, .rojo = 0xFF0000, .verde = 0xFF00, .azul = 0xFF};
    const std::uint32_t datos[] = {0xFF112233, 0x00445566};
    ImagenPixeles copia;
    ASSERT_TRUE(Descifra(formato, reinterpret_cast<const std::uint8_t *>(datos), sizeof datos, {2, 1}, copia));
    EXPECT_EQ(copia.pixeles, (std::vector<std::uint32_t>{0x112233, 0x445566}));
}

TEST(cCapturaX11, RowsOf16BitPixelsArePaddedAndTheirChannelsSpreadToTheFullRange) {
    const FormatoPixeles formato{.bits = 16, .rojo = 0xF800, .verde = 0x07E0, .azul = 0x001F};
    const std::uint16_t datos[] = {0xF800, 0, 0x07E0, 0};  // one pixel a row, two bytes of padding
    ImagenPixeles copia;
    ASSERT_TRUE(Descifra(formato, reinterpret_cast<const std::uint8_t *>(datos), sizeof datos, {1, 2}, copia));
    EXPECT_EQ(copia.pixeles, (std::vector<std::uint32_t>{0xFF0000, 0x00FF00}));
}

TEST(cCapturaX11, AServerOfTheOtherByteOrderIsUnderstood) {
    const FormatoPixeles formato{.bits = 32, .alReves = true, .rojo = 0xFF0000, .verde = 0xFF00, .azul = 0xFF};
    const std::uint8_t datos[] = {0, 0x11, 0x22, 0x33};
    ImagenPixeles copia;
    ASSERT_TRUE(Descifra(formato, datos, sizeof datos, {1, 1}, copia));
    EXPECT_EQ(copia.pixeles[0], 0x112233U);
}

TEST(cCapturaX11, TooFewBytesAreRefused) {
    const FormatoPixeles formato{.bits = 32, .rojo = 0xFF0000, .verde = 0xFF00, .azul = 0xFF};
    const std::uint8_t datos[7] = {};
    ImagenPixeles copia;
    EXPECT_FALSE(Descifra(formato, datos, sizeof datos, {2, 1}, copia));
}

// A window of one colour, so that there is something to see.
class Mancha {
public:
    Mancha() : m_conexion([](const xcb_generic_event_t &) {}) {
        xcb_connection_t *x = m_conexion.Xcb();
        m_ventana = xcb_generate_id(x);
        const std::uint32_t valores[] = {0x3366CC, 1};  // background; no window manager in between
        xcb_create_window(x, XCB_COPY_FROM_PARENT, m_ventana, m_conexion.Raiz(), 100, 50, 60, 40, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, valores);
        xcb_map_window(x, m_ventana);
        const XcbPtr<xcb_get_input_focus_reply_t> hecho(xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
    }

private:
    cConexionX m_conexion;
    xcb_window_t m_ventana;
};

void CompruebaMancha(cCapturaX11 &captura) {
    CapturaPantalla::Estado estado;
    ASSERT_TRUE(captura.GetEstado(estado));
    EXPECT_EQ(estado.tamano, QSize(800, 600));
    ImagenPixeles copia;
    ASSERT_TRUE(captura.Copia({90, 40, 100, 80}, copia));
    const auto pixel = [&](int x, int y) { return copia.pixeles[static_cast<std::size_t>(y * copia.ancho + x)]; };
    EXPECT_EQ(pixel(10, 10), 0x3366CCU);
    EXPECT_EQ(pixel(69, 49), 0x3366CCU);
    EXPECT_NE(pixel(9, 10), 0x3366CCU);
    EXPECT_NE(pixel(70, 49), 0x3366CCU);
    EXPECT_FALSE(captura.Copia({750, 0, 100, 80}, copia));  // not inside the screen: refused, and it goes on
    ASSERT_TRUE(captura.Copia({0, 0, 800, 600}, copia));    // larger than what was reserved
    EXPECT_EQ(pixel(100, 50), 0x3366CCU);
}

TEST(cCapturaX11, TheScreensColoursComeThroughSharedMemory) {
    if (!ServidorX::Unico()) GTEST_SKIP() << "no Xvfb";
    const Mancha mancha;
    cCapturaX11 captura;
    CompruebaMancha(captura);
    EXPECT_TRUE(captura.Compartida());
}

TEST(cCapturaX11, WithoutSharedMemoryTheyComeThroughTheConnection) {
    if (!ServidorX::Unico()) GTEST_SKIP() << "no Xvfb";
    const Mancha mancha;
    cCapturaX11 captura(false);
    CompruebaMancha(captura);
    EXPECT_FALSE(captura.Compartida());
}

TEST(cCapturaX11, WithoutAServerNothingIsCopied) {
    const QByteArray propio = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":987");
    cCapturaX11 captura;
    CapturaPantalla::Estado estado;
    ImagenPixeles copia;
    EXPECT_FALSE(captura.GetEstado(estado));
    EXPECT_FALSE(captura.Copia({0, 0, 10, 10}, copia));
    qputenv("DISPLAY", propio);
}

}  // namespace
}  // namespace ondalis
