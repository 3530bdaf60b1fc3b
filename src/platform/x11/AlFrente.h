// Brings a window of ours to the front, as a pager would: a window manager that keeps programs from stealing the focus
// obeys the user's own tools.
#pragma once

#include <cstdint>

namespace ondalis {

void TraeAlFrente(std::uint32_t ventana);

}  // namespace ondalis
