#include "settings/cTemporizador.h"

namespace ondalis {

cTemporizador::cTemporizador(cCola &cola) : m_cola(cola) {
    m_temporizador.setSingleShot(true);
    m_temporizador.setTimerType(Qt::CoarseTimer);
    QObject::connect(&m_temporizador, &QTimer::timeout, [this] { Vence(); });
}

void cTemporizador::SetIntervalo(int milisegundos) {
    m_intervalo = milisegundos;
    Arma();
}

void cTemporizador::SetEnabled(bool encendido) {
    m_encendido = encendido;
    m_tanda = std::make_shared<int>();
    m_enCola.reset();
    Arma();
}

void cTemporizador::Arma() {
    if (m_encendido && m_intervalo > 0)
        m_temporizador.start(m_intervalo);
    else
        m_temporizador.stop();
}

void cTemporizador::Vence() {
    Arma();
    if (!m_enCola.expired()) return;
    // The queue may drop the action; then the token dies with it.
    auto espera = std::make_shared<int>();
    m_enCola = espera;
    m_cola.Pon(cCola::Clase::Tic, [this, espera, tanda = std::weak_ptr<int>(m_tanda)]() mutable {
        espera.reset();  // from here on the next expiry may wait, also inside this one's modal window
        if (!tanda.expired() && m_manejador) m_manejador();
    });
}

}  // namespace ondalis
