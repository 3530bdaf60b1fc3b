#include "reader/cLote.h"

#include "PruebaLote.h"

namespace ondalis {
namespace {

using prueba::Lineas;
using prueba::PruebaLote;
using Lote = PruebaLote;

TEST_F(Lote, WithNothingLeftOfTheLineTheCallerGoesOnAndNothingWasDone) {
    EXPECT_FALSE(De("-clear -NOSAPI5 -debug"));
    EXPECT_EQ(Hecho(), Lineas{});
    EXPECT_TRUE(eci.ordenes.empty());
}

TEST_F(Lote, APlainTextIsSpokenAloudInCapitalsAndWaitedFor) {
    EXPECT_TRUE(De("-nosapi5 hola a todos"));
    EXPECT_EQ(Hecho(), (Lineas{"sonido?", "eci: habla HOLA A TODOS espera <>"}));
    EXPECT_EQ(Mensajes(), QStringList{});
}

TEST_F(Lote, WithoutSettingsCarlosSpeaksInSpanishWithTheDefaultsOfABatchJob) {
    De("hola");
    EXPECT_EQ(eci.ordenes, (Lineas{"hablante Carlos 1034", "velocidad 170", "volumen 40000", "habla HOLA espera <>"}));
}

TEST_F(Lote, TheVoiceIsThatOfTheSettingsButItsLanguageIsAlways1034) {
    registro.Salva("Voz", "VozActiva", "Jane");
    registro.Salva("Voz", "Velocidad", "-32768");
    registro.Salva("Voz", "Volumen", "65000");
    registro.Salva("Voz", "ValoresAvanzados", "True");
    registro.Salva("Voz", "Tono", "99");
    De("hola");
    EXPECT_EQ(eci.ordenes, (Lineas{"hablante Jane 1034", "velocidad -32768", "volumen 65000", "habla HOLA espera <>"}));
}

TEST_F(Lote, ASettingThatMakesNoSenseIsTheDefaultAndIsLogged) {
    registro.Salva("Voz", "Velocidad", "32768");  // doesn't fit into 16 bits
    registro.Salva("Voz", "Volumen", "alto");
    De("hola");
    EXPECT_EQ(eci.ordenes, (Lineas{"hablante Carlos 1034", "velocidad 170", "volumen 40000", "habla HOLA espera <>"}));
    ASSERT_EQ(registro.LineasLog().size(), 2);
    EXPECT_TRUE(registro.LineasLog()[0].contains("EjecutaLineaComandos: No coinciden los tipos (13) [Voz\\Velocidad]"));
}

TEST_F(Lote, TheTextOfALineNeverEntersTheLog) {
    haySonido = false;
    De("secreto");
    ASSERT_FALSE(registro.LineasLog().isEmpty());
    for (const QString &linea : registro.LineasLog()) EXPECT_FALSE(linea.contains("secreto", Qt::CaseInsensitive));
}

TEST_F(Lote, AFileAloneOnTheLineIsSpokenAloud) {
    De(Fichero("Libro.txt"));
    EXPECT_EQ(Hecho(), (Lineas{"sonido?", "eci: fichero Libro.txt espera <>"}));
}

TEST_F(Lote, AFileInQuotesIsThatFile) {
    Fichero("Mi libro.txt");
    De("\"Mi libro.txt\"");
    De("-filetxt \"Mi libro.txt\"");
    EXPECT_EQ(diario.De("eci: "), (Lineas{"fichero Mi libro.txt espera <>", "fichero Mi libro.txt espera <>"}));
}

TEST_F(Lote, APathWithAHyphenIsCutThereInBothForms) {
    Fichero("mi-libro.txt");
    De("mi-libro.txt");
    De("-filetxt mi-libro.txt");
    EXPECT_EQ(diario.De("eci: "), (Lineas{"fichero mi espera <>", "fichero mi espera <>"}));
}

TEST_F(Lote, TheEnginesFailureIsShown) {
    eci.error = "No se encontró el archivo (53)";
    for (const char *orden : {"-filetxt nada.txt", "-filetxt", "hola", "hola -outputfile a.wav"}) De(orden);
    const QString error = "cVozECI: No se encontró el archivo (53)";
    EXPECT_EQ(Mensajes(), (QStringList{error, error, error, error}));
    EXPECT_EQ(diario.De("eci: ")[1], "fichero  espera <>");
}

TEST_F(Lote, WithoutASoundDeviceNothingIsSpokenAloudAndTheUserIsTold) {
    haySonido = false;
    De("hola");
    De(Fichero("libro.txt"));
    EXPECT_EQ(Hecho(), (Lineas{"sonido?", "sonido?"}));
    ASSERT_EQ(mensajes.cajas.size(), 2U);
    EXPECT_EQ(mensajes.cajas[0].texto, "EjecutaLineaComandos: NO se ha detectado tarjeta de sonido. [5]");
    EXPECT_FALSE(mensajes.cajas[0].pregunta);
    EXPECT_EQ(registro.LineasLog().size(), 2);
}

TEST_F(Lote, ATextToAFileIsTheLineWithoutTheOption) {
    De("Hola -OutputFile Salida.wav");
    EXPECT_EQ(Hecho(), (Lineas{"temporal: prepara", "eci: habla HOLA  espera <~temp.wav>", "nombra Salida.wav",
                               "temporal: borra"}));
}

TEST_F(Lote, AnyExtensionButMp3IsAWavFileOfThatName) {
    for (const char *nombre : {"a.wav", "a.ogg", "a", "a.mp3.txt", "mp3"}) De(QString("hola -outputfile ") + nombre);
    EXPECT_EQ(diario.De("nombra "), (Lineas{"a.wav", "a.ogg", "a", "a.mp3.txt", "mp3"}));
}

TEST_F(Lote, AFileToAFileTheOptionsInAnyOrder) {
    Fichero("Libro.txt");
    for (const char *orden :
         {"-filetxt Libro.txt -outputfile \"Mi salida.wav\"", "-outputfile \"Mi salida.wav\" -FILETXT Libro.txt"}) {
        diario.Olvida();
        De(orden);
        EXPECT_EQ(Hecho(), (Lineas{"temporal: prepara", "eci: fichero Libro.txt espera <~temp.wav>",
                                   "nombra Mi salida.wav", "temporal: borra"}));
    }
}

TEST_F(Lote, AfterAFailureOfTheEngineThereIsNoTarget) {
    eci.error = "Error al realizar la lectura";
    De("hola -outputfile a.wav");
    EXPECT_EQ(diario.De("nombra "), Lineas{});
    EXPECT_EQ(Hecho().back(), "temporal: borra");
}

TEST_F(Lote, AnExistingTargetIsAskedAboutWithNoAsTheDefault) {
    Fichero("a.wav");
    De("hola -outputfile a.wav");
    ASSERT_EQ(mensajes.cajas.size(), 1U);
    EXPECT_EQ(mensajes.cajas[0].texto, "El fichero a.wav ya existe.\r\n¿Desea sobrescribirlo?");
    EXPECT_TRUE(mensajes.cajas[0].pregunta);
    EXPECT_FALSE(mensajes.cajas[0].defectoSi);
    EXPECT_EQ(Hecho(), Lineas{});  // the answer was No
    EXPECT_TRUE(Existe("a.wav"));
}

TEST_F(Lote, OnYesTheTargetIsDeletedBeforeTheSpeech) {
    Fichero("a.wav");
    mensajes.respuestas = {true};
    eci.alHablar = [this] { EXPECT_FALSE(Existe("a.wav")); };
    De("hola -outputfile a.wav");
    EXPECT_EQ(diario.De("nombra "), (Lineas{"a.wav"}));
}

TEST_F(Lote, ATargetThatCannotBeDeletedEndsTheJob) {
    // A file in the kernel's own folder: nobody may delete it.
    mensajes.respuestas = {true};
    De("hola -outputfile /proc/self/status");
    EXPECT_EQ(Mensajes().back(), "Imposible sobrescribir /proc/self/status");
    EXPECT_EQ(diario.De("eci: "), Lineas{});
}

TEST_F(Lote, TheTextItselfIsNotOverwrittenByItsSound) {
    Fichero("a.txt");
    mensajes.respuestas = {true};
    De("-filetxt a.txt -outputfile ./a.txt");
    EXPECT_EQ(Mensajes().back(), "Imposible sobrescribir ./a.txt");
    EXPECT_TRUE(Existe("a.txt"));
    EXPECT_EQ(diario.De("eci: "), Lineas{});
}

TEST_F(Lote, AFolderOfTheTargetsNameIsNoExistingFileAndTheRenamingFails) {
    ASSERT_TRUE(QDir().mkdir("a.wav"));
    temporal.falloAlNombrar = Fallo::De(Fallo::FicheroYaExiste);
    De("hola -outputfile a.wav");
    EXPECT_EQ(Mensajes(), (QStringList{"EjecutaLineaComandos: El archivo ya existe [58]"}));
    EXPECT_EQ(Hecho().back(), "temporal: borra");
    EXPECT_TRUE(registro.LineasLog().last().contains("EjecutaLineaComandos: El archivo ya existe (58)"));
}

TEST_F(Lote, ATemporaryThatCannotBeMadeEndsTheJob) {
    temporal.sePuede = false;
    De("hola -outputfile a.wav");
    EXPECT_EQ(Mensajes(), (QStringList{"Imposible sobrescribir el fichero temporal"}));
    EXPECT_EQ(diario.De("eci: "), Lineas{});
}

TEST_F(Lote, ADocumentThatIsNoTextIsShownWithItsReasonAndNothingIsSpoken) {
    extractor.fallo = Fallo::De(Fallo::LlamadaNoValida, "Por ahora sólo se leen ficheros de texto: a.pdf");
    De("-filetxt a.pdf -outputfile a.wav");
    EXPECT_EQ(Mensajes(), (QStringList{"Por ahora sólo se leen ficheros de texto: a.pdf"}));
    EXPECT_EQ(Hecho(), Lineas{});
}

class ConDocumento : public Lote {
protected:
    void SetUp() override {
        PruebaLote::SetUp();
        extractor.convertidos["a.doc"] = Fichero("~temp.txt");
    }
};

TEST_F(ConDocumento, ItsTemporaryTextIsDeletedBehindTheFileThatWasMade) {
    De("-filetxt a.doc -outputfile a.wav");
    EXPECT_EQ(diario.De("eci: "), (Lineas{"fichero ~temp.txt espera <~temp.wav>"}));
    EXPECT_FALSE(Existe("~temp.txt"));
}

TEST_F(ConDocumento, ItsTemporaryTextRemainsWhenItIsSpokenAloud) {
    De("-filetxt a.doc");
    EXPECT_EQ(diario.De("eci: "), (Lineas{"fichero ~temp.txt espera <>"}));
    EXPECT_TRUE(Existe("~temp.txt"));
}

TEST_F(ConDocumento, ItsTemporaryTextRemainsWhenTheJobEndsEarly) {
    eci.error = "Error al realizar la lectura";
    De("-filetxt a.doc -outputfile a.wav");
    EXPECT_TRUE(Existe("~temp.txt"));
}

TEST_F(Lote, AUsersOwnFileOfTheTemporarysNameIsNotDeleted) {
    Fichero("~temp.txt");
    De("-filetxt ~temp.txt -outputfile a.wav");
    EXPECT_EQ(diario.De("nombra "), (Lineas{"a.wav"}));
    EXPECT_TRUE(Existe("~temp.txt"));
}

}  // namespace
}  // namespace ondalis
