#include "settings/pagina/cDeslizador.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSlider>
#include <QVBoxLayout>

#include "settings/pagina/cCajaNumero.h"

namespace ondalis {
namespace {

class DeslizadorTest : public testing::Test {
protected:
    DeslizadorTest() {
        columna.addWidget(&velocidad);
        columna.addWidget(&otro);
        velocidad.SetRango(70, 450, 5);
        velocidad.SetValor(170);
        ventana.show();
        QApplication::setActiveWindow(&ventana);
        caja.setFocus();
    }
    ~DeslizadorTest() override {
        columna.removeWidget(&velocidad);
        columna.removeWidget(&otro);
        velocidad.setParent(nullptr);
        otro.setParent(nullptr);
    }

    void Pulsa(int tecla, const QString &texto = {}, Qt::KeyboardModifiers modificadores = {}) {
        QKeyEvent baja(QEvent::KeyPress, tecla, modificadores, texto);
        QApplication::sendEvent(ventana.focusWidget(), &baja);
    }
    void Teclea(const QString &texto) {
        for (const QChar c : texto) Pulsa(c.unicode(), QString(c));
    }
    // The whole text goes, as when the box is entered and something is typed.
    void Selecciona() { caja.selectAll(); }
    void Pega(const QString &texto) {
        QGuiApplication::clipboard()->setText(texto);
        Pulsa(Qt::Key_V, QStringLiteral("\x16"), Qt::ControlModifier);
    }
    QString Texto() { return caja.text(); }

    QWidget ventana;
    QVBoxLayout columna{&ventana};
    cDeslizador velocidad{"ScrollVelocidad", "ValorVelocidad", QStringLiteral("Velocidad")};
    QLineEdit otro;
    cCajaNumero &caja = *velocidad.Caja();
};

TEST_F(DeslizadorTest, TheBarsChangeIsWrittenIntoTheBox) {
    velocidad.Barra().setValue(200);
    EXPECT_EQ(Texto(), "200");
    velocidad.Barra().triggerAction(QSlider::SliderPageStepAdd);
    EXPECT_EQ(Texto(), "205");
    velocidad.Barra().triggerAction(QSlider::SliderSingleStepSub);
    EXPECT_EQ(Texto(), "204");
}

TEST_F(DeslizadorTest, EnteringAValueAboveTheRangeAndLeavingTheBoxGivesTheMaximum) {
    Selecciona();
    Teclea("500");
    EXPECT_EQ(velocidad.Valor(), 170);  // not before the box is left
    otro.setFocus();
    EXPECT_EQ(velocidad.Valor(), 450);
    EXPECT_EQ(Texto(), "450");
}

TEST_F(DeslizadorTest, AValueBelowTheRangeOrAnEmptyBoxGivesTheMinimum) {
    for (const char *tecleado : {"3", "0", ""}) {
        caja.setFocus();
        velocidad.SetValor(170);
        Selecciona();
        Pulsa(Qt::Key_Backspace);
        Teclea(tecleado);
        otro.setFocus();
        EXPECT_EQ(velocidad.Valor(), 70) << tecleado;
        EXPECT_EQ(Texto(), "70") << tecleado;
    }
}

TEST_F(DeslizadorTest, OnlyDigitsAreTyped) {
    Selecciona();
    Teclea("2a-1ñ .0");
    EXPECT_EQ(Texto(), "210");
}

TEST_F(DeslizadorTest, PastedLettersReadAsTheMinimumOrTheNumberTheyBeginWith) {
    Selecciona();
    Pega("abc");
    EXPECT_EQ(Texto(), "abc");
    otro.setFocus();
    EXPECT_EQ(velocidad.Valor(), 70);
    caja.setFocus();
    Selecciona();
    Pega("123 palabras");
    otro.setFocus();
    EXPECT_EQ(velocidad.Valor(), 123);
    caja.setFocus();
    Selecciona();
    Pega("99999999999999999999");
    otro.setFocus();
    EXPECT_EQ(velocidad.Valor(), 450);
}

TEST_F(DeslizadorTest, EnterMovesTheFocusOnAndTakesTheNumber) {
    Selecciona();
    Teclea("90");
    Pulsa(Qt::Key_Return, QStringLiteral("\r"));
    EXPECT_EQ(ventana.focusWidget(), &otro);
    EXPECT_EQ(velocidad.Valor(), 90);
}

TEST_F(DeslizadorTest, ANewRangeKeepsTheValueOrTakesTheNearerLimit) {
    velocidad.SetRango(0, 200, 5);
    EXPECT_EQ(velocidad.Valor(), 170);
    velocidad.SetRango(0, 20, 5);
    EXPECT_EQ(velocidad.Valor(), 20);
    EXPECT_EQ(Texto(), "20");
}

TEST_F(DeslizadorTest, TheWheelChangesNothingThatHasNotTheFocus) {
    otro.setFocus();
    for (QWidget *uno : {static_cast<QWidget *>(&velocidad.Barra()), static_cast<QWidget *>(&caja)}) {
        QWheelEvent rueda({5, 5}, {5, 5}, {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(uno, &rueda);
    }
    EXPECT_EQ(velocidad.Valor(), 170);
}

TEST_F(DeslizadorTest, BarAndBoxHaveNamesOfTheirOwnAndTakeTheFocus) {
    EXPECT_EQ(velocidad.Barra().accessibleName(), "Velocidad");
    EXPECT_EQ(caja.accessibleName(), "Velocidad, valor");
    velocidad.setFocus();
    EXPECT_EQ(ventana.focusWidget(), &velocidad.Barra());
}

}  // namespace
}  // namespace ondalis
