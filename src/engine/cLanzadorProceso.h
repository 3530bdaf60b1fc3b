// Starts the worker program as a process of its own, joined by a socket pair; the descriptor's number is its first
// argument, and it gets no other one of ours but standard error. Owned by main.
#pragma once

#include <string>
#include <vector>

#include "engine/LanzadorMotor.h"

namespace ondalis {

class cLanzadorProceso final : public LanzadorMotor {
public:
    // `programa`: absolute path. `argumentos` follow the descriptor's number. Workers get the environment of this
    // moment: they are started by any thread, and the toolkit changes that of the process on the main one.
    explicit cLanzadorProceso(std::string programa, std::vector<std::string> argumentos = {});

    // Any thread. The worker dies with the one that calls this, if it asks for that (PR_SET_PDEATHSIG).
    std::unique_ptr<ProcesoMotor> Lanza() override;

private:
    std::string m_programa;
    std::vector<std::string> m_argumentos;
    std::vector<std::string> m_entorno;
};

}  // namespace ondalis
