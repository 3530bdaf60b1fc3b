#include "worker/orden/Patron.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "engine/Protocolo.h"
#include "worker/Caracteres.h"
#include "worker/Lcid.h"

namespace ondalis {

namespace {

constexpr double kMinRitmo = 80, kMaxRitmo = 400;  // beyond those the engine's own sound is stretched
constexpr double kMinHallados = .5;                // of the words, lest it be another text

std::u16string DeUtf8(std::string_view utf8) {
    std::u16string salida;
    char32_t c = 0;
    const auto pon = [&salida, &c] {
        if (c >= 0x10000)
            salida += {static_cast<char16_t>(0xD7C0 + (c >> 10)), static_cast<char16_t>(0xDC00 + (c & 0x3FF))};
        else
            salida += static_cast<char16_t>(c);
    };
    for (std::size_t i = 0; i < utf8.size(); i++) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        if ((byte & 0xC0) == 0x80)
            c = c << 6 | (byte & 0x3F);
        else
            c = byte < 0x80 ? byte : byte < 0xE0 ? byte & 0x1Fu : byte < 0xF0 ? byte & 0x0Fu : byte & 0x07u;
        const bool acaba = i + 1 == utf8.size() || (static_cast<unsigned char>(utf8[i + 1]) & 0xC0) != 0x80;
        if (acaba) pon();
    }
    return salida;
}

bool EscribeTodo(const std::vector<std::uint8_t> &bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        const ssize_t n = write(STDOUT_FILENO, bytes.data() + i, bytes.size() - i);
        if (n <= 0) return false;
        i += static_cast<std::size_t>(n);
    }
    return true;
}

// To standard output, as frames of the protocol.
class Escribiente final : public Emisor {
public:
    bool Formato(std::uint32_t hercios) override { return Da(TramaFormato{1, hercios}); }
    bool Pcm(const std::int16_t *muestras, std::size_t n) override {
        while (n > 0) {
            const std::size_t ahora = std::min(n, kMaxMuestrasPcm);
            if (!Da(TramaPcm{1, {muestras, muestras + ahora}})) return false;
            muestras += ahora;
            n -= ahora;
        }
        return true;
    }
    bool Palabra(std::uint64_t muestra, std::uint32_t posicion, std::uint32_t longitud) override {
        return Da(TramaPalabra{1, muestra, posicion, longitud});
    }
    bool Marca(std::uint64_t, std::u16string_view) override { return true; }
    void Error(std::string_view) override { fallo = true; }
    bool Vigente() override { return !fallo; }

    bool Da(const Trama &trama) {
        std::vector<std::uint8_t> bytes;
        Codifica(trama, bytes);
        fallo = fallo || !EscribeTodo(bytes);
        return !fallo;
    }
    bool fallo = false;
};

}  // namespace

std::optional<std::vector<std::string>> ArgumentosDePatron(std::string_view lengua, double palabrasMinuto) {
    const std::string idioma = IdiomaDeLcid(lengua);
    if (idioma.empty()) return std::nullopt;
    const double ritmo = std::clamp(palabrasMinuto, kMinRitmo, kMaxRitmo);
    return std::vector<std::string>{"/proc/self/exe", "--patron", idioma, std::to_string(std::lround(ritmo))};
}

int DicePatron(Motor &motor, std::string_view lengua, int palabrasMinuto) {
    std::string utf8;
    std::array<char, 4096> bloque;
    for (ssize_t n = 0; (n = read(STDIN_FILENO, bloque.data(), bloque.size())) > 0;)
        utf8.append(bloque.data(), static_cast<std::size_t>(n));
    Locucion locucion;
    locucion.numero = 1;
    locucion.voz.motor = "espeak";
    locucion.voz.voz = "roa/es";
    locucion.voz.velocidad = palabrasMinuto;
    Tramo idioma, texto;
    idioma.tipo = TipoTramo::Idioma;
    idioma.texto.assign(lengua.begin(), lengua.end());
    texto.texto = DeUtf8(utf8);
    texto.cortes = {{0, 0}};
    locucion.tramos = {idioma, texto};
    Escribiente escribiente;
    motor.Habla(locucion, escribiente);
    return escribiente.Da(TramaFin{1}) ? 0 : 1;
}

std::optional<Patron> LeePatron(std::span<const std::uint8_t> bytes, const Pieza &pieza) {
    Patron patron;
    Descodificador descodificador;
    descodificador.Alimenta(bytes);
    std::vector<std::pair<std::uint32_t, std::uint64_t>> palabras;  // place in UTF-16 units, sample
    bool fin = false;
    while (const auto trama = descodificador.Siguiente()) {
        if (const auto *f = std::get_if<TramaFormato>(&*trama)) patron.hercios = f->hercios;
        if (const auto *w = std::get_if<TramaPalabra>(&*trama)) palabras.emplace_back(w->posicion, w->muestra);
        if (const auto *p = std::get_if<TramaPcm>(&*trama))
            patron.sonido.insert(patron.sonido.end(), p->muestras.begin(), p->muestras.end());
        fin = fin || std::holds_alternative<TramaFin>(*trama);
    }
    if (!fin || patron.hercios < 8000 || patron.sonido.empty() || pieza.fichas.empty()) return std::nullopt;

    // From code points to the UTF-16 units that the engine counts in.
    std::vector<std::uint32_t> unidad;
    std::uint32_t llevadas = 0;
    for (const char c : pieza.utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0) == 0x80) continue;
        unidad.push_back(llevadas);
        llevadas += byte >= 0xF0 ? 2 : 1;
    }
    unidad.push_back(llevadas);
    std::vector<double> inicios(pieza.fichas.size(), -1);
    std::size_t hallados = 0, k = 0;
    for (std::size_t i = 0; i < inicios.size(); i++) {
        const std::uint32_t donde = unidad[std::min<std::size_t>(pieza.fichas[i].inicioMotor, unidad.size() - 1)];
        const std::uint32_t nucleo = unidad[std::min<std::size_t>(pieza.fichas[i].nucleoMotor, unidad.size() - 1)];
        while (k < palabras.size() && palabras[k].first < donde) k++;
        if (k >= palabras.size() || palabras[k].first > nucleo) continue;
        inicios[i] = static_cast<double>(palabras[k].second) / patron.hercios;
        hallados++;
    }
    if (static_cast<double>(hallados) < kMinHallados * static_cast<double>(inicios.size())) return std::nullopt;
    // What the engine doesn't tell lies evenly between its neighbours.
    const double todo = static_cast<double>(patron.sonido.size()) / patron.hercios;
    for (std::size_t i = 0; i < inicios.size(); i++) {
        if (inicios[i] >= 0) continue;
        std::size_t j = i;
        while (j < inicios.size() && inicios[j] < 0) j++;
        const double desde = i > 0 ? inicios[i - 1] : 0, hasta = j < inicios.size() ? inicios[j] : todo;
        inicios[i] = desde + (hasta - desde) / static_cast<double>(j - i + 1);
    }
    for (std::size_t i = 1; i < inicios.size(); i++) inicios[i] = std::max(inicios[i], inicios[i - 1]);
    patron.inicios = std::move(inicios);
    return patron;
}

}  // namespace ondalis
