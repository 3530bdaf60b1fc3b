#include "worker/orden/Catalogo.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>

#include "worker/Lcid.h"

namespace ondalis {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kTerminacion = ".motor";
constexpr std::size_t kMaxFicheros = 100;     // descriptions of a folder
constexpr std::size_t kMaxRecorridos = 5000;  // entries of a models folder looked at
constexpr int kMaxHondura = 5;
constexpr std::uint32_t kMargenMs = 1000;  // the worker's own limit comes before the reader's

bool EsFichero(const std::string &ruta, int permiso = R_OK) {
    struct stat estado {};
    return stat(ruta.c_str(), &estado) == 0 && S_ISREG(estado.st_mode) && access(ruta.c_str(), permiso) == 0;
}

std::string Entorno(const char *variable) {
    const char *valor = std::getenv(variable);
    return valor ? valor : "";
}

// The folders of a list like PATH; relative ones are ignored.
std::vector<std::string> Absolutas(const std::string &lista) {
    std::vector<std::string> carpetas;
    for (std::size_t i = 0; i <= lista.size();) {
        const std::size_t fin = std::min(lista.find(':', i), lista.size());
        if (fin > i && lista[i] == '/') carpetas.push_back(lista.substr(i, fin - i));
        i = fin + 1;
    }
    return carpetas;
}

// Empty when it isn't there.
std::string RutaDe(const std::string &programa) {
    if (programa[0] == '/') return EsFichero(programa, X_OK) ? programa : "";
    for (const std::string &carpeta : Absolutas(Entorno("PATH"))) {
        std::string ruta = carpeta;
        ruta.append("/").append(programa);
        if (EsFichero(ruta, X_OK)) return ruta;
    }
    return {};
}

void PonDatos(std::string &ruta) {
    constexpr std::string_view kDatos = "{datos}";
    if (ruta.starts_with(kDatos)) ruta.replace(0, kDatos.size(), CarpetaDatos());
}

bool Estan(const std::vector<std::string> &ficheros) {
    return std::all_of(ficheros.begin(), ficheros.end(), [](std::string f) {
        PonDatos(f);
        return EsFichero(f);
    });
}

// A description's word as the tokens' attributes have it.
std::string EnIngles(std::string_view palabra) {
    static constexpr std::pair<std::string_view, const char *> kPalabras[] = {
        {"hombre", "Male"}, {"mujer", "Female"}, {"neutro", "Neutral"},
        {"nino", "Child"},  {"adulto", "Adult"}, {"mayor", "Senior"}};
    for (const auto &[escrita, inglesa] : kPalabras)
        if (palabra == escrita) return inglesa;
    return {};
}

// "es_ES-davefx-medium": the language before the first "-".
std::string LcidDeModelo(const std::string &nombre) {
    std::string lengua = nombre.substr(0, nombre.find('-'));
    std::replace(lengua.begin(), lengua.end(), '_', '-');
    return LcidDeLengua(lengua);
}

void AnadeModelos(const ModelosOrden &modelos, std::vector<VozOrden> &voces) {
    for (std::string carpeta : modelos.carpetas) {
        PonDatos(carpeta);
        std::error_code error;
        std::vector<VozOrden> halladas;
        std::size_t vistos = 0;
        fs::recursive_directory_iterator i(carpeta, fs::directory_options::skip_permission_denied, error), fin;
        for (; !error && i != fin && vistos++ < kMaxRecorridos; i.increment(error)) {
            if (i.depth() >= kMaxHondura) i.disable_recursion_pending();
            const std::string ruta = i->path().string(), nombre = i->path().filename().string();
            if (!nombre.ends_with(modelos.terminacion) || !EsFichero(ruta)) continue;
            if (!modelos.acompana.empty() && !EsFichero(ruta + modelos.acompana)) continue;
            const std::string id = nombre.substr(0, nombre.size() - modelos.terminacion.size());
            if (id.empty() || id[0] == '-') continue;
            halladas.push_back({id, id, LcidDeModelo(id), {}, {}, ruta, {}, 0});
        }
        std::sort(halladas.begin(), halladas.end(), [](const auto &a, const auto &b) { return a.id < b.id; });
        for (VozOrden &voz : halladas) {
            const bool repetida =
                std::any_of(voces.begin(), voces.end(), [&voz](const VozOrden &otra) { return otra.id == voz.id; });
            if (!repetida && voces.size() < kMaxVocesDescripcion) voces.push_back(std::move(voz));
        }
    }
}

std::optional<MotorDescrito> Comprueba(Descripcion descripcion) {
    MotorDescrito motor;
    motor.programa = RutaDe(descripcion.programa);
    if (motor.programa.empty() || !Estan(descripcion.ficheros)) return std::nullopt;
    for (VozOrden voz : descripcion.voces) {
        PonDatos(voz.modelo);
        if ((voz.modelo.empty() || EsFichero(voz.modelo)) && Estan(voz.ficheros)) motor.voces.push_back(std::move(voz));
    }
    if (descripcion.modelos) AnadeModelos(*descripcion.modelos, motor.voces);
    if (motor.voces.empty()) return std::nullopt;
    motor.descripcion = std::move(descripcion);
    return motor;
}

// Nothing when the file is longer than a description may be or can't be read.
std::optional<std::string> Contenido(const std::string &ruta) {
    std::ifstream fichero(ruta, std::ios::binary);
    std::string texto(kMaxDescripcion + 1, '\0');
    fichero.read(texto.data(), static_cast<std::streamsize>(texto.size()));
    if (!fichero && !fichero.eof()) return std::nullopt;
    texto.resize(static_cast<std::size_t>(fichero.gcount()));
    return texto;
}

void LeeFichero(const std::string &ruta, const std::string &nombre, const QuejaCatalogo &queja,
                CatalogoOrden &catalogo) {
    const auto texto = Contenido(ruta);
    if (!texto) return queja(ruta, "no se puede leer");
    LecturaDescripcion lectura = LeeDescripcion(*texto);
    if (!lectura.descripcion) return queja(ruta, lectura.fallo);
    if (auto motor = Comprueba(std::move(*lectura.descripcion))) catalogo.emplace(nombre, std::move(*motor));
}

}  // namespace

