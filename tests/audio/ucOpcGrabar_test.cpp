#include "audio/ucOpcGrabar.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QWheelEvent>

#include "fakes/Aspectos.h"
#include "fakes/EnVentana.h"
#include "fakes/EstadoDiseno.h"
#include "fakes/RegistroPropio.h"
#include "settings/pagina/Rotulos.h"
#include "settings/pagina/cCajaFichero.h"

namespace ondalis::prueba {
namespace {

class DialogoGuion : public DialogoFichero {
public:
    std::optional<QString> Elige(const PeticionFichero &peticion) override {
        peticiones.push_back(peticion);
        return respuesta;
    }
    std::vector<PeticionFichero> peticiones;
    std::optional<QString> respuesta;
};

class ucOpcGrabarTest : public testing::Test {
protected:
    template <class Control>
    Control *De(const char *nombre) {
        Control *control = pagina.findChild<Control *>(QLatin1String(nombre));
        EXPECT_NE(control, nullptr) << nombre;
        return control;
    }
    QCheckBox &Leer() { return *De<QCheckBox>("CheckLeer"); }
    QCheckBox &Grabar() { return *De<QCheckBox>("CheckGrabar"); }
    QComboBox &Formato() { return *De<QComboBox>("FormatoAudio"); }
    QComboBox &Tipo() { return *De<QComboBox>("TipoGrabacion"); }
    cCajaFichero &Fichero() { return *De<cCajaFichero>("NomFichero"); }
    bool Habilitado(const char *nombre) { return De<QWidget>(nombre)->isEnabled(); }

