#include "libs/ondalis_dicc.h"

#include <cstring>
#include <new>
#include <string>
#include <unordered_map>
#include <vector>

#include "libs/ondalis_dicc_fichero.h"

namespace {

// The one table of the process that the C operations are about.
struct Tabla {
    std::vector<ondalis::EntradaDicc> entradas;
    std::unordered_map<std::string, std::size_t> sitios;  // key to its index
    std::size_t cursor = 0;
    std::uint64_t version = 0;

    void Vacia() { *this = Tabla{{}, {}, 0, version + 1}; }
    // Keys are unique: one that comes again gets the newer conversion, in its old place.
    void Anade(std::string clave, std::string conversion) {
        const auto [sitio, nueva] = sitios.try_emplace(clave, entradas.size());
        if (nueva)
            entradas.push_back({std::move(clave), std::move(conversion)});
        else
            entradas[sitio->second].conversion = std::move(conversion);
        ++version;
    }
};

Tabla &LaTabla() {
    static Tabla tabla;
    return tabla;
}

// No exception leaves through a C signature; the only one there can be is the lack of memory.
template <class F>
auto SinExcepcion(F &&cuerpo, decltype(cuerpo()) siFalla) {
    try {
        return cuerpo();
    } catch (const std::bad_alloc &) {
        return siFalla;
    }
}

}  // namespace

int16_t CargaDicc(const char *ruta) {
    LaTabla().Vacia();
    if (!ruta) return 0;
    return SinExcepcion(
        [&]() -> int16_t {
            std::vector<ondalis::EntradaDicc> leidas;
            switch (ondalis::LeeFicheroDicc(ruta, leidas)) {
                case ondalis::LecturaDicc::Ausente: return 0;
                case ondalis::LecturaDicc::Danado: return -1;
                case ondalis::LecturaDicc::Leido: break;
            }
            for (auto &entrada : leidas) LaTabla().Anade(std::move(entrada.clave), std::move(entrada.conversion));
            return 1;
        },
        int16_t{0});
}

void PrimeraPosicionDicc(void) { LaTabla().cursor = 0; }

int16_t GetPosicionDicc(char *clave, char *conversion) {
    const Tabla &tabla = LaTabla();
    if (!clave || !conversion || tabla.cursor >= tabla.entradas.size()) return 0;
    const ondalis::EntradaDicc &entrada = tabla.entradas[tabla.cursor];
    std::memcpy(clave, entrada.clave.c_str(), entrada.clave.size() + 1);
    std::memcpy(conversion, entrada.conversion.c_str(), entrada.conversion.size() + 1);
    return 1;
}

void SigPosicionDicc(void) {
    Tabla &tabla = LaTabla();
    if (tabla.cursor < tabla.entradas.size()) ++tabla.cursor;
}

void AddConversionDicc(const char *clave, const char *conversion) {
    if (!clave || !conversion || !ondalis::EsEntradaValida(clave, conversion)) return;
    SinExcepcion(
        [&] {
            LaTabla().Anade(clave, conversion);
            return true;
        },
        false);
}

void LiberaMemDicc(void) { LaTabla().Vacia(); }

int16_t GrabaDicc(const char *ruta) {
    if (!ruta) return 0;
    return SinExcepcion([&]() -> int16_t { return ondalis::EscribeFicheroDicc(ruta, LaTabla().entradas) ? 1 : 0; },
                        int16_t{0});
}

uint64_t VersionDicc(void) { return LaTabla().version; }
