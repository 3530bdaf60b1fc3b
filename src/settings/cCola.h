// The main thread's one queue of events: engine starts, engine events, hot keys, bus calls, ticks. Owned by main; every
// adapter and engine puts its events here, so that their order is decided in one place. Pon may be called from any
// thread; everything else on the main thread.
#pragma once

#include <QObject>
#include <deque>
#include <functional>
#include <mutex>
#include <vector>

namespace ondalis {

class cCola : public QObject {
    Q_OBJECT
public:
    // Delivered in this order whatever the order of arrival; first in, first out within a class.
    enum class Clase { Inicio, Motor, Tecla, Orden, Tic };
    static constexpr int NumClases = 5;

    explicit cCola(QObject *padre = nullptr);
    ~cCola() override;

    // Queues `accion`; it runs from the event loop or from DejaCorrer. A Tecla waits while any handler of this queue
    // runs, unless a modal window is open; a Tic that would run inside another Tic is dropped, with the same exception.
    void Pon(Clase clase, std::function<void()> accion);

    // "Let pending events run": delivers everything that may be delivered now, then repaints. No user input.
    void DejaCorrer();

    // Runs `accion` when the outermost handler has returned; at once if none is running.
    void AlTerminar(std::function<void()> accion);

    // Blocks the caller until `listo` is true or `limiteMs` has passed (-1: no limit), asking again whenever an event
    // or a wake-up (Despierta) comes. Nothing of the queue is delivered meanwhile, user input waits, but windows are
    // painted and the X server and the bus are answered. Returns what `listo` said last.
    bool EsperaBloqueando(const std::function<bool()> &listo, int limiteMs);
    // Makes EsperaBloqueando ask again, and what may be delivered by now be delivered: who opens a modal window inside
    // a handler calls it for the keys that waited. Any thread.
    void Despierta();

    // While one lives nothing is delivered; what comes waits.
    class Retencion {
    public:
        explicit Retencion(cCola &cola) : m_cola(cola) { ++m_cola.m_retenciones; }
        ~Retencion();
        Retencion(const Retencion &) = delete;
        Retencion &operator=(const Retencion &) = delete;

    private:
        cCola &m_cola;
    };

    // True while a handler of this queue is on the stack.
    bool EnManejador() const { return m_profundidad > 0; }

    // How the queue learns that a modal window is open, and how it repaints; both empty until the window system sets
    // them.
    void SetHayModal(std::function<bool()> hayModal) { m_hayModal = std::move(hayModal); }
    void SetRepinta(std::function<void()> repinta) { m_repinta = std::move(repinta); }

    // Drops all that is queued and accepts nothing more: the end of the program. AlTerminar still works.
    void Cierra();

protected:
    bool event(QEvent *evento) override;

private:
    friend class Retencion;
    bool EntregaUno();
    void PideEntrega();

    std::mutex m_cerrojo;
    std::deque<std::function<void()>> m_pendientes[NumClases];
    bool m_pedida = false;   // an event to ourselves is on its way; under m_cerrojo
    bool m_cerrada = false;  // under m_cerrojo
    int m_retenciones = 0;
    int m_profundidad = 0;
    int m_ticsEnCurso = 0;
    std::vector<std::function<void()>> m_alTerminar;
    std::function<bool()> m_hayModal;
    std::function<void()> m_repinta;
};

}  // namespace ondalis
