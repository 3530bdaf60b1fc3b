#include "platform/sistema/cInstancia.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <thread>

#include "settings/Fallo.h"

namespace ondalis {

namespace {

struct flock Tramo(long desde, long cuantos, short clase) {
    struct flock tramo {};
    tramo.l_type = clase;
    tramo.l_whence = SEEK_SET;
    tramo.l_start = desde;
    tramo.l_len = cuantos;
    return tramo;
}

// The lock that failed is another's, and not one that this file system doesn't know.
bool Ocupado() { return errno == EAGAIN || errno == EACCES; }

}  // namespace

cInstancia::cInstancia(QString fichero, cLog &log) : m_log(log), m_fichero(std::move(fichero)) {
    QDir().mkpath(QFileInfo(m_fichero).absolutePath());
    m_descriptor =
        open(QFile::encodeName(m_fichero).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
    // The sticky bit keeps the run-time folder's cleaner away from a file that nobody touches for days.
    if (m_descriptor >= 0) (void)fchmod(m_descriptor, S_IRUSR | S_IWUSR | S_ISVTX);
    if (m_descriptor < 0) m_log.Escribe(QStringLiteral("cInstancia: "), Fallo::De(Fallo::ErrorDeAcceso), m_fichero);
}

cInstancia::~cInstancia() {
    if (m_descriptor >= 0) close(m_descriptor);
}

bool cInstancia::Bloquea(long desde, long cuantos, short clase) const {
    struct flock tramo = Tramo(desde, cuantos, clase);
    return fcntl(m_descriptor, F_OFD_SETLK, &tramo) == 0;
}

bool cInstancia::HayOtra() const {
    if (m_descriptor < 0) return false;
    // Locks of this very descriptor don't stand in its own way.
    struct flock tramo = Tramo(0, 0, F_WRLCK);
    return fcntl(m_descriptor, F_OFD_GETLK, &tramo) == 0 && tramo.l_type != F_UNLCK;
}

// The whole file at once, which only one can have and only when no copy holds a byte; then all of it but the own byte
// is given back. Between the two nothing is ever free.
bool cInstancia::EntraResidente() {
    if (m_descriptor < 0) return true;
    if (!Bloquea(0, 0, F_WRLCK)) return !Ocupado();
    const long propio = getpid();
    Bloquea(0, propio, F_UNLCK);
    Bloquea(propio + 1, 0, F_UNLCK);
    return true;
}

bool cInstancia::EntraLote(std::chrono::milliseconds limite) {
    if (m_descriptor < 0) return true;
    const auto plazo = std::chrono::steady_clock::now() + limite;
    for (long propio = getpid();; ++propio) {  // another process namespace may have the same number
        if (Bloquea(propio, 1, F_WRLCK)) return true;
        if (!Ocupado()) return true;
        if (std::chrono::steady_clock::now() >= plazo) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

QString cInstancia::Fichero(const QString &ejecutable, const QString &carpetaEstado) {
    const QString carpeta = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const bool sirve = QDir::isAbsolutePath(carpeta) && QFileInfo(carpeta).isDir() && QFileInfo(carpeta).isWritable();
    return QStringLiteral("%1/%2.lock").arg(sirve ? carpeta : carpetaEstado, QFileInfo(ejecutable).fileName());
}

}  // namespace ondalis
