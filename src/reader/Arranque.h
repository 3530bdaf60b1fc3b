// What a command line asks of the program, in the order in which the start asks: help, a batch job, a second copy that
// leaves again, or the resident reader. Pure but for the ports. Main thread.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace ondalis {

enum class Vida { Ayuda, Lote, YaArrancado, Residente };

struct PuertosArranque {
    std::function<void()> restauraConfiguracion;    // -clear
    std::function<void()> ejecutaComandosRegistro;  // what an installer left for this start
    std::function<bool()> ejecutaLineaComandos;     // true: it was a batch line, and its job is done
    std::function<bool()> entraResidente;           // false: another copy of the program runs
};

// `linea`: the whole command line without the program's name, its words joined by blanks. Options are found anywhere in
// it, blind to case. Each port is called at most once, in this order, and only as far as the line leads.
Vida DecideVida(const QString &linea, const PuertosArranque &puertos);

// The line names an existing file, or something is left of it without -clear, -debug and -nosapi5.
bool EsLineaDeLote(const QString &linea);

// What the help shows, one entry a line.
QStringList TextosLineaComandos();

}  // namespace ondalis
