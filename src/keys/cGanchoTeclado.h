// The hearing of typed keys: lets the presses of all programs through but for those into a field that hides them. Each
// program's focused object is known from its own focus events, one question a focus change. While an answer is on its
// way, for a moment after a change of window, and behind a Tab, presses wait in order; those that waited for an answer
// that never came are lost. A program that says nothing is heard. Owned by main. Main thread.
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
    // How long a window that comes to the front has for saying where its focus is. A program takes milliseconds, but
    // one that is just starting on a busy machine takes its time for reaching the accessibility service at all. One
    // that has let its time pass is taken for one that never says anything, until it does.
    static constexpr int kEsperaFocoMs = 1500, kEsperaCalladoMs = 300;
    // And a program that does say it, behind a Tab, which may have moved the focus.
    static constexpr int kEsperaTabMs = 300;
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
    bool Habla(int proceso) const;
    bool Esperando() const;
    void DaSuMomento(int milisegundos);
    void AcabaSuMomento();
    void Entrega(const TeclaEscrita &tecla);
    void Dice(const TeclaEscrita &tecla);
    void SueltaEspera();

    TecladoSistema &m_teclado;
    FocoAccesible &m_foco;
    Temporizador &m_espera;
    const Reloj &m_reloj;
    std::function<void(const TeclaEscrita &)> m_tecleada;
    bool m_encendido = false;
    int m_enFrente = 0;          // process of the window in front
    bool m_enSuMomento = false;  // it has its time for saying where its focus is
    bool m_trasTab = false;      // because of a Tab
    std::map<int, Programa> m_programas;
    std::set<int> m_conVentana;  // processes that have been in front
    std::set<int> m_callados;    // those that have let their time pass
    int m_suelto = 0;            // the process without windows that spoke last, as a sandbox's proxy does
    std::chrono::nanoseconds m_sueltoDesde{};
    std::deque<TeclaEscrita> m_enEspera;
};

}  // namespace ondalis
