// A timer that expires when the test says so.
#pragma once

#include <functional>

#include "settings/Temporizador.h"

namespace ondalis::prueba {

class TemporizadorFalso : public Temporizador {
public:
    void SetIntervalo(int milisegundos) override { intervalo = milisegundos; }
    void SetManejador(std::function<void()> manejador) override { m_manejador = std::move(manejador); }
    void SetEnabled(bool encendido) override {
        m_encendido = encendido;
        if (encendido) ++encendidos;
    }
    bool Enabled() const override { return m_encendido; }

    // One expiry; nothing happens while it is off.
    void Vence() {
        if (m_encendido && m_manejador) m_manejador();
    }

    int intervalo = 0;   // milliseconds
    int encendidos = 0;  // times switched on

private:
    bool m_encendido = false;
    std::function<void()> m_manejador;
};

}  // namespace ondalis::prueba
