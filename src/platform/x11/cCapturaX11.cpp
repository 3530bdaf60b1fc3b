#include "platform/x11/cCapturaX11.h"

#include <sys/ipc.h>
#include <sys/shm.h>
#include <xcb/xfixes.h>

#include <bit>
#include <cstring>

namespace ondalis {

namespace {

constexpr std::uint32_t kTodosLosPlanos = ~0U;

std::size_t BytesFila(const FormatoPixeles &formato, int ancho) {
    const auto relleno = static_cast<std::size_t>(formato.relleno);
    const std::size_t bits = static_cast<std::size_t>(ancho) * static_cast<std::size_t>(formato.bits);
    return (bits + relleno - 1) / relleno * relleno / 8;
}

std::uint32_t Canal(std::uint32_t pixel, std::uint32_t mascara) {
    if (mascara == 0) return 0;
    const std::uint32_t maximo = mascara >> std::countr_zero(mascara);
    return ((pixel & mascara) >> std::countr_zero(mascara)) * 255 / maximo;
}

std::uint32_t LeePixel(const std::uint8_t *donde, int bytes, bool mayorPrimero) {
    std::uint32_t pixel = 0;
    for (int i = 0; i < bytes; ++i)
        pixel |= static_cast<std::uint32_t>(donde[i]) << 8 * (mayorPrimero ? bytes - 1 - i : i);
    return pixel;
}

}  // namespace

bool Descifra(const FormatoPixeles &formato, const std::uint8_t *datos, std::size_t largo, const QSize &tamano,
              ImagenPixeles &copia) {
    const std::size_t fila = BytesFila(formato, tamano.width());
    const int bytes = formato.bits / 8;
    if (bytes < 2 || bytes > 4 || largo < fila * static_cast<std::size_t>(tamano.height())) return false;
    const bool mayorPrimero = formato.alReves != (std::endian::native == std::endian::big);
    const bool directo =
        bytes == 4 && !formato.alReves && formato.rojo == 0xFF0000 && formato.verde == 0xFF00 && formato.azul == 0xFF;
    copia.ancho = tamano.width();
    copia.alto = tamano.height();
    copia.pixeles.resize(static_cast<std::size_t>(copia.ancho) * static_cast<std::size_t>(copia.alto));
    auto destino = copia.pixeles.begin();
    for (int y = 0; y < copia.alto; ++y, datos += fila) {
        for (int x = 0; x < copia.ancho; ++x, ++destino) {
            if (directo) {
                std::memcpy(&*destino, datos + 4 * static_cast<std::size_t>(x), 4);
                *destino &= 0xFFFFFF;
                continue;
            }
            const std::uint32_t pixel = LeePixel(datos + x * bytes, bytes, mayorPrimero);
            *destino = Canal(pixel, formato.rojo) << 16 | Canal(pixel, formato.verde) << 8 | Canal(pixel, formato.azul);
        }
    }
    return true;
}

cCapturaX11::cCapturaX11(bool memoriaCompartida)
    : m_conexion([](const xcb_generic_event_t &) {}), m_compartir(memoriaCompartida) {
    if (!m_conexion.Viva()) return;
    xcb_connection_t *x = m_conexion.Xcb();
    // Without the handshake the server refuses requests of the extensions.
    const auto xfixes = xcb_xfixes_query_version(x, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION);
    const auto shm = xcb_shm_query_version(x);
    const XcbPtr<xcb_xfixes_query_version_reply_t> conPuntero(xcb_xfixes_query_version_reply(x, xfixes, nullptr));
    const XcbPtr<xcb_shm_query_version_reply_t> conMemoria(xcb_shm_query_version_reply(x, shm, nullptr));
    m_compartir = m_compartir && conMemoria;
    LeeFormato();
    m_conexion.Despacha();
}

cCapturaX11::~cCapturaX11() { SueltaMemoria(); }

void cCapturaX11::LeeFormato() {
    const xcb_setup_t *servidor = xcb_get_setup(m_conexion.Xcb());
    const xcb_screen_t *pantalla = nullptr;
    for (auto i = xcb_setup_roots_iterator(servidor); i.rem > 0; xcb_screen_next(&i))
        if (i.data->root == m_conexion.Raiz()) pantalla = i.data;
    if (!pantalla) return;
    for (auto i = xcb_setup_pixmap_formats_iterator(servidor); i.rem > 0; xcb_format_next(&i))
        if (i.data->depth == pantalla->root_depth) {
            m_formato.bits = i.data->bits_per_pixel;
            m_formato.relleno = i.data->scanline_pad;
        }
    const bool servidorMayor = servidor->image_byte_order == XCB_IMAGE_ORDER_MSB_FIRST;
    m_formato.alReves = servidorMayor != (std::endian::native == std::endian::big);
    for (auto p = xcb_screen_allowed_depths_iterator(pantalla); p.rem > 0; xcb_depth_next(&p))
        for (auto v = xcb_depth_visuals_iterator(p.data); v.rem > 0; xcb_visualtype_next(&v))
            if (v.data->visual_id == pantalla->root_visual) {
                m_formato.rojo = v.data->red_mask;
                m_formato.verde = v.data->green_mask;
                m_formato.azul = v.data->blue_mask;
            }
}

bool cCapturaX11::GetEstado(Estado &estado) {
    if (!m_conexion.Viva()) return false;
    xcb_connection_t *x = m_conexion.Xcb();
    // Asked together: one round trip.
    const auto geometria = xcb_get_geometry(x, m_conexion.Raiz());
    const auto lugar = xcb_query_pointer(x, m_conexion.Raiz());
    const auto dibujo = xcb_xfixes_get_cursor_image(x);
    const XcbPtr<xcb_get_geometry_reply_t> raiz(xcb_get_geometry_reply(x, geometria, nullptr));
    const XcbPtr<xcb_query_pointer_reply_t> puntero(xcb_query_pointer_reply(x, lugar, nullptr));
    // Refused while no pointer is shown.
    const XcbPtr<xcb_xfixes_get_cursor_image_reply_t> imagen(xcb_xfixes_get_cursor_image_reply(x, dibujo, nullptr));
    m_conexion.Despacha();
    if (!raiz || !puntero) return false;
    estado.tamano = QSize(raiz->width, raiz->height);
    estado.puntero = QPoint(puntero->root_x, puntero->root_y);
    estado.imagen = {};
    if (!imagen) return true;
    const std::uint32_t *pixeles = xcb_xfixes_get_cursor_image_cursor_image(imagen.get());
    const int cuantos = xcb_xfixes_get_cursor_image_cursor_image_length(imagen.get());
    if (cuantos != imagen->width * imagen->height) return true;
    estado.imagen.imagen = {imagen->width, imagen->height, {pixeles, pixeles + cuantos}};
    estado.imagen.punta = QPoint(imagen->xhot, imagen->yhot);
    return true;
}

bool cCapturaX11::Copia(const QRect &recorte, ImagenPixeles &copia) {
    if (!m_conexion.Viva() || m_formato.bits == 0) return false;
    const bool bien = CopiaCompartida(recorte, copia) || CopiaPorLaConexion(recorte, copia);
    m_conexion.Despacha();
    return bien;
}

std::size_t cCapturaX11::Bytes(const QSize &tamano) const {
    return BytesFila(m_formato, tamano.width()) * static_cast<std::size_t>(tamano.height());
}

bool cCapturaX11::CopiaCompartida(const QRect &recorte, ImagenPixeles &copia) {
    if (!m_compartir || !ReservaMemoria(Bytes(recorte.size()))) return false;
    xcb_connection_t *x = m_conexion.Xcb();
    const auto peticion = xcb_shm_get_image(
        x, m_conexion.Raiz(), static_cast<std::int16_t>(recorte.x()), static_cast<std::int16_t>(recorte.y()),
        static_cast<std::uint16_t>(recorte.width()), static_cast<std::uint16_t>(recorte.height()), kTodosLosPlanos,
        XCB_IMAGE_FORMAT_Z_PIXMAP, m_segmento, 0);
    const XcbPtr<xcb_shm_get_image_reply_t> respuesta(xcb_shm_get_image_reply(x, peticion, nullptr));
    return respuesta && Descifra(m_formato, m_memoria, m_reservados, recorte.size(), copia);
}

bool cCapturaX11::CopiaPorLaConexion(const QRect &recorte, ImagenPixeles &copia) {
    xcb_connection_t *x = m_conexion.Xcb();
    const auto peticion =
        xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, m_conexion.Raiz(), static_cast<std::int16_t>(recorte.x()),
                      static_cast<std::int16_t>(recorte.y()), static_cast<std::uint16_t>(recorte.width()),
                      static_cast<std::uint16_t>(recorte.height()), kTodosLosPlanos);
    const XcbPtr<xcb_get_image_reply_t> respuesta(xcb_get_image_reply(x, peticion, nullptr));
    return respuesta &&
           Descifra(m_formato, xcb_get_image_data(respuesta.get()),
                    static_cast<std::size_t>(xcb_get_image_data_length(respuesta.get())), recorte.size(), copia);
}

