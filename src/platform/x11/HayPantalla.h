// Whether the toolkit will find a desktop: asked first, because it aborts the process where there is none.
#pragma once

namespace ondalis {

// A Wayland compositor is named, or the X server of $DISPLAY answers, or the environment chooses the toolkit's platform
// itself.
bool HayPantalla();

}  // namespace ondalis
