#include "platform/x11/cPortapapelesX11.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <cstring>

namespace ondalis {

namespace {
constexpr std::uint32_t kMaxPropiedad = 256 * 1024 * 1024;  // bytes; no server takes so many in one piece
constexpr std::size_t kNumPropiedades = 8;
}  // namespace

cPortapapelesX11::cPortapapelesX11(cLog &log) : cPortapapelesX11(log, Plazos{}) {}

cPortapapelesX11::cPortapapelesX11(cLog &log, Plazos plazos, std::size_t maxBytes)
    : m_log(log),
      m_plazos(plazos),
      m_maxBytes(maxBytes),
      m_conexion([this](const xcb_generic_event_t &evento) { Evento(evento); }) {
    if (!m_conexion.Viva()) return;
    xcb_connection_t *x = m_conexion.Xcb();
    const auto *xfixes = xcb_get_extension_data(x, &xcb_xfixes_id);
    if (!xfixes || !xfixes->present) {
        m_log.Escribe(QStringLiteral("cPortapapelesX11.Init: "), QStringLiteral("el servidor X no tiene XFixes"));
        return;
    }
    m_primerEvento = xfixes->first_event;
    const XcbPtr<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(x, xcb_xfixes_query_version(x, 5, 0), nullptr));

    m_portapapeles = m_conexion.Atomo("CLIPBOARD");
    m_formatos = m_conexion.Atomo("TARGETS");
    m_utf8 = m_conexion.Atomo("UTF8_STRING");
    m_textoUtf8 = m_conexion.Atomo("text/plain;charset=utf-8");
    m_secreto = m_conexion.Atomo("x-kde-passwordManagerHint");
    m_incr = m_conexion.Atomo("INCR");
    m_reloj = m_conexion.Atomo("ONDALIS_RELOJ");
    for (std::size_t i = 0; i < kNumPropiedades; ++i)
        m_propiedades.push_back(m_conexion.Atomo(("ONDALIS_PORTAPAPELES_" + std::to_string(i)).c_str()));

