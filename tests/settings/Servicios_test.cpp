// The small services: wait cursor, progress bar, file dialog, left commands, open windows, place of a window.
#include <gtest/gtest.h>

#include <QFile>

#include "fakes/DiscoLleno.h"
#include "fakes/RegistroPropio.h"
#include "settings/PosicionVentana.h"
#include "settings/cComandosRegistro.h"
#include "settings/cCursor.h"
#include "settings/cDialogoFichero.h"
#include "settings/cFormularios.h"
#include "settings/cProgreso.h"

namespace ondalis {
namespace {

using prueba::RegistroPropio;

class PunteroFalso : public PunteroPantalla {
public:
    int Puntero() const override { return puntero; }
    void SetPuntero(int nuevo) override { puntero = nuevo; }
    int puntero = 3;
};

TEST(cCursor, ThePointerComesBackHoweverTheProcedureEnds) {
    PunteroFalso pantalla;
    cCola cola;
    try {
        cCursor cursor(pantalla, cola);
        EXPECT_EQ(pantalla.puntero, 3);
        cursor.SetPuntero(cCursor::RelojDeArena);
        EXPECT_EQ(pantalla.puntero, 11);
        throw 1;
    } catch (int) {
    }
    EXPECT_EQ(pantalla.puntero, 3);
}

TEST(cCursor, SettingThePointerLetsPendingEventsRun) {
    PunteroFalso pantalla;
    cCola cola;
    int servidos = 0;
    {
        cCursor cursor(pantalla, cola);
        cola.Pon(cCola::Clase::Motor, [&] { ++servidos; });
        cursor.SetPuntero(11);
        EXPECT_EQ(servidos, 1);
        cola.Pon(cCola::Clase::Motor, [&] { ++servidos; });
    }
    EXPECT_EQ(servidos, 2);
}

class SuperficieFalsa : public SuperficieProgreso {
public:
    void SetColores(std::uint32_t uno, std::uint32_t otro) override {
        fondo = uno;
        frente = otro;
    }
    bool Visible() const override { return visible; }
    void SetVisible(bool valor) override { visible = valor; }
    float Ancho() const override { return 200; }
    void Dibuja(float ancho) override { anchos.push_back(ancho); }
    void Limpia() override { ++limpiezas; }

