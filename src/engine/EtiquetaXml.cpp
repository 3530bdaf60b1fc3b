#include "engine/EtiquetaXml.h"

#include <algorithm>

#include "engine/ConstructorTramos.h"

namespace ondalis {

namespace {

constexpr bool EsLetra(char16_t c) { return Minuscula(c) >= u'a' && Minuscula(c) <= u'z'; }
// What a name may hold; names with anything but letters are never ours.
constexpr bool EsDeNombre(char16_t c) {
    return EsLetra(c) || EsCifra(c) || c == u'-' || c == u'_' || c == u':' || c == u'.';
}
constexpr bool EsBlanco(char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }

std::optional<ElementoXml> BuscaElemento(std::u16string_view nombre) {
    using enum ElementoXml;
    static constexpr std::pair<std::u16string_view, ElementoXml> kElementos[] = {
        {u"silence", Silence},   {u"rate", Rate},      {u"volume", Volume}, {u"pitch", Pitch}, {u"voice", Voice},
        {u"bookmark", Bookmark}, {u"spell", Spell},    {u"emph", Emph},     {u"lang", Lang},   {u"partofsp", SinEfecto},
        {u"context", SinEfecto}, {u"pron", SinEfecto}, {u"sapi", SinEfecto}};
    for (const auto &[escrito, elemento] : kElementos)
        if (IgualSinCaja(nombre, escrito)) return elemento;
    return std::nullopt;
}

// Walks over one tag's own characters.
class Cursor {
public:
    explicit Cursor(std::u16string_view texto) : m_texto(texto) {}