    m_ventana = xcb_generate_id(x);
    const std::uint32_t valores[] = {1, XCB_EVENT_MASK_PROPERTY_CHANGE};
    xcb_create_window(x, 0, m_ventana, m_conexion.Raiz(), -10, -10, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, valores);
    xcb_xfixes_select_selection_input(x, m_ventana, m_portapapeles,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    m_plazo.setSingleShot(true);
    QObject::connect(&m_plazo, &QTimer::timeout, &m_conexion, [this] { Abandona(); });

    const XcbPtr<xcb_get_selection_owner_reply_t> dueno(
        xcb_get_selection_owner_reply(x, xcb_get_selection_owner(x, m_portapapeles), nullptr));
    // No event of this owner will come; the moment of its ownership isn't known, so the current time stands for it.
    if (dueno && dueno->owner != XCB_NONE) {
        m_dueno = dueno->owner;
        Recoge(XCB_CURRENT_TIME);
    }
    m_conexion.Despacha();
}

cPortapapelesX11::~cPortapapelesX11() = default;

void cPortapapelesX11::Vacia() {
    m_conexion.PonteAlDia();  // a copy made before this call is emptied too, one made after it isn't
    if (m_hay) m_vaciado = m_texto;
    m_hay = false;
    m_texto.clear();
    m_desdeVaciado.start();
    if (!m_conexion.Viva() || m_ventana == XCB_NONE) return;
    if (m_paso != Paso::Reposo && m_plazo.isActive()) {
        m_vaciando = true;
    } else {  // nothing under way, or only the request of an owner given up
        m_paso = Paso::Reposo;
        PideMomento();
    }
    m_conexion.Despacha();
}

// A change of a property of ours comes back with the server's time, which giving up a selection asks for. An owner that
// came before this moment is told of first, and calls it off.
void cPortapapelesX11::PideMomento() {
    m_esperaMomento = true;
    xcb_change_property(m_conexion.Xcb(), XCB_PROP_MODE_APPEND, m_ventana, m_reloj, XCB_ATOM_INTEGER, 32, 0, nullptr);
}

// The server refuses a request older than the present owner, so a copy made meanwhile stands; one millisecond before
// the moment, also a copy made within it does. But the server's clock may have stood still since the owner to be
// emptied came: if that one is still there, it goes at the moment itself.
void cPortapapelesX11::Suelta(xcb_timestamp_t momento) {
    m_esperaMomento = false;
    m_desdeVaciado.start();
    Renuncia(momento - 1);
    xcb_connection_t *x = m_conexion.Xcb();
    const XcbPtr<xcb_get_selection_owner_reply_t> dueno(
        xcb_get_selection_owner_reply(x, xcb_get_selection_owner(x, m_portapapeles), nullptr));
    if (dueno && dueno->owner != XCB_NONE && dueno->owner == m_dueno) Renuncia(momento);
}

void cPortapapelesX11::Renuncia(xcb_timestamp_t momento) {
    xcb_set_selection_owner(m_conexion.Xcb(), m_ventana, m_portapapeles, momento);
    xcb_set_selection_owner(m_conexion.Xcb(), XCB_NONE, m_portapapeles, momento);
}

void cPortapapelesX11::Evento(const xcb_generic_event_t &evento) {
    const int tipo = evento.response_type & 0x7f;
    if (tipo == m_primerEvento + XCB_XFIXES_SELECTION_NOTIFY) {
        CambiaDueno(evento);
    } else if (tipo == XCB_SELECTION_NOTIFY) {
        const auto &aviso = reinterpret_cast<const xcb_selection_notify_event_t &>(evento);
        // A refusal names no property; target and time tell which request it answers.
        const bool rehusa = aviso.property == XCB_NONE && aviso.target == m_formato &&
                            (aviso.time == m_momento || m_momento == XCB_CURRENT_TIME);
        const bool nuestra = m_paso != Paso::Reposo && m_paso != Paso::Trozos;
        if (nuestra && (aviso.property == m_propiedad || rehusa))
            Contesta(aviso.property);
        else if (aviso.property != XCB_NONE && aviso.property != m_propiedad)
            xcb_delete_property(m_conexion.Xcb(), m_ventana, aviso.property);  // too late: nobody wants it any more
    } else if (tipo == XCB_PROPERTY_NOTIFY) {
        const auto &aviso = reinterpret_cast<const xcb_property_notify_event_t &>(evento);
        if (aviso.state != XCB_PROPERTY_NEW_VALUE) return;
        if (aviso.atom == m_reloj && m_esperaMomento) Suelta(aviso.time);
        if (m_paso == Paso::Trozos && aviso.atom == m_propiedad) LeeTrozo();
    } else if (tipo == XCB_SELECTION_REQUEST) {
        Rehusa(evento);
    }
}

void cPortapapelesX11::CambiaDueno(const xcb_generic_event_t &evento) {
    const auto &aviso = reinterpret_cast<const xcb_xfixes_selection_notify_event_t &>(evento);
    if (aviso.selection != m_portapapeles || aviso.owner == m_ventana) return;
    m_dueno = aviso.owner;
    if (aviso.subtype != XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER) {
        // The owner has exited. What it gave stays ours; what it still owed will not come.
        if (m_paso != Paso::Reposo) Termina(m_hay, m_texto);
        return;
    }
    m_vaciando = false;  // somebody else's deed: whatever was to be emptied is gone
    m_esperaMomento = false;
    if (aviso.owner == XCB_NONE) {
        Termina(false, {});
    } else {
        Recoge(aviso.timestamp);
    }
}

void cPortapapelesX11::Recoge(xcb_timestamp_t momento) {
    m_momento = momento;
    m_trozos.clear();
    m_porProbar.clear();
    Pide(Paso::Formatos, m_formatos);
}

void cPortapapelesX11::Pide(Paso paso, xcb_atom_t formato) {
    m_paso = paso;
    m_formato = formato;
    m_propiedad = m_propiedades[m_turno++ % m_propiedades.size()];
    xcb_delete_property(m_conexion.Xcb(), m_ventana, m_propiedad);
    xcb_convert_selection(m_conexion.Xcb(), m_ventana, m_portapapeles, formato, m_propiedad, m_momento);
    m_plazo.start(m_plazos.respuestaMs);
}

void cPortapapelesX11::Contesta(xcb_atom_t propiedad) {
    xcb_atom_t tipo = XCB_NONE;
    std::vector<char> datos;
    if (propiedad != XCB_NONE) datos = LeePropiedad(propiedad, tipo);
    const bool rehusado = propiedad == XCB_NONE || tipo == XCB_NONE;
    switch (m_paso) {
        case Paso::Formatos:
            if (rehusado) {  // an owner older than TARGETS
                m_porProbar = {m_utf8, m_textoUtf8, XCB_ATOM_STRING};
                SiguienteFormato();
            } else {
                LeeFormatos(datos);
            }
            break;
        case Paso::Secreto:
            // A hint that its owner won't give is taken for the worst.
            if (rehusado || std::string_view(datos.data(), datos.size()).starts_with("secret"))
                Termina(false, {});
            else
                SiguienteFormato();
            break;
        case Paso::Texto:
            if (rehusado) {
                SiguienteFormato();
            } else if (tipo == m_incr) {
                m_paso = Paso::Trozos;  // having deleted the property asks for the first piece
                m_plazo.start(m_plazos.respuestaMs);
            } else if (datos.size() > m_maxBytes) {
                Desecha();
            } else {
                Termina(true, Descifra(datos, m_formato));
            }
            break;
        case Paso::Reposo:
        case Paso::Trozos: break;
    }
}

void cPortapapelesX11::LeeFormatos(const std::vector<char> &datos) {
    std::vector<xcb_atom_t> formatos(datos.size() / sizeof(xcb_atom_t));
    std::memcpy(formatos.data(), datos.data(), formatos.size() * sizeof(xcb_atom_t));
    const auto tiene = [&formatos](xcb_atom_t f) {
        return std::find(formatos.begin(), formatos.end(), f) != formatos.end();
    };
    for (const xcb_atom_t formato : {m_utf8, m_textoUtf8, static_cast<xcb_atom_t>(XCB_ATOM_STRING)})
        if (tiene(formato)) m_porProbar.push_back(formato);
    if (m_porProbar.empty()) {
        Termina(false, {});
    } else if (tiene(m_secreto)) {
        Pide(Paso::Secreto, m_secreto);
    } else {
        SiguienteFormato();
    }
}

void cPortapapelesX11::SiguienteFormato() {
    if (m_porProbar.empty()) {
        Termina(false, {});
        return;
    }
    const xcb_atom_t formato = m_porProbar.front();
    m_porProbar.erase(m_porProbar.begin());
    Pide(Paso::Texto, formato);
}

void cPortapapelesX11::LeeTrozo() {
    xcb_atom_t tipo = XCB_NONE;
    const std::vector<char> datos = LeePropiedad(m_propiedad, tipo);
    if (datos.empty()) {
        Termina(true, Descifra(m_trozos, m_formato));
        return;
    }
    if (m_trozos.size() + datos.size() > m_maxBytes) {
        Desecha();
        return;
    }
    m_trozos.insert(m_trozos.end(), datos.begin(), datos.end());
    m_plazo.start(m_plazos.respuestaMs);
}

// It is no copy for us; its owner may go on sending, and its pieces are left where they are.
void cPortapapelesX11::Desecha() {
    m_log.Escribe(QStringLiteral("cPortapapelesX11.Recoge: "), QStringLiteral("el texto es demasiado largo"));
    Termina(false, {});
}

void cPortapapelesX11::Termina(bool hay, const QString &texto) {
    m_paso = Paso::Reposo;
    m_propiedad = XCB_NONE;
    m_plazo.stop();
    m_trozos = {};
    if (m_vaciando) {
        m_vaciando = false;
        if (!texto.isEmpty()) m_vaciado = texto;
        PideMomento();
    } else {
        const bool vuelve = hay && !texto.isEmpty() && texto == m_vaciado && m_desdeVaciado.isValid() &&
                            !m_desdeVaciado.hasExpired(m_plazos.retornoMs);
        m_hay = hay && !vuelve;
        m_texto = m_hay ? texto : QString();
        if (m_hay) m_vaciado.clear();
    }
    if (m_alRecoger) m_alRecoger();
}

// The owner is silent. Its request stays open: an answer that comes late is still the clipboard's text.
void cPortapapelesX11::Abandona() {
    m_log.Escribe(QStringLiteral("cPortapapelesX11.Recoge: "),
                  QStringLiteral("la aplicación que ha copiado no responde"));
    if (m_vaciando) {  // there is no text to wait for: empty it unknown
        Termina(false, {});
        m_conexion.Despacha();
    } else if (m_alRecoger) {
        m_alRecoger();
    }
}

// We own the selection only between taking and giving it up, and have nothing to give.
void cPortapapelesX11::Rehusa(const xcb_generic_event_t &evento) {
    const auto &peticion = reinterpret_cast<const xcb_selection_request_event_t &>(evento);
    union {  // an event on the wire has 32 bytes
        xcb_selection_notify_event_t aviso;
        char bytes[32];
    } respuesta{};
    respuesta.aviso.response_type = XCB_SELECTION_NOTIFY;
    respuesta.aviso.time = peticion.time;
    respuesta.aviso.requestor = peticion.requestor;
    respuesta.aviso.selection = peticion.selection;
    respuesta.aviso.target = peticion.target;
    respuesta.aviso.property = XCB_NONE;
    xcb_send_event(m_conexion.Xcb(), 0, peticion.requestor, 0, respuesta.bytes);
}

// Reads and deletes the property. Deleting is what asks for the next piece of a long text.
std::vector<char> cPortapapelesX11::LeePropiedad(xcb_atom_t propiedad, xcb_atom_t &tipo) {
    xcb_connection_t *x = m_conexion.Xcb();
    const auto peticion = xcb_get_property(x, 1, m_ventana, propiedad, XCB_GET_PROPERTY_TYPE_ANY, 0, kMaxPropiedad / 4);
    const XcbPtr<xcb_get_property_reply_t> respuesta(xcb_get_property_reply(x, peticion, nullptr));
    tipo = respuesta ? respuesta->type : static_cast<xcb_atom_t>(XCB_NONE);
    if (!respuesta) return {};
    const auto *datos = static_cast<const char *>(xcb_get_property_value(respuesta.get()));
    return {datos, datos + xcb_get_property_value_length(respuesta.get())};
}

QString cPortapapelesX11::Descifra(const std::vector<char> &datos, xcb_atom_t formato) const {
    const auto n = static_cast<qsizetype>(datos.size());
    QString texto =
        formato == XCB_ATOM_STRING ? QString::fromLatin1(datos.data(), n) : QString::fromUtf8(datos.data(), n);
    // Some owners count the terminating NUL in; none of them belongs to a text.
    texto.remove(QChar(u'\0'));
    return texto;
}

}  // namespace ondalis
