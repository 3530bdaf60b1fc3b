// The record of a failure at a procedure's border: number of the classic table, Spanish description, line. A value;
// a default one means success. No thread of its own.
#pragma once

#include <QString>
#include <source_location>

namespace ondalis {

struct Fallo {
    // Numbers of the classic run-time table that the system uses.
    enum Numero : int {
        Ninguno = 0,
        LlamadaNoValida = 5,
        Desbordamiento = 6,
        SinMemoria = 7,
        TipoNoCoincide = 13,
        FicheroNoEncontrado = 53,
        FicheroYaExiste = 58,
        DiscoLleno = 61,
        PermisoDenegado = 70,
        ErrorDeAcceso = 75,
        RutaNoEncontrada = 76,
        VentanaModal = 401,
        ClaveYaAsociada = 457,
        SintaxisDeEtiquetas = static_cast<int>(0x80045042u),  // SAPI 5: the text's markup is refused
    };

    int numero = Ninguno;
    QString descripcion;
    int linea = 0;

    explicit operator bool() const { return numero != Ninguno; }

    // A failure of the table with its Spanish description and the caller's line.
    [[nodiscard]] static Fallo De(int numero, std::source_location lugar = std::source_location::current());
    // The same with a description of one's own.
    [[nodiscard]] static Fallo De(int numero, const QString &descripcion,
                                  std::source_location lugar = std::source_location::current());
};

// How a Fallo travels inside one procedure's body up to cGeneral::Ejecuta at its border; it never crosses the border.
struct ErrorFallo {
    Fallo fallo;
};

}  // namespace ondalis
