// Keeps the program within reach on a desktop without a notification area: when there has been no place for the icon
// for a while, a small window with the menu's entries stands in for it, and says so; it goes when a place comes. Owned
// by main. Main thread.
#pragma once

#include <functional>

#include "settings/Temporizador.h"
#include "settings/cLog.h"

namespace ondalis {

class cSinBandeja {
public:
    // A desktop that is just starting, or whose panel starts again, gets so long.
    static constexpr int kEsperaMs = 5000;

    struct Puertos {
        std::function<bool()> haySitio;
        std::function<void(bool)> muestra;           // the window: shown, hidden
        std::function<void(const QString &)> avisa;  // spoken
    };
    // `espera` is used by this object alone.
    cSinBandeja(Temporizador &espera, cLog &log, Puertos puertos);

    // Looks anew: at the start, and whenever the place may have come or gone.
    void Revisa();
    bool EnLugarDelIcono() const { return m_mostrada; }

private:
    void Vence();

    Temporizador &m_espera;
    cLog &m_log;
    Puertos m_puertos;
    bool m_mostrada = false;
};

}  // namespace ondalis
