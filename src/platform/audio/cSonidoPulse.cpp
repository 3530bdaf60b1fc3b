#include "platform/audio/cSonidoPulse.h"

#include <QtEndian>
#include <utility>

namespace ondalis {

namespace {

constexpr std::uint32_t kBufferMs = 100;
constexpr std::uint32_t kPedidoMs = 40;

struct FormaWav {
    pa_sample_spec forma{};
    qsizetype inicio = 0;
    qsizetype bytes = 0;
};

// The samples of a 16-bit PCM WAV file; no bytes when it is none.
FormaWav LeeWav(const QByteArray &wav) {
    FormaWav forma;
    const auto *p = reinterpret_cast<const uchar *>(wav.constData());
    if (wav.size() < 12 || !wav.startsWith("RIFF") || wav.mid(8, 4) != "WAVE") return {};
    qsizetype i = 12;
    while (i + 8 <= wav.size()) {
        const QByteArray nombre = wav.mid(i, 4);
        const qsizetype largo = std::min<qsizetype>(qFromLittleEndian<quint32>(p + i + 4), wav.size() - i - 8);
        i += 8;
        if (nombre == "fmt " && largo >= 16) {
            if (qFromLittleEndian<quint16>(p + i) != 1 || qFromLittleEndian<quint16>(p + i + 14) != 16) return {};
            forma.forma.format = PA_SAMPLE_S16LE;
            forma.forma.channels = static_cast<std::uint8_t>(qFromLittleEndian<quint16>(p + i + 2));
            forma.forma.rate = qFromLittleEndian<quint32>(p + i + 4);
        } else if (nombre == "data" && pa_sample_spec_valid(&forma.forma)) {
            forma.inicio = i;
            forma.bytes = largo - largo % static_cast<qsizetype>(pa_frame_size(&forma.forma));
            return forma;
        }
        i += largo + largo % 2;
    }
    return {};
}

}  // namespace

cSonidoPulse::cSonidoPulse(cServidorPulse &servidor) : m_servidor(servidor) {
    // A connection that dies takes its streams along without a word of theirs.
    m_suscripcion = m_servidor.Suscribe([this] {
        for (Sonido &sonido : m_sonidos)
            if (!PA_CONTEXT_IS_GOOD(pa_context_get_state(pa_stream_get_context(sonido.flujo)))) sonido.Termina();
    });
}

cSonidoPulse::~cSonidoPulse() {
    m_servidor.Anula(m_suscripcion);
    cServidorPulse::Cerrojo cerrojo(m_servidor);
    for (Sonido &sonido : m_sonidos) sonido.Termina();
    Barre();
}

bool cSonidoPulse::Reproduce(const QByteArray &wav, std::function<void()> alTerminar) {
    if (!alTerminar) alTerminar = [] {};
    const FormaWav forma = LeeWav(wav);
    if (forma.bytes == 0) return false;
    cServidorPulse::Cerrojo cerrojo(m_servidor);
    pa_context *contexto = m_servidor.Contexto();
    if (!contexto) return false;
    Barre();
    pa_stream *flujo = pa_stream_new(contexto, "Avisos", &forma.forma, nullptr);
    if (!flujo) return false;
    pa_buffer_attr atributos{};
    atributos.maxlength = static_cast<std::uint32_t>(-1);
    atributos.tlength = static_cast<std::uint32_t>(pa_usec_to_bytes(kBufferMs * 1000, &forma.forma));
    atributos.prebuf = static_cast<std::uint32_t>(pa_frame_size(&forma.forma));
    atributos.minreq = static_cast<std::uint32_t>(pa_usec_to_bytes(kPedidoMs * 1000, &forma.forma));
    atributos.fragsize = static_cast<std::uint32_t>(-1);
    m_sonidos.push_back({flujo, wav, forma.inicio, forma.bytes, false, std::move(alTerminar)});
    pa_stream_set_state_callback(flujo, AlCambiar, &m_sonidos.back());
    if (pa_stream_connect_playback(flujo, nullptr, &atributos, PA_STREAM_ADJUST_LATENCY, nullptr, nullptr) >= 0)
        return true;
    m_sonidos.back().alTerminar = nullptr;  // refused: the caller is told by the result
    Barre();
    return false;
}

void cSonidoPulse::AlCambiar(pa_stream *flujo, void *datos) {
    auto &sonido = *static_cast<Sonido *>(datos);
    if (!PA_STREAM_IS_GOOD(pa_stream_get_state(flujo))) return sonido.Termina();
    if (pa_stream_get_state(flujo) != PA_STREAM_READY || std::exchange(sonido.escrito, true)) return;
    pa_operation *fin = nullptr;
    if (pa_stream_write(flujo, sonido.wav.constData() + sonido.inicio, static_cast<std::size_t>(sonido.bytes), nullptr,
                        0, PA_SEEK_RELATIVE) >= 0)
        fin = pa_stream_drain(
            flujo, [](pa_stream *, int, void *d) { static_cast<Sonido *>(d)->Termina(); }, datos);
    if (fin)
        pa_operation_unref(fin);
    else
        sonido.Termina();
}

void cSonidoPulse::Sonido::Termina() {
    if (!alTerminar) return;
    const auto avisa = std::exchange(alTerminar, nullptr);
    pa_stream_set_state_callback(flujo, nullptr, nullptr);
    pa_stream_disconnect(flujo);
    avisa();
}

// A stream isn't let go inside its own callbacks, so those that have ended wait here.
void cSonidoPulse::Barre() {
    m_sonidos.remove_if([](const Sonido &sonido) {
        if (sonido.alTerminar) return false;
        pa_stream_set_state_callback(sonido.flujo, nullptr, nullptr);
        pa_stream_unref(sonido.flujo);
        return true;
    });
}

}  // namespace ondalis
