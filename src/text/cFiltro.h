// Changes a text on its way to the engine, and a fragment back on its way to the word processor. No position table; the
// only state is a search index over the dictionary's keys, rebuilt when the table changes. Owned by main. Main thread.
#pragma once

#include <QString>
#include <memory>

#include "settings/cLog.h"

namespace ondalis {

class cFiltro {
public:
    explicit cFiltro(cLog &log);
    ~cFiltro();

    // A text that would come out longer than 32 Mi characters stays as it is, with a log line.
    void TrataSignosPuntuacion(QString &texto);
    // The result is that of replacing entry by entry, in the table's order; keys that can't occur cost nothing. Entries
    // that would make the text longer than 32 Mi characters end the pass with a log line, the text as it was before.
    void TrataConversionesDiccionario(QString &texto);
    // `marca`: the family's mark text, which `marcador`, if not empty, replaces.
    QString Leido2Copiado(const QString &leido, const QString &marcador, bool signos);
    QString PalabraLeido2Copiado(const QString &leido, const QString &marcador, bool signos);

    void SetMarca(const QString &marca) { m_marca = marca; }
    const QString &Marca() const { return m_marca; }

private:
    struct Indice;
    const Indice &Diccionario();
    void Deshace(QString &texto, const QString &marcador, bool signos);

    cLog &m_log;
    QString m_marca;
    std::unique_ptr<Indice> m_indice;
};

}  // namespace ondalis
