// The screen's pixels from the X server: through shared memory where the server is on this machine, else through the
// connection. A connection of its own. Owned by main. Main thread.
#pragma once

#include <xcb/shm.h>

#include "desktop/cLupa.h"
#include "platform/x11/cConexionX.h"

namespace ondalis {

// How the root window's pixels lie in memory.
struct FormatoPixeles {
    int bits = 0;          // of a pixel
    int relleno = 32;      // bits that a row is a multiple of
    bool alReves = false;  // the server's byte order isn't ours
    std::uint32_t rojo = 0, verde = 0, azul = 0;
};
// Pure. Rows of `datos` as 0xRRGGBB; false when there are too few of them.
bool Descifra(const FormatoPixeles &formato, const std::uint8_t *datos, std::size_t largo, const QSize &tamano,
              ImagenPixeles &copia);

class cCapturaX11 : public CapturaPantalla {
public:
    // `memoriaCompartida` false: as if the server couldn't; for tests.
    explicit cCapturaX11(bool memoriaCompartida = true);
    ~cCapturaX11() override;
    cCapturaX11(const cCapturaX11 &) = delete;
    cCapturaX11 &operator=(const cCapturaX11 &) = delete;

    bool GetEstado(Estado &estado) override;
    bool Copia(const QRect &recorte, ImagenPixeles &copia) override;
    bool Compartida() const { return m_memoria != nullptr; }  // the last copy came that way

private:
    void LeeFormato();
    bool ReservaMemoria(std::size_t bytes);
    void SueltaMemoria();
    bool CopiaCompartida(const QRect &recorte, ImagenPixeles &copia);
    bool CopiaPorLaConexion(const QRect &recorte, ImagenPixeles &copia);
    std::size_t Bytes(const QSize &tamano) const;

    cConexionX m_conexion;
    FormatoPixeles m_formato;
    bool m_compartir;
    xcb_shm_seg_t m_segmento = XCB_NONE;
    std::uint8_t *m_memoria = nullptr;
    std::size_t m_reservados = 0;
};

}  // namespace ondalis
