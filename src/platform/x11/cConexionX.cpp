#include "platform/x11/cConexionX.h"

#include <cstring>

namespace ondalis {

cConexionX::cConexionX(std::function<void(const xcb_generic_event_t &)> manejador, QObject *padre)
    : QObject(padre), m_manejador(std::move(manejador)) {
    int pantalla = 0;
    m_conexion = xcb_connect(nullptr, &pantalla);
    if (xcb_connection_has_error(m_conexion) != 0) {
        m_perdida = true;
        return;
    }
    auto pantallas = xcb_setup_roots_iterator(xcb_get_setup(m_conexion));
    for (; pantalla > 0 && pantallas.rem > 1; --pantalla) xcb_screen_next(&pantallas);
    m_raiz = pantallas.data->root;
    m_aviso = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_conexion), QSocketNotifier::Read);
    connect(m_aviso.get(), &QSocketNotifier::activated, this, [this] { Procesa(); });
}

cConexionX::~cConexionX() {
    m_aviso.reset();
    xcb_disconnect(m_conexion);
}

xcb_atom_t cConexionX::Atomo(const char *nombre) {
    const auto peticion = xcb_intern_atom(m_conexion, 0, static_cast<std::uint16_t>(std::strlen(nombre)), nombre);
    const XcbPtr<xcb_intern_atom_reply_t> respuesta(xcb_intern_atom_reply(m_conexion, peticion, nullptr));
    return respuesta ? respuesta->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

void cConexionX::Despacha() {
    xcb_flush(m_conexion);
    if (m_pedido || m_perdida) return;
    m_pedido = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_pedido = false;
            Procesa();
        },
        Qt::QueuedConnection);
}

void cConexionX::PonteAlDia() {
    if (m_perdida) return;
    // Any answer of the server comes behind the events before it.
    const XcbPtr<xcb_get_input_focus_reply_t> respuesta(
        xcb_get_input_focus_reply(m_conexion, xcb_get_input_focus(m_conexion), nullptr));
    Procesa();
}

void cConexionX::Procesa() {
    // The loop also finds what a reply waited for in a handler has read: it asks again after each event.
    while (const XcbPtr<xcb_generic_event_t> evento{xcb_poll_for_event(m_conexion)}) m_manejador(*evento);
    xcb_flush(m_conexion);
    if (xcb_connection_has_error(m_conexion) != 0 && !m_perdida) {
        m_perdida = true;
        m_aviso->setEnabled(false);  // a dead socket stays readable for ever
    }
}

}  // namespace ondalis
