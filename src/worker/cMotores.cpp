#include "worker/cMotores.h"

#include <cstdio>

#include "worker/cMotorEspeak.h"
#include "worker/orden/cMotorOrden.h"

namespace ondalis {

const CatalogoOrden &cMotores::Catalogo() {
    // Whoever asked for the list has been told already what is wrong with the descriptions.
    if (!m_catalogo)
        m_catalogo = std::make_unique<CatalogoOrden>(
            LeeCatalogo(CarpetasDeMotores(), [](const std::string &, const std::string &) {}));
    return *m_catalogo;
}

std::vector<TramaVoz> cMotores::Voces() {
    auto voces = m_propio->Voces();
    m_quejas.clear();
    m_catalogo = std::make_unique<CatalogoOrden>(
        LeeCatalogo(CarpetasDeMotores(), [this](const std::string &fichero, const std::string &motivo) {
            m_quejas.push_back(fichero + ": " + motivo);
            std::fprintf(stderr, "ondalis-motor: %s\n", m_quejas.back().c_str());
        }));
    for (TramaVoz &voz : TramasDe(*m_catalogo)) voces.push_back(std::move(voz));
    return voces;
}

void cMotores::Habla(const Locucion &locucion, Emisor &emisor) {
    if (locucion.voz.motor == "espeak") return m_propio->Habla(locucion, emisor);
    const auto motor = Catalogo().find(locucion.voz.motor);
    if (motor == Catalogo().end()) return m_propio->Habla(locucion, emisor);
    cMotorOrden(motor->first, motor->second).Habla(locucion, emisor);
}

std::unique_ptr<Motor> CreaMotor(int) { return std::make_unique<cMotores>(std::make_unique<cMotorEspeak>()); }

}  // namespace ondalis
