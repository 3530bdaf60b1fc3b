// A voice channel that is made with its first utterance: the family that isn't in use costs no worker. Owned by main.
// Main thread.
#pragma once

#include <functional>
#include <memory>

#include "engine/CanalVoz.h"

namespace ondalis {

class cCanalPerezoso final : public CanalVoz {
public:
    explicit cCanalPerezoso(std::function<std::unique_ptr<CanalVoz>()> crea) : m_crea(std::move(crea)) {}

    // Makes the channel, and with it its worker, ahead of the first utterance.
    void Calienta() {
        if (m_canal) return;
        m_canal = m_crea();
        m_canal->SetOyente(m_oyente);
    }
    void SetOyente(OyenteMotor *oyente) override {
        m_oyente = oyente;
        if (m_canal) m_canal->SetOyente(oyente);
    }
    void Habla(Locucion locucion) override {
        Calienta();
        m_canal->Habla(std::move(locucion));
    }
    void Detiene() override {
        if (m_canal) m_canal->Detiene();
    }
    void Pausa() override {
        if (m_canal) m_canal->Pausa();
    }
    void Reanuda() override {
        if (m_canal) m_canal->Reanuda();
    }

private:
    std::function<std::unique_ptr<CanalVoz>()> m_crea;
    std::unique_ptr<CanalVoz> m_canal;
    OyenteMotor *m_oyente = nullptr;
};

}  // namespace ondalis
