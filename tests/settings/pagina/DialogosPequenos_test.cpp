// The small dialogs behind the pages' links, and what they have in common.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QCheckBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>

#include "fakes/EstadoDiseno.h"
#include "fakes/RegistroPropio.h"
#include "fakes/Teclado.h"
#include "reader/DeslizadorSalto.h"
#include "reader/EditoresTexto.h"
#include "settings/SonidosAviso.h"
#include "settings/pagina/Rotulos.h"

namespace ondalis::prueba {
namespace {

class DialogosPequenosTest : public testing::Test {
protected:
    DialogoOpciones::Colaboradores Colaboradores() {
        return {.duena = &principal,
                .registro = r.Registro(),
                .log = r.Log(),
                .ayuda = [this](std::uintptr_t, const QString &tema) { temas << tema; },
                .alFrente = {}};
    }
    template <class Control = QCheckBox>
    static Control &De(QWidget &dialogo, const char *nombre) {
        auto *control = dialogo.findChild<Control *>(QLatin1String(nombre));
        if (!control) qFatal("no control %s", nombre);
        return *control;
    }
    static QCheckBox &Casilla(QWidget &dialogo, const char *nombre) { return De(dialogo, nombre); }
    static void Pulsa(QWidget &dialogo, const char *boton) { De<QPushButton>(dialogo, boton).click(); }
    static bool Hay(QWidget &dialogo, const char *nombre) { return De<QWidget>(dialogo, nombre).isEnabled(); }

