// Where the program's files are, by the desktop's conventions. Pure but for the environment.
#pragma once

#include <QString>

namespace ondalis::rutas {

QString CarpetaDatos();   // the user's data folder, without "/" at its end
QString CarpetaEstado();  // log and marks, without "/" at its end
QString FicheroLog();
QString Ejecutable();         // of this very process, without links
QString CarpetaEjecutable();  // without "/" at its end
QString CarpetaAutoarranque();
QString LecturaWav();  // default target of a recording: the music folder, else home
// The engine worker: what ONDALIS_MOTOR names, else beside the executable or in ../libexec/ondalis.
QString ProgramaMotor(const QString &carpetaEjecutable);

}  // namespace ondalis::rutas
