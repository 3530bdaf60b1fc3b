#include "platform/x11/cTecladoX11.h"

#include <unistd.h>
#include <xcb/xinput.h>
// The header of this extension has a member called "explicit".
#define explicit explicito
#include <xcb/xkb.h>
#undef explicit

#include <QGuiApplication>
#include <QInputMethodQueryEvent>
#include <algorithm>
#include <cstring>

namespace ondalis {

namespace {
constexpr int kEsperaMapaMs = 20;  // a new keymap comes as a row of events
}

void cTecladoX11::Inicia() {
    if (m_conexion) return;
    m_conexion = std::make_unique<cConexionX>([this](const xcb_generic_event_t &evento) { Evento(evento); });
    if (m_conexion->Viva() && IniciaXkb()) {
        m_distribucion.emplace(m_conexion->Xcb());
        LeeRepeticion();
        IniciaXinput();
    }
    if (!Oye()) {
        m_log.Escribe(QStringLiteral("cTecladoX11.Inicia: "), QStringLiteral("No se puede oír el teclado"));
        return;
    }
    m_repeticion = std::make_unique<QTimer>();
    m_repeticion->setTimerType(Qt::PreciseTimer);
    QObject::connect(m_repeticion.get(), &QTimer::timeout, m_conexion.get(), [this] { Repite(); });
    m_remapeo = std::make_unique<QTimer>();
    m_remapeo->setSingleShot(true);
    m_remapeo->setInterval(kEsperaMapaMs);
    QObject::connect(m_remapeo.get(), &QTimer::timeout, m_conexion.get(), [this] {
        m_distribucion->Relee();
        m_conexion->Despacha();
    });
    m_activa = m_conexion->Atomo("_NET_ACTIVE_WINDOW");
    m_pid = m_conexion->Atomo("_NET_WM_PID");
    constexpr std::uint32_t propiedades = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_conexion->Xcb(), m_conexion->Raiz(), XCB_CW_EVENT_MASK, &propiedades);
    m_enFrente = XCB_NONE;
    LeeVentana();
    m_conexion->Despacha();
}

void cTecladoX11::Termina() {
    m_repeticion.reset();
    m_remapeo.reset();
    m_distribucion.reset();
    m_conexion.reset();
    m_eventoXkb = m_codigoXinput = m_repetida = 0;
}

bool cTecladoX11::IniciaXkb() {
    xcb_connection_t *x = m_conexion->Xcb();
    const auto *extension = xcb_get_extension_data(x, &xcb_xkb_id);
    if (!extension || !extension->present) return false;
    const XcbPtr<xcb_xkb_use_extension_reply_t> uso(
        xcb_xkb_use_extension_reply(x, xcb_xkb_use_extension(x, 1, 0), nullptr));
    if (!uso || !uso->supported) return false;
    m_eventoXkb = extension->first_event;
    constexpr std::uint16_t eventos = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                      XCB_XKB_EVENT_TYPE_STATE_NOTIFY | XCB_XKB_EVENT_TYPE_CONTROLS_NOTIFY;
    constexpr std::uint16_t partesMapa = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                         XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                                         XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    constexpr std::uint16_t partesEstado = XCB_XKB_STATE_PART_MODIFIER_BASE | XCB_XKB_STATE_PART_MODIFIER_LATCH |
                                           XCB_XKB_STATE_PART_MODIFIER_LOCK | XCB_XKB_STATE_PART_GROUP_BASE |
                                           XCB_XKB_STATE_PART_GROUP_LATCH | XCB_XKB_STATE_PART_GROUP_LOCK;
    constexpr std::uint32_t controles = std::uint32_t{XCB_XKB_BOOL_CTRL_REPEAT_KEYS} |
                                        std::uint32_t{XCB_XKB_CONTROL_CONTROLS_ENABLED} |
                                        std::uint32_t{XCB_XKB_CONTROL_PER_KEY_REPEAT};
    xcb_xkb_select_events_details_t detalles{};
    detalles.affectNewKeyboard = detalles.newKeyboardDetails = XCB_XKB_NKN_DETAIL_KEYCODES;
    detalles.affectState = detalles.stateDetails = partesEstado;
    detalles.affectCtrls = detalles.ctrlDetails = controles;
    xcb_xkb_select_events_aux(x, XCB_XKB_ID_USE_CORE_KBD, eventos, 0, 0, partesMapa, partesMapa, &detalles);
    return true;
}

void cTecladoX11::IniciaXinput() {
    xcb_connection_t *x = m_conexion->Xcb();
    const auto *extension = xcb_get_extension_data(x, &xcb_input_id);
    if (!extension || !extension->present) return;
    const XcbPtr<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(x, xcb_input_xi_query_version(x, 2, 0), nullptr));
    if (!version || version->major_version < 2) return;
    struct {
        xcb_input_event_mask_t cabeza;
        std::uint32_t mascara;
    } const seleccion{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                      XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE};
    xcb_input_xi_select_events(x, m_conexion->Raiz(), 1, &seleccion.cabeza);
    m_codigoXinput = extension->major_opcode;
}

