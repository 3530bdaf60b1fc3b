// Signs that the text filter spaces are spoken by name, in each language of the formant voices.
#include <gtest/gtest.h>

#include <set>

#include "worker/Locuciones.h"
#include "worker/Signos.h"

namespace ondalis {
namespace {

// The eleven that the filter spaces, each as three blanks, the sign, two blanks.
const std::u16string kSignosDelFiltro = u",.;:¿?¡!()\"";

TEST(SignosVoz, EverySignOfTheFilterHasANameInEachLanguage) {
    for (const char *idioma : {"roa/es", "gmw/en", "gmw/en-US", "roa/fr", "gmw/de", "roa/it"}) {
        std::set<std::u32string_view> nombres;
        for (const char16_t signo : kSignosDelFiltro) {
            EXPECT_TRUE(EsSignoDelFiltro(signo));
            const auto nombre = NombreDeSigno(signo, LenguaDeSignos(idioma));
            EXPECT_FALSE(nombre.empty()) << idioma << ' ' << static_cast<int>(signo);
            nombres.insert(nombre);
        }
        EXPECT_EQ(nombres.size(), kSignosDelFiltro.size()) << idioma << ": two signs with one name";
    }
    for (char32_t c = 1; c < 0x3000; c++)
        if (EsSignoDelFiltro(c)) {
            EXPECT_NE(kSignosDelFiltro.find(static_cast<char16_t>(c)), std::u16string::npos) << static_cast<int>(c);
        }
}

TEST(SignosVoz, EverySignOfTheFilterSoundsAndIsToldAtItsPlaceInEachLanguage) {
    cTrabajador motor(ONDALIS_MOTOR);
    for (const HablanteIBM &h : HablantesIBM()) {
        if (h.preset != 1) continue;
        for (const char16_t signo : kSignosDelFiltro) {
            const std::u16string texto = u"hola   " + std::u16string(1, signo) + u"  hola";
            const Oido oido = motor.Di(Una(ConSusValores(h), texto));
            EXPECT_EQ(PalabrasDe(oido, texto),
                      (std::vector<std::u16string>{u"hola", std::u16string(1, signo), u"hola"}))
                << h.nombre << ' ' << static_cast<int>(signo);
            if (oido.palabras.size() != 3) continue;
            EXPECT_EQ(oido.palabras[1].posicion, 7u);
            const std::size_t desde = oido.palabras[1].muestra, hasta = oido.palabras[2].muestra;
            ASSERT_GT(hasta, desde + 22050 / 5) << h.nombre << ' ' << static_cast<int>(signo);
            // Its name begins to sound at the event's sample, give or take the silence before a stop.
            EXPECT_GT(Nivel(std::span(oido.pcm).subspan(desde, 22050 / 5)), 300)
                << h.nombre << ' ' << static_cast<int>(signo);
        }
    }
}

TEST(SignosVoz, SignsAloneOneAfterTheOtherAndAtTheEndsAreAllTold) {
    cTrabajador motor(ONDALIS_MOTOR);
    std::u16string texto;
    for (const char16_t signo : kSignosDelFiltro) texto += u"   " + std::u16string(1, signo) + u"  ";
    const Oido oido = motor.Di(Una(Carlos(), texto));
    std::u16string oidos;
    for (const std::u16string &palabra : PalabrasDe(oido, texto)) oidos += palabra;
    EXPECT_EQ(oidos, kSignosDelFiltro);
}

TEST(SignosVoz, TheNamesFollowALanguageChangedInTheText) {
    const auto dice = [](std::vector<Tramo> tramos) { return DiFresco(ONDALIS_MOTOR, Una(Carlos(), tramos)).pcm; };
    EXPECT_EQ(dice({Nombrado(TipoTramo::Voz, u"gmw/en"), Texto(u"  ,  ")}),
              dice({Nombrado(TipoTramo::Voz, u"gmw/en"), Texto(u"comma,")}));
    EXPECT_NE(dice({Nombrado(TipoTramo::Voz, u"gmw/en"), Texto(u"  ,  ")}), dice({Texto(u"  ,  ")}));
}

}  // namespace
}  // namespace ondalis
