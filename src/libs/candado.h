// A lock file of the kind that its holder keeps locked by flock as well as by its being there. Stateless.
#pragma once

namespace ondalis {

// Takes away a lock file that nobody holds any more, whatever it says of its holder: a crash of the machine leaves one
// without its text, a kill between making and writing it an empty one, another machine's one has a name that can't be
// asked. One that is there for less than 200 ms is left alone: its maker may be about to lock it. Harmless when there
// is none.
void SueltaCandadoHuerfano(const char *ruta);

}  // namespace ondalis
