// What other programs reach of the reader on the session bus: its commands and the desktop's player controls, each
// joined to the main window's controller. Made by main when the reader is ready. Main thread.
#pragma once

#include "platform/dbus/cConexionBus.h"
#include "platform/dbus/cMpris.h"
#include "platform/dbus/cServicioVoz.h"
#include "reader/cFormPrincipal.h"
#include "reader/cReproduccion.h"

namespace ondalis {

class cRemoto {
public:
    // Connects from the event loop: a bus that is slow or missing holds nothing up.
    cRemoto(cFormPrincipal &form, cCola &cola, const cEstadoVoz &estado, cLog &log);
    ~cRemoto();
    cRemoto(const cRemoto &) = delete;
    cRemoto &operator=(const cRemoto &) = delete;

private:
    cFormPrincipal &m_form;
    cConexionBus m_bus;
    cServicioVoz m_servicio;
    cReproduccion m_controles;
    cMpris m_mpris;
};

}  // namespace ondalis
