// A private sound server with a null sink, and a listener at that sink's monitor. For tests and benchmarks that need a
// real server; Disponible tells whether one can be had.
#pragma once

#include <fcntl.h>
#include <pulse/pulseaudio.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <condition_variable>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "platform/audio/cServidorPulse.h"

namespace ondalis {

class ServidorDeSonido {
public:
    static bool Disponible() { return access("/usr/bin/pulseaudio", X_OK) == 0; }

    ServidorDeSonido() {
        std::string plantilla = std::filesystem::temp_directory_path() / "sonidoXXXXXX";
        m_carpeta = mkdtemp(plantilla.data());
    }
    ~ServidorDeSonido() {
        Para();
        std::filesystem::remove_all(m_carpeta);
    }
    ServidorDeSonido(const ServidorDeSonido &) = delete;
    ServidorDeSonido &operator=(const ServidorDeSonido &) = delete;

    std::string Direccion() const { return "unix:" + (m_carpeta / "zocalo").string(); }

    void Arranca() {
        const std::string protocolo =
            "module-native-protocol-unix auth-anonymous=1 socket=" + (m_carpeta / "zocalo").string();
        // Without norewinds it renders two seconds ahead and the monitor tells lies.
        const char *sumidero = "module-null-sink sink_name=nul rate=22050 channels=1 norewinds=1";
        std::vector<std::string> palabras = {"pulseaudio",
                                             "-n",
                                             "--daemonize=no",
                                             "--exit-idle-time=-1",
                                             "--use-pid-file=no",
                                             "--log-target=file:/dev/null",
                                             "-L",
                                             protocolo,
                                             "-L",
                                             sumidero};
        std::vector<char *> argumentos;
        for (std::string &palabra : palabras) argumentos.push_back(palabra.data());
        argumentos.push_back(nullptr);
        std::vector<std::string> entorno = {"PATH=/usr/bin:/bin", "HOME=" + m_carpeta.string(),
                                            "XDG_RUNTIME_DIR=" + m_carpeta.string()};
        std::vector<char *> variables;
        for (std::string &variable : entorno) variables.push_back(variable.data());
        variables.push_back(nullptr);
        // None of our descriptors: if the test program dies, who waits for the end of its output must not wait for
        // this.
        posix_spawn_file_actions_t ficheros;
        posix_spawn_file_actions_init(&ficheros);
        for (int descriptor : {0, 1, 2})
            posix_spawn_file_actions_addopen(&ficheros, descriptor, "/dev/null", O_RDWR, 0);
        posix_spawn(&m_pid, "/usr/bin/pulseaudio", &ficheros, nullptr, argumentos.data(), variables.data());
        posix_spawn_file_actions_destroy(&ficheros);
    }
    void Manda(int senal) { kill(m_pid, senal); }
    void Para() {
        if (m_pid <= 0) return;
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
        m_pid = 0;
        std::filesystem::remove(m_carpeta / "zocalo");
    }

private:
    std::filesystem::path m_carpeta;
    pid_t m_pid = 0;
};

// What the sink plays, sample by sample, with the time at which each is heard (pa_rtclock_now's microseconds).
class MonitorDeSonido {
public:
    static constexpr int kHz = 22050;

    explicit MonitorDeSonido(const ServidorDeSonido &servidor) : m_servidor("monitor", servidor.Direccion()) {
        if (!m_servidor.EsperaConexion(std::chrono::seconds(20))) return;
        cServidorPulse::Cerrojo cerrojo(m_servidor);
        pa_sample_spec forma{PA_SAMPLE_S16NE, kHz, 1};
        m_flujo = pa_stream_new(m_servidor.Contexto(), "monitor", &forma, nullptr);
        pa_buffer_attr atributos{};
        atributos.maxlength = static_cast<std::uint32_t>(-1);
        atributos.fragsize = kHz / 50 * 2;  // 20 ms: longer than the voice asks of the sink, so it hurries nothing
        pa_stream_set_read_callback(
            m_flujo, [](pa_stream *, std::size_t, void *este) { static_cast<MonitorDeSonido *>(este)->Lee(); }, this);
        pa_stream_connect_record(
            m_flujo, "nul.monitor", &atributos,
            static_cast<pa_stream_flags_t>(PA_STREAM_ADJUST_LATENCY | PA_STREAM_INTERPOLATE_TIMING |
                                           PA_STREAM_AUTO_TIMING_UPDATE));
    }
    ~MonitorDeSonido() {
        cServidorPulse::Cerrojo cerrojo(m_servidor);
        if (!m_flujo) return;
        pa_stream_set_read_callback(m_flujo, nullptr, nullptr);
        pa_stream_disconnect(m_flujo);
        pa_stream_unref(m_flujo);
    }
    MonitorDeSonido(const MonitorDeSonido &) = delete;
    MonitorDeSonido &operator=(const MonitorDeSonido &) = delete;

