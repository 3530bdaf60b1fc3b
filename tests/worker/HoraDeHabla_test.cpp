// An hour of speech in one worker: it neither grows nor slows, and its words stay at their places.
#include <gtest/gtest.h>
#include <time.h>

#include <fstream>

#include "worker/Locuciones.h"
#include "worker/TextosLenguas.h"

namespace ondalis {
namespace {

long ResidenteKiB(pid_t pid) {
    std::ifstream estado("/proc/" + std::to_string(pid) + "/status");
    for (std::string linea; std::getline(estado, linea);)
        if (linea.starts_with("VmRSS:")) return std::strtol(linea.c_str() + 6, nullptr, 10);
    return -1;
}

// Seconds of processor time, which other programs of the machine don't change as they change the time of day.
double Procesador(pid_t pid) {
    clockid_t reloj = 0;
    timespec t{};
    if (clock_getcpuclockid(pid, &reloj) != 0 || clock_gettime(reloj, &t) != 0) return -1;
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) / 1e9;
}

struct Vuelta {
    double habla = 0, procesador = 0;  // seconds
    std::size_t palabras = 0;
    std::vector<std::size_t> comienzos;  // source offsets of one utterance after the other
};

// Varied text: all voices, several speeds, spelling, pauses, roughness and languages in mid-text.
Vuelta UnaVuelta(cTrabajador &motor) {
    Vuelta vuelta;
    const double antes = Procesador(motor.Pid());
    int n = 0;
    for (const HablanteIBM &h : HablantesIBM()) {
        const std::string_view idioma = h.idioma == std::string_view("gmw/en-US") ? "gmw/en" : h.idioma;
        const auto texto = std::find_if(kTextos.begin(), kTextos.end(),
                                        [idioma](const TextosLengua &t) { return t.idioma == idioma; });
        ParametrosVoz voz = ConSusValores(h);
        voz.velocidad = std::array{170, 250, 70, 120, 450}[static_cast<std::size_t>(n++ % 5)];
        const std::u16string trozo(texto->prueba.substr(0, 500));
        const Oido oido =
            motor.Di(Una(voz, {Texto(trozo, 0), Orden(TipoTramo::Pausa, 300), Orden(TipoTramo::Aspereza, 60, true),
                               Orden(TipoTramo::Deletreo, 1), Texto(u"abc ", 600), Orden(TipoTramo::Deletreo, 0),
                               Nombrado(TipoTramo::Voz, u"roa/es"), Texto(u"otra lengua  ,  😀 12.345 y fin.", 700)}));
        EXPECT_TRUE(oido.fin);
        EXPECT_EQ(oido.error, "");
        EXPECT_FALSE(oido.tarde);
        vuelta.habla += static_cast<double>(oido.pcm.size()) / 22050;
        vuelta.palabras += oido.palabras.size();
        for (const TramaPalabra &p : oido.palabras) {
            EXPECT_LT(p.muestra, oido.pcm.size());
            EXPECT_TRUE(p.posicion == 0 || p.posicion >= 600 || trozo[p.posicion - 1] < u'A') << p.posicion;
            vuelta.comienzos.push_back(p.posicion);
        }
    }
    vuelta.procesador = Procesador(motor.Pid()) - antes;
    return vuelta;
}

TEST(HoraDeHabla, AnHourNeitherGrowsNorSlowsAndEveryWordStaysAtItsPlace) {
    cTrabajador motor(ONDALIS_MOTOR);
    const Vuelta primera = UnaVuelta(motor);  // warms up
    std::vector<Vuelta> vueltas;
    const long antes = ResidenteKiB(motor.Pid());
    ASSERT_GT(antes, 0);
    double habla = 0;
    while (habla < 3600) {
        vueltas.push_back(UnaVuelta(motor));
        habla += vueltas.back().habla;
        EXPECT_EQ(vueltas.back().comienzos, primera.comienzos);
        EXPECT_NEAR(vueltas.back().habla, primera.habla, primera.habla * .005);
        ASSERT_LT(vueltas.size(), 60u);
    }
    const long despues = ResidenteKiB(motor.Pid());
    EXPECT_LT(despues - antes, 2048);
    std::vector<double> tiempos;
    for (const Vuelta &v : vueltas) tiempos.push_back(v.procesador);
    // The best of each half: whatever else the machine does only adds.
    const auto mitad = tiempos.begin() + static_cast<std::ptrdiff_t>(tiempos.size() / 2);
    const double comienzo = *std::min_element(tiempos.begin(), mitad), fin = *std::min_element(mitad, tiempos.end());
    EXPECT_LT(fin, comienzo * 1.25);
    std::printf(
        "%.0f s of speech, %zu words, resident %ld KiB and then %ld, %.2f s of processor a round and then %.2f\n",
        habla, primera.palabras * vueltas.size(), antes, despues, comienzo, fin);
}

}  // namespace
}  // namespace ondalis
