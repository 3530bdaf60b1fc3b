// The catalogue of the user's settings: section, key, stored form and default of every value, in one table. The pages'
// rows are made from it at compile time, so a key that it doesn't hold can't be used. Constants only.
#pragma once

#include <iterator>
#include <span>
#include <string_view>

#include "settings/TablaOpciones.h"

namespace ondalis {

struct FilaCatalogo {
    const char *seccion;
    const char *clave;
    FormaOpcion forma;
    const char *defecto;  // stored text; null: what the control or window shows at that moment
};

inline constexpr FilaCatalogo kCatalogo[] = {
    {"General", "ActivaAlArrancar", FormaOpcion::Booleano, "True"},
    {"General", "PrioridadAlta", FormaOpcion::Booleano, "False"},
    {"General", "UtilizaSonidos", FormaOpcion::Booleano, "True"},
    {"General", "VerLupa", FormaOpcion::Booleano, "False"},
    {"General", "PronunciaSignosPunt", FormaOpcion::Booleano, "False"},
    {"General", "Aviso", FormaOpcion::Booleano, "True"},
    {"General", "SonidosAvisosGenerales", FormaOpcion::Booleano, "True"},
    {"General", "SonidosActivarDesactivar", FormaOpcion::Booleano, "True"},
    {"General", "SonidosPortapapeles", FormaOpcion::Booleano, "True"},
    {"General", "SonidosLeeTeclado", FormaOpcion::Booleano, "False"},

    {"Voz", "FabricanteActivo", FormaOpcion::Texto, "IBM"},
    {"Voz", "VozActiva", FormaOpcion::Texto, "Carlos"},
    {"Voz", "Velocidad", FormaOpcion::Entero, "170"},
    {"Voz", "Volumen", FormaOpcion::Entero, "65000"},
    {"Voz", "ValoresAvanzados", FormaOpcion::Booleano, "False"},
    {"Voz", "Tono", FormaOpcion::Entero, "230"},
    {"Voz", "Fluctuacion", FormaOpcion::Entero, "50"},
    {"Voz", "Aspereza", FormaOpcion::Entero, "50"},
    {"Voz", "Diafonia", FormaOpcion::Entero, "50"},
    {"Voz", "TamCabeza", FormaOpcion::Entero, "50"},

    {"TipoLectura", "LeePortapapeles", FormaOpcion::Booleano, "True"},
    {"TipoLectura", "IgnoraMiniTexto", FormaOpcion::Booleano, "True"},
    {"TipoLectura", "CharsMiniTexto", FormaOpcion::Entero, "15"},
    {"TipoLectura", "TrataEditores", FormaOpcion::Booleano, "True"},
    {"TipoLectura", "LeeTeclado", FormaOpcion::Booleano, "False"},
    {"TipoLectura", "LeeCambioApp", FormaOpcion::Booleano, "False"},
    {"TipoLectura", "TeclasLeeTeclado", FormaOpcion::Texto, nullptr},

    {"Grabar", "LeerTexto", FormaOpcion::Booleano, "True"},
    {"Grabar", "GrabarTexto", FormaOpcion::Booleano, "False"},
    {"Grabar", "GrabaEnWAV", FormaOpcion::Booleano, "True"},
    {"Grabar", "GrabaSincrono", FormaOpcion::Booleano, "True"},
    {"Grabar", "NombreFichero", FormaOpcion::Texto, nullptr},  // depends on the user's folders
    {"Grabar", "AnadirFich", FormaOpcion::Booleano, "False"},
    {"Grabar", "SobrescribirFich", FormaOpcion::Booleano, "True"},
    {"Grabar", "NumerarFich", FormaOpcion::Booleano, "False"},
    {"Grabar", "CalidadkHz", FormaOpcion::Entero, "11025"},
    {"Grabar", "Calidadkbps", FormaOpcion::Entero, "24"},

    {"Teclas", "ModActivar", FormaOpcion::Entero, "1"},
    {"Teclas", "AsciiActivar", FormaOpcion::Entero, "49"},
    {"Teclas", "ModPausa", FormaOpcion::Entero, "0"},
    {"Teclas", "AsciiPausa", FormaOpcion::Entero, "49"},
    {"Teclas", "ModDetener", FormaOpcion::Entero, "0"},
    {"Teclas", "AsciiDetener", FormaOpcion::Entero, "50"},
    {"Teclas", "ModRepetir", FormaOpcion::Entero, "0"},
    {"Teclas", "AsciiRepetir", FormaOpcion::Entero, "51"},
    {"Teclas", "ModAvanzar", FormaOpcion::Entero, "0"},
    {"Teclas", "AsciiAvanzar", FormaOpcion::Entero, "52"},
    {"Teclas", "ModRetroceder", FormaOpcion::Entero, "0"},
    {"Teclas", "AsciiRetroceder", FormaOpcion::Entero, "53"},
    {"Teclas", "NroPalAvance", FormaOpcion::Entero, "10"},
    {"Teclas", "NroPalRetroceso", FormaOpcion::Entero, "10"},
    {"Teclas", "UtilizaAvisos", FormaOpcion::BooleanoComoCifra, "1"},

    {"Ventana", "LeftPrincipal", FormaOpcion::Decimal, nullptr},
    {"Ventana", "TopPrincipal", FormaOpcion::Decimal, nullptr},
    {"Ventana", "LeftLupa", FormaOpcion::Decimal, nullptr},
    {"Ventana", "TopLupa", FormaOpcion::Decimal, nullptr},
    {"Ventana", "WidthLupa", FormaOpcion::Decimal, nullptr},
    {"Ventana", "HeightLupa", FormaOpcion::Decimal, nullptr},
    {"Ventana", "LeftEditoresTexto", FormaOpcion::Decimal, nullptr},
    {"Ventana", "TopEditoresTexto", FormaOpcion::Decimal, nullptr},
    {"Ventana", "LeftTeclasLeeTeclado", FormaOpcion::Decimal, nullptr},
    {"Ventana", "TopTeclasLeeTeclado", FormaOpcion::Decimal, nullptr},
    {"Ventana", "LeftSonidosAviso", FormaOpcion::Decimal, nullptr},
    {"Ventana", "TopSonidosAviso", FormaOpcion::Decimal, nullptr},
    {"Ventana", "LeftTexto2Audio", FormaOpcion::Decimal, nullptr},
    {"Ventana", "TopTexto2Audio", FormaOpcion::Decimal, nullptr},
    {"Ventana", "LeftEditor", FormaOpcion::Decimal, nullptr},
    {"Ventana", "TopEditor", FormaOpcion::Decimal, nullptr},
    {"Ventana", "WidthEditor", FormaOpcion::Decimal, nullptr},
    {"Ventana", "HeightEditor", FormaOpcion::Decimal, nullptr},
    {"Ventana", "LeftInsertaEtiqueta", FormaOpcion::Decimal, nullptr},
    {"Ventana", "TopInsertaEtiqueta", FormaOpcion::Decimal, nullptr},
    {"Ventana", "LeftOpcGrabarEditor", FormaOpcion::Decimal, nullptr},
    {"Ventana", "TopOpcGrabarEditor", FormaOpcion::Decimal, nullptr},
    {"Ventana", "LeftBuscaEnEditor", FormaOpcion::Decimal, nullptr},
    {"Ventana", "TopBuscaEnEditor", FormaOpcion::Decimal, nullptr},
    {"Ventana", "LeftEtiquetasLoquendo", FormaOpcion::Decimal, nullptr},
    {"Ventana", "TopEtiquetasLoquendo", FormaOpcion::Decimal, nullptr},
    {"Ventana", "WidthEtiquetasLoquendo", FormaOpcion::Decimal, nullptr},
    {"Ventana", "HeightEtiquetasLoquendo", FormaOpcion::Decimal, nullptr},

    {"Editores", "PalabrasWord", FormaOpcion::Booleano, "True"},
    {"Editores", "ParadaWord", FormaOpcion::Booleano, "False"},
    {"Editores", "MarcaWord", FormaOpcion::Booleano, "True"},
    {"Editores", "SaltoWord", FormaOpcion::Entero, "0"},

    {"Editor", "BackColor", FormaOpcion::Entero, nullptr},
    {"Editor", "FuenteBOLD", FormaOpcion::Booleano, nullptr},
    {"Editor", "FuenteItalic", FormaOpcion::Booleano, nullptr},
    {"Editor", "FuenteUnderline", FormaOpcion::Booleano, nullptr},
    {"Editor", "FuenteStrikethrough", FormaOpcion::Booleano, nullptr},
    {"Editor", "FuenteName", FormaOpcion::Texto, nullptr},
    {"Editor", "FuenteSize", FormaOpcion::Decimal, nullptr},

    {"InsertaEtiqueta", "TiempoPausa", FormaOpcion::Texto, "10"},
    {"InsertaEtiqueta", "Voz", FormaOpcion::Texto, nullptr},

    {"OpcGrabarEditor", "GrabaEnWAV", FormaOpcion::Entero, nullptr},
    {"OpcGrabarEditor", "NombreFichero", FormaOpcion::Texto, nullptr},
    {"OpcGrabarEditor", "CalidadkHz", FormaOpcion::Entero, nullptr},
    {"OpcGrabarEditor", "Calidadkbps", FormaOpcion::Entero, nullptr},

    // Positions in the lists and states of check boxes, unlike section Grabar: settings in use depend on it.
    {"Texto2Audio", "OpcionWAV", FormaOpcion::Booleano, "True"},
    {"Texto2Audio", "kHz", FormaOpcion::Entero, "1"},
    {"Texto2Audio", "kbps", FormaOpcion::Entero, "2"},
    {"Texto2Audio", "CheckIgnoraXML", FormaOpcion::Entero, "1"},
    {"Texto2Audio", "CheckReproducir", FormaOpcion::Entero, "1"},
};

inline std::span<const FilaCatalogo> Catalogo() { return kCatalogo; }

// The page row of one setting. `diseno`: tag at design where it isn't the default itself (a list's position). A
// setting that the catalogue doesn't hold doesn't compile.
consteval FilaOpcion FilaDe(const char *control, std::string_view seccion, std::string_view clave,
                            const char *diseno = nullptr) {
    for (const FilaCatalogo &fila : kCatalogo) {
        if (seccion != fila.seccion || clave != fila.clave) continue;
        const char *tag = diseno ? diseno : fila.defecto ? fila.defecto : "";
        if (!diseno && fila.forma == FormaOpcion::Booleano) tag = std::string_view(tag) == "True" ? "1" : "0";
        return {control, fila.seccion, fila.clave, fila.forma, tag};
    }
    throw "no such setting";
}

// The page row of a control whose state isn't stored.
consteval FilaOpcion FilaSinClave(const char *control, FormaOpcion forma, const char *diseno) {
    return {control, nullptr, nullptr, forma, diseno};
}

// What `-clear` does: the start-with-the-system entry and every section of the user's store; the route's own values
// and the system's store stay.
void RestauraConfiguracion(cRegistro &registro);

}  // namespace ondalis
