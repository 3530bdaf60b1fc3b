#include "desktop/Aviso.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QWheelEvent>

#include "fakes/Aspectos.h"
#include "fakes/PaletaOscura.h"
#include "keys/EstableceTeclas.h"
#include "reader/PruebaVoz.h"

namespace ondalis::prueba {
namespace {

class VisorDiario : public VisorAyuda {
public:
    Fallo Muestra(const QString &, std::uintptr_t, const QString &tema) override {
        temas << tema;
        return {};
    }
    QStringList temas;
};

class AvisoTest : public BancoVoz {
protected:
    AvisoTest() {
        RegistroPropio::Escribe(almacen.Ruta("ayuda.rcc"), "x");
        ayuda.Init(almacen.Ruta("ayuda.rcc"));
    }
    void Abre() {
        aviso.Init();
        QApplication::setActiveWindow(&aviso);
        QCoreApplication::processEvents();
    }
    template <class Control>
    Control *De(const QString &nombre) {
        auto *control = aviso.findChild<Control *>(nombre);
        EXPECT_NE(control, nullptr) << nombre.toStdString();
        return control;
    }
    void Pulsa(const char *boton) { De<QPushButton>(boton)->click(); }
    void Va(int pagina) {
        for (int i = 1; i < pagina; ++i) Pulsa("AsistSig");
    }
    void Tecla(int tecla) {
        QKeyEvent baja(QEvent::KeyPress, tecla, {});
        QApplication::sendEvent(aviso.focusWidget() ? aviso.focusWidget() : &aviso, &baja);
    }
    static QString Limpio(QString texto) { return texto.remove('&'); }
    QString Rotulo(const char *boton) { return Limpio(De<QPushButton>(boton)->text()); }
    // The frames that can be seen: exactly one.
    Lineas Visibles() {
        Lineas visibles;
        for (int i = 1; i <= cAviso::NumPaginas; ++i)
            if (De<QWidget>(QStringLiteral("FrameAsist%1").arg(i))->isVisible()) visibles.push_back(std::to_string(i));
        return visibles;
    }
    void Elige(const char *lista, const QString &texto) {
        De<QComboBox>(lista)->setCurrentIndex(De<QComboBox>(lista)->findText(texto));
    }
    QString Guardado(const char *seccion, const char *clave) {
        return almacen.Lee(QLatin1String(seccion), QLatin1String(clave), QStringLiteral("(nada)"));
    }

