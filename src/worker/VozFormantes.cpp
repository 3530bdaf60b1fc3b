#include "worker/VozFormantes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <initializer_list>
#include <utility>

namespace ondalis {

namespace {

void Linea(std::string &texto, std::string_view nombre, std::initializer_list<double> numeros) {
    texto += nombre;
    for (const double numero : numeros) {
        char cifras[16];
        const auto fin = std::to_chars(cifras, cifras + sizeof cifras, std::lround(numero)).ptr;
        texto += ' ';
        texto.append(cifras, fin);
    }
    texto += '\n';
}

std::string Principio(std::string_view idioma) {
    std::string texto(idioma);
    if (!texto.empty() && texto.back() != '\n') texto += '\n';
    return texto;
}

// Lowest and highest pitch that the language file gives, or what the engine takes where it gives none.
std::pair<int, int> TonoDelFichero(std::string_view idioma) {
    std::pair<int, int> tono{82, 118};
    for (std::size_t i = 0; i < idioma.size();) {
        std::string_view linea = idioma.substr(i, idioma.find('\n', i) - i);
        i += linea.size() + 1;
        if (!linea.starts_with("pitch ")) continue;
        std::pair<int, int> leido{0, 0};
        for (int *valor : {&leido.first, &leido.second}) {
            linea.remove_prefix(std::min(linea.find_first_of("0123456789"), linea.size()));
            const char *fin = std::from_chars(linea.data(), linea.data() + linea.size(), *valor).ptr;
            linea.remove_prefix(static_cast<std::size_t>(fin - linea.data()));
        }
        if (leido.first > 0 && leido.second > 0) tono = leido;
    }
    return tono;
}

// What a language's melody and sounds make of the same values, against Spanish.
struct Particular {
    std::string_view idioma;
    double tono;   // factor that brings the mean pitch back to what was asked for
    double nivel;  // decibels
};
constexpr std::array kParticulares{
    Particular{"gmw/en-US", 1.02, 0}, Particular{"gmw/en", 1.02, 1}, Particular{"roa/fr", 1.045, -.2},
    Particular{"gmw/de", 1.04, .75},  Particular{"roa/it", 1.05, 0},
};

Particular ParticularDe(std::string_view idiomaMotor) {
    const auto propio = std::find_if(kParticulares.begin(), kParticulares.end(),
                                     [idiomaMotor](const Particular &p) { return p.idioma == idiomaMotor; });
    return propio == kParticulares.end() ? Particular{"", 1, 0} : *propio;
}

}  // namespace

// The laws below were measured on eSpeak NG 1.51: median pitch within 1 % in Spanish.
std::string TextoDeVoz(std::string_view idioma, const ValoresFormantes &valores) {
    const double h = std::clamp(valores.tono, 30, 500);
    const double f = std::clamp(valores.fluctuacion, 0, 100);
    const double r = std::clamp(valores.aspereza, 0, 100);
    const double y = std::clamp(valores.diafonia, 0, 100);
    const double b = .6 * y;
    const double s = std::clamp(valores.tamCabeza, 0, 100);

    std::string texto = Principio(idioma);
    const double d = .0088 * h * f;
    const double p = std::max(h + 9 - .82 * d, 10.);
    Linea(texto, "pitch", {p, p + d});
    Linea(texto, "roughness", {std::floor(r * 7 / 100)});  // more than 7 would count as none
    Linea(texto, "flutter", {2 + .16 * r});
    if (b > 0) {
        Linea(texto, "breath", {b, b, 2 * b / 3, b / 2, b / 4, b / 6});
        Linea(texto, "breathw", {150, 150, 200, 200, 400, 400});
        Linea(texto, "voicing", {100 - .7 * y});
    }
    const double k = 100 * std::exp2((50 - s) / 100);
    if (s != 50)
        for (int n = 0; n <= 8; n++) Linea(texto, "formant", {static_cast<double>(n), k, -1, -1});
    return texto;
}

// Loudness weighted as the ear does, measured over the ranges of the values: the voice by its periods, the breath by
// their square, both shifted by the formants.
double GananciaDeVoz(const ValoresFormantes &valores, std::string_view idiomaMotor) {
    constexpr double kSonoridad = -24.5;  // decibels below the full scale, at which the strongest peaks fit
    constexpr double kTonoMedido = 106, kCabezaMedida = 50;
    const double octavas = std::log10(std::clamp(valores.tono, 30, 500) / kTonoMedido);
    const double cabeza = std::clamp(valores.tamCabeza, 0, 100) - kCabezaMedida;
    const double y = std::clamp(valores.diafonia, 0, 100) / 100.;
    const double voz = -29.6 + 10 * octavas + .02 * cabeza + 20 * std::log10(1 - .7 * y);
    const double soplo = -32.4 + 20 * octavas - .055 * cabeza + 20 * std::log10(std::max(y, 1e-6));
    const double junto = 10 * std::log10(std::pow(10, voz / 10) + std::pow(10, soplo / 10));
    const double aspera = -.014 * std::clamp(valores.aspereza, 0, 100);
    return std::pow(10, (kSonoridad - junto - aspera - ParticularDe(idiomaMotor).nivel) / 20);
}

double TonoDelMotor(double tono, std::string_view idiomaMotor) { return tono * ParticularDe(idiomaMotor).tono; }

// The engine's own pitch parameter is no ratio: half an octave up on its scale gives 1.3 instead of 1.5.
std::string TextoDeVozLlana(std::string_view idioma, double factor) {
    if (factor == 1) return std::string(idioma);
    std::string texto = Principio(idioma);
    const auto [bajo, alto] = TonoDelFichero(idioma);
    factor = std::clamp(factor, .3, 4.);
    Linea(texto, "pitch", {bajo * factor, alto * factor});
    return texto;
}

}  // namespace ondalis
