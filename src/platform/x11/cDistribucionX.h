// The keyboard's layout and state as characters: what a press gives, dead keys and Compose included. Of the connection
// that it is made with; the owner tells it of the keyboard extension's events. Main thread.
#pragma once

#include <xcb/xcb.h>

#include <QString>

struct xkb_context;
struct xkb_keymap;
struct xkb_state;
struct xkb_compose_table;
struct xkb_compose_state;

namespace ondalis {

class cDistribucionX {
public:
    // The locale for Compose is the user's, and Spanish where his has no such table.
    explicit cDistribucionX(xcb_connection_t *conexion);
    ~cDistribucionX();
    cDistribucionX(const cDistribucionX &) = delete;
    cDistribucionX &operator=(const cDistribucionX &) = delete;

    // False where the server has no keyboard that can be read; presses then give nothing.
    bool Lista() const { return m_estado != nullptr; }
    // Reads layout and state anew. A round trip.
    void Relee();
    struct Estado {
        std::uint8_t base, latente, fijo;
        std::uint8_t grupoBase, grupoLatente, grupoFijo;
    };
    void SetEstado(const Estado &estado);

    // Bits of TeclaEscrita::mayusculas.
    int Modificadores() const;
    int VirtualKey(std::uint8_t codigo) const;
    // The characters that this press gives; it counts for a dead key that waits.
    QString Caracteres(std::uint8_t codigo);
    bool SeRepite(std::uint8_t codigo) const;
    // A dead key that waits is forgotten.
    void OlvidaMuerta();

private:
    void IniciaCompose();
    bool Activo(const char *modificador) const;

    xcb_connection_t *m_conexion;
    xkb_context *m_contexto = nullptr;
    xkb_keymap *m_mapa = nullptr;
    xkb_state *m_estado = nullptr;
    xkb_compose_table *m_tabla = nullptr;
    xkb_compose_state *m_compose = nullptr;
};

}  // namespace ondalis
