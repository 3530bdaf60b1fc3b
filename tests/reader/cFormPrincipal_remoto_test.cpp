// Commands of other programs.
#include <QFile>
#include <QTemporaryDir>

#include "reader/PruebaLector.h"

namespace ondalis::prueba {

class Remoto : public PruebaLector {
protected:
    Remoto() {
        Arranca();
        principal.AlCambiarDDELink([this](const QString &texto) { diario.Anota(QStringLiteral("dde.") + texto); });
        principal.AlTerminarRemota([this](std::uint32_t n) { terminadas.push_back(n); });
    }
    std::int16_t Manda(const QString &comando) {
        std::int16_t cancel = 1;
        numero = principal.Form_LinkExecute(comando, cancel);
        return cancel;
    }
    void MandaYCorre(const QString &comando) {
        EXPECT_EQ(Manda(comando), 0);
        Corre();
    }
    QString Fichero(const char *nombre, const QByteArray &bytes) {
        const QString ruta = carpeta.filePath(QLatin1String(nombre));
        QFile fichero(ruta);
        EXPECT_TRUE(fichero.open(QIODevice::WriteOnly));
        fichero.write(bytes);
        return ruta;
    }

    QTemporaryDir carpeta;
    std::uint32_t numero = 0;
    std::vector<std::uint32_t> terminadas;
};

// --- What is accepted

TEST_F(Remoto, AVerbIsAcceptedInAnyCaseAndAnyOtherIsRefused) {
    for (const char *bueno : {"SPEAK hola", "speak hola", "Speak ", "FILETXT x", "fileTXT x", "FILETXT "}) {
        EXPECT_EQ(Manda(QLatin1String(bueno)), 0) << bueno;
        EXPECT_NE(numero, 0u) << bueno;
    }
    for (const char *malo : {"", "SPEAK", "FILETXT", "SPEAKhola", " SPEAK hola", "STOP", "FILETXT\tx", "LEE hola"}) {
        EXPECT_EQ(Manda(QLatin1String(malo)), -1) << malo;
        EXPECT_EQ(numero, 0u) << malo;
    }
}

TEST_F(Remoto, ARefusalIsLoggedAtOnceAndShownOnlyWhenTheSenderHasItsAnswer) {
    EXPECT_EQ(Manda(QStringLiteral("CANTA algo")), -1);
    ASSERT_EQ(Log().size(), 1);
    EXPECT_TRUE(Log().back().contains(QStringLiteral("cFormPrincipal.Form_LinkExecute: ")));
    EXPECT_TRUE(Log().back().contains(QStringLiteral("Comando DDE erroneo (CANTA algo)")));
    EXPECT_TRUE(mensajes.cajas.empty());
    Corre();
    ASSERT_EQ(mensajes.cajas.size(), 1u);
    EXPECT_EQ(mensajes.cajas[0].texto,
              QStringLiteral("cFormPrincipal.Form_LinkExecute: Comando DDE erroneo (CANTA algo)"));
    EXPECT_EQ(diario.Todo(), Lineas{});  // neither the icon nor a reading is touched
}

TEST_F(Remoto, BoxesOfRefusedCommandsDoNotPileUpAndCommandsGoOnBehindAnOpenOne) {
    mensajes.alMostrar = [this] {
        if (mensajes.cajas.size() > 1) return;
        for (int i = 0; i < 100; ++i) Manda(QStringLiteral("malo"));
        Manda(QStringLiteral("SPEAK hola"));
        Corre();
    };
    Manda(QStringLiteral("malo"));
    Corre();
    EXPECT_EQ(mensajes.cajas.size(), 1u);
    EXPECT_EQ(Log().size(), 101);
    EXPECT_EQ(diario.Veces("motor.Habla(hola)"), 1);
    mensajes.alMostrar = {};
    Manda(QStringLiteral("malo"));
    Corre();
    EXPECT_EQ(mensajes.cajas.size(), 2u);
}

TEST_F(Remoto, AHugeRefusedCommandIsCutInLogAndBox) {
    EXPECT_EQ(Manda(QString(1'000'000, QLatin1Char('x'))), -1);
    Corre();
    EXPECT_LT(mensajes.cajas.at(0).texto.size(), 500);
    EXPECT_LT(Log().back().size(), 500);
}

TEST_F(Remoto, ARefusedCommandOfSeveralLinesIsOneLineOfTheLog) {
    EXPECT_EQ(Manda(QStringLiteral("CANTA\n2026 cRegistro.Salva: falso")), -1);
    EXPECT_EQ(Log().size(), 1);
}

TEST_F(Remoto, NothingHappensInsideTheCall) {
    EXPECT_EQ(Manda(QStringLiteral("SPEAK hola")), 0);
    EXPECT_EQ(diario.Todo(), Lineas{});
}

// --- SPEAK

TEST_F(Remoto, SpeakGoesThroughTheToldStepsInTheirOrder) {
    MandaYCorre(QStringLiteral("SPEAK  hola a todos "));
    EXPECT_EQ(diario.Todo(),
              (Lineas{"icono.10", "dde.", "motor.Detiene", "icono.1", "motor.Habla(hola a todos)", "icono.1"}));
    EXPECT_EQ(Estado(), 4);
    EXPECT_TRUE(campos.Leyendo && menu.Detener.Habilitada());
    diario.Olvida();
    TerminaTexto();
    EXPECT_EQ(diario.De("dde."), Lineas{"StopSpeaking"});
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(terminadas, std::vector<std::uint32_t>{numero});
}

TEST_F(Remoto, AnEmptySpeakGivesTheEngineAnEmptyText) {
    MandaYCorre(QStringLiteral("SPEAK "));
    EXPECT_EQ(diario.Veces("motor.Habla()"), 1);
    TerminaTexto();
    EXPECT_EQ(principal.DDELink(), QStringLiteral("StopSpeaking"));
}

TEST_F(Remoto, AVerbInSmallLettersStopsTheReadingAndSaysNothing) {
    Lee(QStringLiteral("un texto que se estaba leyendo"));
    MandaYCorre(QStringLiteral("speak hola"));
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(Motor(), Lineas{"Detiene"});
    EXPECT_EQ(icono.imagen, 1);
    EXPECT_EQ(principal.DDELink(), QString());  // emptied, and nothing will tell an end
    EXPECT_EQ(terminadas, std::vector<std::uint32_t>{numero});
}

TEST_F(Remoto, ASpeakEndsThePresentReadingAndLeavesItsTextForTheRepeat) {
    Lee(QStringLiteral("un texto que se estaba leyendo"));
    motor.Palabra(9);
    MandaYCorre(QStringLiteral("SPEAK hola"));
    TerminaTexto();
    EXPECT_EQ(campos.TextoLectura, QStringLiteral("un texto que se estaba leyendo"));
    EXPECT_EQ(campos.TipoLectura, 1);
    EXPECT_EQ(campos.PosBase, 1);
    diario.Olvida();
    Pulsa("Repetir");
    EXPECT_EQ(Motor(), (Lineas{"CancelaECI", "Habla(un texto que se estaba leyendo)"}));
}

TEST_F(Remoto, ASpeakEndsAPauseToo) {
    Lee(QStringLiteral("un texto que se estaba leyendo"));
    motor.Palabra(3);
    Pulsa("Pausa");
    ASSERT_TRUE(Pausada());
    MandaYCorre(QStringLiteral("SPEAK hola"));
    EXPECT_FALSE(campos.EnPausa);
    EXPECT_EQ(Estado(), 4);
    TerminaTexto();
    EXPECT_TRUE(Ociosa());
}

TEST_F(Remoto, TheFilterAndTheSignsFollowTheFamily) {
    AddConversionDicc("xq", "porque");
    opcGeneral.SetPronunciaSignosPunt(true);
    MandaYCorre(QStringLiteral("SPEAK sí,xq no"));
    ASSERT_EQ(Motor().size(), 2u);
    EXPECT_NE(Motor()[1].find(" , "), std::string::npos) << Motor()[1];
    EXPECT_NE(Motor()[1].find("porque"), std::string::npos) << Motor()[1];
    PasaASAPI5();
    diario.Olvida();
    MandaYCorre(QStringLiteral("SPEAK uno,dos"));
    EXPECT_EQ(diario.Veces("motor.Habla(uno,dos,signos)"), 1) << testing::PrintToString(Motor());
}

TEST_F(Remoto, ASpeakIsRecordedFirstWhenWantedAndTheIconIsTheRedOne) {
    opcGrabar.SetGrabarTexto(true);
    MandaYCorre(QStringLiteral("SPEAK hola"));
    const Lineas todo = diario.Todo();
    const auto graba = std::find(todo.begin(), todo.end(), "graba(hola,)");
    ASSERT_NE(graba, todo.end());
    EXPECT_NE(std::find(graba, todo.end(), "motor.Habla(hola)"), todo.end());
    EXPECT_EQ(icono.imagen, 5);
}

TEST_F(Remoto, WithoutReadingAloudTheStateStaysRemoteAndTheNextStopAnnouncesIt) {
    opcGrabar.SetLeerTexto(false);
    MandaYCorre(QStringLiteral("SPEAK hola"));
    EXPECT_EQ(Estado(), 4);
    EXPECT_EQ(terminadas.size(), 1u);  // its sender needn't wait
    diario.Olvida();
    principal.DiAviso(QStringLiteral("aviso"));
    EXPECT_EQ(Motor(), Lineas{});
    opcGrabar.SetLeerTexto(true);
    Lee(QStringLiteral("un texto que se lee después"));
    TerminaTexto();
    EXPECT_EQ(diario.De("dde."), Lineas{"StopSpeaking"});
    EXPECT_TRUE(Ociosa());
}

TEST_F(Remoto, AnErrorIsLoggedUnderItsNameAndTheStepsBehindItAreLeftOut) {
    PasaASAPI5();
    motor.rechazo = Fallo::De(Fallo::SintaxisDeEtiquetas);
    MandaYCorre(QStringLiteral("SPEAK <rate>"));
    ASSERT_EQ(Log().size(), 1);
    EXPECT_TRUE(Log().back().contains(QStringLiteral("cFormPrincipal.Form_LinkExecute: ")));
    EXPECT_EQ(diario.Todo().back(), "motor.Habla(<rate>)");  // no icon behind it
    EXPECT_TRUE(mensajes.cajas.empty());
    EXPECT_EQ(terminadas, std::vector<std::uint32_t>{numero});
}

// --- Order

TEST_F(Remoto, ASecondSpeakCutsTheFirstWhoseEndIsToldBeforeItsOwn) {
    MandaYCorre(QStringLiteral("SPEAK uno"));
    const std::uint32_t primera = numero;
    MandaYCorre(QStringLiteral("SPEAK dos"));
    EXPECT_EQ(terminadas, std::vector<std::uint32_t>{primera});
    TerminaTexto();
    EXPECT_EQ(diario.De("dde."), (Lineas{"", "", "StopSpeaking", "StopSpeaking"}));
    EXPECT_EQ(terminadas, (std::vector<std::uint32_t>{primera, numero}));
}

TEST_F(Remoto, ABurstIsCarriedOutInTheOrderOfArrival) {
    Lineas esperadas;
    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(Manda(QStringLiteral("SPEAK n%1").arg(i)), 0);
        esperadas.push_back("Habla(n" + std::to_string(i) + ")");
    }
    Corre();
    Lineas dichas;
    for (const std::string &linea : Motor())
        if (linea.starts_with("Habla(")) dichas.push_back(linea);
    EXPECT_EQ(dichas, esperadas);
    TerminaTexto();
    EXPECT_EQ(terminadas.size(), 200u);
    EXPECT_TRUE(Ociosa());
}

