#include <gmock/gmock.h>

#include "PruebaGrabadora.h"

namespace ondalis {
namespace {

using Lista = std::vector<std::string>;

class cGrabadoraSAPI5Test : public prueba::PruebaGrabadora {
protected:
    void SetUp() override { UsaSAPI5(); }
    void GrabaFichero(const QByteArray &bytes) {
        Pon("libro.txt", bytes);
        grabadora->GrabaEnFichero(QString(), Musica("libro.txt"));
    }
};

TEST_F(cGrabadoraSAPI5Test, ATextIsSpokenPurgingAsXmlWithThePagesVoice) {
    opc.SetCalidadkHz(16000);
    Graba("hola");
    EXPECT_EQ(sapi.ordenes, (Lista{"formato 18", "abre ~temp.wav", "voz 1", "velocidad 3", "volumen 80", "habla 10",
                                   "espera", "cierra"}));
    EXPECT_EQ(Lee("Lectura.wav"), "hola");
    EXPECT_TRUE(eci.ordenes.empty());
}

TEST_F(cGrabadoraSAPI5Test, VoiceAndStreamAreMadeOnFirstUseAndKept) {
    EXPECT_EQ(sapi.creadas, 0);
    Graba("uno");
    Graba("dos");
    EXPECT_EQ(sapi.creadas, 1);
    EXPECT_EQ(Lee("Lectura.wav"), "dos");
}

TEST_F(cGrabadoraSAPI5Test, ARateOutsideTheTableHasStreamType0) {
    opc.SetCalidadkHz(9000);
    Graba("hola");
    EXPECT_EQ(sapi.ordenes.front(), "formato 0");
}

TEST_F(cGrabadoraSAPI5Test, WithoutWaitingAndAppendingAreTakenAsAccepted) {
    opc.SetGrabaSincrono(false);
    Anade();
    Graba("uno");
    EXPECT_EQ(Lee("Lectura.wav"), "uno");
    EXPECT_FALSE(timer.Enabled());
    Graba("dos");
    Graba("tres");  // the stream is made anew each time: nothing adds up
    EXPECT_EQ(Lee("Lectura.wav"), "uno");
    EXPECT_EQ(prueba::LeeFichero("~temp.wav"), "tres");
}

TEST_F(cGrabadoraSAPI5Test, AForeignFileIsNotEmptiedEvenWhereOneWouldBeAddedTo) {
    prueba::EscribeDetras("~temp.wav", "ajeno");
    Anade();
    Graba("uno");
    EXPECT_EQ(prueba::LeeFichero("~temp.wav"), "ajeno");
    EXPECT_EQ(Lee("Lectura.wav"), "uno");
}

TEST_F(cGrabadoraSAPI5Test, ATextFileIsSpokenPlainInBlocks) {
    GrabaFichero("a < b & c");
    EXPECT_THAT(sapi.ordenes, testing::Contains("habla 0").Times(1));
    EXPECT_EQ(Lee("Lectura.wav"), "a < b & c");
}

TEST_F(cGrabadoraSAPI5Test, AFileOf500000BytesIsSpokenInOnePass) {
    GrabaFichero(QByteArray(500'000, 'a'));
    ASSERT_EQ(sapi.textos.size(), 1u);
    EXPECT_EQ(sapi.textos[0].size(), 500'000);
}

TEST_F(cGrabadoraSAPI5Test, AFileOf500001BytesIsSpokenInTwoPasses) {
    GrabaFichero(QByteArray(500'001, 'a'));
    ASSERT_EQ(sapi.textos.size(), 2u);
    EXPECT_EQ(sapi.textos[0].size(), 500'001);
    EXPECT_EQ(sapi.textos[1].size(), 500'001);  // nothing read: all of it is the block before
}

TEST_F(cGrabadoraSAPI5Test, AShortLastReadCarriesOnWithTheTailOfTheBlockBefore) {
    GrabaFichero(QByteArray(500'001, 'a') + "bbb");
    ASSERT_EQ(sapi.textos.size(), 2u);
    EXPECT_EQ(sapi.textos[1], QStringLiteral("bbb") + QString(499'998, 'a'));
}

TEST_F(cGrabadoraSAPI5Test, AFileOf0BytesYieldsAnEmptyAudioFile) {
    GrabaFichero("");
    EXPECT_TRUE(sapi.textos.empty());
    EXPECT_EQ(sapi.ordenes.back(), "cierra");
    EXPECT_EQ(Lee("Lectura.wav"), "");
}

TEST_F(cGrabadoraSAPI5Test, AnAbsentTextFileIsLoggedAndTheStreamIsClosed) {
    grabadora->GrabaEnFichero(QString(), "/no/existe.txt");
    EXPECT_EQ(LineasCon("cFormPrincipal.GrabaEnFichero: No se encontró el archivo (53)"), 1);
    EXPECT_EQ(sapi.ordenes.back(), "cierra");
    EXPECT_TRUE(EnMusica().isEmpty());
}

TEST_F(cGrabadoraSAPI5Test, RefusedMarkupStopsTheOperationWithALogLine) {
    sapi.alHablar = Fallo::De(Fallo::SintaxisDeEtiquetas);
    Graba("<volume level='x'>");
    EXPECT_EQ(sapi.ordenes.back(), "cierra");
    EXPECT_EQ(LineasCon("Sintaxis de etiquetas no válida"), 1);
    EXPECT_TRUE(EnMusica().isEmpty());
    EXPECT_TRUE(EnActual().isEmpty()) << "a temporary without sound";
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(cGrabadoraSAPI5Test, AFailureBehindSomeSoundKeepsItInTheTemporary) {
    sapi.mientras = [this] { sapi.alHablar = Fallo::De(Fallo::LlamadaNoValida); };
    GrabaFichero(QByteArray(1'000'000, 'a'));
    EXPECT_EQ(EnActual(), QStringList("~temp.wav"));
    EXPECT_EQ(QFileInfo("~temp.wav").size(), 500'001);
}

TEST_F(cGrabadoraSAPI5Test, AFullDiskStopsTheOperationAndTheTemporaryRemains) {
    sapi.alCerrar = Fallo::De(Fallo::DiscoLleno);
    Graba("hola");
    EXPECT_EQ(LineasCon("Disco lleno (61)"), 1);
    EXPECT_TRUE(EnMusica().isEmpty());
    EXPECT_EQ(EnActual(), QStringList("~temp.wav"));
    sapi.alCerrar = {};
    Graba("otra");
    EXPECT_EQ(Lee("Lectura.wav"), "otra");
}

TEST_F(cGrabadoraSAPI5Test, AFileThatLacksAPartOfItsTextIsMadeAndThatIsToldAndLogged) {
    sapi.incompleta = true;
    const QString aviso = "El motor de voz no ha podido decir una parte del texto";
    GrabaFichero("lo que queda");
    EXPECT_EQ(Lee("Lectura.wav"), "lo que queda");
    EXPECT_EQ(Cajas(), QStringList(aviso));
    EXPECT_EQ(LineasCon("cFormPrincipal.GrabaEnFichero:  [" + aviso + "]"), 1);
    sapi.incompleta = false;
    Graba("otra");
    EXPECT_EQ(Cajas().size(), 1) << "the next one is a new matter";
}

TEST_F(cGrabadoraSAPI5Test, OfOneThatWasCancelledNothingIsMissed) {
    sapi.incompleta = true;
    sapi.mientras = [this] { grabadora->Cancela(); };
    Graba("hola");
    EXPECT_TRUE(mensajes.cajas.empty());
    EXPECT_EQ(Lee("Lectura.wav"), "hola");
}

TEST_F(cGrabadoraSAPI5Test, WithoutTheVoiceObjectTheWishIsLogged) {
    colaboradores.creaVozSAPI5 = [] { return nullptr; };
    grabadora = std::make_unique<cGrabadora>(colaboradores);
    Graba("hola");
    EXPECT_EQ(LineasCon("(5)"), 1);
    EXPECT_TRUE(EnMusica().isEmpty());
}

TEST_F(cGrabadoraSAPI5Test, ACancelEndsTheFileWithTheBlockThatIsBeingSpoken) {
    sapi.mientras = [this] { grabadora->Cancela(); };
    GrabaFichero(QByteArray(1'500'000, 'a'));
    EXPECT_EQ(sapi.textos.size(), 1u);
    EXPECT_THAT(sapi.ordenes, testing::Contains("cancela").Times(1));
    EXPECT_EQ(Lee("Lectura.wav").size(), 500'001);
}

}  // namespace
}  // namespace ondalis
