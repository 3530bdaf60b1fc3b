// The pump of one live voice without its thread: joins worker, bookkeeping and player. Everything happens in Paso and
// in the orders, each returns at once, and the clock is a port, so that tests drive it step by step. One thread.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "engine/CanalVoz.h"
#include "engine/LanzadorMotor.h"
#include "engine/Reloj.h"
#include "engine/cEnlaceMotor.h"
#include "engine/cRecorrido.h"
#include "engine/cReproductor.h"

namespace ondalis {

// How long a worker may keep silent while there is room for its answers.
struct PlazosMotor {
    std::chrono::milliseconds primera{2000};  // to the first answer, unless the engine has a limit of its own
    std::chrono::milliseconds entre{1000};    // between answers
    std::map<std::string, std::chrono::milliseconds> deMotor;  // to the first answer, by engine name

    // Those for a file, where nobody listens: a worker behind all others on a busy machine isn't a hung one.
    PlazosMotor SinPrisa() const;
};

class cBomba {
public:
    // What Paso waits for: `descriptor` (or -1) becoming ready for `sucesos` (poll's), or `hasta`, or a wake-up.
    struct Espera {
        int descriptor = -1;
        short sucesos = 0;
        std::optional<std::chrono::nanoseconds> hasta;
    };

    // All must outlive the pump.
    cBomba(LanzadorMotor &lanzador, SalidaAudio &salida, const Reloj &reloj, PlazosMotor plazos);

    void SetDespertador(std::function<void()> despierta) { m_reproductor.SetDespertador(std::move(despierta)); }

    // Starts a worker ahead of the first utterance.
    void Calienta();

    void Habla(Locucion locucion);
    void Detiene();
    void Pausa(bool enPausa);

    // Does all that can be done now without waiting; a bounded amount, so that orders are seen soon.
    void Paso();
    // The next event that is due, one at a time, after Paso.
    std::optional<EventoMotor> SiguienteEvento();
    Espera QueEspera();

    std::uint64_t Numero() const { return m_numero; }  // the utterance under way; 0: none
    const cReproductor &Reproductor() const { return m_reproductor; }

private:
    void Comunica();
    cEnlaceMotor::Lectura LeeTramas();
    bool Recibe(Trama &trama);
    bool Recibe(TramaPcm &trama);
    void Acaba();
    void Falla(const char16_t *motivo);
    void Pide();
    void RevisaPlazo();
    void ArmaPlazo();
    bool Retenida();
    bool Terminada() const { return m_numero != 0 && !m_debe && m_reproductor.TodoOido(); }
    // What a trouble takes of the text: nothing, a part, all that is left.
    enum class Perdida { Nada, Parte, Resto };
    void AvisaApuro(std::u16string texto, Perdida perdida);

    LanzadorMotor &m_lanzador;
    const Reloj &m_reloj;
    PlazosMotor m_plazos;
    cReproductor m_reproductor;
    cRecorrido m_recorrido;
    std::unique_ptr<cEnlaceMotor> m_enlace;

    std::uint64_t m_numero = 0;
    bool m_debe = false;     // the worker owes answers for m_numero
    bool m_formato = false;  // this worker has told its rate for m_numero
    bool m_respondido = false;
    bool m_pausa = false;
    bool m_retenida = false;  // the buffer is full: the socket isn't read and no deadline runs
    std::optional<std::chrono::nanoseconds> m_plazo;
    bool m_prorrogado = false;
    std::uint64_t m_enviadosAlArmar = 0;
    unsigned m_generacion = 0;  // of the worker: counts its failures
    std::deque<EventoMotor> m_avisos;
    // What went wrong last with m_numero; told with its end if the text couldn't be finished or nothing was heard.
    std::u16string m_apuro;
    bool m_inacabada = false;
    bool m_suena = false;  // some of its sound isn't silence
};

}  // namespace ondalis