    std::uint32_t fondo = 0, frente = 0;
    bool visible = false;
    std::vector<float> anchos;
    int limpiezas = 0;
};

class cProgresoTest : public testing::Test {
protected:
    void SetUp() override {
        progreso.Init(superficie);
        progreso.SetMaxValor(1000);
    }
    cCola cola;
    SuperficieFalsa superficie;
    cProgreso progreso{cola};
};

TEST_F(cProgresoTest, ItIsGreenOnWhite) {
    EXPECT_EQ(superficie.fondo, 0xFFFFFFu);
    EXPECT_EQ(superficie.frente, 65280u);
    EXPECT_FALSE(superficie.visible);
}

TEST_F(cProgresoTest, WritingTheSamePercentageTwiceDrawsOnce) {
    progreso.SetValorActual(100);
    progreso.SetValorActual(101);
    ASSERT_EQ(superficie.anchos.size(), 1u);
    EXPECT_FLOAT_EQ(superficie.anchos[0], 20);
    EXPECT_TRUE(superficie.visible);
    EXPECT_EQ(progreso.ValorActual(), 101);
}

TEST_F(cProgresoTest, AValueAboveTheMaximumIsCut) {
    progreso.SetValorActual(5000);
    EXPECT_EQ(progreso.ValorActual(), 1000);
    ASSERT_EQ(superficie.anchos.size(), 1u);
    EXPECT_FLOAT_EQ(superficie.anchos[0], 200);
}

TEST_F(cProgresoTest, AMaximumOf0DrawsNothing) {
    progreso.SetMaxValor(0);
    progreso.SetValorActual(5);
    progreso.SetValorActual(-5);
    EXPECT_TRUE(superficie.anchos.empty());
}

TEST_F(cProgresoTest, APercentageRoundsHalfToEven) {
    progreso.SetValorActual(25);  // 2.5
    progreso.SetValorActual(35);  // 3.5
    ASSERT_EQ(superficie.anchos.size(), 2u);
    EXPECT_FLOAT_EQ(superficie.anchos[0], 4);
    EXPECT_FLOAT_EQ(superficie.anchos[1], 8);
}

TEST_F(cProgresoTest, EachWriteLetsPendingEventsRun) {
    int servidos = 0;
    for (int i = 0; i < 2; ++i) {
        cola.Pon(cCola::Clase::Motor, [&] { ++servidos; });
        progreso.SetValorActual(100);
    }
    EXPECT_EQ(servidos, 2);
}

TEST_F(cProgresoTest, HidingClearsTheSurface) {
    progreso.SetValorActual(100);
    progreso.Oculta();
    EXPECT_FALSE(superficie.visible);
    EXPECT_EQ(superficie.limpiezas, 1);
}

class DialogoFalso : public DialogoFichero {
public:
    std::optional<QString> Elige(const PeticionFichero &peticion) override {
        ultima = peticion;
        return respuesta;
    }
    PeticionFichero ultima;
    std::optional<QString> respuesta;
};

TEST(cDialogoFichero, TheDialogIsTitledAbrirAndGivesThePathTrimmed) {
    DialogoFalso dialogo;
    dialogo.respuesta = "  /a/b.wav  ";
    EXPECT_EQ(cDialogoFichero(dialogo).GetFicheroDialogo(
                  "wav", QStringLiteral("Fichero de audio (*.wav)") + QChar::Null + "*.wav" + QChar::Null),
              "/a/b.wav");
    EXPECT_EQ(dialogo.ultima.titulo, "Abrir");
    EXPECT_EQ(dialogo.ultima.extension, "wav");
    EXPECT_TRUE(dialogo.ultima.carpetaDebeExistir);
    ASSERT_EQ(dialogo.ultima.filtros.size(), 1u);
    EXPECT_EQ(dialogo.ultima.filtros[0].texto, "Fichero de audio (*.wav)");
    EXPECT_EQ(dialogo.ultima.filtros[0].patrones, QStringList{"*.wav"});
}

TEST(cDialogoFichero, ACancelledDialogGivesTheEmptyText) {
    DialogoFalso dialogo;
    EXPECT_EQ(cDialogoFichero(dialogo).GetFicheroDialogo("wav", ""), "");
    EXPECT_TRUE(dialogo.ultima.filtros.empty());
}

TEST(cDialogoFichero, AnyExtensionMeansNoSuffixAndAnyFolder) {
    DialogoFalso dialogo;
    cDialogoFichero(dialogo).GetFicheroDialogo("*", "");
    EXPECT_EQ(dialogo.ultima.extension, "");
    EXPECT_FALSE(dialogo.ultima.carpetaDebeExistir);
}

TEST(cDialogoFichero, PatternsAreSplitAndTheOneForAllStandsForEveryFile) {
    const auto filtros = cDialogoFichero::Filtros(QStringLiteral("Texto") + QChar::Null + "*.txt; *.asc" + QChar::Null +
                                                  "Todos" + QChar::Null + "*.*" + QChar::Null + QChar::Null);
    ASSERT_EQ(filtros.size(), 2u);
    EXPECT_EQ(filtros[0].patrones, (QStringList{"*.txt", "*.asc"}));
    EXPECT_EQ(filtros[1].texto, "Todos");
    EXPECT_TRUE(filtros[1].patrones.isEmpty());
}

class LanzadorFalso : public LanzadorComandos {
public:
    bool Lanza(const QString &comando) override {
        lanzados << comando;
        return !comando.startsWith("malo");
    }
    QStringList lanzados;
};

class cComandosRegistroTest : public testing::Test {
protected:
    void Deja(const QByteArray &valores) { RegistroPropio::Escribe(p.FicheroSistema(), "[General]\n" + valores); }
    // One start of the program.
    QStringList Arranca() {
        LanzadorFalso lanzador;
        cComandosRegistro(p.Registro(), p.Log(), lanzador, p.Ruta("estado")).EjecutaComandosRegistro();
        return lanzador.lanzados;
    }
    RegistroPropio p;
};

TEST_F(cComandosRegistroTest, CommandsRunInTheirOrderUpToTheFirstEmptyOneAndOnce) {
    Deja("CMD1=uno\nCMD2=dos -x\nCMD4=cuatro\n");
    EXPECT_EQ(Arranca(), (QStringList{"uno", "dos -x"}));
    EXPECT_EQ(Arranca(), QStringList());
    EXPECT_EQ(p.Registro().Lee("LM", Producto::Ruta(), "", "CMD4"), "cuatro");
}

TEST_F(cComandosRegistroTest, ACommandThatDidNotStartStaysForTheNextStart) {
    Deja("CMD1=malo\nCMD2=dos\n");
    EXPECT_EQ(Arranca(), (QStringList{"malo", "dos"}));
    EXPECT_EQ(Arranca(), (QStringList{"malo"}));
}

TEST_F(cComandosRegistroTest, WhatCannotBeDeletedIsMarkedDoneAndRunsOnceAllTheSame) {
    Deja("CMD1=uno\nCMD2=dos\n");
    {
        const prueba::DiscoLleno lleno;  // the store can be read and not written
        EXPECT_EQ(Arranca(), (QStringList{"uno", "dos"}));
    }
    RegistroPropio otro;  // the next start, which has nothing of this one's in memory
    RegistroPropio::Escribe(otro.FicheroSistema(), "[General]\nCMD1=uno\nCMD2=dos\nCMD3=tres\n");
    LanzadorFalso lanzador;
    cComandosRegistro(otro.Registro(), otro.Log(), lanzador, p.Ruta("estado")).EjecutaComandosRegistro();
    EXPECT_EQ(lanzador.lanzados, (QStringList{"tres"}));
}

TEST_F(cComandosRegistroTest, WithoutCommandsNothingRunsAndNothingIsMade) {
    EXPECT_EQ(Arranca(), QStringList());
    EXPECT_FALSE(QDir(p.Ruta("estado")).exists());
}

TEST(cFormularios, AllOpenWindowsAreUnloadedExceptTheNamedOne) {
    cFormularios formularios;
    QStringList descargados;
    for (const char *nombre : {"Principal", "Lupa", "Editor"})
        formularios.Anota(nombre, [&, nombre] { descargados << nombre; });
    formularios.Olvida("Otro");
    formularios.DescargaFormularios("Principal");
    EXPECT_EQ(descargados, (QStringList{"Editor", "Lupa"}));
    EXPECT_TRUE(formularios.Abierto("Principal"));
    EXPECT_FALSE(formularios.Abierto("Lupa"));
    formularios.DescargaFormularios();
    EXPECT_EQ(descargados.size(), 3);
}

TEST(cFormularios, AWindowMayForgetItselfAndOpenAnotherWhileItIsUnloaded) {
    cFormularios formularios;
    QStringList descargados;
    formularios.Anota("Lupa", [&] {
        formularios.Olvida("Lupa");
        formularios.Anota("Editor", [&] { descargados << "Editor"; });
        descargados << "Lupa";
    });
    formularios.DescargaFormularios();
    EXPECT_EQ(descargados, (QStringList{"Lupa", "Editor"}));
}

TEST(cFormularios, AWindowOpenedAgainIsUnloadedOnce) {
    cFormularios formularios;
    int descargas = 0;
    formularios.Anota("Lupa", [&] { descargas += 10; });
    formularios.Anota("Lupa", [&] { ++descargas; });
    formularios.DescargaFormularios();
    EXPECT_EQ(descargas, 1);
}

TEST(PosicionVentana, AWindowFirstOpensNearTheBottomRightCorner) {
    EXPECT_FLOAT_EQ(PosicionInicial(15000, 5000), 9000);
}

TEST(PosicionVentana, AnEdgeBeyondTheScreenGoesBackToTheFreshPlace) {
    EXPECT_FLOAT_EQ(PosicionVentana(15001, 15000, 5000), 9000);
    EXPECT_FLOAT_EQ(PosicionVentana(15000, 15000, 5000), 15000);
}

TEST(PosicionVentana, ANegativeEdgeGoesTo0) {
    EXPECT_FLOAT_EQ(PosicionVentana(-1, 15000, 5000), 0);
    EXPECT_FLOAT_EQ(PosicionVentana(0, 15000, 5000), 0);
}

TEST(PosicionVentana, AnEdgeOnTheScreenStays) { EXPECT_FLOAT_EQ(PosicionVentana(1234.5f, 15000, 5000), 1234.5f); }

TEST(PosicionVentana, AWindowTooLargeForItsFreshPlaceOpensAt0) {
    EXPECT_FLOAT_EQ(PosicionVentana(PosicionInicial(10000, 9000), 10000, 9000), 0);
}

TEST(PosicionVentana, TheRuleLeavesTheStoredValueAlone) {
    RegistroPropio p;
    ASSERT_TRUE(p.Salva("Ventana", "LeftEditor", "20000"));
    const float izquierda = p.Lee("Ventana", "LeftEditor", PosicionInicial(15000, 5000)).toFloat();
    EXPECT_FLOAT_EQ(PosicionVentana(izquierda, 15000, 5000), 9000);
    EXPECT_EQ(p.Lee("Ventana", "LeftEditor"), "20000");
}

}  // namespace
}  // namespace ondalis
