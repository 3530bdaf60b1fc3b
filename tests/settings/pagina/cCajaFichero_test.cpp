#include "settings/pagina/cCajaFichero.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QVBoxLayout>

namespace ondalis {
namespace {

class CajaFicheroTest : public testing::Test {
protected:
    CajaFicheroTest() {
        columna.addWidget(&otro);
        columna.addWidget(&caja);
        ventana.show();
        QApplication::setActiveWindow(&ventana);
        caja.setFocus();
    }
    ~CajaFicheroTest() override {
        for (QWidget *uno : {static_cast<QWidget *>(&otro), static_cast<QWidget *>(&caja)}) uno->setParent(nullptr);
    }

    void Pulsa(int tecla, const QString &texto = {}, Qt::KeyboardModifiers modificadores = {}) {
        QKeyEvent baja(QEvent::KeyPress, tecla, modificadores, texto);
        QApplication::sendEvent(&caja, &baja);
    }
    void Teclea(const QString &texto) {
        for (const QChar c : texto) Pulsa(c.unicode(), QString(c));
    }
    void Pega(const QString &texto) {
        QGuiApplication::clipboard()->setText(texto);
        Pulsa(Qt::Key_V, QStringLiteral("\x16"), Qt::ControlModifier);
    }

    QWidget ventana;
    QVBoxLayout columna{&ventana};
    QLineEdit otro;
    cCajaFichero caja{"NomFichero", QStringLiteral("Fichero de audio")};
};

TEST_F(CajaFicheroTest, TheNineForbiddenCharactersAreNotTypedAndTheSlashIs) {
    Teclea(R"(/a\:*?"<>|b/ñ.wav)");
    EXPECT_EQ(caja.text(), "/ab/ñ.wav");
}

TEST_F(CajaFicheroTest, ARefusedKeyLeavesTheSelectedTextAlone) {
    caja.SetFichero("/x.wav");
    caja.selectAll();
    Teclea(":");
    EXPECT_EQ(caja.text(), "/x.wav");
    EXPECT_EQ(caja.selectedText(), "/x.wav");
}

TEST_F(CajaFicheroTest, PastingDropsTheForbiddenCharactersAndKeepsTheRest) {
    caja.SetFichero("/casa/.wav");
    caja.setCursorPosition(6);
    Pega("uno: \"dos\"\\tres?");
    EXPECT_EQ(caja.text(), "/casa/uno dostres.wav");
    EXPECT_EQ(caja.cursorPosition(), 17);
    Pega("***");
    EXPECT_EQ(caja.text(), "/casa/uno dostres.wav");
}

TEST_F(CajaFicheroTest, ANameThatTheProgramPutsThereIsShownAsItIsAndEditingBesideItKeepsIt) {
    caja.SetFichero("/a:b/c*.wav");
    EXPECT_EQ(caja.text(), "/a:b/c*.wav");
    EXPECT_EQ(caja.cursorPosition(), 11);
    caja.setCursorPosition(3);
    Pega(":x:");
    EXPECT_EQ(caja.text(), "/a:xb/c*.wav");
    Teclea("y");
    EXPECT_EQ(caja.text(), "/a:xyb/c*.wav");
    Pulsa(Qt::Key_Backspace);
    EXPECT_EQ(caja.text(), "/a:xb/c*.wav");
}

TEST_F(CajaFicheroTest, EachPasteIsCleanedAndUndoingBringsNothingBack) {
    Pega("a:b");
    Pega("c:d");
    EXPECT_EQ(caja.text(), "abcd");
    Teclea("e");
    for (int i = 0; i < 5; ++i) caja.undo();
    EXPECT_EQ(caja.text(), "abcd");
}

TEST_F(CajaFicheroTest, AnInputMethodBringsInNoForbiddenCharacterEither) {
    QInputMethodEvent entrada;
    entrada.setCommitString("a|b");
    QApplication::sendEvent(&caja, &entrada);
    EXPECT_EQ(caja.text(), "ab");
}

TEST_F(CajaFicheroTest, EnteringTheBoxSelectsAllOfIt) {
    caja.SetFichero("/x.wav");
    for (const auto motivo :
         {Qt::TabFocusReason, Qt::BacktabFocusReason, Qt::ShortcutFocusReason, Qt::OtherFocusReason}) {
        otro.setFocus();
        caja.deselect();
        caja.setFocus(motivo);
        EXPECT_EQ(caja.selectedText(), "/x.wav") << motivo;
    }
}

TEST_F(CajaFicheroTest, EnteringWithTheMouseSelectsAllAndTheNextClickPutsTheCaret) {
    caja.SetFichero("/x.wav");
    otro.setFocus();
    caja.deselect();
    const auto pincha = [this] {
        if (!caja.hasFocus()) caja.setFocus(Qt::MouseFocusReason);  // as the window system does before the press
        for (const auto tipo : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const QPointF punto(3, caja.height() / 2.0);
            QMouseEvent raton(tipo, punto, caja.mapToGlobal(punto), Qt::LeftButton,
                              tipo == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(&caja, &raton);
        }
    };
    pincha();
    EXPECT_EQ(caja.selectedText(), "/x.wav");
    pincha();
    EXPECT_FALSE(caja.hasSelectedText());
}

TEST_F(CajaFicheroTest, ComingBackToTheWindowKeepsTheCaret) {
    caja.SetFichero("/x.wav");
    caja.setCursorPosition(2);
    for (const auto motivo : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason}) {
        QFocusEvent vuelve(QEvent::FocusIn, motivo);
        QApplication::sendEvent(&caja, &vuelve);
        EXPECT_FALSE(caja.hasSelectedText());
        EXPECT_EQ(caja.cursorPosition(), 2);
    }
}

TEST_F(CajaFicheroTest, OnlyTheWantedExtensionIsChangedAndTheCaretGoesToTheEnd) {
    const std::pair<const char *, const char *> casos[] = {
        {"/a.wav", "/a.mp3"},
        {"/a.WaV", "/a.mp3"},
        {"/a.wav.wav", "/a.wav.mp3"},
        {"/a.ogg", "/a.ogg"},
        {"wav", "wav"},
        {".wav", ".mp3"},
        {"", ""},
        {"/a.wav ", "/a.wav "},
    };
    for (const auto &[antes, despues] : casos) {
        caja.SetFichero(antes);
        caja.setCursorPosition(0);
        caja.CambiaExtension(".wav", ".mp3");
        EXPECT_EQ(caja.text(), despues);
        EXPECT_EQ(caja.cursorPosition(), caja.text().size()) << antes;
    }
}

}  // namespace
}  // namespace ondalis
