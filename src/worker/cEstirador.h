// Stretches or shortens speech without changing its pitch, beyond the slowest and the fastest speed of the engine. One
// object a stretch of sound.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

struct sonicStreamStruct;

namespace ondalis {

class cEstirador {
public:
    // n samples become n / factor, within a pitch period.
    cEstirador(int hercios, double factor);
    ~cEstirador();
    cEstirador(const cEstirador &) = delete;
    cEstirador &operator=(const cEstirador &) = delete;

    // Both append to `salida` what is ready.
    void Mete(std::span<const std::int16_t> muestras, std::vector<std::int16_t> &salida);
    void Termina(std::vector<std::int16_t> &salida);

private:
    void Saca(std::vector<std::int16_t> &salida);

    sonicStreamStruct *m_sonic;
};

}  // namespace ondalis
