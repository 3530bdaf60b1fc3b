#include "audio/cTemporalAudio.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "settings/cGeneral.h"

namespace ondalis {

namespace {

QByteArray Bytes(const QString &ruta) { return QFile::encodeName(ruta); }

Fallo DeErrno(int error) {
    switch (error) {
        case ENOSPC:
        case EDQUOT:
        case EFBIG: return Fallo::De(Fallo::DiscoLleno);
        case EACCES:
        case EPERM:
        case EROFS: return Fallo::De(Fallo::PermisoDenegado);
        default: return Fallo::De(Fallo::ErrorDeAcceso);
    }
}

// Nothing at all, or the header of a WAV file alone: RIFF, a format chunk of 16 bytes, the head of "data".
bool SinSonido(int descriptor) {
    constexpr off_t kCabecera = 44;
    constexpr char kRiff[] = {'R', 'I', 'F', 'F'};
    struct stat datos {};
    char principio[sizeof kRiff];
    if (fstat(descriptor, &datos) != 0) return false;
    if (datos.st_size != kCabecera) return datos.st_size == 0;
    return pread(descriptor, principio, sizeof principio, 0) == ssize_t{sizeof principio} &&
           std::memcmp(principio, kRiff, sizeof kRiff) == 0;
}

}  // namespace

cTemporalAudio::cTemporalAudio(cLog &log, QString nombre, QStringList bases)
    : m_log(log), m_nombre(std::move(nombre)), m_bases(std::move(bases)), m_ruta(m_nombre) {}

cTemporalAudio::~cTemporalAudio() {
    Suelta();
    if (!m_privada.isEmpty()) rmdir(Bytes(m_privada).constData());
}

void cTemporalAudio::Suelta() {
    if (m_descriptor >= 0) close(std::exchange(m_descriptor, -1));
    m_adoptado = false;
    m_ruta = m_nombre;
}

bool cTemporalAudio::Nuestro() const {
    struct stat nuestro {
    }, visto{};
    return m_descriptor >= 0 && fstat(m_descriptor, &nuestro) == 0 && lstat(Bytes(m_ruta).constData(), &visto) == 0 &&
           nuestro.st_dev == visto.st_dev && nuestro.st_ino == visto.st_ino;
}

bool cTemporalAudio::Borra() {
    if (Nuestro() && !m_adoptado && unlink(Bytes(m_ruta).constData()) != 0) return false;
    Suelta();
    return true;
}

void cTemporalAudio::BorraVacio() {
    if (m_descriptor >= 0 && SinSonido(m_descriptor)) Borra();
}

Fallo cTemporalAudio::Prepara(bool adopta) {
    if (Nuestro() && (adopta || !m_adoptado)) return {};
    Suelta();
    int error = Crea(m_nombre);
    if (error == 0 || (error == EEXIST && adopta && Adopta(m_nombre))) return {};
    AvisaPrivada(error);
    error = CreaEnPrivada();
    return error == 0 ? Fallo{} : DeErrno(error);
}

int cTemporalAudio::Crea(const QString &ruta) {
    m_descriptor = open(Bytes(ruta).constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (m_descriptor < 0) return errno;
    // Nobody else can have it yet; where the file system knows no locks the exclusive making has to do.
    flock(m_descriptor, LOCK_EX | LOCK_NB);
    m_ruta = ruta;
    return 0;
}

bool cTemporalAudio::Adopta(const QString &ruta) {
    const int descriptor = open(Bytes(ruta).constData(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) return false;
    struct stat datos {};
    if (fstat(descriptor, &datos) != 0 || !S_ISREG(datos.st_mode) || datos.st_uid != geteuid() || datos.st_nlink != 1 ||
        flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        close(descriptor);
        return false;
    }
    m_descriptor = descriptor;
    m_adoptado = true;
    m_ruta = ruta;
    return true;
}

int cTemporalAudio::CreaEnPrivada() {
    if (m_privada.isEmpty() || !QDir(m_privada).exists())
        if (const int error = HazPrivada()) return error;
    return Crea(m_privada + QLatin1Char('/') + m_nombre);
}

int cTemporalAudio::HazPrivada() {
    int error = ENOENT;
    for (const QString &base : std::as_const(m_bases)) {
        QDir().mkpath(base);
        QByteArray plantilla = Bytes(base + QStringLiteral("/temporal-XXXXXX"));
        if (mkdtemp(plantilla.data()) != nullptr) {
            m_privada = QFile::decodeName(plantilla);
            return 0;
        }
        error = errno;
    }
    return error;
}

// Once: it is so for each recording from then on.
void cTemporalAudio::AvisaPrivada(int motivo) {
    if (std::exchange(m_avisado, true)) return;
    m_log.Escribe(QStringLiteral("cTemporalAudio.Prepara: "),
                  QStringLiteral("%1 en %2 no puede usarse (%3); el temporal va a una carpeta propia")
                      .arg(m_nombre, QDir::currentPath(), QString::fromLocal8Bit(std::strerror(motivo))));
}

bool cTemporalAudio::EnOtroDisco(const QString &destino) const {
    const QString carpeta = cGeneral::GetRutaFich(destino);
    struct stat nuestro {
    }, suya{};
    return Nuestro() && fstat(m_descriptor, &nuestro) == 0 &&
           stat(carpeta.isEmpty() ? "." : Bytes(carpeta).constData(), &suya) == 0 && nuestro.st_dev != suya.st_dev;
}

Fallo cTemporalAudio::Nombra(const QString &destino) {
    if (!Nuestro()) return Fallo::De(Fallo::FicheroNoEncontrado);
    if (Fallo fallo = cGeneral::Nombra(m_ruta, destino)) return fallo;
    Suelta();
    return {};
}

}  // namespace ondalis
