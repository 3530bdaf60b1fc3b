#include "settings/Renombrado.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace ondalis {

namespace {

class Descriptor {
public:
    explicit Descriptor(int numero) : m_numero(numero) {}
    ~Descriptor() { Cierra(); }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    int Numero() const { return m_numero; }
    int Cierra() {
        const int error = m_numero >= 0 && close(m_numero) != 0 ? errno : 0;
        m_numero = -1;
        return error;
    }

private:
    int m_numero;
};

std::string Carpeta(const std::string &ruta) {
    const std::size_t barra = ruta.rfind('/');
    return barra == std::string::npos ? std::string("./") : ruta.substr(0, barra + 1);
}

int EscribeTodo(int a, const char *bytes, std::size_t cuantos) {
    while (cuantos > 0) {
        const ssize_t n = write(a, bytes, cuantos);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return n < 0 ? errno : EIO;
        bytes += n;
        cuantos -= static_cast<std::size_t>(n);
    }
    return 0;
}

int CopiaContenido(int de, int a) {
    constexpr std::size_t kBloque = std::size_t{1} << 20;
    const auto bloque = std::make_unique<char[]>(kBloque);
    for (;;) {
        const ssize_t n = read(de, bloque.get(), kBloque);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return errno;
        if (n == 0) return 0;
        if (const int error = EscribeTodo(a, bloque.get(), static_cast<std::size_t>(n))) return error;
    }
}

// Fills the hidden file and makes sure that it is on the disk: a medium may be full only when it is asked to keep.
int CopiaAlDisco(const std::string &de, int escondido) {
    Descriptor origen(open(de.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (origen.Numero() < 0) return errno;
    struct stat datos {};
    if (fstat(origen.Numero(), &datos) != 0) return errno;
    if (!S_ISREG(datos.st_mode)) return EISDIR;
    if (const int error = CopiaContenido(origen.Numero(), escondido)) return error;
    // Media without permissions refuse them; the audio is what counts.
    static_cast<void>(fchmod(escondido, datos.st_mode & 0777));
    return fsync(escondido) != 0 ? errno : 0;
}

int CopiaYRenombra(const std::string &de, const std::string &a) {
    const std::string carpeta = Carpeta(a);
    std::string escondido = carpeta + ".ondalis-XXXXXX";
    Descriptor destino(mkostemp(escondido.data(), O_CLOEXEC));
    if (destino.Numero() < 0) return errno;
    int error = CopiaAlDisco(de, destino.Numero());
    const int alCerrar = destino.Cierra();
    if (error == 0) error = alCerrar;
    if (error == 0) error = RenombraSinReemplazar(escondido, a);
    if (error != 0) {
        unlink(escondido.c_str());
        return error;
    }
    const Descriptor folder(open(carpeta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.Numero() >= 0) static_cast<void>(fsync(folder.Numero()));
    return unlink(de.c_str()) != 0 ? errno : 0;
}

}  // namespace

int RenombraPorBandera(const std::string &de, const std::string &a) {
    return renameat2(AT_FDCWD, de.c_str(), AT_FDCWD, a.c_str(), RENAME_NOREPLACE) == 0 ? 0 : errno;
}

int RenombraPorEnlace(const std::string &de, const std::string &a) {
    if (link(de.c_str(), a.c_str()) != 0) return errno;
    if (unlink(de.c_str()) == 0) return 0;
    const int error = errno;
    unlink(a.c_str());
    return error;
}

int RenombraPorHueco(const std::string &de, const std::string &a) {
    Descriptor hueco(open(a.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (hueco.Numero() < 0) return errno;
    if (rename(de.c_str(), a.c_str()) == 0) return 0;
    const int error = errno;
    unlink(a.c_str());
    return error;
}

int RenombraSinReemplazar(const std::string &de, const std::string &a) {
    constexpr std::array kManeras = {RenombraPorBandera, RenombraPorEnlace, RenombraPorHueco};
    int error = 0;
    for (const auto manera : kManeras) {
        error = manera(de, a);
        // How a file system says that it doesn't know the way.
        if (error != EINVAL && error != ENOSYS && error != ENOTSUP && error != EPERM && error != EMLINK) return error;
    }
    return error;
}

int RenombraOCopia(const std::string &de, const std::string &a) {
    struct stat datos {};
    if (lstat(de.c_str(), &datos) != 0) return errno;
    if (!S_ISREG(datos.st_mode)) return EISDIR;
    // Before a copy that would be for nothing.
    struct stat ocupado {};
    if (lstat(a.c_str(), &ocupado) == 0) return EEXIST;
    const int error = RenombraSinReemplazar(de, a);
    return error == EXDEV ? CopiaYRenombra(de, a) : error;
}

}  // namespace ondalis
