#include "platform/dbus/cIconoNotificador.h"

#include <unistd.h>

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QtEndian>

#include "settings/cRegistro.h"

namespace ondalis {

QDBusArgument &operator<<(QDBusArgument &a, const ImagenNotificador &imagen) {
    a.beginStructure();
    a << imagen.ancho << imagen.alto << imagen.pixeles;
    a.endStructure();
    return a;
}

const QDBusArgument &operator>>(const QDBusArgument &a, ImagenNotificador &imagen) {
    a.beginStructure();
    a >> imagen.ancho >> imagen.alto >> imagen.pixeles;
    a.endStructure();
    return a;
}

QDBusArgument &operator<<(QDBusArgument &a, const RotuloNotificador &rotulo) {
    a.beginStructure();
    a << rotulo.icono << rotulo.imagenes << rotulo.titulo << rotulo.texto;
    a.endStructure();
    return a;
}

const QDBusArgument &operator>>(const QDBusArgument &a, RotuloNotificador &rotulo) {
    a.beginStructure();
    a >> rotulo.icono >> rotulo.imagenes >> rotulo.titulo >> rotulo.texto;
    a.endStructure();
    return a;
}

cIconoNotificador::cIconoNotificador(cConexionBus &bus)
    : m_bus(bus), m_nombre(QStringLiteral("org.kde.StatusNotifierItem-%1-7").arg(getpid())) {
    qDBusRegisterMetaType<ImagenNotificador>();
    qDBusRegisterMetaType<ImagenesNotificador>();
    qDBusRegisterMetaType<RotuloNotificador>();
    m_bus.AlConectar([this](QDBusConnection &) {
        if (m_mostrado) Registra();
    });
}

cIconoNotificador::~cIconoNotificador() { Quita(); }

QString cIconoNotificador::Title() const { return QLatin1String(Producto::Titulo); }

void cIconoNotificador::Pon(const std::vector<ImagenPixeles> &imagenes) {
    m_imagenes.clear();
    for (const ImagenPixeles &una : imagenes) {
        QByteArray bytes(static_cast<qsizetype>(una.pixeles.size() * sizeof(std::uint32_t)), Qt::Uninitialized);
        qToBigEndian<std::uint32_t>(una.pixeles.data(), static_cast<qsizetype>(una.pixeles.size()), bytes.data());
        m_imagenes.push_back({una.ancho, una.alto, bytes});
    }
}

void cIconoNotificador::Muestra(std::vector<ImagenPixeles> imagenes) {
    Pon(imagenes);
    m_mostrado = true;
    Registra();
}

void cIconoNotificador::Cambia(std::vector<ImagenPixeles> imagenes) {
    Pon(imagenes);
    if (m_mostrado) Q_EMIT NewIcon();
}

void cIconoNotificador::Quita() {
    if (!std::exchange(m_mostrado, false)) return;
    AlBus("ReleaseName", {m_nombre});
    m_bus.Retira(Ruta);
}

// The bus carries the three out in their order; none of the answers is waited for.
void cIconoNotificador::Registra() {
    m_bus.Publica(Ruta, this);
    AlBus("RequestName", {m_nombre, 0U});
    QDBusMessage registro = QDBusMessage::createMethodCall(
        QStringLiteral("org.kde.StatusNotifierWatcher"), QStringLiteral("/StatusNotifierWatcher"),
        QStringLiteral("org.kde.StatusNotifierWatcher"), QStringLiteral("RegisterStatusNotifierItem"));
    registro << m_nombre;
    registro.setAutoStartService(false);
    m_bus.Envia(registro);
}

void cIconoNotificador::AlBus(const char *metodo, const QVariantList &argumentos) {
    QDBusMessage mensaje =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QLatin1String(metodo));
    mensaje.setArguments(argumentos);
    m_bus.Envia(mensaje);
}

void cIconoNotificador::Activate(int, int) {
    if (m_alPulsar) m_alPulsar();
}

void cIconoNotificador::SecondaryActivate(int, int) {}

void cIconoNotificador::ContextMenu(int x, int y) {
    if (m_alPedirMenu) m_alPedirMenu(QPoint(x, y));
}

void cIconoNotificador::Scroll(int, const QString &) {}

}  // namespace ondalis