    VisorDiario visor;
    QStringList aceptados;  // the voice at each time that others were told
    cAyuda ayuda{general, visor};
    Aviso aviso{{.logica = {.lector = lector,
                            .form = principal,
                            .registro = registro,
                            .gancho = [this](bool si) { diario.Anota(si ? "gancho.si" : "gancho.no"); },
                            .aceptado = [this] { aceptados.push_back(opcVoz.VozActiva()); }},
                 .voces = voces,
                 .prueba = prueba,
                 .ayuda = ayuda}};
};

TEST_F(AvisoTest, ItOpensOnItsFirstPageWithWhatIsAccepted) {
    Abre();
    EXPECT_EQ(Visibles(), Lineas{"1"});
    EXPECT_FALSE(De<QPushButton>("AsistAtras")->isEnabled());
    EXPECT_EQ(Rotulo("AsistAtras"), "< Atrás");
    EXPECT_EQ(Rotulo("AsistSig"), "Siguiente >");
    EXPECT_EQ(Rotulo("Cancelar"), "Cerrar");
    EXPECT_EQ(Rotulo("Ayuda"), "Ayuda");
    EXPECT_EQ(Limpio(De<QCheckBox>("CheckMostrar")->text()), "No volver a mostrar esta ventana");
    EXPECT_FALSE(De<QCheckBox>("CheckMostrar")->isChecked());
    EXPECT_TRUE(De<QCheckBox>("CheckPortapapeles")->isChecked());
    EXPECT_FALSE(De<QCheckBox>("CheckTeclado")->isChecked());
    EXPECT_EQ(De<QComboBox>("ComboFabricantes")->currentText(), "IBM");
    EXPECT_EQ(De<QComboBox>("ComboVoces")->currentText(), "Carlos");
    EXPECT_EQ(De<QComboBox>("ModDetener")->currentText(), "Control");
    EXPECT_EQ(De<QComboBox>("TeclaDetener")->currentText(), "2");
    EXPECT_EQ(De<QComboBox>("TeclaPausa")->currentText(), "1");
    EXPECT_EQ(De<QComboBox>("TeclaRepetir")->currentText(), "3");
    EXPECT_EQ(De<QComboBox>("TeclaRepetir")->count(), 45);
}

TEST_F(AvisoTest, ThePagesFollowEachOtherOneAtATimeAndTheLastOneEndsIt) {
    Abre();
    for (int pagina = 1; pagina <= 5; ++pagina) {
        EXPECT_EQ(Visibles(), Lineas{std::to_string(pagina)});
        EXPECT_EQ(De<QPushButton>("AsistAtras")->isEnabled(), pagina > 1);
        EXPECT_EQ(Rotulo("AsistSig"), pagina == 5 ? "Finalizar" : "Siguiente >");
        if (pagina < 5) Pulsa("AsistSig");
    }
    Pulsa("AsistAtras");
    EXPECT_EQ(Rotulo("AsistSig"), "Siguiente >");
    EXPECT_EQ(Visibles(), Lineas{"4"});
    for (int i = 0; i < 3; ++i) Pulsa("AsistAtras");
    EXPECT_EQ(Visibles(), Lineas{"1"});
    EXPECT_FALSE(De<QPushButton>("AsistAtras")->isEnabled());
    Va(5);
    Pulsa("AsistSig");
    EXPECT_FALSE(aviso.isVisible());
    EXPECT_EQ(diario.De("ventanas."), Lineas{});
}

TEST_F(AvisoTest, EachPageTakesTheFocusAndItsFirstControlTellsItsText) {
    Abre();
    const char *primeros[] = {"Texto1", "CheckPortapapeles", "ComboFabricantes", "ModDetener", "VerConfig"};
    for (int pagina = 1; pagina <= 5; ++pagina) {
        ASSERT_NE(aviso.focusWidget(), nullptr);
        EXPECT_EQ(aviso.focusWidget()->objectName(), primeros[pagina - 1]);
        const QString dicho = aviso.focusWidget()->accessibleDescription();
        EXPECT_TRUE(dicho.startsWith(QStringLiteral("Página %1 de 5").arg(pagina))) << dicho.toStdString();
        const QString texto = De<QLabel>(QStringLiteral("Texto%1").arg(pagina))->text();
        EXPECT_TRUE(pagina == 1 ? aviso.focusWidget()->property("text").toString() == texto : dicho.contains(texto));
        Tecla(Qt::Key_Return);  // the default button
    }
    EXPECT_FALSE(aviso.isVisible());
}

TEST_F(AvisoTest, TheTabKeyGoesThroughThePageAndThenTheButtons) {
    Abre();
    Va(4);
    Lineas recorrido;
    for (QWidget *uno = aviso.focusWidget(); recorrido.size() < 11; uno = uno->nextInFocusChain())
        if (uno->isVisible() && uno->isEnabled() && (uno->focusPolicy() & Qt::TabFocus) && uno->window() == &aviso)
            recorrido.push_back(uno->objectName().toStdString());
    EXPECT_EQ(recorrido, (Lineas{"ModDetener", "TeclaDetener", "ModPausa", "TeclaPausa", "ModRepetir", "TeclaRepetir",
                                 "CheckMostrar", "AsistAtras", "AsistSig", "Cancelar", "Ayuda"}));
}

TEST_F(AvisoTest, NoLetterIsTwiceOnAPageAndNoTwoControlsHaveTheSameName) {
    Abre();
    QStringList nombres;
    for (const QWidget *uno : aviso.findChildren<QWidget *>())
        if (!uno->accessibleName().isEmpty()) nombres << uno->accessibleName();
    EXPECT_EQ(nombres.removeDuplicates(), 0);
    for (int pagina = 1; pagina <= 5; ++pagina) {
        QString letras;
        for (const QWidget *uno : aviso.findChildren<QWidget *>()) {
            const QString texto = uno->property("text").toString();
            const qsizetype marca = texto.indexOf('&');
            if (uno->isVisible() && marca >= 0) letras += texto[marca + 1].toLower();
        }
        for (const QChar letra : letras) EXPECT_EQ(letras.count(letra), 1) << pagina << letras.toStdString();
        EXPECT_GE(letras.size(), 4);
        if (pagina < 5) Pulsa("AsistSig");
    }
}

TEST_F(AvisoTest, EveryTextCanBeReadOnADarkDesktop) {
    const PaletaOscura oscura;
    Abre();
    for (int pagina = 1; pagina <= 5; ++pagina) {
        CompruebaContraste(aviso);
        if (pagina < 5) Pulsa("AsistSig");
    }
}

TEST_F(AvisoTest, NotToBeShownAgainAndClosedItDoesNotComeAtTheNextStart) {
    Abre();
    De<QCheckBox>("CheckMostrar")->setChecked(true);
    Pulsa("Cancelar");
    EXPECT_FALSE(aviso.isVisible());
    EXPECT_EQ(Guardado("General", "Aviso"), "False");
    EXPECT_FALSE(cOpcGeneral(registro, log).Aviso());
    diario.Olvida();
    principal.Init();
    EXPECT_EQ(diario.De("ventanas."), Lineas{});
}

TEST_F(AvisoTest, EscapeAndTheWindowsCloseButtonKeepWhatIsOnThePages) {
    for (const bool escape : {true, false}) {
        Abre();
        De<QCheckBox>("CheckPortapapeles")->setChecked(!escape);
        if (escape)
            Tecla(Qt::Key_Escape);
        else
            aviso.close();
        EXPECT_FALSE(aviso.isVisible());
        EXPECT_EQ(opcTipoLectura.LeePortapapeles(), !escape);
        EXPECT_EQ(Guardado("TipoLectura", "LeePortapapeles"), escape ? "False" : "True");
        EXPECT_EQ(Guardado("General", "Aviso"), "True");
    }
}

TEST_F(AvisoTest, WhatIsChosenIsStoredAndTakesEffectAtOnce) {
    Abre();
    De<QCheckBox>("CheckTeclado")->setChecked(true);
    campos.TextoWindows = "viejo";
    Elige("ComboVoces", "Pilar");
    Elige("ModPausa", "Shift");
    Elige("TeclaPausa", "F7");
    diario.Olvida();
    Va(5);
    Pulsa("AsistSig");
    EXPECT_EQ(diario.Todo(), (Lineas{"motor.Selecciona", "motor.FijaVelocidad(170)", "motor.FijaVolumen(65000)",
                                     "motor.FijaAvanzados", "gancho.si"}));
    EXPECT_TRUE(campos.TextoWindows.isEmpty());
    EXPECT_EQ(Guardado("TipoLectura", "LeeTeclado"), "True");
    EXPECT_EQ(Guardado("Voz", "FabricanteActivo"), "IBM");
    EXPECT_EQ(Guardado("Voz", "VozActiva"), "Pilar");
    EXPECT_EQ(opcVoz.Tono(), Voz("Pilar").TonoDefecto);
    EXPECT_EQ(Guardado("Teclas", "ModPausa"), "2");
    EXPECT_EQ(Guardado("Teclas", "AsciiPausa"), "118");
    EXPECT_EQ(Guardado("Teclas", "AsciiDetener"), "50");
    EXPECT_EQ(Guardado("Teclas", "AsciiRepetir"), "51");
    EXPECT_TRUE(tecla.Registrada(2, 118, "Pausa"));
    EXPECT_EQ(menu.PausaReanudar.Rotulo(), "Pausa (Shift + F7)");
}

TEST_F(AvisoTest, AnotherMakersVoiceEndsTheReadingAndTakesTheMakersSpeed) {
    opcVoz.SetVelocidad(300);
    Lee("un texto");
    Abre();
    Elige("ComboFabricantes", "eSpeak NG");
    Pulsa("Cancelar");
    EXPECT_EQ(Motor().front(), "Detiene");
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(opcVoz.Velocidad(), 0);
    EXPECT_EQ(opcVoz.Volumen(), 100);
    EXPECT_EQ(filtro.Marca(), "<BOOKMARK mark='1'/>");
    cOpcVoz otra(registro, log, voces, true);
    EXPECT_EQ(otra.VozActiva(), "Español");
    EXPECT_EQ(otra.Velocidad(), 0);
}

TEST_F(AvisoTest, WithTheSameVoiceTheReadingGoesOn) {
    Lee("un texto");
    Abre();
    Pulsa("Cancelar");
    EXPECT_TRUE(Hablando());
}

TEST_F(AvisoTest, AStoredVoiceThatNoLongerExistsGivesTheMakersFirst) {
    opcVoz.SetVozActiva("Ana");
    Abre();
    EXPECT_EQ(De<QComboBox>("ComboVoces")->currentIndex(), 0);
    EXPECT_EQ(De<QComboBox>("ComboVoces")->currentText(),
              voces.Filas()[static_cast<std::size_t>(voces.DeFabricante("IBM").front())].NombreVoz);
}

TEST_F(AvisoTest, WithoutAVoiceOfTheStoredMakerNoMakerIsSelectedAndTheStoredOneStays) {
    opcVoz.SetFabricanteActivo("Acme");
    opcVoz.SetVozActiva("Ana");
    Abre();
    EXPECT_EQ(De<QComboBox>("ComboFabricantes")->currentIndex(), -1);
    EXPECT_EQ(De<QComboBox>("ComboVoces")->count(), 0);
    Pulsa("Cancelar");
    EXPECT_EQ(opcVoz.FabricanteActivo(), "Acme");
    EXPECT_EQ(opcVoz.VozActiva(), "Ana");
}

TEST_F(AvisoTest, TwoRowsWithTheSameKeysAreSavedAsTheyAre) {
    Abre();
    Elige("TeclaDetener", "1");
    Pulsa("Cancelar");
    EXPECT_EQ(Guardado("Teclas", "AsciiDetener"), "49");
    EXPECT_EQ(Guardado("Teclas", "AsciiPausa"), "49");
    EXPECT_EQ(opcTeclasRap.GetAscii("Detener"), opcTeclasRap.GetAscii("Pausa"));
}

TEST_F(AvisoTest, TheVoiceIsTestedWithoutBeingAccepted) {
    Abre();
    Va(3);
    Elige("ComboVoces", "Pilar");
    Pulsa("Probar");
    EXPECT_EQ(Texto(canalIBM), "Esta es la voz de Pilar");
    EXPECT_EQ(opcVoz.VozActiva(), "Carlos");
    EXPECT_TRUE(aviso.isVisible());
}

TEST_F(AvisoTest, AVoiceThatCannotSpeakIsToldAndTheWindowGoesOn) {
    opcVoz.SetFabricanteActivo("Acme");
    Abre();
    Va(3);
    Pulsa("Probar");
    ASSERT_EQ(mensajes.cajas.size(), 1U);
    EXPECT_TRUE(mensajes.cajas.front().texto.startsWith("Aviso.Probar_Click: "));
    Pulsa("AsistSig");
    EXPECT_EQ(Visibles(), Lineas{"4"});
}

TEST_F(AvisoTest, TheHelpTopicsArePagesOwnAndTheLastTwoCrossedOver) {
    Abre();
    for (int pagina = 1; pagina <= 5; ++pagina) {
        Pulsa("Ayuda");
        if (pagina < 5) Pulsa("AsistSig");
    }
    EXPECT_EQ(visor.temas, (QStringList{"", "LecturaPortapapeles.htm", "OpcTipoLectura.htm", "Configuracion.htm",
                                        "OpcTeclasRapidas.htm"}));
}

TEST_F(AvisoTest, TheConfigurationOpensAtTheEndWhenAskedForButNotWhenClosed) {
    Abre();
    De<QCheckBox>("VerConfig")->setChecked(true);
    Pulsa("Cancelar");
    EXPECT_EQ(diario.De("ventanas."), Lineas{});
    Abre();
    De<QCheckBox>("VerConfig")->setChecked(true);
    Va(5);
    Pulsa("AsistSig");
    EXPECT_EQ(diario.De("ventanas."), Lineas{"Opciones"});
    EXPECT_FALSE(aviso.isVisible());
}

TEST_F(AvisoTest, AnOpenConfigurationIsToldOnceTheNewValuesAreAcceptedAndNotAtTheProgramsEnd) {
    Abre();
    Elige("ComboVoces", "Pilar");
    EXPECT_EQ(aceptados, QStringList{});
    Pulsa("Cancelar");
    EXPECT_EQ(aceptados, QStringList{"Pilar"});
    Abre();
    aviso.Descarga();
    EXPECT_EQ(aceptados.size(), 1);
}

TEST_F(AvisoTest, AtTheProgramsEndThePagesAreStoredAndNothingElseIsTouched) {
    Abre();
    De<QCheckBox>("CheckMostrar")->setChecked(true);
    Elige("ComboVoces", "Pilar");
    diario.Olvida();
    aviso.Descarga();
    EXPECT_FALSE(aviso.isVisible());
    EXPECT_EQ(diario.Todo(), Lineas{});
    EXPECT_EQ(Guardado("General", "Aviso"), "False");
    EXPECT_EQ(Guardado("Voz", "VozActiva"), "Pilar");
    aviso.Descarga();
}

TEST_F(AvisoTest, InactiveTheTypedKeysAreNotHeardYet) {
    principal.ActivarDesactivar_Click();
    Abre();
    De<QCheckBox>("CheckTeclado")->setChecked(true);
    diario.Olvida();
    Pulsa("Cancelar");
    EXPECT_EQ(diario.De("gancho."), Lineas{});
    EXPECT_TRUE(opcTipoLectura.LeeTeclado());
}

TEST_F(AvisoTest, TheWheelChangesNoListThatHasNotTheFocus) {
    Abre();
    const QList<QComboBox *> listas = aviso.findChildren<QComboBox *>();
    ASSERT_EQ(listas.size(), 2 + 2 * cAviso::NumTeclas);
    const auto gira = [](QComboBox *lista) {
        const int antes = lista->currentIndex();
        for (const int paso : {-120, 120}) {
            QWheelEvent rueda({5, 5}, {5, 5}, {}, {0, paso}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(lista, &rueda);
            if (lista->currentIndex() != antes) return true;
        }
        return false;
    };
    for (int pagina = 1; pagina <= cAviso::NumPaginas; ++pagina) {
        for (QComboBox *lista : listas)
            if (lista->isVisible() && lista->count() > 1) {
                aviso.findChild<QPushButton *>(QStringLiteral("Ayuda"))->setFocus();
                EXPECT_FALSE(gira(lista)) << lista->objectName().toStdString();
                lista->setFocus();
                EXPECT_TRUE(gira(lista)) << lista->objectName().toStdString();
            }
        if (pagina < cAviso::NumPaginas) Pulsa("AsistSig");
    }
}

TEST_F(AvisoTest, EachPageIsWholeInEveryLook) {
    for (int pagina = 1; pagina <= cAviso::NumPaginas; ++pagina) {
        SCOPED_TRACE(pagina);
        CompruebaAspectos([&] {
            auto otro = std::make_unique<Aviso>(Aviso::Colaboradores{
                .logica = {.lector = lector, .form = principal, .registro = registro, .gancho = [](bool) {}},
                .voces = voces,
                .prueba = prueba,
                .ayuda = ayuda});
            otro->Init();
            for (int i = 1; i < pagina; ++i) otro->findChild<QPushButton *>(QStringLiteral("AsistSig"))->click();
            return otro;
        });
    }
}

}  // namespace
}  // namespace ondalis::prueba
