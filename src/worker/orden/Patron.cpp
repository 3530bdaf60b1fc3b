#include "worker/orden/Patron.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "engine/Protocolo.h"
#include "worker/Lcid.h"
#include "worker/Seguidor.h"
#include "worker/orden/BuscaPalabras.h"
#include "worker/orden/Tiempos.h"

namespace ondalis {

namespace {

constexpr double kMinRitmo = 80, kMaxRitmo = 400;  // beyond those the engine's own sound is stretched
constexpr double kMinHallados = .5;                // of the words, lest it be another text

// The names of a word's phonemes, without what marks their stress, or another language's.
std::vector<std::string> Nombres(std::u16string_view texto) {
    std::vector<std::string> nombres;
    std::string nombre;
    for (const char16_t c : std::u16string(texto) + u' ') {
        if (c == u' ') {
            const std::size_t desde = nombre.find_first_not_of("',%=|");
            if (desde != std::string::npos && nombre.front() != '(') nombres.push_back(nombre.substr(desde));
            nombre.clear();
        } else {
            nombre += static_cast<char>(c);
        }
    }
    return nombres;
}

// What the process wrote, before its words are looked for.
struct Escrito {
    std::vector<std::pair<int, double>> palabras;  // place as the engine signals it, second
    std::vector<Dicho> fonemas;
    std::vector<std::vector<std::string>> porPalabra;
    bool fin = false;
};

// The second at which each word is signalled; -1: it isn't, as where the engine says two as one.
std::vector<double> Senalados(const Escrito &escrito, const Pieza &pieza) {
    std::vector<double> inicios(pieza.fichas.size(), -1);
    Seguidor seguidor(pieza.fichas);
    for (const auto &[lugar, segundo] : escrito.palabras)
        if (const Ficha *ficha = seguidor.Palabra(lugar))
            inicios[static_cast<std::size_t>(ficha - pieza.fichas.data())] = segundo;
    return inicios;
}

// The engine tells of a phoneme where it is heard, and signals a word where its first one's closure begins.
void Adelanta(std::vector<double> &inicios, const std::vector<double> &senalados, const std::vector<Dicho> &fonemas) {
    std::size_t k = 0;
    for (std::size_t i = 0; i < inicios.size(); i++) {
        while (k < fonemas.size() && fonemas[k].inicio < inicios[i]) k++;
        const double antes = k > 0 ? fonemas[k - 1].inicio : -1;
        if (senalados[i] > antes && senalados[i] < inicios[i]) inicios[i] = senalados[i];
    }
}

// What the engine doesn't signal lies evenly between its neighbours. Nothing: it signals too little.
std::optional<std::vector<double>> Rellena(std::vector<double> inicios, double duracion) {
    const auto hallados = std::count_if(inicios.begin(), inicios.end(), [](double s) { return s >= 0; });
    if (static_cast<double>(hallados) < kMinHallados * static_cast<double>(inicios.size())) return std::nullopt;
    for (std::size_t i = 0; i < inicios.size(); i++) {
        if (inicios[i] >= 0) continue;
        std::size_t j = i;
        while (j < inicios.size() && inicios[j] < 0) j++;
        const double desde = i > 0 ? inicios[i - 1] : 0, hasta = j < inicios.size() ? inicios[j] : duracion;
        inicios[i] = desde + (hasta - desde) / static_cast<double>(j - i + 1);
    }
    return inicios;
}

}  // namespace

std::optional<std::vector<std::string>> ArgumentosDePatron(std::string_view lengua, double palabrasMinuto) {
    const std::string idioma = IdiomaDeLcid(lengua);
    if (idioma.empty()) return std::nullopt;
    const double ritmo = std::clamp(palabrasMinuto, kMinRitmo, kMaxRitmo);
    return std::vector<std::string>{"/proc/self/exe", "--patron", idioma, std::to_string(std::lround(ritmo))};
}

std::string TextoDePatron(const Pieza &pieza) {
    std::string texto = pieza.utf8;  // its places stay as they are
    std::replace_if(
        texto.begin(), texto.end(), [](unsigned char c) { return c < ' '; }, ' ');
    texto += '\n';
    for (const std::string &palabra : PalabrasDe(pieza)) texto += palabra + '\n';
    return texto;
}

std::optional<Patron> LeePatron(std::span<const std::uint8_t> bytes, const Pieza &pieza) {
    Patron patron;
    Escrito escrito;
    Descodificador descodificador;
    descodificador.Alimenta(bytes);
    const auto segundo = [&patron](std::uint64_t muestra) {
        return static_cast<double>(muestra) / std::max(patron.hercios, 8000U);
    };
    while (const auto trama = descodificador.Siguiente()) {
        if (const auto *f = std::get_if<TramaFormato>(&*trama)) patron.hercios = f->hercios;
        if (const auto *w = std::get_if<TramaPalabra>(&*trama))
            escrito.palabras.emplace_back(static_cast<int>(w->posicion), segundo(w->muestra));
        if (const auto *m = std::get_if<TramaMarca>(&*trama); m && m->numero == kTramasPalabras)
            escrito.porPalabra.push_back(Nombres(m->nombre));
        else if (m)
            escrito.fonemas.push_back({{m->nombre.begin(), m->nombre.end()}, segundo(m->muestra), 0});
        if (const auto *p = std::get_if<TramaPcm>(&*trama))
            patron.sonido.insert(patron.sonido.end(), p->muestras.begin(), p->muestras.end());
        escrito.fin = escrito.fin || std::holds_alternative<TramaFin>(*trama);
    }
    if (!escrito.fin || patron.hercios < 8000 || patron.sonido.empty() || pieza.fichas.empty()) return std::nullopt;

    double siguiente = segundo(patron.sonido.size());
    for (std::size_t i = escrito.fonemas.size(); i-- > 0; siguiente = escrito.fonemas[i].inicio)
        escrito.fonemas[i].fin = siguiente;
    const auto senalados = Senalados(escrito, pieza);
    std::optional<std::vector<double>> inicios;
    if (escrito.porPalabra.size() == pieza.fichas.size())
        inicios = IniciosDePalabras(escrito.fonemas, escrito.porPalabra);
    if (inicios) Adelanta(*inicios, senalados, escrito.fonemas);
    if (!inicios) inicios = Rellena(senalados, segundo(patron.sonido.size()));
    if (!inicios) return std::nullopt;
    for (std::size_t i = 1; i < inicios->size(); i++) (*inicios)[i] = std::max((*inicios)[i], (*inicios)[i - 1]);
    patron.inicios = std::move(*inicios);
    return patron;
}

}  // namespace ondalis
