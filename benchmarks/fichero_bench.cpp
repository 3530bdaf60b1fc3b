// What speaking into a WAV file costs: worker, channel and file against the engine's own program writing a file.
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <functional>
#include <mutex>

#include "engine/cCanalMotor.h"
#include "engine/cLanzadorProceso.h"
#include "engine/cSalidaFichero.h"
#include "fakes/CarpetaPropia.h"
#include "worker/Locuciones.h"

namespace {

using namespace ondalis;
using RelojReal = std::chrono::steady_clock;

double Segundos(RelojReal::duration d) { return std::chrono::duration<double>(d).count(); }

double CpuPropia() {
    rusage uso{};
    getrusage(RUSAGE_SELF, &uso);
    const auto de = [](const timeval &t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6;
    };
    return de(uso.ru_utime) + de(uso.ru_stime);
}

std::string Libro(std::size_t bytes) {
    static constexpr const char *kFrases[] = {
        "En un lugar de la costa vivía un hombre que cada mañana salía a caminar por la playa. ",
        "Llevaba siempre un sombrero viejo, un bastón de madera y un cuaderno donde apuntaba lo que veía. ",
        "¿Quién iba a decirle que aquel día, 24 de marzo, encontraría 3 barcas vacías? ",
        "Las llamó por su nombre; nadie contestó.\n\n"};
    std::string texto;
    for (std::size_t i = 0; texto.size() < bytes; ++i) texto += kFrases[i % 4];
    return texto;
}

std::u16string A16(const std::string &utf8) {
    std::u16string salida;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        if (c < 0x80)
            salida += static_cast<char16_t>(c);
        else
            salida += static_cast<char16_t>((c & 0x1F) << 6 | (static_cast<unsigned char>(utf8[++i]) & 0x3F));
    }
    return salida;
}

class Espera final : public OyenteMotor {
public:
    void EventoDeMotor(const EventoMotor &evento) override {
        if (evento.tipo == EventoMotor::Tipo::Palabra) ++palabras;
        if (evento.tipo != EventoMotor::Tipo::Fin) return;
        const std::lock_guard guarda(m_cerrojo);
        m_fin = evento.numero;
        m_cambio.notify_all();
    }
    void Hasta(std::uint64_t numero) {
        std::unique_lock guarda(m_cerrojo);
        m_cambio.wait(guarda, [&] { return m_fin == numero; });
    }
    std::uint64_t palabras = 0;  // read once the end has come

private:
    std::mutex m_cerrojo;
    std::condition_variable m_cambio;
    std::uint64_t m_fin = 0;
};

struct Medida {
    double segundos = 0, sonido = 0, cpu = 0;
    std::uint64_t palabras = 0;
};

double SonidoDe(const std::string &ruta) {
    cFicheroWav fichero;
    if (fichero.Abre(ruta, 0, cFicheroWav::Modo::Anade) != 0 || fichero.Muestras() == 0) return 0;
    return static_cast<double>(fichero.Muestras()) / fichero.Hercios();
}

class Banco {
public:
    Banco() : m_canal(m_lanzador, m_salida, m_reloj) {
        m_canal.SetOyente(&m_espera);
        Graba(A16("hola"), 0);  // warm
    }
    Medida Graba(const std::u16string &texto, int hercios) {
        const std::string ruta = m_carpeta.Ruta("canal.wav");
        Locucion locucion = Una(Llana("roa/es"), texto);
        locucion.numero = ++m_numero;
        const std::uint64_t antes = m_espera.palabras;
        const double cpu = CpuPropia();
        const auto inicio = RelojReal::now();
        if (m_salida.Destina(ruta, hercios, cFicheroWav::Modo::Crea) != 0) return {};
        m_canal.Habla(std::move(locucion));
        m_espera.Hasta(m_numero);
        if (m_salida.Cierra() != 0) return {};
        const double segundos = Segundos(RelojReal::now() - inicio);
        return {segundos, SonidoDe(ruta), CpuPropia() - cpu, m_espera.palabras - antes};
    }
    // The engine's program, with the speed that gives sound of the same length.
    Medida GrabaPrograma(const std::string &texto, int velocidad) {
        m_carpeta.Escribe("texto.txt", texto);
        const std::string ruta = m_carpeta.Ruta("programa.wav"), entrada = m_carpeta.Ruta("texto.txt");
        std::string v = std::to_string(velocidad);
        std::vector<std::string> argv{"espeak-ng", "-v", "es", "-s", v, "-f", entrada, "-w", ruta};
        std::vector<char *> punteros;
        for (std::string &a : argv) punteros.push_back(a.data());
        punteros.push_back(nullptr);
        const auto inicio = RelojReal::now();
        pid_t pid = 0;
        if (posix_spawnp(&pid, "espeak-ng", nullptr, nullptr, punteros.data(), environ) != 0) return {};
        int estado = 0;
        waitpid(pid, &estado, 0);
        if (!WIFEXITED(estado) || WEXITSTATUS(estado) != 0) return {};
        return {Segundos(RelojReal::now() - inicio), SonidoDe(ruta), 0, 0};
    }

private:
    prueba::CarpetaPropia m_carpeta;
    cRelojMonotono m_reloj;
    cLanzadorProceso m_lanzador{ONDALIS_MOTOR};
    cSalidaFichero m_salida;
    Espera m_espera;
    cCanalMotor m_canal;
    std::uint64_t m_numero = 0;
};

