#include "worker/orden/EstimaPalabras.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <utility>

#include "worker/Caracteres.h"

namespace ondalis {

namespace {

// How words last in a language, in milliseconds at a normal pace; only their proportions count. Fitted to eSpeak
// NG 1.51's own word times.
struct Ritmo {
    double propio, nucleo, vocal, consonante;  // a word; its vowel groups; their further vowels; its consonants
    double corta;                              // off a word of up to three letters
};
constexpr Ritmo kRitmoEspanol{25, 70, 65, 61, 0};
constexpr Ritmo kRitmoIngles{150, 71, 8, 54, 60};
constexpr Ritmo kRitmoAleman{103, 72, 6, 40, 49};
constexpr Ritmo kRitmoFrances{30, 113, 42, 28, 14};
constexpr Ritmo kRitmoItaliano{20, 40, 78, 79, 10};
constexpr Ritmo kRitmoOtro{83, 63, 37, 56, 48};

const Ritmo &RitmoEn(LenguaSignos lengua) {
    switch (lengua) {
        case LenguaSignos::Espanol: return kRitmoEspanol;
        case LenguaSignos::InglesBritanico:
        case LenguaSignos::InglesAmericano: return kRitmoIngles;
        case LenguaSignos::Aleman: return kRitmoAleman;
        case LenguaSignos::Frances: return kRitmoFrances;
        case LenguaSignos::Italiano: return kRitmoItaliano;
        default: return kRitmoOtro;
    }
}

constexpr double kPesoCifra = 230;  // of a number of one digit
constexpr double kPesoSigla = 230;  // a letter of "PDF"
constexpr double kPesoMinimo = 60, kPesoAtona = 172;
constexpr double kPesoAncho = 200;     // a character of a script without our letters: a syllable
constexpr double kAlargaFinal = 1.15;  // of the last word before a pause

constexpr double kMsTrama = 5;
constexpr double kMsSilencio = 45;    // shorter ones belong to consonants
constexpr double kUmbralNivel = .03;  // of the loud frames' level
constexpr double kUmbralMinimo = 40;  // in samples' units
constexpr std::size_t kMaxSilencios = 120;

// The cost of joining a silence and a gap between words, in units of a misplacement of one deviation squared.
constexpr double kDesvioMs = 60, kDesvioRelativo = .09;
constexpr double kSinSigno = 3;          // a silence between words without a sign
constexpr double kSilencioSuelto = .02;  // a millisecond of a silence that belongs to no gap
constexpr double kHuecoSuelto = 2.5;     // a sign without a silence

// English words that are said in passing.
bool EsAtona(std::u32string_view texto) {
    constexpr std::u32string_view kAtonas =
        U" the a an of to and in is it its was for on at as by or be he i you that with this but from his her had are "
        U"not has have were would will can some any she we they my your our their if so ";
    std::u32string palabra = U" ";
    for (const char32_t c : texto) {
        if (!EsAlfanumerico(c)) break;
        palabra += c >= U'A' && c <= U'Z' ? c - U'A' + U'a' : c;
    }
    palabra += U' ';
    return palabra.size() > 2 && kAtonas.find(palabra) != std::u32string_view::npos;
}

constexpr double kMsValle = 40, kMsAntes = 30;

bool EsVocal(char32_t c) {
    return std::u32string_view(U"aeiouyáéíóúàèìòùâêîôûäëïöüãõåæøœýÿAEIOUYÁÉÍÓÚÀÈÌÒÙÂÊÎÔÛÄËÏÖÜÃÕÅÆØŒ").find(c) !=
           std::u32string_view::npos;
}
bool EsAncha(char32_t c) { return c >= 0x590; }
bool EsCifra(char32_t c) { return c >= U'0' && c <= U'9'; }
bool EsMayuscula(char32_t c) { return c >= U'A' && c <= U'Z'; }
bool EsDePausa(char32_t c) { return std::u32string_view(U",.;:!?…()—–\n").find(c) != std::u32string_view::npos; }

std::u32string DeUtf8(std::string_view utf8) {
    std::u32string salida;
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0) == 0x80 && !salida.empty())
            salida.back() = salida.back() << 6 | (byte & 0x3F);
        else
            salida += static_cast<char32_t>(byte < 0x80   ? byte
                                            : byte < 0xE0 ? byte & 0x1F
                                            : byte < 0xF0 ? byte & 0x0F
                                                          : byte & 0x07);
    }
    return salida;
}

// Numbers as they are read: by thousands, hundreds, tens.
double PesoDeCifras(std::u32string_view texto) {
    double peso = 0;
    for (std::size_t i = 0; i < texto.size();) {
        std::size_t fin = i;
        while (fin < texto.size() && EsCifra(texto[fin])) fin++;
        for (std::size_t quedan = fin - i; quedan > 0; quedan--, i++) {
            const int cifra = static_cast<int>(texto[i] - U'0');
            const std::size_t lugar = quedan % 3;  // 0: hundreds, 2: tens, 1: units
            if (lugar == 2 && cifra == 1 && texto[i + 1] < U'6')
                peso += kPesoCifra * .3;  // eleven, twelve: with the unit one word
            else if (cifra != 0)
                peso += kPesoCifra * (lugar == 0 ? 1.7 : lugar == 2 ? 1.6 : 1);
            if (lugar == 1 && quedan > 1) peso += kPesoCifra;
        }
        i = fin + (fin < texto.size() ? 1 : 0);
    }
    return peso;
}

