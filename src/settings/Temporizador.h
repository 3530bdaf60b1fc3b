// A timer as the system uses it: interval and Enabled. Each expiry is one Tic of the queue. Single-shot inside and
// re-armed before its handler, so that a box opened in a tick doesn't stop it. Main thread.
#pragma once

#include <functional>

namespace ondalis {

class Temporizador {
public:
    virtual ~Temporizador() = default;
    virtual void SetIntervalo(int milisegundos) = 0;
    virtual void SetManejador(std::function<void()> manejador) = 0;
    // Switching on starts a whole interval anew.
    virtual void SetEnabled(bool encendido) = 0;
    virtual bool Enabled() const = 0;
};

}  // namespace ondalis
