// Starts a command line as a process of its own, in a session of its own and with nothing of ours but the environment
// and the current folder. Owned by main. Main thread.
#pragma once

#include "settings/cComandosRegistro.h"

namespace ondalis {

class cLanzadorComandosUnix : public LanzadorComandos {
public:
    // Without a shell: blanks part the arguments unless double quotes hold them together; no other sign has a meaning.
    // False when there is no such program. Doesn't wait for its end.
    bool Lanza(const QString &comando) override;
};

}  // namespace ondalis
