#include "desktop/cFinSesion.h"

#include <QEvent>
#include <QGuiApplication>
#include <QSessionManager>

namespace ondalis {

cFinSesion::cFinSesion(std::function<void()> alAcabar) : m_alAcabar(std::move(alAcabar)) {
    // The session starts us again by its own entry, never by what it remembers. There is nothing to save.
    const auto nunca = [](QSessionManager &sesion) { sesion.setRestartHint(QSessionManager::RestartNever); };
    connect(qApp, &QGuiApplication::commitDataRequest, this, nunca, Qt::DirectConnection);
    connect(qApp, &QGuiApplication::saveStateRequest, this, nunca, Qt::DirectConnection);
    qApp->installEventFilter(this);
}

// The toolkit would close the windows one by one and then leave a loop that isn't ours.
bool cFinSesion::eventFilter(QObject *objeto, QEvent *evento) {
    if (objeto != qApp || evento->type() != QEvent::Quit) return QObject::eventFilter(objeto, evento);
    m_alAcabar();
    return true;
}

}  // namespace ondalis
