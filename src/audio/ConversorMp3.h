// Encodes a finished WAV file. Main thread.
#pragma once

#include <QString>
#include <cstdint>

namespace ondalis {

class ConversorMp3 {
public:
    virtual ~ConversorMp3() = default;
    // `hercios`: rate of the WAV file. `kbps`: kbit/s. `remuestreo`: rate of the MP3 file, -1 as the WAV file's. True
    // when the whole file was encoded; the reason of a failure is in the log, and a part of `mp3` may have been left.
    virtual bool Convierte(const QString &wav, const QString &mp3, std::int32_t hercios, std::int16_t kbps,
                           std::int32_t remuestreo) = 0;
    // Ends a conversion under way, which then fails. Harmless when idle.
    virtual void CancelaConversion() = 0;
};

}  // namespace ondalis
