// How many times faster than real time each engine of the worker speaks: three formant voices, the plain voice of the
// same language, and one voice of each command engine that is installed. Samples and word events cross the socket.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <map>

#include "engine/HablantesIBM.h"
#include "worker/Locuciones.h"

namespace {

using namespace ondalis;
using RelojReal = std::chrono::steady_clock;

constexpr int kVeces = 5;

std::u16string Libro(std::size_t unidades) {
    std::u16string texto;
    while (texto.size() < unidades)
        texto +=
            u"On the coast there lived a man who walked along the beach every morning. He wore an old hat, carried a "
            u"wooden stick, and kept a small book for what he saw. Nobody knew what he wrote in it. ";
    return texto;
}

struct Fila {
    std::string nombre;
    ParametrosVoz voz;
    std::u16string texto;
};

std::vector<Fila> Filas(cTrabajador &motor) {
    const std::u16string largo = Libro(20'000), corto = Libro(400);
    std::vector<Fila> filas;
    for (const HablanteIBM &h : HablantesIBM()) {
        const std::string nombre = h.nombre;
        if (nombre == "Reed" || nombre == "Shelley" || nombre == "Grandpa")
            filas.push_back({"IBM, " + nombre, ConSusValores(h), largo});
    }
    filas.push_back({"eSpeak NG, en-US", Llana("gmw/en-US"), largo});
    // A program is started for each sentence: a few are enough.
    std::map<std::string, TramaVoz> deOrden;
    motor.Envia(TramaPideVoces{});
    while (const auto trama = motor.Siguiente()) {
        if (std::holds_alternative<TramaFin>(*trama)) break;
        if (const auto *voz = std::get_if<TramaVoz>(&*trama); voz && voz->motor != "espeak")
            deOrden.emplace(voz->motor, *voz);
    }
    for (const auto &[nombre, voz] : deOrden) {
        ParametrosVoz parametros = Llana(voz.voz);
        parametros.motor = nombre;
        filas.push_back({nombre + ", " + voz.nombre, parametros, corto});
    }
    return filas;
}

}  // namespace

int main() {
    cTrabajador motor(ONDALIS_MOTOR);
    std::printf("| %-34s | %10s | %10s | %12s | %4s |\n", "engine, at 170 words a minute", "times real", "lowest",
                "words/s", "n");
    std::printf("|%s|%s|%s|%s|%s|\n", std::string(36, '-').c_str(), std::string(12, '-').c_str(),
                std::string(12, '-').c_str(), std::string(14, '-').c_str(), std::string(6, '-').c_str());
    for (const Fila &fila : Filas(motor)) {
        std::vector<double> veces, palabras;
        motor.Di(Una(fila.voz, std::u16string(u"Warm.")));
        for (int i = 0; i < kVeces; ++i) {
            const auto inicio = RelojReal::now();
            const Oido oido = motor.Di(Una(fila.voz, fila.texto));
            const double segundos = std::chrono::duration<double>(RelojReal::now() - inicio).count();
            if (!oido.fin || oido.pcm.empty() || oido.hercios == 0) {
                std::fprintf(stderr, "%s: no sound: %s\n", fila.nombre.c_str(), oido.error.c_str());
                return 1;
            }
            veces.push_back(static_cast<double>(oido.pcm.size()) / oido.hercios / segundos);
            palabras.push_back(static_cast<double>(oido.palabras.size()) / segundos);
        }
        std::sort(veces.begin(), veces.end());
        std::sort(palabras.begin(), palabras.end());
        std::printf("| %-34s | %10.1f | %10.1f | %12.0f | %4d |\n", fila.nombre.c_str(), veces[kVeces / 2],
                    veces.front(), palabras[kVeces / 2], kVeces);
    }
    return 0;
}
