#include "desktop/Rutas.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace ondalis::rutas {

QString CarpetaDatos() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/ondalis");
}

QStringList CarpetasDeLectura(const QString &carpetaEjecutable) {
    return {CarpetaDatos(), carpetaEjecutable,
            QDir::cleanPath(carpetaEjecutable + QStringLiteral("/../share/ondalis"))};
}

QString CarpetaEstado() {
    QString estado = qEnvironmentVariable("XDG_STATE_HOME");
    // The conventions want a relative path ignored.
    if (!QDir::isAbsolutePath(estado)) estado = QDir::homePath() + QStringLiteral("/.local/state");
    return estado + QStringLiteral("/ondalis");
}

QString FicheroLog() { return CarpetaEstado() + QStringLiteral("/Ondalis.log"); }

QString Ejecutable() { return QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget(); }

QString CarpetaEjecutable() { return QFileInfo(Ejecutable()).absolutePath(); }

QString CarpetaAutoarranque() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/autostart");
}

QString LecturaWav() {
    QString musica = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    if (!QFileInfo(musica).isDir()) musica = QDir::homePath();
    return musica + QStringLiteral("/Lectura.wav");
}

QString ProgramaMotor(const QString &carpetaEjecutable) {
    QString indicado = qEnvironmentVariable("ONDALIS_MOTOR");
    if (!indicado.isEmpty()) return indicado;
    const QString aparte = QDir::cleanPath(carpetaEjecutable + QStringLiteral("/../libexec/ondalis/ondalis-motor"));
    const QString alLado = carpetaEjecutable + QStringLiteral("/ondalis-motor");
    return !QFileInfo(alLado).isFile() && QFileInfo(aparte).isFile() ? aparte : alLado;
}

QString CarpetaInstalada(const QString &carpetaEjecutable) {
    // The build folder is laid out like an installation, so one rule serves both.
    return QDir::cleanPath(carpetaEjecutable + QStringLiteral("/../share/ondalis"));
}

}  // namespace ondalis::rutas
