#include "platform/audio/cServidorPulse.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace ondalis {

using namespace std::chrono_literals;

namespace {

constexpr auto kIntervaloMin = 100ms;
// A server that comes back is heard again within this; a connection refused costs a fraction of a millisecond.
constexpr auto kIntervaloMax = 5000ms;
// The sink that a server without devices shows instead of none.
constexpr const char *kSimulado = "auto_null";

// The monotonic clock, so that a changed wall clock delays nothing.
pa_usec_t Dentro(std::chrono::milliseconds espera) {
    return pa_rtclock_now() + static_cast<pa_usec_t>(espera.count()) * 1000;
}

struct Lista {
    pa_threaded_mainloop *lazo;
    std::vector<DispositivoAudio> dispositivos;
    bool acabada = false;
};

void AlListar(pa_context *, const pa_sink_info *sumidero, int fin, void *datos) {
    auto &lista = *static_cast<Lista *>(datos);
    if (fin != 0 || !sumidero) {
        lista.acabada = true;
        pa_threaded_mainloop_signal(lista.lazo, 0);
    } else if (std::string(sumidero->name) != kSimulado) {
        lista.dispositivos.push_back({sumidero->name, sumidero->description ? sumidero->description : sumidero->name});
    }
}

// Wakes a wait on the loop when its limit has passed.
class Limite {
public:
    Limite(pa_threaded_mainloop *lazo, pa_context *contexto, std::chrono::milliseconds limite) : m_lazo(lazo) {
        m_suceso = pa_context_rttime_new(
            contexto, Dentro(limite),
            [](pa_mainloop_api *, pa_time_event *, const timeval *, void *datos) {
                auto &este = *static_cast<Limite *>(datos);
                este.m_pasado = true;
                pa_threaded_mainloop_signal(este.m_lazo, 0);
            },
            this);
    }
    ~Limite() { pa_threaded_mainloop_get_api(m_lazo)->time_free(m_suceso); }
    Limite(const Limite &) = delete;
    Limite &operator=(const Limite &) = delete;
    bool Pasado() const { return m_pasado; }

private:
    pa_threaded_mainloop *m_lazo;
    pa_time_event *m_suceso = nullptr;
    bool m_pasado = false;
};

}  // namespace

cServidorPulse::cServidorPulse(std::string aplicacion, std::string servidor)
    : m_aplicacion(std::move(aplicacion)),
      m_servidor(std::move(servidor)),
      m_lazo(pa_threaded_mainloop_new()),
      m_intervalo(kIntervaloMin) {
    if (!m_lazo) throw std::runtime_error("pa_threaded_mainloop_new");
    pa_threaded_mainloop_set_name(m_lazo, "sonido");
    Conecta();
    if (pa_threaded_mainloop_start(m_lazo) < 0) throw std::runtime_error("pa_threaded_mainloop_start");
}

cServidorPulse::~cServidorPulse() {
    {
        Cerrojo cerrojo(*this);
        Suelta();
        if (m_reintento) pa_threaded_mainloop_get_api(m_lazo)->time_free(m_reintento);
        m_reintento = nullptr;
    }
    pa_threaded_mainloop_stop(m_lazo);
    pa_threaded_mainloop_free(m_lazo);
}

bool cServidorPulse::Conectado() const {
    Cerrojo cerrojo(*this);
    return m_contexto && pa_context_get_state(m_contexto) == PA_CONTEXT_READY;
}

bool cServidorPulse::EsperaConexion(std::chrono::milliseconds limite) {
    Cerrojo cerrojo(*this);
    const Limite plazo(m_lazo, m_contexto, limite);
    while (!Contexto() && !plazo.Pasado()) pa_threaded_mainloop_wait(m_lazo);
    return Contexto() != nullptr;
}

