#include "speech/cVozSAPI5Lote.h"

#include <gtest/gtest.h>

#include <QFile>

#include "ControlDePrueba.h"
#include "fakes/TokensFalsos.h"

namespace ondalis::prueba {
namespace {

class cVozSAPI5LoteTest : public testing::Test {
protected:
    void SetUp() override {
        for (CanalGuionado *canal : {&vivo, &ficheros})
            canal->alHablar = [this, canal] {
                if (salta) canal->Salta();
                canal->Fin();
            };
    }

    Banco banco;
    CanalGuionado vivo, ficheros;
    cSalidaFichero salida;
    SpFileStream flujo{salida};
    TokensFalsos tokens{TokensFalsos::Tres()};
    bool salta = false;
    cVozSAPI5Lote voz{vivo, ficheros, flujo, tokens, banco.cola, banco.registro.Log()};
};

TEST_F(cVozSAPI5LoteTest, AFileWithoutAPartOfItsTextIsFailure5AndIsCompleted) {
    const QString ruta = banco.registro.Ruta("a.wav");
    EXPECT_FALSE(voz.SpeakAFichero("uno. dos.", ruta, 10));
    salta = true;
    const Fallo fallo = voz.SpeakAFichero("uno. dos.", ruta, 10);
    EXPECT_EQ(fallo.numero, 5);
    EXPECT_EQ(fallo.descripcion, "El motor de voz no ha podido decir una parte del texto");
    EXPECT_TRUE(QFile::exists(ruta));
    salta = false;
    EXPECT_FALSE(voz.SpeakAFichero("uno. dos.", ruta, 10));
}

TEST_F(cVozSAPI5LoteTest, ALiveSpeechGoesOnBehindASkippedClauseWithoutAFailure) {
    salta = true;
    EXPECT_FALSE(voz.Speak("uno. dos."));
}

TEST_F(cVozSAPI5LoteTest, TheFirstVoiceOfTheNameIsTakenBlindToCase) {
    tokens = TokensFalsos({TokensFalsos::Token("A", "ana", "9", "uno"), TokensFalsos::Token("B", "Luis", "9", "dos"),
                           TokensFalsos::Token("C", "Ana", "9", "tres")});
    ASSERT_TRUE(voz.Elige("Ana"));
    EXPECT_FALSE(voz.Speak("hola"));
    EXPECT_EQ(vivo.locuciones.back().voz.motor, "uno");
    ASSERT_TRUE(voz.Elige("LUIS"));
    EXPECT_FALSE(voz.SpeakAFichero("hola", banco.registro.Ruta("a.wav"), 10));
    EXPECT_EQ(ficheros.locuciones.back().voz.motor, "dos");
    EXPECT_FALSE(voz.Elige("An"));
    EXPECT_FALSE(voz.Elige(""));
}

TEST_F(cVozSAPI5LoteTest, AVoiceWhoseNameHoldsASignOfTheRequirementsIsFound) {
    tokens =
        TokensFalsos({TokensFalsos::Token("A", "Ana", "9", "uno"), TokensFalsos::Token("B", "Ana; la de B", "9", "dos"),
                      TokensFalsos::Token("C", "x=y", "9", "tres")});
    ASSERT_TRUE(voz.Elige("Ana; la de B"));
    EXPECT_FALSE(voz.Speak("hola"));
    EXPECT_EQ(vivo.locuciones.back().voz.motor, "dos");
    ASSERT_TRUE(voz.Elige("x=y"));
    EXPECT_FALSE(voz.Speak("hola"));
    EXPECT_EQ(vivo.locuciones.back().voz.motor, "tres");
    EXPECT_FALSE(voz.Elige("Ana;Vendor=A"));
}

}  // namespace
}  // namespace ondalis::prueba
