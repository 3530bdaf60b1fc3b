// The hearing of typed keys: lets the presses of all programs through but for those into a field that hides them. Each
// program's focused object is known from its own focus events, one question a focus change. While an answer is on its
// way, and for a moment after a change of window, presses wait in order; those that waited for an answer that never
// came are lost. A program that says nothing is heard. Owned by main. Main thread.
#pragma once

#include <deque>
#include <map>
#include <set>

#include "engine/Reloj.h"
#include "keys/TecladoSistema.h"
#include "settings/Temporizador.h"

namespace ondalis {

class cGanchoTeclado : public GanchoTeclado {
public:
    // How long a window that comes to the front has for saying where its focus is. A program takes milliseconds; one
    // that has said nothing by then counts as one that never does.
    static constexpr int kEsperaFocoMs = 300;
    // Presses waiting at most: beyond, the oldest are dropped, since what waits so long isn't typed by a hand.
    static constexpr std::size_t kMaxEnEspera = 256;

    cGanchoTeclado(TecladoSistema &teclado, FocoAccesible &foco, Temporizador &espera, const Reloj &reloj);

    void IniciaHook() override;
    void TerminaHook() override;
    void SetTecleada(std::function<void(const TeclaEscrita &)> tecleada) override { m_tecleada = std::move(tecleada); }

private:
    using Rol = FocoAccesible::Rol;
    struct Programa {
        Rol rol = Rol::Desconocido;
        bool preguntado = false;
    };

    void Tecla(const TeclaEscrita &tecla);
    void Ventana(int proceso);
    void Pregunta(int proceso);
    void Responde(int proceso, Rol rol);
    void AnotaSuelto(int proceso);
    bool Esperando() const;
    void Entrega(const TeclaEscrita &tecla);
    void SueltaEspera();

    TecladoSistema &m_teclado;
    FocoAccesible &m_foco;
    Temporizador &m_espera;
    const Reloj &m_reloj;
    std::function<void(const TeclaEscrita &)> m_tecleada;
    bool m_encendido = false;
    int m_enFrente = 0;            // process of the window in front
    bool m_recienLlegada = false;  // it has its moment for saying where its focus is
    std::map<int, Programa> m_programas;
    std::set<int> m_conVentana;  // processes that have been in front
    int m_suelto = 0;            // the process without windows that spoke last, as a sandbox's proxy does
    std::chrono::nanoseconds m_sueltoDesde{};
    std::deque<TeclaEscrita> m_enEspera;
};

}  // namespace ondalis