TEST_F(Remoto, ACommandThatComesInsideAnotherWaitsForItsEnd) {
    // Stopping a paused reading lets pending events run: that is the way in.
    Lee(QStringLiteral("un texto que se estaba leyendo"));
    motor.Palabra(3);
    Pulsa("Pausa");
    diario.Olvida();
    Manda(QStringLiteral("SPEAK uno"));
    Manda(QStringLiteral("SPEAK dos"));
    Corre();
    const Lineas iconosYHabla = [this] {
        Lineas elegidas;
        for (const std::string &linea : diario.Todo())
            if (linea == "icono.10" || linea.starts_with("motor.Habla(")) elegidas.push_back(linea);
        return elegidas;
    }();
    EXPECT_EQ(iconosYHabla, (Lineas{"icono.10", "motor.Habla(uno)", "icono.10", "motor.Habla(dos)"}));
}

TEST_F(Remoto, TooManyWaitingAreRefusedWithoutABox) {
    const QString grande = QStringLiteral("SPEAK ") + QString(20'000'000, QLatin1Char('a'));
    int aceptadas = 0;
    while (Manda(grande) == 0 && aceptadas < 100) ++aceptadas;
    EXPECT_EQ(aceptadas, 3);
    EXPECT_EQ(Log().size(), 1);
    principal.CierraRemoto();
    Corre();
    EXPECT_TRUE(mensajes.cajas.empty());
}

