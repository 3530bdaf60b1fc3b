// The connection to the sound server, shared by every stream: made in the background at start, made again with growing
// intervals when it is lost. PulseAudio's client on a threaded main loop; PipeWire serves it too. Owned by main and
// outlives its streams. Any thread but the loop's own, unless told.
#pragma once

#include <pulse/pulseaudio.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace ondalis {

struct DispositivoAudio {
    std::string nombre;       // the server's own
    std::string descripcion;  // for people
};

class cServidorPulse {
public:
    // `servidor`: an address as PULSE_SERVER takes it; empty: the session's own. Returns at once, the server may come
    // later or never.
    explicit cServidorPulse(std::string aplicacion, std::string servidor = {});
    ~cServidorPulse();
    cServidorPulse(const cServidorPulse &) = delete;
    cServidorPulse &operator=(const cServidorPulse &) = delete;

    bool Conectado() const;
    // Waits for the connection; false when the limit has passed.
    bool EsperaConexion(std::chrono::milliseconds limite);
    // The sinks but for the server's dummy; empty without a server or when it doesn't answer within the limit.
    std::vector<DispositivoAudio> Dispositivos(std::chrono::milliseconds limite = std::chrono::milliseconds(1000));

    // `cambio` runs on the loop's thread, under its lock, when the connection is made or lost, until Anula.
    int Suscribe(std::function<void()> cambio);
    void Anula(int suscripcion);

    // Holds the loop's lock.
    class Cerrojo {
    public:
        explicit Cerrojo(const cServidorPulse &servidor) : m_lazo(servidor.m_lazo) {
            pa_threaded_mainloop_lock(m_lazo);
        }
        ~Cerrojo() { pa_threaded_mainloop_unlock(m_lazo); }
        Cerrojo(const Cerrojo &) = delete;
        Cerrojo &operator=(const Cerrojo &) = delete;

    private:
        pa_threaded_mainloop *m_lazo;
    };

    // Under the lock only: the context, null while it isn't ready; a new attempt is then made soon.
    pa_context *Contexto();

private:
    static void AlCambiar(pa_context *contexto, void *este);
    void Conecta();
    void Suelta();
    void Reconecta(bool pronto);
    void Notifica();

    std::string m_aplicacion;
    std::string m_servidor;
    pa_threaded_mainloop *m_lazo = nullptr;
    // Under the loop's lock:
    pa_context *m_contexto = nullptr;
    pa_time_event *m_reintento = nullptr;
    bool m_pronto = false;  // the attempt that waits has been hurried already
    bool m_estabaLista = false;
    std::chrono::milliseconds m_intervalo;
    std::map<int, std::function<void()>> m_suscriptores;
    int m_siguiente = 1;
};

}  // namespace ondalis
