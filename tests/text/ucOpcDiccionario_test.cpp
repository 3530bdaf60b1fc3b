#include "text/ucOpcDiccionario.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include "fakes/Aspectos.h"
#include "fakes/EnVentana.h"
#include "fakes/MensajesGuion.h"
#include "fakes/PrioridadFalsa.h"
#include "fakes/RegistroPropio.h"
#include "libs/ondalis_dicc.h"
#include "settings/pagina/Rotulos.h"

namespace ondalis::prueba {
namespace {

class PaginaDiccionarioTest : public testing::Test {
protected:
    PaginaDiccionarioTest() {
        LiberaMemDicc();
        for (const auto &[clave, conversion] : {std::pair("gato", "miau"), {"perro", "guau"}, {"año", "doce meses"}})
            AddConversionDicc(clave, conversion);
        (new QVBoxLayout(&ventana))->addWidget(pagina);
        auto *aceptar = new QPushButton(&ventana);
        aceptar->setDefault(true);
        QObject::connect(aceptar, &QPushButton::clicked, [this] { ++aceptadas; });
        pagina->EstableceValores();
        ventana.show();
        QApplication::setActiveWindow(&ventana);
    }
    ~PaginaDiccionarioTest() override { LiberaMemDicc(); }

    template <class W>
    W &De(const char *nombre) {
        return *pagina->findChild<W *>(QLatin1String(nombre));
    }
    void Pulsa(int tecla, const QString &texto = {}) {
        QKeyEvent baja(QEvent::KeyPress, tecla, Qt::NoModifier, texto);
        QApplication::sendEvent(ventana.focusWidget(), &baja);
    }
    void Teclea(QLineEdit &caja, const QString &texto) {
        caja.setFocus(Qt::TabFocusReason);
        caja.selectAll();
        Pulsa(Qt::Key_Backspace);
        for (const QChar c : texto) Pulsa(0, QString(c));
    }
    void Elige(const QString &texto) {
        lista.setCurrentIndex(lista.model()->index(pagina->Lista().Busca("." + texto), 0));
    }
    QStringList Filas() {
        QStringList filas;
        for (int i = 0; i < lista.model()->rowCount(); ++i)
            filas << lista.model()->index(i, 0).data().toString() + '=' + lista.model()->index(i, 1).data().toString();
        return filas;
    }
    // Enabled: a(ctualizar), s(uprimir), p(robar).
    std::string Botones() {
        return std::string(actualizar.isEnabled() ? "a" : "-") + (suprimir.isEnabled() ? "s" : "-") +
               (probar.isEnabled() ? "p" : "-");
    }

