// The foreground window as the window manager tells it. Owned by main. Main thread.
#pragma once

#include <string>

#include "platform/x11/cConexionX.h"
#include "reader/Puertos.h"

namespace ondalis {

// Pure parts. `clase`: the instance and the class of WM_CLASS, either of them.
bool EsClaseDeConsola(const std::string &clase);
// A child of process `pid` leads a session that has a terminal: the process is a terminal window. `proc`: "/proc".
bool TieneTerminalPropio(int pid, const std::string &proc = "/proc");

class cVentanaEnFocoX11 : public VentanaEnFoco {
public:
    cVentanaEnFocoX11();
    // A terminal is told by its class or, whatever its name, by what its process does.
    bool EsConsola() override;
    std::uint32_t Ventana() override;

private:
    std::uint32_t Numero(xcb_window_t ventana, xcb_atom_t propiedad);
    std::string Propiedad(xcb_window_t ventana, xcb_atom_t propiedad);

    cConexionX m_conexion;
    xcb_atom_t m_activa = 0, m_pid = 0;
};

}  // namespace ondalis