// --- FILETXT

TEST_F(Remoto, AFileIsSpokenWaitedForAndItsEndToldByTheCommandItself) {
    const QString ruta = Fichero("uno.txt", "hola");
    MandaYCorre(QStringLiteral("FILETXT \"%1\"").arg(ruta));
    EXPECT_EQ(diario.Todo(), (Lineas{"icono.10", "dde.", "motor.Detiene", "icono.1",
                                     "motor.HablaFichero(" + ruta.toStdString() + ")", "dde.StopSpeaking", "icono.1"}));
    EXPECT_EQ(Estado(), 0);
    EXPECT_EQ(terminadas, std::vector<std::uint32_t>{numero});
}

TEST_F(Remoto, WhatArrivesWhileAFileIsSpokenIsAcceptedAndWaits) {
    motor.dentro = [this] {
        EXPECT_EQ(Manda(QStringLiteral("SPEAK luego")), 0);
        Corre();
        EXPECT_EQ(diario.Veces("motor.Habla(luego)"), 0);
    };
    MandaYCorre(QStringLiteral("FILETXT ") + Fichero("uno.txt", "hola"));
    EXPECT_EQ(diario.Veces("motor.Habla(luego)"), 1);
    EXPECT_EQ(Motor().back(), "Habla(luego)");
}

