// Starts a command line of the system's store: its words as the program and its arguments, quotes kept together, no
// shell in between. The command lives in a session of its own and outlives the reader. Owned by main. Main thread.
#pragma once

#include "settings/cComandosRegistro.h"

namespace ondalis {

class cLanzadorComandos : public LanzadorComandos {
public:
    // False when there is no such program, or it can't be run; how it ends isn't told.
    bool Lanza(const QString &comando) override;
};

}  // namespace ondalis
