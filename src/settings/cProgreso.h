// The drawn progress bar. Created by the window that needs it, which owns the surface too. Main thread.
#pragma once

#include <cstdint>

#include "settings/cCola.h"

namespace ondalis {

// What a bar is drawn on. ui implements it; colours are decimal with blue in the high byte.
class SuperficieProgreso {
public:
    virtual ~SuperficieProgreso() = default;
    virtual void SetColores(std::uint32_t fondo, std::uint32_t frente) = 0;
    virtual bool Visible() const = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual float Ancho() const = 0;
    // Fills all with the background, and `ancho` from the left with the foreground, and shows it at once.
    virtual void Dibuja(float ancho) = 0;
    virtual void Limpia() = 0;
};

class cProgreso {
public:
    static constexpr std::uint32_t ColorFondo = 0xFFFFFF;
    static constexpr std::uint32_t ColorFrente = 65280;  // green

    explicit cProgreso(cCola &cola) : m_cola(cola) {}

    void Init(SuperficieProgreso &superficie);
    float MaxValor() const { return m_maximo; }
    void SetMaxValor(float maximo) { m_maximo = maximo; }
    float ValorActual() const { return m_valor; }
    // Above MaxValor: MaxValor. Draws only when the whole percentage changes (a maximum of 0 has none), and lets
    // pending events run in any case.
    void SetValorActual(float valor);
    void Oculta();

private:
    void DibujaPorcentaje();

    cCola &m_cola;
    SuperficieProgreso *m_superficie = nullptr;
    float m_maximo = 0;
    float m_valor = 0;
    std::int16_t m_porcentaje = 0;  // last one shown
};

}  // namespace ondalis
