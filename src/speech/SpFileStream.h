// A WAV file as the output of a SAPI 5 voice: the voice that was made on this stream's channel speaks into it. Owned by
// main. Main thread.
#pragma once

#include "engine/cSalidaFichero.h"
#include "settings/Fallo.h"

namespace ondalis {

// The failure that an errno of a file that is written stands for: 61 no room, 70 no permission, 76 no such folder, 75
// the rest; none for 0.
[[nodiscard]] Fallo FalloDeFichero(int error, std::source_location lugar = std::source_location::current());

class SpFileStream {
public:
    enum Modo : int { SSFMCreateForWrite = 3 };

    // `salida`: the output of the voice's channel; must outlive this.
    explicit SpFileStream(cSalidaFichero &salida) : m_salida(salida) {}

    // SpeechAudioFormatType of 16-bit mono (6, 10, 14, 18, 22, 26, 30, 34, 38); 0 and others: the engine's own rate.
    void SetFormatType(int tipo) { m_formato = tipo; }
    int FormatType() const { return m_formato; }
    // Mode 3: a new file, an existing one is emptied. Other modes are failure 5. Else 61, 70, 75, 76 as the disk says.
    // What was open before is closed.
    [[nodiscard]] Fallo Open(const QString &ruta, int modo);
    // Completes the file; the failure is the first thing that went wrong since Open. Harmless when closed.
    [[nodiscard]] Fallo Close();

private:
    cSalidaFichero &m_salida;
    int m_formato = 0;
};

}  // namespace ondalis
