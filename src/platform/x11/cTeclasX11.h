// Hot keys on the X server: a passive grab of each combination on the root window, which takes the key away from the
// other programs, and raw key events beside it, which come also while another program's popup blocks grabs. Both tell
// of one press once. Owned by main. Main thread.
#pragma once

#include <QTimer>
#include <map>
#include <set>

#include "keys/TeclasSistema.h"
#include "platform/x11/TablaTeclasX.h"
#include "platform/x11/cConexionX.h"
#include "settings/cLog.h"

namespace ondalis {

class cTeclasX11 : public TeclasSistema {
public:
    // `reintentoMs`: how often a combination held by another program is tried again; nothing runs while there is none.
    explicit cTeclasX11(cLog &log, int reintentoMs = 2000);
    ~cTeclasX11() override;  // gives every grab back
    cTeclasX11(const cTeclasX11 &) = delete;
    cTeclasX11 &operator=(const cTeclasX11 &) = delete;

    bool Conectado() const { return m_conexion.Viva(); }

    bool Registra(int identificador, std::uint32_t modificadores, int virtualKey) override;
    void Libera(int identificador) override;
    void SetPulsada(std::function<void(int, bool)> pulsada) override { m_pulsada = std::move(pulsada); }

    // Whether the combination is ours at this moment.
    bool Concedida(int identificador) const;
    // Rows for which Super+Ctrl is registered, because with Ctrl+Alt the key switches virtual terminals.
    std::vector<int> ConSuper() const;

private:
    struct Fila {
        std::uint32_t modificadores = 0;
        int virtualKey = 0;
        bool concedida = false;
        bool conSuper = false;
        std::uint16_t bits = 0;
        std::vector<CodigoX> codigos;
    };
    struct Apretada {
        int identificador = 0;
        xcb_timestamp_t momento = 0;
    };

    void IniciaXkb();
    void IniciaXinput();
    void Evento(const xcb_generic_event_t &evento);
    void EventoXkb(const xcb_generic_event_t &evento);
    void EventoXinput(const xcb_generic_event_t &evento);
    void Aprieta(std::uint8_t codigo, std::uint16_t estado, xcb_timestamp_t momento, bool deCaptura);
    bool LeeMapa();
    void Remapea();
    void Resuelve(Fila &fila) const;
    bool Concede(int identificador, Fila &fila);
    bool Captura(const Fila &fila);
    void Suelta(Fila &fila);
    bool Choca(int identificador, const Fila &fila) const;
    int Busca(std::uint8_t codigo, std::uint16_t estado) const;
    void Reintenta();

    cLog &m_log;
    cConexionX m_conexion;
    std::function<void(int, bool)> m_pulsada;
    std::map<int, Fila> m_filas;
    std::map<std::uint8_t, Apretada> m_apretadas;  // keys that are down and have fired
    MapaTeclado m_mapa;
    std::uint8_t m_eventoXkb = 0;  // 0: the server has no such extension
    std::uint8_t m_codigoXinput = 0;
    std::uint16_t m_estado = 0;  // modifiers in effect, as the keyboard extension tells them
    QTimer m_remapeo;
    QTimer m_reintento;
};

}  // namespace ondalis
