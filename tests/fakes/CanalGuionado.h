// A channel that a test plays by hand: it remembers what it was told and says what the script says. Main thread unless
// a test calls Palabra or Fin from another one.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "engine/CanalVoz.h"

namespace ondalis::prueba {

class CanalGuionado : public CanalVoz {
public:
    void SetOyente(OyenteMotor *oyente) override { m_oyente = oyente; }
    void Habla(Locucion locucion) override {
        ordenes.push_back("habla");
        sonando = true;
        enPausa = false;
        locuciones.push_back(std::move(locucion));
        if (alHablar) alHablar();
    }
    void Detiene() override {
        ordenes.push_back("detiene");
        sonando = false;
        enPausa = false;
    }
    void Pausa() override {
        ordenes.push_back("pausa");
        enPausa = true;
    }
    void Reanuda() override {
        ordenes.push_back("reanuda");
        enPausa = false;
    }

    // What the engine says, about the utterance given last unless another number is told.
    std::uint64_t Numero() const { return locuciones.empty() ? 0 : locuciones.back().numero; }
    void Palabra(std::uint32_t posicion) { Palabra(posicion, Numero()); }
    void Palabra(std::uint32_t posicion, std::uint64_t numero) {
        EventoMotor evento;
        evento.numero = numero;
        evento.tipo = EventoMotor::Tipo::Palabra;
        evento.posicion = posicion;
        evento.longitud = 1;
        Emite(evento);
    }
    void Fin() {
        sonando = false;
        Fin(Numero());
    }
    // `motivo`: why the text couldn't be said.
    void Fin(std::uint64_t numero, std::u16string motivo = {}) {
        EventoMotor evento;
        evento.numero = numero;
        evento.tipo = EventoMotor::Tipo::Fin;
        evento.texto = std::move(motivo);
        Emite(evento);
    }
    // A clause of the utterance given last that the engine skips.
    void Salta() {
        EventoMotor aviso;
        aviso.numero = Numero();
        aviso.tipo = EventoMotor::Tipo::Aviso;
        aviso.perdida = true;
        aviso.texto = u"se salta una frase";
        Emite(aviso);
    }
    void Emite(const EventoMotor &evento) {
        if (m_oyente != nullptr) m_oyente->EventoDeMotor(evento);
    }
    bool TieneOyente() const { return m_oyente != nullptr; }

    // The plain text of the spans given last.
    std::u16string Texto() const {
        std::u16string texto;
        if (!locuciones.empty())
            for (const Tramo &tramo : locuciones.back().tramos)
                if (tramo.tipo == TipoTramo::Texto) texto += tramo.texto;
        return texto;
    }

    std::vector<std::string> ordenes;
    std::vector<Locucion> locuciones;
    bool sonando = false;
    bool enPausa = false;
    std::function<void()> alHablar;  // runs inside each Habla

private:
    OyenteMotor *m_oyente = nullptr;
};

}  // namespace ondalis::prueba
