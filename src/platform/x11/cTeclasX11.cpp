#include "platform/x11/cTeclasX11.h"

#include <xcb/xinput.h>
// The header of this extension has a member called "explicit".
#define explicit explicito
#include <xcb/xkb.h>
#undef explicit

#include <algorithm>

namespace ondalis {

namespace {
constexpr std::uint32_t kControlAlt = 3;
constexpr xcb_timestamp_t kMayorRepeticionMs = 3000;  // no keyboard waits so long before it repeats a key
constexpr int kEsperaMapaMs = 20;                     // a new keymap comes as a row of events
}  // namespace

cTeclasX11::cTeclasX11(cLog &log, int reintentoMs)
    : m_log(log), m_conexion([this](const xcb_generic_event_t &evento) { Evento(evento); }) {
    m_remapeo.setSingleShot(true);
    m_remapeo.setInterval(kEsperaMapaMs);
    QObject::connect(&m_remapeo, &QTimer::timeout, &m_conexion, [this] { Remapea(); });
    m_reintento.setInterval(reintentoMs);
    QObject::connect(&m_reintento, &QTimer::timeout, &m_conexion, [this] { Reintenta(); });
    if (!m_conexion.Viva()) return;
    IniciaXkb();
    IniciaXinput();
    LeeMapa();
    m_conexion.Despacha();
}

cTeclasX11::~cTeclasX11() = default;  // the server drops the grabs of a connection that closes

void cTeclasX11::IniciaXkb() {
    xcb_connection_t *x = m_conexion.Xcb();
    const auto *extension = xcb_get_extension_data(x, &xcb_xkb_id);
    if (!extension || !extension->present) return;
    const XcbPtr<xcb_xkb_use_extension_reply_t> uso(
        xcb_xkb_use_extension_reply(x, xcb_xkb_use_extension(x, 1, 0), nullptr));
    if (!uso || !uso->supported) return;
    m_eventoXkb = extension->first_event;

    // Without this the repeats of a key held come as releases and presses, like a key hit many times.
    constexpr std::uint32_t repite = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    xcb_discard_reply(x, xcb_xkb_per_client_flags(x, XCB_XKB_ID_USE_CORE_KBD, repite, repite, 0, 0, 0).sequence);
    constexpr std::uint16_t eventos =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr std::uint16_t partesMapa = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events_details_t detalles{};
    detalles.affectNewKeyboard = detalles.newKeyboardDetails = XCB_XKB_NKN_DETAIL_KEYCODES;
    detalles.affectState = detalles.stateDetails = XCB_XKB_STATE_PART_MODIFIER_STATE;
    xcb_xkb_select_events_aux(x, XCB_XKB_ID_USE_CORE_KBD, eventos, 0, 0, partesMapa, partesMapa, &detalles);
    const XcbPtr<xcb_xkb_get_state_reply_t> estado(
        xcb_xkb_get_state_reply(x, xcb_xkb_get_state(x, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    if (estado) m_estado = estado->mods;
}

void cTeclasX11::IniciaXinput() {
    xcb_connection_t *x = m_conexion.Xcb();
    const auto *extension = xcb_get_extension_data(x, &xcb_input_id);
    // Raw events come without modifiers: those are the keyboard extension's to tell.
    if (!extension || !extension->present || m_eventoXkb == 0) return;
    // From version 2.1 on raw events come whoever holds a grab.
    const XcbPtr<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(x, xcb_input_xi_query_version(x, 2, 2), nullptr));
    if (!version || version->major_version < 2) return;
    struct {
        xcb_input_event_mask_t cabeza;
        std::uint32_t mascara;
    } const seleccion{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                      XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE};
    xcb_input_xi_select_events(x, m_conexion.Raiz(), 1, &seleccion.cabeza);
    m_codigoXinput = extension->major_opcode;
}

bool cTeclasX11::Registra(int identificador, std::uint32_t modificadores, int virtualKey) {
    Libera(identificador);
    Fila &fila = m_filas[identificador];
    fila.modificadores = modificadores;
    fila.virtualKey = virtualKey;
    if (!m_conexion.Viva()) return false;
    Resuelve(fila);
    const bool concedida = Concede(identificador, fila);
    if (!concedida) m_reintento.start();
    m_conexion.Despacha();
    return concedida;
}

void cTeclasX11::Libera(int identificador) {
    const auto fila = m_filas.find(identificador);
    if (fila == m_filas.end()) return;
    if (m_conexion.Viva() && fila->second.concedida) Suelta(fila->second);
    m_filas.erase(fila);
    std::erase_if(m_apretadas, [identificador](const auto &a) { return a.second.identificador == identificador; });
    // What this row held may be another one's at once.
    if (m_conexion.Viva()) Reintenta();
    m_conexion.Despacha();
}

bool cTeclasX11::Concedida(int identificador) const {
    const auto fila = m_filas.find(identificador);
    return fila != m_filas.end() && fila->second.concedida;
}

std::vector<int> cTeclasX11::ConSuper() const {
    std::vector<int> filas;
    for (const auto &[identificador, fila] : m_filas)
        if (fila.conSuper) filas.push_back(identificador);
    return filas;
}

// Key codes and state bits of the row on the keyboard as it is now.
void cTeclasX11::Resuelve(Fila &fila) const {
    fila.codigos = m_mapa.CodigosDe(fila.virtualKey);
    fila.conSuper = fila.modificadores == kControlAlt &&
                    std::any_of(fila.codigos.begin(), fila.codigos.end(),
                                [this](const CodigoX &c) { return m_mapa.CambiaTerminal(c.codigo); });
    fila.bits =
        fila.conSuper ? static_cast<std::uint16_t>(m_mapa.bitSuper | BitsX::Control) : m_mapa.Bits(fila.modificadores);
}

// Two rows of ours on one combination: the server would grant the second one too.
bool cTeclasX11::Choca(int identificador, const Fila &fila) const {
    return std::any_of(m_filas.begin(), m_filas.end(), [&](const auto &otra) {
        if (otra.first == identificador || !otra.second.concedida || otra.second.bits != fila.bits) return false;
        return std::any_of(fila.codigos.begin(), fila.codigos.end(), [&](const CodigoX &c) {
            return std::any_of(otra.second.codigos.begin(), otra.second.codigos.end(),
                               [&](const CodigoX &d) { return c.codigo == d.codigo; });
        });
    });
}

bool cTeclasX11::Concede(int identificador, Fila &fila) {
    fila.concedida = !fila.codigos.empty() && !Choca(identificador, fila) && Captura(fila);
    return fila.concedida;
}

// All key codes under all locks, or nothing.
bool cTeclasX11::Captura(const Fila &fila) {
    xcb_connection_t *x = m_conexion.Xcb();
    std::vector<xcb_void_cookie_t> peticiones;
    for (const CodigoX &codigo : fila.codigos)
        for (const std::uint16_t bloqueos : m_mapa.VariantesDeBloqueo(codigo))
            peticiones.push_back(xcb_grab_key_checked(x, 0, m_conexion.Raiz(),
                                                      static_cast<std::uint16_t>(fila.bits | bloqueos), codigo.codigo,
                                                      XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    bool todas = true;
    for (const auto peticion : peticiones)
        todas = !XcbPtr<xcb_generic_error_t>(xcb_request_check(x, peticion)) && todas;
    if (!todas) {
        Fila parcial = fila;
        Suelta(parcial);
    }
    return todas;
}

void cTeclasX11::Suelta(Fila &fila) {
    for (const CodigoX &codigo : fila.codigos)
        for (const std::uint16_t bloqueos : m_mapa.VariantesDeBloqueo(codigo))
            xcb_ungrab_key(m_conexion.Xcb(), codigo.codigo, m_conexion.Raiz(),
                           static_cast<std::uint16_t>(fila.bits | bloqueos));
    fila.concedida = false;
}

// Tries the rows that wait. The timer runs only while there are some.
void cTeclasX11::Reintenta() {
    bool quedan = false;
    for (auto &[identificador, fila] : m_filas)
        if (!fila.concedida && !Concede(identificador, fila)) quedan = true;
    if (!quedan)
        m_reintento.stop();
    else if (!m_reintento.isActive())
        m_reintento.start();
    m_conexion.Despacha();
}

// Reads the server's keyboard; true when it differs from what we knew.
bool cTeclasX11::LeeMapa() {
    xcb_connection_t *x = m_conexion.Xcb();
    const xcb_setup_t *servidor = xcb_get_setup(x);
    const auto teclas = static_cast<std::uint8_t>(servidor->max_keycode - servidor->min_keycode + 1);
    const auto pideTeclas = xcb_get_keyboard_mapping(x, servidor->min_keycode, teclas);
    const auto pideModificadores = xcb_get_modifier_mapping(x);
    const XcbPtr<xcb_get_keyboard_mapping_reply_t> mapa(xcb_get_keyboard_mapping_reply(x, pideTeclas, nullptr));
    const XcbPtr<xcb_get_modifier_mapping_reply_t> modificadores(
        xcb_get_modifier_mapping_reply(x, pideModificadores, nullptr));
    if (!mapa || !modificadores) return false;

    MapaTeclado nuevo;
    nuevo.primero = servidor->min_keycode;
    nuevo.porTecla = mapa->keysyms_per_keycode;
    const xcb_keysym_t *simbolos = xcb_get_keyboard_mapping_keysyms(mapa.get());
    nuevo.simbolos.assign(simbolos, simbolos + xcb_get_keyboard_mapping_keysyms_length(mapa.get()));
    const xcb_keycode_t *codigos = xcb_get_modifier_mapping_keycodes(modificadores.get());
    nuevo.FijaModificadores(
        {codigos, static_cast<std::size_t>(xcb_get_modifier_mapping_keycodes_length(modificadores.get()))},
        modificadores->keycodes_per_modifier);
    if (nuevo == m_mapa) return false;
    m_mapa = std::move(nuevo);
    return true;
}

void cTeclasX11::Remapea() {
    const MapaTeclado anterior = m_mapa;
    if (!LeeMapa()) return;
    const MapaTeclado nuevo = std::exchange(m_mapa, anterior);
    for (auto &[identificador, fila] : m_filas)
        if (fila.concedida) Suelta(fila);  // under the bits with which it was grabbed
    m_mapa = nuevo;
    for (auto &[identificador, fila] : m_filas) Resuelve(fila);
    Reintenta();
}

void cTeclasX11::Evento(const xcb_generic_event_t &evento) {
    const int tipo = evento.response_type & 0x7f;
    if (tipo == XCB_KEY_PRESS) {
        const auto &tecla = reinterpret_cast<const xcb_key_press_event_t &>(evento);
        Aprieta(tecla.detail, tecla.state, tecla.time, true);
    } else if (tipo == XCB_KEY_RELEASE) {
        // While our own grab is active the server sends no raw events, so the release comes this way.
        m_apretadas.erase(reinterpret_cast<const xcb_key_release_event_t &>(evento).detail);
    } else if (tipo == XCB_MAPPING_NOTIFY) {
        m_remapeo.start();
    } else if (tipo == XCB_GE_GENERIC) {
        EventoXinput(evento);
    } else if (m_eventoXkb != 0 && tipo == m_eventoXkb) {
        EventoXkb(evento);
    }
}

void cTeclasX11::EventoXkb(const xcb_generic_event_t &evento) {
    switch (evento.pad0) {  // the extension's own event type
        case XCB_XKB_STATE_NOTIFY:
            m_estado = reinterpret_cast<const xcb_xkb_state_notify_event_t &>(evento).mods;
            break;
        case XCB_XKB_NEW_KEYBOARD_NOTIFY:
        case XCB_XKB_MAP_NOTIFY: m_remapeo.start(); break;
        default: break;
    }
}

void cTeclasX11::EventoXinput(const xcb_generic_event_t &evento) {
    const auto &general = reinterpret_cast<const xcb_ge_generic_event_t &>(evento);
    if (m_codigoXinput == 0 || general.extension != m_codigoXinput) return;
    const auto &tecla = reinterpret_cast<const xcb_input_raw_key_press_event_t &>(evento);
    const auto codigo = static_cast<std::uint8_t>(tecla.detail);
    if (general.event_type == XCB_INPUT_RAW_KEY_PRESS) Aprieta(codigo, m_estado, tecla.time, false);
    if (general.event_type == XCB_INPUT_RAW_KEY_RELEASE) m_apretadas.erase(codigo);
}

// One press comes raw first and then, unless another program's grab stands in the way, from our own grab, both with
// the same time. A later event of a key still down is its auto-repeat.
void cTeclasX11::Aprieta(std::uint8_t codigo, std::uint16_t estado, xcb_timestamp_t momento, bool deCaptura) {
    const auto apretada = m_apretadas.find(codigo);
    if (apretada != m_apretadas.end()) {
        if (deCaptura && apretada->second.momento == momento) return;
        const bool repeticion = momento - apretada->second.momento < kMayorRepeticionMs;
        apretada->second.momento = momento;
        if (repeticion) {
            if (m_pulsada) m_pulsada(apretada->second.identificador, true);
            return;
        }
        m_apretadas.erase(apretada);  // its release was lost, as behind a switch of terminals
    }
    const int identificador = Busca(codigo, estado);
    if (identificador == 0) return;
    m_apretadas[codigo] = {identificador, momento};
    if (m_pulsada) m_pulsada(identificador, false);
}

int cTeclasX11::Busca(std::uint8_t codigo, std::uint16_t estado) const {
    const bool bloqNum = (estado & m_mapa.bitBloqNum) != 0;
    for (const auto &[identificador, fila] : m_filas) {
        if (!fila.concedida || (estado & m_mapa.BitsQueCuentan()) != fila.bits) continue;
        for (const CodigoX &c : fila.codigos)
            if (c.codigo == codigo && !(c.soloSinBloqNum && bloqNum)) return identificador;
    }
    return 0;
}

}  // namespace ondalis
