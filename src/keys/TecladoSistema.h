// The two sides that the hearing of typed keys stands on: the window system's key presses and foreground window, and
// the accessibility service's focused object. platform/ implements them, tests script them. Main thread.
#pragma once

#include <functional>

#include "keys/GanchoTeclado.h"

namespace ondalis {

class TecladoSistema {
public:
    virtual ~TecladoSistema() = default;
    // No key is taken away from anybody. Between Termina and Inicia nothing runs.
    virtual void Inicia() = 0;
    virtual void Termina() = 0;
    virtual void SetTecla(std::function<void(const TeclaEscrita &)> tecla) = 0;
    // The window in front has changed, also once after Inicia. `proceso`: its program's process, 0 where it doesn't
    // say; a press told before belongs to the window before.
    virtual void SetVentana(std::function<void(int proceso)> ventana) = 0;
    // A window of this very program has the keyboard, and its focus is in a field that hides what is typed.
    virtual bool EnSecretoPropio() = 0;
};

class FocoAccesible {
public:
    // What the focused object is for us.
    enum class Rol { Desconocido, Corriente, Secreto };

    virtual ~FocoAccesible() = default;
    virtual void Inicia() = 0;
    virtual void Termina() = 0;
    // A program of process `proceso` has a new focus and is being asked what it is. An answer comes in any case within
    // seconds.
    virtual void SetPregunta(std::function<void(int proceso)> pregunta) = 0;
    // The answer to the newest question about that process. Desconocido: it doesn't say.
    virtual void SetRespuesta(std::function<void(int proceso, Rol rol)> respuesta) = 0;
};

}  // namespace ondalis
