// The ECI operations with the real worker: WAV files as a player finds them.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <thread>

#include "engine/cCanalMotor.h"
#include "engine/cLanzadorProceso.h"
#include "engine/cSalidaNula.h"
#include "fakes/CarpetaPropia.h"
#include "fakes/LectorWav.h"
#include "libs/ondalis_eci.h"
#include "libs/ondalis_eci_servicio.h"

namespace ondalis::prueba {
namespace {

using namespace std::chrono_literals;
using Segundos = std::chrono::duration<double>;

const std::string kFrase = "En un lugar de la Mancha, de cuyo nombre no quiero acordarme. ";

std::string Libro(std::size_t bytes) {
    std::string texto;
    while (texto.size() < bytes) texto += kFrase;
    return texto;
}

// What the program hands in, with a condition in place of its event loop.
class Servicios {
public:
    Servicios() { CreaVozECI(); }

    // False after a minute without it.
    bool Espera(const std::function<bool()> &listo) {
        std::unique_lock guarda(m_cerrojo);
        return m_cambio.wait_for(guarda, 60s, listo);
    }

private:
    void Despierta() {
        { const std::lock_guard guarda(m_cerrojo); }
        m_cambio.notify_all();
    }

    std::mutex m_cerrojo;
    std::condition_variable m_cambio;
    cRelojMonotono m_reloj;
    cLanzadorProceso m_lanzador{ONDALIS_MOTOR, {"--nice", "10"}};
    cSalidaNula m_nula{m_reloj};
    cSalidaFichero m_salida;
    cCanalMotor m_vivo{m_lanzador, m_nula, m_reloj};
    cCanalMotor m_ficheros{m_lanzador, m_salida, m_reloj, PlazosMotor{}.SinPrisa()};
    cServicioECI m_servicio{{.vivo = &m_vivo,
                             .fichero = &m_ficheros,
                             .salida = &m_salida,
                             .espera = [this](const auto &listo) { EXPECT_TRUE(Espera(listo)) << "it never ended"; },
                             .despierta = [this] { Despierta(); },
                             .avisa = [](const std::u16string &texto) { ADD_FAILURE() << texto.size(); }}};
};

off_t Tamano(const std::string &ruta) {
    struct stat datos {};
    return stat(ruta.c_str(), &datos) == 0 ? datos.st_size : 0;
}

// Looks again and again until the file has grown to so many bytes. False after a minute.
bool EsperaTamano(const std::string &ruta, off_t bytes) {
    const auto plazo = std::chrono::steady_clock::now() + 60s;
    while (Tamano(ruta) < bytes) {
        if (std::chrono::steady_clock::now() > plazo) return false;
        std::this_thread::yield();
    }
    return true;
}

// In kilobytes, of this process.
long Memoria() {
    std::ifstream estado("/proc/self/status");
    for (std::string linea; std::getline(estado, linea);)
        if (linea.starts_with("VmRSS:")) return std::atol(linea.c_str() + 6);
    return 0;
}

double Volumen(const Wav &wav) {
    double suma = 0;
    for (const std::int16_t m : wav.muestras) suma += std::abs(m);
    return suma / static_cast<double>(std::max<std::size_t>(1, wav.muestras.size()));
}

class ECIConMotor : public testing::Test {
protected:
    Wav Graba(const char *nombre, const std::string &texto) {
        EXPECT_EQ(1, SetDestinoECI(carpeta.Ruta(nombre).c_str()));
        EXPECT_EQ(1, AddTextoECI(texto.c_str()));
        EXPECT_EQ(1, HablaECI(1));
        EXPECT_EQ(0, EstaHablandoECI());
        return Lee(nombre);
    }
    Wav Lee(const char *nombre, bool conSobrante = false) const {
        const auto wav = LeeWav(carpeta.Lee(nombre), conSobrante);
        EXPECT_TRUE(wav) << "no true header";
        return wav.value_or(Wav{});
    }
    static double Dura(const Wav &wav) { return static_cast<double>(wav.muestras.size()) / wav.hercios; }

