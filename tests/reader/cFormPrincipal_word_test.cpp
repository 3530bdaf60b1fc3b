#include "reader/PruebaLector.h"

namespace ondalis::prueba {

class Word : public PruebaLector {
protected:
    Word() { Arranca(); }
    // Follows words (the design value), or places of stops and pauses.
    void Sigue(bool palabras, bool paradas) {
        editoresTexto.SetLocPalabrasEnWord(palabras);
        editoresTexto.SetLocParadaEnWord(paradas);
    }
    const QString m_texto = QStringLiteral("uno dos tres cuatro cinco seis");
};

// --- The key that fetches a document

TEST_F(Word, AConsoleIsLeftAloneInSilence) {
    foco.consola = true;
    Pulsa("ImprPant");
    EXPECT_EQ(diario.Todo(), Lineas{});
    EXPECT_TRUE(campos.PendienteTeclado);
}

TEST_F(Word, AWindowThatCannotBeReadIsRefusedBySoundAndNotice10) {
    Pulsa("ImprPant");
    EXPECT_EQ(diario.Todo(), (Lineas{"explorer.EnPrimerPlano", "sonido.ERROR",
                                     "motor.HablaAviso(La ventana que está en primer plano no se puede leer "
                                     "automáticamente. Seleccione y copie el texto)"}));
    EXPECT_FALSE(campos.PendienteTeclado);
}

TEST_F(Word, DuringAReadingTheKeyGivesTheSoundAndChangesNothing) {
    word.enPrimerPlano = true;
    Lee(m_texto);
    Pulsa("ImprPant");
    EXPECT_EQ(diario.Todo(), Lineas{"sonido.ERROR"});
    EXPECT_FALSE(campos.PendienteTeclado);
    EXPECT_TRUE(Hablando());
}

TEST_F(Word, TheProcessorIsTriedFirstWithTheTimerOffAroundTheFetch) {
    word.enPrimerPlano = explorer.enPrimerPlano = true;
    Pulsa("ImprPant");
    EXPECT_EQ(diario.Todo(), (Lineas{"timer.no", "word.SeleccionaTexto", "timer.si"}));
    EXPECT_TRUE(campos.PendienteTeclado);
}

TEST_F(Word, AProcessorThatFailsIsToldByNotice7) {
    word.enPrimerPlano = true;
    word.selecciona = false;
    Pulsa("ImprPant");
    EXPECT_EQ(diario.Todo(),
              (Lineas{"timer.no", "word.SeleccionaTexto", "sonido.ERROR",
                      "motor.HablaAviso(Error al seleccionar el documento de Microsoft Word)", "timer.si"}));
}

TEST_F(Word, ABrowserIsTriedWhenTheProcessorIsBehindAndFailsByNotice8) {
    explorer.enPrimerPlano = true;
    Pulsa("ImprPant");
    EXPECT_EQ(diario.Todo(), (Lineas{"explorer.EnPrimerPlano", "timer.no", "explorer.SeleccionaTexto", "timer.si"}));
    explorer.selecciona = false;
    diario.Olvida();
    Pulsa("ImprPant");
    EXPECT_EQ(Motor(), Lineas{"HablaAviso(Error al seleccionar el documento de Microsoft Internet Explorer)"});
}

TEST_F(Word, TheKeyWithLeePortapapelesOffCopiesAndSpeaksNothing) {
    opcTipoLectura.SetLeePortapapeles(false);
    word.enPrimerPlano = true;
    Pulsa("ImprPant");
    Copia(m_texto);
    Tic();
    Corre();
    EXPECT_EQ(Motor(), Lineas{});
}

TEST_F(Word, AFetchedDocumentIsReadByTheNextTick) {
    word.enPrimerPlano = true;
    Pulsa("ImprPant");
    Envia(m_texto);
    EXPECT_TRUE(Enviada());
    EXPECT_FALSE(campos.PendienteTeclado);
}

TEST_F(Word, WithoutALinkNothingIsEverInTheForeground) {
    SinEnlaceWord sinWord;
    SinEnlaceExplorer sinExplorer;
    EXPECT_FALSE(sinWord.EnPrimerPlano() || sinWord.Conecta() || sinWord.SeleccionaTexto());
    EXPECT_FALSE(sinExplorer.EnPrimerPlano() || sinExplorer.SeleccionaTexto());
}

// --- What is followed

TEST_F(Word, TrackingStartsOnlyWithTheProcessorInTheForeground) {
    for (const bool delante : {false, true}) {
        word.enPrimerPlano = delante;
        campos.SeguimientoWord = 0;
        LeeDe(1, m_texto);
        EXPECT_EQ(campos.SeguimientoWord, delante ? 1 : 0);
        principal.Detener_Click();
    }
}

TEST_F(Word, WithoutEitherOptionNothingIsFollowed) {
    word.enPrimerPlano = true;
    Sigue(false, false);
    LeeDe(1, m_texto);
    EXPECT_EQ(campos.SeguimientoWord, 0);
}

TEST_F(Word, FollowingStopsAsksForTheForegroundWithoutConnecting) {
    word.enPrimerPlano = true;
    Sigue(false, true);
    Envia(m_texto);
    Corre();
    EXPECT_EQ(campos.SeguimientoWord, 1);
    EXPECT_EQ(diario.De("word."), Lineas{});
}

TEST_F(Word, OnlyClipboardReadingsAreFollowed) {
    word.enPrimerPlano = true;
    for (const std::int32_t tipo : {2, 3}) {
        LeeDe(tipo, m_texto);
        EXPECT_EQ(campos.SeguimientoWord, 0);
        motor.Palabra(4);
        EXPECT_EQ(diario.De("word."), Lineas{});
    }
}

TEST_F(Word, EachWordIsLocated) {
    word.enPrimerPlano = true;
    Lee(m_texto);
    motor.Palabra(0);
    motor.Palabra(4);
    EXPECT_EQ(diario.De("word."), (Lineas{"LocalizaPalabra(uno,si,no)", "LocalizaPalabra(dos,si,no)"}));
    editoresTexto.SetMarcaEnWord(false);
    motor.Palabra(8);
    EXPECT_EQ(diario.De("word.").back(), "LocalizaPalabra(tres,no,no)");
}

TEST_F(Word, AStopDisconnectsWhenWordsAreFollowed) {
    word.enPrimerPlano = true;
    Lee(m_texto);
    TerminaTexto();
    EXPECT_EQ(diario.De("word."), Lineas{"Desconecta"});
    EXPECT_EQ(campos.SeguimientoWord, 1);  // a normal end doesn't clear it
}

TEST_F(Word, AStopLocatesThePlaceWhereTheTextLastBegan) {
    word.enPrimerPlano = true;
    Sigue(false, true);
    opcTeclasRap.SetNroPalAvance(1);
    Lee(m_texto);
    principal.AvanzarPalabras_Click();
    Corre();
    motor.Palabra(9);
    diario.Olvida();
    TerminaTexto();
    EXPECT_EQ(diario.De("word."), Lineas{"LocalizaTexto(dos,si,0,)"});
}

TEST_F(Word, AStopOfAPauseIsNotLocated) {
    word.enPrimerPlano = true;
    Sigue(false, true);
    Lee(m_texto);
    motor.Palabra(4);
    principal.PausaReanudar_Click();
    diario.Olvida();
    principal.Detener_Click();
    EXPECT_EQ(diario.De("word."), Lineas{});
}

TEST_F(Word, APauseLocatesTheSpotReachedWithTheJump) {
    word.enPrimerPlano = true;
    Sigue(false, true);
    editoresTexto.SetSaltoWord(-3);
    Lee(m_texto);
    motor.Palabra(8);
    principal.PausaReanudar_Click();
    EXPECT_EQ(diario.Todo(), (Lineas{"timer.no", "motor.Pausa", "sonido.PAUSA",
                                     "word.LocalizaTexto(tres cuatro cinco seis,si,-3,)", "timer.si"}));
    principal.PausaReanudar_Click();
    diario.Olvida();
    principal.PausaReanudaLectura(true, false);
    EXPECT_EQ(diario.De("word."), Lineas{"LocalizaTexto(tres cuatro cinco seis,si,0,)"});
}

TEST_F(Word, APauseWhileWordsAreFollowedLocatesNothing) {
    word.enPrimerPlano = true;
    Lee(m_texto);
    motor.Palabra(8);
    diario.Olvida();
    principal.PausaReanudar_Click();
    EXPECT_EQ(diario.De("word."), Lineas{});
}

TEST_F(Word, OnlyARetreatWraps) {
    word.enPrimerPlano = true;
    opcTeclasRap.SetNroPalAvance(2);
    opcTeclasRap.SetNroPalRetroceso(1);
    Lee(m_texto);
    principal.AvanzarPalabras_Click();
    Corre();
    principal.RetrocederPalabras_Click();
    EXPECT_EQ(diario.De("word."), (Lineas{"LocalizaPalabra(tres cuatro cinco seis,no,no)",
                                          "LocalizaPalabra(dos tres cuatro cinco seis,no,si)"}));
}

TEST_F(Word, AMoveIsLocatedBeforeTheRestIsSpoken) {
    word.enPrimerPlano = true;
    Sigue(false, true);
    opcTeclasRap.SetNroPalAvance(4);
    Lee(m_texto);
    principal.AvanzarPalabras_Click();
    EXPECT_EQ(diario.Todo(), (Lineas{"motor.Detiene", "sonido.AVANZARRETROCEDER",
                                     "word.LocalizaTexto(cinco seis,si,0,)", "motor.Habla(cinco seis)"}));
}

TEST_F(Word, ARepeatOfAReadingSpeaksWithoutMovingTheSelection) {
    word.enPrimerPlano = true;
    Lee(m_texto);
    TerminaTexto();
    diario.Olvida();
    principal.RepetirLectura_Click();
    Corre();
    EXPECT_EQ(campos.SeguimientoWord, 0);
    motor.Palabra(4);
    TerminaTexto();
    EXPECT_EQ(diario.De("word."), Lineas{});
}

}  // namespace ondalis::prueba
