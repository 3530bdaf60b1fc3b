#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "engine/ConstructorTramos.h"
#include "engine/Dialectos.h"
#include "engine/HablantesIBM.h"

namespace ondalis {

namespace {

constexpr double kVolumenMaximoComilla = 65000;  // `vv of this value is gain 1

struct Anotacion {
    enum class Tipo { Lengua, Preset, Valor } tipo = Tipo::Valor;
    char16_t letra = 0;  // Valor: the one behind `v
    long numero = 0;
    long dialecto = 0;    // Lengua
    std::size_t fin = 0;  // behind its last digit
};

// The dialect knows a minus alone.
bool LeeNumeroComilla(std::u16string_view texto, std::size_t &pos, long &numero) {
    return pos < texto.size() && texto[pos] != u'+' && LeeNumero(texto, pos, numero);
}

// The whole annotation whose backquote stands at `inicio`, or nothing.
std::optional<Anotacion> LeeAnotacion(std::u16string_view texto, std::size_t inicio) {
    std::size_t pos = inicio + 1;
    if (pos >= texto.size()) return std::nullopt;
    Anotacion leida;
    const char16_t clase = texto[pos++];
    if (clase == u'l') {
        leida.tipo = Anotacion::Tipo::Lengua;
    } else if (clase != u'v') {
        return std::nullopt;
    } else if (constexpr std::u16string_view kLetras = u"svbfryh";
               pos < texto.size() && kLetras.find(texto[pos]) != kLetras.npos) {
        leida.letra = texto[pos++];
    } else {
        leida.tipo = Anotacion::Tipo::Preset;
    }
    if (!LeeNumeroComilla(texto, pos, leida.numero)) return std::nullopt;
    if (leida.tipo == Anotacion::Tipo::Lengua && pos + 1 < texto.size() && texto[pos] == u'.' &&
        EsCifra(texto[pos + 1]))
        LeeNumero(texto, ++pos, leida.dialecto);
    leida.fin = pos;
    return leida;
}

const HablanteIBM *BuscaHablante(std::string_view dialecto, long preset) {
    const auto &todos = HablantesIBM();
    const auto fila =
        std::ranges::find_if(todos, [&](const HablanteIBM &h) { return h.preset == preset && dialecto == h.dialecto; });
    return fila == todos.end() ? nullptr : &*fila;
}

// What the annotations have set. Only what differs from what the spans have said is said again, and before text alone:
// a long run of annotations costs no more than its last ones.
class Valores {
public:
    void Aplica(const Anotacion &anotacion) {
        switch (anotacion.tipo) {
            case Anotacion::Tipo::Lengua: PonLengua(anotacion); break;
            case Anotacion::Tipo::Preset: PonHablante(BuscaHablante(m_dialecto, anotacion.numero), true); break;
            case Anotacion::Tipo::Valor: PonValor(anotacion.letra, static_cast<double>(anotacion.numero)); break;
        }
    }

    void Vierte(ConstructorTramos &salida) {
        if (m_idioma != nullptr && m_idiomaDicho != m_idioma) {
            salida.Orden(TipoTramo::Voz, std::u16string(m_idioma, m_idioma + std::strlen(m_idioma)));
            m_idiomaDicho = m_idioma;
        }
        for (std::size_t i = 0; i < kTipos.size(); ++i) {
            if (!m_valores[i] || m_dichos[i] == m_valores[i]) continue;
            salida.Orden(kTipos[i], *m_valores[i], EsAbsoluto(kTipos[i]));
            m_dichos[i] = m_valores[i];
        }
    }

private:
    static constexpr std::array kTipos{TipoTramo::Velocidad,   TipoTramo::Volumen,  TipoTramo::Tono,
                                       TipoTramo::Fluctuacion, TipoTramo::Aspereza, TipoTramo::Diafonia,
                                       TipoTramo::TamCabeza};
    using Juego = std::array<std::optional<double>, kTipos.size()>;

    static bool EsAbsoluto(TipoTramo tipo) { return tipo < TipoTramo::Fluctuacion; }

    void Pon(TipoTramo tipo, double valor) {
        const auto sitio = std::ranges::find(kTipos, tipo) - kTipos.begin();
        m_valores[static_cast<std::size_t>(sitio)] = valor;
    }

    void PonLengua(const Anotacion &anotacion) {
        const std::string dialecto = std::to_string(anotacion.numero) + '.' + std::to_string(anotacion.dialecto);
        PonHablante(BuscaHablante(dialecto, m_preset == 0 ? 1 : m_preset), m_preset != 0);
    }

    void PonHablante(const HablanteIBM *hablante, bool conPreset) {
        if (hablante == nullptr) return;
        m_dialecto = hablante->dialecto;
        if (conPreset) m_preset = hablante->preset;
        m_idioma = hablante->idioma;
        Pon(TipoTramo::Tono, hablante->tono);
        Pon(TipoTramo::Fluctuacion, hablante->fluctuacion);
        Pon(TipoTramo::Aspereza, hablante->aspereza);
        Pon(TipoTramo::Diafonia, hablante->diafonia);
        Pon(TipoTramo::TamCabeza, hablante->tamCabeza);
    }

    void PonValor(char16_t letra, double numero) {
        const double porcentaje = std::clamp(numero, 0.0, 100.0);
        switch (letra) {
            case u's': Pon(TipoTramo::Velocidad, std::clamp(numero, 70.0, 450.0)); break;
            case u'v':
                Pon(TipoTramo::Volumen, std::clamp(numero, 0.0, kVolumenMaximoComilla) / kVolumenMaximoComilla);
                break;
            case u'b': Pon(TipoTramo::Tono, std::clamp(numero, 40.0, 422.0)); break;
            case u'f': Pon(TipoTramo::Fluctuacion, porcentaje); break;
            case u'r': Pon(TipoTramo::Aspereza, porcentaje); break;
            case u'y': Pon(TipoTramo::Diafonia, porcentaje); break;
            case u'h': Pon(TipoTramo::TamCabeza, porcentaje); break;
            default: break;
        }
    }

    std::string_view m_dialecto = "2.0";  // what a preset without a language belongs to
    long m_preset = 0;                    // 0: none chosen
    const char *m_idioma = nullptr;
    const char *m_idiomaDicho = nullptr;
    Juego m_valores;
    Juego m_dichos;
};

}  // namespace

std::vector<Tramo> AnalizaComilla(std::u16string_view texto) {
    ConstructorTramos salida;
    Valores valores;
    const auto dice = [&](std::size_t desde, std::size_t hasta) {
        if (desde == hasta) return;
        valores.Vierte(salida);
        salida.Texto(texto.substr(desde, hasta - desde), desde);
    };
    std::size_t hecho = 0;  // all before it is in `salida`
    for (std::size_t pos = texto.find(u'`'); pos != texto.npos;) {
        std::size_t sigue = pos + 1;
        if (sigue < texto.size() && texto[sigue] == u'`') {
            dice(hecho, pos);
            hecho = sigue++;  // the second of the two is what is said
        } else if (const auto anotacion = LeeAnotacion(texto, pos)) {
            dice(hecho, pos);
            valores.Aplica(*anotacion);
            hecho = sigue = anotacion->fin;
        }
        pos = texto.find(u'`', sigue);
    }
    dice(hecho, texto.size());
    valores.Vierte(salida);
    return salida.Termina();
}

}  // namespace ondalis
