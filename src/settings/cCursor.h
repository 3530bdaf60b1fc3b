// The scoped wait cursor: remembers the screen's pointer and puts it back however the procedure ends. A local object of
// the procedure that needs it. Main thread.
#pragma once

#include "settings/cCola.h"

namespace ondalis {

// The screen's mouse pointer. platform or ui implements it.
class PunteroPantalla {
public:
    virtual ~PunteroPantalla() = default;
    virtual int Puntero() const = 0;  // 0 default, 11 hourglass
    virtual void SetPuntero(int puntero) = 0;
};

class cCursor {
public:
    static constexpr int RelojDeArena = 11;

    cCursor(PunteroPantalla &pantalla, cCola &cola)
        : m_pantalla(pantalla), m_cola(cola), m_anterior(pantalla.Puntero()) {}
    ~cCursor() { SetPuntero(m_anterior); }
    cCursor(const cCursor &) = delete;
    cCursor &operator=(const cCursor &) = delete;

    // Sets the pointer and lets pending events run.
    void SetPuntero(int puntero) {
        m_pantalla.SetPuntero(puntero);
        m_cola.DejaCorrer();
    }

private:
    PunteroPantalla &m_pantalla;
    cCola &m_cola;
    int m_anterior;
};

}  // namespace ondalis
