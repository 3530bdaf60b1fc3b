// A folder of the test's own, gone with it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace ondalis::prueba {

class CarpetaPropia {
public:
    CarpetaPropia() {
        std::string plantilla = (std::filesystem::temp_directory_path() / "prueba.XXXXXX").string();
        if (mkdtemp(plantilla.data()) == nullptr) throw std::runtime_error("mkdtemp");
        m_carpeta = plantilla;
    }
    ~CarpetaPropia() {
        std::error_code da_igual;
        std::filesystem::remove_all(m_carpeta, da_igual);
    }
    CarpetaPropia(const CarpetaPropia &) = delete;
    CarpetaPropia &operator=(const CarpetaPropia &) = delete;

    std::string Ruta(const std::string &nombre = {}) const { return (m_carpeta / nombre).string(); }
    std::string Lee(const std::string &nombre) const {
        std::ifstream entrada(m_carpeta / nombre, std::ios::binary);
        return {std::istreambuf_iterator<char>(entrada), {}};
    }
    void Escribe(const std::string &nombre, const std::string &contenido) const {
        std::ofstream(m_carpeta / nombre, std::ios::binary) << contenido;
    }

private:
    std::filesystem::path m_carpeta;
};

}  // namespace ondalis::prueba
