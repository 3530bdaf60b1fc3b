// How a sound's timbre goes along, in a form that two voices saying the same text have in common. Pure.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace ondalis {

inline constexpr double kMsTramaEspectro = 10;  // from one frame to the next
inline constexpr std::size_t kCepstros = 12;
inline constexpr std::size_t kRasgos = 2 * (kCepstros + 1);  // cepstrum, loudness and how both change

struct Espectro {
    std::vector<std::array<float, kRasgos>> tramas;  // each feature of mean 0 and deviation 1 over the sound
    std::vector<bool> callada;                       // a pause, a closure, or a consonant that has no low frequencies
    std::vector<bool> muda;                          // nothing at all is heard: a pause or a closure
    std::size_t desde = 0, hasta = 0;                // the frames without what is silent in front and behind
};

// The powers of a sound's frequencies, from which its features are taken for one throat or another. Frame i has the
// sound around i·10 ms. Only what lies below 3800 hertz counts for the features, which all rates have.
class cSonograma {
public:
    // Empty for a rate below 8000 hertz.
    cSonograma(std::span<const std::int16_t> sonido, std::uint32_t hercios);

    std::size_t Tramas() const { return m_total.size(); }
    // `talla` stretches the frequencies, as if the speaker's throat were shorter by that factor: kTallaMinima or more.
    Espectro Rasgos(double talla = 1) const;

    static constexpr double kTallaMinima = .8;

private:
    void Anota(std::size_t trama, std::span<const float> x, std::span<const float> y);

    std::size_t m_rayas = 0;      // that are kept of each frame
    double m_hzRaya = 0;          // from one to the next
    std::vector<float> m_rayaje;  // Tramas() · m_rayas powers
    std::vector<float> m_total;   // of all frequencies
};

}  // namespace ondalis