void cTecladoX11::LeeRepeticion() {
    xcb_connection_t *x = m_conexion->Xcb();
    const XcbPtr<xcb_xkb_get_controls_reply_t> c(
        xcb_xkb_get_controls_reply(x, xcb_xkb_get_controls(x, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    m_retraso = m_intervalo = 0;
    if (!c || (c->enabledControls & XCB_XKB_BOOL_CTRL_REPEAT_KEYS) == 0) return;
    m_retraso = c->repeatDelay;
    m_intervalo = c->repeatInterval;
    static_assert(sizeof m_seRepiten == sizeof c->perKeyRepeat);
    std::memcpy(m_seRepiten, c->perKeyRepeat, sizeof m_seRepiten);
}

std::uint32_t cTecladoX11::Propiedad(xcb_window_t ventana, xcb_atom_t propiedad) {
    xcb_connection_t *x = m_conexion->Xcb();
    const XcbPtr<xcb_get_property_reply_t> respuesta(xcb_get_property_reply(
        x, xcb_get_property(x, 0, ventana, propiedad, XCB_GET_PROPERTY_TYPE_ANY, 0, 1), nullptr));
    std::uint32_t valor = 0;
    if (respuesta && xcb_get_property_value_length(respuesta.get()) == sizeof valor)
        std::memcpy(&valor, xcb_get_property_value(respuesta.get()), sizeof valor);
    return valor;
}

void cTecladoX11::LeeVentana() {
    const xcb_window_t ventana = Propiedad(m_conexion->Raiz(), m_activa);
    if (ventana != XCB_NONE && ventana == m_enFrente) return;
    m_enFrente = ventana;
    m_distribucion->OlvidaMuerta();
    const auto proceso = ventana == XCB_NONE ? 0 : static_cast<int>(Propiedad(ventana, m_pid));
    if (m_ventana) m_ventana(proceso);
}

bool cTecladoX11::EnSecretoPropio() {
    QObject *objeto = QGuiApplication::focusObject();
    if (!objeto) return false;
    QInputMethodQueryEvent pregunta(Qt::ImHints | Qt::ImEnabled);
    QCoreApplication::sendEvent(objeto, &pregunta);
    return (Qt::InputMethodHints(pregunta.value(Qt::ImHints).toInt()) & Qt::ImhHiddenText) != 0;
}

void cTecladoX11::Evento(const xcb_generic_event_t &evento) {
    const std::uint8_t tipo = evento.response_type & 0x7f;
    if (!m_distribucion) return;
    if (tipo == m_eventoXkb) {
        EventoXkb(evento);
    } else if (tipo == XCB_GE_GENERIC) {
        EventoXinput(evento);
    } else if (tipo == XCB_PROPERTY_NOTIFY) {
        if (reinterpret_cast<const xcb_property_notify_event_t &>(evento).atom == m_activa) LeeVentana();
    }
}

void cTecladoX11::EventoXkb(const xcb_generic_event_t &evento) {
    // All events of the extension have one number; their kind is in the byte behind it.
    switch (evento.pad0) {
        case XCB_XKB_STATE_NOTIFY: {
            const auto &e = reinterpret_cast<const xcb_xkb_state_notify_event_t &>(evento);
            m_distribucion->SetEstado({e.baseMods, e.latchedMods, e.lockedMods, static_cast<std::uint8_t>(e.baseGroup),
                                       static_cast<std::uint8_t>(e.latchedGroup), e.lockedGroup});
            break;
        }
        case XCB_XKB_NEW_KEYBOARD_NOTIFY:
        case XCB_XKB_MAP_NOTIFY: m_remapeo->start(); break;
        case XCB_XKB_CONTROLS_NOTIFY: LeeRepeticion(); break;
        default: break;
    }
}

void cTecladoX11::EventoXinput(const xcb_generic_event_t &evento) {
    const auto &e = reinterpret_cast<const xcb_input_raw_key_press_event_t &>(evento);
    if (e.extension != m_codigoXinput || e.detail > 255) return;
    const auto codigo = static_cast<std::uint8_t>(e.detail);
    if (e.event_type == XCB_INPUT_RAW_KEY_RELEASE && codigo == m_repetida) {
        m_repetida = 0;
        m_repeticion->stop();
    }
    if (e.event_type != XCB_INPUT_RAW_KEY_PRESS) return;
    // A key that repeats takes the repetition over; a modifier leaves it.
    if (m_retraso > 0 && m_distribucion->SeRepite(codigo) && (m_seRepiten[codigo / 8] & (1 << codigo % 8)) != 0) {
        m_repetida = codigo;
        m_repeticion->start(m_retraso);
    }
    Aprieta(codigo);
}

void cTecladoX11::Aprieta(std::uint8_t codigo) {
    TeclaEscrita tecla{m_distribucion->VirtualKey(codigo), m_distribucion->Modificadores(),
                       m_distribucion->Caracteres(codigo)};
    if (m_tecla) m_tecla(tecla);
}

void cTecladoX11::Repite() {
    // The release may have gone to a program that has grabbed the keyboard meanwhile.
    xcb_connection_t *x = m_conexion->Xcb();
    const XcbPtr<xcb_query_keymap_reply_t> teclas(xcb_query_keymap_reply(x, xcb_query_keymap(x), nullptr));
    const std::uint8_t codigo = m_repetida;
    const bool abajo = teclas && (teclas->keys[codigo / 8] & (1 << codigo % 8)) != 0;
    m_conexion->Despacha();
    if (codigo == 0 || !abajo) {
        m_repetida = 0;
        m_repeticion->stop();
        return;
    }
    m_repeticion->start(std::max(m_intervalo, 1));
    Aprieta(codigo);
}

}  // namespace ondalis
