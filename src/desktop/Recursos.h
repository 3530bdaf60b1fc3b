// The program's resources: sounds under ":/sonidos/NAME.wav". They stand in a static library, so whoever reads them
// says so first. Main thread; harmless when repeated.
#pragma once

namespace ondalis {

void RegistraSonidos();

}  // namespace ondalis
