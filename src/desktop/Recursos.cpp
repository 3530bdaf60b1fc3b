#include "desktop/Recursos.h"

#include <QtGlobal>

// The macro declares a function of the global namespace.
static void Registra() { Q_INIT_RESOURCE(sonidos); }

namespace ondalis {

void RegistraSonidos() { Registra(); }

}  // namespace ondalis
