// Tells whether another copy of this program runs for the same user, and lets the others tell. All copies share one
// file and each holds a byte of it locked; the lock belongs to the open file, so that it goes with the process however
// that ends, and no child of ours keeps it. Owned by main, as long as the process counts as a copy. Main thread.
#pragma once

#include <QString>
#include <chrono>

#include "settings/cLog.h"

namespace ondalis {

class cInstancia {
public:
    // `fichero`: absolute; made if need be. Where it can't be made each copy believes itself alone; a log line tells.
    cInstancia(QString fichero, cLog &log);
    ~cInstancia();
    cInstancia(const cInstancia &) = delete;
    cInstancia &operator=(const cInstancia &) = delete;

    // A resident or batch copy that is not this object is running.
    bool HayOtra() const;
    // Becomes the resident copy, unless another copy of any kind runs: then false, and this one doesn't count. Of
    // several at once exactly one gets true.
    [[nodiscard]] bool EntraResidente();
    // Counts as a copy from now on, beside whatever else runs. A copy that is just becoming resident is waited for,
    // `limite` at most; false when it took longer.
    bool EntraLote(std::chrono::milliseconds limite = std::chrono::milliseconds(500));

    // The file for an executable of that name: in the run-time folder, else in `carpetaEstado`.
    static QString Fichero(const QString &ejecutable, const QString &carpetaEstado);

private:
    bool Bloquea(long desde, long cuantos, short clase) const;

    cLog &m_log;
    QString m_fichero;
    int m_descriptor = -1;
};

}  // namespace ondalis
