#include "libs/ondalis_dicc_fichero.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <utility>

#include "libs/ondalis_dicc.h"

namespace ondalis {

namespace {

constexpr std::string_view kCabecera = "ondalis-diccionario 1";

class Descriptor {
public:
    explicit Descriptor(int fd) : m_fd(fd) {}
    ~Descriptor() { Cierra(); }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    Descriptor(Descriptor &&otro) noexcept : m_fd(std::exchange(otro.m_fd, -1)) {}
    Descriptor &operator=(Descriptor &&otro) noexcept {
        std::swap(m_fd, otro.m_fd);
        return *this;
    }
    int Get() const { return m_fd; }
    bool Valido() const { return m_fd >= 0; }
    bool Cierra() {
        const bool bien = m_fd < 0 || close(m_fd) == 0;
        m_fd = -1;
        return bien;
    }

private:
    int m_fd;
};

std::string CarpetaDe(const std::string &ruta) {
    const std::size_t barra = ruta.rfind('/');
    return barra == ruta.npos ? "." : ruta.substr(0, barra + 1);
}

// A file beside its destination that becomes it, or goes. Where the file system can, it has no name until then: a
// process killed meanwhile leaves nothing behind.
class Temporal {
public:
    explicit Temporal(const std::string &destino) : m_plantilla(destino + ".XXXXXX"), m_fichero(Abre(destino)) {
        if (m_fichero.Valido()) return;
        m_nombre = m_plantilla;
        m_fichero = Descriptor(mkostemp(m_nombre.data(), O_CLOEXEC));
        if (!m_fichero.Valido()) m_nombre.clear();
    }
    ~Temporal() {
        if (!m_nombre.empty()) unlink(m_nombre.c_str());
    }
    Temporal(const Temporal &) = delete;
    Temporal &operator=(const Temporal &) = delete;
    int Get() const { return m_fichero.Get(); }
    // Puts the file in the place of `destino`, all at once.
    bool PasaA(const std::string &destino) {
        if (m_nombre.empty() && !DaNombre()) return false;
        if (!m_fichero.Cierra() || rename(m_nombre.c_str(), destino.c_str()) != 0) return false;
        m_nombre.clear();
        return true;
    }

private:
    static Descriptor Abre(const std::string &destino) {
        return Descriptor(open(CarpetaDe(destino).c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600));
    }
    // A name that is free: one is made and given up again at once, until nobody has taken it meanwhile.
    bool DaNombre() {
        const std::string enlace = "/proc/self/fd/" + std::to_string(m_fichero.Get());
        constexpr int kIntentos = 100;
        for (int i = 0; i < kIntentos; ++i) {
            std::string nombre = m_plantilla;
            const Descriptor libre(mkostemp(nombre.data(), O_CLOEXEC));
            if (!libre.Valido() || unlink(nombre.c_str()) != 0) return false;
            if (linkat(AT_FDCWD, enlace.c_str(), AT_FDCWD, nombre.c_str(), AT_SYMLINK_FOLLOW) == 0) {
                m_nombre = nombre;
                return true;
            }
            if (errno != EEXIST) return false;
        }
        return false;
    }

