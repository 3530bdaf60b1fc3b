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

}  // namespace
}  // namespace ondalis::prueba
