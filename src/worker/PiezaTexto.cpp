#include "worker/PiezaTexto.h"

#include <algorithm>

#include "worker/Caracteres.h"

namespace ondalis {

namespace {

// Source units looked at for one piece; leaves room for what is added on the way.
constexpr std::size_t kMaxOrigen = 1500;
// eSpeak NG 1.51 overruns its stack on 85 dotted short elements ("a.a.a.", "U.S.U.S.", also "e.g. e.g.") that no clause
// end interrupts, on dots that stand before or between blanks (" .x .x"), and on 68 elements with an apostrophe in one
// token ("s's's'"). A blank does not help: the piece ends well before, so that the engine gets the rest in another
// call.
constexpr unsigned kMaxElementos = 30;
constexpr unsigned kElementoCorto = 2;
// Its word buffers hold 160 bytes: other endless tokens are broken by a blank.
constexpr unsigned kMaxSeguidos = 60;

enum class Clase : std::uint8_t {
    Propio,   // stands for a character of the text
    Anadido,  // a blank put in to break a token: part of the word
    Nombre,   // letters of a sign's name: no word of the text
    Suelto,   // first letter of the name of a sign that stands alone: a word of its own
};

struct Caracter {
    char32_t c = 0;
    std::uint32_t indice = 0;  // of the text
    Clase clase = Clase::Propio;
};

constexpr auto kNinguno = std::u32string_view::npos;

bool EsFinDeFrase(char16_t c) { return c == u'.' || c == u'!' || c == u'?' || c == u'…' || c == u'\x3002'; }

std::size_t SinPartir(std::u16string_view texto, std::size_t inicio, std::size_t fin) {
    while (fin > inicio + 1 && fin < texto.size() && EsCombinable(texto[fin])) fin--;
    if (fin > inicio + 1 && fin < texto.size() && (texto[fin] & 0xFC00) == 0xDC00) fin--;
    return fin;
}

// Where a piece from `inicio` ends at the latest.
std::size_t Fin(std::u16string_view texto, std::size_t inicio) {
    if (texto.size() - inicio <= kMaxOrigen) return texto.size();
    const std::size_t limite = inicio + kMaxOrigen;
    std::size_t frase = 0, blanco = 0;
    for (std::size_t i = limite; i > inicio + 1; i--) {
        const char16_t c = texto[i - 1];
        if (c == u'\n' && texto[i - 2] == u'\n') return i;
        if (!EsBlanco(c)) continue;
        if (blanco == 0) blanco = i;
        if (frase == 0 && EsFinDeFrase(texto[i - 2])) frase = i;
    }
    if (frase > 0) return frase;
    return blanco > 0 ? blanco : SinPartir(texto, inicio, limite);
}

class Hacedor {
public:
    Hacedor(std::u16string_view texto, const OpcionesPieza &opciones) : m_texto(texto), m_opciones(opciones) {}

    // Takes characters from `inicio` until `fin` or a full piece; returns where it stopped.
    std::size_t Toma(std::size_t inicio, std::size_t fin) {
        std::size_t i = inicio;
        while (i < fin && m_salida.size() < kMaxPieza - 64 && m_puntos + m_apostrofos < kMaxElementos) {
            const PuntoCodigo p = LeePunto(m_texto, i);
            TomaUno(p, i);
            i += p.unidades;
        }
        return i;
    }

    const std::vector<Caracter> &Salida() const { return m_salida; }

private:
    void TomaUno(const PuntoCodigo &p, std::size_t i) {
        const auto indice = static_cast<std::uint32_t>(i);
        char32_t c = p.c;
        if (EsInvisible(c)) return;
        if (EsCombinable(c) && !m_salida.empty()) {
            if (const char32_t junto = Compone(m_salida.back().c, c)) {
                m_salida.back().c = junto;
                return;
            }
        }
        if (c == 0x2028 || c == 0x2029) c = U'\n';
        if (p.roto || (EsBlanco(c) && c != U'\n' && c != U'\t')) c = U' ';
        if (EsBlanco(c)) {
            m_seguidos = m_elemento = m_apostrofos = 0;
            m_anterior = c;
            if (m_finDeFrase) m_puntos = 0;
            m_finDeFrase = false;
        } else if (const auto nombre = NombreEn(c, i); !nombre.empty()) {
            return Nombra(c, nombre, indice);
        }
        m_salida.push_back({c, indice, Clase::Propio});
        if (!EsBlanco(c)) RompeSiLargo(c, indice);
    }

    void RompeSiLargo(char32_t c, std::uint32_t indice) {
        const bool punto = c == U'.', apostrofo = c == U'\'' || c == U'’';
        const bool corto = m_elemento <= kElementoCorto;
        const bool sigueElipsis = punto && m_anterior == U'.';
        m_anterior = c;
        if (!sigueElipsis)
            m_finDeFrase = punto ? !corto : m_elemento > 0 && std::u32string_view(U",;:!?").find(c) != kNinguno;
        if (punto && corto) m_puntos++;
        if (apostrofo && corto) m_apostrofos++;
        m_elemento = EsAlfanumerico(c) ? m_elemento + 1 : 0;
        if (++m_seguidos < kMaxSeguidos) return;
        m_salida.push_back({U' ', indice, Clase::Anadido});
        m_seguidos = 0;
    }

    char32_t Vecino(std::size_t i, int paso) const {
        if (paso < 0) return i == 0 ? U' ' : static_cast<char32_t>(m_texto[i - 1]);
        return i + 1 >= m_texto.size() ? U' ' : static_cast<char32_t>(m_texto[i + 1]);
    }

    bool Suelto(std::size_t i) const { return EsBlanco(Vecino(i, -1)) && EsBlanco(Vecino(i, 1)); }

