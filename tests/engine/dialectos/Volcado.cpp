#include "Volcado.h"

#include <cstdio>

namespace ondalis {

std::u16string De8(std::string_view utf8) {
    std::u16string texto;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        const int siguen = byte < 0x80 ? 0 : byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
        char32_t codigo = siguen == 0 ? byte : byte & (0x3F >> siguen);
        for (int k = 1; k <= siguen; ++k)
            codigo = codigo << 6 | (static_cast<unsigned char>(utf8[i + static_cast<std::size_t>(k)]) & 0x3F);
        i += static_cast<std::size_t>(siguen) + 1;
        if (codigo >= 0x10000) {
            texto += static_cast<char16_t>(0xD800 + ((codigo - 0x10000) >> 10));
            texto += static_cast<char16_t>(0xDC00 + ((codigo - 0x10000) & 0x3FF));
        } else {
            texto += static_cast<char16_t>(codigo);
        }
    }
    return texto;
}

std::string A8(std::u16string_view texto) {
    std::string utf8;
    for (std::size_t i = 0; i < texto.size(); ++i) {
        char32_t c = texto[i];
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < texto.size())
            c = 0x10000 + ((c - 0xD800) << 10) + (texto[++i] - 0xDC00u);
        if (c < 0x80) {
            utf8 += static_cast<char>(c);
        } else if (c < 0x800) {
            utf8 += {static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F))};
        } else if (c < 0x10000) {
            utf8 += {static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 0x3F)),
                     static_cast<char>(0x80 | (c & 0x3F))};
        } else {
            utf8 += {static_cast<char>(0xF0 | c >> 18), static_cast<char>(0x80 | (c >> 12 & 0x3F)),
                     static_cast<char>(0x80 | (c >> 6 & 0x3F)), static_cast<char>(0x80 | (c & 0x3F))};
        }
    }
    return utf8;
}

std::string Vuelca(const std::vector<Tramo> &tramos) {
    static constexpr const char *kNombres[] = {"Texto",   "Pausa",       "Marca",    "Velocidad", "Volumen",
                                               "Tono",    "Voz",         "Idioma",   "Deletreo",  "Puntuacion",
                                               "Enfasis", "Fluctuacion", "Aspereza", "Diafonia",  "TamCabeza"};
    std::string volcado;
    for (const Tramo &tramo : tramos) {
        volcado += kNombres[static_cast<int>(tramo.tipo)];
        switch (tramo.tipo) {
            case TipoTramo::Texto:
            case TipoTramo::Marca:
            case TipoTramo::Voz:
            case TipoTramo::Idioma: volcado += " \"" + A8(tramo.texto) + '"'; break;
            default: {
                char cifras[40];
                std::snprintf(cifras, sizeof cifras, "%s %.6g", tramo.absoluto ? " abs" : "", tramo.valor);
                volcado += cifras;
            }
        }
        for (const Corte &corte : tramo.cortes)
            volcado += ' ' + std::to_string(corte.texto) + '>' + std::to_string(corte.origen);
        volcado += '\n';
    }
    return volcado;
}

std::u16string Hablado(const std::vector<Tramo> &tramos) {
    std::u16string todo;
    for (const Tramo &tramo : tramos)
        if (tramo.tipo == TipoTramo::Texto) todo += tramo.texto;
    return todo;
}

std::size_t Origen(const Tramo &tramo, std::size_t i) {
    std::size_t origen = 0;
    for (const Corte &corte : tramo.cortes)
        if (corte.texto <= i) origen = i - corte.texto + corte.origen;
    return origen;
}

bool &ActualizaTablas() {
    static bool actualiza = false;
    return actualiza;
}

}  // namespace ondalis
