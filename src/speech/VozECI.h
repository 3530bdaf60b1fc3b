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
};

}  // namespace ondalis
