// Latency of the live voice at the sink's monitor: order to first sample, warm and cold, and order to silence.
// Each figure: median and 95th percentile of the rounds.  banco_audio [rounds]
#include <cstdio>
#include <cstdlib>
#include <random>
#include <thread>

#include "engine/cLanzadorProceso.h"
#include "engine/canal/BancoCanal.h"
#include "fakes/ServidorDeSonido.h"
#include "platform/audio/cSalidaPulse.h"

namespace ondalis {
namespace {

double Ahora() { return static_cast<double>(pa_rtclock_now()); }

struct Resultado {
    void Anade(double ms) { valores.push_back(ms); }
    void Imprime(const char *nombre) {
        if (valores.empty()) return (void)std::printf("%-44s no rounds\n", nombre);
        std::sort(valores.begin(), valores.end());
        const auto n = valores.size();
        std::printf("%-44s median %6.2f ms   p95 %6.2f ms   worst %6.2f ms   (%zu rounds)\n", nombre, valores[n / 2],
                    valores[std::min(n - 1, n * 95 / 100)], valores.back(), n);
    }
    std::vector<double> valores;
};

// Everything that one measurement needs, on a sound server of its own.
class Banco {
public:
    Banco() {
        m_sonido.Arranca();
        m_servidor.emplace("banco", m_sonido.Direccion());
        if (!m_servidor->EsperaConexion(std::chrono::seconds(20))) std::abort();
        m_monitor.emplace(m_sonido);
        m_monitor->Espera([&] { return m_monitor->Cuantas() > MonitorDeSonido::kHz; });
        m_salida.emplace(*m_servidor, "voz");
    }

    // Waits a while and comes back at a random moment of the sink's cycle: the monitor's pieces come in step with it.
    void Espera(std::mt19937 &azar) {
        m_monitor->EsperaHasta(pa_rtclock_now() + 150'000);
        std::this_thread::sleep_for(std::chrono::microseconds(azar() % 40'000));
    }

    // Milliseconds from `orden` to the first sample heard.
    double HastaSonido(double orden) {
        std::size_t primera = MonitorDeSonido::npos;
        m_monitor->Espera([&] {
            primera = m_monitor->PrimeraQueSuena(m_desde);
            return primera != MonitorDeSonido::npos;
        });
        return (m_monitor->Momento(primera) - orden) / 1000;
    }
    void Marca() { m_desde = m_monitor->Cuantas(); }

    // Milliseconds from `orden` to the last sample heard.
    double HastaSilencio(double orden) {
        m_monitor->EsperaHasta(pa_rtclock_now() + 200'000);
        return (m_monitor->Momento(m_monitor->UltimaQueSuena()) - orden) / 1000;
    }

    cSalidaPulse &Salida() { return *m_salida; }
    const Reloj &ElReloj() const { return m_reloj; }

private:
    ServidorDeSonido m_sonido;
    std::optional<cServidorPulse> m_servidor;
    std::optional<MonitorDeSonido> m_monitor;
    std::optional<cSalidaPulse> m_salida;
    cRelojMonotono m_reloj;
    std::size_t m_desde = 0;
};

Locucion Frase(std::uint64_t numero, std::u16string texto) {
    Locucion locucion = LocucionDe(numero, std::move(texto));
    locucion.voz.voz = "roa/es";
    return locucion;
}

void Caliente(Banco &b, LanzadorMotor &lanzador, const char *nombre, int rondas) {
    std::mt19937 azar(1);
    Resultado r;
    cCanalMotor canal(lanzador, b.Salida(), b.ElReloj());
    for (int i = 0; i <= rondas; ++i) {
        b.Espera(azar);
        b.Marca();
        const double orden = Ahora();
        canal.Habla(Frase(static_cast<std::uint64_t>(i) + 1, u"Ahora se oye una frase bastante larga de prueba."));
        const double ms = b.HastaSonido(orden);
        if (i > 0) r.Anade(ms);  // the first one loads the voice
        canal.Detiene();
    }
    r.Imprime(nombre);
}

void Frio(Banco &b, const char *nombre, int rondas) {
    std::mt19937 azar(2);
    Resultado r;
    for (int i = 0; i < rondas; ++i) {
        b.Espera(azar);
        b.Marca();
        cLanzadorProceso lanzador(ONDALIS_MOTOR);
        const double orden = Ahora();
        cCanalMotor canal(lanzador, b.Salida(), b.ElReloj());
        canal.Habla(Frase(1, u"Ahora se oye una frase bastante larga de prueba."));
        r.Anade(b.HastaSonido(orden));
    }
    r.Imprime(nombre);
}

void Silencio(Banco &b, const char *nombre, int rondas, bool conPausa) {
    std::mt19937 azar(3);
    Resultado r;
    LanzadorHilo lanzador;  // a sound without gaps
    cCanalMotor canal(lanzador, b.Salida(), b.ElReloj());
    for (int i = 0; i < rondas; ++i) {
        b.Espera(azar);
        b.Marca();
        canal.Habla(LocucionDe(static_cast<std::uint64_t>(i) + 1, std::u16string(8000, u'a')));
        b.HastaSonido(Ahora());
        b.Espera(azar);
        const double orden = Ahora();
        if (conPausa)
            canal.Pausa();
        else
            canal.Detiene();
        r.Anade(b.HastaSilencio(orden));
        canal.Detiene();
    }
    r.Imprime(nombre);
}

}  // namespace
}  // namespace ondalis

int main(int argc, char **argv) {
    using namespace ondalis;
    if (!ServidorDeSonido::Disponible()) return std::puts("SKIP: pulseaudio isn't installed"), 0;
    const int rondas = argc > 1 ? std::max(1, std::atoi(argv[1])) : 30;
    Banco b;
    LanzadorHilo hilo;
    cLanzadorProceso proceso(ONDALIS_MOTOR);
    Caliente(b, hilo, "speak to first sample, engine that costs 0", rondas);
    Caliente(b, proceso, "speak to first sample, warm eSpeak NG", rondas);
    Frio(b, "channel and speak to first sample, cold", rondas);
    Silencio(b, "stop to silence", rondas, false);
    Silencio(b, "pause to silence", rondas, true);
    return 0;
}
