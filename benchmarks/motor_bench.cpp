// What the engine worker costs: from the request to the first samples, and how much faster than speech it speaks.
#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>

#include "worker/Locuciones.h"

namespace {

using namespace ondalis;
using Reloj = std::chrono::steady_clock;

double Ms(Reloj::duration d) { return std::chrono::duration<double, std::milli>(d).count(); }

std::u16string LargoDe(std::size_t unidades) {
    const std::u16string parrafo =
        u"En un lugar de la costa vivía un hombre que cada mañana salía a caminar por la playa. Llevaba siempre un "
        u"sombrero viejo, un bastón de madera y un cuaderno donde apuntaba lo que veía.\n\n";
    std::u16string texto;
    while (texto.size() < unidades) texto += parrafo;
    return texto;
}

// Milliseconds from the request to its first samples.
double PrimeraMuestra(cTrabajador &motor, std::uint64_t numero, const std::u16string &texto) {
    Locucion l = Una(Carlos(), texto);
    l.numero = numero;
    const auto antes = Reloj::now();
    motor.Envia(TramaHabla{std::move(l)});
    while (const auto trama = motor.Siguiente()) {
        const auto *pcm = std::get_if<TramaPcm>(&*trama);
        if (pcm && pcm->numero == numero) return Ms(Reloj::now() - antes);
    }
    return -1;
}

void Fila(const char *nombre, const char *unidad, std::vector<double> valores) {
    std::sort(valores.begin(), valores.end());
    const auto parte = [&valores](double p) {
        return valores[std::min(valores.size() - 1, static_cast<std::size_t>(p * static_cast<double>(valores.size())))];
    };
    std::printf("| %-48s | %10.3f | %10.3f | %-6s | %4zu |\n", nombre, parte(.5), parte(.95), unidad, valores.size());
}

std::vector<double> Veces(int n, const std::function<double(int)> &una) {
    std::vector<double> valores;
    for (int i = 0; i < n; i++) valores.push_back(una(i));
    return valores;
}

}  // namespace

int main() {
    const std::u16string corto = u"Hola, esto es una prueba.", mega = LargoDe(1 << 20), libro = LargoDe(20'000);
    std::printf("| %-48s | %10s | %10s | %-6s | %4s |\n", "engine worker, Carlos at 170", "median", "p95", "unit", "n");
    std::printf("|%s|%s|%s|%s|%s|\n", std::string(50, '-').c_str(), std::string(12, '-').c_str(),
                std::string(12, '-').c_str(), std::string(8, '-').c_str(), std::string(6, '-').c_str());

    cTrabajador caliente(ONDALIS_MOTOR);
    std::uint64_t numero = 0;
    PrimeraMuestra(caliente, ++numero, corto);
    Fila("request to first samples, warm", "ms", Veces(200, [&](int) {
             const double ms = PrimeraMuestra(caliente, ++numero, corto);
             caliente.Recoge(numero);
             return ms;
         }));
    Fila("request to first samples, warm, 1 Mi characters", "ms", Veces(50, [&](int) {
             const double ms = PrimeraMuestra(caliente, ++numero, mega);
             caliente.Envia(TramaPara{numero});
             PrimeraMuestra(caliente, ++numero, corto);
             caliente.Recoge(numero);
             return ms;
         }));
    Fila("replacing a blocked utterance, to first samples", "ms", Veces(100, [&](int) {
             PrimeraMuestra(caliente, ++numero, mega);
             const double ms = PrimeraMuestra(caliente, ++numero, corto);
             caliente.Recoge(numero);
             return ms;
         }));
    Fila("spawn and request to first samples, cold", "ms", Veces(50, [&](int) {
             const auto antes = Reloj::now();
             cTrabajador frio(ONDALIS_MOTOR);
             PrimeraMuestra(frio, 1, corto);
             return Ms(Reloj::now() - antes);
         }));
    for (const int velocidad : {170, 400})
        Fila(velocidad == 170 ? "times real time, 20,000 characters, at 170"
                              : "times real time, 20,000 characters, at 400",
             "x", Veces(3, [&](int) {
                 Locucion l = Una(Carlos(), libro);
                 l.voz.velocidad = velocidad;
                 const auto antes = Reloj::now();
                 const Oido oido = caliente.Di(l);
                 return static_cast<double>(oido.pcm.size()) / oido.hercios / (Ms(Reloj::now() - antes) / 1000);
             }));
}
