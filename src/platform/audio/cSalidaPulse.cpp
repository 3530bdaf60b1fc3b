#include "platform/audio/cSalidaPulse.h"

#include <algorithm>
#include <vector>

namespace ondalis {

namespace {

constexpr std::uint32_t kMuestra = sizeof(std::int16_t);
// Of what we keep ahead the server gives the device (kBufferMs - 2 * kPedidoMs) / 2 = 10 ms: a stop is heard as soon as
// that short piece has been played, and the long queue on the server's side is what a flush drops. A longer request
// interval means fewer wake-ups. When the server asks kBufferMs - kPedidoMs are left: so long may a busy machine hold
// us up before it is heard.
constexpr std::uint32_t kBufferMs = 240;
constexpr std::uint32_t kPedidoMs = 110;
// Behind the last sample: the server's clock stands a device's length short of the end once it has nothing to play.
constexpr std::uint32_t kRellenoMs = 100;
// How old the server's positions may be while sound goes out. The library's own updates go on in a corked stream, and
// would wake an idle reader; in between it interpolates.
constexpr pa_usec_t kEntreTiempos = 50'000;

std::uint32_t Bytes(int hz, std::uint32_t ms) { return static_cast<std::uint32_t>(hz) * ms / 1000 * kMuestra; }

void Suelta(pa_operation *operacion) {
    if (operacion) pa_operation_unref(operacion);  // null: the context is dead, and that is seen elsewhere
}

}  // namespace

cSalidaPulse::cSalidaPulse(cServidorPulse &servidor, std::string nombre, std::string dispositivo)
    : m_servidor(servidor), m_nombre(std::move(nombre)), m_dispositivo(std::move(dispositivo)) {
    m_suscripcion = m_servidor.Suscribe([this] { Despierta(); });
}

cSalidaPulse::~cSalidaPulse() {
    m_servidor.Anula(m_suscripcion);
    cServidorPulse::Cerrojo cerrojo(m_servidor);
    Suelta();
}

void cSalidaPulse::SetDespertador(std::function<void()> despierta) {
    cServidorPulse::Cerrojo cerrojo(m_servidor);
    m_despierta = std::move(despierta);
}

bool cSalidaPulse::Abre(int hz) {
    cServidorPulse::Cerrojo cerrojo(m_servidor);
    pa_context *contexto = m_servidor.Contexto();
    if (!contexto) return false;
    Suelta();
    return Crea(contexto, hz);
}

bool cSalidaPulse::Crea(pa_context *contexto, int hz) {
    pa_sample_spec forma{};
    forma.format = PA_SAMPLE_S16NE;
    forma.rate = static_cast<std::uint32_t>(hz);
    forma.channels = 1;
    m_flujo = pa_stream_new(contexto, m_nombre.c_str(), &forma, nullptr);
    if (!m_flujo) return false;
    pa_stream_set_state_callback(
        m_flujo, [](pa_stream *, void *este) { static_cast<cSalidaPulse *>(este)->Despierta(); }, this);
    pa_stream_set_write_callback(
        m_flujo, [](pa_stream *, std::size_t, void *este) { static_cast<cSalidaPulse *>(este)->Despierta(); }, this);
    pa_buffer_attr atributos{};
    atributos.maxlength = static_cast<std::uint32_t>(-1);
    atributos.tlength = Bytes(hz, kBufferMs);
    atributos.prebuf = kMuestra;  // the first sample starts the sound; 0 would drop what comes after a gap
    atributos.minreq = Bytes(hz, kPedidoMs);
    atributos.fragsize = static_cast<std::uint32_t>(-1);
    const auto banderas = static_cast<pa_stream_flags_t>(PA_STREAM_START_CORKED | PA_STREAM_INTERPOLATE_TIMING |
                                                         PA_STREAM_ADJUST_LATENCY);
    const char *dispositivo = m_dispositivo.empty() ? nullptr : m_dispositivo.c_str();
    if (pa_stream_connect_playback(m_flujo, dispositivo, &atributos, banderas, nullptr, nullptr) < 0) {
        Suelta();
        return false;
    }
    m_hz = hz;
    m_taponada = true;
    m_pausa = false;
    m_escritas = m_oidas = 0;
    m_rellenos.clear();
    return true;
}

void cSalidaPulse::Suelta() {
    ondalis::Suelta(m_tiempos);
    m_tiempos = nullptr;
    if (!m_flujo) return;
    pa_stream_set_write_callback(m_flujo, nullptr, nullptr);
    // One that is still being made can't be let go of yet: it would stay on the server.
    const bool aMedias = pa_stream_get_state(m_flujo) == PA_STREAM_CREATING;
    const auto alHacerse = [](pa_stream *flujo, void *) {
        if (pa_stream_get_state(flujo) == PA_STREAM_READY) pa_stream_disconnect(flujo);
    };
    pa_stream_set_state_callback(m_flujo, aMedias ? static_cast<pa_stream_notify_cb_t>(alHacerse) : nullptr, nullptr);
    if (!aMedias) pa_stream_disconnect(m_flujo);
    pa_stream_unref(m_flujo);
    m_flujo = nullptr;
}

bool cSalidaPulse::Viva() const {
    cServidorPulse::Cerrojo cerrojo(m_servidor);
    return m_flujo && PA_STREAM_IS_GOOD(pa_stream_get_state(m_flujo)) &&
           PA_CONTEXT_IS_GOOD(pa_context_get_state(pa_stream_get_context(m_flujo)));
}

bool cSalidaPulse::Lista() const { return m_flujo && pa_stream_get_state(m_flujo) == PA_STREAM_READY; }

std::size_t cSalidaPulse::Escribe(const std::int16_t *muestras, std::size_t n) {
    cServidorPulse::Cerrojo cerrojo(m_servidor);
    if (!Lista()) return 0;
    const std::size_t sitio = pa_stream_writable_size(m_flujo);
    if (sitio == static_cast<std::size_t>(-1)) return 0;
    n = std::min(n, sitio / kMuestra);
    if (n == 0) return 0;
    if (pa_stream_write(m_flujo, muestras, n * kMuestra, nullptr, 0, PA_SEEK_RELATIVE) < 0) return 0;
    m_escritas += n;
    if (!m_pausa) Tapona(false);
    return n;
}

void cSalidaPulse::Completa() {
    cServidorPulse::Cerrojo cerrojo(m_servidor);
    if (!Lista() || m_escritas == 0) return;
    const std::vector<std::int16_t> silencio(Bytes(m_hz, kRellenoMs) / kMuestra);
    if (pa_stream_write(m_flujo, silencio.data(), silencio.size() * kMuestra, nullptr, 0, PA_SEEK_RELATIVE) < 0) return;
    m_rellenos.emplace_back(m_escritas, silencio.size());
}

std::uint64_t cSalidaPulse::Oidas() {
    cServidorPulse::Cerrojo cerrojo(m_servidor);
    if (!Lista() || m_escritas == m_oidas) return m_oidas;
    // Counted back from what was written: absolute positions of the server outlive a flush, and until it has told the
    // new ones there is no latency either.
    const bool enCamino = m_tiempos && pa_operation_get_state(m_tiempos) == PA_OPERATION_RUNNING;
    if (!m_taponada && !enCamino && pa_rtclock_now() - m_tiemposDesde > kEntreTiempos) PideTiempos();
    pa_usec_t retraso = 0;
    int negativo = 0;
    if (pa_stream_get_latency(m_flujo, &retraso, &negativo) < 0) return m_oidas;
    if (negativo) return m_oidas;  // more heard than written: its clock hasn't settled
    const std::uint64_t porOir = retraso * static_cast<std::uint64_t>(m_hz) / 1'000'000;
    std::uint64_t escritas = m_escritas;
    for (const auto &relleno : m_rellenos) escritas += relleno.second;
    std::uint64_t oidas = escritas > porOir ? escritas - porOir : 0;
    for (const auto &[antes, largo] : m_rellenos)
        if (oidas > antes) oidas -= std::min(largo, oidas - antes);
    oidas = std::min({oidas, m_escritas, TopeDelReloj()});
    m_oidas = std::max(m_oidas, oidas);
    return m_oidas;
}

// A young stream's reckoned position may jump to its end; believed, it would cut a short utterance off unheard.
std::uint64_t cSalidaPulse::TopeDelReloj() const {
    if (m_taponada) return m_oidas;
    const std::uint64_t transcurrido = (pa_rtclock_now() - m_salidaEn) * 101 / 100;  // a device may be a little fast
    return m_salidaDesde + transcurrido * static_cast<std::uint64_t>(m_hz) / 1'000'000;
}

void cSalidaPulse::Pausa(bool enPausa) {
    cServidorPulse::Cerrojo cerrojo(m_servidor);
    m_pausa = enPausa;
    if (!Lista()) return;
    if (enPausa)
        Tapona(true);
    else if (m_escritas > 0)
        Tapona(false);
}

void cSalidaPulse::Vacia() {
    cServidorPulse::Cerrojo cerrojo(m_servidor);
    VaciaFlujo();
    m_salidaDesde = 0;
    m_pausa = false;
    m_escritas = m_oidas = 0;
}

void cSalidaPulse::Reposa() {
    cServidorPulse::Cerrojo cerrojo(m_servidor);
    VaciaFlujo();
}

void cSalidaPulse::VaciaFlujo() {
    if (!Lista()) return;
    Tapona(true);
    if (m_escritas > 0) {
        ondalis::Suelta(pa_stream_flush(m_flujo, nullptr, nullptr));
        PideTiempos();
    }
    m_rellenos.clear();
}

void cSalidaPulse::Tapona(bool taponada) {
    if (taponada == m_taponada) return;
    m_taponada = taponada;
    m_salidaEn = pa_rtclock_now();
    m_salidaDesde = m_oidas;
    ondalis::Suelta(pa_stream_cork(m_flujo, taponada ? 1 : 0, nullptr, nullptr));
    PideTiempos();
}

void cSalidaPulse::PideTiempos() {
    ondalis::Suelta(m_tiempos);
    m_tiempos = pa_stream_update_timing_info(m_flujo, nullptr, nullptr);
    m_tiemposDesde = pa_rtclock_now();
}

}  // namespace ondalis
