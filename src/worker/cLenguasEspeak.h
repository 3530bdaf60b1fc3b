// The language files that eSpeak NG brings: which there are, their text, and which serves a language tag. Needs the
// engine initialised. Owned by the engine adapter.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/Protocolo.h"

namespace ondalis {

class cLenguasEspeak {
public:
    // `datos` is the engine's data folder.
    void SetDatos(std::string datos) { m_datos = std::move(datos); }

    // One voice a language file, in the engine's order; MBROLA voices, listed though not installed, are left out.
    std::vector<TramaVoz> Voces();

    // The identifier itself ("roa/es") where it names a file, else the file of the language ("es"); nothing if none.
    std::optional<std::string> Identificador(std::string_view voz);
    // The file for a language tag: its own, else that of the language without region; nothing if none.
    std::optional<std::string> DeIdioma(std::string_view bcp47);
    // Text of an identifier that one of the above gave. Read once.
    const std::string &Texto(const std::string &identificador);

private:
    struct Una {
        std::string identificador, nombre, lengua;
        int prioridad = 0;
        int genero = 0, edad = 0;  // as the engine numbers them: 1 male, 2 female; years; 0: not told
    };
    const std::vector<Una> &Lista();
    std::optional<std::string> Lee(const std::string &identificador) const;

    std::string m_datos;
    std::vector<Una> m_lista;
    std::map<std::string, std::string, std::less<>> m_textos;
};

}  // namespace ondalis
