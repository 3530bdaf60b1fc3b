// The tray icon as an object of the session bus (org.kde.StatusNotifierItem), without a menu of the bus: panels then
// ask for ours. Registered under a name of its own, so that its watcher sees it go. Owned by main. Main thread.
#pragma once

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QObject>

#include "desktop/IconoDelBus.h"
#include "platform/dbus/cConexionBus.h"

namespace ondalis {

// Width, height and pixels in network byte order, as the protocol has them.
struct ImagenNotificador {
    int ancho = 0, alto = 0;
    QByteArray pixeles;
};
using ImagenesNotificador = QList<ImagenNotificador>;
struct RotuloNotificador {
    QString icono;
    ImagenesNotificador imagenes;
    QString titulo, texto;
};
QDBusArgument &operator<<(QDBusArgument &a, const ImagenNotificador &imagen);
const QDBusArgument &operator>>(const QDBusArgument &a, ImagenNotificador &imagen);
QDBusArgument &operator<<(QDBusArgument &a, const RotuloNotificador &rotulo);
const QDBusArgument &operator>>(const QDBusArgument &a, RotuloNotificador &rotulo);

class cIconoNotificador : public QObject, public IconoDelBus {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ Category SCRIPTABLE true)
    Q_PROPERTY(QString Id READ Id SCRIPTABLE true)
    Q_PROPERTY(QString Title READ Title SCRIPTABLE true)
    Q_PROPERTY(QString Status READ Status SCRIPTABLE true)
    Q_PROPERTY(QString IconName READ Nada SCRIPTABLE true)
    Q_PROPERTY(ondalis::ImagenesNotificador IconPixmap READ IconPixmap SCRIPTABLE true)
    Q_PROPERTY(ondalis::RotuloNotificador ToolTip READ ToolTip SCRIPTABLE true)
    Q_PROPERTY(bool ItemIsMenu READ ItemIsMenu SCRIPTABLE true)
    Q_PROPERTY(QDBusObjectPath Menu READ Menu SCRIPTABLE true)
public:
    static constexpr const char *Ruta = "/StatusNotifierItem";

    explicit cIconoNotificador(cConexionBus &bus);
    ~cIconoNotificador() override;

    void Muestra(std::vector<ImagenPixeles> imagenes) override;
    void Cambia(std::vector<ImagenPixeles> imagenes) override;
    void Quita() override;
    void SetAlPulsar(std::function<void()> aviso) override { m_alPulsar = std::move(aviso); }
    void SetAlPedirMenu(std::function<void(const QPoint &)> aviso) override { m_alPedirMenu = std::move(aviso); }

    QString Category() const { return QStringLiteral("ApplicationStatus"); }
    QString Id() const { return QStringLiteral("ondalis"); }
    QString Title() const;
    QString Status() const { return QStringLiteral("Active"); }
    QString Nada() const { return {}; }
    ImagenesNotificador IconPixmap() const { return m_imagenes; }
    RotuloNotificador ToolTip() const { return {{}, {}, Title(), {}}; }
    bool ItemIsMenu() const { return false; }
    QDBusObjectPath Menu() const { return QDBusObjectPath(QStringLiteral("/NO_DBUSMENU")); }

public Q_SLOTS:
    Q_SCRIPTABLE void Activate(int x, int y);
    Q_SCRIPTABLE void SecondaryActivate(int x, int y);
    Q_SCRIPTABLE void ContextMenu(int x, int y);
    Q_SCRIPTABLE void Scroll(int delta, const QString &orientation);
Q_SIGNALS:
    Q_SCRIPTABLE void NewIcon();

private:
    void Pon(const std::vector<ImagenPixeles> &imagenes);
    void Registra();
    void AlBus(const char *metodo, const QVariantList &argumentos);

    cConexionBus &m_bus;
    const QString m_nombre;
    bool m_mostrado = false;
    ImagenesNotificador m_imagenes;
    std::function<void()> m_alPulsar;
    std::function<void(const QPoint &)> m_alPedirMenu;
};

}  // namespace ondalis

Q_DECLARE_METATYPE(ondalis::ImagenNotificador)
Q_DECLARE_METATYPE(ondalis::RotuloNotificador)
