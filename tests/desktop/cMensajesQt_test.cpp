#include "desktop/cMensajesQt.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QWindow>
#include <memory>

#include "settings/cCola.h"

namespace ondalis {
namespace {

// Runs `accion` on the box as soon as it stands there.
template <class Accion>
void EnLaCaja(Accion accion) {
    QTimer::singleShot(0, qApp, [accion] {
        auto *caja = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        ASSERT_NE(caja, nullptr);
        accion(*caja);
    });
}

TEST(cMensajesQt, AQuestionIsAnsweredWithSiOrNo) {
    cMensajesQt mensajes;
    EnLaCaja([](QMessageBox &caja) {
        EXPECT_EQ(caja.button(QMessageBox::Yes)->text(), QStringLiteral("&Sí"));
        EXPECT_EQ(caja.button(QMessageBox::No)->text(), QStringLiteral("&No"));
        EXPECT_EQ(caja.text(), QStringLiteral("¿a < b & c?"));
        EXPECT_EQ(caja.textFormat(), Qt::PlainText);
        EXPECT_EQ(caja.windowTitle(), QStringLiteral("Ondalis"));
        EXPECT_EQ(caja.defaultButton(), caja.button(QMessageBox::No));
        caja.button(QMessageBox::Yes)->click();
    });
    EXPECT_TRUE(mensajes.Muestra(QStringLiteral("¿a < b & c?"), true, false, QStringLiteral("Ondalis")));
    EnLaCaja([](QMessageBox &caja) {
        EXPECT_EQ(caja.defaultButton(), caja.button(QMessageBox::Yes));
        caja.button(QMessageBox::No)->click();
    });
    EXPECT_FALSE(mensajes.Muestra(QStringLiteral("¿?"), true, true, QStringLiteral("Ondalis")));
}

TEST(cMensajesQt, AMessageHasTheOneButtonAceptar) {
    cMensajesQt mensajes;
    EnLaCaja([](QMessageBox &caja) {
        ASSERT_EQ(caja.buttons().size(), 1);
        EXPECT_EQ(caja.buttons().front()->text(), QStringLiteral("Aceptar"));
        caja.buttons().front()->click();
    });
    EXPECT_TRUE(mensajes.Muestra(QStringLiteral("hola"), false, false, QStringLiteral("Ondalis")));
}

TEST(cMensajesQt, TheZerosBehindAnEnginesErrorAreNotShown) {
    cMensajesQt mensajes;
    EnLaCaja([](QMessageBox &caja) {
        EXPECT_EQ(caja.text(), QStringLiteral("Disco lleno"));
        caja.buttons().front()->click();
    });
    EXPECT_TRUE(mensajes.Muestra(QStringLiteral("Disco lleno") + QString(200, QChar(u'\0')), false, false, QString()));
}

TEST(cMensajesQt, TheBoxBelongsToTheWindowItCameFromAndOutlivesIt) {
    auto ventana = std::make_unique<QWidget>();
    ventana->show();
    QApplication::setActiveWindow(ventana.get());
    cMensajesQt mensajes;
    EnLaCaja([&](QMessageBox &caja) {
        EXPECT_EQ(caja.windowHandle()->transientParent(), ventana->windowHandle());
        ventana.reset();
        ASSERT_EQ(QApplication::activeModalWidget(), &caja);
        caja.buttons().front()->click();
    });
    EXPECT_TRUE(mensajes.Muestra(QStringLiteral("hola"), false, false, QStringLiteral("Ondalis")));
}

TEST(cMensajesQt, TheBoxStandsInFrontOfEverything) {
    WId alFrente = 0;
    cMensajesQt mensajes([&](WId ventana) { alFrente = ventana; });
    WId suya = 0;
    EnLaCaja([&](QMessageBox &caja) {
        EXPECT_TRUE(caja.windowFlags() & Qt::WindowStaysOnTopHint);
        EXPECT_TRUE(caja.isModal());
        suya = caja.winId();
        QTimer::singleShot(0, &caja, [&caja] { caja.accept(); });
    });
    mensajes.Muestra(QStringLiteral("hola"), false, false, QStringLiteral("Ondalis"));
    EXPECT_NE(suya, 0u);
    EXPECT_EQ(alFrente, suya);
}

TEST(cMensajesQt, AKeyThatWaitedForTheHandlerActsWhileItsBoxIsOpen) {
    cCola cola;
    cola.SetHayModal([] { return QApplication::activeModalWidget() != nullptr; });
    cMensajesQt mensajes({}, [&] { cola.Despierta(); });
    QStringList orden;
    cola.Pon(cCola::Clase::Tecla, [&] {
        mensajes.Muestra(QStringLiteral("hola"), false, false, QStringLiteral("Ondalis"));
        orden << QStringLiteral("primera");
    });
    cola.Pon(cCola::Clase::Tecla, [&] {
        orden << QStringLiteral("segunda");
        qobject_cast<QMessageBox *>(QApplication::activeModalWidget())->accept();
    });
    // Without the key nobody else closes the box.
    QTimer plazo;
    plazo.setSingleShot(true);
    QObject::connect(&plazo, &QTimer::timeout, [&] { mensajes.Cierra(); });
    plazo.start(5000);
    while (orden.size() < 2 && plazo.isActive()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(orden, QStringList({QStringLiteral("segunda"), QStringLiteral("primera")}));
}

TEST(cMensajesQt, TheProgramsEndClosesABoxAsIfAnsweredWithNo) {
    cMensajesQt mensajes;
    EnLaCaja([&](QMessageBox &) { mensajes.Cierra(); });
    EXPECT_FALSE(mensajes.Muestra(QStringLiteral("¿?"), true, true, QStringLiteral("Ondalis")));
    EXPECT_FALSE(mensajes.Muestra(QStringLiteral("tarde"), false, false, QStringLiteral("Ondalis")));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

}  // namespace
}  // namespace ondalis
