// What both speech controls have in common: utterance numbers, the roles, and the delivery of Start, Word and Stop
// exactly as the session relies on them. Owns no channel. Main thread; engine events reach it through the queue.
//
// The rules, for an utterance n whose role is 1 for a notice or test, 4 if EstadoVoz is 4 when it is accepted (what it
// purges has had its Stop by then), else 0:
//  - accepted: not paused any more; Start n is queued ahead of keys, ticks and bus calls, never inside the call; Words
//    as heard; exactly one Stop. A notice has no Words.
//  - end: Stop n when the last sample has been played.
//  - explicit stop: silence, events of n not yet delivered are withdrawn, Stop n inside the call under EstadoVoz as it
//    stands. Idle: nothing.
//  - purge by a new call: as explicit stop, with EstadoVoz at n's role during Stop n; a notice then puts 1, a reading
//    leaves what Stop left; then Start n+1 is queued.
//  - paused: no Word and no Stop until the resume; they come then.
//  - a resume takes effect when the running handler ends, so that a stop in the same handler stays inaudible; with
//    none running, at the queue's next delivery.
// A handler may call the control again, also from Stop: a call that purges goes on until nothing of others is left, so
// that what returns last is what sounds.
#pragma once

#include <QString>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "engine/CanalVoz.h"
#include "settings/cCola.h"
#include "settings/cLog.h"
#include "speech/EstadoVoz.h"

namespace ondalis {

// The three events of an engine, as the main window forwards them to its controller.
struct EventosVoz {
    std::function<void()> alEmpezar;              // Voz_StartSpeaking
    std::function<void()> alTerminar;             // Voz_StopSpeaking
    std::function<void(std::int32_t)> alPalabra;  // Voz_WordPosition: 0-based UTF-16 index in the text given
};

class ControlHabla : private OyenteMotor {
public:
    ControlHabla(CanalVoz &canal, cCola &cola, cEstadoVoz &estado, cLog &log);
    ~ControlHabla() override;
    ControlHabla(const ControlHabla &) = delete;
    ControlHabla &operator=(const ControlHabla &) = delete;

    void SetEventos(EventosVoz eventos) { m_eventos = std::move(eventos); }

protected:
    enum class Modo { Lectura, LecturaEsperando, Aviso, AvisoEsperando };

    // Accepts an utterance that has passed its markup check. The two that wait block until it has been heard or stopped
    // and queue its Start and Stop afterwards; they have no Words.
    void Acepta(const ParametrosVoz &voz, std::vector<Tramo> tramos, Modo modo);
    void Pausa();
    void Reanuda();
    void Detiene();  // explicit stop
    // A resume that hasn't taken effect yet counts as one that has.
    bool EnPausa() const { return m_enPausa && !m_reanudaPendiente; }
    bool EnCurso() const { return m_actual.has_value(); }  // its Stop hasn't been raised yet
    // Blocks until what is being spoken has been heard or stopped, or `limiteMs` has passed (-1: no limit). True: it
    // has.
    bool EsperaActual(int limiteMs);
    // Why the engine couldn't say what was waited for last to its end, or nothing of it; empty: it could, or it was
    // stopped.
    QString Apuro() const;
    // Whether the engine has skipped a part of what was accepted last; of what was stopped it has not.
    bool Incompleta() const;
    cLog &Log() { return m_log; }
    // What a waiting notice may take beyond two seconds a character before it is given up and logged.
    void SetMargenEspera(int milisegundos) { m_margenEsperaMs = milisegundos; }

private:
    void EventoDeMotor(const EventoMotor &evento) override;  // channel's thread

    struct Emision {
        std::uint64_t numero;
        std::int32_t rol;
        bool sinPalabras;
        std::int64_t ultimaPosicion = -1;
    };

    // Silences m_actual and withdraws all of its events; the Stop is up to the caller.
    Emision Retira();
    void LanzaStop();
    void EntregaInicio(std::uint64_t numero);
    void EntregaEvento();
    void ReanudaYa(std::uint64_t turno);
    void PideEntrega();  // any thread
    bool EsperaHasta(std::uint64_t numero, int limiteMs);
    void EsperaFin(std::uint64_t numero, int limiteMs);

    struct Interno;
    std::shared_ptr<Interno> m_interno;  // what queued events refer to; outlives the control by the queue's delay

    CanalVoz &m_canal;
    cCola &m_cola;
    cEstadoVoz &m_estado;
    cLog &m_log;
    EventosVoz m_eventos;
    std::optional<Emision> m_actual;  // the one whose Stop is still owed
    bool m_enPausa = false;           // the channel is paused; Words and Stop are held back
    bool m_reanudaPendiente = false;
    int m_margenEsperaMs = 30'000;     // a worker may have to be started again meanwhile
    std::uint64_t m_turnoReanuda = 0;  // tells a deferred resume that it has been overtaken
};

}  // namespace ondalis
