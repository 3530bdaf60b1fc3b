#include <algorithm>
#include <cmath>

#include "engine/ConstructorTramos.h"
#include "engine/Dialectos.h"
#include "engine/EtiquetaXml.h"
#include "engine/IdiomaLcid.h"

namespace ondalis {

namespace {

using std::u16string;
using std::u16string_view;

constexpr long kTopeAjuste = 10;  // of speeds and middles, either way

u16string_view Recorta(u16string_view texto) {
    constexpr u16string_view kBlancos = u" \t\r\n";
    const std::size_t primero = texto.find_first_not_of(kBlancos);
    if (primero == texto.npos) return {};
    return texto.substr(primero, texto.find_last_not_of(kBlancos) - primero + 1);
}

// The whole attribute as a number; nothing: it is missing or isn't one.
std::optional<long> Numero(const u16string *valor) {
    if (!valor) return std::nullopt;
    const auto escrito = Recorta(*valor);
    std::size_t pos = 0;
    long numero = 0;
    if (!LeeNumero(escrito, pos, numero) || pos != escrito.size()) return std::nullopt;
    return numero;
}

// A property that elements of one kind change: the value that holds here and those that their ends bring back. Each
// kind has a stack of its own, so that a voice left open on purpose survives the end of the rate it was opened in.
template <class T>
class Propiedad {
public:
    explicit Propiedad(T inicial = {}) : m_valor(std::move(inicial)) {}
    const T &Valor() const { return m_valor; }
    void Pon(T valor, bool conFin) {
        if (conFin) m_anteriores.push_back(std::move(m_valor));
        m_valor = std::move(valor);
    }
    bool Repon() {
        if (m_anteriores.empty()) return false;
        m_valor = std::move(m_anteriores.back());
        m_anteriores.pop_back();
        return true;
    }

private:
    T m_valor;
    std::vector<T> m_anteriores;
};

class AnalizadorXml {
public:
    explicit AnalizadorXml(u16string_view texto) : m_texto(texto) {}
    std::optional<std::vector<Tramo>> Analiza();

private:
    bool TrataMenor();  // false: the markup is refused
    bool TrataSeccion(u16string_view abre, u16string_view cierra, bool esTexto, bool &sinCierre);
    bool Abre(const EtiquetaXml &etiqueta);
    void Cierra(ElementoXml elemento);
    bool Ajuste(const EtiquetaXml &etiqueta, u16string_view relativo, u16string_view absoluto,
                Propiedad<long> &propiedad);
    bool AbreVoz(const EtiquetaXml &etiqueta);
    bool AbreIdioma(const EtiquetaXml &etiqueta);
    void AbreTramo(const EtiquetaXml &etiqueta, int &abiertos, TipoTramo tipo);
    void CierraTramo(int &abiertos, TipoTramo tipo);
    void EmiteVelocidad() { m_salida.Orden(TipoTramo::Velocidad, std::pow(3.0, m_velocidad.Valor() / 10.0)); }
    void EmiteTono() { m_salida.Orden(TipoTramo::Tono, std::pow(2.0, m_tono.Valor() / 24.0)); }
    void EmiteVolumen() { m_salida.Orden(TipoTramo::Volumen, m_volumen.Valor() / 100.0); }

