// One connection of our own to the X server, served by the event loop. A reader of its own beside Qt's: a part that
// waits for other clients here never holds the windows up. Owned by the adapter that uses it. Main thread.
#pragma once

#include <xcb/xcb.h>

#include <QObject>
#include <QSocketNotifier>
#include <cstdlib>
#include <functional>
#include <memory>

namespace ondalis {

struct LiberaXcb {
    void operator()(void *memoria) const { std::free(memoria); }
};
// A reply, an error or an event of xcb, which come from malloc.
template <class T>
using XcbPtr = std::unique_ptr<T, LiberaXcb>;

class cConexionX : public QObject {
    Q_OBJECT
public:
    // Connects to $DISPLAY. `manejador` receives each event; set once, before the event loop runs.
    explicit cConexionX(std::function<void(const xcb_generic_event_t &)> manejador, QObject *padre = nullptr);
    ~cConexionX() override;

    // False without a server or after it has gone; requests are then harmless and replies null.
    bool Viva() const { return !m_perdida && xcb_connection_has_error(m_conexion) == 0; }
    xcb_connection_t *Xcb() const { return m_conexion; }
    xcb_window_t Raiz() const { return m_raiz; }
    xcb_atom_t Atomo(const char *nombre);

    // Sends what was asked and has events served that a synchronous call may have read from the socket meanwhile: the
    // notifier wouldn't tell of those. To be called after each use from outside an event.
    void Despacha();
    // Serves every event of what has happened on the server up to this call.
    void PonteAlDia();

private:
    void Procesa();

    xcb_connection_t *m_conexion;
    xcb_window_t m_raiz = XCB_NONE;
    std::unique_ptr<QSocketNotifier> m_aviso;
    std::function<void(const xcb_generic_event_t &)> m_manejador;
    bool m_perdida = false;
    bool m_pedido = false;
};

}  // namespace ondalis
