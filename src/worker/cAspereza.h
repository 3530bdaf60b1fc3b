// Makes a voice rough by steps as fine as one likes, which the engine's own roughness (eight steps) can't: small
// irregular shifts in time and in strength from one period to the next. One object an utterance; no length changes.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace ondalis {

class cAspereza {
public:
    explicit cAspereza(int hercios);

    // 0 to 100; taken up within some milliseconds, without a click. At 0 the sound passes as it is.
    void Pon(double aspereza);

    bool Activa() const { return m_objetivo != 0 || m_hondura != 0; }  // else Pasa changes nothing
    // In place. The sound comes later by 0.7 ms at most. The same for the same calls on a new object.
    void Pasa(std::span<float> muestras);

private:
    // Noise of unit strength, slow enough to be heard as roughness and not as hiss.
    struct Ruido {
        std::uint32_t semilla;
        float a = 0, b = 0;
        float Siguiente(float paso);
    };

    float Entre(std::size_t i, float parte) const;

    static constexpr std::size_t kMemoria = 64;  // samples, a power of two above the longest delay

    float m_hercios, m_paso, m_subida;
    float m_hondura = 0;
    float m_objetivo = 0;
    Ruido m_desvio{0x2545F491u}, m_fuerza{0x9E3779B9u};
    std::array<float, kMemoria> m_memoria{};
    std::size_t m_escrita = 0;
};

}  // namespace ondalis
