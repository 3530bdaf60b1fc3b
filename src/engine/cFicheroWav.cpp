#include "engine/cFicheroWav.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

namespace ondalis {

namespace {

constexpr std::uint64_t kCabecera = 44;            // RIFF, a format chunk of 16 bytes, the data chunk's head
constexpr std::uint64_t kMaxDeUnaVez = 4096;       // a page: what the kernel copies without being interrupted
constexpr std::uint64_t kMaxRiff = 0xFFFF'FFFE;    // even, in 32 bits, without the eight bytes of "RIFF" and itself
constexpr std::uint64_t kSinTamano = 0xFFFF'FFFF;  // what writers into a pipe put for a length unknown to them
constexpr int kHerciosPrevistos = 22050;           // of eSpeak NG, until the first speech tells
constexpr std::uint16_t kPcm = 1, kExtensible = 0xFFFE;
constexpr std::size_t kFormatoCorto = 16, kFormatoExtensible = 40;
// The tail that makes a 16-bit tag a whole identifier of a format (KSDATAFORMAT_SUBTYPE).
constexpr std::array<std::uint8_t, 14> kColaSubformato{0, 0, 0, 0, 0x10, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71};

void Pon16(std::uint8_t *destino, std::uint32_t valor) {
    destino[0] = static_cast<std::uint8_t>(valor);
    destino[1] = static_cast<std::uint8_t>(valor >> 8);
}
void Pon32(std::uint8_t *destino, std::uint64_t valor) {
    Pon16(destino, static_cast<std::uint32_t>(valor));
    Pon16(destino + 2, static_cast<std::uint32_t>(valor >> 16));
}
std::uint32_t Da16(const std::uint8_t *origen) { return origen[0] | static_cast<std::uint32_t>(origen[1]) << 8; }
std::uint32_t Da32(const std::uint8_t *origen) { return Da16(origen) | Da16(origen + 2) << 16; }

// How many bytes were written; fewer than asked for together with `error`.
std::uint64_t EscribeEn(int descriptor, const void *bytes, std::uint64_t cuantos, std::uint64_t posicion, int &error) {
    const char *desde = static_cast<const char *>(bytes);
    std::uint64_t hechos = 0;
    while (hechos < cuantos) {
        const ssize_t n = pwrite(descriptor, desde + hechos, cuantos - hechos, static_cast<off_t>(posicion + hechos));
        if (n > 0)
            hechos += static_cast<std::uint64_t>(n);
        else if (n == 0 || errno != EINTR) {
            error = n == 0 ? EIO : errno;
            break;
        }
    }
    return hechos;
}

bool LeeDe(int descriptor, std::span<std::uint8_t> bytes, std::uint64_t posicion) {
    std::size_t leidos = 0;
    while (leidos < bytes.size()) {
        const ssize_t n =
            pread(descriptor, bytes.data() + leidos, bytes.size() - leidos, static_cast<off_t>(posicion + leidos));
        if (n > 0)
            leidos += static_cast<std::size_t>(n);
        else if (n == 0 || errno != EINTR)
            return false;
    }
    return true;
}

// The rate of a format chunk of 16-bit mono PCM; nothing for any other.
std::optional<int> HerciosDe(std::span<const std::uint8_t> formato) {
    if (formato.size() < kFormatoCorto) return std::nullopt;
    const std::uint8_t *f = formato.data();
    const std::uint32_t hercios = Da32(f + 4);
    const bool monoDe16 = Da16(f + 2) == 1 && Da16(f + 12) == 2 && Da16(f + 14) == 16;
    if (!monoDe16 || hercios == 0 || hercios > 1'000'000) return std::nullopt;
    bool pcm = Da16(f) == kPcm;
    if (Da16(f) == kExtensible && formato.size() >= kFormatoExtensible)
        pcm = Da16(f + 18) == 16 && Da16(f + 24) == kPcm &&
              std::equal(kColaSubformato.begin(), kColaSubformato.end(), f + 26);
    return pcm ? std::optional(static_cast<int>(hercios)) : std::nullopt;
}

struct Hallado {
    int hercios = 0;
    std::uint64_t inicio = 0;  // of the samples
    std::uint64_t bytes = 0;   // of samples, whole ones
};

// What there is in a file that somebody may have cut, or left without its lengths. Nothing: none that samples can be
// added to.
std::optional<Hallado> Recorre(int descriptor, std::uint64_t longitud) {
    constexpr int kMaxTrozos = 1000;
    std::array<std::uint8_t, 12> riff{};
    if (longitud < riff.size() || !LeeDe(descriptor, riff, 0)) return std::nullopt;
    if (std::memcmp(riff.data(), "RIFF", 4) != 0 || std::memcmp(riff.data() + 8, "WAVE", 4) != 0) return std::nullopt;
    const std::uint64_t declarado = Da32(riff.data() + 4);
    const bool sinTerminar = declarado == 0 || declarado == kSinTamano;
    const std::uint64_t final = sinTerminar ? longitud : std::min(longitud, declarado + 8);
    Hallado hallado;
    std::uint64_t pos = riff.size();
    for (int i = 0; i < kMaxTrozos && pos + 8 <= longitud; ++i) {
        std::array<std::uint8_t, 8> cabeza{};
        if (!LeeDe(descriptor, cabeza, pos)) return std::nullopt;
        const std::uint64_t tamano = Da32(cabeza.data() + 4);
        pos += cabeza.size();
        if (std::memcmp(cabeza.data(), "fmt ", 4) == 0) {
            std::vector<std::uint8_t> formato(std::min<std::uint64_t>(tamano, kFormatoExtensible));
            if (!LeeDe(descriptor, formato, pos)) return std::nullopt;
            const auto hercios = HerciosDe(formato);
            if (!hercios) return std::nullopt;
            hallado.hercios = *hercios;
        } else if (std::memcmp(cabeza.data(), "data", 4) == 0) {
            if (hallado.hercios == 0) return std::nullopt;
            const bool hastaElFinal = tamano == kSinTamano || (sinTerminar && tamano == 0);
            const std::uint64_t bytes = hastaElFinal ? longitud - pos : std::min(tamano, longitud - pos);
            if (pos + bytes + (bytes & 1) + cabeza.size() <= final) return std::nullopt;  // chunks would be overwritten
            hallado.inicio = pos;
            hallado.bytes = bytes & ~std::uint64_t{1};
            return hallado;
        }
        pos += tamano + (tamano & 1);
    }
    return std::nullopt;
}

// An open descriptor of a regular file, or -1 and `error`. `nuevo`: it wasn't there.
int AbreRegular(const std::string &ruta, bool &nuevo, int &error) {
    constexpr int kBanderas = O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    int descriptor = -1;
    error = ENOENT;
    for (int intento = 0; descriptor < 0 && intento < 3; ++intento) {  // others may make or delete it in between
        descriptor = open(ruta.c_str(), kBanderas);
        nuevo = descriptor < 0 && errno == ENOENT;
        if (nuevo) descriptor = open(ruta.c_str(), kBanderas | O_CREAT | O_EXCL, 0666);
        if (descriptor < 0) error = errno;
        if (descriptor < 0 && error != ENOENT && error != EEXIST) return -1;
    }
    struct stat datos {};
    if (descriptor < 0) return -1;
    if (fstat(descriptor, &datos) == 0 && S_ISREG(datos.st_mode)) return descriptor;
    error = EINVAL;
    close(descriptor);
    return -1;
}

}  // namespace

cFicheroWav::~cFicheroWav() { static_cast<void>(Cierra()); }

int cFicheroWav::Abre(const std::string &ruta, int hercios, Modo modo) {
    static_cast<void>(Cierra());
    if (hercios < 0) return EINVAL;
    bool nuevo = false;
    int error = 0;
    m_descriptor = AbreRegular(ruta, nuevo, error);
    if (m_descriptor < 0) return error;
    struct stat datos {};
    if (fstat(m_descriptor, &datos) != 0) return AlFallar(errno, nuevo, ruta);
    if (modo == Modo::Anade && datos.st_size > 0) {
        error = Reconoce(hercios);
        return error == 0 ? 0 : AlFallar(error, false, ruta);
    }
    m_hercios = hercios > 0 ? hercios : kHerciosPrevistos;
    m_muestras = m_enCabecera = 0;
    m_inicio = kCabecera;
    if (ftruncate(m_descriptor, 0) != 0) return AlFallar(errno, nuevo, ruta);
    error = EscribeCabecera();
    return error == 0 ? 0 : AlFallar(error, nuevo, ruta);
}

int cFicheroWav::AlFallar(int error, bool nuevo, const std::string &ruta) {
    if (nuevo) unlink(ruta.c_str());
    close(std::exchange(m_descriptor, -1));
    return error;
}

int cFicheroWav::Reconoce(int hercios) {
    struct stat datos {};
    if (fstat(m_descriptor, &datos) != 0) return errno;
    const auto hallado = Recorre(m_descriptor, static_cast<std::uint64_t>(datos.st_size));
    if (!hallado || (hercios != 0 && hercios != hallado->hercios)) return EINVAL;
    if (hallado->inicio - 8 + hallado->bytes >= kMaxRiff) return EFBIG;
    m_hercios = hallado->hercios;
    m_inicio = hallado->inicio;
    m_muestras = hallado->bytes / 2;
    m_enCabecera = 0;
    // Half a sample, or samples whose writer didn't live to tell of them.
    if (ftruncate(m_descriptor, static_cast<off_t>(m_inicio + m_muestras * 2)) != 0) return errno;
    return ActualizaCabecera();
}

int cFicheroWav::EscribeCabecera() {
    std::array<std::uint8_t, kCabecera> cabecera{};
    const auto texto = [&cabecera](std::size_t donde, const char *cuatro) {
        std::memcpy(cabecera.data() + donde, cuatro, 4);
    };
    std::uint8_t *c = cabecera.data();
    texto(0, "RIFF");
    Pon32(c + 4, m_inicio - 8 + m_muestras * 2);
    texto(8, "WAVE");
    texto(12, "fmt ");
    Pon32(c + 16, kFormatoCorto);
    Pon16(c + 20, kPcm);
    Pon16(c + 22, 1);
    Pon32(c + 24, static_cast<std::uint64_t>(m_hercios));
    Pon32(c + 28, static_cast<std::uint64_t>(m_hercios) * 2);
    Pon16(c + 32, 2);
    Pon16(c + 34, 16);
    texto(36, "data");
    Pon32(c + 40, m_muestras * 2);
    int error = 0;
    EscribeEn(m_descriptor, c, cabecera.size(), 0, error);
    return error;
}

// The two lengths; the rest of the header stands, also another program's. In one write where it can be had, so that a
// process killed in between never leaves one length without the other.
int cFicheroWav::ActualizaCabecera() {
    int error = 0;
    const std::uint64_t riff = m_inicio - 8 + m_muestras * 2, datos = m_muestras * 2;
    std::vector<std::uint8_t> entre(m_inicio <= kMaxDeUnaVez ? m_inicio - 4 : 0);  // from one to the end of the other
    if (!entre.empty() && LeeDe(m_descriptor, entre, 4)) {
        Pon32(entre.data(), riff);
        Pon32(entre.data() + entre.size() - 4, datos);
        EscribeEn(m_descriptor, entre.data(), entre.size(), 4, error);
    } else {
        std::array<std::uint8_t, 4> longitud{};
        Pon32(longitud.data(), datos);
        EscribeEn(m_descriptor, longitud.data(), longitud.size(), m_inicio - 4, error);
        Pon32(longitud.data(), riff);
        EscribeEn(m_descriptor, longitud.data(), longitud.size(), 4, error);
    }
    if (error == 0) m_enCabecera = m_muestras;
    return error;
}

int cFicheroWav::ReponHercios(int hercios) {
    if (!Abierto() || hercios <= 0) return EINVAL;
    if (hercios == m_hercios) return 0;
    if (m_muestras > 0 || m_inicio != kCabecera) return EINVAL;
    m_hercios = hercios;
    return EscribeCabecera();
}

int cFicheroWav::Escribe(std::span<const std::int16_t> muestras) {
    if (!Abierto()) return EBADF;
    if (muestras.empty()) return 0;
    const std::uint64_t caben = (kMaxRiff - (m_inicio - 8)) / 2 - m_muestras;
    int error = muestras.size() > caben ? EFBIG : 0;
    muestras = muestras.first(std::min<std::uint64_t>(muestras.size(), caben));
    std::vector<std::uint8_t> volteadas;
    const void *bytes = muestras.data();
    if constexpr (std::endian::native == std::endian::big) {
        volteadas.resize(muestras.size() * 2);
        for (std::size_t i = 0; i < muestras.size(); ++i)
            Pon16(&volteadas[i * 2], static_cast<std::uint16_t>(muestras[i]));
        bytes = volteadas.data();
    }
    const std::uint64_t final = m_inicio + m_muestras * 2;
    const std::uint64_t escritos = EscribeEn(m_descriptor, bytes, muestras.size() * 2, final, error);
    m_muestras += escritos / 2;
    if (escritos % 2 != 0 && ftruncate(m_descriptor, static_cast<off_t>(final + escritos - 1)) != 0 && error == 0)
        error = errno;
    const int otro = m_enCabecera == m_muestras ? 0 : ActualizaCabecera();
    return error != 0 ? error : otro;
}

int cFicheroWav::Cierra() {
    if (!Abierto()) return 0;
    int error = m_enCabecera == m_muestras ? 0 : ActualizaCabecera();
    if (close(std::exchange(m_descriptor, -1)) != 0 && error == 0) error = errno;
    return error;
}

}  // namespace ondalis
