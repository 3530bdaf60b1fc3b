#include "worker/Recorrido.h"

#include <algorithm>
#include <cmath>

#include "worker/Caracteres.h"

namespace ondalis {

namespace {

constexpr double kMaxPausaMs = 3600e3;

// A value that came over the wire: not a number or absurd ones do no harm.
double Dentro(double valor, double minimo, double maximo, double siNo) {
    return std::isnan(valor) ? siNo : std::clamp(valor, minimo, maximo);
}

double Valor(double valor, double siNo) { return Dentro(valor, 0, 100, siNo); }

double Nuevo(const Tramo &tramo, double propio) { return tramo.absoluto ? tramo.valor : propio * tramo.valor; }

}  // namespace

std::uint32_t Origen(const Tramo &tramo, std::size_t indice) {
    const auto i = static_cast<std::uint32_t>(indice);
    const auto detras = std::upper_bound(tramo.cortes.begin(), tramo.cortes.end(), i,
                                         [](std::uint32_t n, const Corte &corte) { return n < corte.texto; });
    if (detras == tramo.cortes.begin()) return i;
    const Corte &corte = *std::prev(detras);
    return i - corte.texto + corte.origen;
}

Recorrido::Recorrido(const Locucion &locucion) : m_locucion(locucion), m_alcanzado(locucion.desde == 0) {
    const ParametrosVoz &v = locucion.voz;
    m_estado.velocidad = std::clamp(v.velocidad, 1, 2000);
    m_estado.ganancia = Dentro(v.ganancia, 0, 1, 1);
    m_estado.tono = std::clamp(v.tono, 1, 2000);
    m_estado.fluctuacion = Valor(v.fluctuacion, 0);
    m_estado.aspereza = Valor(v.aspereza, 0);
    m_estado.diafonia = Valor(v.diafonia, 0);
    m_estado.tamCabeza = Valor(v.tamCabeza, 0);
    m_estado.voz = v.voz;
}

std::optional<Paso> Recorrido::Siguiente() {
    while (m_indice < m_locucion.tramos.size()) {
        const Tramo &tramo = m_locucion.tramos[m_indice++];
        switch (tramo.tipo) {
            case TipoTramo::Texto:
                if (const auto inicio = PrimeroDeTexto(tramo)) return Paso{Paso::Tipo::Texto, &tramo, *inicio, 0};
                break;
            case TipoTramo::Pausa:
                if (m_alcanzado) return Paso{Paso::Tipo::Pausa, &tramo, 0, Dentro(tramo.valor, 0, kMaxPausaMs, 0)};
                break;
            case TipoTramo::Marca:
                if (m_alcanzado) return Paso{Paso::Tipo::Marca, &tramo, 0, 0};
                break;
            default: Aplica(tramo);
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> Recorrido::PrimeroDeTexto(const Tramo &tramo) {
    const std::size_t n = tramo.texto.size();
    if (n == 0) return std::nullopt;
    if (m_alcanzado) return 0;
    const std::uint32_t desde = m_locucion.desde;
    // Text whose end touches `desde` has been said, but what follows it has not.
    m_alcanzado = Origen(tramo, n - 1) + 1 >= desde;
    std::size_t bajo = 0, alto = n;
    while (bajo < alto) {
        const std::size_t medio = bajo + (alto - bajo) / 2;
        if (Origen(tramo, medio) < desde)
            bajo = medio + 1;
        else
            alto = medio;
    }
    if (bajo == n) return std::nullopt;
    return bajo;
}

void Recorrido::Aplica(const Tramo &tramo) {
    const ParametrosVoz &v = m_locucion.voz;
    switch (tramo.tipo) {
        case TipoTramo::Velocidad:
            m_estado.velocidad = Dentro(Nuevo(tramo, v.velocidad), 1, 2000, m_estado.velocidad);
            break;
        case TipoTramo::Volumen: m_estado.ganancia = Dentro(Nuevo(tramo, v.ganancia), 0, 1, m_estado.ganancia); break;
        case TipoTramo::Tono: m_estado.tono = Dentro(Nuevo(tramo, v.tono), 1, 2000, m_estado.tono); break;
        case TipoTramo::Voz: m_estado.voz = tramo.texto.empty() ? v.voz : AUtf8(tramo.texto); break;
        case TipoTramo::Idioma: m_estado.idioma = AUtf8(tramo.texto); break;
        case TipoTramo::Deletreo: m_estado.deletreo = tramo.valor != 0; break;
        case TipoTramo::Puntuacion: m_estado.puntuacion = tramo.valor != 0; break;
        case TipoTramo::Enfasis: m_estado.enfasis = tramo.valor != 0; break;
        case TipoTramo::Fluctuacion: m_estado.fluctuacion = Valor(tramo.valor, m_estado.fluctuacion); break;
        case TipoTramo::Aspereza: m_estado.aspereza = Valor(tramo.valor, m_estado.aspereza); break;
        case TipoTramo::Diafonia: m_estado.diafonia = Valor(tramo.valor, m_estado.diafonia); break;
        case TipoTramo::TamCabeza: m_estado.tamCabeza = Valor(tramo.valor, m_estado.tamCabeza); break;
        default: break;
    }
}

std::string AUtf8(std::u16string_view texto) {
    std::string utf8;
    for (std::size_t i = 0; i < texto.size();) {
        const PuntoCodigo p = LeePunto(texto, i);
        AnadeUtf8(utf8, p.roto ? U'\uFFFD' : p.c);
        i += p.unidades;
    }
    return utf8;
}

}  // namespace ondalis
