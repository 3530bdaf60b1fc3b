// The batch job of a command line: a text or a file is spoken, or written into an audio file, by an engine that is set
// up from the stored settings, and nothing stays behind. Owned by main, one a process. Main thread.
#pragma once

#include <QString>
#include <functional>

#include "audio/ExtractorTexto.h"
#include "audio/VozEnFichero.h"
#include "reader/cLineaLote.h"
#include "settings/cGeneral.h"
#include "settings/cRegistro.h"
#include "speech/VozECI.h"
#include "speech/VozSAPI5Lote.h"

namespace ondalis {

// The audio file in the making, "~temp.wav".
class TemporalLote {
public:
    virtual ~TemporalLote() = default;
    // Clears the way for it and makes Ruta known. False when it can't be made anywhere.
    virtual bool Prepara() = 0;
    virtual QString Ruta() const = 0;
    // Gives it its final name, never in the place of another file: failure 58.
    [[nodiscard]] virtual Fallo Nombra(const QString &destino) = 0;
    virtual void Borra() = 0;  // only what this process made; harmless when it isn't there
};

// Engines are made when they are asked for: a job for one family never starts the other one's.
struct PuertosLote {
    cGeneral &general;
    cRegistro &registro;
    ExtractorTexto &extractor;
    TemporalLote &temporal;
    std::function<VozECI &()> vozECI;
    std::function<bool()> chequeaSAPI5Compatible;  // logs its own failure
    std::function<VozSAPI5Lote &()> vozSAPI5;
    std::function<bool()> haySonido;    // asked before anything is spoken aloud
    ConversorMp3 *conversor = nullptr;  // null: there are no MP3 files
};

class cLote {
public:
    explicit cLote(PuertosLote puertos) : p(std::move(puertos)) {}

    // False when the line asks for no batch job, and nothing has been done. True when the job is over, well or not: a
    // failure has been logged and shown.
    bool EjecutaLineaComandos(const QString &orden);

    // The process has been asked to end: silence, and the job ends without its file. From an event that comes in while
    // a speech, a conversion or an answer is waited for.
    void Interrumpe();
    bool Interrumpido() const { return m_interrumpido; }

private:
    // What is spoken: a text, or a text file, which the "IBM" engine reads itself.
    struct Materia {
        bool esFichero = false;
        QString texto;
        QString fichero;
    };

    void Trabaja(cLineaLote &linea);
    void PreparaVozIBM();
    bool PreparaVozSAPI5();
    void CasoFichero(const cLineaLote &linea, const QString &fichero);
    void CasoTextoAFichero(cLineaLote &linea, const QString &valor);
    void HablaAlto(const Materia &materia);
    bool Graba(const Materia &materia, const QString &salida);
    bool PreparaSalida(const QString &salida, const QString &fuente);
    bool FinalizaSalida(const QString &salida);
    bool ConvierteAMp3(const QString &salida);
    bool Habla(const Materia &materia, const QString &destino);
    QString LeeTexto(const char *seccion, const char *nombre, const char *defecto);
    int LeeEntero(const char *seccion, const char *nombre, int defecto, int minimo, int maximo);

    PuertosLote p;
    bool m_interrumpido = false;
    VozECI *m_eci = nullptr;  // one of the two: the family of this job
    VozSAPI5Lote *m_sapi5 = nullptr;
};

}  // namespace ondalis
