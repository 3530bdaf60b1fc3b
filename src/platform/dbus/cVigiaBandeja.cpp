#include "platform/dbus/cVigiaBandeja.h"

#include <xcb/xfixes.h>

#include <QDBusMessage>
#include <QDBusVariant>

namespace ondalis {

namespace {

const QString kVigilante = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kObjeto = QStringLiteral("/StatusNotifierWatcher");
const QString kBus = QStringLiteral("org.freedesktop.DBus");
constexpr int kPrimerLimiteMs = 500;

}  // namespace

cVigiaBandeja::cVigiaBandeja(cConexionBus &bus)
    : m_bus(bus), m_x([this](const xcb_generic_event_t &evento) { EventoX(evento); }) {
    m_bus.AlConectar([this](QDBusConnection &conexion) { Escucha(conexion); });
    m_bus.AlPerder([this] {
        m_pregunta.reset();
        VigilanteIdo();
    });
    ConectaX();
}

// Signals of whoever sends them: to watch a name as well the library would wait for its owner.
void cVigiaBandeja::Escucha(QDBusConnection &bus) {
    bus.connect(QString(), kObjeto, kVigilante, QStringLiteral("StatusNotifierHostRegistered"), this,
                SLOT(AnfitrionRegistrado()));
    bus.connect(QString(), kObjeto, kVigilante, QStringLiteral("StatusNotifierHostUnregistered"), this,
                SLOT(AnfitrionRetirado()));
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus"), kBus, QStringLiteral("NameOwnerChanged"),
                {kVigilante}, QStringLiteral("sss"), this, SLOT(CambiaDueno(QString, QString, QString)));
    Pregunta(m_primera ? kPrimerLimiteMs : kLimiteMs);
}

// A watcher alone shows nothing: a panel must have told it that it is there. The toolkit asks the same question.
void cVigiaBandeja::Pregunta(int limiteMs) {
    QDBusMessage pregunta = QDBusMessage::createMethodCall(
        kVigilante, kObjeto, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    pregunta << kVigilante << QStringLiteral("IsStatusNotifierHostRegistered");
    pregunta.setAutoStartService(false);
    m_pregunta = std::make_unique<QDBusPendingCallWatcher>(m_bus.Pide(pregunta, limiteMs));
    connect(m_pregunta.get(), &QDBusPendingCallWatcher::finished, this,
            [this](const QDBusPendingCallWatcher *llamada) { Contesta(llamada->reply()); });
}

// True: a panel has reported to it. A bus that hangs says nothing: it is asked once more, and what was known stays.
bool cVigiaBandeja::Entiende(const QDBusMessage &respuesta) {
    m_primera = false;
    if (respuesta.errorName() == QLatin1String("org.freedesktop.DBus.Error.NoReply")) {
        Pregunta(kLimiteMs);
        return m_enElBus;
    }
    return respuesta.type() == QDBusMessage::ReplyMessage && !respuesta.arguments().isEmpty() &&
           respuesta.arguments().constFirst().value<QDBusVariant>().variant().toBool();
}

void cVigiaBandeja::Contesta(const QDBusMessage &respuesta) {
    if (m_pregunta) m_pregunta.release()->deleteLater();
    if (Entiende(respuesta))
        AnfitrionRegistrado();
    else
        VigilanteIdo();
}

bool cVigiaBandeja::HayEnElBus() {
    if (m_primera && m_pregunta) {
        QDBusPendingCall llamada = *m_pregunta;
        m_pregunta.reset();  // who asks has the answer by this call
        llamada.waitForFinished();
        m_enElBus = Entiende(llamada.reply());
    }
    return m_enElBus;
}

bool cVigiaBandeja::HayEnX() {
    if (!m_x.Viva() || m_seleccion == XCB_NONE) return false;
    const XcbPtr<xcb_get_selection_owner_reply_t> dueno(
        xcb_get_selection_owner_reply(m_x.Xcb(), xcb_get_selection_owner(m_x.Xcb(), m_seleccion), nullptr));
    m_x.Despacha();
    return dueno && dueno->owner != XCB_NONE;
}

// The panel of a new watcher may report to it later; then its signal tells.
void cVigiaBandeja::CambiaDueno(const QString &, const QString &, const QString &nuevo) {
    m_pregunta.reset();
    VigilanteIdo();
    if (!nuevo.isEmpty()) Pregunta(kLimiteMs);
}

void cVigiaBandeja::VigilanteIdo() {
    if (!std::exchange(m_enElBus, false)) return;
    if (m_alDesaparecer) m_alDesaparecer();
}

void cVigiaBandeja::AnfitrionRegistrado() {
    m_primera = false;
    if (std::exchange(m_enElBus, true)) return;
    if (m_alAparecer) m_alAparecer();
}

void cVigiaBandeja::ConectaX() {
    if (!m_x.Viva()) return;
    const auto *xfixes = xcb_get_extension_data(m_x.Xcb(), &xcb_xfixes_id);
    if (!xfixes || !xfixes->present) return;
    m_primerEvento = xfixes->first_event;
    const XcbPtr<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(m_x.Xcb(), xcb_xfixes_query_version(m_x.Xcb(), 5, 0), nullptr));
    m_seleccion = m_x.Atomo("_NET_SYSTEM_TRAY_S0");
    xcb_xfixes_select_selection_input(m_x.Xcb(), m_x.Raiz(), m_seleccion,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    m_x.Despacha();
}

void cVigiaBandeja::EventoX(const xcb_generic_event_t &evento) {
    if ((evento.response_type & 0x7f) != m_primerEvento + XCB_XFIXES_SELECTION_NOTIFY) return;
    const auto &cambio = reinterpret_cast<const xcb_xfixes_selection_notify_event_t &>(evento);
    const auto &aviso = cambio.owner == XCB_NONE ? m_alDesaparecer : m_alAparecer;
    if (aviso) aviso();
}

}  // namespace ondalis
