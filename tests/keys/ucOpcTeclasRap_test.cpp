#include "keys/ucOpcTeclasRap.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QSlider>

#include "fakes/Aspectos.h"
#include "fakes/EnVentana.h"
#include "fakes/EstadoDiseno.h"
#include "fakes/MensajesGuion.h"
#include "fakes/PrioridadFalsa.h"
#include "fakes/RegistroPropio.h"
#include "fakes/TeclasFalsas.h"
#include "keys/EstableceTeclas.h"
#include "settings/pagina/Rotulos.h"
#include "settings/pagina/cCajaNumero.h"

namespace ondalis::prueba {
namespace {

constexpr std::uint32_t kControl = 2, kAlt = 1, kShift = 4;
constexpr int kF1 = 20;  // position in the table

class ucOpcTeclasRapTest : public testing::Test {
protected:
    ucOpcTeclasRapTest() {
        tecla.Init(1);
        EstableceTeclasRapidas(tecla, opciones);
    }

    QComboBox &Lista(const char *nombre) {
        auto *lista = pagina.findChild<QComboBox *>(QLatin1String(nombre));
        if (!lista) qFatal("%s", nombre);
        return *lista;
    }
    // As the user does: the entry is selected, and the list tells that it was used.
    void Elige(const char *nombre, int posicion) {
        Lista(nombre).setCurrentIndex(posicion);
        emit Lista(nombre).activated(posicion);
    }
    cCajaNumero &Caja(const char *nombre) { return *pagina.findChild<cCajaNumero *>(QLatin1String(nombre)); }
    QSlider &Barra(const char *nombre) { return *pagina.findChild<QSlider *>(QLatin1String(nombre)); }
    void Teclea(QWidget &donde, const QString &texto) {
        for (const QChar c : texto) {
            QKeyEvent baja(QEvent::KeyPress, c.unicode(), Qt::NoModifier, QString(c));
            QApplication::sendEvent(&donde, &baja);
        }
    }

