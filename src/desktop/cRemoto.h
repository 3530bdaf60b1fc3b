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
    // `bus`: borrowed; it serves others too.
    cRemoto(cFormPrincipal &form, cCola &cola, const cEstadoVoz &estado, cConexionBus &bus);
    ~cRemoto();
    cRemoto(const cRemoto &) = delete;
    cRemoto &operator=(const cRemoto &) = delete;

private:
    cFormPrincipal &m_form;
    cServicioVoz m_servicio;
    cReproduccion m_controles;
    cMpris m_mpris;
};

}  // namespace ondalis
