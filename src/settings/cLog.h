// The log file: one line an event, opened and closed for each, so that a crash loses nothing. Owned by main. Any
// thread.
#pragma once

#include <QString>
#include <mutex>

#include "settings/Fallo.h"

namespace ondalis {

class cLog {
public:
    // `fichero`: absolute path; its folder is made on first use.
    explicit cLog(QString fichero);

    // Appends date and time in the locale's form, a blank, `procedimiento` ("cRegistro.Salva: "), and the text: the
    // failure's description and number, then " [" + extra + "]". Neither of both: writes nothing. Never fails outward.
    void Escribe(const QString &procedimiento, const Fallo &fallo, const QString &extra = {});
    void Escribe(const QString &procedimiento, const QString &extra) { Escribe(procedimiento, Fallo{}, extra); }

    const QString &Fichero() const { return m_fichero; }

private:
    QString m_fichero;
    std::mutex m_cerrojo;
};

}  // namespace ondalis
