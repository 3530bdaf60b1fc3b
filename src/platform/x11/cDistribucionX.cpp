#include "platform/x11/cDistribucionX.h"

#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <cstdlib>
#include <string>

#include "keys/GanchoTeclado.h"
#include "platform/x11/TablaTeclasX.h"

namespace ondalis {

namespace {

constexpr const char *kLocalDeReserva = "es_ES.UTF-8";

// The user's locale for characters, as the C library chooses it.
std::string LocalDelUsuario() {
    for (const char *variable : {"LC_ALL", "LC_CTYPE", "LANG"})
        if (const char *valor = std::getenv(variable); valor && *valor) return valor;
    return {};
}

bool EsUtf8(const std::string &local) {
    return local.find("UTF-8") != std::string::npos || local.find("utf8") != std::string::npos;
}

}  // namespace

cDistribucionX::cDistribucionX(xcb_connection_t *conexion)
    : m_conexion(conexion), m_contexto(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    if (!m_contexto) return;
    xkb_context_set_log_level(m_contexto, XKB_LOG_LEVEL_CRITICAL);  // a user's faulty table is his programs' business
    IniciaCompose();
    Relee();
}

cDistribucionX::~cDistribucionX() {
    xkb_state_unref(m_estado);
    xkb_keymap_unref(m_mapa);
    xkb_compose_state_unref(m_compose);
    xkb_compose_table_unref(m_tabla);
    xkb_context_unref(m_contexto);
}

void cDistribucionX::IniciaCompose() {
    const std::string local = LocalDelUsuario();
    if (EsUtf8(local))
        m_tabla = xkb_compose_table_new_from_locale(m_contexto, local.c_str(), XKB_COMPOSE_COMPILE_NO_FLAGS);
    if (!m_tabla)
        m_tabla = xkb_compose_table_new_from_locale(m_contexto, kLocalDeReserva, XKB_COMPOSE_COMPILE_NO_FLAGS);
    if (m_tabla) m_compose = xkb_compose_state_new(m_tabla, XKB_COMPOSE_STATE_NO_FLAGS);
}

void cDistribucionX::Relee() {
    if (!m_contexto) return;
    const std::int32_t teclado = xkb_x11_get_core_keyboard_device_id(m_conexion);
    xkb_keymap *mapa =
        teclado < 0 ? nullptr
                    : xkb_x11_keymap_new_from_device(m_contexto, m_conexion, teclado, XKB_KEYMAP_COMPILE_NO_FLAGS);
    xkb_state *estado = mapa ? xkb_x11_state_new_from_device(mapa, m_conexion, teclado) : nullptr;
    xkb_state_unref(m_estado);
    xkb_keymap_unref(m_mapa);
    m_mapa = mapa;
    m_estado = estado;
    OlvidaMuerta();
}

void cDistribucionX::SetEstado(const Estado &e) {
    if (m_estado) xkb_state_update_mask(m_estado, e.base, e.latente, e.fijo, e.grupoBase, e.grupoLatente, e.grupoFijo);
}

bool cDistribucionX::Activo(const char *modificador) const {
    return xkb_state_mod_name_is_active(m_estado, modificador, XKB_STATE_MODS_EFFECTIVE) > 0;
}

int cDistribucionX::Modificadores() const {
    if (!m_estado) return 0;
    return (Activo(XKB_MOD_NAME_SHIFT) ? TeclaEscrita::Mayus : 0) |
           (Activo(XKB_MOD_NAME_CTRL) ? TeclaEscrita::Control : 0) |
           (Activo(XKB_MOD_NAME_ALT) ? TeclaEscrita::Alt : 0) | (Activo(XKB_MOD_NAME_LOGO) ? TeclaEscrita::Super : 0);
}

// A keypad key is what its present level makes of it, any other what it is without Shift: on the layout in use, else on
// the first one, as letters of another script have their place on the keyboard; a digit row with digits behind Shift is
// one all the same.
int cDistribucionX::VirtualKey(std::uint8_t codigo) const {
    if (!m_estado) return 0;
    const xkb_keysym_t ahora = xkb_state_key_get_one_sym(m_estado, codigo);
    const int enTeclado = VirtualKeyDe(ahora);
    if (enTeclado >= 96 && enTeclado <= 111) return enTeclado;
    const xkb_layout_index_t grupo = xkb_state_key_get_layout(m_estado, codigo);
    for (const xkb_layout_index_t distribucion : {grupo, xkb_layout_index_t{0}})
        for (const xkb_level_index_t nivel : {xkb_level_index_t{0}, xkb_level_index_t{1}}) {
            const xkb_keysym_t *simbolos = nullptr;
            const int n = xkb_keymap_key_get_syms_by_level(m_mapa, codigo, distribucion, nivel, &simbolos);
            const int tecla = n > 0 ? VirtualKeyDe(simbolos[0]) : 0;
            if (tecla != 0 && (nivel == 0 || (tecla >= '0' && tecla <= '9'))) return tecla;
        }
    return enTeclado;
}

QString cDistribucionX::Caracteres(std::uint8_t codigo) {
    constexpr int kCombinan = TeclaEscrita::Control | TeclaEscrita::Alt | TeclaEscrita::Super;
    if (!m_estado || (Modificadores() & kCombinan) != 0) return {};
    const xkb_keysym_t simbolo = xkb_state_key_get_one_sym(m_estado, codigo);
    char texto[64] = {};
    if (m_compose && xkb_compose_state_feed(m_compose, simbolo) == XKB_COMPOSE_FEED_ACCEPTED) {
        switch (xkb_compose_state_get_status(m_compose)) {
            case XKB_COMPOSE_COMPOSING: return {};
            case XKB_COMPOSE_COMPOSED:
                xkb_compose_state_get_utf8(m_compose, texto, sizeof texto);
                OlvidaMuerta();
                return QString::fromUtf8(texto);
            case XKB_COMPOSE_CANCELLED:  // no such pair: the second key is what it is alone
                OlvidaMuerta();
                break;
            case XKB_COMPOSE_NOTHING: break;
        }
    }
    // The keysym's own character: the state's would make Control codes of letters and capitals by Caps Lock twice.
    if (xkb_keysym_to_utf8(simbolo, texto, sizeof texto) <= 0) return {};
    return QString::fromUtf8(texto);
}

bool cDistribucionX::SeRepite(std::uint8_t codigo) const { return m_mapa && xkb_keymap_key_repeats(m_mapa, codigo); }

void cDistribucionX::OlvidaMuerta() {
    if (m_compose) xkb_compose_state_reset(m_compose);
}

}  // namespace ondalis