    RegistroPropio r;
    cOpcGrabar opciones{r.Registro(), r.Log(), QStringLiteral("/musica/Lectura.wav")};
    DialogoGuion dialogo;
    cDialogoFichero servicio{dialogo};
    ucOpcGrabar pagina{opciones, servicio};
};

TEST_F(ucOpcGrabarTest, TheDesignStateEqualsTheTable) { CompruebaDiseno(pagina, opciones); }

TEST_F(ucOpcGrabarTest, OnFirstUseTheDefaultFileStandsInTheBox) {
    pagina.EstableceValores();
    EXPECT_EQ(Fichero().text(), "/musica/Lectura.wav");
    EXPECT_EQ(Formato().currentText(), "WAV");
    EXPECT_EQ(Tipo().currentText(), "Síncrono");
    EXPECT_EQ(De<QComboBox>("CombokHz")->currentText(), "11.02 kHz");
    EXPECT_EQ(De<QComboBox>("Combokbps")->currentText(), " 24 kbps");
}

TEST_F(ucOpcGrabarTest, TheCaptionsAreTheGivenOnes) {
    EXPECT_EQ(SinMarca(Leer().text()), "Leer texto en voz alta");
    EXPECT_EQ(SinMarca(Grabar().text()), "Grabar texto en fichero de audio");
    EXPECT_EQ(SinMarca(De<QRadioButton>("OpcionAnadir")->text()), "Añadir al fichero");
    EXPECT_EQ(SinMarca(De<QRadioButton>("OpcionSobrescribir")->text()), "Sobrescribir el fichero");
    EXPECT_EQ(SinMarca(De<QRadioButton>("OpcionNumerar")->text()),
              "Incluir cada lectura en un fichero distinto (numerados)");
    EXPECT_EQ(SinMarca(De<QPushButton>("Examinar")->text()), "Examinar...");
    EXPECT_EQ(Tipo().itemText(1), "Asíncrono");
}

TEST_F(ucOpcGrabarTest, TheListsHoldTheTables) {
    const auto comprueba = [&](const char *nombre, std::span<const EntradaCalidad> tabla) {
        const QComboBox &lista = *De<QComboBox>(nombre);
        ASSERT_EQ(lista.count(), static_cast<int>(tabla.size()));
        for (int i = 0; i < lista.count(); ++i) {
            EXPECT_EQ(lista.itemText(i), tabla[static_cast<std::size_t>(i)].texto);
            EXPECT_EQ(lista.itemData(i).toInt(), tabla[static_cast<std::size_t>(i)].valor);
        }
    };
    comprueba("CombokHz", TablakHz());
    comprueba("Combokbps", Tablakbps());
}

TEST_F(ucOpcGrabarTest, ReadingAndRecordingAreNeverBothOff) {
    Leer().setChecked(false);
    EXPECT_TRUE(Grabar().isChecked());
    Grabar().setChecked(false);
    EXPECT_TRUE(Leer().isChecked());
    Grabar().setChecked(true);
    Leer().setChecked(false);
    EXPECT_TRUE(Grabar().isChecked());
}

TEST_F(ucOpcGrabarTest, NotEvenStoredValuesPutBothOff) {
    opciones.SetLeerTexto(false);
    opciones.SetGrabarTexto(false);
    pagina.EstableceValores();
    EXPECT_TRUE(Leer().isChecked() || Grabar().isChecked());
    for (const auto &[lee, graba] : {std::pair(false, true), {true, false}, {true, true}}) {
        opciones.SetLeerTexto(lee);
        opciones.SetGrabarTexto(graba);
        pagina.EstableceValores();
        EXPECT_EQ(Leer().isChecked(), lee);
        EXPECT_EQ(Grabar().isChecked(), graba);
    }
}

TEST_F(ucOpcGrabarTest, RecordingEnablesWhatDependsOnIt) {
    for (const bool graba : {false, true, false}) {
        Grabar().setChecked(graba);
        for (const char *nombre :
             {"FormatoAudio", "EtiqFichero", "NomFichero", "Examinar", "OpcionAnadir", "OpcionSobrescribir",
              "OpcionNumerar", "EtiqCalidad", "CombokHz", "Combokbps", "TipoGrabacion"})
            EXPECT_EQ(Habilitado(nombre), graba) << nombre;
    }
}

TEST_F(ucOpcGrabarTest, TheKindOfRecordingIsChosenForWavOnlyAndMp3IsSynchronous) {
    Grabar().setChecked(true);
    Tipo().setCurrentIndex(1);
    Formato().setCurrentIndex(1);
    EXPECT_EQ(Tipo().currentText(), "Síncrono");
    EXPECT_FALSE(Habilitado("TipoGrabacion"));
    Formato().setCurrentIndex(0);
    EXPECT_TRUE(Habilitado("TipoGrabacion"));
    Grabar().setChecked(false);
    Formato().setCurrentIndex(1);
    Formato().setCurrentIndex(0);
    EXPECT_FALSE(Habilitado("TipoGrabacion"));
}

TEST_F(ucOpcGrabarTest, AStoredAsynchronousMp3IsShownSynchronous) {
    opciones.SetGrabaEnWAV(false);
    opciones.SetGrabaSincrono(false);
    pagina.EstableceValores();
    EXPECT_EQ(Tipo().currentIndex(), 0);
    pagina.GuardaValores();
    EXPECT_TRUE(opciones.GrabaSincrono());
}

TEST_F(ucOpcGrabarTest, TheBitRateIsVisibleForMp3Only) {
    EXPECT_FALSE(De<QWidget>("Combokbps")->isVisibleTo(&pagina));
    Formato().setCurrentIndex(1);
    EXPECT_TRUE(De<QWidget>("Combokbps")->isVisibleTo(&pagina));
    opciones.SetGrabaEnWAV(true);
    pagina.EstableceValores();
    EXPECT_FALSE(De<QWidget>("Combokbps")->isVisibleTo(&pagina));
}

TEST_F(ucOpcGrabarTest, TheFormatRewritesTheExtensionAndPutsTheCaretAtTheEnd) {
    Fichero().SetFichero("/musica/Lectura.WAV");
    Fichero().setCursorPosition(0);
    Formato().setCurrentIndex(1);
    EXPECT_EQ(Fichero().text(), "/musica/Lectura.mp3");
    EXPECT_EQ(Fichero().cursorPosition(), 19);
    Formato().setCurrentIndex(0);
    EXPECT_EQ(Fichero().text(), "/musica/Lectura.wav");
    Fichero().SetFichero("/musica/otro.ogg");
    Fichero().setCursorPosition(0);
    Formato().setCurrentIndex(1);
    EXPECT_EQ(Fichero().text(), "/musica/otro.ogg");
    EXPECT_EQ(Fichero().cursorPosition(), 16);
}

TEST_F(ucOpcGrabarTest, ChoosingTheSameFormatAgainRewritesToo) {
    Fichero().SetFichero("/musica/x.mp3");
    emit Formato().activated(0);
    EXPECT_EQ(Fichero().text(), "/musica/x.wav");
}

TEST_F(ucOpcGrabarTest, AcceptedNamesAreShownAsTheyWereWhateverTheFormat) {
    opciones.SetGrabaEnWAV(false);
    opciones.SetNombreFichero("/música/a:ñ.wav");
    pagina.EstableceValores();
    EXPECT_EQ(Fichero().text(), "/música/a:ñ.wav");
    opciones.SetGrabaEnWAV(true);
    opciones.SetNombreFichero("/x.mp3");
    pagina.EstableceValores();
    EXPECT_EQ(Fichero().text(), "/x.mp3");
}

TEST_F(ucOpcGrabarTest, TheFileDialogOffersThePresentFormat) {
    for (const int formato : {0, 1}) {
        const QString extension = formato == 0 ? "wav" : "mp3";
        Grabar().setChecked(true);
        Formato().setCurrentIndex(formato);
        dialogo.respuesta = "/elegido: uno." + extension;
        De<QPushButton>("Examinar")->click();
        const PeticionFichero &peticion = dialogo.peticiones.back();
        EXPECT_EQ(peticion.titulo, "Abrir");
        EXPECT_EQ(peticion.extension, extension);
        ASSERT_EQ(peticion.filtros.size(), 1u);
        EXPECT_EQ(peticion.filtros[0].texto, "Fichero de audio (*." + extension + ")");
        EXPECT_EQ(peticion.filtros[0].patrones, QStringList("*." + extension));
        EXPECT_EQ(Fichero().text(), "/elegido: uno." + extension);
        EXPECT_EQ(Fichero().cursorPosition(), Fichero().text().size());
    }
    EXPECT_EQ(dialogo.peticiones.size(), 2u);
}

TEST_F(ucOpcGrabarTest, ACancelledFileDialogChangesNothing) {
    Grabar().setChecked(true);
    Fichero().SetFichero("/era.wav");
    De<QPushButton>("Examinar")->click();
    EXPECT_EQ(dialogo.peticiones.size(), 1u);
    EXPECT_EQ(Fichero().text(), "/era.wav");
}

TEST_F(ucOpcGrabarTest, TheThreeOptionsExcludeOneAnother) {
    Grabar().setChecked(true);
    const char *const nombres[] = {"OpcionAnadir", "OpcionSobrescribir", "OpcionNumerar"};
    for (const char *elegida : nombres) {
        De<QRadioButton>(elegida)->click();
        for (const char *otra : nombres) EXPECT_EQ(De<QRadioButton>(otra)->isChecked(), otra == elegida) << otra;
    }
    pagina.GuardaValores();
    EXPECT_TRUE(opciones.NumerarFich());
    EXPECT_FALSE(opciones.SobrescribirFich());
    EXPECT_FALSE(opciones.AnadirFich());
}

TEST_F(ucOpcGrabarTest, OfTheThreeOptionsTabStopsAtTheChosenOne) {
    const auto conTab = [&](const char *nombre) { return (De<QWidget>(nombre)->focusPolicy() & Qt::TabFocus) != 0; };
    EXPECT_FALSE(conTab("OpcionAnadir"));
    EXPECT_TRUE(conTab("OpcionSobrescribir"));
    EXPECT_FALSE(conTab("OpcionNumerar"));
    opciones.SetSobrescribirFich(false);
    opciones.SetNumerarFich(true);
    pagina.EstableceValores();
    EXPECT_FALSE(conTab("OpcionSobrescribir"));
    EXPECT_TRUE(conTab("OpcionNumerar"));
}

TEST_F(ucOpcGrabarTest, AcceptingStoresEverythingAndCancellingDropsIt) {
    Grabar().setChecked(true);
    Formato().setCurrentIndex(1);
    Fichero().SetFichero("/nuevo.mp3");
    De<QComboBox>("CombokHz")->setCurrentIndex(7);
    De<QComboBox>("Combokbps")->setCurrentIndex(11);
    pagina.EstableceValores();
    EXPECT_FALSE(Grabar().isChecked());
    EXPECT_EQ(Fichero().text(), "/musica/Lectura.wav");

    Grabar().setChecked(true);
    Formato().setCurrentIndex(1);
    Fichero().SetFichero("/nuevo.mp3");
    De<QComboBox>("CombokHz")->setCurrentIndex(7);
    De<QComboBox>("Combokbps")->setCurrentIndex(11);
    EXPECT_FALSE(opciones.GrabarTexto());
    pagina.GuardaValores();
    EXPECT_TRUE(opciones.GrabarTexto());
    EXPECT_EQ(r.Lee("Grabar", "GrabarTexto"), "True");
    EXPECT_EQ(r.Lee("Grabar", "GrabaEnWAV"), "False");
    EXPECT_EQ(r.Lee("Grabar", "NombreFichero"), "/nuevo.mp3");
    EXPECT_EQ(r.Lee("Grabar", "CalidadkHz"), "44100");
    EXPECT_EQ(r.Lee("Grabar", "Calidadkbps"), "128");
}

TEST_F(ucOpcGrabarTest, ARateOutsideTheListLeavesItsSelectionAlone) {
    opciones.SetCalidadkHz(9000);
    pagina.EstableceValores();
    EXPECT_EQ(De<QComboBox>("CombokHz")->currentIndex(), 1);
}

TEST_F(ucOpcGrabarTest, TheWheelChangesNoListThatHasNotTheFocus) {
    Grabar().setChecked(true);
    QWheelEvent rueda({5, 5}, {5, 5}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&Formato(), &rueda);
    EXPECT_EQ(Formato().currentIndex(), 0);
}

TEST_F(ucOpcGrabarTest, EveryControlHasANameOfItsOwn) {
    QStringList nombres;
    for (const QWidget *uno : pagina.findChildren<QWidget *>())
        if (!uno->accessibleName().isEmpty()) nombres << uno->accessibleName();
    EXPECT_EQ(nombres.size(), 11);  // the table's ten controls and the button
    EXPECT_EQ(nombres.removeDuplicates(), 0);
}

TEST_F(ucOpcGrabarTest, InTheWindowItIsWholeInEveryLook) {
    Grabar().setChecked(true);
    pagina.SetTags();
    CompruebaAspectos([&] { return EnVentana(r, Pagina::Grabar, new ucOpcGrabar(opciones, servicio)); },
                      QStringLiteral("FrameGrabar"));
}

}  // namespace
}  // namespace ondalis::prueba
