#include "worker/cAspereza.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ondalis {

namespace {

constexpr float kBanda = 90;           // hertz: irregularity of this quickness is heard as roughness
constexpr float kMaxDesvio = .00012F;  // seconds, at the roughest
constexpr float kMaxFuerza = .38F;     // part of the strength, at the roughest
constexpr float kTope = 2.2F;          // of the noise, so that the delay stays within the memory
constexpr float kMsSubida = 4;
constexpr double kCurva = .65;   // the first steps are heard too
constexpr float kPlenitud = 40;  // full at the roughness 1

}  // namespace

cAspereza::cAspereza(int hercios)
    : m_hercios(static_cast<float>(hercios)),
      m_paso(1 - std::exp(-2 * std::numbers::pi_v<float> * kBanda / m_hercios)),
      m_subida(1 - std::exp(-1000 / (kMsSubida * m_hercios))) {}

float cAspereza::Ruido::Siguiente(float paso) {
    semilla = semilla * 1664525u + 1013904223u;
    const float blanco = static_cast<float>(semilla >> 8) / 8388608.F - 1;
    a += paso * (blanco - a);
    b += paso * (a - b);
    // Two such filters leave paso / 4 of the variance, which is a third.
    return std::clamp(b * std::sqrt(12 / paso), -kTope, kTope);
}

// The sound `parte` of a sample before sample `i`; straight lines would take the brightness away.
float cAspereza::Entre(std::size_t i, float parte) const {
    const auto en = [this](std::size_t k) { return m_memoria[k & (kMemoria - 1)]; };
    if (i == m_escrita) return en(i) + parte * (en(i - 1) - en(i));
    const float a = en(i + 1), b = en(i), c = en(i - 1), d = en(i - 2);
    return b + .5F * parte * (c - a + parte * (2 * a - 5 * b + 4 * c - d + parte * (3 * (b - c) + d - a)));
}

void cAspereza::Pon(double aspereza) {
    m_objetivo = static_cast<float>(std::pow(std::clamp(aspereza / 100, 0., 1.), kCurva));
}

void cAspereza::Pasa(std::span<float> muestras) {
    if (!Activa()) return;
    for (float &m : muestras) {
        m_hondura += m_subida * (m_objetivo - m_hondura);
        m_memoria[m_escrita & (kMemoria - 1)] = m;
        // Two samples more where it acts at all, so that the curve through four of them holds the place.
        const float retraso = std::min(1.F, m_hondura * kPlenitud) * 2 +
                              m_hondura * kMaxDesvio * m_hercios * (kTope + m_desvio.Siguiente(m_paso));
        const auto entero = static_cast<std::size_t>(retraso);
        const float fuerza = 1 + m_hondura * kMaxFuerza * m_fuerza.Siguiente(m_paso);
        m = Entre(m_escrita - entero, retraso - static_cast<float>(entero)) * fuerza;
        m_escrita++;
    }
    if (m_objetivo == 0 && m_hondura < 1e-3F) m_hondura = 0;
}

}  // namespace ondalis
