// The pronunciation dictionary as the program holds it: the file, the table in memory that governs speech, and the
// moments when both meet the rows that the user edits. Made before the first reading, owned by main; the table lives as
// long as it. Main thread.
#pragma once

#include <QString>

#include "settings/cGeneral.h"
#include "text/cListaDiccionario.h"

namespace ondalis {

class cOpcDiccionario {
public:
    // Loads "diccionario.dat" of the folder. Without one the table is empty and nothing is said; one that is there and
    // can't be used is logged (a damaged one has been put aside).
    cOpcDiccionario(cGeneral &general, const QString &carpeta);
    ~cOpcDiccionario();
    cOpcDiccionario(const cOpcDiccionario &) = delete;
    cOpcDiccionario &operator=(const cOpcDiccionario &) = delete;

    // The table's entries become the rows. A text that comes twice ends it there, with a log line.
    void CargaLista(cListaDiccionario &lista);
    // The rows become the table, in their order, and the file. When that can't be written it stays as it was, the log
    // says so, and the table is the file's again.
    void GuardaValores(const cListaDiccionario &lista);
    // Both texts fit into an entry; neither is empty.
    static bool EsEntrada(const QString &clave, const QString &conversion);

private:
    cGeneral &m_general;
    QByteArray m_fichero;  // as the file system writes it
};

}  // namespace ondalis
