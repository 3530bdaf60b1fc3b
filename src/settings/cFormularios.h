// The program's open windows by name, so that they can all be unloaded at its end. Owned by main. Main thread.
#pragma once

#include <QString>
#include <functional>
#include <vector>

namespace ondalis {

class cFormularios {
public:
    // A window says that it is there, and how it is unloaded; opening it again replaces what it said.
    void Anota(const QString &nombre, std::function<void()> descarga);
    // It is gone; harmless when it wasn't there.
    void Olvida(const QString &nombre);
    bool Abierto(const QString &nombre) const;

    // Unloads every open window, the one opened last first, except the one of that name. A window may forget itself or
    // open another one while it is unloaded; that one is unloaded as well.
    void DescargaFormularios(const QString &excepto = {});

private:
    struct Formulario {
        QString nombre;
        std::function<void()> descarga;
    };
    std::vector<Formulario> m_abiertos;
};

}  // namespace ondalis
