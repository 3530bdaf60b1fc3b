// Priority of the process by the nice values of its threads: raised by RealtimeKit, which may do that for any user,
// else by ourselves. Without either nothing changes and the caller is told. Owned by main. Main thread.
#pragma once

#include "settings/cGeneral.h"

namespace ondalis {

class cPrioridadUnix : public PrioridadProceso {
public:
    cPrioridadUnix();
    // Both wait for RealtimeKit no longer than LimiteMs in all, and only to raise.
    bool SetClase(bool alta) override;
    bool SetHilo(bool alta) override;

    static constexpr int LimiteMs = 250;

private:
    int m_inicial;  // the nice value that the process was started with
};

}  // namespace ondalis
