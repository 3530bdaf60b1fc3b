#include "audio/cVozEnFicheroSAPI5.h"

#include <gtest/gtest.h>

#include "fakes/CanalGuionado.h"
#include "fakes/EciEnFichero.h"
#include "fakes/RegistroPropio.h"
#include "fakes/TokensFalsos.h"

namespace ondalis {
namespace {

constexpr int kHercios = 22050;
constexpr qint64 kCabecera = 44;

class cVozEnFicheroSAPI5Test : public testing::Test {
protected:
    // Each speech is a tenth of a second of samples, and its end.
    std::unique_ptr<CanalVoz> CreaCanal(SalidaAudio &salida) {
        auto nuevo = std::make_unique<prueba::CanalGuionado>();
        canal = nuevo.get();
        canal->alHablar = [this, &salida] {
            salida.Abre(kHercios);
            const std::vector<std::int16_t> muestras(kHercios / 10, 1000);
            salida.Escribe(muestras.data(), muestras.size());
            salida.Completa();
            if (alHablar) alHablar();
            canal->Fin();
        };
        return nuevo;
    }
    qint64 Bytes(const char *nombre) const { return QFileInfo(p.Ruta(nombre)).size(); }

    prueba::RegistroPropio p;
    cCola cola;
    prueba::TokensFalsos tokens{prueba::TokensFalsos::Tres()};
    prueba::CanalGuionado *canal = nullptr;
    std::function<void()> alHablar;
    cVozEnFicheroSAPI5 voz{[this](SalidaAudio &salida) { return CreaCanal(salida); }, tokens, cola, p.Log()};
};

TEST_F(cVozEnFicheroSAPI5Test, AllThatIsSpokenStandsInTheFileAtItsRate) {
    voz.SetFormato(10);
    ASSERT_FALSE(voz.Abre(p.Ruta("a.wav")));
    ASSERT_FALSE(voz.SetVoz(1));
    ASSERT_FALSE(voz.Habla("uno", SpVoice::Purga | SpVoice::XML));
    ASSERT_FALSE(voz.Habla("dos", 0));
    voz.EsperaFinal();
    ASSERT_FALSE(voz.Cierra());
    EXPECT_NEAR(static_cast<double>(Bytes("a.wav") - kCabecera), 2 * 2 * 11025 / 10, 8);
    ASSERT_EQ(canal->locuciones.size(), 2u);
    EXPECT_EQ(canal->locuciones[0].voz.voz, "en-us");
}

TEST_F(cVozEnFicheroSAPI5Test, WhatTheEngineCouldNotSayIsFailure5WithItsReason) {
    ASSERT_FALSE(voz.Abre(p.Ruta("a.wav")));
    canal->alHablar = [this] { canal->Fin(canal->Numero(), u"El motor de voz no responde"); };
    const Fallo fallo = voz.Habla("uno", SpVoice::Purga | SpVoice::XML);
    EXPECT_EQ(fallo.numero, 5);
    EXPECT_EQ(fallo.descripcion, "El motor de voz no responde");
    EXPECT_FALSE(voz.Cierra());
}

TEST_F(cVozEnFicheroSAPI5Test, AClauseThatTheEngineSkipsLeavesTheFileIncompleteUntilItIsOpenedAgain) {
    ASSERT_FALSE(voz.Abre(p.Ruta("a.wav")));
    alHablar = [this] { canal->Salta(); };
    EXPECT_FALSE(voz.Incompleta());
    EXPECT_FALSE(voz.Habla("uno. dos.", 0)) << "the rest of a book is worth its file";
    EXPECT_TRUE(voz.Incompleta());
    alHablar = {};
    EXPECT_FALSE(voz.Habla("tres.", 0));
    EXPECT_TRUE(voz.Incompleta());
    ASSERT_FALSE(voz.Cierra());
    ASSERT_FALSE(voz.Abre(p.Ruta("b.wav")));
    EXPECT_FALSE(voz.Incompleta());
    EXPECT_FALSE(voz.Habla("cuatro.", 0));
    EXPECT_FALSE(voz.Incompleta());
    EXPECT_FALSE(voz.Cierra());
}

TEST_F(cVozEnFicheroSAPI5Test, AVoiceThatIsNotInTheListIsFailure5) {
    EXPECT_EQ(voz.SetVoz(3).numero, 5);
    EXPECT_EQ(voz.SetVoz(-1).numero, 5);
}

TEST_F(cVozEnFicheroSAPI5Test, NothingSpokenIsAFileWithAHeaderOnly) {
    voz.SetFormato(18);
    ASSERT_FALSE(voz.Abre(p.Ruta("a.wav")));
    voz.EsperaFinal();
    ASSERT_FALSE(voz.Cierra());
    EXPECT_EQ(Bytes("a.wav"), kCabecera);
}

TEST_F(cVozEnFicheroSAPI5Test, RefusedMarkupSaysNothing) {
    ASSERT_FALSE(voz.Abre(p.Ruta("a.wav")));
    EXPECT_EQ(voz.Habla("<volume level='x'>a</volume>", SpVoice::Purga | SpVoice::XML).numero,
              Fallo::SintaxisDeEtiquetas);
    ASSERT_FALSE(voz.Cierra());
    EXPECT_TRUE(canal->locuciones.empty());
}

TEST_F(cVozEnFicheroSAPI5Test, ACancelEndsWhatIsWaitedForAndTheFileIsCompleted) {
    ASSERT_FALSE(voz.Abre(p.Ruta("a.wav")));
    alHablar = [this] {
        alHablar = {};
        canal->alHablar = {};
        cola.Pon(cCola::Clase::Orden, [] {});
        voz.Cancela();
    };
    ASSERT_FALSE(voz.Habla("uno", 0));
    ASSERT_FALSE(voz.Cierra());
    EXPECT_GT(Bytes("a.wav"), kCabecera);
}

}  // namespace
}  // namespace ondalis
