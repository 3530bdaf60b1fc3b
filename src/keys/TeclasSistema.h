// The window system's side of the hot keys: grabs a combination for this program in every application. platform/x11
// implements it, tests script it. Main thread.
#pragma once

#include <cstdint>
#include <functional>

namespace ondalis {

class TeclasSistema {
public:
    virtual ~TeclasSistema() = default;
    // `identificador` names the key in presses; `modificadores`: 1 Alt, 2 Control, 4 Shift. False when another program
    // or another identifier holds the combination; it is tried again when that one lets go.
    virtual bool Registra(int identificador, std::uint32_t modificadores, int virtualKey) = 0;
    virtual void Libera(int identificador) = 0;
    // Called on the main thread for each press, outside any handler of ours. `repetida`: an auto-repeat of a key held.
    virtual void SetPulsada(std::function<void(int identificador, bool repetida)> pulsada) = 0;
};

}  // namespace ondalis
