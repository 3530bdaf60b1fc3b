#include "desktop/Principal.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTabBar>

#include "desktop/ListaOpciones.h"
#include "fakes/PaginaFalsa.h"

namespace ondalis {
namespace {

using Marca = cListaOpciones::Marca;
using Texto = cListaOpciones::Texto;

class PrincipalTest : public testing::Test {
protected:
    PrincipalTest() {
        for (const auto &[cual, nombre] : {std::pair(Pagina::Voces, "FrameVoces"),
                                           {Pagina::General, "FrameGeneral"},
                                           {Pagina::TeclasRap, "FrameTeclasRap"}})
            ventana->PonPagina(cual, paginas.emplace_back(new prueba::PaginaFalsa(tabla, nombre)));
    }

    void Abre() {
        ventana->Muestra();
        QApplication::setActiveWindow(ventana.get());
        QCoreApplication::processEvents();
    }
    template <class Condicion>
    static bool Espera(Condicion condicion) {
        const QDeadlineTimer plazo(10000);
        while (!condicion() && !plazo.hasExpired()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        return condicion();
    }
    // As the window system delivers it: shortcuts first.
    void Pulsa(int tecla, Qt::KeyboardModifiers modificadores = {}, const QString &texto = {}) {
        QWidget *foco = ventana->focusWidget() ? ventana->focusWidget() : ventana.get();
        QKeyEvent atajo(QEvent::ShortcutOverride, tecla, modificadores, texto);
        QApplication::sendEvent(foco, &atajo);
        QKeyEvent baja(QEvent::KeyPress, tecla, modificadores, texto);
        QApplication::sendEvent(foco, &baja);
    }
    QPushButton *Boton(const char *nombre) { return ventana->findChild<QPushButton *>(QLatin1String(nombre)); }
    QString Rotulo(int fila) { return ventana->Lista().item(fila)->text(); }
    std::string PaginaALaVista() { return ventana->PaginaVisible()->objectName().toStdString(); }
    void Raton(const QPoint &punto) {
        QMouseEvent mueve(QEvent::MouseMove, punto, ventana->Lista().viewport()->mapToGlobal(punto), Qt::NoButton,
                          Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(ventana->Lista().viewport(), &mueve);
    }
    QPoint Centro(int fila) { return ventana->Lista().visualItemRect(ventana->Lista().item(fila)).center(); }
    Marca MarcaDe(Pagina pagina) { return ventana->Lista().Estado().MarcaOpc(cListaOpciones::Indice(pagina)); }

    prueba::RegistroPropio r;
    prueba::TablaFalsa tabla{r.Registro(), r.Log()};
    int aceptadas = 0, canceladas = 0, webs = 0;
    QStringList temas;
    std::vector<prueba::PaginaFalsa *> paginas;  // the window's own
    std::unique_ptr<Principal> ventana =
        std::make_unique<Principal>(r.Registro(), r.Log(),
                                    Principal::Acciones{.aceptar = [this] { ++aceptadas; },
                                                        .cancelar =
                                                            [this] {
                                                                ++canceladas;
                                                                ventana->Oculta();
                                                            },
                                                        .ayuda =
                                                            [this](std::uintptr_t id, const QString &tema) {
                                                                EXPECT_EQ(id, ventana->winId());
                                                                temas << tema;
                                                            },
                                                        .pagWeb = [this] { ++webs; },
                                                        .alFrente = {}});
};

TEST_F(PrincipalTest, ThePagesThatAreThereStandInTheirOrderAndGeneralIsSelectedAtFirst) {
    EXPECT_EQ(ventana->windowTitle(), "Configuración Ondalis");
    ASSERT_EQ(ventana->Lista().count(), 3);
    EXPECT_EQ(Rotulo(0), "General");
    EXPECT_EQ(Rotulo(1), "Voces");
    EXPECT_EQ(Rotulo(2), "Teclas rápidas");
    EXPECT_EQ(PaginaALaVista(), "FrameGeneral");
    EXPECT_EQ(MarcaDe(Pagina::General), Marca::Elegida);
    EXPECT_EQ(MarcaDe(Pagina::Voces), Marca::Reposo);
}

TEST_F(PrincipalTest, ItIsAboveTheOthersFromItsFirstShow) {
    EXPECT_TRUE(ventana->windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_FALSE(ventana->isModal());
    EXPECT_FALSE(ventana->Visible());
}

TEST_F(PrincipalTest, ArrowsInTheListChangeThePage) {
    Abre();
    ASSERT_EQ(ventana->focusWidget(), &ventana->Lista());
    Pulsa(Qt::Key_Down);
    EXPECT_EQ(PaginaALaVista(), "FrameVoces");
    EXPECT_EQ(MarcaDe(Pagina::Voces), Marca::Elegida);
    EXPECT_EQ(MarcaDe(Pagina::General), Marca::Reposo);
    Pulsa(Qt::Key_End);
    EXPECT_EQ(PaginaALaVista(), "FrameTeclasRap");
    Pulsa(Qt::Key_Home);
    EXPECT_EQ(PaginaALaVista(), "FrameGeneral");
}

TEST_F(PrincipalTest, TabGoesThroughTheListThePageAndTheButtonsAndComesRound) {
    Abre();
    QStringList vistos;
    do {
        vistos << ventana->focusWidget()->objectName();
        Pulsa(Qt::Key_Tab, {}, "\t");
    } while (ventana->focusWidget() != &ventana->Lista() && vistos.size() < 40);
    EXPECT_EQ(vistos.first(), "OpcMain");
    EXPECT_EQ(vistos.mid(vistos.size() - 4), (QStringList{"Aceptar", "Cancelar", "Ayuda", "NomEmpresa"}));
    for (const char *suyo : {"CheckGrabar", "CombokHz", "SaltoAvanzar", "ValorAvanzar", "ValorMiniTexto"})
        EXPECT_EQ(vistos.count(QLatin1String(suyo)), 1) << suyo;
}

TEST_F(PrincipalTest, EveryControlThatTakesTheFocusHasAName) {
    for (const QWidget *uno : ventana->findChildren<QWidget *>()) {
        if (uno->focusPolicy() == Qt::NoFocus || uno->objectName().startsWith("qt_")) continue;
        EXPECT_FALSE(uno->accessibleName().isEmpty()) << uno->objectName().toStdString();
    }
}

TEST_F(PrincipalTest, EnterAcceptsEscapeCancels) {
    Abre();
    Pulsa(Qt::Key_Return);
    EXPECT_EQ(aceptadas, 1);
    EXPECT_TRUE(ventana->Visible());
    paginas[1]->salto->setFocus();
    Pulsa(Qt::Key_Escape, {}, "\x1b");
    EXPECT_EQ(canceladas, 1);
    EXPECT_FALSE(ventana->Visible());
    Abre();
    paginas[1]->mini->setFocus();
    Pulsa(Qt::Key_Escape, {}, "\x1b");
    EXPECT_EQ(canceladas, 2);
}

TEST_F(PrincipalTest, EnterInANumberBoxMovesOnAndAcceptsNothing) {
    Abre();
    paginas[1]->mini->setFocus();
    Pulsa(Qt::Key_Return, {}, "\r");
    EXPECT_EQ(aceptadas, 0);
    EXPECT_NE(ventana->focusWidget(), paginas[1]->mini);
}

TEST_F(PrincipalTest, TheButtonsDoWhatTheyWereGiven) {
    Boton("Aceptar")->click();
    Boton("Cancelar")->click();
    Boton("NomEmpresa")->click();
    EXPECT_EQ(aceptadas, 1);
    EXPECT_EQ(canceladas, 1);
    EXPECT_EQ(webs, 1);
    EXPECT_EQ(Boton("NomEmpresa")->toolTip(), "Visitar web");
    EXPECT_TRUE(Boton("Aceptar")->isDefault());
}

TEST_F(PrincipalTest, HelpIsThatOfTheSelectedPage) {
    Boton("Ayuda")->click();
    ventana->Lista().Elige(Pagina::TeclasRap);
    Boton("Ayuda")->click();
    EXPECT_EQ(temas, (QStringList{"OpcGeneral.htm", "OpcTeclasRapidas.htm"}));
}

TEST_F(PrincipalTest, ClosingItByHandDismissesTheConfigurationOnly) {
    Abre();
    ventana->close();
    EXPECT_EQ(canceladas, 1);
    EXPECT_FALSE(ventana->Visible());
    Abre();
    EXPECT_TRUE(ventana->Visible());
}

TEST_F(PrincipalTest, TheMarkerUnderTheMouseIsTheOnlyOneOfItsColour) {
    Abre();
    Raton(Centro(1));
    EXPECT_EQ(MarcaDe(Pagina::Voces), Marca::BajoRaton);
    Raton(Centro(2));
    EXPECT_EQ(MarcaDe(Pagina::Voces), Marca::Reposo);
    EXPECT_EQ(MarcaDe(Pagina::TeclasRap), Marca::BajoRaton);
    Raton(Centro(0));  // the selected one never changes
    EXPECT_EQ(MarcaDe(Pagina::General), Marca::Elegida);
    EXPECT_EQ(MarcaDe(Pagina::TeclasRap), Marca::Reposo);
    Raton(Centro(2));
    QEvent sale(QEvent::Leave);
    QApplication::sendEvent(ventana->Lista().viewport(), &sale);
    EXPECT_EQ(MarcaDe(Pagina::TeclasRap), Marca::Reposo);
}

TEST_F(PrincipalTest, TheColoursFollowThePaletteWhereTheGivenOnesCouldNotBeRead) {
    ListaOpciones &lista = ventana->Lista();
    EXPECT_EQ(lista.Color(Marca::Elegida).name(), "#000080");
    EXPECT_EQ(lista.Color(Texto::Normal).name(), "#004040");
    QPalette oscura = lista.palette();
    oscura.setColor(QPalette::Base, Qt::black);
    oscura.setColor(QPalette::Text, Qt::white);
    oscura.setColor(QPalette::Highlight, Qt::yellow);
    lista.setPalette(oscura);
    EXPECT_EQ(lista.Color(Marca::Elegida).name(), "#ffff00");
    EXPECT_EQ(lista.Color(Marca::Reposo).name(), "#000000");
    EXPECT_EQ(lista.Color(Texto::Normal).name(), "#ffffff");
}

TEST_F(PrincipalTest, ThePlaceIsWrittenWhenItMovesJoinedAndInTwips) {
    Abre();
    ventana->move(40, 50);
    ventana->move(60, 70);
    EXPECT_EQ(r.Lee("Ventana", "LeftPrincipal", "no"), "no");
    EXPECT_TRUE(Espera([&] { return r.Lee("Ventana", "LeftPrincipal") == QString::number(60 * 15); }));
    EXPECT_EQ(r.Lee("Ventana", "TopPrincipal"), QString::number(70 * 15));
}

TEST_F(PrincipalTest, AMoveJustBeforeItIsHiddenIsNotLost) {
    Abre();
    ventana->move(33, 44);
    ventana->Oculta();
    EXPECT_EQ(r.Lee("Ventana", "LeftPrincipal"), QString::number(33 * 15));
}

TEST_F(PrincipalTest, ItOpensWhereItWasKept) {
    r.Salva("Ventana", "LeftPrincipal", QString::number(120 * 15));
    r.Salva("Ventana", "TopPrincipal", QString::number(80 * 15));
    Abre();
    EXPECT_EQ(ventana->pos(), QPoint(120, 80));
    ventana->move(10, 20);
    ventana->Oculta();
    Abre();
    EXPECT_EQ(ventana->pos(), QPoint(10, 20));
}

TEST_F(PrincipalTest, NothingOfAPageIsCutWithBigLettersOrOnASmallScreen) {
    for (const int puntos : {9, 12, 18, 24}) {
        QFont letra = ventana->font();
        letra.setPointSize(puntos);
        ventana->setFont(letra);
        Abre();
        const QScrollArea *area = qobject_cast<QScrollArea *>(ventana->PaginaVisible()->parentWidget()->parentWidget());
        ASSERT_TRUE(area);
        const QWidget *pagina = area->widget();
        EXPECT_GE(pagina->height(), pagina->minimumSizeHint().height()) << puntos;
        EXPECT_GE(pagina->width(), pagina->minimumSizeHint().width()) << puntos;
        EXPECT_LE(ventana->height(), ventana->screen()->availableSize().height()) << puntos;
        for (const QWidget *uno : pagina->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
            EXPECT_TRUE(pagina->rect().contains(uno->geometry())) << uno->objectName().toStdString() << puntos;
        EXPECT_GE(ventana->Lista().width(), 106);
        EXPECT_GE(area->height(), 207);
        ventana->Oculta();
    }
}

TEST_F(PrincipalTest, ADialogOfAPageClosesWithIt) {
    Abre();
    QDialog suyo(ventana.get());
    suyo.setModal(true);
    suyo.show();
    EXPECT_TRUE(ventana->HayModal());
    ventana->Oculta();
    EXPECT_FALSE(suyo.isVisible());
    EXPECT_FALSE(ventana->HayModal());
}

TEST_F(PrincipalTest, WaitingForTheFieldsPutsTheFocusOnAccept) {
    Abre();
    paginas[1]->mini->setFocus();
    paginas[1]->mini->selectAll();
    Pulsa(Qt::Key_4, {}, "4");
    EXPECT_EQ(paginas[1]->mini->value(), 15);
    ventana->EnfocaAceptar();
    EXPECT_EQ(ventana->focusWidget(), Boton("Aceptar"));
    EXPECT_EQ(paginas[1]->mini->value(), 4);
}

TEST(ListaOpcionesEstado, ClickingTheSelectedLabelLeavesTheSameLook) {
    cListaOpciones lista;
    const int general = cListaOpciones::Indice(Pagina::General);
    lista.OpcMain_Click(general);
    EXPECT_EQ(lista.MarcaOpc(general), Marca::Elegida);
    EXPECT_EQ(lista.OpcMain(general), Texto::Elegido);
    EXPECT_EQ(lista.TemaAyuda(), "OpcGeneral.htm");
}

TEST(ListaOpcionesEstado, TheColoursAreTheGivenNumbers) {
    EXPECT_EQ(static_cast<int>(Marca::Elegida), 0x800000);
    EXPECT_EQ(static_cast<int>(Marca::BajoRaton), 0x400000);
    EXPECT_EQ(static_cast<int>(Marca::Reposo), 0xFFFFFF);
    EXPECT_EQ(static_cast<int>(Texto::Elegido), 0x400000);
    EXPECT_EQ(static_cast<int>(Texto::Normal), 0x404000);
}

TEST(ListaOpcionesEstado, EachLabelHasItsPlaceTagAndTopic) {
    QStringList temas;
    for (int i = 0; i < kNumPaginas; ++i) {
        cListaOpciones lista;
        lista.OpcMain_Click(i);
        temas << lista.TemaAyuda();
        EXPECT_EQ(cListaOpciones::Indice(cListaOpciones::Fila(i).pagina), i);
    }
    EXPECT_EQ(temas, (QStringList{"OpcTeclasRapidas.htm", "OpcGeneral.htm", "OpcTipoLectura.htm", "OpcVoces.htm",
                                  "OpcGrabar.htm", "OpcDiccionario.htm"}));
}

}  // namespace
}  // namespace ondalis