    std::u32string_view NombreEn(char32_t c, std::size_t i) const {
        if (!m_opciones.signos && !m_opciones.signosSueltos) return {};
        if (!EsSignoMudo(c) && c != U'-') return {};
        const bool suelto = Suelto(i);
        const bool deFiltro = m_opciones.signosSueltos && suelto && EsSignoDelFiltro(c);
        if (!deFiltro && !m_opciones.signos) return {};
        // Inside numbers and words signs belong to them: 3.5, d'accord, rojo-verde.
        const bool dentro = EsAlfanumerico(Vecino(i, -1)) && EsAlfanumerico(Vecino(i, 1));
        if (dentro && std::u32string_view(U".,:'’-").find(c) != std::u32string_view::npos) return {};
        return NombreDeSigno(c, m_opciones.lengua);
    }

    // The sign stays behind its name where it makes a pause or a melody.
    void Nombra(char32_t c, std::u32string_view nombre, std::uint32_t indice) {
        const bool suelto = Suelto(indice);
        m_salida.push_back({U' ', indice, Clase::Anadido});
        for (std::size_t i = 0; i < nombre.size(); i++)
            m_salida.push_back({nombre[i], indice, suelto && i == 0 ? Clase::Suelto : Clase::Nombre});
        if (std::u32string_view(U",.;:?!").find(c) != std::u32string_view::npos)
            m_salida.push_back({c, indice, Clase::Nombre});
        m_salida.push_back({U' ', indice, Clase::Anadido});
        m_seguidos = m_elemento = 0;
    }

    std::u16string_view m_texto;
    const OpcionesPieza &m_opciones;
    std::vector<Caracter> m_salida;
    unsigned m_seguidos = 0;                  // characters since the last blank
    unsigned m_elemento = 0;                  // letters and digits since the last other character
    unsigned m_puntos = 0, m_apostrofos = 0;  // short elements: since the last clause end; in this token
    char32_t m_anterior = 0;                  // the character before
    bool m_finDeFrase = false;                // the character before was the sign of a clause end
};

bool Llena(const Caracter &c) { return c.clase == Clase::Propio && EsDePalabra(c.c); }

// A sign between two word characters that keeps them in one word, of the engine too: 12.345, a@b.es, rojo-verde, y?z=1.
bool Une(const std::vector<Caracter> &v, std::size_t i) {
    if (v[i].clase == Clase::Anadido) return true;
    if (v[i].clase != Clase::Propio || i + 1 >= v.size()) return false;
    std::size_t j = i + 1;
    if (v[j].clase == Clase::Anadido) j++;
    return std::u32string_view(U".,:'’-‐‑_·?").find(v[i].c) != std::u32string_view::npos && j < v.size() && Llena(v[j]);
}

// Behind a word with one full stop, be it an abbreviation's or a sign's name's, and blanks.
bool TrasAbreviatura(const std::vector<Caracter> &v, std::size_t inicio) {
    std::size_t i = inicio;
    while (i > 0 && EsBlanco(v[i - 1].c)) i--;
    if (i == inicio) return false;
    while (i > 0 && std::u32string_view(U",;:").find(v[i - 1].c) != kNinguno) i--;
    const std::size_t fin = i;
    while (i > 0 && v[i - 1].c == U'.') i--;
    if (i == fin || i == 0 || !EsDePalabra(v[i - 1].c)) return false;
    for (; i > 0 && !EsBlanco(v[i - 1].c); i--)
        if (v[i - 1].c == U'.') return false;
    return true;
}

std::vector<Ficha> BuscaFichas(const std::vector<Caracter> &v, std::u16string_view texto) {
    std::vector<Ficha> fichas;
    std::size_t i = 0;
    while (i < v.size()) {
        const auto posicion = static_cast<std::uint32_t>(i);
        if (v[i].clase == Clase::Suelto) {
            fichas.push_back({posicion, posicion, v[i].indice, v[i].indice + 1, TrasAbreviatura(v, i)});
            i++;
            continue;
        }
        if (!Llena(v[i]) || EsCombinable(v[i].c)) {
            i++;
            continue;
        }
        Ficha ficha{posicion, posicion, v[i].indice, 0, TrasAbreviatura(v, i)};
        std::size_t ultima = i;
        std::size_t nucleo = v.size();
        while (i < v.size() && (Llena(v[i]) || Une(v, i))) {
            if (Llena(v[i])) ultima = i;
            if (nucleo == v.size() && EsAlfanumerico(v[i].c)) nucleo = i;
            i++;
        }
        if (nucleo < v.size()) ficha.nucleoMotor = static_cast<std::uint32_t>(nucleo);
        ficha.fin = v[ultima].indice + LeePunto(texto, v[ultima].indice).unidades;
        while (ficha.fin < texto.size() && EsCombinable(texto[ficha.fin])) ficha.fin++;
        fichas.push_back(ficha);
    }
    return fichas;
}

}  // namespace

Pieza HazPieza(std::u16string_view texto, std::size_t inicio, const OpcionesPieza &opciones) {
    Hacedor hacedor(texto, opciones);
    Pieza pieza;
    pieza.siguiente = hacedor.Toma(inicio, Fin(texto, inicio));
    const auto &salida = hacedor.Salida();
    for (const Caracter &c : salida) AnadeUtf8(pieza.utf8, c.c);
    pieza.caracteres = salida.size();
    pieza.fichas = BuscaFichas(salida, texto);
    pieza.hablable = std::any_of(salida.begin(), salida.end(), [](const Caracter &c) {
        return c.clase == Clase::Nombre || c.clase == Clase::Suelto || EsDePalabra(c.c);
    });
    return pieza;
}

}  // namespace ondalis
