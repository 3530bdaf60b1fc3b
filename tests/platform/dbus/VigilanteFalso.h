// A watcher of status notifiers on the test's bus.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

namespace ondalis::prueba {

class VigilanteFalso : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ HayPanel SCRIPTABLE true)
public:
    VigilanteFalso(QDBusConnection bus, bool hayPanel) : m_bus(std::move(bus)), m_hayPanel(hayPanel) {
        m_bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this, QDBusConnection::ExportScriptableContents);
        m_bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));
    }
    ~VigilanteFalso() override { m_bus.unregisterService(QStringLiteral("org.kde.StatusNotifierWatcher")); }
    bool HayPanel() const { return m_hayPanel; }
    void PonPanel(bool hay) {
        m_hayPanel = hay;
        if (hay)
            Q_EMIT StatusNotifierHostRegistered();
        else
            Q_EMIT StatusNotifierHostUnregistered();
    }
    QStringList registrados;

public Q_SLOTS:
    Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString &servicio) { registrados << servicio; }
Q_SIGNALS:
    Q_SCRIPTABLE void StatusNotifierHostRegistered();
    Q_SCRIPTABLE void StatusNotifierHostUnregistered();

private:
    QDBusConnection m_bus;
    bool m_hayPanel;
};

}  // namespace ondalis::prueba
