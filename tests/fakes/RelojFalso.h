// A clock that stands until it is told.
#pragma once

#include <atomic>

#include "engine/Reloj.h"

namespace ondalis {

class RelojFalso final : public Reloj {
public:
    std::chrono::nanoseconds Ahora() const override { return std::chrono::nanoseconds(m_ns.load()); }
    void Avanza(std::chrono::nanoseconds cuanto) { m_ns += cuanto.count(); }

private:
    std::atomic<std::int64_t> m_ns{1'000'000'000};
};

}  // namespace ondalis
