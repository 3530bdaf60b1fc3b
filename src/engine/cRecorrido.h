// How far one utterance has come: the worker's words and marks on the played time line, and where to go on when a
// worker fails. Positions of each worker count from its own first sample; here they are joined. Pure bookkeeping, owned
// by the pump; its thread.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

#include "engine/CanalVoz.h"
#include "engine/Locucion.h"

namespace ondalis {

class cRecorrido {
public:
    enum class Remedio : std::uint8_t {
        Reintenta,  // send Peticion() to a new worker
        Salta,      // the same, a clause was left out
        Acaba,      // nothing is left to be said
        Abandona,   // too many failures without a sound: the text can't be finished
    };

    void Empieza(Locucion locucion);
    // What the worker is to be given: the utterance from where it has come to, without the marks already passed; behind
    // a failure only the clause under suspicion, so that no innocent one is lost with it.
    Locucion Peticion() const;
    const ParametrosVoz &Voz() const { return m_locucion.voz; }

    // From the worker, in its own samples. False: so many events without sound that it can only be garbage.
    [[nodiscard]] bool Palabra(std::uint64_t muestra, std::uint32_t posicion, std::uint32_t longitud);
    [[nodiscard]] bool Marca(std::uint64_t muestra, std::u16string nombre);
    void Recibidas(std::uint64_t muestras) { m_total += muestras; }
    // The worker has said all of Peticion(). True: there is another one to be sent.
    [[nodiscard]] bool Sigue();
    // Nothing more will be said.
    void Acaba();
    // The worker failed. What was received with its sound stays.
    Remedio Falla();

    // The next event that is due when `oidas` samples have been heard; Word and Mark only.
    std::optional<EventoMotor> Siguiente(std::uint64_t oidas);
    // How many samples must have been heard for the next event.
    std::optional<std::uint64_t> OidasParaSiguiente() const;
    std::uint64_t Total() const { return m_total; }

    static constexpr std::size_t kMaxEventos = 65536;
    static constexpr int kMaxFallosSeguidos = 8;

private:
    struct Suceso {
        std::uint64_t muestra = 0;
        bool esMarca = false;
        std::uint32_t posicion = 0;
        std::uint32_t longitud = 0;
        std::u16string nombre;
        std::size_t tramo = 0;  // Marca: behind which span the next one is looked for
    };

    bool Anade(Suceso suceso);
    void Retrocede();
    void QuitaMarcasPasadas();

    Locucion m_locucion;
    std::deque<Suceso> m_sucesos;
    std::uint64_t m_total = 0;  // samples received, of all workers
    std::uint64_t m_base = 0;   // of those before the present worker
    bool m_acabado = false;
    std::uint32_t m_finFuente = 0;

    // Behind the last word and mark received, and the same for those that will stand if the worker fails now.
    std::int64_t m_ultimaPosicion = -1;
    std::size_t m_tramoMarca = 0;
    std::int64_t m_posicionOida = -1;
    std::uint32_t m_finOido = 0;
    std::size_t m_tramoOido = 0;

    std::optional<std::uint32_t> m_hasta;  // Peticion() ends at this source offset
    std::int64_t m_clausulaFallida = -1;   // the end of the clause that failed last
    std::uint64_t m_totalAlFallar = 0;
    std::uint32_t m_desdeAlFallar = 0;
    int m_fallosSeguidos = 0;
};

}  // namespace ondalis