    u16string_view m_texto;
    std::size_t m_pos = 0;
    ConstructorTramos m_salida;
    Propiedad<long> m_velocidad, m_tono, m_volumen{100};
    Propiedad<u16string> m_voz, m_idioma;
    int m_deletreos = 0, m_enfasis = 0;
    // Set once a search for a section's end has failed: every later one would, too.
    bool m_sinFinComentario = false, m_sinFinCdata = false, m_sinFinDeclaracion = false;
};

std::optional<std::vector<Tramo>> AnalizadorXml::Analiza() {
    while (m_pos < m_texto.size()) {
        const std::size_t especial = std::min(m_texto.find_first_of(u"<&", m_pos), m_texto.size());
        m_salida.Texto(m_texto.substr(m_pos, especial - m_pos), m_pos);
        m_pos = especial;
        if (m_pos == m_texto.size()) break;
        if (m_texto[m_pos] == u'<') {
            if (!TrataMenor()) return std::nullopt;
        } else if (const auto referencia = LeeReferenciaXml(m_texto, m_pos)) {
            m_salida.Texto(referencia->texto, m_pos);
            m_pos = referencia->fin;
        } else {
            m_salida.Texto(m_texto.substr(m_pos, 1), m_pos);
            ++m_pos;
        }
    }
    return m_salida.Termina();
}

bool AnalizadorXml::TrataMenor() {
    if (TrataSeccion(u"<!--", u"-->", false, m_sinFinComentario) ||
        TrataSeccion(u"<![CDATA[", u"]]>", true, m_sinFinCdata) ||
        TrataSeccion(u"<?xml ", u"?>", false, m_sinFinDeclaracion))
        return true;
    const EtiquetaXml etiqueta = LeeEtiquetaXml(m_texto, m_pos);
    switch (etiqueta.clase) {
        case EtiquetaXml::Clase::Rota: return false;
        case EtiquetaXml::Clase::Texto:
            m_salida.Texto(m_texto.substr(m_pos, 1), m_pos);
            ++m_pos;
            return true;
        case EtiquetaXml::Clase::Cierre: Cierra(etiqueta.elemento); break;
        case EtiquetaXml::Clase::Apertura:
        case EtiquetaXml::Clase::Vacia:
            if (!Abre(etiqueta)) return false;
            break;
    }
    m_pos = etiqueta.fin;
    return true;
}

bool AnalizadorXml::TrataSeccion(u16string_view abre, u16string_view cierra, bool esTexto, bool &sinCierre) {
    if (sinCierre || m_texto.substr(m_pos, abre.size()) != abre) return false;
    const std::size_t dentro = m_pos + abre.size();
    const std::size_t fin = m_texto.find(cierra, dentro);
    sinCierre = fin == m_texto.npos;
    if (sinCierre) return false;
    if (esTexto) m_salida.Texto(m_texto.substr(dentro, fin - dentro), dentro);
    m_pos = fin + cierra.size();
    return true;
}

bool AnalizadorXml::Abre(const EtiquetaXml &etiqueta) {
    const bool conFin = etiqueta.clase == EtiquetaXml::Clase::Apertura;
    switch (etiqueta.elemento) {
        case ElementoXml::Silence: {
            const auto ms = Numero(etiqueta.Atributo(u"msec"));
            if (ms) m_salida.Orden(TipoTramo::Pausa, std::clamp<double>(static_cast<double>(*ms), 0, kPausaMaximaMs));
            return ms.has_value();
        }
        case ElementoXml::Rate:
            if (!Ajuste(etiqueta, u"speed", u"absspeed", m_velocidad)) return false;
            EmiteVelocidad();
            return true;
        case ElementoXml::Pitch:
            if (!Ajuste(etiqueta, u"middle", u"absmiddle", m_tono)) return false;
            EmiteTono();
            return true;
        case ElementoXml::Volume: {
            const auto nivel = Numero(etiqueta.Atributo(u"level"));
            if (!nivel) return false;
            m_volumen.Pon(std::clamp(*nivel, 0L, 100L), conFin);
            EmiteVolumen();
            return true;
        }
        case ElementoXml::Voice: return AbreVoz(etiqueta);
        case ElementoXml::Lang: return AbreIdioma(etiqueta);
        case ElementoXml::Bookmark: {
            const u16string *marca = etiqueta.Atributo(u"mark");
            if (marca) m_salida.Orden(TipoTramo::Marca, *marca);
            return marca != nullptr;
        }
        case ElementoXml::Spell: AbreTramo(etiqueta, m_deletreos, TipoTramo::Deletreo); return true;
        case ElementoXml::Emph: AbreTramo(etiqueta, m_enfasis, TipoTramo::Enfasis); return true;
        case ElementoXml::SinEfecto: return true;
    }
    return true;
}

void AnalizadorXml::Cierra(ElementoXml elemento) {
    switch (elemento) {
        case ElementoXml::Rate:
            if (m_velocidad.Repon()) EmiteVelocidad();
            break;
        case ElementoXml::Pitch:
            if (m_tono.Repon()) EmiteTono();
            break;
        case ElementoXml::Volume:
            if (m_volumen.Repon()) EmiteVolumen();
            break;
        case ElementoXml::Voice:
            if (m_voz.Repon()) m_salida.Orden(TipoTramo::Voz, m_voz.Valor());
            break;
        case ElementoXml::Lang:
            if (m_idioma.Repon()) m_salida.Orden(TipoTramo::Idioma, m_idioma.Valor());
            break;
        case ElementoXml::Spell: CierraTramo(m_deletreos, TipoTramo::Deletreo); break;
        case ElementoXml::Emph: CierraTramo(m_enfasis, TipoTramo::Enfasis); break;
        case ElementoXml::Silence:
        case ElementoXml::Bookmark:
        case ElementoXml::SinEfecto: break;
    }
}

// One of the two attributes has to be there; with both the relative one counts from the absolute.
bool AnalizadorXml::Ajuste(const EtiquetaXml &etiqueta, u16string_view relativo, u16string_view absoluto,
                           Propiedad<long> &propiedad) {
    const u16string *suma = etiqueta.Atributo(relativo);
    const u16string *fijo = etiqueta.Atributo(absoluto);
    const auto sumando = Numero(suma);
    const auto base = Numero(fijo);
    if ((suma && !sumando) || (fijo && !base) || (!suma && !fijo)) return false;
    const long valor = std::clamp(base.value_or(propiedad.Valor()), -kTopeAjuste, kTopeAjuste) + sumando.value_or(0);
    propiedad.Pon(std::clamp(valor, -kTopeAjuste, kTopeAjuste), etiqueta.clase == EtiquetaXml::Clase::Apertura);
    return true;
}

bool AnalizadorXml::AbreVoz(const EtiquetaXml &etiqueta) {
    const u16string *requisito = etiqueta.Atributo(u"required");
    const u16string *deseo = etiqueta.Atributo(u"optional");
    if (!requisito && !deseo) return false;
    // Each end gives the outer requirement again: without a limit a long one would multiply.
    u16string pedida = requisito ? requisito->substr(0, kMaxRequisitoVoz) : u16string();
    if (deseo) pedida = pedida + kSeparaDeseos + deseo->substr(0, kMaxRequisitoVoz);
    m_voz.Pon(std::move(pedida), etiqueta.clase == EtiquetaXml::Clase::Apertura);
    m_salida.Orden(TipoTramo::Voz, m_voz.Valor());
    return true;
}

bool AnalizadorXml::AbreIdioma(const EtiquetaXml &etiqueta) {
    const u16string *escrito = etiqueta.Atributo(u"langid");
    const auto lcid = escrito ? LeeLcid(Recorta(*escrito)) : std::nullopt;
    if (!lcid) return false;
    u16string idioma = IdiomaDeLcid(*lcid);
    const bool conocido = !idioma.empty();
    if (!conocido) idioma = m_idioma.Valor();
    m_idioma.Pon(std::move(idioma), etiqueta.clase == EtiquetaXml::Clase::Apertura);
    if (conocido) m_salida.Orden(TipoTramo::Idioma, m_idioma.Valor());
    return true;
}

// Spelling and stress have no meaning without contents: the empty element does nothing.
void AnalizadorXml::AbreTramo(const EtiquetaXml &etiqueta, int &abiertos, TipoTramo tipo) {
    if (etiqueta.clase == EtiquetaXml::Clase::Vacia) return;
    if (abiertos++ == 0) m_salida.Orden(tipo, 1);
}

void AnalizadorXml::CierraTramo(int &abiertos, TipoTramo tipo) {
    if (abiertos > 0 && --abiertos == 0) m_salida.Orden(tipo, 0);
}

}  // namespace

std::optional<std::vector<Tramo>> AnalizaXml(std::u16string_view texto) { return AnalizadorXml(texto).Analiza(); }

}  // namespace ondalis
