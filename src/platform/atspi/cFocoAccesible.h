// The focused objects of other programs, from the accessibility service. Everything about its bus happens on a thread
// of its own, so that neither a slow program nor a bus that hangs holds the main thread up. The thread begins with the
// first Inicia and sleeps between Termina and Inicia. Owned by main. Main thread.
#pragma once

#include <QObject>
#include <QThread>

#include "keys/TecladoSistema.h"
#include "settings/cLog.h"

namespace ondalis {

class cVigiaFoco;

class cFocoAccesible : public QObject, public FocoAccesible {
    Q_OBJECT
public:
    explicit cFocoAccesible(cLog &log) : m_log(log) {}
    ~cFocoAccesible() override;

    void Inicia() override;
    void Termina() override;
    void SetPregunta(std::function<void(int)> pregunta) override { m_pregunta = std::move(pregunta); }
    void SetRespuesta(std::function<void(int, Rol)> respuesta) override { m_respuesta = std::move(respuesta); }

    // The service tells of focus changes by now.
    bool Conectado() const { return m_conectado; }

private:
    cLog &m_log;
    std::function<void(int)> m_pregunta;
    std::function<void(int, Rol)> m_respuesta;
    QThread m_hilo;
    cVigiaFoco *m_vigia = nullptr;  // lives on the thread and goes with it
    bool m_conectado = false;
    bool m_anotado = false;  // its absence has been logged
};

}  // namespace ondalis
