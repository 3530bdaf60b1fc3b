// The live voice: one pump thread that owns the worker, its deadlines and restarts, and the samples. The orders only
// leave word for it. Owned by main; the orders may come from any thread, also from the listener.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

#include "engine/CanalVoz.h"
#include "engine/cBomba.h"

namespace ondalis {

class cCanalMotor final : public CanalVoz {
public:
    // All must outlive the channel. The first worker is started at once, on the pump thread.
    cCanalMotor(LanzadorMotor &lanzador, SalidaAudio &salida, const Reloj &reloj, PlazosMotor plazos = {});
    // Silence, the worker's end, and no more events.
    ~cCanalMotor() override;
    cCanalMotor(const cCanalMotor &) = delete;
    cCanalMotor &operator=(const cCanalMotor &) = delete;

    void SetOyente(OyenteMotor *oyente) override;
    void Habla(Locucion locucion) override;
    void Detiene() override;
    void Pausa() override { PonPausa(true); }
    void Reanuda() override { PonPausa(false); }

private:
    // Only the last of each kind counts, so the orders that wait are never more than this.
    struct Ordenes {
        std::optional<Locucion> habla;
        bool detiene = false;
        std::optional<bool> pausa;
    };

    void PonPausa(bool enPausa);
    void Despierta();
    void Asienta();  // waits until the orders given so far are carried out; from the pump's thread: at once
    void Corre();
    bool Cumple();
    void Entrega(const EventoMotor &evento);
    void Duerme();

    const Reloj &m_reloj;
    const int m_timbre;  // eventfd
    std::atomic<std::uint64_t> m_vigente{0};
    std::atomic<bool> m_hayOrdenes{false};

    SalidaAudio &m_salida;

    std::mutex m_cerrojo;  // the next five
    std::condition_variable m_asentado;
    Ordenes m_ordenes;
    bool m_cierra = false;
    std::uint64_t m_dadas = 0, m_cumplidas = 0;  // orders, counted

    std::mutex m_cerrojoOyente;  // the next two
    std::condition_variable m_entregado;
    OyenteMotor *m_oyente = nullptr;
    bool m_entregando = false;

    cBomba m_bomba;  // the pump thread's
    std::thread m_hilo;
};

}  // namespace ondalis
