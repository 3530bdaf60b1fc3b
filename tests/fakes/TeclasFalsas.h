// Hot keys without a window system: presses come from the test; a combination can be held by "another program".
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <utility>

#include "keys/TeclasSistema.h"

namespace ondalis::prueba {

class TeclasFalsas : public TeclasSistema {
public:
    using Combinacion = std::pair<std::uint32_t, int>;  // modifiers, virtual key

    bool Registra(int identificador, std::uint32_t modificadores, int virtualKey) override {
        const Combinacion combinacion{modificadores, virtualKey};
        if (ajenas.contains(combinacion)) return false;
        for (const auto &[otro, suya] : registradas)
            if (suya == combinacion) return false;
        registradas[identificador] = combinacion;
        return true;
    }
    void Libera(int identificador) override {
        registradas.erase(identificador);
        ++liberadas[identificador];
    }
    void SetPulsada(std::function<void(int, bool)> pulsada) override { m_pulsada = std::move(pulsada); }

    // The user presses; who holds the combination gets it.
    bool Pulsa(std::uint32_t modificadores, int virtualKey, bool repetida = false) {
        for (const auto &[identificador, combinacion] : registradas) {
            if (combinacion != Combinacion{modificadores, virtualKey}) continue;
            PulsaIdentificador(identificador, repetida);
            return true;
        }
        return false;
    }
    // A press by identifier, as one that was on its way when its row was removed.
    void PulsaIdentificador(int identificador, bool repetida = false) {
        if (m_pulsada) m_pulsada(identificador, repetida);
    }

    std::map<int, Combinacion> registradas;
    std::map<int, int> liberadas;  // times released
    std::set<Combinacion> ajenas;

private:
    std::function<void(int, bool)> m_pulsada;
};

}  // namespace ondalis::prueba
