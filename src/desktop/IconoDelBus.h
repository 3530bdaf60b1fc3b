// A tray icon of our own on the session bus, for what the toolkit's can't do: it settles for one kind of panel with the
// first icon of the process. platform implements it, tests script it. Main thread.
#pragma once

#include <QPoint>
#include <functional>
#include <vector>

#include "desktop/AmpliacionLupa.h"

namespace ondalis {

class IconoDelBus {
public:
    virtual ~IconoDelBus() = default;
    // Shows it to the watcher that is there now, with `imagenes`: one picture in several sizes, ARGB. Once more for
    // each new watcher.
    virtual void Muestra(std::vector<ImagenPixeles> imagenes) = 0;
    // Another picture, while it is shown.
    virtual void Cambia(std::vector<ImagenPixeles> imagenes) = 0;
    virtual void Quita() = 0;  // harmless when it isn't shown
    virtual void SetAlPulsar(std::function<void()> aviso) = 0;
    virtual void SetAlPedirMenu(std::function<void(const QPoint &)> aviso) = 0;  // where on the screen, device pixels
};

}  // namespace ondalis
