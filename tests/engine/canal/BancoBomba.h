// A pump on scripted parts, driven step by step.
#pragma once

#include <string>
#include <vector>

#include "engine/cBomba.h"
#include "fakes/Locuciones.h"
#include "fakes/MotorGuion.h"
#include "fakes/RelojFalso.h"
#include "fakes/SalidaGuion.h"

namespace ondalis {

struct BancoBomba {
    static constexpr int kHz = 22050;

    BancoBomba() {
        bomba.SetDespertador([] {});
        bomba.Paso();
    }

    // Until nothing changes any more; events go to `eventos`.
    void Paso() {
        for (int i = 0; i < 20; ++i) {
            for (auto &motor : lanzador.motores) motor->Empuja();
            bomba.Paso();
            while (auto evento = bomba.SiguienteEvento()) eventos.push_back(*evento);
        }
    }
    void Avanza(std::chrono::nanoseconds cuanto) {
        reloj.Avanza(cuanto);
        Paso();
    }
    // The device plays `n` samples, in pieces that its room allows.
    void Suena(std::size_t n) {
        while (n > 0) {
            const std::size_t parte = std::min<std::size_t>(n, 500);
            Paso();
            salida.Suena(parte);
            n -= parte;
            Paso();
        }
    }
    MotorGuion &Motor() { return lanzador.Ultimo(); }
    // The worker takes the request and tells its rate.
    Locucion Contesta() {
        std::optional<Locucion> peticion;
        for (int i = 0; i < 1000 && !peticion; ++i) {  // a long one comes in many pieces
            Paso();
            peticion = Motor().Peticion();
        }
        if (!peticion) return {};
        Motor().Manda(TramaFormato{peticion->numero, kHz});
        return *peticion;
    }

    // "p3" a word at 3, "m:x" a mark, "f" the end, "a" a line for the log; behind each "/n" when `conNumero`.
    std::string Eventos(bool conAvisos = false) const {
        std::string texto;
        for (const EventoMotor &e : eventos) {
            if (e.tipo == EventoMotor::Tipo::Aviso && !conAvisos) continue;
            if (!texto.empty()) texto += ' ';
            switch (e.tipo) {
                case EventoMotor::Tipo::Palabra: texto += 'p' + std::to_string(e.posicion); break;
                case EventoMotor::Tipo::Marca: texto += "m:" + std::string(e.texto.begin(), e.texto.end()); break;
                case EventoMotor::Tipo::Fin: texto += 'f' + std::to_string(e.numero); break;
                case EventoMotor::Tipo::Aviso: texto += 'a'; break;
            }
        }
        return texto;
    }
    std::size_t Avisos() const {
        std::size_t n = 0;
        for (const EventoMotor &e : eventos) n += e.tipo == EventoMotor::Tipo::Aviso ? 1 : 0;
        return n;
    }

    RelojFalso reloj;
    LanzadorGuion lanzador;
    SalidaGuion salida;
    cBomba bomba{lanzador, salida, reloj, {}};
    std::vector<EventoMotor> eventos;
};

}  // namespace ondalis
