// What the user types in any application, as the session hears it. keys/cGanchoTeclado implements it over the window
// system, tests script it. Main thread.
#pragma once

#include <QString>
#include <functional>

namespace ondalis {

// One press, also each repetition of a key held.
struct TeclaEscrita {
    // Bits of `mayusculas`: modifiers that were down.
    static constexpr int Mayus = 1, Control = 2, Alt = 4, Super = 8;

    int virtualKey = 0;  // 0: a key without like in the table
    int mayusculas = 0;
    // The characters that the press gives, control characters too (backspace 8, tab 9, carriage return 13, escape 27).
    // Empty: a modifier, a combination, a dead key, an arrow.
    QString texto = {};
    bool operator==(const TeclaEscrita &) const = default;
};

class GanchoTeclado {
public:
    virtual ~GanchoTeclado() = default;
    // From here on presses are told; harmless when they are already.
    virtual void IniciaHook() = 0;
    // Nothing is told any more, presses that waited neither; harmless when it is so already.
    virtual void TerminaHook() = 0;
    // Called for each press, in order, from the event loop.
    virtual void SetTecleada(std::function<void(const TeclaEscrita &)> tecleada) = 0;
};

// Without a window system nobody types.
class SinGanchoTeclado : public GanchoTeclado {
public:
    void IniciaHook() override {}
    void TerminaHook() override {}
    void SetTecleada(std::function<void(const TeclaEscrita &)>) override {}
};

}  // namespace ondalis
