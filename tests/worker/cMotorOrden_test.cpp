// Command engines in the real worker, with programs that behave and programs that don't.
#include <unistd.h>

#include <chrono>

#include "worker/CarpetaMotores.h"
#include "worker/Locuciones.h"

namespace ondalis {
namespace {

using Lista = std::vector<std::u16string>;
using Reloj = std::chrono::steady_clock;

double MsDesde(Reloj::time_point t) { return std::chrono::duration<double, std::milli>(Reloj::now() - t).count(); }

ParametrosVoz De(std::string motor, std::string voz = "v") {
    return {std::move(motor), std::move(voz), false, 170, 1.0, 100, 50, 0, 0, 50};
}

constexpr const char *kEspeak =
    "argumentos = -v roa/es -s {ritmo} -p {tono} --stdin --stdout\nritmo = palabras\n"
    "ritmo-minimo = 0.5\nritmo-maximo = 2.6\ntono-centro = 50\ntono-maximo = 99\n";
constexpr const char *kCrudo = "formato = crudo\nhercios = 8000\nplazo-primera-ms = 300\nplazo-ms = 600\n";
// A second of square wave.
constexpr const char *kPita = "cat >/dev/null\nhead -c 16000 /dev/zero | tr '\\0' '\\040'\n";
// Of 16,000 bytes at 8000 hertz.
const std::string kCabeceraDeUnSegundo =
    R"(printf 'RIFF\244\076\0\0WAVEfmt \020\0\0\0\001\0\001\0\100\037\0\0\200\076\0\0\002\0\020\0data\200\076\0\0')"
    "\n";

class cMotorOrden : public testing::Test {
protected:
    Oido Di(const Locucion &l) { return cTrabajador(ONDALIS_MOTOR, m_carpeta.Entorno()).Di(l); }
    std::string Error(const std::string &programa, const char *motor = kCrudo) {
        m_carpeta.Motor("p", m_carpeta.Programa("p", programa), motor);
        const Oido oido = Di(Una(De("p"), u"Una frase."));
        EXPECT_TRUE(oido.fin);
        EXPECT_TRUE(oido.pcm.empty());
        return oido.error;
    }
    CarpetaMotores m_carpeta;
};

TEST_F(cMotorOrden, EveryWordIsToldOnceInOrderWithItsPlaceInTheSource) {
    m_carpeta.Motor("e", "espeak-ng", kEspeak);
    const std::u16string texto =
        u"¿Qué? El an\u0303o 😀 costó 12.345,67 euros. El Sr. López (rojo-verde) salió; שלום עולם.";
    const Oido oido = Di(Una(De("e"), texto));
    EXPECT_EQ(oido.error, "");
    EXPECT_FALSE(oido.tarde);
    EXPECT_EQ(PalabrasDe(oido, texto), (Lista{u"Qué", u"El", u"an\u0303o", u"😀", u"costó", u"12.345,67", u"euros",
                                              u"El", u"Sr", u"López", u"rojo-verde", u"salió", u"שלום", u"עולם"}));
    for (std::size_t i = 1; i < oido.palabras.size(); i++)
        EXPECT_GE(oido.palabras[i].muestra, oido.palabras[i - 1].muestra);
    EXPECT_LT(oido.palabras.back().muestra, oido.pcm.size());
}

TEST_F(cMotorOrden, PausesMarksRateAndVolumeAreExact) {
    m_carpeta.Motor("p", m_carpeta.Programa("p", kPita), kCrudo);
    Oido oido = Di(Una(De("p"), {Orden(TipoTramo::Pausa, 250), Nombrado(TipoTramo::Marca, u"a"), Texto(u"uno", 5),
                                 Nombrado(TipoTramo::Marca, u"b"), Orden(TipoTramo::Volumen, .5, true),
                                 Texto(u"dos", 20), Orden(TipoTramo::Pausa, 1)}));
    EXPECT_EQ(oido.error, "");
    EXPECT_EQ(oido.hercios, 8000u);
    ASSERT_EQ(oido.pcm.size(), 2000u + 8000u + 8000u + 8u);
    EXPECT_EQ(oido.pcm[1999], 0);
    EXPECT_EQ(oido.pcm[2000], 0x2020);
    EXPECT_EQ(oido.pcm[10000], 0x1010);
    ASSERT_EQ(oido.marcas.size(), 2u);
    EXPECT_EQ(oido.marcas[0].muestra, 2000u);
    EXPECT_EQ(oido.marcas[1].muestra, 10000u);
    ASSERT_EQ(oido.palabras.size(), 2u);
    EXPECT_EQ(oido.palabras[1].posicion, 20u);
    // Without an argument for the rate the sound is stretched.
    ParametrosVoz doble = De("p");
    doble.velocidad = 340;
    oido = Di(Una(doble, u"uno"));
    EXPECT_NEAR(static_cast<double>(oido.pcm.size()), 4000, 100);
}

TEST_F(cMotorOrden, TheProgramItselfSpeaksFasterAndHigherWhereItsDescriptionSaysHow) {
    m_carpeta.Motor("e", "espeak-ng", kEspeak);
    const std::u16string texto = u"Los almendros del valle ya estaban completamente florecidos.";
    ParametrosVoz voz = De("e");
    const Oido normal = Di(Una(voz, texto));
    voz.velocidad = 300;
    const Oido rapida = Di(Una(voz, texto));
    EXPECT_LT(static_cast<double>(rapida.pcm.size()), .75 * static_cast<double>(normal.pcm.size()));
    const Oido aguda = Di(Una(De("e"), {Orden(TipoTramo::Tono, 1.8), Texto(texto)}));
    EXPECT_GT(TonoMediano(aguda.pcm, 22050), 1.2 * TonoMediano(normal.pcm, 22050));
}

constexpr const char *kPalabrasAparte = "argumentos = {tiempos}\ntiempos = palabras\nformato = crudo\nhercios = 8000\n";
// A second of sound, and the times of "uno dos tres" by another road.
std::string Cuenta(const std::string &tiempos) { return "printf '" + tiempos + "' >$1\n" + kPita; }

TEST_F(cMotorOrden, WordsAreToldExactlyWhenTheProgramSaysTheyAre) {
    m_carpeta.Motor("p", m_carpeta.Programa("p", Cuenta("0.125 uno\\n0.5 dos\\n0.75 tres\\n")), kPalabrasAparte);
    const Oido oido = Di(Una(De("p"), u"Uno, dos. Tres"));
    EXPECT_EQ(oido.error, "");
    // Two sentences, each of which the program says with its three words.
    ASSERT_EQ(oido.palabras.size(), 3u);
    const Oido otro = Di(Una(De("p"), u"Uno, dos tres"));
    ASSERT_EQ(otro.palabras.size(), 3u);
    EXPECT_EQ(otro.palabras[0].muestra, 1000u);
    EXPECT_EQ(otro.palabras[1].muestra, 4000u);
    EXPECT_EQ(otro.palabras[2].muestra, 6000u);
}

TEST_F(cMotorOrden, TimesThatMakeNoSenseAreGuessedAsIfThereWereNone) {
    for (const char *mal : {"", "basura\\n", "0.5 uno\\n0.1 dos\\n", "0 otro\\n0.5 texto\\n0.6 distinto\\n"}) {
        m_carpeta.Motor("p", m_carpeta.Programa("p", Cuenta(mal)), kPalabrasAparte);
        const Oido oido = Di(Una(De("p"), u"Uno, dos tres"));
        EXPECT_EQ(oido.error, "") << mal;
        EXPECT_EQ(oido.pcm.size(), 8000u);
        ASSERT_EQ(oido.palabras.size(), 3u) << mal;
        EXPECT_LT(oido.palabras.back().muestra, 8000u);
    }
}

TEST_F(cMotorOrden, SegmentsOnStandardOutputAreJoinedWithTheWordsOwn) {
    m_carpeta.Motor("p",
                    m_carpeta.Programa("p",
                                       "case $1 in palabras) cat >/dev/null; printf 'u n o\\nd o s\\n';; *)\n"
                                       "cat >/dev/null; printf 'pau:0.1 u:0.2 n:0.3 o:0.4 pau:0.5 d:0.6 o:0.8 "
                                       "pau:1.0\\n'\nhead -c 16000 /dev/zero | tr '\\0' '\\040' >$1;; esac\n"),
                    "argumentos = {salida}\nsalida = fichero\ntiempos = segmentos\nargumentos-palabras = palabras\n"
                    "formato = crudo\nhercios = 8000\n");
    const Oido oido = Di(Una(De("p"), u"Uno dos"));
    EXPECT_EQ(oido.error, "");
    ASSERT_EQ(oido.palabras.size(), 2u);
    EXPECT_EQ(oido.palabras[0].muestra, 800u);
    EXPECT_EQ(oido.palabras[1].muestra, 4000u);
}

TEST_F(cMotorOrden, SpellingTellsEveryLetter) {
    m_carpeta.Motor("e", "espeak-ng", kEspeak);
    const std::u16string texto = u"Año, 3";
    const Oido oido = Di(Una(De("e"), {Orden(TipoTramo::Deletreo, 1), Texto(texto)}));
    EXPECT_EQ(PalabrasDe(oido, texto), (Lista{u"A", u"ñ", u"o", u",", u"3"}));
}

TEST_F(cMotorOrden, TheTextIsNeverSeenByAShellAndNeverTakenForAnOption) {
    m_carpeta.Motor("p", m_carpeta.Programa("p", "printf '%s' \"$2\" >" + m_carpeta.Ruta("dicho") + "\n" + kPita),
                    (std::string(kCrudo) + "entrada = argumento\nargumentos = -t {texto}\n").c_str());
    Di(Una(De("p"), u"-x $(touch roto) `a`; \"b\" {voz}"));
    std::ifstream f(m_carpeta.Ruta("dicho"));
    std::string dicho((std::istreambuf_iterator<char>(f)), {});
    EXPECT_EQ(dicho, " -x $(touch roto) `a`; \"b\" {voz}");
}

TEST_F(cMotorOrden, ATextByFileAndSoundByFileNeverTouchTheDisk) {
    m_carpeta.Motor(
        "p", m_carpeta.Programa("p", "cat $1 >" + m_carpeta.Ruta("dicho") + "\nhead -c 1600 /dev/zero >$2\n"),
        (std::string(kCrudo) + "entrada = fichero\nsalida = fichero\nargumentos = {texto} {salida}\n").c_str());
    const Oido oido = Di(Una(De("p"), u"hola"));
    EXPECT_EQ(oido.error, "");
    EXPECT_EQ(oido.pcm.size(), 800u);
    std::ifstream f(m_carpeta.Ruta("dicho"));
    std::string dicho((std::istreambuf_iterator<char>(f)), {});
    EXPECT_EQ(dicho, "hola");
}

TEST_F(cMotorOrden, AProgramThatFailsIsToldAndEndsLikeAnyOther) {
    EXPECT_EQ(Error("exit 3\n"), "p: el programa ha fallado con 3");
    EXPECT_EQ(Error("kill -9 $$\n"), "p: el programa ha muerto por la señal 9");
    EXPECT_EQ(Error("cat >/dev/null\n"), "p: el programa no ha dado nada");
    EXPECT_EQ(Error("echo basura\n", "formato = wav\n"), "p: el programa no ha dado un fichero WAV");
    // A header of a second and a fifth of it; the program says that all went well.
    EXPECT_EQ(Error("cat >/dev/null\n" + kCabeceraDeUnSegundo + "head -c 3200 /dev/zero\nexit 0\n", "formato = wav\n"),
              "p: el programa ha dado un WAV cortado");
    EXPECT_EQ(Error("trap '' TERM\nsleep 1000\n"), "p: el programa no responde");
    EXPECT_EQ(Error("printf 'ab'; sleep 1000\n"), "p: el programa no termina a tiempo");
    EXPECT_EQ(Error("exec cat /dev/zero\n", "formato = crudo\nhercios = 8000\n"),
              "p: el programa no deja de dar datos");
    EXPECT_EQ(Error("head -c 100000000 /dev/zero >$1 2>/dev/null\n",
                    "formato = crudo\nhercios = 8000\nsalida = fichero\nargumentos = {salida}\n")
                  .substr(0, 14),
              "p: el programa");
}

TEST_F(cMotorOrden, AWavOfTheLengthThatItTellsIsHeardWhole) {
    m_carpeta.Motor("p",
                    m_carpeta.Programa("p", "cat >/dev/null\n" + kCabeceraDeUnSegundo + "head -c 16000 /dev/zero\n"),
                    "formato = wav\n");
    const Oido oido = Di(Una(De("p"), u"Una frase."));
    EXPECT_EQ(oido.error, "");
    EXPECT_EQ(oido.hercios, 8000u);
    EXPECT_EQ(oido.pcm.size(), 8000u);
}

TEST_F(cMotorOrden, TheRestOfATextGoesOnBehindAPieceThatFailed) {
    m_carpeta.Motor("p",
                    m_carpeta.Programa("p",
                                       "read t\ncase \"$t\" in *CUELGA*) sleep 1000;; *MUERE*) kill -9 $$;; esac\n"
                                       "head -c 1600 /dev/zero\n"),
                    kCrudo);
    const std::u16string texto = u"Una frase. CUELGA aquí. Otra más. MUERE ahora. La última.";
    const Oido oido = Di(Una(De("p"), texto));
    EXPECT_TRUE(oido.fin);
    EXPECT_EQ(oido.pcm.size(), 3 * 800u);
    EXPECT_EQ(PalabrasDe(oido, texto), (Lista{u"Una", u"frase", u"Otra", u"más", u"La", u"última"}));
}

TEST_F(cMotorOrden, WhileAProgramWorksTheReaderIsToldWithinItsSecond) {
    m_carpeta.Motor("p",
                    m_carpeta.Programa("p", "read t\ncase \"$t\" in Dos*) sleep 1.5;; esac\nhead -c 1600 /dev/zero\n"),
                    "formato = crudo\nhercios = 8000\n");
    cTrabajador motor(ONDALIS_MOTOR, m_carpeta.Entorno());
    Locucion l = Una(De("p"), u"Uno va. Dos va. Tres va.");
    l.numero = 1;
    motor.Envia(TramaHabla{l});
    std::size_t muestras = 0, formatos = 0;
    while (const auto trama = motor.Siguiente(800)) {
        if (const auto *p = std::get_if<TramaPcm>(&*trama)) muestras += p->muestras.size();
        formatos += std::holds_alternative<TramaFormato>(*trama);
        if (std::holds_alternative<TramaFin>(*trama)) break;
    }
    EXPECT_EQ(muestras, 3 * 800u);
    EXPECT_GT(formatos, 3u);
}

// Both the program and its child, which ignores all but SIGKILL, wait for ever; the child's number is in a file.
class cMotorOrdenColgado : public cMotorOrden {
protected:
    void Empieza() {
        m_carpeta.Motor(
            "p",
            m_carpeta.Programa("p", "trap '' TERM\nsleep 1000 &\necho $! >" + m_carpeta.Ruta("t") + "; mv " +
                                        m_carpeta.Ruta("t") + " " + m_carpeta.Ruta("pid") + "\nwait\n"),
            "formato = crudo\nhercios = 8000\n");
        Locucion l = Una(De("p"), u"Una frase.");
        l.numero = 7;
        m_motor.emplace(ONDALIS_MOTOR, m_carpeta.Entorno());
        m_motor->Envia(TramaHabla{l});
        const auto desde = Reloj::now();
        while (!std::filesystem::exists(m_carpeta.Ruta("pid")) && MsDesde(desde) < 5000) poll(nullptr, 0, 1);
        std::ifstream(m_carpeta.Ruta("pid")) >> m_hijo;
        ASSERT_GT(m_hijo, 1);
    }
    // Milliseconds until the program's child is dead.
    double MsHastaMorir() const {
        const auto desde = Reloj::now();
        while (Vivo() && MsDesde(desde) < 3000) poll(nullptr, 0, 1);
        return MsDesde(desde);
    }
    bool Vivo() const {
        std::ifstream f("/proc/" + std::to_string(m_hijo) + "/stat");
        std::string numero, nombre, estado;
        return (f >> numero >> nombre >> estado) && estado != "Z";
    }
    std::optional<cTrabajador> m_motor;
    pid_t m_hijo = 0;
};

TEST_F(cMotorOrdenColgado, AStopKillsTheWholeGroupWithinFiftyMilliseconds) {
    Empieza();
    m_motor->Envia(TramaPara{7});
    EXPECT_LT(MsHastaMorir(), 50);
    const Oido despues = m_motor->Di(Una(Llana("roa/es"), u"Sigue vivo."));
    EXPECT_EQ(despues.palabras.size(), 2u);
}

TEST_F(cMotorOrdenColgado, TheProgramsDieWithAWorkerThatIsKilled) {
    Empieza();
    kill(m_motor->Pid(), SIGKILL);
    EXPECT_LT(MsHastaMorir(), 1000);
}

TEST_F(cMotorOrden, PiperIsCalledWithItsOwnArgumentsAndSpeaksAtItsModelsRate) {
    std::filesystem::create_directories(m_carpeta.Ruta("bin"));
    std::filesystem::copy_file(ONDALIS_PIPER_FALSO, m_carpeta.Ruta("bin/piper"));
    std::filesystem::create_directories(m_carpeta.Ruta("m"));
    std::filesystem::copy_file(std::string(ONDALIS_MOTORES_ENVIADOS) + "/piper.motor", m_carpeta.Ruta("m/piper.motor"));
    m_carpeta.Escribe("x/ondalis/piper/es_ES-ana-medium.onnx", "");
    m_carpeta.Escribe("x/ondalis/piper/es_ES-ana-medium.onnx.json", "{\"audio\": {\"sample_rate\": 16000}}");
    auto entorno = m_carpeta.Entorno();
    entorno.push_back("PATH=" + m_carpeta.Ruta("bin") + ":/usr/bin:/bin");
    cTrabajador motor(ONDALIS_MOTOR, entorno);
    ParametrosVoz voz = De("piper", "es_ES-ana-medium");
    voz.velocidad = 340;
    const Oido oido = motor.Di(Una(voz, u"Hola, mundo."));
    EXPECT_EQ(oido.error, "");
    EXPECT_EQ(oido.hercios, 16000u);
    EXPECT_EQ(oido.pcm.size(), static_cast<std::size_t>(12 * .06 * .5 * 16000));
    EXPECT_EQ(oido.palabras.size(), 2u);
}

TEST_F(cMotorOrden, FliteSpeaksWithItsFiveVoices) {
    if (access("/usr/bin/flite", X_OK) != 0) GTEST_SKIP() << "SKIP: flite is not installed";
    std::filesystem::create_directories(m_carpeta.Ruta("m"));
    std::filesystem::copy_file(std::string(ONDALIS_MOTORES_ENVIADOS) + "/flite.motor", m_carpeta.Ruta("m/flite.motor"));
    const std::u16string texto = u"Hello world. This is a test, isn't it?";
    for (const char *voz : {"kal", "kal16", "awb", "rms", "slt"}) {
        const Oido oido = Di(Una(De("flite", voz), texto));
        EXPECT_EQ(oido.error, "") << voz;
        EXPECT_EQ(oido.hercios, std::string_view(voz) == "kal" ? 8000u : 16000u);
        EXPECT_EQ(PalabrasDe(oido, texto), (Lista{u"Hello", u"world", u"This", u"is", u"a", u"test", u"isn't", u"it"}));
        const double segundos = static_cast<double>(oido.pcm.size()) / oido.hercios;
        EXPECT_TRUE(segundos > 1.5 && segundos < 6) << voz << " " << segundos;
        EXPECT_GT(Nivel(oido.pcm), 300) << voz;
        ParametrosVoz rapida = De("flite", voz);
        rapida.velocidad = 340;
        EXPECT_NEAR(static_cast<double>(Di(Una(rapida, texto)).pcm.size()) / static_cast<double>(oido.pcm.size()), .5,
                    .1);
    }
}

}  // namespace
}  // namespace ondalis
