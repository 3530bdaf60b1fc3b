// A folder of the test's own with descriptions and stand-in programs, as the worker finds them.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace ondalis {

class CarpetaMotores {
public:
    CarpetaMotores() {
        std::string plantilla = (std::filesystem::temp_directory_path() / "ondalis-motores-XXXXXX").string();
        if (!mkdtemp(plantilla.data())) std::abort();
        m_raiz = plantilla;
    }
    ~CarpetaMotores() { std::filesystem::remove_all(m_raiz); }
    CarpetaMotores(const CarpetaMotores &) = delete;
    CarpetaMotores &operator=(const CarpetaMotores &) = delete;

    std::string Ruta(const std::string &nombre) const { return m_raiz + "/" + nombre; }
    void Escribe(const std::string &nombre, const std::string &texto) const {
        std::filesystem::create_directories(std::filesystem::path(Ruta(nombre)).parent_path());
        std::ofstream(Ruta(nombre), std::ios::binary) << texto;
    }
    // A shell program; returns its path.
    std::string Programa(const std::string &nombre, const std::string &texto) const {
        Escribe(nombre, "#!/bin/sh\n" + texto);
        chmod(Ruta(nombre).c_str(), 0755);
        return Ruta(nombre);
    }
    // An engine `nombre` with the voice "v": `motor` are further lines of its description.
    void Motor(const std::string &nombre, const std::string &programa, const std::string &motor) const {
        Escribe("m/" + nombre + ".motor", "[motor]\nfabricante = Prueba\nprograma = " + programa + "\n" + motor +
                                              "[voz v]\nnombre = V\nlengua = 40A;C0A\n");
    }
    std::vector<std::string> Entorno() const { return {"ONDALIS_MOTORES=" + Ruta("m"), "XDG_DATA_HOME=" + Ruta("x")}; }

private:
    std::string m_raiz;
};

}  // namespace ondalis
