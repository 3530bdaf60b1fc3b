// The key presses of all programs on the X server, by raw events, which take no key away, and the window in front. Its
// connection exists only between Inicia and Termina. Owned by main. Main thread.
//
// A program that grabs the keyboard for itself alone isn't heard while it does: screen lockers, questions for a
// passphrase and menus do that. The server sees to it for clients of version 2.0 of the input extension; that is why
// this one says so.
//
// The server tells of no repetitions in raw events: they are made here at its own delay and rate, and may be one more
// or less than what the program in front gets.
#pragma once

#include <QTimer>
#include <optional>

#include "keys/TecladoSistema.h"
#include "platform/x11/cConexionX.h"
#include "platform/x11/cDistribucionX.h"
#include "settings/cLog.h"

namespace ondalis {

class cTecladoX11 : public TecladoSistema {
public:
    explicit cTecladoX11(cLog &log) : m_log(log) {}

    void Inicia() override;
    void Termina() override;
    void SetTecla(std::function<void(const TeclaEscrita &)> tecla) override { m_tecla = std::move(tecla); }
    void SetVentana(std::function<void(int)> ventana) override { m_ventana = std::move(ventana); }
    bool EnSecretoPropio() override;

    // It hears: the server is there and has what is needed.
    bool Oye() const { return m_distribucion && m_distribucion->Lista() && m_codigoXinput != 0; }

private:
    bool IniciaXkb();
    void IniciaXinput();
    void LeeRepeticion();
    void LeeVentana();
    void Evento(const xcb_generic_event_t &evento);
    void EventoXkb(const xcb_generic_event_t &evento);
    void EventoXinput(const xcb_generic_event_t &evento);
    void Aprieta(std::uint8_t codigo);
    void Repite();
    std::uint32_t Propiedad(xcb_window_t ventana, xcb_atom_t propiedad);

    cLog &m_log;
    std::function<void(const TeclaEscrita &)> m_tecla;
    std::function<void(int)> m_ventana;
    std::unique_ptr<cConexionX> m_conexion;
    std::optional<cDistribucionX> m_distribucion;
    std::uint8_t m_eventoXkb = 0, m_codigoXinput = 0;
    xcb_atom_t m_activa = 0, m_pid = 0;
    xcb_window_t m_enFrente = XCB_NONE;
    std::unique_ptr<QTimer> m_repeticion, m_remapeo;
    std::uint8_t m_repetida = 0;         // key code; 0: none
    int m_retraso = 0, m_intervalo = 0;  // milliseconds; 0: nothing is repeated
    std::uint8_t m_seRepiten[32] = {};   // a bit a key code
};

}  // namespace ondalis
