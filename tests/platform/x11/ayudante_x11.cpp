// Another program on the test's X server, playing the part that its first argument names. Prints "listo" when it has
// taken its part, obeys a line "suelta" by giving it up, and ends at the end of its input. No Qt.
#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

xcb_connection_t *x;
xcb_window_t raiz, ventana;
std::string papel, texto;
std::string porEnviar;  // rest of a piecewise transfer
xcb_atom_t propiedadIncr = 0, formatoIncr = 0;
xcb_window_t destinoIncr = 0;

xcb_atom_t Atomo(const char *nombre) {
    auto *r = xcb_intern_atom_reply(x, xcb_intern_atom(x, 0, static_cast<std::uint16_t>(std::strlen(nombre)), nombre),
                                    nullptr);
    const xcb_atom_t atomo = r->atom;
    std::free(r);
    return atomo;
}

void Avisa(const xcb_selection_request_event_t &p, xcb_atom_t propiedad) {
    union {
        xcb_selection_notify_event_t aviso;
        char bytes[32];
    } e{};
    e.aviso.response_type = XCB_SELECTION_NOTIFY;
    e.aviso.time = p.time;
    e.aviso.requestor = p.requestor;
    e.aviso.selection = p.selection;
    e.aviso.target = p.target;
    e.aviso.property = propiedad;
    xcb_send_event(x, 0, p.requestor, 0, e.bytes);
}

void Pon(const xcb_selection_request_event_t &p, xcb_atom_t tipo, int bits, const void *datos, std::size_t n) {
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, p.requestor, p.property, tipo, static_cast<std::uint8_t>(bits),
                        static_cast<std::uint32_t>(n), datos);
    Avisa(p, p.property);
}

void Atiende(const xcb_selection_request_event_t &p) {
    const xcb_atom_t utf8 = Atomo("UTF8_STRING"), pista = Atomo("x-kde-passwordManagerHint");
    if (papel == "colgado") return;
    if (p.target == Atomo("TARGETS")) {
        if (papel == "antiguo") return Avisa(p, XCB_NONE);
        std::vector<xcb_atom_t> formatos{Atomo("TARGETS")};
        if (papel == "imagen") formatos.push_back(Atomo("image/png"));
        if (papel == "latin1") formatos.push_back(XCB_ATOM_STRING);
        if (papel == "mime") formatos.push_back(Atomo("text/plain;charset=utf-8"));
        if (papel == "secreto") formatos.push_back(pista);
        if (papel == "secreto" || papel == "texto" || papel == "incr" || papel == "medio") formatos.push_back(utf8);
        return Pon(p, XCB_ATOM_ATOM, 32, formatos.data(), formatos.size());
    }
    if (p.target == pista && papel == "secreto") return Pon(p, pista, 8, "secret", 6);
    if (papel == "latin1" && p.target == XCB_ATOM_STRING) return Pon(p, XCB_ATOM_STRING, 8, texto.data(), texto.size());
    if (papel == "antiguo" && p.target != XCB_ATOM_STRING) return Avisa(p, XCB_NONE);
    if (papel == "incr" || papel == "medio") {
        const std::uint32_t total = static_cast<std::uint32_t>(texto.size());
        const std::uint32_t mascara = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(x, p.requestor, XCB_CW_EVENT_MASK, &mascara);
        porEnviar = texto;
        propiedadIncr = p.property;
        formatoIncr = p.target;
        destinoIncr = p.requestor;
        return Pon(p, Atomo("INCR"), 32, &total, 1);
    }
    Pon(p, p.target, 8, texto.data(), texto.size());
}

// The reader has taken a piece: the next one. The part "medio" dies in the middle.
void SiguienteTrozo() {
    constexpr std::size_t kTrozo = 60000;
    if (papel == "medio" && porEnviar.size() < texto.size() / 2) std::_Exit(0);
    const std::size_t n = std::min(kTrozo, porEnviar.size());
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, destinoIncr, propiedadIncr, formatoIncr, 8,
                        static_cast<std::uint32_t>(n), porEnviar.data());
    if (n == 0) destinoIncr = 0;
    porEnviar.erase(0, n);
}

bool Toma(int argc, char **argv) {
    if (papel == "captura-teclado") {  // what a popup menu does
        auto *r = xcb_grab_keyboard_reply(
            x, xcb_grab_keyboard(x, 1, raiz, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC), nullptr);
        return r && r->status == XCB_GRAB_STATUS_SUCCESS;
    }
    if (papel == "captura-tecla" && argc > 3) {  // modifiers, key code: another program's hot key
        return xcb_request_check(x, xcb_grab_key_checked(x, 0, raiz, static_cast<std::uint16_t>(std::atoi(argv[2])),
                                                         static_cast<xcb_keycode_t>(std::atoi(argv[3])),
                                                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)) == nullptr;
    }
    xcb_set_selection_owner(x, ventana, Atomo("CLIPBOARD"), XCB_CURRENT_TIME);
    return true;
}

void Suelta() {
    if (papel == "captura-teclado") {
        xcb_ungrab_keyboard(x, XCB_CURRENT_TIME);
    } else if (papel == "captura-tecla") {
        xcb_ungrab_key(x, XCB_GRAB_ANY, raiz, XCB_MOD_MASK_ANY);
    } else {
        xcb_set_selection_owner(x, XCB_NONE, Atomo("CLIPBOARD"), XCB_CURRENT_TIME);
    }
}

void Eventos() {
    while (auto *e = xcb_poll_for_event(x)) {
        const int tipo = e->response_type & 0x7f;
        if (tipo == XCB_SELECTION_REQUEST) Atiende(*reinterpret_cast<xcb_selection_request_event_t *>(e));
        if (tipo == XCB_PROPERTY_NOTIFY) {
            const auto *p = reinterpret_cast<xcb_property_notify_event_t *>(e);
            if (destinoIncr != 0 && p->window == destinoIncr && p->atom == propiedadIncr &&
                p->state == XCB_PROPERTY_DELETE)
                SiguienteTrozo();
        }
        std::free(e);
    }
    xcb_flush(x);
}

}  // namespace

int main(int argc, char **argv) {
    papel = argc > 1 ? argv[1] : "";
    texto = argc > 2 ? argv[2] : "";
    if (papel == "incr" || papel == "medio") {  // the text's length in bytes: "palabra 0 palabra 1 ..."
        const std::size_t largo = static_cast<std::size_t>(std::atol(texto.c_str()));
        texto.clear();
        for (int i = 0; texto.size() < largo; ++i) texto += "palabra " + std::to_string(i) + " ";
        texto.resize(largo);
    }
    if (papel == "texto" && texto == "nulos") texto = std::string("uno\0dos\0", 8);
    if (papel == "texto" && texto == "invalido")
        texto =
            "ma\xF1"
            "ana \xC3\xB1";
    x = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(x)) return 1;
    raiz = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
    ventana = xcb_generate_id(x);
    xcb_create_window(x, 0, ventana, raiz, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0,
                      nullptr);
    if (!Toma(argc, argv)) return 2;
    Eventos();
    std::puts("listo");
    std::fflush(stdout);
    for (;;) {
        pollfd espera[2] = {{xcb_get_file_descriptor(x), POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}};
        poll(espera, 2, -1);
        if (espera[1].revents) {
            char linea[64];
            const ssize_t n = read(STDIN_FILENO, linea, sizeof linea);
            if (n <= 0) return 0;
            if (std::string_view(linea, static_cast<std::size_t>(n)).starts_with("suelta")) {
                Suelta();
                Eventos();
                std::puts("suelto");
                std::fflush(stdout);
            }
        }
        Eventos();
    }
}
