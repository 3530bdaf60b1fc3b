// Estimated word times against eSpeak NG's own, on the same speech.
#include "worker/orden/EstimaPalabras.h"

#include <array>

#include "worker/CarpetaMotores.h"
#include "worker/Locuciones.h"

namespace ondalis {
namespace {

TEST(EstimaPalabras, OnSoundWithoutWordsOrWordsWithoutSoundItDoesNoHarm) {
    const std::vector<std::int16_t> nada, silencio(8000, 0);
    const Pieza pieza = HazPieza(u"uno, dos tres", 0, {});
    EXPECT_EQ(EstimaPalabras(pieza, nada, 8000, LenguaSignos::Espanol).size(), 3u);
    for (const std::uint64_t m : EstimaPalabras(pieza, silencio, 8000, LenguaSignos::Espanol)) EXPECT_LT(m, 8000u);
    EXPECT_TRUE(EstimaPalabras(Pieza{}, silencio, 8000, LenguaSignos::Espanol).empty());
}

TEST(EstimaPalabras, ASilenceBelongsToTheSignThatMakesIt) {
    std::vector<std::int16_t> x(3000, 9000);
    x.insert(x.end(), 4000, 0);
    x.insert(x.end(), 3000, 9000);
    const auto inicios = EstimaPalabras(HazPieza(u"palabra, palabra", 0, {}), x, 8000, LenguaSignos::Espanol);
    ASSERT_EQ(inicios.size(), 2u);
    EXPECT_NEAR(static_cast<double>(inicios[1]), 7000, 400);
}

TEST(EstimaPalabras, SpanishWordsAtANormalRateAreMostlyWithinATenthOfASecond) {
    constexpr std::array kFrases{
        u"Platero es pequeño, peludo, suave; tan blando por fuera, que se diría todo de algodón, que no lleva huesos.",
        u"Lo dejo suelto, y se va al prado, y acaricia con su hocico, rozándolas apenas, las florecillas rosas.",
        u"¿Quién te ha dicho que mañana no habrá clase en el instituto?",
        u"El tren con destino a Valencia efectuará su salida por la vía 7 a las 18 horas.",
        u"Mi hermana, que vive en Barcelona desde hace años, trabaja como enfermera en un hospital grande.",
        u"El presidente de la comunidad (un hombre mayor y muy amable) nos recibió en su despacho.",
        u"Es necesario que el ordenador esté conectado a la red para instalar las actualizaciones."};
    CarpetaMotores carpeta;
    // 169 of its words a minute are the 170 that the engine itself is asked for.
    carpeta.Motor("e", "espeak-ng", "argumentos = -v roa/es -s 169 --stdin --stdout\n");
    cTrabajador exacto(ONDALIS_MOTOR), estimado(ONDALIS_MOTOR, carpeta.Entorno());
    std::vector<double> errores;
    for (const char16_t *frase : kFrases) {
        const Oido a = exacto.Di(Una(Llana("roa/es"), frase));
        ParametrosVoz voz = Llana("v");
        voz.motor = "e";
        const Oido b = estimado.Di(Una(voz, frase));
        ASSERT_EQ(a.palabras.size(), b.palabras.size());
        for (std::size_t i = 0; i < a.palabras.size(); i++) {
            EXPECT_EQ(a.palabras[i].posicion, b.palabras[i].posicion);
            errores.push_back(
                std::abs(static_cast<double>(b.palabras[i].muestra) - static_cast<double>(a.palabras[i].muestra)) /
                22.05);
        }
    }
    std::sort(errores.begin(), errores.end());
    const double mediana = errores[errores.size() / 2], alto = errores[errores.size() * 95 / 100];
    std::printf("%zu words: median %.0f ms, 95th percentile %.0f ms\n", errores.size(), mediana, alto);
    EXPECT_LT(mediana, 45);
    EXPECT_LT(alto, 180);
}

}  // namespace
}  // namespace ondalis
