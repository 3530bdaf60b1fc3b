// Where the program's files are, by the desktop's conventions. Pure but for the environment.
#pragma once

#include <QString>
#include <QStringList>

namespace ondalis::rutas {

QString CarpetaDatos();  // the user's data folder, without "/" at its end
// Where the files that the program only reads are looked for, in this order: the user's own copies, beside the
// executable, the installed data folder.
QStringList CarpetasDeLectura(const QString &carpetaEjecutable);
QString CarpetaEstado();  // log and marks, without "/" at its end
QString FicheroLog();
QString Ejecutable();         // of this very process, without links
QString CarpetaEjecutable();  // without "/" at its end
QString CarpetaAutoarranque();
QString LecturaWav();  // default target of a recording: the music folder, else home
// The engine worker: what ONDALIS_MOTOR names, else beside the executable or in ../libexec/ondalis.
QString ProgramaMotor(const QString &carpetaEjecutable);
// What comes with the program and is only read: help, read-me file, descriptions. Without "/" at its end.
QString CarpetaInstalada(const QString &carpetaEjecutable);

}  // namespace ondalis::rutas
