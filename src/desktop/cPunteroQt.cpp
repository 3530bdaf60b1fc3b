#include "desktop/cPunteroQt.h"

#include <QCursor>
#include <QGuiApplication>

namespace ondalis {

void cPunteroQt::SetPuntero(int puntero) {
    if (puntero == m_puntero) return;
    // One level of the toolkit's stack of pointers is ours.
    if (m_puntero != 0) QGuiApplication::restoreOverrideCursor();
    if (puntero != 0)
        QGuiApplication::setOverrideCursor(
            QCursor(puntero == cCursor::RelojDeArena ? Qt::WaitCursor : Qt::ArrowCursor));
    m_puntero = puntero;
}

}  // namespace ondalis
