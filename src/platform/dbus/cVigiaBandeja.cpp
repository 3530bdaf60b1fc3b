#include "platform/dbus/cVigiaBandeja.h"

#include <xcb/xfixes.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>

namespace ondalis {

namespace {
constexpr const char *kVigilante = "org.kde.StatusNotifierWatcher";
}

cVigiaBandeja::cVigiaBandeja()
    : m_bus(QLatin1String(kVigilante), QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForRegistration),
      m_x([this](const xcb_generic_event_t &evento) { EventoX(evento); }) {
    QObject::connect(&m_bus, &QDBusServiceWatcher::serviceRegistered, &m_bus, [this] {
        m_visto = true;
        if (m_alAparecer) m_alAparecer();
    });
    if (!m_x.Viva()) return;
    const auto *xfixes = xcb_get_extension_data(m_x.Xcb(), &xcb_xfixes_id);
    if (!xfixes || !xfixes->present) return;
    m_primerEvento = xfixes->first_event;
    const XcbPtr<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(m_x.Xcb(), xcb_xfixes_query_version(m_x.Xcb(), 5, 0), nullptr));
    m_seleccion = m_x.Atomo("_NET_SYSTEM_TRAY_S0");
    xcb_xfixes_select_selection_input(m_x.Xcb(), m_x.Raiz(), m_seleccion,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    m_x.Despacha();
}

bool cVigiaBandeja::HayEnElBus() const {
    const auto *bus = QDBusConnection::sessionBus().interface();
    return bus && bus->isServiceRegistered(QLatin1String(kVigilante));
}

bool cVigiaBandeja::HayEnX() {
    if (!m_x.Viva() || m_seleccion == XCB_NONE) return false;
    const XcbPtr<xcb_get_selection_owner_reply_t> dueno(
        xcb_get_selection_owner_reply(m_x.Xcb(), xcb_get_selection_owner(m_x.Xcb(), m_seleccion), nullptr));
    m_x.Despacha();
    return dueno && dueno->owner != XCB_NONE;
}

bool cVigiaBandeja::HayAnfitrion() {
    m_visto = HayEnElBus() || HayEnX();
    return m_visto;
}

void cVigiaBandeja::EventoX(const xcb_generic_event_t &evento) {
    if ((evento.response_type & 0x7f) != m_primerEvento + XCB_XFIXES_SELECTION_NOTIFY || m_visto) return;
    if (reinterpret_cast<const xcb_xfixes_selection_notify_event_t &>(evento).owner == XCB_NONE) return;
    m_visto = true;
    if (m_alAparecer) m_alAparecer();
}

}  // namespace ondalis
