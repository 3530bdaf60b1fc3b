#include "platform/x11/cVentanaEnFocoX11.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace ondalis {

bool EsClaseDeConsola(const std::string &clase) {
    static constexpr const char *kClases[] = {
        "xterm",
        "uxterm",
        "urxvt",
        "rxvt",
        "gnome-terminal",
        "gnome-terminal-server",
        "konsole",
        "xfce4-terminal",
        "lxterminal",
        "mate-terminal",
        "terminator",
        "tilix",
        "alacritty",
        "kitty",
        "foot",
        "st-256color",
        "qterminal",
        "yakuake",
        "guake",
        "sakura",
        "terminology",
        "kgx",
        "org.wezfurlong.wezterm",
        "ptyxis",
    };
    std::string minusculas = clase;
    std::transform(minusculas.begin(), minusculas.end(), minusculas.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return std::find_if(std::begin(kClases), std::end(kClases), [&](const char *c) { return minusculas == c; }) !=
           std::end(kClases);
}

bool TieneTerminalPropio(int pid, const std::string &proc) {
    std::error_code error;
    for (const auto &entrada : std::filesystem::directory_iterator(proc, error)) {
        const std::string nombre = entrada.path().filename().string();
        int hijo = 0;
        if (std::from_chars(nombre.data(), nombre.data() + nombre.size(), hijo).ec != std::errc{}) continue;
        std::ifstream fichero(entrada.path() / "stat");
        std::string linea;
        std::getline(fichero, linea);
        // The program's name stands in brackets and may hold anything, brackets too.
        const auto fin = linea.rfind(')');
        if (fin == std::string::npos) continue;
        std::istringstream campos(linea.substr(fin + 1));
        char estado = 0;
        int padre = 0, grupo = 0, sesion = 0, terminal = 0;
        if (campos >> estado >> padre >> grupo >> sesion >> terminal && padre == pid && sesion == hijo && terminal != 0)
            return true;
    }
    return false;
}

cVentanaEnFocoX11::cVentanaEnFocoX11() : m_conexion([](const xcb_generic_event_t &) {}) {
    if (!m_conexion.Viva()) return;
    m_activa = m_conexion.Atomo("_NET_ACTIVE_WINDOW");
    m_pid = m_conexion.Atomo("_NET_WM_PID");
}

std::string cVentanaEnFocoX11::Propiedad(xcb_window_t ventana, xcb_atom_t propiedad) {
    xcb_connection_t *x = m_conexion.Xcb();
    const XcbPtr<xcb_get_property_reply_t> respuesta(xcb_get_property_reply(
        x, xcb_get_property(x, 0, ventana, propiedad, XCB_GET_PROPERTY_TYPE_ANY, 0, 256), nullptr));
    if (!respuesta) return {};
    return {static_cast<const char *>(xcb_get_property_value(respuesta.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(respuesta.get()))};
}

std::uint32_t cVentanaEnFocoX11::Numero(xcb_window_t ventana, xcb_atom_t propiedad) {
    const std::string datos = Propiedad(ventana, propiedad);
    std::uint32_t valor = 0;
    if (datos.size() >= sizeof valor) std::memcpy(&valor, datos.data(), sizeof valor);
    return valor;
}

std::uint32_t cVentanaEnFocoX11::Ventana() { return m_conexion.Viva() ? Numero(m_conexion.Raiz(), m_activa) : 0; }

bool cVentanaEnFocoX11::EsConsola() {
    const xcb_window_t ventana = Ventana();
    if (ventana == XCB_NONE) return false;
    std::istringstream clases(Propiedad(ventana, XCB_ATOM_WM_CLASS));
    for (std::string clase; std::getline(clases, clase, '\0');)
        if (EsClaseDeConsola(clase)) return true;
    const auto pid = static_cast<int>(Numero(ventana, m_pid));
    return pid > 0 && TieneTerminalPropio(pid);
}

}  // namespace ondalis
