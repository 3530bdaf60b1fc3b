// The commands that an installer leaves in the system's store for the next start: each runs once. Main thread.
#pragma once

#include <QString>

#include "settings/cRegistro.h"

namespace ondalis {

// Starts a command line without a shell, free of this program's descriptors. platform implements it.
class LanzadorComandos {
public:
    virtual ~LanzadorComandos() = default;
    virtual bool Lanza(const QString &comando) = 0;  // true: it has been started
};

class cComandosRegistro {
public:
    // `carpetaEstado`: absolute; where a command that can't be deleted from the store is marked as done.
    cComandosRegistro(cRegistro &registro, cLog &log, LanzadorComandos &lanzador, QString carpetaEstado)
        : m_registro(registro), m_log(log), m_lanzador(lanzador), m_carpetaEstado(std::move(carpetaEstado)) {}

    // Runs CMD1, CMD2 and so on of the system's store up to the first empty one. One that was started is deleted or
    // marked; one that wasn't stays for the next start.
    void EjecutaComandosRegistro();

private:
    QString Marca(const QString &nombre, const QString &comando) const;

    cRegistro &m_registro;
    cLog &m_log;
    LanzadorComandos &m_lanzador;
    QString m_carpetaEstado;
};

}  // namespace ondalis
