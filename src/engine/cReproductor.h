// Plays one utterance's samples on the real output, and on the null one while there is no server. Keeps what has not
// been heard yet, so that a stream that comes back in mid-reading goes on at the very sample. Owned by the pump; its
// thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "engine/Reloj.h"
#include "engine/SalidaAudio.h"
#include "engine/cSalidaNula.h"

namespace ondalis {

class cReproductor {
public:
    // Both must outlive the player.
    cReproductor(SalidaAudio &real, const Reloj &reloj);
    ~cReproductor();
    cReproductor(const cReproductor &) = delete;
    cReproductor &operator=(const cReproductor &) = delete;

    // `despierta` is called from any thread when Bombea has something to do.
    void SetDespertador(std::function<void()> despierta);

    // Silence at once; everything is dropped and counting starts at 0. Not paused any more.
    void Calla();
    // The samples that come now are of this rate. Once after Calla.
    void Empieza(int hz);
    // 0 before Empieza.
    int Hercios() const { return m_hz; }
    void Anade(std::span<const std::int16_t> muestras);
    // No more samples are coming.
    void Termina() { m_terminado = true; }
    void Pausa(bool enPausa);
    // Everything was heard: costs nothing from here on.
    void Reposa();

    // Moves samples to the output, looks after the server, and brings Oidas up to date.
    void Bombea();

    std::uint64_t Total() const { return m_total; }  // samples given
    std::uint64_t Oidas() const { return m_oidas; }  // samples heard when Bombea ran last
    bool TodoOido() const { return m_oidas == m_total; }
    std::size_t Guardadas() const { return m_muestras.size() - m_cabeza; }
    // A few seconds are waiting: take no more from the worker until EspacioDesde has been reached.
    bool Lleno();
    bool EnNula() const { return m_donde == Donde::Nula; }

    // When `oidas` samples will have been heard, if nothing stops the sound; nothing while it doesn't move.
    std::optional<std::chrono::nanoseconds> MomentoDe(std::uint64_t oidas) const;
    // When Bombea wants to run by itself; nothing while only the waker matters.
    std::optional<std::chrono::nanoseconds> Proximo() const;

    static constexpr int kSegundosGuardados = 4;

private:
    enum class Donde : std::uint8_t { Ninguna, Real, Nula };

    SalidaAudio &Salida() { return m_donde == Donde::Real ? m_real : m_nula; }
    void Calienta();
    void CompruebaReal(bool despertado);
    bool IntentaReal();
    void Toma(Donde donde);
    void Escucha();
    void Escribe();
    void VigilaAtasco();
    void Aplaza();

    SalidaAudio &m_real;
    const Reloj &m_reloj;
    cSalidaNula m_nula;
    std::atomic<bool> m_despertado{true};  // the server may be there already

    Donde m_donde = Donde::Ninguna;
    int m_hz = 0;      // of the utterance
    int m_hzReal = 0;  // of the real stream
    bool m_pausa = false;
    bool m_terminado = false;
    bool m_completada = false;  // the present output knows that nothing follows
    bool m_lleno = false;

    std::vector<std::int16_t> m_muestras;  // from m_cabeza on: those not heard yet
    std::size_t m_cabeza = 0;
    std::uint64_t m_total = 0;
    std::uint64_t m_oidas = 0;
    std::uint64_t m_escritas = 0;  // given to the present output, on the utterance's time line
    std::uint64_t m_base = 0;      // where the present output began

    std::chrono::nanoseconds m_ultimoAvance{0};
    std::chrono::nanoseconds m_proximoIntento{0};
    std::chrono::nanoseconds m_noAntes{0};
    std::chrono::nanoseconds m_intervalo;
    bool m_atascada = false;  // the real output stood still and was given up
};

}  // namespace ondalis
