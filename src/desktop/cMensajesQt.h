// Message boxes of the desktop: in front of everything, in Spanish, answered before the call returns; meanwhile the
// event loop runs. Owned by main. Main thread.
#pragma once

#include <QtGui/qwindowdefs.h>

#include <functional>
#include <vector>

#include "settings/Mensajes.h"

class QMessageBox;

namespace ondalis {

class cMensajesQt : public Mensajes {
public:
    // `alFrente`: brings a window to the front where asking the window manager politely isn't enough. `alAbrir`: called
    // when a box stands there, so that a queue delivers what it held back for the handler that now waits. Both may be
    // empty.
    explicit cMensajesQt(std::function<void(WId)> alFrente = {}, std::function<void()> alAbrir = {})
        : m_alFrente(std::move(alFrente)), m_alAbrir(std::move(alAbrir)) {}

    bool Muestra(const QString &texto, bool pregunta, bool defectoSi, const QString &titulo) override;

    // Closes the open boxes as if answered with No; later ones are not shown. The end of the program.
    void Cierra();

private:
    std::function<void(WId)> m_alFrente;
    std::function<void()> m_alAbrir;
    std::vector<QMessageBox *> m_abiertos;
    bool m_cerrado = false;
};

}  // namespace ondalis
