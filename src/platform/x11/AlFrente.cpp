#include "platform/x11/AlFrente.h"

#include "platform/x11/cConexionX.h"

namespace ondalis {

void TraeAlFrente(std::uint32_t ventana) {
    constexpr std::uint32_t kOrigenHerramienta = 2;
    cConexionX x([](const xcb_generic_event_t &) {});
    if (!x.Viva()) return;
    xcb_client_message_event_t aviso{};
    aviso.response_type = XCB_CLIENT_MESSAGE;
    aviso.format = 32;
    aviso.window = ventana;
    aviso.type = x.Atomo("_NET_ACTIVE_WINDOW");
    aviso.data.data32[0] = kOrigenHerramienta;
    xcb_send_event(x.Xcb(), 0, x.Raiz(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&aviso));
    xcb_flush(x.Xcb());
}

}  // namespace ondalis
