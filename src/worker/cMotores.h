// All engines of the worker as one: an utterance goes to the engine that its voice names. Owned by main.
#pragma once

#include <memory>

#include "worker/Motor.h"
#include "worker/orden/Catalogo.h"

namespace ondalis {

class cMotores final : public Motor {
public:
    // `propio` speaks what no description claims. Descriptions are looked for when first needed.
    explicit cMotores(std::unique_ptr<Motor> propio) : m_propio(std::move(propio)) {}

    void Prepara() override { m_propio->Prepara(); }
    std::vector<TramaVoz> Voces() override;
    std::vector<std::string> Quejas() const override { return m_quejas; }
    void Habla(const Locucion &locucion, Emisor &emisor) override;

private:
    const CatalogoOrden &Catalogo();

    std::unique_ptr<Motor> m_propio;
    std::unique_ptr<CatalogoOrden> m_catalogo;
    std::vector<std::string> m_quejas;
};

}  // namespace ondalis
