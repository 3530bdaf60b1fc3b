// Reads one tag, section or reference of the XML dialect at a given place, without any meaning. Pure functions. A tag
// ends before the next `<`, even within quotes, so that no character is looked at for two tags.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ondalis {

enum class ElementoXml { Silence, Rate, Volume, Pitch, Voice, Bookmark, Spell, Emph, Lang, SinEfecto };

struct AtributoXml {
    std::u16string_view nombre;
    std::u16string valor;  // references decoded
};

struct EtiquetaXml {
    enum class Clase {
        Texto,     // not a tag: its `<` is text
        Rota,      // a known opening tag with malformed attributes
        Apertura,  // <rate ...>
        Vacia,     // <rate .../>
        Cierre,    // </rate>
    };
    Clase clase = Clase::Texto;
    ElementoXml elemento = ElementoXml::SinEfecto;
    std::vector<AtributoXml> atributos;
    std::size_t fin = 0;  // behind the `>`

    // The attribute's value; `nombre` in small letters. Null: it isn't there.
    const std::u16string *Atributo(std::u16string_view nombre) const;
};

// The tag whose `<` stands at `inicio`.
EtiquetaXml LeeEtiquetaXml(std::u16string_view texto, std::size_t inicio);

struct ReferenciaXml {
    std::u16string texto;  // one character, in one or two units
    std::size_t fin = 0;   // behind the `;`
};

// The reference whose `&` stands at `inicio`; nothing: that `&` is text. Characters that XML forbids are none.
std::optional<ReferenciaXml> LeeReferenciaXml(std::u16string_view texto, std::size_t inicio);

}  // namespace ondalis
