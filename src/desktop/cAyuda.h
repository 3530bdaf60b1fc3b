// Shows a topic of the one help file. Owned by main. Main thread.
#pragma once

#include <QString>
#include <cstdint>

#include "settings/cGeneral.h"

namespace ondalis {

// What shows topics; ui implements it with a window.
class VisorAyuda {
public:
    virtual ~VisorAyuda() = default;
    // `ventana`: the owner's handle, 0 for none. `tema`: the page's name, and "#" and an anchor where wanted; empty:
    // the start page.
    [[nodiscard]] virtual Fallo Muestra(const QString &fichero, std::uintptr_t ventana, const QString &tema) = 0;
};

class cAyuda {
public:
    cAyuda(cGeneral &general, VisorAyuda &visor) : m_general(general), m_visor(visor) {}

    // The help file's name: the title, the first three characters of `comentarios`, ".rcc".
    static QString NombreFichero(const QString &comentarios);

    void Init(const QString &fichero) { m_fichero = fichero; }
    // Nothing, silently, where there is no help file.
    void MuestraClave(std::uintptr_t ventana, const QString &tema);

private:
    cGeneral &m_general;
    VisorAyuda &m_visor;
    QString m_fichero;
};

}  // namespace ondalis
