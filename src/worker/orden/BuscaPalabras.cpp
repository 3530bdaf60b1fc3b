#include "worker/orden/BuscaPalabras.h"

#include <algorithm>
#include <utility>

#include "worker/orden/Alineacion.h"
#include "worker/orden/Patron.h"
#include "worker/orden/Tiempos.h"

namespace ondalis {

std::string EnUnaLinea(std::string texto) {
    std::replace_if(
        texto.begin(), texto.end(), [](unsigned char c) { return c < ' '; }, ' ');
    const std::size_t primera = texto.find_first_not_of(' ');
    return primera == std::string::npos ? std::string() : texto.substr(primera);
}

std::vector<std::string> PalabrasDe(const Pieza &pieza) {
    std::vector<std::size_t> bytes;  // where each code point begins
    for (std::size_t i = 0; i < pieza.utf8.size(); i++)
        if ((static_cast<unsigned char>(pieza.utf8[i]) & 0xC0) != 0x80) bytes.push_back(i);
    bytes.push_back(pieza.utf8.size());
    std::vector<std::string> palabras;
    for (std::size_t i = 0; i < pieza.fichas.size(); i++) {
        const auto donde = [&](std::size_t k) { return bytes[std::min(k, bytes.size() - 1)]; };
        const std::size_t desde = donde(pieza.fichas[i].inicioMotor);
        const std::size_t hasta =
            i + 1 < pieza.fichas.size() ? donde(pieza.fichas[i + 1].inicioMotor) : pieza.utf8.size();
        palabras.push_back(EnUnaLinea(pieza.utf8.substr(desde, hasta - desde)));
        palabras.back().resize(palabras.back().find_last_not_of(' ') + 1);
    }
    return palabras;
}

std::optional<std::vector<double>> PorSegmentos(std::string_view segmentos, std::string_view sonidos, double duracion,
                                                const Pieza &pieza) {
    const auto dichos = LeeSegmentos(segmentos, duracion);
    const auto palabras = LeeSonidos(sonidos, pieza.fichas.size());
    return dichos && palabras ? IniciosDePalabras(*dichos, *palabras) : std::nullopt;
}

std::optional<std::vector<double>> PorPalabras(std::string_view texto, double duracion, const Pieza &pieza) {
    const auto dichos = LeePalabras(texto, duracion);
    if (!dichos) return std::nullopt;
    std::vector<std::vector<std::string>> palabras;
    for (std::string &palabra : PalabrasDe(pieza)) palabras.push_back({std::move(palabra)});
    return IniciosDePalabras(*dichos, palabras);
}

std::optional<std::vector<double>> PorPatron(std::span<const std::uint8_t> patron, const Onda &onda,
                                             const Pieza &pieza) {
    const auto leido = LeePatron(patron, pieza);
    if (!leido) return std::nullopt;
    auto segundos = Alinea({leido->sonido, leido->hercios}, leido->inicios, {onda.muestras, onda.hercios});
    if (segundos.size() != pieza.fichas.size()) return std::nullopt;
    return segundos;
}

}  // namespace ondalis
