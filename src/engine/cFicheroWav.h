// A WAV file in the making: RIFF, PCM, 16 bits, mono. The header on the disk is kept true while samples come in, so
// that a file whose writer dies can be played as far as it came. Not for two threads at once. No Qt.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace ondalis {

class cFicheroWav {
public:
    enum class Modo : std::uint8_t {
        Crea,   // a new file; an existing one is emptied
        Anade,  // behind the samples of an existing file of the same form, else as Crea
    };

    cFicheroWav() = default;
    ~cFicheroWav();  // closes
    cFicheroWav(const cFicheroWav &) = delete;
    cFicheroWav &operator=(const cFicheroWav &) = delete;

    // 0, or the errno of what failed; EINVAL: an existing file that is to be added to is no such WAV file or has chunks
    // behind its samples, or the path is no regular file; EFBIG: it is full (4 GiB). Nothing of an existing file is
    // changed then, and a new one is taken away. Links are not followed, and a FIFO isn't waited for. An empty file is
    // a new one. `hercios` 0: that of the file that is added to, else one that ReponHercios replaces.
    [[nodiscard]] int Abre(const std::string &ruta, int hercios, Modo modo);
    bool Abierto() const { return m_descriptor >= 0; }
    // Another rate for a file without samples yet. 0 or errno; EINVAL: it has some.
    [[nodiscard]] int ReponHercios(int hercios);
    int Hercios() const { return m_hercios; }
    // 0 or errno (ENOSPC, EFBIG...); what was written before stays with a true header.
    [[nodiscard]] int Escribe(std::span<const std::int16_t> muestras);
    // Completes the header and closes. 0 or errno. Harmless when closed.
    [[nodiscard]] int Cierra();
    std::uint64_t Muestras() const { return m_muestras; }  // in the file, those found there included

private:
    int EscribeCabecera();
    int ActualizaCabecera();
    int Reconoce(int hercios);  // the existing file that is to be added to
    int AlFallar(int error, bool nuevo, const std::string &ruta);

    int m_descriptor = -1;
    int m_hercios = 0;
    std::uint64_t m_inicio = 0;  // byte of the first sample
    std::uint64_t m_muestras = 0;
    std::uint64_t m_enCabecera = 0;  // samples that the header on the disk tells of
};

}  // namespace ondalis
