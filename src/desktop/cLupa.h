// The magnifier's logic: ten times a second the part of the screen round the pointer, at twice its size. It knows
// nothing of the reading. Its window is the view that it paints on; screen and window are ports. Owned by the window's
// owner. Main thread.
#pragma once

#include <optional>
#include <vector>

#include "desktop/AmpliacionLupa.h"
#include "settings/SitioVentana.h"
#include "settings/Temporizador.h"
#include "settings/cGeneral.h"

namespace ondalis {

// The screen as the window system shows it, all monitors together, in device pixels.
class CapturaPantalla {
public:
    virtual ~CapturaPantalla() = default;
    struct Estado {
        QPoint puntero;
        QSize tamano;
        ImagenPuntero imagen;

        bool operator==(const Estado &) const = default;
    };
    // False when the screen can't be asked.
    virtual bool GetEstado(Estado &estado) = 0;
    // The pixels of `recorte`, which lies inside the screen and isn't empty. The pointer isn't in them.
    virtual bool Copia(const QRect &recorte, ImagenPixeles &copia) = 0;
};

// The magnifier's window as the logic uses it.
class VistaLupa {
public:
    virtual ~VistaLupa() = default;
    virtual QSize Interior() const = 0;  // device pixels
    virtual double Escala() const = 0;   // device pixels a logical pixel
    virtual QRect Sitio() const = 0;     // place of the frame and size of the inside, in logical pixels
    virtual std::vector<QRect> Monitores() const = 0;
    virtual void Coloca(const QPoint &lugar, const QSize &tamano) = 0;
    virtual void Pinta(ImagenPixeles cuadro) = 0;
};

class cLupa {
public:
    static constexpr QSize TamanoDiseno{400, 300};  // logical pixels
    // Why a window is closed: by hand (its close box) or by the program.
    enum ModoDescarga { PorElUsuario = 0, PorElPrograma = 1 };

    // `chequeaPantalla` becomes this object's own: interval and handler are set here.
    cLupa(CapturaPantalla &captura, VistaLupa &vista, Temporizador &chequeaPantalla, cRegistro &registro,
          cGeneral &general);

    // Place and size of the window from the store.
    void Form_Load();
    // Closed by hand the magnifier stays off, at the next start too; for any other reason the option stays.
    void Form_QueryUnload(ModoDescarga modo);
    // Keeps place and size.
    void Form_Unload();
    // Nothing is looked at while the window can't be seen.
    void SetVisible(bool visible);

    void ChequeaPantalla_Timer();

private:
    void Amplia(const CapturaPantalla::Estado &estado);

    CapturaPantalla &m_captura;
    VistaLupa &m_vista;
    Temporizador &m_chequeaPantalla;
    cRegistro &m_registro;
    cGeneral &m_general;
    SitioVentana m_sitio;
    // What the picture on the window was made of; nothing when it must be made anew.
    struct Hecho {
        CapturaPantalla::Estado estado;
        QSize ventana;
        ImagenPixeles copia;
    };
    std::optional<Hecho> m_hecho;
    bool m_fallando = false;  // the log holds the first failure of a row, not ten a second
};

}  // namespace ondalis
