#include "platform/dbus/cVigiaBandeja.h"

#include <xcb/xfixes.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>

namespace ondalis {

namespace {

const QString kVigilante = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kObjeto = QStringLiteral("/StatusNotifierWatcher");
constexpr int kLimiteMs = 500;

}  // namespace

cVigiaBandeja::cVigiaBandeja()
    : m_bus(kVigilante, QDBusConnection::sessionBus(),
            QDBusServiceWatcher::WatchForRegistration | QDBusServiceWatcher::WatchForUnregistration),
      m_x([this](const xcb_generic_event_t &evento) { EventoX(evento); }) {
    connect(&m_bus, &QDBusServiceWatcher::serviceRegistered, this, [this] { VigilanteNuevo(); });
    connect(&m_bus, &QDBusServiceWatcher::serviceUnregistered, this, [this] { VigilanteIdo(); });
    QDBusConnection::sessionBus().connect(QString(), kObjeto, kVigilante,
                                          QStringLiteral("StatusNotifierHostRegistered"), this,
                                          SLOT(AnfitrionRegistrado()));
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

// A watcher alone shows nothing: a panel must have told it that it is there. The toolkit asks the same question.
bool cVigiaBandeja::HayEnElBus() {
    const auto *bus = QDBusConnection::sessionBus().interface();
    if (!bus || !bus->isServiceRegistered(kVigilante)) return false;
    QDBusMessage pregunta = QDBusMessage::createMethodCall(
        kVigilante, kObjeto, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    pregunta << kVigilante << QStringLiteral("IsStatusNotifierHostRegistered");
    const QDBusMessage respuesta = QDBusConnection::sessionBus().call(pregunta, QDBus::Block, kLimiteMs);
    return respuesta.type() == QDBusMessage::ReplyMessage && !respuesta.arguments().isEmpty() &&
           respuesta.arguments().constFirst().value<QDBusVariant>().variant().toBool();
}

bool cVigiaBandeja::HayEnX() {
    if (!m_x.Viva() || m_seleccion == XCB_NONE) return false;
    const XcbPtr<xcb_get_selection_owner_reply_t> dueno(
        xcb_get_selection_owner_reply(m_x.Xcb(), xcb_get_selection_owner(m_x.Xcb(), m_seleccion), nullptr));
    m_x.Despacha();
    return dueno && dueno->owner != XCB_NONE;
}

// Its panel may report to it later; then its signal tells.
void cVigiaBandeja::VigilanteNuevo() {
    m_avisadoBus = false;
    if (HayEnElBus()) AnfitrionRegistrado();
}

void cVigiaBandeja::VigilanteIdo() {
    m_avisadoBus = false;
    if (m_alDesaparecer) m_alDesaparecer();
}

void cVigiaBandeja::AnfitrionRegistrado() {
    if (m_avisadoBus) return;
    m_avisadoBus = true;
    if (m_alAparecer) m_alAparecer();
}

void cVigiaBandeja::EventoX(const xcb_generic_event_t &evento) {
    if ((evento.response_type & 0x7f) != m_primerEvento + XCB_XFIXES_SELECTION_NOTIFY) return;
    const auto &cambio = reinterpret_cast<const xcb_xfixes_selection_notify_event_t &>(evento);
    const auto &aviso = cambio.owner == XCB_NONE ? m_alDesaparecer : m_alAparecer;
    if (aviso) aviso();
}

}  // namespace ondalis