    RegistroPropio r;
    MensajesGuion mensajes;
    PrioridadFalsa prioridad;
    cGeneral general{r.Log(), mensajes, prioridad};
    TeclasFalsas sistema;
    cCola cola;
    cTecla tecla{sistema, cola, r.Log()};
    cOpcTeclasRap opciones{r.Registro(), r.Log()};
    ucOpcTeclasRap pagina{opciones, tecla, general};
};

TEST_F(ucOpcTeclasRapTest, TheDesignStateEqualsTheTable) { CompruebaDiseno(pagina, opciones); }

TEST_F(ucOpcTeclasRapTest, TheTwelveListsHoldTheModifiersAndTheKeys) {
    for (const QString nombre : ComandosConfigurables()) {
        const QComboBox &modificador = Lista(qPrintable("Mod" + nombre));
        ASSERT_EQ(modificador.count(), 3);
        EXPECT_EQ(modificador.itemText(0), "Control");
        EXPECT_EQ(modificador.itemText(1), "Alt");
        EXPECT_EQ(modificador.itemText(2), "Shift");
        const QComboBox &teclas = Lista(qPrintable("Tecla" + nombre));
        ASSERT_EQ(teclas.count(), 45);
        for (int i = 0; i < 45; ++i) EXPECT_EQ(teclas.itemText(i), TablaTeclas()[static_cast<std::size_t>(i)].rotulo);
    }
}

// The accessibility bus names a list by its chosen entry, and six of them would sound alike.
TEST_F(ucOpcTeclasRapTest, EachKeyListHasOneLabelOutOfSightThatTellsItApart) {
    QStringList textos;
    for (const char *nombre : {"Activar", "Pausa", "Detener", "Repetir", "Avanzar", "Retroceder"}) {
        const QComboBox &lista = Lista(qPrintable(QStringLiteral("Tecla") + QLatin1String(nombre)));
        int suyas = 0;
        for (const QLabel *etiqueta : lista.parentWidget()->findChildren<QLabel *>(Qt::FindDirectChildrenOnly)) {
            if (etiqueta->buddy() != &lista) continue;
            ++suyas;
            textos << etiqueta->text();
            EXPECT_TRUE(etiqueta->isHidden()) << nombre;
        }
        EXPECT_EQ(suyas, 1) << nombre;
    }
    textos.removeDuplicates();
    EXPECT_EQ(textos.size(), 6);
}

TEST_F(ucOpcTeclasRapTest, TheLabelsAreTheGivenOnesAndLeadToTheirControls) {
    const auto comprueba = [&](const QString &texto, const char *control) {
        bool hay = false;
        for (const QLabel *etiqueta : pagina.findChildren<QLabel *>())
            hay = hay ||
                  (QString(etiqueta->text()).remove('&') == texto && etiqueta->buddy() &&
                   (etiqueta->buddy()->objectName() == control ||
                    (etiqueta->buddy()->focusProxy() && etiqueta->buddy()->focusProxy()->objectName() == control)));
        EXPECT_TRUE(hay) << texto.toStdString();
    };
    comprueba("Activar / Desactivar", "ModActivar");
    comprueba("Pausa / Reanudar", "ModPausa");
    comprueba("Detener lectura", "ModDetener");
    comprueba("Repetir última lectura", "ModRepetir");
    comprueba("Avanzar palabras", "ModAvanzar");
    comprueba("Retroceder palabras", "ModRetroceder");
    comprueba("Nº de palabras", "SaltoAvanzar");
    comprueba("Nº de palabras", "SaltoRetroceder");
    EXPECT_EQ(SinMarca(pagina.findChild<QCheckBox *>("CheckAvisos")->text()), "Avisar al pulsar teclas sin efecto");
    const auto *marco = pagina.findChild<QGroupBox *>("FrameAvRe");
    for (const char *suyo : {"ModAvanzar", "TeclaAvanzar", "SaltoAvanzar", "ValorAvanzar", "ModRetroceder",
                             "TeclaRetroceder", "SaltoRetroceder", "ValorRetroceder"})
        EXPECT_NE(marco->findChild<QWidget *>(QLatin1String(suyo)), nullptr) << suyo;
}

TEST_F(ucOpcTeclasRapTest, ACombinationOfAnotherCommandIsRefusedAndBothListsGoBackToTheirSavedPositions) {
    Elige("TeclaPausa", kF1);  // what is shown a moment before, and never saved
    Elige("ModPausa", 2);
    ASSERT_TRUE(mensajes.cajas.empty());
    Elige("ModPausa", 0);
    Elige("TeclaPausa", 2);
    ASSERT_EQ(mensajes.cajas.size(), 1u);
    EXPECT_EQ(mensajes.cajas[0].texto, "La combinación \"Control + 2\" ya está asignada.");
    EXPECT_FALSE(mensajes.cajas[0].pregunta);
    EXPECT_EQ(Lista("ModPausa").currentIndex(), 0);
    EXPECT_EQ(Lista("TeclaPausa").currentIndex(), 1);
    EXPECT_EQ(Lista("TeclaDetener").currentIndex(), 2);
}

TEST_F(ucOpcTeclasRapTest, TheModifiersListMakesTheSameCheck) {
    Elige("TeclaDetener", 1);  // Control + 1 is that of "Pausa"
    ASSERT_EQ(mensajes.cajas.size(), 1u);
    EXPECT_EQ(Lista("TeclaDetener").currentIndex(), 2);
    Elige("ModDetener", 1);
    Elige("TeclaDetener", 1);  // Alt + 1 is that of "Activar"
    ASSERT_EQ(mensajes.cajas.size(), 2u);
    EXPECT_EQ(mensajes.cajas[1].texto, "La combinación \"Alt + 1\" ya está asignada.");
    EXPECT_EQ(Lista("ModDetener").currentIndex(), 0);
    Lista("TeclaPausa").setCurrentIndex(kF1);
    Lista("ModPausa").setCurrentIndex(1);
    Elige("ModActivar", 1);
    EXPECT_EQ(mensajes.cajas.size(), 2u);
    Lista("TeclaActivar").setCurrentIndex(kF1);
    Elige("ModActivar", 1);
    EXPECT_EQ(mensajes.cajas.size(), 3u);
    EXPECT_EQ(Lista("TeclaActivar").currentIndex(), 1);
}

TEST_F(ucOpcTeclasRapTest, TheListsStillShowTheRefusedCombinationWhileTheMessageStands) {
    int visto = -1;
    mensajes.alMostrar = [&] { visto = Lista("TeclaPausa").currentIndex(); };
    Elige("TeclaPausa", 2);
    EXPECT_EQ(visto, 2);
}

TEST_F(ucOpcTeclasRapTest, TheSameCombinationOnTheSameCommandIsNoConflict) {
    Elige("TeclaPausa", 1);
    Elige("ModPausa", 0);
    EXPECT_TRUE(mensajes.cajas.empty());
    EXPECT_FALSE(pagina.TeclaAsignada("Pausa", 0, 1));
    EXPECT_TRUE(pagina.TeclaAsignada("Detener", 0, 1));
}

TEST_F(ucOpcTeclasRapTest, AListWithoutASelectionConflictsWithNothing) {
    EXPECT_FALSE(pagina.TeclaAsignada("Detener", -1, 1));
    EXPECT_FALSE(pagina.TeclaAsignada("Detener", 0, -1));
}

TEST_F(ucOpcTeclasRapTest, OnlyWhatIsOnScreenCounts) {
    Elige("TeclaPausa", kF1);
    Elige("TeclaDetener", 1);  // saved for "Pausa", but not shown any more
    EXPECT_TRUE(mensajes.cajas.empty());
    EXPECT_EQ(Lista("TeclaDetener").currentIndex(), 1);
}

TEST_F(ucOpcTeclasRapTest, AStoredKeyThatIsNotInTheTableShowsAsTheKey0) {
    r.Salva("Teclas", "AsciiPausa", "44");
    cOpcTeclasRap leidas(r.Registro(), r.Log());
    ucOpcTeclasRap otra(leidas, tecla, general);
    otra.EstableceValores();
    EXPECT_EQ(otra.findChild<QComboBox *>("TeclaPausa")->currentText(), "0");
}

TEST_F(ucOpcTeclasRapTest, TheWordCountsRunFrom1To100InStepsOf1And5) {
    for (const char *nombre : {"SaltoAvanzar", "SaltoRetroceder"}) {
        EXPECT_EQ(Barra(nombre).minimum(), 1);
        EXPECT_EQ(Barra(nombre).maximum(), 100);
        EXPECT_EQ(Barra(nombre).singleStep(), 1);
        EXPECT_EQ(Barra(nombre).pageStep(), 5);
        EXPECT_EQ(Barra(nombre).value(), 10);
    }
    Barra("SaltoAvanzar").setValue(33);
    EXPECT_EQ(Caja("ValorAvanzar").text(), "33");
    EXPECT_EQ(Caja("ValorRetroceder").text(), "10");
}

TEST_F(ucOpcTeclasRapTest, AWordCountBeyondTheRangeTakesTheNearerLimitWhenTheBoxIsLeft) {
    pagina.show();
    QApplication::setActiveWindow(&pagina);
    for (const auto &[caja, barra] :
         {std::pair("ValorAvanzar", "SaltoAvanzar"), {"ValorRetroceder", "SaltoRetroceder"}}) {
        for (const auto &[tecleado, vale] : {std::pair("0", 1), {"500", 100}, {"a-4b2", 42}}) {
            Caja(caja).setFocus();
            Caja(caja).selectAll();
            Teclea(Caja(caja), tecleado);
            pagina.findChild<QCheckBox *>("CheckAvisos")->setFocus();
            EXPECT_EQ(Barra(barra).value(), vale) << tecleado;
            EXPECT_EQ(Caja(caja).text(), QString::number(vale));
        }
    }
}

TEST_F(ucOpcTeclasRapTest, AcceptingStoresTheFifteenSettingsAndCancellingDropsTheEdits) {
    const auto edita = [&] {
        Elige("ModRepetir", 2);
        Elige("TeclaRepetir", 39);  // "Supr"
        Barra("SaltoAvanzar").setValue(7);
        Barra("SaltoRetroceder").setValue(8);
        pagina.findChild<QCheckBox *>("CheckAvisos")->setChecked(false);
    };
    edita();
    pagina.EstableceValores();
    CompruebaDiseno(pagina, opciones);
    edita();
    EXPECT_EQ(opciones.GetNombre("Repetir"), "Ctrl + 3");
    pagina.GuardaValores();
    EXPECT_EQ(opciones.GetNombre("Repetir"), "Shift + Supr");
    EXPECT_EQ(opciones.NroPalAvance(), 7);
    EXPECT_FALSE(opciones.UtilizaAvisos());
    EXPECT_EQ(r.Lee("Teclas", "ModRepetir"), "2");
    EXPECT_EQ(r.Lee("Teclas", "AsciiRepetir"), "12");
    EXPECT_EQ(r.Lee("Teclas", "NroPalAvance"), "7");
    EXPECT_EQ(r.Lee("Teclas", "NroPalRetroceso"), "8");
    EXPECT_EQ(r.Lee("Teclas", "UtilizaAvisos"), "0");
    int escritas = 0;
    for (const FilaOpcion &fila : opciones.Filas())
        escritas += r.Registro().Busca("CU", Producto::Ruta(), "Teclas", fila.clave).has_value();
    EXPECT_EQ(escritas, 15);
}

TEST_F(ucOpcTeclasRapTest, AcceptingOneChangedKeyReplacesThatKeysRowAlone) {
    Elige("TeclaDetener", kF1);
    EXPECT_TRUE(sistema.liberadas.empty());
    pagina.GuardaValores();
    EXPECT_EQ(sistema.liberadas.size(), 1u);
    ASSERT_EQ(tecla.Teclas().size(), 8u);
    EXPECT_EQ(tecla.Teclas()[2].NombreTecla, "BORRADO");
    EXPECT_EQ(tecla.Teclas()[6].NombreTecla, "Detener");
    EXPECT_TRUE(tecla.Registrada(0, 112, "Detener"));
    pagina.GuardaValores();
    EXPECT_EQ(tecla.Teclas().size(), 8u);
}

TEST_F(ucOpcTeclasRapTest, TwoKeysMayBeExchanged) {
    Elige("TeclaPausa", kF1);
    Elige("TeclaDetener", 1);
    Elige("TeclaPausa", 2);
    ASSERT_TRUE(mensajes.cajas.empty());
    pagina.GuardaValores();
    EXPECT_EQ(sistema.registradas.size(), 6u);
    QStringList pulsadas;
    tecla.SetHotKeyPulsada([&](const QString &nombre) { pulsadas << nombre; });
    EXPECT_TRUE(sistema.Pulsa(kControl, 49));
    EXPECT_TRUE(sistema.Pulsa(kControl, 50));
    cola.DejaCorrer();
    EXPECT_EQ(pulsadas, QStringList({"Detener", "Pausa"}));
    EXPECT_TRUE(r.LineasLog().isEmpty());
}

TEST_F(ucOpcTeclasRapTest, AKeyThatAnotherProgramHoldsIsKeptInSilenceAndLogged) {
    sistema.ajenas.insert({kShift, 112});
    Elige("ModDetener", 2);
    Elige("TeclaDetener", kF1);
    pagina.GuardaValores();
    EXPECT_TRUE(mensajes.cajas.empty());
    EXPECT_TRUE(tecla.Registrada(2, 112, "Detener"));
    ASSERT_EQ(r.LineasLog().size(), 1);
    EXPECT_TRUE(r.LineasLog()[0].contains("cTecla.AddTecla: "));
    EXPECT_TRUE(r.LineasLog()[0].contains("Detener"));
    EXPECT_TRUE(sistema.registradas.contains(cTecla::PrimerIdentificador));  // the others are as they were
    EXPECT_EQ(sistema.registradas[cTecla::PrimerIdentificador], std::pair(kAlt, 49));
}

TEST_F(ucOpcTeclasRapTest, TheColumnsGoThroughTheBoxAndNothingIsCutWithAnyFont) {
    pagina.show();
    for (const int puntos : {8, 12, 24}) {
        QFont letra = pagina.font();
        letra.setPointSize(puntos);
        pagina.setFont(letra);
        QCoreApplication::sendPostedEvents();
        pagina.resize(pagina.sizeHint());
        pagina.layout()->activate();
        const auto columna = [&](const char *nombre) { return Lista(nombre).mapTo(&pagina, QPoint()).x(); };
        EXPECT_EQ(columna("ModPausa"), columna("ModAvanzar")) << puntos;
        EXPECT_EQ(columna("TeclaPausa"), columna("TeclaRetroceder")) << puntos;
        EXPECT_EQ(Lista("TeclaPausa").width(), Lista("TeclaAvanzar").width()) << puntos;
        for (const QWidget *uno : pagina.findChildren<QWidget *>()) {
            if (uno->parentWidget() != &pagina && uno->parentWidget()->objectName() != "FrameAvRe") continue;
            if (uno->isHidden()) continue;  // out of sight, for screen readers
            EXPECT_GE(uno->width(), uno->minimumSizeHint().width()) << puntos << uno->accessibleName().toStdString();
            EXPECT_GE(uno->height(), uno->minimumSizeHint().height()) << puntos << uno->accessibleName().toStdString();
            EXPECT_TRUE(uno->parentWidget()->rect().contains(uno->geometry())) << puntos;
        }
    }
}

TEST_F(ucOpcTeclasRapTest, EveryControlHasANameOfItsOwn) {
    QStringList nombres;
    for (const QWidget *uno : pagina.findChildren<QWidget *>())
        if (!uno->accessibleName().isEmpty()) nombres << uno->accessibleName();
    EXPECT_TRUE(nombres.contains("Modificador de Pausa / Reanudar"));
    EXPECT_TRUE(nombres.contains("Tecla de Pausa / Reanudar"));
    EXPECT_TRUE(nombres.contains("Nº de palabras al avanzar, valor"));
    EXPECT_EQ(nombres.size(), 18);  // twelve lists, two bars, two boxes, the check box, the group
    EXPECT_EQ(nombres.removeDuplicates(), 0);
}

TEST_F(ucOpcTeclasRapTest, InTheWindowItIsWholeInEveryLook) {
    CompruebaAspectos([&] { return EnVentana(r, Pagina::TeclasRap, new ucOpcTeclasRap(opciones, tecla, general)); },
                      QStringLiteral("FrameTeclasRap"));
}

}  // namespace
}  // namespace ondalis::prueba
