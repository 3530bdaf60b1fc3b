// The timer of the running program: a coarse single-shot timer armed anew before its handler runs. An expiry is a Tic
// of the queue; while one waits there a further one is not added. Owned by main. Main thread.
#pragma once

#include <QTimer>
#include <memory>

#include "settings/Temporizador.h"
#include "settings/cCola.h"

namespace ondalis {

class cTemporizador : public Temporizador {
public:
    explicit cTemporizador(cCola &cola);

    void SetIntervalo(int milisegundos) override;  // 0 or less: it never expires
    void SetManejador(std::function<void()> manejador) override { m_manejador = std::move(manejador); }
    // Switched off, an expiry that still waits in the queue does nothing.
    void SetEnabled(bool encendido) override;
    bool Enabled() const override { return m_encendido; }

private:
    void Arma();
    void Vence();

    cCola &m_cola;
    QTimer m_temporizador;
    std::function<void()> m_manejador;
    int m_intervalo = 0;
    bool m_encendido = false;
    std::weak_ptr<int> m_enCola;  // alive while an expiry waits
    std::shared_ptr<int> m_tanda =
        std::make_shared<int>();  // since it was switched on; expiries of another one are void
};

}  // namespace ondalis