    RegistroPropio r;
    MensajesGuion mensajes;
    PrioridadFalsa prioridad;
    cGeneral general{r.Log(), mensajes, prioridad};
    cOpcDiccionario diccionario{general, r.Ruta("")};
    QStringList probados;
    Fallo rechazo;
    int aceptadas = 0;
    QDialog ventana;
    ucOpcDiccionario *pagina = new ucOpcDiccionario(diccionario, general, [this](const QString &texto) {
        if (rechazo) throw ErrorFallo{rechazo};
        probados << texto;
    });
    QTreeView &lista = De<QTreeView>("ListaDiccionario");
    QLineEdit &clave = De<QLineEdit>("TxtClave");
    QLineEdit &conversion = De<QLineEdit>("TxtConversion");
    QPushButton &actualizar = De<QPushButton>("Actualizar");
    QPushButton &suprimir = De<QPushButton>("Suprimir");
    QPushButton &probar = De<QPushButton>("Probar");
};

TEST_F(PaginaDiccionarioTest, OpensWithTheTableSortedTheBoxesEmptyAndTheButtonsDisabled) {
    EXPECT_EQ(lista.model()->headerData(0, Qt::Horizontal).toString(), "Texto");
    EXPECT_EQ(lista.model()->headerData(1, Qt::Horizontal).toString(), "Conversión");
    EXPECT_EQ(Filas(), (QStringList{"año=doce meses", "gato=miau", "perro=guau"}));
    EXPECT_EQ(clave.text() + conversion.text(), "");
    EXPECT_EQ(Botones(), "---");
    EXPECT_EQ(SinMarca(actualizar.text()), "Actualizar Lista");
    EXPECT_EQ(SinMarca(suprimir.text()), "Suprimir");
    EXPECT_EQ(SinMarca(probar.text()), "Probar");
}

TEST_F(PaginaDiccionarioTest, SelectingARowCopiesItsTextsAndEnablesRemovingAndTrying) {
    Elige("gato");
    EXPECT_EQ(clave.text(), "gato");
    EXPECT_EQ(conversion.text(), "miau");
    EXPECT_EQ(Botones(), "-sp");
}

TEST_F(PaginaDiccionarioTest, ClickingTheSelectedRowAgainBringsItsTextsBack) {
    Elige("gato");
    Teclea(conversion, "otra");
    EXPECT_EQ(Botones(), "asp");
    emit lista.clicked(lista.currentIndex());
    EXPECT_EQ(conversion.text(), "miau");
    EXPECT_EQ(Botones(), "-sp");
}

TEST_F(PaginaDiccionarioTest, ByKeyboardTheFirstArrowSelectsTheRowThatHasTheKeyboard) {
    clave.setFocus();
    lista.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(clave.text(), "");
    Pulsa(Qt::Key_Down);
    EXPECT_EQ(clave.text(), "año");
    Pulsa(Qt::Key_Down);
    EXPECT_EQ(clave.text(), "gato");
    Pulsa(Qt::Key_End);
    EXPECT_EQ(clave.text(), "perro");
}

TEST_F(PaginaDiccionarioTest, ChangingTheTextEnablesUpdatingOnly) {
    Teclea(clave, "x");
    EXPECT_EQ(Botones(), "a--");
}

TEST_F(PaginaDiccionarioTest, TryingIsEnabledExactlyWhileThereIsAConversion) {
    Teclea(conversion, "x");
    EXPECT_EQ(Botones(), "a-p");
    Teclea(conversion, "");
    EXPECT_EQ(Botones(), "a--");
    probar.click();
    EXPECT_TRUE(probados.isEmpty());
    Elige("gato");
    EXPECT_TRUE(probar.isEnabled());
}

TEST_F(PaginaDiccionarioTest, WithoutATextOrAConversionUpdatingSaysWhatIsMissing) {
    for (const auto &[texto, suya] : {std::pair("", "x"), {"x", ""}}) {
        Teclea(clave, texto);
        Teclea(conversion, suya);
        actualizar.setEnabled(true);
        actualizar.click();
        ASSERT_FALSE(mensajes.cajas.empty());
        EXPECT_EQ(mensajes.cajas.back().texto, "Debe teclear un texto y su conversión correspondiente");
        EXPECT_TRUE(actualizar.isEnabled());
    }
    EXPECT_EQ(mensajes.cajas.size(), 2u);
    EXPECT_EQ(Filas().size(), 3);
}

TEST_F(PaginaDiccionarioTest, ANewTextGoesToItsPlaceAndAnOldOneGetsTheNewConversionInOneRow) {
    Teclea(clave, "Elefante");
    Teclea(conversion, "barrita");
    actualizar.click();
    EXPECT_EQ(Filas(), (QStringList{"año=doce meses", "Elefante=barrita", "gato=miau", "perro=guau"}));
    EXPECT_FALSE(actualizar.isEnabled());
    Teclea(conversion, "trompetea");
    actualizar.click();
    EXPECT_EQ(Filas(), (QStringList{"año=doce meses", "Elefante=trompetea", "gato=miau", "perro=guau"}));
}

TEST_F(PaginaDiccionarioTest, TextsThatDifferOnlyByAnAccentAreTwoRows) {
    Teclea(clave, "ano");
    Teclea(conversion, "otra cosa");
    actualizar.click();
    EXPECT_EQ(Filas().size(), 4);
    EXPECT_TRUE(Filas().contains("año=doce meses"));
}

TEST_F(PaginaDiccionarioTest, ANewTextTypedOverASelectedRowAddsARowAndLeavesTheSelectedOne) {
    Elige("gato");
    Teclea(clave, "gata");
    actualizar.click();
    EXPECT_EQ(Filas(), (QStringList{"año=doce meses", "gata=miau", "gato=miau", "perro=guau"}));
    ASSERT_EQ(lista.selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(lista.selectionModel()->selectedRows().front().data(), "gato");
}

TEST_F(PaginaDiccionarioTest, TheRowThatWasAddedIsInSight) {
    for (int i = 0; i < 500; ++i) AddConversionDicc(("m" + std::to_string(i)).c_str(), "x");
    pagina->EstableceValores();
    EXPECT_EQ(lista.model()->rowCount(), 503);
    for (const char *texto : {"zzz", "aaa", "m2500"}) {
        Teclea(clave, texto);
        Teclea(conversion, "y");
        actualizar.click();
        const QRect sitio = lista.visualRect(lista.model()->index(pagina->Lista().Busca("." + QString(texto)), 0));
        EXPECT_TRUE(lista.viewport()->rect().contains(sitio)) << texto;
    }
}

TEST_F(PaginaDiccionarioTest, RemovingTakesTheRowOfTheTextAndEmptiesTheBoxes) {
    Elige("gato");
    suprimir.click();
    EXPECT_EQ(Filas(), (QStringList{"año=doce meses", "perro=guau"}));
    EXPECT_EQ(clave.text() + conversion.text(), "");
    EXPECT_EQ(Botones(), "---");
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(PaginaDiccionarioTest, RemovingATextThatMatchesNoRowStillEmptiesTheBoxesAndDisables) {
    Elige("gato");
    Teclea(clave, "nadie");
    suprimir.click();
    EXPECT_EQ(Filas().size(), 3);
    EXPECT_EQ(clave.text() + conversion.text(), "");
    EXPECT_EQ(Botones(), "---");
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(PaginaDiccionarioTest, TryingSpeaksTheConversionOfTheBox) {
    Elige("gato");
    Teclea(conversion, "miau miau");
    probar.click();
    EXPECT_EQ(probados, (QStringList{"miau miau"}));
    EXPECT_EQ(Filas()[1], "gato=miau");
}

TEST_F(PaginaDiccionarioTest, AnEngineThatRefusesIsLoggedAndShownWithTheProceduresName) {
    rechazo = Fallo::De(Fallo::LlamadaNoValida);
    Elige("gato");
    probar.click();
    ASSERT_EQ(mensajes.cajas.size(), 1u);
    EXPECT_EQ(mensajes.cajas[0].texto,
              "ucOpcDiccionario.Probar_Click: Argumento o llamada a procedimiento no válidos [5]");
    ASSERT_EQ(r.LineasLog().size(), 1);
    EXPECT_TRUE(r.LineasLog()[0].contains("ucOpcDiccionario.Probar_Click: "));
}

TEST_F(PaginaDiccionarioTest, ATextTooLongForAnEntryIsRefusedAndStaysInItsBox) {
    clave.setText(QString(1024, 'a'));
    conversion.setText("x");
    actualizar.click();
    ASSERT_EQ(mensajes.cajas.size(), 1u);
    EXPECT_EQ(mensajes.cajas[0].texto, "ucOpcDiccionario.Actualizar_Click: Desbordamiento [6]");
    EXPECT_EQ(clave.text().size(), 1024);
    EXPECT_TRUE(actualizar.isEnabled());
    EXPECT_EQ(Filas().size(), 3);
}

TEST_F(PaginaDiccionarioTest, EditsReachTheTableOnlyWhenTheyAreAcceptedAndOpeningAgainDropsThem) {
    const auto version = VersionDicc();
    Teclea(clave, "pato");
    Teclea(conversion, "cua");
    actualizar.click();
    Elige("gato");
    suprimir.click();
    EXPECT_EQ(VersionDicc(), version);
    pagina->EstableceValores();
    EXPECT_EQ(Filas(), (QStringList{"año=doce meses", "gato=miau", "perro=guau"}));
    EXPECT_FALSE(lista.selectionModel()->hasSelection());
    EXPECT_EQ(Botones(), "---");

    Teclea(clave, "pato");
    Teclea(conversion, "cua");
    actualizar.click();
    pagina->GuardaValores();
    EXPECT_NE(VersionDicc(), version);
    pagina->EstableceValores();
    EXPECT_EQ(Filas(), (QStringList{"año=doce meses", "gato=miau", "pato=cua", "perro=guau"}));
}

TEST_F(PaginaDiccionarioTest, EnteringABoxSelectsItsWholeText) {
    Elige("gato");
    for (QLineEdit *caja : {&clave, &conversion}) {
        lista.setFocus();
        caja->setFocus(Qt::TabFocusReason);
        EXPECT_EQ(caja->selectedText(), caja->text());
        lista.setFocus();
        caja->deselect();
        caja->setFocus(Qt::MouseFocusReason);
        for (const auto tipo : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent raton(tipo, QPointF(3, 3), caja->mapToGlobal(QPointF(3, 3)), Qt::LeftButton,
                              tipo == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(caja, &raton);
        }
        EXPECT_EQ(caja->selectedText(), caja->text());
    }
}

TEST_F(PaginaDiccionarioTest, EnterInABoxUpdatesWhatIsPendingAndElseAcceptsTheWindow) {
    Teclea(clave, "pato");
    Teclea(conversion, "cua");
    Pulsa(Qt::Key_Return, "\r");
    EXPECT_EQ(Filas().size(), 4);
    EXPECT_EQ(aceptadas, 0);
    Pulsa(Qt::Key_Return, "\r");
    EXPECT_EQ(aceptadas, 1);
}

TEST_F(PaginaDiccionarioTest, AButtonThatIsDisabledUnderTheHandGivesTheKeyboardToWhereTheWorkGoesOn) {
    Elige("gato");
    Teclea(conversion, "x");
    actualizar.setFocus();
    Pulsa(Qt::Key_Space, " ");
    QKeyEvent sube(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, " ");
    QApplication::sendEvent(&actualizar, &sube);
    EXPECT_EQ(ventana.focusWidget(), &clave);
    EXPECT_EQ(clave.selectedText(), "gato");
    suprimir.setFocus();
    suprimir.click();
    EXPECT_EQ(ventana.focusWidget(), &lista);
}

TEST_F(PaginaDiccionarioTest, ARowWithALineEndIsSelectedChangedAndRemovedLikeOthers) {
    AddConversionDicc("dos\nlíneas\ty más", "a\nb");
    pagina->EstableceValores();
    Elige("dos\nlíneas\ty más");
    EXPECT_EQ(clave.text(), "dos\nlíneas\ty más");
    Teclea(conversion, "c");
    actualizar.click();
    EXPECT_EQ(Filas().size(), 4);
    suprimir.setEnabled(true);
    suprimir.click();
    EXPECT_EQ(Filas().size(), 3);
}

TEST_F(PaginaDiccionarioTest, TheSecondColumnFollowsThePagesWidth) {
    ventana.resize(500, 400);
    QApplication::processEvents();
    const int texto = lista.columnWidth(0), suya = lista.columnWidth(1);
    ventana.resize(700, 400);
    QApplication::processEvents();
    EXPECT_EQ(lista.columnWidth(0), texto);
    EXPECT_EQ(lista.columnWidth(1), suya + 200);
}

TEST_F(PaginaDiccionarioTest, EveryControlHasItsNameAndItsPlaceInTheTabOrder) {
    Elige("gato");
    Teclea(conversion, "x");
    lista.setFocus();
    QStringList vistos;
    for (int i = 0; i < 6; ++i) {
        vistos << ventana.focusWidget()->objectName();
        EXPECT_FALSE(ventana.focusWidget()->accessibleName().isEmpty());
        Pulsa(Qt::Key_Tab, "\t");
    }
    EXPECT_EQ(vistos,
              (QStringList{"ListaDiccionario", "TxtClave", "TxtConversion", "Actualizar", "Suprimir", "Probar"}));
}

TEST_F(PaginaDiccionarioTest, InTheWindowItIsWholeInEveryLook) {
    CompruebaAspectos(
        [&] {
            return EnVentana(r, Pagina::Diccionario,
                             new ucOpcDiccionario(diccionario, general, [](const QString &) {}));
        },
        QStringLiteral("FrameDiccionario"));
}

}  // namespace
}  // namespace ondalis::prueba
