#include <algorithm>
#include <optional>
#include <string>

#include "engine/ConstructorTramos.h"
#include "engine/Dialectos.h"

namespace ondalis {

namespace {

enum class Nombre { Pau, Spd, Vol, Pit, Mrk };

struct Etiqueta {
    Nombre nombre = Nombre::Pau;
    long numero = 0;
    std::size_t fin = 0;  // behind the closing backslash
};

std::optional<Nombre> BuscaNombre(std::u16string_view texto) {
    static constexpr std::pair<std::u16string_view, Nombre> kNombres[] = {{u"pau", Nombre::Pau},
                                                                          {u"spd", Nombre::Spd},
                                                                          {u"vol", Nombre::Vol},
                                                                          {u"pit", Nombre::Pit},
                                                                          {u"mrk", Nombre::Mrk}};
    for (const auto &[escrito, nombre] : kNombres)
        if (IgualSinCaja(texto, escrito)) return nombre;
    return std::nullopt;
}

// The whole tag whose opening backslash stands at `inicio`, or nothing.
std::optional<Etiqueta> LeeEtiqueta(std::u16string_view texto, std::size_t inicio) {
    constexpr std::size_t kLetras = 3;
    std::size_t pos = inicio + 1 + kLetras;
    if (pos >= texto.size() || texto[pos] != u'=') return std::nullopt;
    const auto nombre = BuscaNombre(texto.substr(inicio + 1, kLetras));
    if (!nombre) return std::nullopt;
    Etiqueta etiqueta{*nombre, 0, 0};
    if (!LeeNumero(texto, ++pos, etiqueta.numero)) return std::nullopt;
    if (pos >= texto.size() || texto[pos] != u'\\') return std::nullopt;
    etiqueta.fin = pos + 1;
    return etiqueta;
}

std::u16string Decimal(long numero) {
    const std::string cifras = std::to_string(numero);
    return {cifras.begin(), cifras.end()};
}

void Aplica(const Etiqueta &etiqueta, ConstructorTramos &salida) {
    const auto entre = [&](double minimo, double maximo) {
        return std::clamp(static_cast<double>(etiqueta.numero), minimo, maximo);
    };
    switch (etiqueta.nombre) {
        case Nombre::Pau: salida.Orden(TipoTramo::Pausa, entre(0, kPausaMaximaMs)); break;
        case Nombre::Spd: salida.Orden(TipoTramo::Velocidad, entre(70, 450), true); break;
        case Nombre::Vol:
            salida.Orden(TipoTramo::Volumen, entre(0, kVolumenMaximoBarra) / kVolumenMaximoBarra, true);
            break;
        case Nombre::Pit: salida.Orden(TipoTramo::Tono, entre(40, 422), true); break;
        case Nombre::Mrk: salida.Orden(TipoTramo::Marca, Decimal(std::max(0L, etiqueta.numero))); break;
    }
}

}  // namespace

std::vector<Tramo> AnalizaBarra(std::u16string_view texto) {
    ConstructorTramos salida;
    std::size_t hecho = 0;  // all before it is in `salida`
    for (std::size_t pos = texto.find(u'\\'); pos != texto.npos;) {
        const auto etiqueta = LeeEtiqueta(texto, pos);
        if (etiqueta) {
            salida.Texto(texto.substr(hecho, pos - hecho), hecho);
            Aplica(*etiqueta, salida);
            hecho = etiqueta->fin;
        }
        pos = texto.find(u'\\', etiqueta ? etiqueta->fin : pos + 1);
    }
    salida.Texto(texto.substr(hecho), hecho);
    return salida.Termina();
}

}  // namespace ondalis
