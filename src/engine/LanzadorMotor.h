// Where engine workers come from: the real one spawns a process, tests script one in their own process. No Qt.
#pragma once

#include <memory>

namespace ondalis {

// One living worker at the other end of a stream socket. Destroying it kills the worker at once, whatever state it is
// in, leaves no zombie, and closes the socket.
class ProcesoMotor {
public:
    virtual ~ProcesoMotor() = default;
    // Our end, non-blocking; stays this object's.
    virtual int Descriptor() const = 0;
};

class LanzadorMotor {
public:
    virtual ~LanzadorMotor() = default;
    // Null when no worker can be started. Called on the pump thread; returns within a few milliseconds.
    virtual std::unique_ptr<ProcesoMotor> Lanza() = 0;
};

}  // namespace ondalis
