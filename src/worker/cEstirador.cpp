#include "worker/cEstirador.h"

#include <sonic.h>

#include <new>

namespace ondalis {

cEstirador::cEstirador(int hercios, double factor) : m_sonic(sonicCreateStream(hercios, 1)) {
    if (!m_sonic) throw std::bad_alloc();
    sonicSetSpeed(m_sonic, static_cast<float>(factor));
}

cEstirador::~cEstirador() { sonicDestroyStream(m_sonic); }

void cEstirador::Mete(std::span<const std::int16_t> muestras, std::vector<std::int16_t> &salida) {
    std::vector<std::int16_t> copia(muestras.begin(), muestras.end());  // sonic wants them writable
    if (!sonicWriteShortToStream(m_sonic, copia.data(), static_cast<int>(copia.size()))) throw std::bad_alloc();
    Saca(salida);
}

void cEstirador::Termina(std::vector<std::int16_t> &salida) {
    if (!sonicFlushStream(m_sonic)) throw std::bad_alloc();
    Saca(salida);
}

void cEstirador::Saca(std::vector<std::int16_t> &salida) {
    const int n = sonicSamplesAvailable(m_sonic);
    const std::size_t antes = salida.size();
    salida.resize(antes + static_cast<std::size_t>(n));
    const int leidas = n > 0 ? sonicReadShortFromStream(m_sonic, salida.data() + antes, n) : 0;
    salida.resize(antes + static_cast<std::size_t>(leidas));
}

}  // namespace ondalis
