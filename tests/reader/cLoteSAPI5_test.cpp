// The batch job with voices of other makers, into MP3 files, and cut short.
#include "PruebaLote.h"

namespace ondalis {
namespace {

using prueba::Lineas;
using prueba::PruebaLote;

class LoteSAPI5 : public PruebaLote {
protected:
    void SetUp() override {
        PruebaLote::SetUp();
        ConSAPI5();
    }
};

TEST_F(LoteSAPI5, WithoutTheInterfaceTheUserIsToldAndNothingIsSpoken) {
    sapi5Compatible = false;
    EXPECT_TRUE(De("hola"));
    EXPECT_EQ(Mensajes(), (QStringList{"SAPI5.1 no está correctamente instalado."}));
    EXPECT_EQ(Hecho(), Lineas{});
    EXPECT_TRUE(eci.ordenes.empty());
}

TEST_F(LoteSAPI5, TheVoiceIsAskedForByNameAndMaryIsTheDefault) {
    De("hola");
    EXPECT_EQ(Hecho()[0], "voz: Name=Microsoft Mary");
    diario.Olvida();
    registro.Salva("Voz", "VozActiva", "Spanish (Spain)");
    De("hola");
    EXPECT_EQ(Hecho()[0], "voz: Name=Spanish (Spain)");
}

TEST_F(LoteSAPI5, AVoiceThatIsNotThereIsAnErrorThatNamesIt) {
    sapi5.hayVoz = false;
    De("hola");
    EXPECT_EQ(Mensajes(), (QStringList{"EjecutaLineaComandos: No hay ninguna voz con el nombre Microsoft Mary [5]"}));
    EXPECT_EQ(Hecho(), (Lineas{"voz: Name=Microsoft Mary"}));
}

TEST_F(LoteSAPI5, RateAndVolumeAreTheVoicesOwnUnlessTheSettingsTellOthers) {
    De("hola");
    EXPECT_EQ(Hecho(), (Lineas{"voz: Name=Microsoft Mary", "voz: Rate -3", "voz: Volume 77", "sonido?", "voz: HOLA"}));
    diario.Olvida();
    registro.Salva("Voz", "Velocidad", "5");
    registro.Salva("Voz", "Volumen", "20");
    De("hola");
    EXPECT_EQ(Hecho()[1], "voz: Rate 5");
    EXPECT_EQ(Hecho()[2], "voz: Volume 20");
}

TEST_F(LoteSAPI5, AFileIsReadWholeByItsOwnEncodingAndSpoken) {
    De(Fichero("a.txt",
               "ma\xF1"
               "ana"));
    EXPECT_EQ(Hecho().back(), "voz: mañana");
    De(Fichero("b.txt",
               "ma\xC3\xB1"
               "ana"));
    EXPECT_EQ(Hecho().back(), "voz: mañana");
}

TEST_F(LoteSAPI5, AFileThatIsNotThereIsAnErrorBeforeAnythingIsAsked) {
    Fichero("a.wav");
    De("-filetxt nada.txt -outputfile a.wav");
    EXPECT_EQ(Mensajes(), (QStringList{"EjecutaLineaComandos: No se encontró el archivo [53]"}));
    EXPECT_TRUE(Existe("a.wav"));
}

TEST_F(LoteSAPI5, ATextGoesIntoTheTemporaryAt16kHzWithoutASetting) {
    De("hola -outputfile a.wav");
    EXPECT_EQ(diario.De("voz: ").back(), "HOLA  <~temp.wav> 18");
    EXPECT_EQ(Hecho().back(), "temporal: borra");
    EXPECT_EQ(diario.Veces("nombra a.wav"), 1);
    EXPECT_EQ(diario.Veces("sonido?"), 0);
}

TEST_F(LoteSAPI5, TheFormatFollowsTheStoredRateAndIs0OutsideTheTable) {
    for (const auto &[hercios, formato] : {std::pair{"44100", "34"}, {"8000", "6"}, {"12345", "0"}}) {
        registro.Salva("Grabar", "CalidadkHz", hercios);
        De("-filetxt " + Fichero("a.txt") + " -outputfile b.wav");
        EXPECT_EQ(diario.De("voz: ").back(), std::string("hola <~temp.wav> ") + formato);
    }
}

TEST_F(LoteSAPI5, BrokenMarkupIsShownAndLeavesNothing) {
    sapi5.fallo = Fallo::De(Fallo::SintaxisDeEtiquetas);
    De("hola -outputfile a.wav");
    EXPECT_TRUE(Mensajes().last().startsWith("EjecutaLineaComandos: Sintaxis de etiquetas no válida"));
    EXPECT_EQ(diario.De("nombra "), Lineas{});
    EXPECT_EQ(Hecho().back(), "temporal: borra");
}

class LoteMp3 : public PruebaLote {
protected:
    void SetUp() override {
        PruebaLote::SetUp();
        PuertosLote puertos = Puertos();
        puertos.conversor = &conversor;
        conMp3.emplace(std::move(puertos));
    }
    std::optional<cLote> conMp3;
};

TEST_F(LoteMp3, WithoutAnEncoderAnMp3TargetIsRefusedBeforeAnythingIsTouched) {
    Fichero("a.MP3");
    De("hola -outputfile a.MP3");
    EXPECT_EQ(Mensajes(), (QStringList{"La grabación en MP3 no está disponible en esta versión."}));
    EXPECT_EQ(Hecho(), Lineas{});
    EXPECT_TRUE(Existe("a.MP3"));
}

TEST_F(LoteMp3, ATextIsSpokenIntoTheTemporaryEncodedAndTheTemporaryDeleted) {
    conMp3->EjecutaLineaComandos("hola -outputfile a.mP3");
    EXPECT_EQ(Hecho(), (Lineas{"temporal: prepara", "eci: habla HOLA  espera <~temp.wav>",
                               "mp3: ~temp.wav a.mP3 11025 24 11025", "temporal: borra"}));
    EXPECT_EQ(Mensajes(), QStringList{});
    EXPECT_TRUE(Existe("a.mP3"));
}

TEST_F(LoteMp3, TheIBMEnginesFileIsResampledToTheStoredRate) {
    registro.Salva("Grabar", "CalidadkHz", "44100");
    registro.Salva("Grabar", "Calidadkbps", "128");
    conMp3->EjecutaLineaComandos("hola -outputfile a.mp3");
    EXPECT_EQ(diario.De("mp3: "), (Lineas{"~temp.wav a.mp3 11025 128 44100"}));
}

TEST_F(LoteMp3, AnotherMakersFileHasItsRateAlready) {
    ConSAPI5();
    conMp3->EjecutaLineaComandos("hola -outputfile a.mp3");
    registro.Salva("Grabar", "CalidadkHz", "22050");
    conMp3->EjecutaLineaComandos("hola -outputfile b.mp3");
    EXPECT_EQ(diario.De("mp3: "), (Lineas{"~temp.wav a.mp3 16000 24 -1", "~temp.wav b.mp3 22050 24 -1"}));
}

TEST_F(LoteMp3, AConversionThatFailsHasToldItselfAndLeavesNothing) {
    conversor.bien = false;
    conMp3->EjecutaLineaComandos("hola -outputfile a.mp3");
    EXPECT_EQ(Mensajes(), QStringList{});
    EXPECT_FALSE(Existe("a.mp3"));
    EXPECT_EQ(Hecho().back(), "temporal: borra");
}

using Interrupcion = LoteMp3;

TEST_F(Interrupcion, InTheSpeechItSilencesAndThereIsNoTargetAndNoMessage) {
    for (const bool falla : {false, true}) {
        cLote trabajo(Puertos());
        if (falla) eci.error = "cortado";
        eci.alHablar = [&trabajo] { trabajo.Interrumpe(); };
        diario.Olvida();
        trabajo.EjecutaLineaComandos("hola -outputfile a.wav");
        EXPECT_EQ(eci.ordenes.back(), "cancela");
        EXPECT_EQ(diario.De("nombra "), Lineas{});
        EXPECT_EQ(Hecho().back(), "temporal: borra");
        EXPECT_TRUE(trabajo.Interrumpido());
    }
    EXPECT_EQ(Mensajes(), QStringList{});
}

TEST_F(Interrupcion, OfAnotherMakersVoice) {
    ConSAPI5();
    sapi5.alHablar = [this] { lote.Interrumpe(); };
    sapi5.fallo = Fallo::De(Fallo::LlamadaNoValida);
    De("hola -outputfile a.wav");
    EXPECT_EQ(diario.Veces("voz: cancela"), 1);
    EXPECT_EQ(diario.De("nombra "), Lineas{});
    EXPECT_EQ(Mensajes(), QStringList{});
}

TEST_F(Interrupcion, WhileTheQuestionIsOpenNothingIsDeletedOrSpoken) {
    Fichero("a.wav");
    mensajes.respuestas = {true};
    mensajes.alMostrar = [this] { lote.Interrumpe(); };
    De("hola -outputfile a.wav");
    EXPECT_TRUE(Existe("a.wav"));
    EXPECT_EQ(diario.De("eci: "), Lineas{});
}

TEST_F(Interrupcion, WhileTheSoundServerIsWaitedForNothingIsSaid) {
    haySonido = false;
    PuertosLote puertos = Puertos();
    cLote *este = nullptr;
    puertos.haySonido = [&este] {
        este->Interrumpe();
        return false;
    };
    cLote trabajo(std::move(puertos));
    este = &trabajo;
    trabajo.EjecutaLineaComandos("hola");
    EXPECT_EQ(Mensajes(), QStringList{});
    EXPECT_EQ(diario.De("eci: "), Lineas{});
}

TEST_F(Interrupcion, InTheConversionItLeavesNoTarget) {
    conversor.alConvertir = [this] { conMp3->Interrumpe(); };
    conMp3->EjecutaLineaComandos("hola -outputfile a.mp3");
    EXPECT_FALSE(Existe("a.mp3"));
    EXPECT_EQ(Mensajes(), QStringList{});
}

}  // namespace
}  // namespace ondalis
