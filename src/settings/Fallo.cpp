#include "settings/Fallo.h"

namespace ondalis {

namespace {

// Descriptions of the classic run-time table, in Spanish.
QString Descripcion(int numero) {
    switch (numero) {
        case Fallo::LlamadaNoValida: return QStringLiteral("Argumento o llamada a procedimiento no válidos");
        case Fallo::Desbordamiento: return QStringLiteral("Desbordamiento");
        case Fallo::SinMemoria: return QStringLiteral("Memoria insuficiente");
        case Fallo::TipoNoCoincide: return QStringLiteral("No coinciden los tipos");
        case Fallo::FicheroNoEncontrado: return QStringLiteral("No se encontró el archivo");
        case Fallo::FicheroYaExiste: return QStringLiteral("El archivo ya existe");
        case Fallo::DiscoLleno: return QStringLiteral("Disco lleno");
        case Fallo::PermisoDenegado: return QStringLiteral("Permiso denegado");
        case Fallo::ErrorDeAcceso: return QStringLiteral("Error de acceso a la ruta o al archivo");
        case Fallo::RutaNoEncontrada: return QStringLiteral("No se encontró la ruta");
        case Fallo::VentanaModal: return QStringLiteral("Hay una ventana modal abierta");
        case Fallo::ClaveYaAsociada: return QStringLiteral("Esta clave ya está asociada a un elemento de la lista");
        case Fallo::SintaxisDeEtiquetas: return QStringLiteral("Sintaxis de etiquetas no válida");
        default: return QStringLiteral("Error definido por la aplicación");
    }
}

}  // namespace

Fallo Fallo::De(int numero, std::source_location lugar) { return De(numero, Descripcion(numero), lugar); }

Fallo Fallo::De(int numero, const QString &descripcion, std::source_location lugar) {
    return Fallo{numero, descripcion, static_cast<int>(lugar.line())};
}

}  // namespace ondalis
