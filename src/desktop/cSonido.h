// The eight notice sounds, played from resources; a call returns when its sound has ended. Owned by main. Main thread.
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

#include "settings/cCola.h"

namespace ondalis {

// Plays one WAV sample on a stream of its own. platform/audio implements it, tests record the names.
class SalidaSonido {
public:
    virtual ~SalidaSonido() = default;
    // Starts the sample (a complete WAV file; it stays alive until the end). `alTerminar` is called once from any
    // thread when it has been heard or dropped. False, without a call, when there is no sound server.
    virtual bool Reproduce(const QByteArray &wav, std::function<void()> alTerminar) = 0;
};

class cSonido {
public:
    cSonido(SalidaSonido &salida, cCola &cola) : m_salida(salida), m_cola(cola) {}
    virtual ~cSonido() = default;
    // Plays the resource of that name and waits for its end: its length plus 200 ms at most, not at all without a
    // server. A name that doesn't exist is silence.
    virtual void Reproduce(const QString &nombre);

    // The resource's bytes; empty when there is none.
    static QByteArray Recurso(const QString &nombre);

protected:
    // Plays that sample in the same way; an empty one is silence.
    void Toca(const QByteArray &wav);

private:
    SalidaSonido &m_salida;
    cCola &m_cola;
};

}  // namespace ondalis