    RegistroPropio r;
    QWidget principal;
    QStringList temas;
    cOpcSonidosAviso opcSonidos{r.Registro(), r.Log()};
    cOpcEditoresTexto opcEditores{r.Registro(), r.Log()};
    SonidosAviso sonidos{opcSonidos, Colaboradores()};
    EditoresTexto editores{opcEditores, Colaboradores()};
};

TEST_F(DialogosPequenosTest, TheDesignStateEqualsTheTable) {
    CompruebaDiseno(sonidos, opcSonidos);
    CompruebaDiseno(editores, opcEditores);
}

TEST_F(DialogosPequenosTest, TheTextsAreTheGivenOnes) {
    EXPECT_EQ(sonidos.windowTitle(), "Sonidos de aviso");
    EXPECT_EQ(SinMarca(Casilla(sonidos, "CheckAvisosGenerales").text()), "En avisos generales");
    EXPECT_EQ(SinMarca(Casilla(sonidos, "CheckActivarDesactivar").text()), "Al activar y desactivar");
    EXPECT_EQ(SinMarca(Casilla(sonidos, "CheckPortapapeles").text()), "Al leer el Portapapeles");
    EXPECT_EQ(SinMarca(Casilla(sonidos, "CheckLeeTeclado").text()), "Al leer el texto tecleado");
    EXPECT_EQ(editores.windowTitle(), "Editores de texto");
    EXPECT_EQ(SinMarca(Casilla(editores, "LocalizaPalabrasWord").text()), "Localizar cada palabra leída");
    EXPECT_EQ(SinMarca(Casilla(editores, "LocalizaParadaWord").text()), "Localizar texto al parar la lectura");
    EXPECT_EQ(SinMarca(Casilla(editores, "SeleccionaWord").text()), "Seleccionar palabra al localizar texto");
    EXPECT_EQ(SinMarca(De<QLabel>(editores, "EtiqSalto").text()), "Localización relativa en pausas manuales");
    for (QWidget *uno : {static_cast<QWidget *>(&sonidos), static_cast<QWidget *>(&editores)})
        for (const char *boton : {"Aceptar", "Cancelar", "Ayuda"})
            EXPECT_EQ(SinMarca(De<QPushButton>(*uno, boton).text()), QLatin1String(boton));
}

TEST_F(DialogosPequenosTest, ItIsModalOverItsOwnerAndAboveTheOthersFromItsFirstShow) {
    sonidos.Init();
    EXPECT_TRUE(sonidos.isVisible());
    EXPECT_TRUE(sonidos.isModal());
    EXPECT_EQ(sonidos.parentWidget(), &principal);
    EXPECT_TRUE(sonidos.windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_FALSE(sonidos.windowFlags() & Qt::WindowContextHelpButtonHint);
    EXPECT_EQ(QApplication::activeModalWidget(), &sonidos);
}

TEST_F(DialogosPequenosTest, AcceptingStoresTheFourBoxesAndHidesTheDialog) {
    sonidos.Init();
    Casilla(sonidos, "CheckAvisosGenerales").setChecked(false);
    Casilla(sonidos, "CheckLeeTeclado").setChecked(true);
    EXPECT_TRUE(opcSonidos.AvisosGenerales());
    EXPECT_EQ(r.Lee("General", "SonidosAvisosGenerales", "-"), "-");
    Pulsa(sonidos, "Aceptar");
    EXPECT_FALSE(sonidos.isVisible());
    EXPECT_FALSE(opcSonidos.AvisosGenerales());
    EXPECT_TRUE(opcSonidos.LeeTeclado());
    EXPECT_EQ(r.Lee("General", "SonidosAvisosGenerales"), "False");
    EXPECT_EQ(r.Lee("General", "SonidosActivarDesactivar"), "True");
    EXPECT_EQ(r.Lee("General", "SonidosPortapapeles"), "True");
    EXPECT_EQ(r.Lee("General", "SonidosLeeTeclado"), "True");
}

TEST_F(DialogosPequenosTest, CancelEscapeAndTheFrameDropTheEditsAndTheNextInitShowsTheAcceptedValues) {
    const std::function<void()> maneras[] = {[this] { Pulsa(sonidos, "Cancelar"); },
                                             [this] { prueba::Pulsa(sonidos, Qt::Key_Escape, {}, "\x1b"); },
                                             [this] { sonidos.close(); }};
    for (const auto &cancela : maneras) {
        sonidos.Init();
        EXPECT_TRUE(Casilla(sonidos, "CheckPortapapeles").isChecked());
        Casilla(sonidos, "CheckPortapapeles").setChecked(false);
        cancela();
        EXPECT_FALSE(sonidos.isVisible());
        EXPECT_TRUE(opcSonidos.Portapapeles());
        EXPECT_EQ(r.Lee("General", "SonidosPortapapeles", "-"), "-");
    }
}

TEST_F(DialogosPequenosTest, AValueWrittenByTheProgramShowsAtTheNextInit) {
    opcSonidos.SetPortapapeles(false);
    EXPECT_TRUE(Casilla(sonidos, "CheckPortapapeles").isChecked());
    sonidos.Init();
    EXPECT_FALSE(Casilla(sonidos, "CheckPortapapeles").isChecked());
}

TEST_F(DialogosPequenosTest, InitWhileItStandsThereKeepsTheEdits) {
    sonidos.Init();
    Casilla(sonidos, "CheckPortapapeles").setChecked(false);
    sonidos.Init();
    EXPECT_FALSE(Casilla(sonidos, "CheckPortapapeles").isChecked());
}

TEST_F(DialogosPequenosTest, EnterAcceptsAndF1ShowsTheTopicOfTheDialog) {
    sonidos.Init();
    QApplication::setActiveWindow(&sonidos);
    prueba::Pulsa(sonidos, Qt::Key_F1);
    prueba::Pulsa(sonidos, Qt::Key_Return, {}, "\r");
    EXPECT_FALSE(sonidos.isVisible());
    editores.Init();
    Pulsa(editores, "Ayuda");
    EXPECT_TRUE(editores.isVisible());
    EXPECT_EQ(temas.join(' '), "OpcGeneral.htm#Sonidos OpcTipoLectura.htm#Editores");
}

TEST_F(DialogosPequenosTest, TheFirstControlHasTheFocusAndTabComesRoundByTheButtons) {
    sonidos.Init();
    QApplication::setActiveWindow(&sonidos);
    QStringList vistos;
    do {
        vistos << sonidos.focusWidget()->objectName();
        prueba::Pulsa(sonidos, Qt::Key_Tab, {}, "\t");
    } while (sonidos.focusWidget()->objectName() != vistos.front() && vistos.size() < 20);
    EXPECT_EQ(vistos.join(' '),
              "CheckAvisosGenerales CheckActivarDesactivar CheckPortapapeles CheckLeeTeclado Aceptar Cancelar Ayuda");
}

TEST_F(DialogosPequenosTest, WithoutAStoredPlaceItStandsNearTheBottomRightCorner) {
    editores.Init();
    const QSize pantalla = QGuiApplication::primaryScreen()->size();
    EXPECT_NEAR(editores.x(), pantalla.width() - 1.2 * editores.width(), 1);
    EXPECT_NEAR(editores.y(), pantalla.height() - 1.2 * editores.height(), 1);
}

TEST_F(DialogosPequenosTest, ItsPlaceIsKeptInTwipsAndServesAgain) {
    editores.Init();
    editores.move(40, 30);
    Pulsa(editores, "Cancelar");
    EXPECT_EQ(r.Lee("Ventana", "LeftEditoresTexto"), "600");
    EXPECT_EQ(r.Lee("Ventana", "TopEditoresTexto"), "450");
    editores.Init();
    EXPECT_EQ(editores.pos(), QPoint(40, 30));
    EditoresTexto otra(opcEditores, Colaboradores());
    otra.Init();
    EXPECT_EQ(otra.pos(), QPoint(40, 30));
}

TEST_F(DialogosPequenosTest, AStoredPlaceBeyondTheScreenIsReplaced) {
    r.Salva("Ventana", "LeftSonidosAviso", "900000");
    r.Salva("Ventana", "TopSonidosAviso", "450");
    sonidos.Init();
    EXPECT_NEAR(sonidos.x(), QGuiApplication::primaryScreen()->size().width() - 1.2 * sonidos.width(), 1);
    EXPECT_EQ(sonidos.y(), 30);
}

TEST_F(DialogosPequenosTest, FollowingWordsAndFollowingStopsExcludeEachOther) {
    editores.Init();
    Casilla(editores, "LocalizaParadaWord").setChecked(true);
    EXPECT_FALSE(Casilla(editores, "LocalizaPalabrasWord").isChecked());
    for (const char *suyo : {"SeleccionaWord", "EtiqSalto", "SliderSalto"}) EXPECT_TRUE(Hay(editores, suyo)) << suyo;
    Casilla(editores, "LocalizaPalabrasWord").setChecked(true);
    EXPECT_FALSE(Casilla(editores, "LocalizaParadaWord").isChecked());
    EXPECT_TRUE(Hay(editores, "SeleccionaWord"));
    for (const char *suyo : {"EtiqSalto", "SliderSalto"}) EXPECT_FALSE(Hay(editores, suyo)) << suyo;
}

TEST_F(DialogosPequenosTest, WithNeitherOfThemTheRestIsDisabled) {
    editores.Init();
    for (const char *primera : {"LocalizaPalabrasWord", "LocalizaParadaWord"}) {
        Casilla(editores, primera).setChecked(true);
        Casilla(editores, primera).setChecked(false);
        for (const char *suyo : {"SeleccionaWord", "EtiqSalto", "SliderSalto"})
            EXPECT_FALSE(Hay(editores, suyo)) << primera << suyo;
    }
}

TEST_F(DialogosPequenosTest, WhatIsEnabledFollowsTheAcceptedValues) {
    opcEditores.SetLocPalabrasEnWord(false);
    opcEditores.SetLocParadaEnWord(true);
    editores.Init();
    EXPECT_TRUE(Hay(editores, "SliderSalto"));
    opcEditores.SetLocParadaEnWord(false);
    Pulsa(editores, "Cancelar");
    editores.Init();
    EXPECT_FALSE(Hay(editores, "SeleccionaWord"));
}

TEST_F(DialogosPequenosTest, TheSliderRunsFromOneToElevenAndTheJumpIsSixLess) {
    auto &barra = De<QSlider>(editores, "SliderSalto");
    EXPECT_EQ(barra.minimum(), 1);
    EXPECT_EQ(barra.maximum(), 11);
    EXPECT_EQ(barra.value(), 6);
    editores.Init();
    Casilla(editores, "LocalizaParadaWord").setChecked(true);
    barra.setValue(3);
    EXPECT_EQ(opcEditores.SaltoWord(), 0);
    Pulsa(editores, "Aceptar");
    EXPECT_EQ(opcEditores.SaltoWord(), -3);
    EXPECT_EQ(r.Lee("Editores", "SaltoWord"), "-3");
    EXPECT_EQ(r.Lee("Editores", "PalabrasWord"), "False");
    EXPECT_EQ(r.Lee("Editores", "ParadaWord"), "True");
    EXPECT_EQ(r.Lee("Editores", "MarcaWord"), "True");
    opcEditores.SetSaltoWord(5);
    editores.Init();
    EXPECT_EQ(barra.value(), 11);
}

TEST_F(DialogosPequenosTest, TheJumpIsSaidInWords) {
    EXPECT_EQ(EditoresTexto::TextoSalto(-3), "3 palabras atrás");
    EXPECT_EQ(EditoresTexto::TextoSalto(1), "1 palabra adelante");
    auto &barra = De<DeslizadorSalto>(editores, "SliderSalto");
    barra.setValue(4);
    EXPECT_EQ(De<QLabel>(editores, "ValorSalto").text(), "2 palabras atrás");
    EXPECT_EQ(barra.accessibleDescription(), "2 palabras atrás");
    QAccessibleInterface *dicho = QAccessible::queryAccessibleInterface(&barra);
    ASSERT_TRUE(dicho && dicho->valueInterface());
    EXPECT_EQ(dicho->valueInterface()->currentValue().toInt(), -2);
    EXPECT_EQ(dicho->valueInterface()->minimumValue().toInt(), -5);
    EXPECT_EQ(dicho->valueInterface()->maximumValue().toInt(), 5);
    EXPECT_EQ(dicho->text(QAccessible::Name), "Localización relativa en pausas manuales");
}

}  // namespace
}  // namespace ondalis::prueba
