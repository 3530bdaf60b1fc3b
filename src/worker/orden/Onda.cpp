#include "worker/orden/Onda.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace ondalis {

namespace {

// From here on a length is that of a header written before the sound was: espeak-ng and SoX tell 0x7FFFF000, others
// 0x7FFFFFFF or 0xFFFFFFFF, some of them less their headers.
constexpr std::size_t kSinSaberlo = 0x7FF00000;
// A program may count the header along: what lacks then is no sound, and nobody hears a millisecond of it.
constexpr std::size_t kCabecera = 44;

std::uint32_t Entero(std::span<const std::uint8_t> b, std::size_t i, unsigned n) {
    std::uint32_t valor = 0;
    for (unsigned k = 0; k < n; k++) valor |= static_cast<std::uint32_t>(b[i + k]) << (8 * k);
    return valor;
}

bool Es(std::span<const std::uint8_t> b, std::size_t i, const char *marca) { return std::memcmp(&b[i], marca, 4) == 0; }

Onda Fallo(std::string texto) { return {0, {}, std::move(texto)}; }

}  // namespace

Onda LeeCruda(std::span<const std::uint8_t> bytes, std::uint32_t hercios, std::uint32_t canales) {
    Onda onda;
    onda.hercios = hercios;
    const std::size_t cuadro = 2 * std::size_t{canales};
    onda.muestras.reserve(bytes.size() / cuadro);
    for (std::size_t i = 0; i + cuadro <= bytes.size(); i += cuadro) {
        int suma = 0;
        for (std::size_t c = 0; c < canales; c++) suma += static_cast<std::int16_t>(Entero(bytes, i + 2 * c, 2));
        onda.muestras.push_back(static_cast<std::int16_t>(suma / static_cast<int>(canales)));
    }
    return onda;
}

Onda LeeWav(std::span<const std::uint8_t> b) {
    if (b.size() < 12 || !Es(b, 0, "RIFF") || !Es(b, 8, "WAVE")) return Fallo("no ha dado un fichero WAV");
    std::uint32_t canales = 0, hercios = 0;
    for (std::size_t i = 12; i + 8 <= b.size();) {
        const std::size_t largo = Entero(b, i + 4, 4), resto = b.size() - i - 8;
        if (Es(b, i, "fmt ")) {
            if (largo < 16 || largo > resto) return Fallo("ha dado un WAV sin formato");
            const std::uint32_t tipo = Entero(b, i + 8, 2), bits = Entero(b, i + 22, 2);
            canales = Entero(b, i + 10, 2);
            hercios = Entero(b, i + 12, 4);
            if ((tipo != 1 && tipo != 0xFFFE) || bits != 16) return Fallo("ha dado un WAV que no es de 16 bits");
            if (canales < 1 || canales > 8) return Fallo("ha dado un WAV de demasiados canales");
            if (hercios < 8000 || hercios > 48000) return Fallo("ha dado un WAV de frecuencia no admitida");
        } else if (Es(b, i, "data")) {
            if (canales == 0) return Fallo("ha dado un WAV sin formato");
            const bool callado = largo == 0 || largo >= kSinSaberlo;
            if (!callado && largo > resto + kCabecera) return Fallo("ha dado un WAV cortado");
            return LeeCruda(b.subspan(i + 8, callado ? resto : std::min(largo, resto)), hercios, canales);
        }
        if (largo > resto) break;
        i += 8 + largo + (largo & 1);
    }
    return Fallo("ha dado un WAV sin sonido");
}

void CambiaHercios(std::vector<std::int16_t> &x, std::uint32_t de, std::uint32_t a) {
    if (de == a || x.empty()) return;
    std::vector<std::int16_t> y(static_cast<std::size_t>(static_cast<double>(x.size()) * a / de));
    for (std::size_t i = 0; i < y.size(); i++) {
        const double donde = static_cast<double>(i) * de / a;
        const auto k = std::min(static_cast<std::size_t>(donde), x.size() - 1);
        const double parte = donde - static_cast<double>(k), siguiente = x[std::min(k + 1, x.size() - 1)];
        y[i] = static_cast<std::int16_t>(std::lround(x[k] + parte * (siguiente - x[k])));
    }
    x = std::move(y);
}

}  // namespace ondalis
