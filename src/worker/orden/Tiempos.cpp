#include "worker/orden/Tiempos.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace ondalis {

namespace {

constexpr std::size_t kMaxDichos = 4000;  // of a piece: more than ten minutes of speech
constexpr double kHolgura = .5;           // seconds by which a line may miss the sound's end, for a pause left off
constexpr double kMaxAjenos = .34;        // of the names: more that differ are another text

// How programs call what isn't said.
bool EsSilencio(std::string_view nombre) {
    constexpr std::array<std::string_view, 7> kSilencios{"pau", "sil", "SIL", "_", "_:", "#", "h#"};
    return std::find(kSilencios.begin(), kSilencios.end(), nombre) != kSilencios.end();
}

std::string_view Trozo(std::string_view &resto, std::string_view separadores) {
    const std::size_t desde = std::min(resto.find_first_not_of(separadores), resto.size());
    resto.remove_prefix(desde);
    const std::size_t hasta = std::min(resto.find_first_of(separadores), resto.size());
    const std::string_view trozo = resto.substr(0, hasta);
    resto.remove_prefix(hasta);
    return trozo;
}

constexpr std::string_view kBlancos = " \t\r";

std::optional<double> Segundos(std::string_view t) {
    double valor = 0;
    const auto r = std::from_chars(t.data(), t.data() + t.size(), valor, std::chars_format::fixed);
    if (r.ec != std::errc() || r.ptr != t.data() + t.size() || !(valor >= 0 && valor < 1e5)) return std::nullopt;
    return valor;
}

std::optional<std::vector<Dicho>> LeeLinea(std::string_view linea) {
    std::vector<Dicho> dichos;
    double antes = 0;
    for (auto trozo = Trozo(linea, kBlancos); !trozo.empty(); trozo = Trozo(linea, kBlancos)) {
        const std::size_t dos = trozo.rfind(':');
        if (dos == std::string_view::npos || dos == 0) return std::nullopt;
        const auto fin = Segundos(trozo.substr(dos + 1));
        if (!fin || *fin < antes) return std::nullopt;
        dichos.push_back({std::string(trozo.substr(0, dos)), antes, *fin});
        antes = *fin;
    }
    return dichos;
}

bool SonVocales(std::string_view a, std::string_view b) {
    const auto vocal = [](std::string_view n) { return std::string_view("aeiouAEIOU@").find(n[0]) != n.npos; };
    return !a.empty() && !b.empty() && vocal(a) && vocal(b);
}

std::string Llano(std::string_view palabra) {
    std::string llana;
    for (std::size_t i = 0; i < palabra.size(); i++) {
        const char c = palabra[i];
        if (c == '\xC2')
            i++;  // the signs of Latin-1: no letters
        else if (static_cast<unsigned char>(c) >= 0x80 || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z'))
            llana += c;
        else if (c >= 'A' && c <= 'Z')
            llana += static_cast<char>(c - 'A' + 'a');
    }
    return llana;
}

double Diferencia(const std::string &a, const std::string &b) {
    if (a == b) return 0;
    if (SonVocales(a, b)) return .4;
    const std::string llano = Llano(a);
    return !llano.empty() && llano == Llano(b) ? 0 : 1;
}

}  // namespace

std::optional<std::vector<Dicho>> LeeSegmentos(std::string_view texto, double duracion) {
    std::vector<std::vector<Dicho>> lineas;
    std::size_t total = 0;
    while (!texto.empty()) {
        auto linea = LeeLinea(Trozo(texto, "\n"));
        if (!linea || (total += linea->size()) > kMaxDichos) return std::nullopt;
        if (!linea->empty()) lineas.push_back(std::move(*linea));
    }
    if (lineas.empty()) return std::nullopt;
    double dicho = 0;
    for (const auto &linea : lineas) dicho += linea.back().fin;
    const double falta = (dicho - duracion) / static_cast<double>(lineas.size());
    if (std::abs(falta) > kHolgura) return std::nullopt;
    std::vector<Dicho> dichos;
    double base = 0;
    for (auto &linea : lineas) {
        const double fin = base + std::max(linea.back().fin - falta, 0.0);
        for (Dicho &d : linea) {
            d.inicio = std::min(d.inicio + base, fin);
            d.fin = std::min(d.fin + base, fin);
            dichos.push_back(std::move(d));
        }
        base = fin;
    }
    return dichos;
}

std::optional<std::vector<Dicho>> LeePalabras(std::string_view texto, double duracion) {
    std::vector<Dicho> dichos;
    while (!texto.empty()) {
        std::string_view linea = Trozo(texto, "\n");
        const std::string_view cuando = Trozo(linea, kBlancos), palabra = Trozo(linea, kBlancos);
        if (cuando.empty()) continue;
        const auto inicio = Segundos(cuando);
        if (!inicio || palabra.empty() || dichos.size() >= kMaxDichos) return std::nullopt;
        if (!dichos.empty()) {
            if (*inicio < dichos.back().inicio) return std::nullopt;
            dichos.back().fin = *inicio;
        }
        dichos.push_back({Llano(palabra), *inicio, std::max(*inicio, duracion)});
    }
    if (dichos.empty()) return std::nullopt;
    return dichos;
}

std::optional<std::vector<std::vector<std::string>>> LeeSonidos(std::string_view texto, std::size_t n) {
    std::vector<std::vector<std::string>> palabras;
    while (!texto.empty()) {
        std::string_view linea = Trozo(texto, "\n");
        std::vector<std::string> sonidos;
        bool algo = false;
        for (auto trozo = Trozo(linea, kBlancos); !trozo.empty(); trozo = Trozo(linea, kBlancos)) {
            algo = true;
            if (!EsSilencio(trozo)) sonidos.emplace_back(trozo);
        }
        if (algo) palabras.push_back(std::move(sonidos));
        if (palabras.size() > n) return std::nullopt;
    }
    if (palabras.size() != n) return std::nullopt;
    return palabras;
}

std::optional<std::vector<double>> IniciosDePalabras(const std::vector<Dicho> &dichos,
                                                     const std::vector<std::vector<std::string>> &palabras) {
    struct Suyo {
        const std::string *nombre;
        std::size_t palabra;
    };
    std::vector<Suyo> suyos;
    for (std::size_t i = 0; i < palabras.size(); i++)
        for (const std::string &nombre : palabras[i]) suyos.push_back({&nombre, i});
    std::vector<const Dicho *> sonoros;
    for (const Dicho &d : dichos)
        if (!EsSilencio(d.nombre)) sonoros.push_back(&d);
    const std::size_t n = sonoros.size(), m = suyos.size();
    if (n == 0 || m == 0 || n > kMaxDichos || m > kMaxDichos) return std::nullopt;

    std::vector<float> coste((n + 1) * (m + 1));
    const auto en = [m](std::size_t i, std::size_t j) { return i * (m + 1) + j; };
    constexpr float kFalta = .8F;
    for (std::size_t i = 0; i <= n; i++)
        for (std::size_t j = 0; j <= m; j++) {
            float mejor = i + j == 0 ? 0 : std::numeric_limits<float>::infinity();
            if (i > 0) mejor = std::min(mejor, coste[en(i - 1, j)] + kFalta);
            if (j > 0) mejor = std::min(mejor, coste[en(i, j - 1)] + kFalta);
            if (i > 0 && j > 0)
                mejor = std::min(mejor, coste[en(i - 1, j - 1)] + static_cast<float>(Diferencia(sonoros[i - 1]->nombre,
                                                                                                *suyos[j - 1].nombre)));
            coste[en(i, j)] = mejor;
        }
    if (coste[en(n, m)] > kMaxAjenos * static_cast<double>(std::max(n, m))) return std::nullopt;

    std::vector<double> inicios(palabras.size(), -1);
    for (std::size_t i = n, j = m; i > 0 && j > 0;) {
        const float aqui = coste[en(i, j)];
        const auto juntos =
            coste[en(i - 1, j - 1)] + static_cast<float>(Diferencia(sonoros[i - 1]->nombre, *suyos[j - 1].nombre));
        if (aqui == juntos) {
            inicios[suyos[j - 1].palabra] = sonoros[i - 1]->inicio;
            i--, j--;
        } else if (aqui == coste[en(i - 1, j)] + kFalta) {
            i--;
        } else {
            j--;
        }
    }
    double siguiente = dichos.back().fin;
    for (std::size_t i = inicios.size(); i-- > 0;) {
        if (inicios[i] < 0) inicios[i] = siguiente;
        siguiente = inicios[i];
    }
    return inicios;
}

}  // namespace ondalis