    std::string m_plantilla, m_nombre;  // no name: none yet, or none any more
    Descriptor m_fichero;
};

bool EsUtf8(std::string_view texto) {
    for (std::size_t i = 0; i < texto.size();) {
        const auto primero = static_cast<unsigned char>(texto[i]);
        if (primero < 0x80) {
            ++i;
            continue;
        }
        const int siguen = primero >= 0xF0 ? 3 : primero >= 0xE0 ? 2 : 1;
        if (primero < 0xC2 || primero > 0xF4 || i + static_cast<std::size_t>(siguen) >= texto.size()) return false;
        std::uint32_t codigo = primero & (0x3Fu >> siguen);
        for (int k = 1; k <= siguen; ++k) {
            const auto byte = static_cast<unsigned char>(texto[i + static_cast<std::size_t>(k)]);
            if ((byte & 0xC0) != 0x80) return false;
            codigo = codigo << 6 | (byte & 0x3Fu);
        }
        const bool largo = (siguen == 2 && codigo < 0x800) || (siguen == 3 && codigo < 0x10000);
        if (largo || codigo > 0x10FFFF || (codigo >= 0xD800 && codigo <= 0xDFFF)) return false;
        i += static_cast<std::size_t>(siguen) + 1;
    }
    return true;
}

void AnadeEscapado(std::string &linea, std::string_view texto) {
    for (const char c : texto) {
        switch (c) {
            case '\\': linea += "\\\\"; break;
            case '\t': linea += "\\t"; break;
            case '\n': linea += "\\n"; break;
            case '\r': linea += "\\r"; break;
            default: linea += c;
        }
    }
}

std::optional<std::string> Descifra(std::string_view escrito) {
    std::string texto;
    for (std::size_t i = 0; i < escrito.size(); ++i) {
        if (escrito[i] != '\\') {
            texto += escrito[i];
            continue;
        }
        if (++i == escrito.size()) return std::nullopt;
        switch (escrito[i]) {
            case '\\': texto += '\\'; break;
            case 't': texto += '\t'; break;
            case 'n': texto += '\n'; break;
            case 'r': texto += '\r'; break;
            default: return std::nullopt;
        }
    }
    return texto;
}

std::optional<EntradaDicc> LeeLinea(std::string_view linea) {
    const std::size_t separador = linea.find('\t');
    if (separador == linea.npos) return std::nullopt;
    const auto clave = Descifra(linea.substr(0, separador));
    const auto conversion = Descifra(linea.substr(separador + 1));
    if (!clave || !conversion || !EsEntradaValida(*clave, *conversion)) return std::nullopt;
    return EntradaDicc{*clave, *conversion};
}

// An editor may have left a mark at the beginning, line ends of two characters or empty lines.
std::optional<std::vector<EntradaDicc>> Interpreta(std::string_view contenido) {
    if (contenido.starts_with("\xEF\xBB\xBF")) contenido.remove_prefix(3);
    // A line without its end is where a cut file stops.
    if (contenido.empty() || contenido.back() != '\n') return std::nullopt;
    std::vector<EntradaDicc> entradas;
    for (bool cabecera = true; !contenido.empty(); cabecera = false) {
        const std::size_t fin = contenido.find('\n');
        std::string_view linea = contenido.substr(0, fin);
        contenido.remove_prefix(fin + 1);
        if (linea.ends_with('\r')) linea.remove_suffix(1);
        if (cabecera) {
            if (linea != kCabecera) return std::nullopt;
        } else if (!linea.empty()) {
            auto entrada = LeeLinea(linea);
            if (!entrada) return std::nullopt;
            entradas.push_back(std::move(*entrada));
        }
    }
    return entradas;
}

std::optional<std::string> LeeTodo(const std::string &ruta) {
    // Without O_NONBLOCK a pipe under this name would hold the program.
    Descriptor fichero(open(ruta.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat datos {};
    if (!fichero.Valido() || fstat(fichero.Get(), &datos) != 0 || !S_ISREG(datos.st_mode)) return std::nullopt;
    std::string contenido;
    char bloque[65536];
    for (;;) {
        const ssize_t leidos = read(fichero.Get(), bloque, sizeof bloque);
        if (leidos == 0) return contenido;
        if (leidos > 0)
            contenido.append(bloque, static_cast<std::size_t>(leidos));
        else if (errno != EINTR)
            return std::nullopt;
    }
}

bool ApartaFichero(const std::string &ruta) {
    constexpr int kMaxApartados = 1000;
    for (int n = 0; n < kMaxApartados; ++n) {
        const std::string apartado = ruta + ".roto" + (n == 0 ? "" : "." + std::to_string(n));
        if (renameat2(AT_FDCWD, ruta.c_str(), AT_FDCWD, apartado.c_str(), RENAME_NOREPLACE) == 0) return true;
        if (errno != EEXIST) break;
    }
    return false;
}

bool EscribeTodo(int fd, std::string_view contenido) {
    while (!contenido.empty()) {
        const ssize_t escritos = write(fd, contenido.data(), contenido.size());
        if (escritos > 0)
            contenido.remove_prefix(static_cast<std::size_t>(escritos));
        else if (escritos == 0 || errno != EINTR)
            return false;
    }
    return true;
}

std::string RutaReal(const std::string &ruta) {
    char *real = realpath(ruta.c_str(), nullptr);
    std::string resultado = real ? real : ruta;
    free(real);
    return resultado;
}

// The permissions of the file to be replaced, else those that a new file would get.
mode_t Permisos(const std::string &ruta) {
    struct stat datos {};
    if (stat(ruta.c_str(), &datos) == 0) return datos.st_mode & 07777;
    const mode_t mascara = umask(0);
    umask(mascara);
    return 0666 & ~mascara;
}

// So that a crash of the machine doesn't bring the old name back. Where folders can't be synced nothing is lost.
void SincronizaCarpeta(const std::string &ruta) {
    const Descriptor abierta(open(CarpetaDe(ruta).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (abierta.Valido()) fsync(abierta.Get());
}

}  // namespace

bool EsEntradaValida(std::string_view clave, std::string_view conversion) {
    const auto valido = [](std::string_view texto) {
        return texto.size() < ONDALIS_DICC_TAM && texto.find('\0') == texto.npos && EsUtf8(texto);
    };
    return !clave.empty() && valido(clave) && valido(conversion);
}

LecturaDicc LeeFicheroDicc(const std::string &ruta, std::vector<EntradaDicc> &entradas) {
    const auto contenido = LeeTodo(ruta);
    if (!contenido) return LecturaDicc::Ausente;
    auto leidas = Interpreta(*contenido);
    if (!leidas) {
        ApartaFichero(ruta);
        return LecturaDicc::Danado;
    }
    entradas = std::move(*leidas);
    return LecturaDicc::Leido;
}

bool EscribeFicheroDicc(const std::string &ruta, const std::vector<EntradaDicc> &entradas) {
    std::string contenido(kCabecera);
    contenido += '\n';
    for (const EntradaDicc &entrada : entradas) {
        AnadeEscapado(contenido, entrada.clave);
        contenido += '\t';
        AnadeEscapado(contenido, entrada.conversion);
        contenido += '\n';
    }
    const std::string destino = RutaReal(ruta);
    // What couldn't be read isn't in the table: it is kept beside the new file, as a damaged one is.
    if (access(destino.c_str(), F_OK) == 0 && access(destino.c_str(), R_OK) != 0 && !ApartaFichero(destino))
        return false;
    Temporal temporal(destino);
    const int fd = temporal.Get();
    if (fd < 0 || !EscribeTodo(fd, contenido) || fchmod(fd, Permisos(destino)) != 0 || fsync(fd) != 0) return false;
    if (!temporal.PasaA(destino)) return false;
    SincronizaCarpeta(destino);
    return true;
}

}  // namespace ondalis
