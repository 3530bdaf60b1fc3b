// The reading as a desktop's player controls see it: playing, paused or stopped, what may be done, and a title. It
// reads the menu's state and presses the hot keys' commands; the session doesn't know of it. Owned by main. Main
// thread.
#pragma once

#include <QString>
#include <functional>

#include "reader/MenuIcono.h"
#include "settings/cCola.h"

namespace ondalis {

class cReproduccion {
public:
    enum class Estado { Parada, Sonando, EnPausa };

    // `pulsa`: what a hot key's name runs. `texto`: the text of the reading, of which the first words are the title.
    cReproduccion(MenuIcono &menu, cCola &cola, std::function<void(const QString &)> pulsa,
                  std::function<QString()> texto);
    ~cReproduccion();
    cReproduccion(const cReproduccion &) = delete;
    cReproduccion &operator=(const cReproduccion &) = delete;

    Estado GetEstado() const;
    QString Titulo() const;  // at most 60 characters, cut between words; empty when stopped with nothing to repeat
    bool PuedeReproducir() const;
    bool PuedePausar() const;
    bool PuedeAvanzar() const { return m_menu.AvanzarPalabras.Habilitada(); }
    bool PuedeRetroceder() const { return m_menu.RetrocederPalabras.Habilitada(); }

    // Each becomes an order of the queue that looks at the state when its turn comes; one that makes no sense then does
    // nothing, not even a sound: unlike a key, nobody has pressed it in error.
    void Reproduce();        // resumes what is paused, else repeats the last reading
    void Pausa();            // what sounds
    void ReproduceOPausa();  // one button for both
    void Detiene();
    void Avanza();
    void Retrocede();

    // After each change of the above; several may come in one handler.
    void AlCambiar(std::function<void()> aviso) { m_aviso = std::move(aviso); }

private:
    void Ordena(std::function<const char *()> tecla);

    MenuIcono &m_menu;
    cCola &m_cola;
    std::function<void(const QString &)> m_pulsa;
    std::function<QString()> m_texto;
    std::function<void()> m_aviso;
};

}  // namespace ondalis
