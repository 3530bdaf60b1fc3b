// What recording asks of others: a SAPI 5 voice of its own that speaks into a file, and the encoder. Main thread.
#pragma once

#include <QString>

#include "settings/Fallo.h"

namespace ondalis {

// A voice and the file stream that is its output. Made on the first use, kept, and apart from the voice that speaks
// aloud.
class VozEnFichero {
public:
    virtual ~VozEnFichero() = default;
    virtual void SetFormato(int tipo) = 0;                      // SpeechAudioFormatType
    [[nodiscard]] virtual Fallo Abre(const QString &ruta) = 0;  // to create for write; an existing file is emptied
    [[nodiscard]] virtual Fallo SetVoz(int numero) = 0;         // item of GetVoices; 5: no such item
    virtual void SetVelocidad(int velocidad) = 0;               // -10 to 10
    virtual void SetVolumen(int volumen) = 0;                   // 0 to 100
    // Flags of Speak, without the asynchronous one: returns when it has been spoken or cancelled. 5: the engine
    // couldn't say it.
    [[nodiscard]] virtual Fallo Habla(const QString &texto, int flags) = 0;
    virtual void EsperaFinal() = 0;
    // Whether the engine has skipped a part of what it was to say since Abre: the rest is in the file.
    virtual bool Incompleta() const = 0;
    // Completes the file; the failure is the first thing that went wrong with it since Abre.
    [[nodiscard]] virtual Fallo Cierra() = 0;
    // Ends what Habla waits for; may come in while it does.
    virtual void Cancela() = 0;
};

// Turns a WAV file into an MP3 file.
class ConversorMp3 {
public:
    virtual ~ConversorMp3() = default;
    // `hercios`: rate of the samples in `wav`; `remuestreo`: rate wanted, -1 for the same. False: failed, which has
    // been told; nothing partial stands under `mp3` then.
    virtual bool Convierte(const QString &wav, const QString &mp3, int hercios, int kbps, int remuestreo) = 0;
};

}  // namespace ondalis
