// Command engines as an engine of the worker: each sentence is one call of the description's program, and the next one
// is made while the former is sent. A call that fails is told and left out. Owned by main; its only thread.
#pragma once

#include <deque>
#include <optional>

#include "worker/Motor.h"
#include "worker/Recorrido.h"
#include "worker/orden/Catalogo.h"
#include "worker/orden/Onda.h"
#include "worker/orden/PiezaOrden.h"
#include "worker/orden/cProcesoOrden.h"

namespace ondalis {

class cMotorOrden final : public Motor {
public:
    // `motor` and its description must outlive this.
    cMotorOrden(std::string nombre, const MotorDescrito &motor) : m_nombre(std::move(nombre)), m_motor(motor) {}

    void Prepara() override {}
    std::vector<TramaVoz> Voces() override { return {}; }  // the catalogue tells them
    void Habla(const Locucion &locucion, Emisor &emisor) override;

private:
    struct Tarea {
        Paso paso;
        EstadoHabla estado;
        const VozOrden *voz = nullptr;
        Pieza pieza;
        double estirado = 1;  // factor left to libsonic
        std::unique_ptr<cProcesoOrden> proceso;
        std::unique_ptr<cProcesoOrden> ayuda;  // tells what the words' times are found by; may be null
    };
    class Vuelo;

    const VozOrden *Voz(const std::string &id) const;
    std::uint32_t Hercios(const VozOrden &voz) const;
    void Encarga(Tarea &tarea) const;
    void EncargaAyuda(Tarea &tarea, double palabrasMinuto) const;
    std::vector<std::string> Argumentos(const std::vector<std::string> &plantilla, const Tarea &tarea,
                                        const std::string &texto) const;
    bool Siguiente(Vuelo &vuelo) const;
    bool TomaPieza(Vuelo &vuelo, const Paso &paso) const;
    bool Dice(Tarea &tarea, Vuelo &vuelo) const;
    Onda Espera(Tarea &tarea, Vuelo &vuelo) const;
    void EsperaAyuda(Tarea &tarea, Vuelo &vuelo) const;
    std::vector<std::uint64_t> Inicios(const Tarea &tarea, const Onda &onda) const;
    bool Emite(const Tarea &tarea, Onda &&onda, Vuelo &vuelo) const;
    Onda LaOnda(const Tarea &tarea) const;

    std::string m_nombre;
    const MotorDescrito &m_motor;
};

}  // namespace ondalis