TEST_F(Remoto, WithoutReadingAloudAFileIsRecordedAndNoEndIsTold) {
    opcGrabar.SetLeerTexto(false);
    opcGrabar.SetGrabarTexto(true);
    const QString ruta = Fichero("uno.txt", "hola");
    MandaYCorre(QStringLiteral("FILETXT ") + ruta);
    EXPECT_EQ(diario.Veces("graba(," + ruta.toStdString() + ")"), 1);
    EXPECT_EQ(Motor(), Lineas{"Detiene"});
    EXPECT_EQ(principal.DDELink(), QString());
    EXPECT_EQ(terminadas, std::vector<std::uint32_t>{numero});
}

TEST_F(Remoto, AFileThatFailsIsToldInLogAndBoxAndItsEndIsStillTold) {
    motor.rechazo = Fallo::De(Fallo::LlamadaNoValida, QStringLiteral("cVozECI: No se encontró el archivo (53)"));
    MandaYCorre(QStringLiteral("FILETXT /no/existe.txt"));
    ASSERT_EQ(Log().size(), 1);
    EXPECT_TRUE(Log().back().contains(QStringLiteral("cFormPrincipal.Form_LinkExecute: ")));
    EXPECT_TRUE(Log().back().contains(QStringLiteral("cVozECI: No se encontró el archivo (53)")));
    ASSERT_EQ(mensajes.cajas.size(), 1u);
    EXPECT_EQ(mensajes.cajas[0].texto,
              QStringLiteral("cFormPrincipal.Form_LinkExecute: cVozECI: No se encontró el archivo (53)"));
    EXPECT_EQ(principal.DDELink(), QStringLiteral("StopSpeaking"));
    EXPECT_EQ(icono.imagen, 1);
}

TEST_F(Remoto, InOtherFamiliesAFileThatFailsIsAnErrorOfTheCommand) {
    PasaASAPI5();
    motor.rechazo = Fallo::De(Fallo::FicheroNoEncontrado);
    MandaYCorre(QStringLiteral("FILETXT /no/existe.txt"));
    ASSERT_EQ(Log().size(), 1);
    EXPECT_TRUE(Log().back().contains(QStringLiteral("No se encontró el archivo")));
    EXPECT_EQ(diario.Todo().back(), "motor.HablaFichero(/no/existe.txt)");  // neither the item nor the icon
    EXPECT_EQ(terminadas, std::vector<std::uint32_t>{numero});
}

TEST_F(Remoto, ADocumentOtherThanPlainTextIsAClearErrorAndNothingIsSpoken) {
    for (const char *nombre : {"libro.pdf", "LIBRO.DOC", "hoja.ods", "datos.bin"}) {
        mensajes.cajas.clear();
        diario.Olvida();
        MandaYCorre(QStringLiteral("FILETXT ") + Fichero(nombre, QByteArray("a\0b", 3)));
        EXPECT_EQ(Motor(), Lineas{"Detiene"}) << nombre;
        ASSERT_EQ(mensajes.cajas.size(), 1u) << nombre;
        EXPECT_TRUE(mensajes.cajas[0].texto.contains(QStringLiteral("sólo se leen ficheros de texto"))) << nombre;
        EXPECT_EQ(principal.DDELink(), QStringLiteral("StopSpeaking"));
    }
}

TEST_F(Remoto, AFileInSmallLettersStopsTheReadingAndIsNotRead) {
    Lee(QStringLiteral("un texto que se estaba leyendo"));
    MandaYCorre(QStringLiteral("filetxt ") + Fichero("uno.txt", "hola"));
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(Motor(), Lineas{"Detiene"});
}

// --- The end of the program

TEST_F(Remoto, AtTheEndWhatIsSpokenFallsSilentAndNothingMoreIsCarriedOut) {
    motor.dentro = [this] {
        Manda(QStringLiteral("SPEAK luego"));
        principal.CierraRemoto();
        EXPECT_EQ(Manda(QStringLiteral("SPEAK tarde")), -1);
    };
    MandaYCorre(QStringLiteral("FILETXT ") + Fichero("uno.txt", "hola"));
    EXPECT_EQ(diario.Veces("motor.CancelaEspera"), 1);
    EXPECT_EQ(diario.Veces("motor.Habla(luego)"), 0);
}

TEST_F(Remoto, ClosingInAnIdleMomentTouchesNoSpeech) {
    Lee(QStringLiteral("un texto que se estaba leyendo"));
    principal.CierraRemoto();
    EXPECT_EQ(Motor(), Lineas{});
}

}  // namespace ondalis::prueba
