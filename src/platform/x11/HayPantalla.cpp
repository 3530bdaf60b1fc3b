#include "platform/x11/HayPantalla.h"

#include <xcb/xcb.h>

#include <QByteArray>

namespace ondalis {

bool HayPantalla() {
    const QByteArray plataforma = qgetenv("QT_QPA_PLATFORM");
    if (!plataforma.isEmpty() && !plataforma.startsWith("xcb")) return true;
    if (plataforma.isEmpty() && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) return true;
    if (qEnvironmentVariableIsEmpty("DISPLAY")) return false;
    xcb_connection_t *conexion = xcb_connect(nullptr, nullptr);
    const bool responde = xcb_connection_has_error(conexion) == 0;
    xcb_disconnect(conexion);
    return responde;
}

}  // namespace ondalis
