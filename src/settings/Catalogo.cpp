#include "settings/Catalogo.h"

namespace ondalis {

void RestauraConfiguracion(cRegistro &registro) {
    static constexpr const char *kSecciones[] = {"Editor",          "Editores",        "General", "Grabar",
                                                 "InsertaEtiqueta", "OpcGrabarEditor", "Teclas",  "Texto2Audio",
                                                 "TipoLectura",     "Ventana",         "Voz"};
    registro.BorraAutoarranque(QLatin1String(Producto::Titulo));
    for (const char *seccion : kSecciones)
        registro.Borra(QStringLiteral("CU"), Producto::Ruta(), QString::fromLatin1(seccion));
}

}  // namespace ondalis
