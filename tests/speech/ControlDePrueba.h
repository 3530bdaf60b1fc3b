// A speech control with its protected operations open, and a diary of what its handlers hear.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "fakes/CanalGuionado.h"
#include "fakes/RegistroPropio.h"
#include "speech/ControlHabla.h"

namespace ondalis::prueba {

class ControlDePrueba : public ControlHabla {
public:
    using ControlHabla::Acepta;
    using ControlHabla::ControlHabla;
    using ControlHabla::Detiene;
    using ControlHabla::EnCurso;
    using ControlHabla::EnPausa;
    using ControlHabla::Modo;
    using ControlHabla::Pausa;
    using ControlHabla::Reanuda;
    using ControlHabla::SetMargenEspera;

    void Lee() { Acepta({}, TextoDePrueba(), Modo::Lectura); }
    void Avisa() { Acepta({}, TextoDePrueba(), Modo::Aviso); }
    void AvisaYEspera() { Acepta({}, TextoDePrueba(), Modo::AvisoEsperando); }

    static std::vector<Tramo> TextoDePrueba() {
        Tramo tramo;
        tramo.texto = u"uno dos tres";
        tramo.cortes = {{0, 0}};
        return {tramo};
    }
};

// Everything that a control needs, and the diary: "Start", "Word 4", "Stop 0" (with EstadoVoz as the handler found it).
struct Banco {
    RegistroPropio registro;
    cCola cola;
    cEstadoVoz estado;
    CanalGuionado canal;
    std::vector<std::string> diario;

    EventosVoz Eventos() {
        EventosVoz eventos;
        eventos.alEmpezar = [this] { diario.push_back("Start"); };
        eventos.alTerminar = [this] { diario.push_back("Stop " + std::to_string(estado.valor)); };
        eventos.alPalabra = [this](std::int32_t pos) { diario.push_back("Word " + std::to_string(pos)); };
        return eventos;
    }
    std::vector<std::string> Saca() { return std::exchange(diario, {}); }
    // Runs `accion` as the handler of a hot key, with whatever is ahead of it.
    void ComoTecla(std::function<void()> accion) {
        cola.Pon(cCola::Clase::Tecla, std::move(accion));
        cola.DejaCorrer();
    }
};

class ControlHablaTest : public testing::Test {
protected:
    void SetUp() override { control.SetEventos(banco.Eventos()); }
    void Entrega() { banco.cola.DejaCorrer(); }

    Banco banco;
    CanalGuionado &canal = banco.canal;
    cEstadoVoz &estado = banco.estado;
    ControlDePrueba control{canal, banco.cola, estado, banco.registro.Log()};
};

}  // namespace ondalis::prueba
