#include "engine/cRecorrido.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "engine/Clausula.h"

namespace ondalis {

namespace {
// Stands for the end of the clause when only marks are left behind the last word.
constexpr std::int64_t kCola = std::numeric_limits<std::int64_t>::max();
// A sound shorter than this is what an engine gives for nothing, not progress.
constexpr std::uint64_t kMuestrasDeAvance = 4096;

// Behind the last source unit that can be spoken.
std::uint32_t FinDeFuente(const Locucion &locucion) {
    std::uint32_t fin = 0;
    for (const Tramo &tramo : locucion.tramos) {
        if (tramo.tipo != TipoTramo::Texto || tramo.texto.empty()) continue;
        const auto ultimo = static_cast<std::uint32_t>(tramo.texto.size());
        const Corte corte = tramo.cortes.empty() ? Corte{} : tramo.cortes.back();
        fin = std::max(fin, ultimo - std::min(ultimo, corte.texto) + corte.origen);
    }
    return fin;
}
// How many units of the span come from before source offset `hasta`.
std::size_t UnidadesAntesDe(const Tramo &tramo, std::uint32_t hasta) {
    std::size_t fin = tramo.texto.size();
    for (auto corte = tramo.cortes.rbegin(); corte != tramo.cortes.rend(); ++corte) {
        if (corte->origen < hasta) return std::min<std::size_t>(fin, corte->texto + (hasta - corte->origen));
        fin = corte->texto;
    }
    return tramo.cortes.empty() ? std::min<std::size_t>(fin, hasta) : 0;
}
}  // namespace

void cRecorrido::Empieza(Locucion locucion) {
    *this = cRecorrido();
    m_locucion = std::move(locucion);
    m_finFuente = FinDeFuente(m_locucion);
    m_finOido = m_locucion.desde;
    m_desdeAlFallar = m_locucion.desde;
}

bool cRecorrido::Palabra(std::uint64_t muestra, std::uint32_t posicion, std::uint32_t longitud) {
    // Words never go back, whatever a worker says.
    if (posicion <= m_ultimaPosicion || posicion < m_locucion.desde || posicion >= m_finFuente) return true;
    if (!Anade({muestra, false, posicion, std::min(longitud, m_finFuente - posicion), {}, 0})) return false;
    m_ultimaPosicion = posicion;
    return true;
}

bool cRecorrido::Marca(std::uint64_t muestra, std::u16string nombre) {
    std::size_t tramo = m_tramoMarca;
    const auto &tramos = m_locucion.tramos;
    while (tramo < tramos.size() && !(tramos[tramo].tipo == TipoTramo::Marca && tramos[tramo].texto == nombre)) ++tramo;
    if (tramo == tramos.size()) return true;  // none of ours
    m_tramoMarca = tramo + 1;
    return Anade({muestra, true, 0, 0, std::move(nombre), m_tramoMarca});
}

bool cRecorrido::Anade(Suceso suceso) {
    if (m_sucesos.size() >= kMaxEventos || suceso.muestra > std::numeric_limits<std::uint64_t>::max() / 2) return false;
    suceso.muestra += m_base;
    // One that comes late is due at once, but never before those that came ahead of it.
    if (!m_sucesos.empty()) suceso.muestra = std::max(suceso.muestra, m_sucesos.back().muestra);
    m_sucesos.push_back(std::move(suceso));
    return true;
}

Locucion cRecorrido::Peticion() const {
    Locucion peticion = m_locucion;
    if (!m_hasta) return peticion;
    for (std::size_t i = 0; i < peticion.tramos.size(); ++i) {
        Tramo &tramo = peticion.tramos[i];
        if (tramo.tipo != TipoTramo::Texto || tramo.texto.empty()) continue;
        const std::size_t cabe = UnidadesAntesDe(tramo, *m_hasta);
        if (cabe == tramo.texto.size()) continue;
        tramo.texto.resize(cabe);
        std::erase_if(tramo.cortes, [cabe](const Corte &corte) { return corte.texto > 0 && corte.texto >= cabe; });
        peticion.tramos.resize(cabe == 0 ? i : i + 1);
        break;
    }
    return peticion;
}

bool cRecorrido::Sigue() {
    if (!m_hasta) return false;
    Retrocede();
    m_locucion.desde = *m_hasta;
    m_hasta.reset();
    return true;
}

void cRecorrido::Acaba() {
    m_acabado = true;
    // A word without sound was not heard; a mark behind the last sound is reached with it.
    std::erase_if(m_sucesos, [this](const Suceso &s) { return !s.esMarca && s.muestra >= m_total; });
    for (Suceso &s : m_sucesos)
        if (s.muestra >= m_total) s.muestra = m_total == 0 ? 0 : m_total - 1;
}

void cRecorrido::Retrocede() {
    std::erase_if(m_sucesos, [this](const Suceso &s) { return s.muestra >= m_total; });
    for (const Suceso &s : m_sucesos) {
        if (s.esMarca) {
            m_tramoOido = s.tramo;
        } else {
            m_posicionOida = s.posicion;
            m_finOido = std::max(m_finOido, s.posicion + s.longitud);
        }
    }
    m_ultimaPosicion = m_posicionOida;
    m_base = m_total;
    QuitaMarcasPasadas();
}

void cRecorrido::QuitaMarcasPasadas() {
    auto &tramos = m_locucion.tramos;
    const auto pasadas = tramos.begin() + static_cast<std::ptrdiff_t>(std::min(m_tramoOido, tramos.size()));
    tramos.erase(std::remove_if(tramos.begin(), pasadas, [](const Tramo &t) { return t.tipo == TipoTramo::Marca; }),
                 pasadas);
    m_tramoMarca = m_tramoOido = 0;
    for (Suceso &s : m_sucesos) s.tramo = 0;
}

cRecorrido::Remedio cRecorrido::Falla() {
    Retrocede();
    if (m_total >= m_totalAlFallar + kMuestrasDeAvance || m_finOido > m_desdeAlFallar) m_fallosSeguidos = 0;
    if (++m_fallosSeguidos > kMaxFallosSeguidos) return Remedio::Abandona;
    m_totalAlFallar = m_total;
    // A clause that was left behind a word of it failed somewhere else this time: it is no killer yet.
    const bool avanzo = m_finOido > m_desdeAlFallar;

    const std::uint32_t desde = std::max(m_finOido, m_locucion.desde);
    const auto fin = FinDeClausula(m_locucion, desde);
    const bool quedanMarcas = std::any_of(m_locucion.tramos.begin(), m_locucion.tramos.end(),
                                          [](const Tramo &t) { return t.tipo == TipoTramo::Marca; });
    if (!fin && !quedanMarcas) return Remedio::Acaba;
    const std::int64_t clausula = fin ? std::int64_t{*fin} : kCola;
    const bool hayMas = fin && FinDeClausula(m_locucion, *fin);
    m_desdeAlFallar = m_locucion.desde = desde;
    m_hasta.reset();
    if (clausula != m_clausulaFallida || avanzo) {
        m_clausulaFallida = clausula;
        if (hayMas) m_hasta = fin;
        return Remedio::Reintenta;
    }
    if (!fin) return Remedio::Acaba;
    m_desdeAlFallar = m_locucion.desde = m_finOido = *fin;
    m_clausulaFallida = -1;
    return hayMas || quedanMarcas ? Remedio::Salta : Remedio::Acaba;
}

std::optional<EventoMotor> cRecorrido::Siguiente(std::uint64_t oidas) {
    if (m_sucesos.empty()) return {};
    // An utterance without any sound reaches its marks as it ends: a sample of theirs never comes.
    const bool sinSonido = m_acabado && m_total == 0;
    if (m_sucesos.front().muestra >= oidas && !sinSonido) return {};
    Suceso suceso = std::move(m_sucesos.front());
    m_sucesos.pop_front();
    EventoMotor evento;
    evento.numero = m_locucion.numero;
    if (suceso.esMarca) {
        evento.tipo = EventoMotor::Tipo::Marca;
        evento.texto = std::move(suceso.nombre);
        m_tramoOido = std::max(m_tramoOido, suceso.tramo);
    } else {
        evento.tipo = EventoMotor::Tipo::Palabra;
        evento.posicion = suceso.posicion;
        evento.longitud = suceso.longitud;
        m_posicionOida = suceso.posicion;
        m_finOido = std::max(m_finOido, suceso.posicion + suceso.longitud);
    }
    return evento;
}

std::optional<std::uint64_t> cRecorrido::OidasParaSiguiente() const {
    if (m_sucesos.empty()) return {};
    return m_sucesos.front().muestra + 1;
}

}  // namespace ondalis