std::string CarpetaDatos() {
    const std::string datos = Entorno("XDG_DATA_HOME");
    if (!datos.empty() && datos[0] == '/') return datos + "/ondalis";
    return Entorno("HOME") + "/.local/share/ondalis";
}

std::vector<std::string> CarpetasDeMotores() {
    if (const std::string indicadas = Entorno("ONDALIS_MOTORES"); !indicadas.empty()) return Absolutas(indicadas);
    std::vector<std::string> carpetas{CarpetaDatos() + "/motores"};
    std::error_code error;
    const fs::path propia = fs::read_symlink("/proc/self/exe", error).parent_path();
    // Beside the reader in a build folder; in libexec/ondalis where it is installed.
    for (const char *camino : {"../share/ondalis", "../../share/ondalis"}) {
        const fs::path carpeta = (propia / camino / "motores").lexically_normal();
        if (!error && fs::is_directory(carpeta, error)) {
            carpetas.push_back(carpeta.string());
            break;
        }
        error.clear();
    }
    return carpetas;
}

CatalogoOrden LeeCatalogo(const std::vector<std::string> &carpetas, const QuejaCatalogo &queja) {
    std::map<std::string, std::string> ficheros;
    for (const std::string &carpeta : carpetas) {
        std::error_code error;
        std::size_t vistos = 0;
        for (fs::directory_iterator i(carpeta, error), fin; !error && i != fin; i.increment(error)) {
            const std::string ruta = i->path().string(), nombre = i->path().filename().string();
            if (!nombre.ends_with(kTerminacion) || !EsFichero(ruta, F_OK) || vistos++ >= kMaxFicheros) continue;
            const std::string motor = nombre.substr(0, nombre.size() - kTerminacion.size());
            if (!EsNombreDeMotor(motor) || motor == "espeak")
                queja(ruta, "nombre de fichero no válido para un motor");
            else
                ficheros.emplace(motor, ruta);
        }
    }
    CatalogoOrden catalogo;
    for (const auto &[motor, ruta] : ficheros) LeeFichero(ruta, motor, queja, catalogo);
    return catalogo;
}

std::vector<TramaVoz> TramasDe(const CatalogoOrden &catalogo) {
    std::vector<TramaVoz> voces;
    for (const auto &[nombre, motor] : catalogo)
        for (const VozOrden &voz : motor.voces)
            voces.push_back({nombre, voz.id, voz.nombre, voz.lengua, motor.descripcion.fabricante,
                             motor.descripcion.plazoMs + kMargenMs, EnIngles(voz.genero), EnIngles(voz.edad)});
    return voces;
}

std::uint32_t HerciosDeModelo(const std::string &fichero) {
    const auto texto = Contenido(fichero);
    if (!texto) return 0;
    constexpr std::string_view kClave = "\"sample_rate\"";
    std::size_t i = texto->find(kClave);
    if (i == std::string::npos) return 0;
    i = texto->find_first_not_of(" \t\r\n:", i + kClave.size());
    std::uint32_t hercios = 0;
    if (i != std::string::npos) std::from_chars(texto->data() + i, texto->data() + texto->size(), hercios);
    return hercios >= 8000 && hercios <= 48000 ? hercios : 0;
}

}  // namespace ondalis