struct Silencio {
    double inicio = 0, fin = 0;  // samples
    double medio = 0;            // its place on the axis of sound without silences
};

// Where sound begins and ends, and its silences; all in samples.
struct Perfil {
    double inicio = 0, fin = 0, sonoro = 0;
    double paso = 1;            // samples of a frame
    std::vector<double> nivel;  // of each frame
    std::vector<Silencio> silencios;
};

Perfil HazPerfil(std::span<const std::int16_t> x, double hercios) {
    const auto paso = std::max<std::size_t>(1, static_cast<std::size_t>(hercios * kMsTrama / 1000));
    std::vector<double> nivel;
    for (std::size_t i = 0; i < x.size(); i += paso) {
        const auto trama = x.subspan(i, std::min(paso, x.size() - i));
        double suma = 0;
        for (const std::int16_t m : trama) suma += static_cast<double>(m) * m;
        nivel.push_back(std::sqrt(suma / static_cast<double>(trama.size())));
    }
    std::vector<double> orden = nivel;
    const auto alto = orden.begin() + static_cast<std::ptrdiff_t>(orden.size() * 9 / 10);
    std::nth_element(orden.begin(), alto, orden.end());
    const double umbral = std::max(kUmbralMinimo, *alto * kUmbralNivel);

    Perfil perfil;
    std::size_t i = 0, fin = nivel.size();
    while (i < fin && nivel[i] < umbral) i++;
    while (fin > i && nivel[fin - 1] < umbral) fin--;
    perfil.inicio = static_cast<double>(i * paso);
    perfil.fin = static_cast<double>(std::min(fin * paso, x.size()));
    perfil.sonoro = perfil.fin - perfil.inicio;
    const auto minimo = static_cast<std::size_t>(kMsSilencio / kMsTrama);
    while (i < fin) {
        if (nivel[i] >= umbral) {
            i++;
            continue;
        }
        const std::size_t desde = i;
        while (i < fin && nivel[i] < umbral) i++;
        if (i - desde < minimo || perfil.silencios.size() >= kMaxSilencios) continue;
        const auto a = static_cast<double>(desde * paso), b = static_cast<double>(i * paso);
        const double antes = perfil.silencios.empty() ? perfil.inicio : perfil.silencios.back().fin;
        const double ultimo = perfil.silencios.empty() ? 0 : perfil.silencios.back().medio;
        perfil.silencios.push_back({a, b, ultimo + a - antes});
        perfil.sonoro -= b - a;
    }
    perfil.paso = static_cast<double>(paso);
    perfil.nivel = std::move(nivel);
    return perfil;
}

// The quietest moment near `donde`: words begin at the consonants between louder vowels.
double Valle(const Perfil &p, double donde, double ms) {
    const double ancho = kMsValle * ms / p.paso, centro = donde / p.paso;
    double mejor = std::numeric_limits<double>::infinity(), hallado = donde;
    for (double i = std::ceil(centro - ancho); i <= centro + ancho; i++) {
        if (i < 1 || i + 1 >= static_cast<double>(p.nivel.size())) continue;
        const auto k = static_cast<std::size_t>(i);
        const double lejos = (i - centro) / ancho;
        const double valor = std::log(1 + p.nivel[k - 1] + p.nivel[k] + p.nivel[k + 1]) + lejos * lejos;
        if (valor < mejor) mejor = valor, hallado = i * p.paso;
    }
    return hallado;
}

// Which gap (behind word i) each silence is; npos: none. The cheapest way to join both rows in order.
std::vector<std::size_t> Une(const Perfil &p, const std::vector<double> &finales, const std::vector<bool> &signos,
                             double hercios) {
    const std::size_t n = p.silencios.size(), m = finales.size();
    const double ms = hercios / 1000, desvio = kDesvioMs * ms;
    std::vector<double> coste((n + 1) * (m + 1), std::numeric_limits<double>::infinity());
    std::vector<std::uint8_t> camino((n + 1) * (m + 1), 0);
    const auto en = [m](std::size_t j, std::size_t i) { return j * (m + 1) + i; };
    coste[0] = 0;
    for (std::size_t j = 0; j <= n; j++)
        for (std::size_t i = 0; i <= m; i++) {
            const auto prueba = [&](double valor, std::uint8_t por) {
                if (valor < coste[en(j, i)]) coste[en(j, i)] = valor, camino[en(j, i)] = por;
            };
            if (j > 0)
                prueba(
                    coste[en(j - 1, i)] + (p.silencios[j - 1].fin - p.silencios[j - 1].inicio) / ms * kSilencioSuelto,
                    1);
            if (i > 0) prueba(coste[en(j, i - 1)] + (signos[i - 1] ? kHuecoSuelto : 0), 2);
            if (i > 0 && j > 0) {
                const double lejos = p.silencios[j - 1].medio - finales[i - 1];
                const double cuanto =
                    lejos / (desvio + kDesvioRelativo * std::min(finales[i - 1], p.sonoro - finales[i - 1]));
                prueba(coste[en(j - 1, i - 1)] + cuanto * cuanto + (signos[i - 1] ? 0 : kSinSigno), 3);
            }
        }
    std::vector<std::size_t> unidos(n, std::u32string::npos);
    for (std::size_t j = n, i = m; j > 0 || i > 0;) {
        const std::uint8_t por = camino[en(j, i)];
        if (por == 3) unidos[j - 1] = i - 1;
        if (por != 2) j--;
        if (por != 1) i--;
    }
    return unidos;
}

}  // namespace

