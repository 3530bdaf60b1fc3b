// When words are told against when they are said, for command engines that tell nothing, on running texts.
#include <array>
#include <cstdio>

#include "worker/Calibracion.h"
#include "worker/CarpetaMotores.h"
#include "worker/Locuciones.h"
#include "worker/TextosLenguas.h"

namespace ondalis {
namespace {

struct Errores {
    std::vector<double> ms;
    void Suma(const Oido &verdad, const Oido &dicho) {
        std::size_t k = 0;
        for (const TramaPalabra &p : verdad.palabras) {
            // eSpeak NG joins some short English words and signals one of them only.
            while (k < dicho.palabras.size() && dicho.palabras[k].posicion < p.posicion) k++;
            ASSERT_LT(k, dicho.palabras.size());
            ASSERT_EQ(p.posicion, dicho.palabras[k].posicion);
            ms.push_back(std::abs(static_cast<double>(p.muestra) / verdad.hercios -
                                  static_cast<double>(dicho.palabras[k].muestra) / dicho.hercios) *
                         1000);
        }
    }
    double Parte(double limite) const {  // of the words, those nearer
        return static_cast<double>(std::count_if(ms.begin(), ms.end(), [limite](double e) { return e <= limite; })) /
               static_cast<double>(ms.size());
    }
    double Centil(double parte) {
        std::sort(ms.begin(), ms.end());
        return ms[std::min(ms.size() - 1, static_cast<std::size_t>(parte * static_cast<double>(ms.size())))];
    }
    void Imprime(const std::string &nombre) {
        std::printf("%-22s %4zu words: median %3.0f ms, 95th %3.0f ms, worst %4.0f ms, within 100 ms %.1f %%\n",
                    nombre.c_str(), ms.size(), Centil(.5), Centil(.95), Centil(1), 100 * Parte(100));
    }
};

// The sentences of a running text.
std::vector<std::u16string> Frases(std::u16string_view texto) {
    std::vector<std::u16string> frases;
    for (std::size_t i = 0; i < texto.size();) {
        std::size_t fin = i;
        do fin = texto.find_first_of(u".?!", fin) + 1;
        while (fin != 0 && fin < texto.size() && texto[fin] != u' ');
        if (fin == 0) fin = texto.size();
        frases.emplace_back(texto.substr(i, fin - i));
        i = std::min(texto.size(), fin + 1);
    }
    return frases;
}

ParametrosVoz De(std::string motor, std::string voz) {
    return {std::move(motor), std::move(voz), false, 170, 1.0, 100, 50, 0, 0, 50};
}

// The words a minute at which the engine asks itself for 156.
int PalabrasDelNominal(const char *idioma) {
    int v = 70;
    while (RitmoDe(v, idioma).nominal < 156) v++;
    return v;
}

// The pattern's own engine, in the pattern's voice and in another: its own word times are the truth.
TEST(TiemposPalabras, OfAProgramThatTellsNothingNearlyAllAreWithinATenthOfASecond) {
    struct Caso {
        const char *idioma, *lcid;
    };
    constexpr std::array kCasos{Caso{"roa/es", "40A;C0A"}, Caso{"gmw/en", "809"}, Caso{"gmw/en-US", "409;9"},
                                Caso{"roa/fr", "40C"},     Caso{"gmw/de", "407"}, Caso{"roa/it", "410"}};
    for (const Caso &caso : kCasos) {
        for (const char *variante : {"", "+f3"}) {
            CarpetaMotores carpeta;
            const std::string argumentos = std::string("-v ") + caso.idioma + variante + " -s 156 --stdout";
            carpeta.Escribe("m/e.motor", "[motor]\nfabricante = P\nprograma = espeak-ng\nargumentos = " + argumentos +
                                             " --stdin\n[voz v]\nnombre = V\nlengua = " + caso.lcid + "\n");
            cTrabajador exacto(ONDALIS_MOTOR), dicho(ONDALIS_MOTOR, carpeta.Entorno());
            Errores errores;
            const std::string_view propio = std::string_view(caso.idioma) == "gmw/en-US" ? "gmw/en" : caso.idioma;
            for (const TextosLengua &t : kTextos) {
                if (t.idioma != propio) continue;
                for (const std::u16string_view texto : {t.calibracion, t.prueba})
                    for (const std::u16string &frase : Frases(texto)) {
                        const Oido b = dicho.Di(Una(De("e", "v"), frase));
                        ParametrosVoz voz = De("espeak", caso.idioma);
                        voz.velocidad = PalabrasDelNominal(caso.idioma);
                        const Oido a = exacto.Di(Una(voz, frase));
                        errores.Suma(a, b);
                    }
            }
            errores.Imprime(std::string(caso.idioma) + variante);
            // Seen: 96.7 to 100 % with the pattern's own voice, 93.9 to 99.4 % with the other.
            EXPECT_GT(errores.Parte(100), *variante ? .93 : .96) << caso.idioma << variante;
            EXPECT_LT(errores.Centil(.5), 30) << caso.idioma << variante;
            EXPECT_LT(errores.Centil(1), 350) << caso.idioma << variante;
        }
    }
}

TEST(TiemposPalabras, OfAnotherEngineAgainstItsOwnTimesNearlyAllAreWithinATenthOfASecond) {
    if (access("/usr/bin/flite", X_OK) != 0) GTEST_SKIP() << "SKIP: flite is not installed";
    for (const char *voz : {"slt", "rms", "awb", "kal16", "kal"}) {
        CarpetaMotores carpeta;
        std::filesystem::create_directories(carpeta.Ruta("m"));
        std::filesystem::copy_file(std::string(ONDALIS_MOTORES_ENVIADOS) + "/flite.motor",
                                   carpeta.Ruta("m/flite.motor"));
        carpeta.Escribe("m/mudo.motor",
                        "[motor]\nfabricante = P\nprograma = flite\nentrada = fichero\nsalida = fichero\n"
                        "argumentos = -voice {voz} --setf duration_stretch=1 -f {texto} -o {salida}\nmax-caracteres = "
                        "400\n[voz " +
                            std::string(voz) + "]\nnombre = V\nlengua = 409;9\n");
        cTrabajador exacto(ONDALIS_MOTOR, carpeta.Entorno()), dicho(ONDALIS_MOTOR, carpeta.Entorno());
        Errores errores;
        for (const std::u16string_view texto : {kTextos[1].calibracion, kTextos[1].prueba})
            for (const std::u16string &frase : Frases(texto))
                errores.Suma(exacto.Di(Una(De("flite", voz), frase)), dicho.Di(Una(De("mudo", voz), frase)));
        errores.Imprime(std::string("flite ") + voz);
        EXPECT_GT(errores.Parte(100), .97) << voz;  // seen: 97.7 to 99.6 %
        EXPECT_LT(errores.Centil(.5), 30) << voz;
        EXPECT_LT(errores.Centil(1), 350) << voz;
    }
}

}  // namespace
}  // namespace ondalis