    // Asks `listo` whenever sound (or silence) has come, every 20 ms; false after `segundos`.
    bool Espera(const std::function<bool()> &listo, int segundos = 20) {
        const pa_usec_t limite = pa_rtclock_now() + static_cast<pa_usec_t>(segundos) * 1'000'000;
        std::unique_lock guarda(m_cerrojo);
        for (;;) {
            guarda.unlock();
            if (listo()) return true;
            if (pa_rtclock_now() > limite) return false;
            guarda.lock();
            m_llegado.wait_for(guarda, std::chrono::milliseconds(100));
        }
    }
    // Waits until everything heard up to now is here.
    bool EsperaHasta(pa_usec_t momento) {
        return Espera([&] { return static_cast<double>(momento) < Momento(Cuantas()); });
    }

    std::size_t Cuantas() {
        std::lock_guard guarda(m_cerrojo);
        return m_muestras.size();
    }
    std::vector<std::int16_t> Muestras() {
        std::lock_guard guarda(m_cerrojo);
        return m_muestras;
    }
    // When sample `i` was or will be heard.
    double Momento(std::size_t i) {
        std::lock_guard guarda(m_cerrojo);
        if (m_anclas.empty()) return 0;
        std::vector<double> anclas = m_anclas;
        const auto medio = anclas.begin() + static_cast<std::ptrdiff_t>(anclas.size() / 2);
        std::nth_element(anclas.begin(), medio, anclas.end());
        return *medio + static_cast<double>(i) * 1e6 / kHz;
    }
    // The first sample that sounds at or behind `desde`, or the last one before a gap; npos when there is none.
    std::size_t PrimeraQueSuena(std::size_t desde) {
        std::lock_guard guarda(m_cerrojo);
        for (std::size_t i = desde; i < m_muestras.size(); ++i)
            if (m_muestras[i] != 0) return i;
        return npos;
    }
    std::size_t UltimaQueSuena() {
        std::lock_guard guarda(m_cerrojo);
        for (std::size_t i = m_muestras.size(); i > 0; --i)
            if (m_muestras[i - 1] != 0) return i - 1;
        return npos;
    }
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

private:
    void Lee() {
        const void *datos = nullptr;
        std::size_t bytes = 0;
        while (pa_stream_readable_size(m_flujo) > 0 && pa_stream_peek(m_flujo, &datos, &bytes) == 0 && bytes > 0) {
            std::lock_guard guarda(m_cerrojo);
            const auto *muestras = static_cast<const std::int16_t *>(datos);
            if (datos)
                m_muestras.insert(m_muestras.end(), muestras, muestras + bytes / 2);
            else
                m_muestras.resize(m_muestras.size() + bytes / 2);
            pa_stream_drop(m_flujo);
        }
        pa_usec_t retraso = 0;
        int negativo = 0;
        if (pa_stream_get_latency(m_flujo, &retraso, &negativo) == 0) {
            const double ahora = static_cast<double>(pa_rtclock_now());
            const double oido = negativo ? ahora + static_cast<double>(retraso) : ahora - static_cast<double>(retraso);
            std::lock_guard guarda(m_cerrojo);
            m_anclas.push_back(oido - static_cast<double>(m_muestras.size()) * 1e6 / kHz);
            if (m_anclas.size() > 200) m_anclas.erase(m_anclas.begin());
        }
        m_llegado.notify_all();
    }

    cServidorPulse m_servidor;
    pa_stream *m_flujo = nullptr;
    std::mutex m_cerrojo;
    std::condition_variable m_llegado;
    std::vector<std::int16_t> m_muestras;
    std::vector<double> m_anclas;  // when sample 0 would have been heard, as each piece tells it
};

}  // namespace ondalis
