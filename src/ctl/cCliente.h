// One command to the running reader over the session bus, and the wait for its end. Ends the event loop with the exit
// code of Argumentos.h. Main thread.
#pragma once

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <QVariantMap>

#include "ctl/Argumentos.h"

namespace ondalis::ctl {

class cCliente : public QObject {
    Q_OBJECT
public:
    cCliente(const Argumentos &argumentos, QString comando);
    // From the event loop.
    void Empieza();

private Q_SLOTS:
    void Terminada(uint numero);
    void Cambiada(const QString &interfaz, const QVariantMap &cambios, const QStringList &invalidas);
    void Contestada(QDBusPendingCallWatcher *llamada);

private:
    void Manda();
    void Acaba(int salida, const QString &mensaje = {});

    const Argumentos m_a;
    const QString m_comando;
    QDBusConnection m_bus;
    QDBusServiceWatcher m_vigia;
    QTimer m_plazo;
    uint m_numero = 0;        // of our command; 0: not accepted yet
    QSet<uint> m_terminadas;  // ends that were told before we knew our number
    bool m_acabado = false;
};

}  // namespace ondalis::ctl