    CarpetaPropia carpeta;
};

TEST_F(ECIConMotor, ARecordingIsAWavFileOf11025HertzAsLongAsItsSpeech) {
    const Servicios servicios;
    const Wav wav = Graba("a.wav", kFrase);
    EXPECT_EQ(11025, wav.hercios);
    // Eleven words at 170 a minute are 3.9 s and the pauses.
    EXPECT_GT(Dura(wav), 3.0);
    EXPECT_LT(Dura(wav), 5.5);
    EXPECT_GT(Volumen(wav), 300);
    const Wav rapida = Graba("b.wav", "`vs340" + kFrase);
    EXPECT_LT(Dura(rapida), 0.7 * Dura(wav));
    const Wav baja = Graba("c.wav", "`vv32500" + kFrase);
    EXPECT_NEAR(Volumen(baja) / Volumen(wav), 0.5, 0.05);
}

TEST_F(ECIConMotor, AnEmptyTextGivesAFileWithoutSpeech) {
    const Servicios servicios;
    EXPECT_LT(Dura(Graba("a.wav", "")), 0.1);
    EXPECT_LT(Dura(Graba("b.wav", "`l2.0`v1`vs170`vv65000 ")), 0.1);
}

TEST_F(ECIConMotor, ASecondSpeechIsAddedBehindTheFirst) {
    const Servicios servicios;
    const Wav una = Graba("a.wav", kFrase);
    const Wav dos = Graba("a.wav", kFrase);
    ASSERT_GT(una.muestras.size(), 0u);
    // A warm engine carries the phase of its waves over: a period of the pitch more or less.
    EXPECT_NEAR(static_cast<double>(dos.muestras.size()), 2.0 * static_cast<double>(una.muestras.size()), 11025 / 105.);
    EXPECT_TRUE(std::equal(una.muestras.begin(), una.muestras.end(), dos.muestras.begin()));
}

TEST_F(ECIConMotor, ALongTextIsRecordedAtTheEnginesSpeed) {
    const Servicios servicios;
    const auto antes = std::chrono::steady_clock::now();
    const Wav wav = Graba("a.wav", Libro(20'000));
    const double tardo = Segundos(std::chrono::steady_clock::now() - antes).count();
    std::printf("%.0f s of audio in %.2f s\n", Dura(wav), tardo);
    EXPECT_GT(Dura(wav), 600);
    EXPECT_LT(tardo, Dura(wav) / 10);
}

TEST_F(ECIConMotor, WithoutWaitingTheFileIsCompleteAsSoonAsItSpeaksNoMore) {
    Servicios servicios;
    ASSERT_EQ(1, SetDestinoECI(carpeta.Ruta("a.wav").c_str()));
    ASSERT_EQ(1, AddTextoECI(Libro(2000).c_str()));
    ASSERT_EQ(1, HablaECI(0));
    EXPECT_EQ(1, EstaHablandoECI());
    ASSERT_TRUE(servicios.Espera([] { return EstaHablandoECI() == 0; }));
    EXPECT_GT(Dura(Lee("a.wav")), 60);
}

TEST_F(ECIConMotor, AMegabyteStartsAtOnceCostsLittleMemoryAndIsCutAtOnce) {
    const Servicios servicios;
    ASSERT_EQ(1, SetDestinoECI(carpeta.Ruta("a.wav").c_str()));
    const std::string texto = Libro(1'000'000);
    const long memoria = Memoria();
    const auto antes = std::chrono::steady_clock::now();
    ASSERT_EQ(1, AddTextoECI(texto.c_str()));
    ASSERT_EQ(1, HablaECI(0));
    ASSERT_TRUE(EsperaTamano(carpeta.Ruta("a.wav"), 1000));
    const double arranque = Segundos(std::chrono::steady_clock::now() - antes).count();
    ASSERT_TRUE(EsperaTamano(carpeta.Ruta("a.wav"), 20'000'000));
    const long mas = Memoria() - memoria;
    const auto corte = std::chrono::steady_clock::now();
    CallaECI();
    const double cortado = Segundos(std::chrono::steady_clock::now() - corte).count();
    std::printf("first samples after %.3f s, %ld kB more, cut in %.3f s\n", arranque, mas, cortado);
    EXPECT_LT(arranque, 5);
    EXPECT_LT(mas, 64 * 1024);
    EXPECT_LT(cortado, 2);
    EXPECT_EQ(0, EstaHablandoECI());
    const Wav wav = Lee("a.wav");
    EXPECT_GE(wav.muestras.size(), 10'000'000u - 22u);
    // Nothing of what was cut gets into the next file, or still into its own.
    EXPECT_NEAR(Dura(Graba("b.wav", kFrase)), Dura(Graba("c.wav", kFrase)), 0.05);
    EXPECT_EQ(wav.muestras.size(), Lee("a.wav").muestras.size());
}

// Half-cut annotations, zeros' like and bytes of no encoding.
TEST_F(ECIConMotor, HostileTextsAreRecordedAllTheSame) {
    const Servicios servicios;
    for (const char *texto : {"`", "`v", "`l2.", "`vs", "\xFF\xFE\xFD", "\x01\x02\x1B[m", "`v99 `l99.9 ``````",
                              "a`vs99999999999999999999b", "\xED\xA0\x80 hola"}) {
        SCOPED_TRACE(texto);
        Graba("a.wav", texto);
    }
}

TEST_F(ECIConMotor, AProcessThatIsKilledInTheMiddleLeavesAPlayableFile) {
    const std::string ruta = carpeta.Ruta("a.wav"), texto = Libro(1'000'000);
    const pid_t hijo = fork();
    ASSERT_GE(hijo, 0);
    if (hijo == 0) {
        const Servicios servicios;
        if (SetDestinoECI(ruta.c_str()) == 1 && AddTextoECI(texto.c_str()) == 1 && HablaECI(0) == 1)
            while (true) pause();
        _exit(1);
    }
    const bool crecido = EsperaTamano(ruta, 500'000);
    kill(hijo, SIGKILL);
    int estado = 0;
    ASSERT_EQ(hijo, waitpid(hijo, &estado, 0));
    ASSERT_TRUE(crecido);
    ASSERT_TRUE(WIFSIGNALED(estado));
    const Wav wav = Lee("a.wav", true);
    EXPECT_GT(Dura(wav), 10);
    EXPECT_GT(Volumen(wav), 300);
    // And it can be added to.
    const Servicios servicios;
    const Wav seguida = Graba("a.wav", kFrase);
    EXPECT_GT(Dura(seguida), Dura(wav) + 3.0);
}

}  // namespace
}  // namespace ondalis::prueba
