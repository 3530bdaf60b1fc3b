// Starts the worker program as a process of its own, joined by a socket pair; the descriptor's number is its first
// argument, and it gets no other one of ours but standard error. Owned by main.
#pragma once

#include <string>
#include <vector>

#include "engine/LanzadorMotor.h"

namespace ondalis {

class cLanzadorProceso final : public LanzadorMotor {
public:
    // `programa`: absolute path. `argumentos` follow the descriptor's number.
    explicit cLanzadorProceso(std::string programa, std::vector<std::string> argumentos = {});

    // The worker dies with the thread that calls this, if it asks for that (PR_SET_PDEATHSIG).
    std::unique_ptr<ProcesoMotor> Lanza() override;

private:
    std::string m_programa;
    std::vector<std::string> m_argumentos;
};

}  // namespace ondalis