// A segment that is too small is replaced; one that the server can't reach is never asked for again.
bool cCapturaX11::ReservaMemoria(std::size_t bytes) {
    if (bytes <= m_reservados) return true;
    SueltaMemoria();
    const int numero = shmget(IPC_PRIVATE, bytes, IPC_CREAT | 0600);
    void *memoria = numero >= 0 ? shmat(numero, nullptr, 0) : nullptr;
    bool bien = numero >= 0 && memoria != reinterpret_cast<void *>(-1);
    if (bien) {
        xcb_connection_t *x = m_conexion.Xcb();
        m_segmento = xcb_generate_id(x);
        const XcbPtr<xcb_generic_error_t> error(
            xcb_request_check(x, xcb_shm_attach_checked(x, m_segmento, static_cast<std::uint32_t>(numero), 0)));
        bien = !error && m_conexion.Viva();
        if (!bien) shmdt(memoria);
    }
    // It lives as long as somebody holds it: a reader that is killed leaves nothing behind.
    if (numero >= 0) shmctl(numero, IPC_RMID, nullptr);
    m_compartir = bien;
    if (!bien) return false;
    m_memoria = static_cast<std::uint8_t *>(memoria);
    m_reservados = bytes;
    return true;
}

void cCapturaX11::SueltaMemoria() {
    if (!m_memoria) return;
    if (m_conexion.Viva()) xcb_shm_detach(m_conexion.Xcb(), m_segmento);
    shmdt(m_memoria);
    m_memoria = nullptr;
    m_reservados = 0;
}

}  // namespace ondalis