double Mediana(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

void Fila(const char *nombre, const char *unidad, std::vector<double> valores) {
    std::sort(valores.begin(), valores.end());
    const auto parte = [&valores](double p) {
        return valores[std::min(valores.size() - 1, static_cast<std::size_t>(p * static_cast<double>(valores.size())))];
    };
    std::printf("| %-48s | %10.3f | %10.3f | %-6s | %4zu |\n", nombre, parte(.5), parte(.95), unidad, valores.size());
}

// Nanoseconds of a word's way through the codec, both sides.
double Codec() {
    constexpr std::uint32_t kPalabras = 200'000;
    std::vector<std::uint8_t> bytes;
    Descodificador entrada;
    const auto inicio = RelojReal::now();
    std::uint64_t suma = 0;
    for (std::uint32_t i = 0; i < kPalabras; ++i) {
        bytes.clear();
        Codifica(TramaPalabra{1, i * 100ULL, i, 4}, bytes);
        entrada.Alimenta(bytes);
        while (const auto trama = entrada.Siguiente()) suma += std::get<TramaPalabra>(*trama).posicion;
    }
    const double ns = Segundos(RelojReal::now() - inicio) * 1e9 / kPalabras;
    return suma > 0 ? ns : 0;
}

double Frio() {
    const auto antes = RelojReal::now();
    cTrabajador motor(ONDALIS_MOTOR);
    Locucion l = Una(Llana("roa/es"), u"hola");
    l.numero = 1;
    motor.Envia(TramaHabla{std::move(l)});
    while (const auto trama = motor.Siguiente())
        if (std::holds_alternative<TramaPcm>(*trama)) break;
    return Segundos(RelojReal::now() - antes) * 1000;
}

}  // namespace

int main() {
    constexpr int kVeces = 5;
    const std::string texto = Libro(20'000);
    const std::u16string unidades = A16(texto);
    Banco banco;
    std::vector<double> propia, baja, programa, razon, razonBaja, cpu, porPalabra;
    // The program's own speeds mean something else: the one whose sound is as long as ours.
    const double largo = banco.Graba(unidades, 0).sonido;
    const double suyo = banco.GrabaPrograma(texto, 170).sonido;
    if (largo <= 0 || suyo <= 0) {
        std::fprintf(stderr, "the worker or espeak-ng gives no sound\n");
        return 1;
    }
    const int velocidad = std::clamp(static_cast<int>(170 * suyo / largo + .5), 80, 449);
    for (int i = 0; i < kVeces; ++i) {
        const auto veces = [](const Medida &m) { return m.sonido / m.segundos; };
        const Medida de = banco.GrabaPrograma(texto, velocidad);
        const Medida a = banco.Graba(unidades, 0), b = banco.Graba(unidades, 11025);
        programa.push_back(veces(de));
        propia.push_back(veces(a));
        baja.push_back(veces(b));
        razon.push_back(veces(a) / veces(de));
        razonBaja.push_back(veces(b) / veces(de));
        cpu.push_back(a.cpu / a.segundos * 100);
        porPalabra.push_back(a.cpu * 1e6 / static_cast<double>(a.palabras));
    }
    std::printf("| %-48s | %10s | %10s | %-6s | %4s |\n", "WAV files, Spanish, 20,000 bytes at 170", "median", "p95",
                "unit", "n");
    std::printf("|%s|%s|%s|%s|%s|\n", std::string(50, '-').c_str(), std::string(12, '-').c_str(),
                std::string(12, '-').c_str(), std::string(8, '-').c_str(), std::string(6, '-').c_str());
    Fila("espeak-ng -f -w, times real time", "x", programa);
    Fila("into a file at the engine's rate", "x", propia);
    Fila("into a file at 11025 Hz", "x", baja);
    Fila("  against espeak-ng, the engine's rate", "x", razon);
    Fila("  against espeak-ng, 11025 Hz", "x", razonBaja);
    Fila("the reader's share of a core meanwhile", "%", cpu);
    Fila("the reader's whole work for a word and its sound", "us", porPalabra);
    std::vector<double> codec, frios;
    for (int i = 0; i < 7; ++i) codec.push_back(Codec());
    for (int i = 0; i < 30; ++i) frios.push_back(Frio());
    Fila("a word event through the codec, both sides", "ns", codec);
    Fila("cold worker, spawn to first samples", "ms", frios);
    return Mediana(razon) >= 0.9 && Mediana(razonBaja) >= 0.9 ? 0 : 2;
}
