// The command line of ondalisctl. Plain functions, no state.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace ondalis::ctl {

// What the program ends with.
enum Salida : int {
    Bien = 0,
    Rechazada = 1,  // the reader refused the command
    MalUso = 2,
    SinLector = 3,  // no reader runs and none could be started, or it ended meanwhile
    SinTiempo = 4,
};

struct Argumentos {
    enum class Orden { Ayuda, Version, Habla, Fichero, Espera };
    Orden orden = Orden::Ayuda;
    QString valor;        // Habla: the text, "-" for standard input; Fichero: the path as written
    bool espera = false;  // --espera: until the speech has ended
    int plazoMs = -1;     // --plazo; -1: none
};

// nullopt: wrong use, and `error` tells what.
std::optional<Argumentos> Analiza(const QStringList &partes, QString &error);
QString Uso();

// The command for the bus. A path is made absolute from `carpeta`.
QString ComandoFichero(const QString &ruta, const QString &carpeta);

}  // namespace ondalis::ctl