std::vector<DispositivoAudio> cServidorPulse::Dispositivos(std::chrono::milliseconds limite) {
    Cerrojo cerrojo(*this);
    pa_context *contexto = Contexto();
    if (!contexto) return {};
    Lista lista{m_lazo, {}, false};
    pa_operation *operacion = pa_context_get_sink_info_list(contexto, AlListar, &lista);
    if (!operacion) return {};
    const Limite plazo(m_lazo, m_contexto, limite);
    while (!lista.acabada && pa_operation_get_state(operacion) == PA_OPERATION_RUNNING && !plazo.Pasado())
        pa_threaded_mainloop_wait(m_lazo);
    pa_operation_cancel(operacion);  // its answer mustn't come to a list that is gone
    pa_operation_unref(operacion);
    return lista.acabada ? std::move(lista.dispositivos) : std::vector<DispositivoAudio>{};
}

int cServidorPulse::Suscribe(std::function<void()> cambio) {
    Cerrojo cerrojo(*this);
    m_suscriptores[m_siguiente] = std::move(cambio);
    return m_siguiente++;
}

void cServidorPulse::Anula(int suscripcion) {
    Cerrojo cerrojo(*this);
    m_suscriptores.erase(suscripcion);
}

pa_context *cServidorPulse::Contexto() {
    if (m_contexto && pa_context_get_state(m_contexto) == PA_CONTEXT_READY) return m_contexto;
    // Somebody wants it now: the long interval of an idle reader is cut short once.
    if (m_reintento && !m_pronto) Reconecta(true);
    return nullptr;
}

void cServidorPulse::Conecta() {
    Suelta();
    pa_proplist *propiedades = pa_proplist_new();
    pa_proplist_sets(propiedades, PA_PROP_APPLICATION_NAME, m_aplicacion.c_str());
    pa_proplist_sets(propiedades, PA_PROP_MEDIA_ROLE, "a11y");
    // Given here, the library's thread doesn't ask for the locale, which the toolkit sets at the same moment.
    pa_proplist_sets(propiedades, PA_PROP_APPLICATION_LANGUAGE, "es");
    m_contexto = pa_context_new_with_proplist(pa_threaded_mainloop_get_api(m_lazo), nullptr, propiedades);
    pa_proplist_free(propiedades);
    if (!m_contexto) throw std::runtime_error("pa_context_new");
    pa_context_set_state_callback(m_contexto, AlCambiar, this);
    const char *servidor = m_servidor.empty() ? nullptr : m_servidor.c_str();
    const bool yaFallo = pa_context_connect(m_contexto, servidor, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0;
    if (yaFallo && !m_reintento) Reconecta(false);
}

void cServidorPulse::Suelta() {
    if (!m_contexto) return;
    pa_context_set_state_callback(m_contexto, nullptr, nullptr);
    pa_context_disconnect(m_contexto);
    pa_context_unref(m_contexto);
    m_contexto = nullptr;
}

void cServidorPulse::AlCambiar(pa_context *contexto, void *este) {
    auto &servidor = *static_cast<cServidorPulse *>(este);
    switch (pa_context_get_state(contexto)) {
        case PA_CONTEXT_READY:
            servidor.m_intervalo = kIntervaloMin;
            servidor.m_pronto = false;
            servidor.m_estabaLista = true;
            servidor.Notifica();
            break;
        case PA_CONTEXT_FAILED:
        case PA_CONTEXT_TERMINATED:
            servidor.Reconecta(false);
            if (std::exchange(servidor.m_estabaLista, false)) servidor.Notifica();
            break;
        default: break;
    }
}

// The context that failed is let go in the timer, not inside its own callback.
void cServidorPulse::Reconecta(bool pronto) {
    if (m_reintento) pa_threaded_mainloop_get_api(m_lazo)->time_free(m_reintento);
    m_pronto = pronto;
    const auto espera = pronto ? 0ms : m_intervalo;
    if (!pronto) m_intervalo = std::min<std::chrono::milliseconds>(m_intervalo * 2, kIntervaloMax);
    m_reintento = pa_context_rttime_new(
        m_contexto, Dentro(espera),
        [](pa_mainloop_api *lazo, pa_time_event *suceso, const timeval *, void *este) {
            auto &servidor = *static_cast<cServidorPulse *>(este);
            lazo->time_free(suceso);
            servidor.m_reintento = nullptr;
            servidor.Conecta();
        },
        this);
}

void cServidorPulse::Notifica() {
    for (const auto &[numero, cambio] : m_suscriptores) cambio();
    pa_threaded_mainloop_signal(m_lazo, 0);
}

}  // namespace ondalis
