// The description of a command engine: a small text file that names a program which takes a text and gives samples, its
// voices and its limits. docs/motores.md tells how one is written. Pure: nothing is looked up on the disk here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ondalis {

enum class EntradaOrden { Estandar, Argumento, Fichero };
enum class SalidaOrden { Estandar, Fichero };
enum class FormatoOrden { Wav, Crudo };
enum class RitmoOrden { Ninguno, Factor, Inverso, Palabras };  // what "{ritmo}" stands for
// What the program tells of when each thing is said: segments of sound with their ends, or words with their starts.
enum class TiemposOrden { Ninguno, Segmentos, Palabras };

struct VozOrden {
    std::string id, nombre, lengua;  // lengua: hexadecimal LCIDs, "409;9"
    std::string genero, edad;        // the words of the file; may be empty
    std::string modelo;              // absolute path behind "{modelo}"; must exist
    std::vector<std::string> ficheros;
    std::uint32_t hercios = 0;  // 0: the engine's
    bool operator==(const VozOrden &) const = default;
};

// Voices that are files in folders: each is one.
struct ModelosOrden {
    std::vector<std::string> carpetas;  // absolute, or below "{datos}"
    std::string terminacion;            // of a model's name: ".onnx"
    std::string acompana;               // what has to stand beside it: ".json" for "voz.onnx.json"; may be empty
    bool operator==(const ModelosOrden &) const = default;
};

struct Descripcion {
    std::string fabricante, programa;
    std::vector<std::string> argumentos;
    EntradaOrden entrada = EntradaOrden::Estandar;
    SalidaOrden salida = SalidaOrden::Estandar;
    FormatoOrden formato = FormatoOrden::Wav;
    TiemposOrden tiempos = TiemposOrden::Ninguno;
    std::vector<std::string> argumentosPalabras;  // Segmentos: of the call that tells each word's segments
    std::uint32_t hercios = 0;  // of raw samples; 0: the model's companion file tells, or the WAV header
    std::uint32_t canales = 1;  // of raw samples
    RitmoOrden ritmo = RitmoOrden::Ninguno;
    double ritmoMinimo = 1, ritmoMaximo = 1;  // factors of its normal pace that the program does by itself
    double palabrasMinuto = 170;              // its normal pace
    double tonoCentro = 0, tonoMinimo = 0, tonoMaximo = 0;
    std::uint32_t plazoPrimeraMs = 5000;  // to the first byte of a piece
    std::uint32_t plazoMs = 15000;        // to its last one
    std::uint32_t maxCaracteres = 300;    // of the text in one call
    bool primeraCorta = false;            // the first call ends at a clause: sooner heard, worse melody
    std::vector<std::string> ficheros;    // must exist, for all voices
    std::vector<VozOrden> voces;
    std::optional<ModelosOrden> modelos;
    bool operator==(const Descripcion &) const = default;
};

struct LecturaDescripcion {
    std::optional<Descripcion> descripcion;
    std::string fallo;  // why there is none, with the line's number
};

inline constexpr std::size_t kMaxDescripcion = std::size_t{64} * 1024;  // bytes of a file
inline constexpr std::size_t kMaxLineaDescripcion = 1024;
inline constexpr std::size_t kMaxVocesDescripcion = 200;

// Strict: whatever isn't wholly understood gives no description.
LecturaDescripcion LeeDescripcion(std::string_view texto);

// The name of an engine, which is that of its file without ".motor": lower case letters, digits and "-", at most 40.
bool EsNombreDeMotor(std::string_view nombre);

// Cuts a line of arguments at blanks; "..." keeps blanks in one. Nothing when a quotation mark isn't closed.
std::optional<std::vector<std::string>> ParteArgumentos(std::string_view linea);

}  // namespace ondalis
