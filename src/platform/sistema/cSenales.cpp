#include "platform/sistema/cSenales.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>

namespace ondalis {

namespace {

constexpr int kSenales[] = {SIGTERM, SIGINT, SIGHUP};
int tubo[2] = {-1, -1};  // a handler can reach nothing but this

void Manejador(int) {
    const int error = errno;
    // A full pipe holds enough of them already.
    [[maybe_unused]] const ssize_t n = write(tubo[1], "x", 1);
    errno = error;
}

}  // namespace

cSenales::cSenales(std::function<void()> alTerminar) {
    if (pipe2(tubo, O_CLOEXEC | O_NONBLOCK) != 0) return;
    m_aviso = std::make_unique<QSocketNotifier>(tubo[0], QSocketNotifier::Read);
    QObject::connect(m_aviso.get(), &QSocketNotifier::activated, m_aviso.get(), [alTerminar = std::move(alTerminar)] {
        char basura[16];
        while (read(tubo[0], basura, sizeof basura) > 0) {
        }
        alTerminar();
    });
    struct sigaction accion {};
    accion.sa_handler = Manejador;
    accion.sa_flags = SA_RESTART;
    for (const int senal : kSenales) sigaction(senal, &accion, nullptr);
    signal(SIGPIPE, SIG_IGN);  // a peer that is gone is told by the write that fails
    signal(SIGXFSZ, SIG_IGN);  // so is a file that may not grow any more
}

cSenales::~cSenales() {
    for (const int senal : kSenales) signal(senal, SIG_DFL);
    m_aviso.reset();
    for (int &extremo : tubo) {
        if (extremo >= 0) close(extremo);
        extremo = -1;
    }
}

}  // namespace ondalis
