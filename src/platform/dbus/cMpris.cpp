#include "platform/dbus/cMpris.h"

#include <QDBusMetaType>

#include "settings/cRegistro.h"

namespace ondalis {

namespace {

const char *Nombre(cReproduccion::Estado estado) {
    switch (estado) {
        case cReproduccion::Estado::Sonando: return "Playing";
        case cReproduccion::Estado::EnPausa: return "Paused";
        default: return "Stopped";
    }
}

QVariantMap Metadatos(const QString &titulo) {
    const QString pista = titulo.isEmpty() ? QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack")
                                           : QStringLiteral("/com/ferrano/Ondalis/Lectura");
    QVariantMap datos{{QStringLiteral("mpris:trackid"), QVariant::fromValue(QDBusObjectPath(pista))}};
    if (!titulo.isEmpty()) datos[QStringLiteral("xesam:title")] = titulo;
    return datos;
}

}  // namespace

QString cMprisRaiz::Identity() const { return QLatin1String(Producto::Titulo); }

cMpris::cMpris(cConexionBus &bus, cReproduccion &controles) : m_bus(bus), m_controles(controles) {
    new cMprisRaiz(this);
    new cMprisReproductor(*this, controles);
    m_dicho = Estado();
    // Several entries change in one handler: watchers hear of the outcome once.
    m_controles.AlCambiar([this] {
        if (std::exchange(m_pedido, true)) return;
        QMetaObject::invokeMethod(
            this, [this] { Avisa(); }, Qt::QueuedConnection);
    });
    m_bus.AlConectar([this](QDBusConnection &conexion) {
        conexion.registerObject(QLatin1String(Ruta), this, QDBusConnection::ExportAdaptors);
        m_bus.NombraComo(conexion, cMpris::Nombre);
    });
}

cMpris::~cMpris() { m_controles.AlCambiar({}); }

QVariantMap cMpris::Estado() const {
    return {{QStringLiteral("PlaybackStatus"), QLatin1String(ondalis::Nombre(m_controles.GetEstado()))},
            {QStringLiteral("Metadata"), Metadatos(m_controles.Titulo())},
            {QStringLiteral("CanPlay"), m_controles.PuedeReproducir()},
            {QStringLiteral("CanPause"), m_controles.PuedePausar()},
            {QStringLiteral("CanGoNext"), m_controles.PuedeAvanzar()},
            {QStringLiteral("CanGoPrevious"), m_controles.PuedeRetroceder()}};
}

void cMpris::Avisa() {
    m_pedido = false;
    const QVariantMap ahora = Estado();
    QVariantMap cambios;
    for (auto propiedad = ahora.cbegin(); propiedad != ahora.cend(); ++propiedad)
        if (m_dicho.value(propiedad.key()) != propiedad.value()) cambios[propiedad.key()] = propiedad.value();
    m_dicho = ahora;
    if (!cambios.isEmpty()) m_bus.AvisaCambio(Ruta, InterfazReproductor, cambios);
}

}  // namespace ondalis
