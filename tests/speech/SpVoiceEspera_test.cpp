// SAPI 5 speech that is waited for and is no notice.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTimer>

#include "ControlDePrueba.h"
#include "fakes/TokensFalsos.h"
#include "speech/SpVoice.h"

namespace ondalis::prueba {
namespace {

TEST(SpVoiceEspera, AWaitingSpeechOfSAPI5IsNoNoticeAndItsEventsComeAfterwardsWithoutWords) {
    Banco banco;
    TokensFalsos tokens{TokensFalsos::Tres()};
    CanalGuionado canal;
    SpVoice sapi5(canal, tokens, banco.cola, banco.estado, banco.registro.Log());
    sapi5.SetEventos(banco.Eventos());
    canal.alHablar = [&] {
        QTimer::singleShot(0, &banco.cola, [&] {
            canal.Palabra(0);
            canal.Fin();
        });
    };
    EXPECT_FALSE(sapi5.Speak(QStringLiteral("hola"), SpVoice::XML));
    EXPECT_THAT(banco.diario, testing::IsEmpty());
    EXPECT_EQ(banco.estado.valor, cEstadoVoz::Lectura);
    banco.cola.DejaCorrer();
    EXPECT_THAT(banco.diario, testing::ElementsAre("Start", "Stop 0"));
}

TEST(SpVoiceEspera, AWaitingSpeechOfSAPI5IsSilencedFromOutside) {
    Banco banco;
    TokensFalsos tokens{TokensFalsos::Tres()};
    CanalGuionado canal;
    SpVoice sapi5(canal, tokens, banco.cola, banco.estado, banco.registro.Log());
    canal.alHablar = [&] {
        QTimer::singleShot(0, &banco.cola, [&] { EXPECT_FALSE(sapi5.Speak(QString(), SpVoice::Purga)); });
    };
    EXPECT_FALSE(sapi5.Speak(QStringLiteral("hola"), SpVoice::XML));
    EXPECT_FALSE(canal.sonando);
}

}  // namespace
}  // namespace ondalis::prueba
