// The operations that the session calls on the engine in use; the one place that knows the two families apart. Owned by
// main. Main thread.
#pragma once

#include "settings/Fallo.h"
#include "speech/ActorSvr.h"
#include "speech/SpVoice.h"
#include "speech/VozECI.h"
#include "speech/cOpcVoz.h"

namespace ondalis {

class MotorVoz {
public:
    // `sapi5` and `eci` may be null: no SAPI 5 voice object, no recording engine.
    MotorVoz(ActorSvr &voz, SpVoice *sapi5, VozECI *eci, const cOpcVoz &opciones);
    virtual ~MotorVoz() = default;

    // All of them take their values from the voice page's accepted values.
    virtual void Selecciona();
    virtual void FijaVelocidad(int velocidad);
    virtual void FijaVolumen(int volumen);
    virtual void FijaAvanzados();
    // Selecciona, FijaVelocidad, FijaVolumen and, for "IBM", FijaAvanzados: at start-up and on acceptance.
    void AplicaConfiguracion();
    // Speed that the engine in use has now: what is stored after a hot key.
    virtual int VelocidadMotor() const;

    // Live reading with events. `signos`: spoken punctuation, which only SAPI 5 takes here.
    [[nodiscard]] virtual Fallo Habla(const QString &texto, bool signos);
    // Spoken notice; EstadoVoz is already 1. SAPI 5 waits for its end.
    [[nodiscard]] virtual Fallo HablaAviso(const QString &texto);
    // Speaks a plain text file on the device and waits for its end. "IBM" uses the waiting engine, without events; the
    // failure's description is its UltimoError. SAPI 5 delivers its events afterwards.
    [[nodiscard]] virtual Fallo HablaFichero(const QString &fichero);
    virtual void Pausa();
    virtual void Reanuda();
    virtual void Detiene();
    // Nothing of an earlier waiting or recording speech goes on sounding.
    virtual void CancelaECI();
    // Ends whatever a caller further out waits for, at the program's end.
    virtual void CancelaEspera();

private:
    // A test may have left the other family's engine speaking.
    void CallaLaOtra();

    ActorSvr &m_voz;
    SpVoice *m_sapi5;
    VozECI *m_eci;
    const cOpcVoz &m_opciones;
};

}  // namespace ondalis
