#include "worker/cLenguasEspeak.h"

#include <espeak-ng/speak_lib.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>

#include "worker/Lcid.h"

namespace ondalis {

namespace {

// From asking for a voice to its first sound on a machine at full load; a warm worker takes under a millisecond.
constexpr std::uint32_t kPlazoMs = 3000;

std::string Minusculas(std::string_view texto) {
    std::string m(texto);
    for (char &c : m)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return m;
}

// The files of the usual languages, which spare reading all of them for a language tag.
struct Usual {
    std::string_view lengua, identificador;
};
constexpr std::array kUsuales{
    Usual{"es", "roa/es"},        Usual{"es-es", "roa/es"},     Usual{"en", "gmw/en"},
    Usual{"en-gb", "gmw/en"},     Usual{"en-us", "gmw/en-US"},  Usual{"fr", "roa/fr"},
    Usual{"fr-fr", "roa/fr"},     Usual{"de", "gmw/de"},        Usual{"de-de", "gmw/de"},
    Usual{"it", "roa/it"},        Usual{"it-it", "roa/it"},     Usual{"es-419", "roa/es-419"},
    Usual{"es-mx", "roa/es-419"}, Usual{"es-ar", "roa/es-419"}, Usual{"es-us", "roa/es-419"},
};

std::string Genero(int genero) { return genero == 1 ? "Male" : genero == 2 ? "Female" : ""; }

std::string Edad(int anos) {
    if (anos <= 0) return {};
    return anos < 13 ? "Child" : anos < 20 ? "Teen" : anos < 60 ? "Adult" : "Senior";
}

// An identifier comes from the reader: it stays inside the folder.
bool EsRutaSana(std::string_view identificador) {
    return !identificador.empty() && identificador.front() != '/' && identificador.front() != '.' &&
           identificador.find("..") == std::string_view::npos && identificador.find('\0') == std::string_view::npos &&
           identificador.size() < 100;
}

}  // namespace

const std::vector<cLenguasEspeak::Una> &cLenguasEspeak::Lista() {
    if (!m_lista.empty()) return m_lista;
    for (const espeak_VOICE **voz = espeak_ListVoices(nullptr); voz && *voz; voz++) {
        const std::string identificador = (*voz)->identifier ? (*voz)->identifier : "";
        if (identificador.starts_with("mb/") || identificador.starts_with("mb-")) continue;
        if (!(*voz)->languages || (*voz)->languages[0] == 0) continue;
        m_lista.push_back({identificador, (*voz)->name ? (*voz)->name : "", (*voz)->languages + 1,
                           static_cast<int>((*voz)->languages[0]), (*voz)->gender, (*voz)->age});
    }
    return m_lista;
}

std::vector<TramaVoz> cLenguasEspeak::Voces() {
    std::vector<TramaVoz> voces;
    for (const Una &una : Lista())
        voces.push_back({"espeak", una.identificador, una.nombre, LcidDeLengua(una.lengua), "eSpeak NG", kPlazoMs,
                         Genero(una.genero), Edad(una.edad)});
    return voces;
}

std::optional<std::string> cLenguasEspeak::Lee(const std::string &identificador) const {
    if (!EsRutaSana(identificador) || identificador.find('/') == std::string::npos) return std::nullopt;
    std::ifstream fichero(m_datos + "/lang/" + identificador);
    std::ostringstream texto;
    if (!fichero || !(texto << fichero.rdbuf())) return std::nullopt;  // a folder opens, but cannot be read
    return texto.str();
}

std::optional<std::string> cLenguasEspeak::Identificador(std::string_view voz) {
    const std::string identificador(voz);
    if (m_textos.contains(identificador)) return identificador;
    if (auto texto = Lee(identificador)) {
        m_textos.emplace(identificador, std::move(*texto));
        return identificador;
    }
    if (identificador.find('/') != std::string::npos) return std::nullopt;
    return DeIdioma(voz);
}

std::optional<std::string> cLenguasEspeak::DeIdioma(std::string_view bcp47) {
    std::string lengua = Minusculas(bcp47);
    std::replace(lengua.begin(), lengua.end(), '_', '-');
    while (!lengua.empty()) {
        const auto usual = std::find_if(kUsuales.begin(), kUsuales.end(),
                                        [&lengua](const Usual &uno) { return uno.lengua == lengua; });
        if (usual != kUsuales.end()) return Identificador(usual->identificador);
        const Una *mejor = nullptr;
        for (const Una &una : Lista())
            if (Minusculas(una.lengua) == lengua && (!mejor || una.prioridad < mejor->prioridad)) mejor = &una;
        if (mejor) return Identificador(mejor->identificador);
        const std::size_t guion = lengua.rfind('-');
        lengua.resize(guion == std::string::npos ? 0 : guion);
    }
    return std::nullopt;
}

const std::string &cLenguasEspeak::Texto(const std::string &identificador) {
    static const std::string kNada;
    const auto texto = m_textos.find(identificador);
    return texto == m_textos.end() ? kNada : texto->second;
}

}  // namespace ondalis
