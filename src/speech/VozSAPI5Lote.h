// The SAPI 5 voice that a batch job makes for itself: every speech is waited for. Main thread.
#pragma once

#include <QString>

#include "settings/Fallo.h"

namespace ondalis {

class VozSAPI5Lote {
public:
    virtual ~VozSAPI5Lote() = default;
    // Takes the first voice of that name; false when there is none.
    virtual bool Elige(const QString &nombre) = 0;
    virtual int Rate() const = 0;
    virtual void SetRate(int rate) = 0;
    virtual int Volume() const = 0;
    virtual void SetVolume(int volume) = 0;
    // `texto` may hold XML. Returns when it has been heard, or was silenced, which is no failure. 5: the engine
    // couldn't say it.
    [[nodiscard]] virtual Fallo Speak(const QString &texto) = 0;
    // The same into a new WAV file; 5 also where the engine has skipped a part of the text. `formato`:
    // SpeechAudioFormatType of the file, 0 for the engine's own rate.
    [[nodiscard]] virtual Fallo SpeakAFichero(const QString &texto, const QString &ruta, int formato) = 0;
    // Silences what is being waited for. Harmless when idle.
    virtual void Cancela() = 0;
};

}  // namespace ondalis
