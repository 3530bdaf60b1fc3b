#include "desktop/cEstilo.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>

#include "settings/pagina/Colores.h"

namespace ondalis {
namespace {

QPalette Paleta(const QColor &fondo, const QColor &letra, const QColor &elegido) {
    QPalette paleta(fondo);
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        paleta.setColor(papel, letra);
        paleta.setColor(QPalette::Disabled, papel, fondo);
    }
    paleta.setColor(QPalette::Window, fondo);
    paleta.setColor(QPalette::Highlight, elegido);
    return paleta;
}

const QPalette kPaletas[] = {
    Paleta(QColor(239, 239, 239), Qt::black, QColor(48, 140, 198)),
    Paleta(QColor(49, 54, 59), QColor(239, 240, 241), QColor(61, 174, 233)), Paleta(Qt::black, Qt::white, Qt::yellow),
    Paleta(Qt::white, Qt::black, QColor(250, 250, 200)),  // a selection that nobody sees
};

TEST(cEstilo, TheContrastIsThatOfTheFormula) {
    EXPECT_NEAR(Contraste(Qt::black, Qt::white), 21.0, 1e-9);
    EXPECT_NEAR(Contraste(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
    EXPECT_DOUBLE_EQ(Contraste(Qt::red, Qt::red), 1.0);
}

TEST(cEstilo, FocusAndEdgesStandOutInEveryPalette) {
    for (const QPalette &paleta : kPaletas) {
        const QColor fondo = paleta.color(QPalette::Window);
        EXPECT_GE(Contraste(cEstilo::ColorFoco(paleta), fondo), 3.0) << fondo.name().toStdString();
        EXPECT_GE(Contraste(cEstilo::ColorBorde(paleta), fondo), 3.0) << fondo.name().toStdString();
    }
}

TEST(cEstilo, ALinkIsDrawnTowardsTheLettersUntilItCanBeRead) {
    const QColor fondo(49, 54, 59), enlace(41, 128, 185);
    EXPECT_LT(Contraste(enlace, fondo), kContrasteLetra);
    EXPECT_GE(Contraste(ColorVisible(enlace, fondo, QColor(239, 240, 241), kContrasteLetra), fondo), kContrasteLetra);
    EXPECT_EQ(ColorVisible(Qt::blue, Qt::white, Qt::black, kContrasteLetra), QColor(Qt::blue));
}

TEST(cEstilo, WhatIsDisabledCanStillBeRead) {
    cEstilo estilo;
    for (QPalette paleta : kPaletas) {
        estilo.polish(paleta);
        for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
            EXPECT_GE(Contraste(paleta.color(QPalette::Disabled, papel), paleta.color(QPalette::Window)), 2.2);
            EXPECT_NE(paleta.color(QPalette::Disabled, papel), paleta.color(QPalette::Active, papel));
        }
    }
}

// Pictures of one widget, with and without the focus that a mouse click gave it.
TEST(cEstilo, TheFocusIsSeenHoweverItCame) {
    cEstilo estilo;
    for (QPalette paleta : kPaletas) {
        QWidget ventana;
        ventana.setStyle(&estilo);
        ventana.setPalette(paleta);
        auto *casilla = new QCheckBox(QStringLiteral("Una casilla"), &ventana);
        auto *boton = new QPushButton(QStringLiteral("Un botón"), &ventana);
        boton->move(0, 60);
        for (QWidget *uno : {static_cast<QWidget *>(casilla), static_cast<QWidget *>(boton)}) {
            uno->setStyle(&estilo);
            uno->setPalette(paleta);
        }
        ventana.show();
        QApplication::setActiveWindow(&ventana);
        for (QWidget *uno : {static_cast<QWidget *>(casilla), static_cast<QWidget *>(boton)}) {
            QWidget *otro = uno == casilla ? static_cast<QWidget *>(boton) : casilla;
            otro->setFocus(Qt::MouseFocusReason);
            const QImage sin = uno->grab().toImage();
            uno->setFocus(Qt::MouseFocusReason);
            const QImage con = uno->grab().toImage();
            int distintos = 0;
            for (int y = 0; y < con.height(); ++y)
                for (int x = 0; x < con.width(); ++x) distintos += con.pixel(x, y) != sin.pixel(x, y);
            EXPECT_GT(distintos, 2 * uno->sizeHint().height()) << uno->metaObject()->className();
        }
    }
}

// A list that drops down, a number, a text, a bar, a link: by whatever road the focus comes.
TEST(cEstilo, EveryKindOfControlShowsItsFocusInEveryPalette) {
    cEstilo estilo;
    for (QPalette paleta : kPaletas) {
        QWidget ventana;
        auto *enlace = new QPushButton(QStringLiteral("Un enlace"), &ventana);
        enlace->setFlat(true);
        const std::vector<QWidget *> controles{new QComboBox(&ventana),           new QSpinBox(&ventana),
                                               new QLineEdit(&ventana),           new QSlider(Qt::Horizontal, &ventana),
                                               new QRadioButton("Una", &ventana), enlace};
        int y = 0;
        for (QWidget *uno : controles) {
            uno->setStyle(&estilo);
            uno->setPalette(paleta);
            uno->setFocusPolicy(Qt::StrongFocus);
            uno->setGeometry(0, y += 40, 160, 30);
        }
        ventana.show();
        QApplication::setActiveWindow(&ventana);
        for (std::size_t i = 0; i < controles.size(); ++i) {
            QWidget *uno = controles[i];
            controles[(i + 1) % controles.size()]->setFocus(Qt::OtherFocusReason);
            const QImage sin = uno->grab().toImage();
            uno->setFocus(Qt::OtherFocusReason);
            const QImage con = uno->grab().toImage();
            int marcados = 0;  // pixels of a colour that stands out, where there was another
            for (int py = 0; py < con.height(); ++py)
                for (int px = 0; px < con.width(); ++px)
                    marcados += con.pixel(px, py) != sin.pixel(px, py) &&
                                Contraste(con.pixelColor(px, py), paleta.color(QPalette::Window)) >= 2.9;
            EXPECT_GT(marcados, 60) << uno->metaObject()->className() << " on "
                                    << paleta.color(QPalette::Window).name().toStdString();
        }
    }
}

TEST(cEstilo, LinksCanBeReadOnTheWindowAndInFields) {
    cEstilo estilo;
    for (QPalette paleta : kPaletas) {
        paleta.setColor(QPalette::Link, QColor(41, 128, 185));
        estilo.polish(paleta);
        for (const auto suelo : {QPalette::Window, QPalette::Base})
            EXPECT_GE(Contraste(paleta.color(QPalette::Link), paleta.color(suelo)), 4.5);
    }
}

TEST(cEstilo, TargetsAreLargeEnough) {
    cEstilo estilo;
    QPushButton boton(QStringLiteral("Aceptar"));
    QCheckBox casilla(QStringLiteral("Sí"));
    boton.setStyle(&estilo);
    casilla.setStyle(&estilo);
    EXPECT_GE(boton.sizeHint().height(), 30);
    EXPECT_GE(casilla.sizeHint().height(), 24);  // WCAG 2.2, 2.5.8
}

}  // namespace
}  // namespace ondalis
