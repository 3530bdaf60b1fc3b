#include "speech/ucOpcVoz.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QWheelEvent>

#include "fakes/Aspectos.h"
#include "fakes/EnVentana.h"
#include "fakes/EstadoDiseno.h"
#include "fakes/PaletaOscura.h"
#include "reader/PruebaVoz.h"
#include "settings/pagina/Rotulos.h"
#include "settings/pagina/cCajaNumero.h"

namespace ondalis::prueba {
namespace {

class PaginaVozTest : public BancoVoz {
protected:
    template <class Control>
    Control *De(const char *nombre) {
        auto *control = pagina.findChild<Control *>(QLatin1String(nombre));
        EXPECT_NE(control, nullptr) << nombre;
        return control;
    }
    QSlider *Barra(const char *nombre) { return De<QSlider>(nombre); }
    // As the keyboard does: the text, then the focus goes elsewhere.
    void Escribe(const char *caja, const QString &texto) {
        auto *numero = De<cCajaNumero>(caja);
        auto *linea = numero->findChild<QLineEdit *>();
        linea->selectAll();
        linea->insert(texto);
        QFocusEvent fuera(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(numero, &fuera);
    }
    void EligeVoz(const QString &nombre) { voces_()->setCurrentIndex(voces_()->findText(nombre)); }
    void EligeFabricante(const QString &nombre) { fabricantes()->setCurrentIndex(fabricantes()->findText(nombre)); }
    QComboBox *fabricantes() { return De<QComboBox>("ComboFabricantes"); }
    QComboBox *voces_() { return De<QComboBox>("ComboVoces"); }
    QString Guardado(const char *clave) {
        return almacen.Lee(QStringLiteral("Voz"), QLatin1String(clave), QStringLiteral("(nada)"));
    }

    bool conSuper = false;
    ucOpcVoz pagina{
        {.opciones = opcVoz, .voces = voces, .general = general, .prueba = prueba, .velocidadConSuper = [this] {
             return conSuper;
         }}};
};

TEST_F(PaginaVozTest, TheDesignStateEqualsTheTableAndTheListsStandOnCarlos) {
    CompruebaDiseno(pagina, opcVoz, {"ComboFabricantes", "ComboVoces"});
    EXPECT_EQ(fabricantes()->currentText(), "IBM");
    EXPECT_EQ(voces_()->currentText(), "Carlos");
    EXPECT_EQ(voces_()->currentData().toInt(), voces.BuscaNombre("Carlos") - voces.Filas().data());
}

TEST_F(PaginaVozTest, TheBarsHaveTheRangesAndStepsOfTheFamily) {
    const auto comprueba = [this](const char *nombre, int minimo, int maximo, int valor, int paso) {
        EXPECT_EQ(Barra(nombre)->minimum(), minimo) << nombre;
        EXPECT_EQ(Barra(nombre)->maximum(), maximo) << nombre;
        EXPECT_EQ(Barra(nombre)->value(), valor) << nombre;
        EXPECT_EQ(Barra(nombre)->pageStep(), paso) << nombre;
        EXPECT_EQ(Barra(nombre)->singleStep(), 1) << nombre;
    };
    comprueba("ScrollVelocidad", 70, 450, 170, 5);
    comprueba("ScrollVolumen", 1, 65, 65, 3);
    comprueba("ScrollTono", 40, 422, 230, 15);
    for (const char *otro : {"ScrollFluctuacion", "ScrollAspereza", "ScrollDiafonia", "ScrollTamCabeza"})
        comprueba(otro, 0, 100, 50, 15);
    EligeFabricante("eSpeak NG");
    comprueba("ScrollVelocidad", 0, 20, 10, 5);
    comprueba("ScrollVolumen", 0, 100, 100, 3);
}

TEST_F(PaginaVozTest, EnteringFiveHundredAsSpeedGivesFourHundredAndFifty) {
    Escribe("ValorVelocidad", "500");
    EXPECT_EQ(pagina.ScrollVelocidadValue(), 450);
    Escribe("ValorVelocidad", "1");
    EXPECT_EQ(pagina.ScrollVelocidadValue(), 70);
}

TEST_F(PaginaVozTest, PastedLettersGiveTheMinimumOrTheNumberThatTheTextBeginsWith) {
    Escribe("ValorVelocidad", "hola");
    EXPECT_EQ(pagina.ScrollVelocidadValue(), 70);
    Escribe("ValorVelocidad", "123abc");
    EXPECT_EQ(pagina.ScrollVelocidadValue(), 123);
    Escribe("ValorVolumen", "x");
    EXPECT_EQ(pagina.ScrollVolumenValue(), 1);
}

TEST_F(PaginaVozTest, AStoredSpeedThatTheFamilyHasNotLeavesTheDefault) {
    almacen.Salva("Voz", "Velocidad", "-5");
    cOpcVoz leida(registro, log, voces, true);
    EXPECT_EQ(leida.Velocidad(), 170);
}

TEST_F(PaginaVozTest, AVolumeIsRoundedToThousands) {
    opcVoz.SetVolumen(1499);
    EXPECT_EQ(opcVoz.Volumen(), 1000);
    pagina.EstableceValores();
    EXPECT_EQ(pagina.ScrollVolumenValue(), 1);
    pagina.GuardaValores();
    EXPECT_EQ(Guardado("Volumen"), "1000");
}

TEST_F(PaginaVozTest, UncheckingTheAdvancedValuesAcceptsTheVoicesOwn) {
    De<QCheckBox>("CheckAvanzados")->setChecked(true);
    Barra("ScrollTono")->setValue(400);
    pagina.GuardaValores();
    EXPECT_EQ(opcVoz.Tono(), 400);
    EXPECT_EQ(Guardado("Tono"), "400");
    De<QCheckBox>("CheckAvanzados")->setChecked(false);
    pagina.GuardaValores();
    EXPECT_EQ(opcVoz.Tono(), Voz("Carlos").TonoDefecto);
    EXPECT_EQ(Guardado("ValoresAvanzados"), "False");
}

TEST_F(PaginaVozTest, AnotherMakerResetsSpeedAndVolumeAndUnchecksTheAdvancedValues) {
    auto *avanzados = De<QCheckBox>("CheckAvanzados");
    avanzados->setChecked(true);
    Barra("ScrollVelocidad")->setValue(300);
    EligeFabricante("eSpeak NG");
    EXPECT_FALSE(avanzados->isChecked());
    EXPECT_FALSE(avanzados->isEnabled());
    EXPECT_FALSE(Barra("ScrollTono")->isEnabled());
    EXPECT_EQ(voces_()->currentText(), "Español");
    EligeFabricante("IBM");
    EXPECT_TRUE(avanzados->isEnabled());
    EXPECT_FALSE(avanzados->isChecked());
    EXPECT_EQ(pagina.ScrollVelocidadValue(), 170);
    EXPECT_EQ(voces_()->currentText(), "Carlos");
}

TEST_F(PaginaVozTest, TheAdvancedBarsJumpToTheVoicesValuesWhenCheckedAndWithEachVoice) {
    auto *avanzados = De<QCheckBox>("CheckAvanzados");
    EligeVoz("Pilar");
    EXPECT_EQ(Barra("ScrollTono")->value(), 230);  // unchecked: they stay
    EXPECT_FALSE(Barra("ScrollTono")->isEnabled());
    avanzados->setChecked(true);
    EXPECT_TRUE(Barra("ScrollTono")->isEnabled());
    EXPECT_EQ(Barra("ScrollTono")->value(), Voz("Pilar").TonoDefecto);
    EXPECT_EQ(Barra("ScrollTamCabeza")->value(), Voz("Pilar").TamCabezaDefecto);
    EligeVoz("Oma");
    EXPECT_EQ(Barra("ScrollTono")->value(), Voz("Oma").TonoDefecto);
}

TEST_F(PaginaVozTest, AcceptingStoresTheFiveSettingsAndReadingShowsThemAgain) {
    EligeVoz("Pilar");
    De<QCheckBox>("CheckAvanzados")->setChecked(true);
    Barra("ScrollAspereza")->setValue(7);
    Barra("ScrollVelocidad")->setValue(250);
    pagina.GuardaValores();
    EXPECT_EQ(opcVoz.Velocidad(), 250);
    EXPECT_EQ(Guardado("VozActiva"), "Pilar");
    EXPECT_EQ(Guardado("Aspereza"), "7");
    EligeFabricante("eSpeak NG");  // a visit that is cancelled
    pagina.EstableceValores();
    EXPECT_EQ(fabricantes()->currentText(), "IBM");
    EXPECT_EQ(voces_()->currentText(), "Pilar");
    EXPECT_EQ(pagina.ScrollVelocidadValue(), 250);
    EXPECT_TRUE(De<QCheckBox>("CheckAvanzados")->isChecked());
    EXPECT_EQ(Barra("ScrollAspereza")->value(), 7);
}

TEST_F(PaginaVozTest, ASAPI5SpeedIsStoredAsTheEnginesNumber) {
    EligeFabricante("eSpeak NG");
    Barra("ScrollVelocidad")->setValue(7);
    pagina.GuardaValores();
    EXPECT_EQ(opcVoz.Velocidad(), -3);
    EXPECT_EQ(Guardado("Velocidad"), "-3");
    EXPECT_EQ(Guardado("FabricanteActivo"), "eSpeak NG");
}

TEST_F(PaginaVozTest, AStoredVoiceThatIsNotThereHasNoSelectionAndIsNotForgotten) {
    opcVoz.SetFabricanteActivo("Acme");
    opcVoz.SetVozActiva("Ana");
    pagina.EstableceValores();
    EXPECT_EQ(fabricantes()->currentIndex(), -1);
    EXPECT_EQ(voces_()->currentIndex(), -1);
    pagina.GuardaValores();
    EXPECT_EQ(Guardado("FabricanteActivo"), "Acme");
    EXPECT_EQ(Guardado("VozActiva"), "Ana");
}

// A scrolled page brings the lists under the pointer, and another maker resets speed and volume.
TEST_F(PaginaVozTest, TheWheelChangesNoListThatHasNotTheFocus) {
    for (QComboBox *lista : {fabricantes(), voces_()}) {
        lista->setCurrentIndex(0);
        ASSERT_GT(lista->count(), 1);
        QWheelEvent rueda(QPointF(5, 5), QPointF(5, 5), {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(lista, &rueda);
        EXPECT_EQ(lista->currentIndex(), 0) << lista->objectName().toStdString();
    }
}

TEST_F(PaginaVozTest, AHotKeysSpeedIsShownUnlessAnotherFamilyIsOnScreen) {
    principal.AlCambiarVelocidad([this] { pagina.EstableceVelocidad(); });
    Pulsa("MasVel");
    EXPECT_EQ(pagina.ScrollVelocidadValue(), 195);
    EXPECT_EQ(De<cCajaNumero>("ValorVelocidad")->value(), 195);
    EligeFabricante("eSpeak NG");
    Pulsa("MasVel");
    EXPECT_EQ(pagina.ScrollVelocidadValue(), 10);
}

TEST_F(PaginaVozTest, AVoiceAcceptedElsewhereIsShownAndWithoutOneTheEditsStay) {
    pagina.EstableceValores();
    De<QSlider>("ScrollVelocidad")->setValue(300);
    pagina.EstableceCambiados();
    EXPECT_EQ(De<QSlider>("ScrollVelocidad")->value(), 300);
    ASSERT_TRUE(opcVoz.CambiaVoz("IBM", "Pilar"));
    pagina.EstableceCambiados();
    EXPECT_EQ(De<QComboBox>("ComboVoces")->currentText(), "Pilar");
    pagina.GuardaValores();
    EXPECT_EQ(opcVoz.VozActiva(), "Pilar");
}

TEST_F(PaginaVozTest, TheButtonSpeaksWithWhatIsOnScreenAndAcceptsNothing) {
    EligeVoz("Pilar");
    Barra("ScrollVelocidad")->setValue(320);
    Barra("ScrollVolumen")->setValue(13);
    De<QCheckBox>("CheckAvanzados")->setChecked(true);
    Barra("ScrollDiafonia")->setValue(5);
    De<QPushButton>("Probar")->click();
    EXPECT_EQ(Texto(canalIBM), "Esta es la voz de Pilar");
    EXPECT_EQ(vozIBM.Velocidad(), 320);
    EXPECT_NEAR(canalIBM.locuciones.back().voz.ganancia, 0.2, 1e-6);
    EXPECT_EQ(vozIBM.Diafonia(), 5);
    EXPECT_EQ(opcVoz.VozActiva(), "Carlos");
    EXPECT_EQ(Guardado("VozActiva"), "(nada)");
}

TEST_F(PaginaVozTest, TheKeysOfSpeedAreNamedAndTheRegisteredOnesWhereTheyDiffer) {
    EXPECT_EQ(De<QLabel>("TeclaMenosVel")->text(), "Ctrl+Alt+F9");
    EXPECT_EQ(De<QLabel>("TeclaMasVel")->text(), "Ctrl+Alt+F10");
    pagina.EstableceValores();
    EXPECT_TRUE(De<QLabel>("TeclasSuper")->isHidden());
    EXPECT_TRUE(Barra("ScrollVelocidad")->accessibleDescription().contains("Ctrl+Alt+F9"));
    conSuper = true;
    pagina.EstableceValores();
    EXPECT_FALSE(De<QLabel>("TeclasSuper")->isHidden());
    EXPECT_TRUE(Barra("ScrollVelocidad")->accessibleDescription().contains("Super+Ctrl+F9"));
}

TEST_F(PaginaVozTest, ThePageHasRoomForTheHintBeforeItIsLaidOut) {
    pagina.EstableceValores();
    const int sin = pagina.sizeHint().height();
    conSuper = true;
    pagina.EstableceValores();
    EXPECT_GE(pagina.sizeHint().height(), sin + De<QLabel>("TeclasSuper")->sizeHint().height());
}

TEST_F(PaginaVozTest, EveryTextCanBeReadOnADarkDesktop) {
    const PaletaOscura oscura;
    conSuper = true;
    pagina.EstableceValores();
    De<QCheckBox>("CheckAvanzados")->setChecked(true);
    pagina.show();
    CompruebaContraste(pagina);
}

TEST_F(PaginaVozTest, TheCaptionsAreTheGivenOnesAndNoTwoControlsHaveTheSameName) {
    EXPECT_EQ(SinMarca(De<QCheckBox>("CheckAvanzados")->text()), "Utilizar valores avanzados");
    EXPECT_EQ(SinMarca(De<QPushButton>("Probar")->text()), "Probar Voz");
    QStringList rotulos, nombres;
    for (const QLabel *uno : pagina.findChildren<QLabel *>()) rotulos << SinMarca(uno->text());
    for (const char *uno :
         {"Fabricante", "Nombre", "Velocidad", "Volumen", "Tono", "Fluctuación", "Aspereza", "Diafonía", "Tam. cabeza"})
        EXPECT_EQ(rotulos.count(QString::fromUtf8(uno)), 1) << uno;
    for (const QWidget *uno : pagina.findChildren<QWidget *>())
        if (!uno->accessibleName().isEmpty()) nombres << uno->accessibleName();
    EXPECT_GE(nombres.size(), 13);
    EXPECT_EQ(nombres.removeDuplicates(), 0);
}

TEST_F(PaginaVozTest, InTheWindowItIsWholeInEveryLook) {
    conSuper = true;
    opcVoz.SetValoresAvanzados(true);
    CompruebaAspectos(
        [&] {
            return EnVentana(
                almacen, Pagina::Voces,
                new ucOpcVoz(
                    {.opciones = opcVoz, .voces = voces, .general = general, .prueba = prueba, .velocidadConSuper = [] {
                         return true;
                     }}));
        },
        QStringLiteral("FrameVoces"));
}

}  // namespace
}  // namespace ondalis::prueba
