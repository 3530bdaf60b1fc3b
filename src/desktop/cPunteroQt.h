// The mouse pointer over this program's windows. Owned by main. Main thread.
#pragma once

#include "settings/cCursor.h"

namespace ondalis {

class cPunteroQt : public PunteroPantalla {
public:
    int Puntero() const override { return m_puntero; }
    void SetPuntero(int puntero) override;

private:
    int m_puntero = 0;
};

}  // namespace ondalis
