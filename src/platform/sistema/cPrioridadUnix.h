// Priority of the process by its nice value. Without the right to raise it nothing changes and the caller is told.
// Owned by main. Main thread.
#pragma once

#include "settings/cGeneral.h"

namespace ondalis {

class cPrioridadUnix : public PrioridadProceso {
public:
    cPrioridadUnix();
    bool SetClase(bool alta) override;
    bool SetHilo(bool alta) override;

private:
    int m_inicial;  // the nice value that the process was started with
};

}  // namespace ondalis