double PesoDePalabra(std::u32string_view texto, LenguaSignos lengua) {
    double nucleos = 0, vocales = 0, consonantes = 0, cifras = 0, anchas = 0;
    std::size_t mayusculas = 0;
    bool vocal = false;
    for (const char32_t c : texto) {
        const bool antes = std::exchange(vocal, EsVocal(c));
        if (EsCifra(c))
            cifras++;
        else if (EsAncha(c))
            anchas++;
        else if (vocal)
            (antes ? vocales : nucleos)++;
        else if (EsAlfanumerico(c))
            consonantes++;
        mayusculas += EsMayuscula(c);
    }
    const Ritmo &r = RitmoEn(lengua);
    if (&r == &kRitmoIngles && EsAtona(texto)) return kPesoAtona;
    if (nucleos == 0 && consonantes > 0 && cifras == 0 && mayusculas == static_cast<std::size_t>(consonantes))
        return r.propio + consonantes * kPesoSigla;
    const double letras = nucleos + vocales + consonantes;
    double peso = r.propio + nucleos * r.nucleo + vocales * r.vocal + consonantes * r.consonante;
    if (letras > 0 && letras <= 3) peso -= r.corta;
    peso += PesoDeCifras(texto);
    return std::max(peso, kPesoMinimo) + anchas * kPesoAncho;
}

std::vector<std::uint64_t> EstimaPalabras(const Pieza &pieza, std::span<const std::int16_t> sonido,
                                          std::uint32_t hercios, LenguaSignos lengua) {
    const std::size_t n = pieza.fichas.size();
    std::vector<std::uint64_t> inicios(n, 0);
    if (n == 0 || sonido.empty()) return inicios;
    const Perfil perfil = HazPerfil(sonido, hercios);
    const std::u32string texto = DeUtf8(pieza.utf8);
    std::vector<double> pesos(n);
    std::vector<bool> signos(n);
    for (std::size_t i = 0; i < n; i++) {
        const std::size_t desde = pieza.fichas[i].inicioMotor;
        const std::size_t hasta = i + 1 < n ? pieza.fichas[i + 1].inicioMotor : texto.size();
        const auto palabra = std::u32string_view(texto).substr(desde, hasta - desde);
        pesos[i] = PesoDePalabra(palabra, lengua);
        const std::size_t ultima = palabra.find_last_not_of(U" \t\n\"'»”");
        signos[i] = ultima != std::u32string_view::npos && EsDePausa(palabra[ultima]);
        // What opens a parenthesis or a dash stands before the next word.
        if (!signos[i]) signos[i] = palabra.find_first_of(U"(—–") != std::u32string_view::npos;
        if (signos[i] || i + 1 == n) pesos[i] *= kAlargaFinal;
    }
    double total = 0;
    for (const double peso : pesos) total += peso;
    std::vector<double> finales;
    double suma = 0;
    for (std::size_t i = 0; i + 1 < n; i++) finales.push_back(perfil.sonoro * (suma += pesos[i]) / total);
    const auto unidos = Une(perfil, finales, signos, hercios);

    // From silence to silence the words share the sound between them.
    const double ms = hercios / 1000.0;
    std::size_t primera = 0;
    double desde = perfil.inicio;
    const auto reparte = [&](std::size_t fin, double hasta) {  // words primera..fin-1
        double todo = 0, llevado = 0;
        for (std::size_t i = primera; i < fin; i++) todo += pesos[i];
        for (std::size_t i = primera; i < fin; i++) {
            const double previsto = desde + (hasta - desde) * llevado / todo;
            // Behind a silence a word begins with its first consonant's, which is part of it.
            const double donde = i == primera ? previsto - kMsAntes * ms : Valle(perfil, previsto, ms);
            inicios[i] = static_cast<std::uint64_t>(std::max(0.0, donde));
            llevado += pesos[i];
        }
        primera = fin;
    };
    for (std::size_t j = 0; j < unidos.size(); j++) {
        if (unidos[j] == std::u32string::npos) continue;
        reparte(unidos[j] + 1, perfil.silencios[j].inicio);
        desde = perfil.silencios[j].fin;
    }
    reparte(n, perfil.fin);
    for (std::size_t i = 0; i < n; i++)
        inicios[i] = std::min<std::uint64_t>(std::max(inicios[i], i > 0 ? inicios[i - 1] : 0), sonido.size() - 1);
    return inicios;
}

}  // namespace ondalis
