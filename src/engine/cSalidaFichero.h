// The output of a channel whose speech goes into a WAV file: what is written counts as heard at once, so that
// everything a live voice has (word events, restarts of the worker, limits) works for files too, at the engine's speed.
// Brings the engine's rate to the file's. Operations of SalidaAudio come from the player's thread, Destina and Cierra
// from any: they wait until the player has done what it was told before, but not on its own thread, where its events
// come. No Qt.
#pragma once

#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "engine/SalidaAudio.h"
#include "engine/cFicheroWav.h"

namespace ondalis {

class cSalidaFichero final : public SalidaAudio {
public:
    cSalidaFichero();
    ~cSalidaFichero() override;

    // From here on samples go to this file; `hercios` 0: the rate of the first speech, or that of the file that is
    // added to. Several utterances add up. The file exists from here on, with a header. 0 or errno, as
    // cFicheroWav::Abre. A file still open is closed before. Nothing of a speech that was stopped gets into it.
    [[nodiscard]] int Destina(const std::string &ruta, int hercios, cFicheroWav::Modo modo);
    // Completes the file. 0, or the errno of the first thing that failed since Destina (ENOSPC...). Without a file: 0.
    [[nodiscard]] int Cierra();
    // The first failure so far, which may show a second of sound late; what comes after it is swallowed.
    int Error() const;

    void SetDespertador(std::function<void()> despierta) override;
    void SetAsentador(std::function<void()> asienta) override;
    bool Abre(int hz) override;  // always true: without a file samples are dropped
    bool Viva() const override { return true; }
    std::size_t Escribe(const std::int16_t *muestras, std::size_t n) override;
    void Completa() override;
    std::uint64_t Oidas() override;
    void Pausa(bool) override {}
    void Vacia() override;  // what is in the file stays
    void Reposa() override {}

private:
    class Conversor;

    void Asienta();
    int CierraYa();
    void AnotaError(int error);
    bool Prepara();   // the converter that both rates need; false: nothing can be written
    void Descarga();  // the converter's last samples, and all to the disk
    void Guarda(std::span<const std::int16_t> muestras);
    void Vuelca();  // what waits, to the disk

    mutable std::mutex m_cerrojo;  // all below
    std::function<void()> m_asienta;
    cFicheroWav m_fichero;
    std::unique_ptr<Conversor> m_conversor;  // null while both rates are equal
    int m_herciosFichero = 0;                // 0: not known yet
    int m_herciosMotor = 0;
    std::vector<std::int16_t> m_porGuardar;  // a few pieces written at once cost a tenth of the calls
    int m_error = 0;
    std::uint64_t m_oidas = 0;
};

}  // namespace ondalis
