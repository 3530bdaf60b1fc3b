// The toolkit's own file dialog, the same on every desktop: any name may be typed, it never asks about overwriting and
// never changes the current folder. Opens where a file was chosen last, first at home. Owned by main. Main thread.
#pragma once

#include <QtGui/qwindowdefs.h>

#include <functional>

#include "settings/Mensajes.h"
#include "settings/cDialogoFichero.h"

class QFileDialog;

namespace ondalis {

class cDialogoFicheroQt : public DialogoFichero {
public:
    // `mensajes` tells of a folder that doesn't exist. `alFrente`: as for the message boxes; may be empty.
    explicit cDialogoFicheroQt(Mensajes &mensajes, std::function<void(WId)> alFrente = {})
        : m_mensajes(mensajes), m_alFrente(std::move(alFrente)) {}

    std::optional<QString> Elige(const PeticionFichero &peticion) override;

    // Closes the open dialog as if cancelled; later ones are not shown. The end of the program.
    void Cierra();

private:
    Mensajes &m_mensajes;
    std::function<void(WId)> m_alFrente;
    QString m_carpeta;
    QFileDialog *m_abierto = nullptr;
    bool m_cerrado = false;
};

}  // namespace ondalis
