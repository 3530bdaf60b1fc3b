// The lives that the program can lead once its command line has been read. Each returns the exit code of the process.
// Main thread.
#pragma once

#include <QString>

#include "settings/cLog.h"

namespace ondalis {

constexpr int kLoteFallido = 1;
constexpr int kSinPantalla = 3;

// How the program is started: a window, or without a display the same lines on standard output.
int MuestraAyuda(char **argv);
// The second copy's message; without a display it goes to standard error.
int AvisaYaArrancado(char **argv, cLog &log);
// The reader until it is told to end. Without a display a line on standard error and in the log.
int Reside(char **argv, const QString &linea, cLog &log);

// A batch line ends here with an error on standard error and in the log: this version can't speak from the command
// line. True when it was one. No window, no display.
bool EjecutaLineaComandos(const QString &linea, cLog &log);

}  // namespace ondalis