    std::size_t Pos() const { return m_pos; }
    bool Toma(char16_t c) {
        if (m_pos >= m_texto.size() || m_texto[m_pos] != c) return false;
        ++m_pos;
        return true;
    }
    bool SaltaBlancos() {
        const std::size_t antes = m_pos;
        while (m_pos < m_texto.size() && EsBlanco(m_texto[m_pos])) ++m_pos;
        return m_pos > antes;
    }
    std::u16string_view Nombre() {
        const std::size_t antes = m_pos;
        while (m_pos < m_texto.size() && EsDeNombre(m_texto[m_pos])) ++m_pos;
        return m_texto.substr(antes, m_pos - antes);
    }
    std::optional<std::u16string_view> Entrecomillado() {
        if (m_pos >= m_texto.size() || (m_texto[m_pos] != u'"' && m_texto[m_pos] != u'\'')) return std::nullopt;
        const std::size_t cierre = m_texto.find(m_texto[m_pos], m_pos + 1);
        if (cierre == m_texto.npos) return std::nullopt;
        const auto valor = m_texto.substr(m_pos + 1, cierre - m_pos - 1);
        m_pos = cierre + 1;
        return valor;
    }

private:
    std::u16string_view m_texto;
    std::size_t m_pos = 0;
};

std::u16string Descifra(std::u16string_view valor) {
    std::u16string limpio;
    for (std::size_t i = 0; i < valor.size();) {
        const auto referencia = valor[i] == u'&' ? LeeReferenciaXml(valor, i) : std::nullopt;
        if (referencia) {
            limpio += referencia->texto;
            i = referencia->fin;
        } else {
            limpio += valor[i++];
        }
    }
    return limpio;
}

// What follows an opening tag's name up to its `>`. False: malformed.
bool LeeAtributos(Cursor &cursor, EtiquetaXml &etiqueta) {
    for (;;) {
        const bool separado = cursor.SaltaBlancos();
        if (cursor.Toma(u'>')) {
            etiqueta.clase = EtiquetaXml::Clase::Apertura;
            return true;
        }
        if (cursor.Toma(u'/')) {
            etiqueta.clase = EtiquetaXml::Clase::Vacia;
            return cursor.Toma(u'>');
        }
        const auto nombre = cursor.Nombre();
        if (!separado || nombre.empty()) return false;
        cursor.SaltaBlancos();
        if (!cursor.Toma(u'=')) return false;
        cursor.SaltaBlancos();
        const auto valor = cursor.Entrecomillado();
        if (!valor) return false;
        etiqueta.atributos.push_back({nombre, Descifra(*valor)});
    }
}

std::optional<char32_t> CaracterNombrado(std::u16string_view nombre) {
    static constexpr std::pair<std::u16string_view, char32_t> kNombres[] = {
        {u"lt", U'<'}, {u"gt", U'>'}, {u"amp", U'&'}, {u"quot", U'"'}, {u"apos", U'\''}};
    for (const auto &[escrito, caracter] : kNombres)
        if (IgualSinCaja(nombre, escrito)) return caracter;
    return std::nullopt;
}

std::optional<char32_t> CaracterNumerado(std::u16string_view cifras) {
    constexpr char32_t kUltimo = 0x10FFFF;
    const bool hexadecimal = !cifras.empty() && Minuscula(cifras[0]) == u'x';
    if (hexadecimal) cifras.remove_prefix(1);
    if (cifras.empty()) return std::nullopt;
    char32_t codigo = 0;
    for (const char16_t escrita : cifras) {
        const char16_t c = Minuscula(escrita);
        if (EsCifra(c))
            codigo = codigo * (hexadecimal ? 16 : 10) + (c - u'0');
        else if (hexadecimal && c >= u'a' && c <= u'f')
            codigo = codigo * 16 + (c - u'a' + 10);
        else
            return std::nullopt;
        if (codigo > kUltimo) return std::nullopt;
    }
    const bool control = codigo < 0x20 && codigo != U'\t' && codigo != U'\n' && codigo != U'\r';
    const bool mediaPareja = codigo >= 0xD800 && codigo <= 0xDFFF;
    if (control || mediaPareja || codigo == 0xFFFE || codigo == 0xFFFF) return std::nullopt;
    return codigo;
}

std::u16string Unidades(char32_t codigo) {
    if (codigo < 0x10000) return std::u16string(1, static_cast<char16_t>(codigo));
    codigo -= 0x10000;
    return {static_cast<char16_t>(0xD800 + (codigo >> 10)), static_cast<char16_t>(0xDC00 + (codigo & 0x3FF))};
}

}  // namespace

const std::u16string *EtiquetaXml::Atributo(std::u16string_view nombre) const {
    const auto encontrado = std::find_if(atributos.begin(), atributos.end(), [&](const AtributoXml &atributo) {
        return IgualSinCaja(atributo.nombre, nombre);
    });
    return encontrado == atributos.end() ? nullptr : &encontrado->valor;
}

EtiquetaXml LeeEtiquetaXml(std::u16string_view texto, std::size_t inicio) {
    const std::size_t siguiente = std::min(texto.find(u'<', inicio + 1), texto.size());
    const std::u16string_view propio = texto.substr(inicio + 1, siguiente - inicio - 1);
    Cursor cursor(propio);
    EtiquetaXml etiqueta;
    const bool cierre = cursor.Toma(u'/');
    const auto elemento = BuscaElemento(cursor.Nombre());
    if (!elemento) return etiqueta;
    etiqueta.elemento = *elemento;

    if (cierre) {
        cursor.SaltaBlancos();
        if (cursor.Toma(u'>')) etiqueta.clase = EtiquetaXml::Clase::Cierre;
    } else {
        const std::size_t trasNombre = cursor.Pos();
        const bool acabado = trasNombre < propio.size() &&
                             (EsBlanco(propio[trasNombre]) || propio[trasNombre] == u'/' || propio[trasNombre] == u'>');
        if (!acabado) return etiqueta;
        // Without any `>` the markup was cut off and is text; with one it is a tag, and it has to be right.
        if (!LeeAtributos(cursor, etiqueta))
            etiqueta.clase = propio.find(u'>') == propio.npos ? EtiquetaXml::Clase::Texto : EtiquetaXml::Clase::Rota;
    }
    etiqueta.fin = inicio + 1 + cursor.Pos();
    return etiqueta;
}

std::optional<ReferenciaXml> LeeReferenciaXml(std::u16string_view texto, std::size_t inicio) {
    // Bounds the look ahead; no reference of sense is longer, leading zeros included.
    constexpr std::size_t kMaxReferencia = 16;
    const auto cuerpo = texto.substr(inicio + 1, kMaxReferencia);
    const std::size_t fin = cuerpo.find(u';');
    if (fin == cuerpo.npos || fin == 0) return std::nullopt;
    const auto codigo =
        cuerpo[0] == u'#' ? CaracterNumerado(cuerpo.substr(1, fin - 1)) : CaracterNombrado(cuerpo.substr(0, fin));
    if (!codigo) return std::nullopt;
    return ReferenciaXml{Unidades(*codigo), inicio + 1 + fin + 1};
}

}  // namespace ondalis
