// The lives that the program can lead once its command line has been read. Each returns the exit code of the process.
// Main thread.
#pragma once

#include <QString>
#include <optional>

#include "platform/sistema/cInstancia.h"
#include "settings/cLog.h"

namespace ondalis {

constexpr int kSinPantalla = 3;
// A batch job that was told to end by a signal; as a shell tells of SIGTERM.
constexpr int kLoteInterrumpido = 128 + 15;

// How the program is started: a window, or without a display the same lines on standard output.
int MuestraAyuda(char **argv);
// The second copy's message; without a display it goes to standard error.
int AvisaYaArrancado(char **argv, cLog &log);
// The reader until it is told to end. Without a display a line on standard error and in the log.
int Reside(char **argv, const QString &linea, cLog &log);

// Shows one message box for a process without windows: the text comes on standard input, kind and title are the
// arguments behind the first one. Returns the answer as cMensajesAparte has it, kSinPantalla without a display.
int MuestraCaja(int argc, char **argv);

// The batch job of the line, carried out to its end; nothing when the line asks for none. The exit code is 0 however
// the job went, as nobody is told of that but the user, unless it was interrupted.
std::optional<int> EjecutaLineaComandos(char **argv, const QString &linea, cLog &log,
                                        std::optional<cInstancia> &instancia);

}  // namespace ondalis
