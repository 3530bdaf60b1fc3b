// Lets the user hear the conversion of a dictionary entry as the accepted voice says it. Main thread.
#pragma once

#include <QString>

#include "reader/cFormPrincipal.h"

namespace ondalis {

// Of an active program: a reading in course is stopped, and the icon says that it is busy until the call ends, however
// it ends. "IBM" returns at once, SAPI 5 when the text has been heard. Throws ErrorFallo when the engine refuses.
void PruebaConversion(const ColaboradoresPrincipal &lector, cFormPrincipal &form, const QString &texto);

}  // namespace ondalis
