// Random numbers of the property tests.
#pragma once

#include <cstdint>
#include <random>

namespace ondalis::prueba {

// Random numbers that are the same with every library.
class Azar {
public:
    explicit Azar(std::uint32_t semilla) : m_motor(semilla) {}
    int Hasta(int n) { return static_cast<int>(m_motor() % static_cast<std::uint32_t>(n)); }
    bool Uno(int de) { return Hasta(de) == 0; }

private:
    std::mt19937 m_motor;
};

}  // namespace ondalis::prueba
