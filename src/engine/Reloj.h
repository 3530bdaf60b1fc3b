// The clock as a port: monotonic, so that neither a changed wall clock nor a test needs a sleep. No Qt.
#pragma once

#include <chrono>

namespace ondalis {

class Reloj {
public:
    virtual ~Reloj() = default;
    // Time since any fixed moment; never goes back. Any thread.
    virtual std::chrono::nanoseconds Ahora() const = 0;
};

class cRelojMonotono final : public Reloj {
public:
    std::chrono::nanoseconds Ahora() const override {
        return std::chrono::duration_cast<std::chrono::nanoseconds>(
            std::chrono::steady_clock::now().time_since_epoch());
    }
};

}  // namespace ondalis
