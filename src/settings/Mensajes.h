// The one door to message boxes. ui implements it with real boxes, tests with a scripted next answer. Main thread; the
// call returns when the box has been answered.
#pragma once

#include <QString>

namespace ondalis {

class Mensajes {
public:
    virtual ~Mensajes() = default;
    // `pregunta`: Sí and No, true for Sí (`defectoSi` chooses the default button); else Aceptar, true when it was
    // pressed. The box stands in front of everything and is titled `titulo`.
    virtual bool Muestra(const QString &texto, bool pregunta, bool defectoSi, const QString &titulo) = 0;
};

}  // namespace ondalis
