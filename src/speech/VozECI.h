// What the rest asks of the waiting and recording engine of the "IBM" family beside live speech: settings kept equal to
// the live control's, and silence. Main thread.
#pragma once

#include <QString>
#include <cstdint>

namespace ondalis {

class VozECI {
public:
    virtual ~VozECI() = default;
    virtual void SetHablante(const QString &nombre, std::int32_t lengua) = 0;
    virtual void SetVelocidad(std::int16_t velocidad) = 0;
    virtual void SetVolumen(std::int32_t volumen) = 0;
    virtual void SetAvanzados(std::int16_t tono, std::int16_t fluctuacion, std::int16_t aspereza, std::int16_t diafonia,
                              std::int16_t tamCabeza) = 0;
    virtual void Cancela() = 0;
    // Speaks a text held in memory, which may carry backquote annotations; otherwise as HablaFichero.
    virtual bool Habla(const QString &texto, bool sincrono, const QString &destino, bool avanzados) = 0;
    virtual bool EstaHablando() const = 0;
    // Whether the last Habla that didn't wait, now at its end, has failed; told once. UltimoError has the reason then.
    virtual bool Fallida() = 0;
    // Speaks the content of a text file. `sincrono`: returns when the speech has ended or was cancelled, which is no
    // failure. `destino`: WAV file to write, empty for the sound device. `avanzados`: with the five advanced values
    // set, else with the voice's own. False: failed, and UltimoError tells why.
    virtual bool HablaFichero(const QString &fichero, bool sincrono, const QString &destino, bool avanzados) = 0;
    virtual QString UltimoError() const = 0;  // "cVozECI: " and the text, which is empty after a success
};

}  // namespace ondalis
