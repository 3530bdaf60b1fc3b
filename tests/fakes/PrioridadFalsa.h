// A process priority that remembers what it was set to, and refuses when told.
#pragma once

#include <optional>

#include "settings/cGeneral.h"

namespace ondalis::prueba {

class PrioridadFalsa : public PrioridadProceso {
public:
    bool SetClase(bool alta) override {
        clase = alta;
        return !niegaClase;
    }
    bool SetHilo(bool alta) override {
        hilo = alta;
        return !niegaHilo;
    }

    std::optional<bool> clase, hilo;
    bool niegaClase = false;
    bool niegaHilo = false;
};

}  // namespace ondalis::prueba
