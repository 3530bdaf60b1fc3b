#include "engine/Clausula.h"

#include <string_view>

namespace ondalis {

namespace {

constexpr std::u16string_view kBlancos = u" \t\r\n\f\v\u00a0\u2028\u2029";
constexpr std::u16string_view kFinales = u".,;:?!\u2026";
constexpr std::u16string_view kCierres = u"\"')]}\u00bb\u201d\u2019";
constexpr std::u16string_view kLineas = u"\n\r\u2028\u2029";

bool Esta(std::u16string_view lista, char16_t c) { return lista.find(c) != lista.npos; }

// Everything that isn't a sign of ASCII or Latin-1, a blank or general punctuation may be spoken as a word.
bool EsLetra(char16_t c) {
    if (c < 0x80) return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    if (c < 0xc0) return c == 0xaa || c == 0xb5 || c == 0xba;
    return c < 0x2000 || c > 0x206f;
}

// Takes the text unit by unit, in order, with the source offset of each.
class Buscador {
public:
    // True when the end has been found.
    bool Toma(char16_t c, std::uint32_t origen) {
        if (!m_empezada) {
            m_empezada = EsLetra(c);
            m_inicio = origen;
            m_fin = origen + 1;
            return false;
        }
        const bool blanco = Esta(kBlancos, c);
        if (blanco && (m_trasFinal || Esta(kLineas, c) || origen - m_inicio >= kMaxClausula)) return true;
        m_trasFinal = Esta(kFinales, c) || (m_trasFinal && Esta(kCierres, c));
        m_fin = origen + 1;
        return false;
    }
    std::optional<std::uint32_t> Fin() const { return m_empezada ? std::optional(m_fin) : std::nullopt; }

private:
    bool m_empezada = false;
    bool m_trasFinal = false;
    std::uint32_t m_inicio = 0;
    std::uint32_t m_fin = 0;
};

}  // namespace

std::optional<std::uint32_t> FinDeClausula(const Locucion &locucion, std::uint32_t desde) {
    Buscador buscador;
    for (const Tramo &tramo : locucion.tramos) {
        if (tramo.tipo != TipoTramo::Texto) continue;
        std::size_t corte = 0;
        for (std::uint32_t i = 0; i < tramo.texto.size(); ++i) {
            while (corte + 1 < tramo.cortes.size() && tramo.cortes[corte + 1].texto <= i) ++corte;
            const std::uint32_t origen =
                tramo.cortes.empty() ? i : i - tramo.cortes[corte].texto + tramo.cortes[corte].origen;
            if (origen >= desde && buscador.Toma(tramo.texto[i], origen)) return buscador.Fin();
        }
    }
    return buscador.Fin();
}

}  // namespace ondalis
