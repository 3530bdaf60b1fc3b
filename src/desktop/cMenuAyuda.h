// The entries of the help menu: topics, read-me file, web page. Owned by main. Main thread.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

#include "desktop/cAyuda.h"
#include "settings/cCola.h"

namespace ondalis {

// Opens files and addresses with the desktop's own application for them.
class AbridorEscritorio {
public:
    virtual ~AbridorEscritorio() = default;
    // `objeto`: a file's path or an address. Returns at once; `alSaber` is called once from the event loop: false when
    // there is no such file, nothing opens it, or what was to open it failed within two seconds.
    virtual void Abre(const QString &objeto, std::function<void(bool)> alSaber) = 0;
};

class cMenuAyuda {
public:
    // `carpetas`: where the read-me file is looked for, in this order; the last one is the program's own, which the
    // message names. None ends with "/". `pagina`: the program's address in the web.
    cMenuAyuda(cGeneral &general, cCola &cola, cAyuda &ayuda, AbridorEscritorio &abridor, QStringList carpetas,
               QString pagina);

    void AyudaOndalis_Click();
    void VerLeame_Click();
    void PagWebOndalis_Click();

private:
    // Tries `candidatos` one after the other from number `i` on.
    void AbreLeame(const QStringList &candidatos, qsizetype i);

    cGeneral &m_general;
    cCola &m_cola;
    cAyuda &m_ayuda;
    AbridorEscritorio &m_abridor;
    QStringList m_carpetas;
    QString m_pagina;
};

}  // namespace ondalis
