// Reads a WAV file by its chunks, strictly: what a player that trusts the header would see.
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace ondalis::prueba {

struct Wav {
    int hercios = 0;
    std::vector<std::int16_t> muestras;
};

inline std::uint32_t Entero(const std::string &bytes, std::size_t donde, int cuantos) {
    std::uint32_t valor = 0;
    for (int i = cuantos - 1; i >= 0; --i)
        valor = valor << 8 | static_cast<std::uint8_t>(bytes.at(donde + static_cast<std::size_t>(i)));
    return valor;
}

// Nothing when any length tells of more than there is, or the form isn't 16-bit mono PCM. Bytes behind what the header
// tells of are allowed only with `conSobrante`.
inline std::optional<Wav> LeeWav(const std::string &bytes, bool conSobrante = false) {
    if (bytes.size() < 44 || bytes.compare(0, 4, "RIFF") != 0 || bytes.compare(8, 4, "WAVE") != 0) return {};
    const std::size_t fin = Entero(bytes, 4, 4) + std::size_t{8};
    if (conSobrante ? fin > bytes.size() : fin != bytes.size()) return {};
    Wav wav;
    std::size_t pos = 12;
    while (pos + 8 <= fin) {
        const std::size_t tamano = Entero(bytes, pos + 4, 4);
        const std::string nombre = bytes.substr(pos, 4);
        pos += 8;
        if (pos + tamano > fin) return {};
        if (nombre == "fmt ") {
            const auto etiqueta = Entero(bytes, pos, 2);
            if ((etiqueta != 1 && etiqueta != 0xFFFE) || Entero(bytes, pos + 2, 2) != 1) return {};
            if (Entero(bytes, pos + 12, 2) != 2 || Entero(bytes, pos + 14, 2) != 16) return {};
            wav.hercios = static_cast<int>(Entero(bytes, pos + 4, 4));
            if (Entero(bytes, pos + 8, 4) != 2U * static_cast<std::uint32_t>(wav.hercios)) return {};
        } else if (nombre == "data") {
            if (wav.hercios == 0 || tamano % 2 != 0) return {};
            for (std::size_t i = 0; i < tamano; i += 2)
                wav.muestras.push_back(static_cast<std::int16_t>(Entero(bytes, pos + i, 2)));
        }
        pos += tamano + tamano % 2;
    }
    return wav.hercios != 0 ? std::optional(wav) : std::nullopt;
}

}  // namespace ondalis::prueba
