// Asserts that nothing of a window's words is cut with any letter, and that what doesn't fit the screen scrolls.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <functional>
#include <memory>

#include "desktop/cEstilo.h"

namespace ondalis::prueba {

inline constexpr QSize kMarcoVentana{20, 60};  // logical pixels that frame and panels take of the screen

// Labels, buttons, check boxes and lists of `padre` have at least the size that their texts ask for.
inline void CompruebaTextosEnteros(const QWidget &padre, int puntos) {
    int vistos = 0;
    for (const QWidget *uno : padre.findChildren<QWidget *>()) {
        const auto *etiqueta = qobject_cast<const QLabel *>(uno);
        const bool interesa =
            etiqueta || qobject_cast<const QAbstractButton *>(uno) || qobject_cast<const QComboBox *>(uno);
        if (!interesa || !uno->isVisible()) continue;
        ++vistos;
        const std::string cual = uno->objectName().toStdString() + " at " + std::to_string(puntos) + " points";
        if (etiqueta && etiqueta->wordWrap()) {
            EXPECT_GE(uno->height(), uno->heightForWidth(uno->width())) << cual;
            continue;
        }
        EXPECT_GE(uno->width(), uno->sizeHint().width()) << cual;
        EXPECT_GE(uno->height(), uno->sizeHint().height()) << cual;
    }
    EXPECT_GT(vistos, 2);
}

// The window isn't larger than its screen, and every area shows its contents whole or has a bar to move them.
inline void CompruebaQueCabe(const QWidget &ventana, int puntos) {
    const QSize pantalla = ventana.screen()->availableSize();
    EXPECT_LE(ventana.width(), pantalla.width()) << puntos;
    EXPECT_LE(ventana.height(), pantalla.height()) << puntos;
    for (const QScrollArea *area : ventana.findChildren<QScrollArea *>()) {
        if (!area->isVisible() || !area->widget()) continue;
        const QSize falta = area->widget()->size() - area->viewport()->size();
        EXPECT_GE(area->horizontalScrollBar()->maximum(), falta.width()) << puntos;
        EXPECT_GE(area->verticalScrollBar()->maximum(), falta.height()) << puntos;
        EXPECT_GE(area->viewport()->height(), 2 * area->fontMetrics().height()) << puntos;
    }
}

// What the screen has room for is shown whole, without a bar; nothing goes sideways with a letter of up to 18 points on
// a screen of 1024 pixels' width.
inline void CompruebaQueNadaSobra(const QWidget &ventana, int puntos) {
    constexpr int kLetraGrande = 18, kPantallaChica = 1024;
    const QSize pantalla = ventana.screen()->availableSize();
    const QSize entera = ventana.sizeHint() + kMarcoVentana;
    const bool cabe = entera.boundedTo(pantalla) == entera;
    for (const QScrollArea *area : ventana.findChildren<QScrollArea *>()) {
        if (!area->isVisible() || !area->widget()) continue;
        const bool sinLado = puntos <= kLetraGrande && pantalla.width() >= kPantallaChica;
        EXPECT_TRUE(!sinLado || area->horizontalScrollBar()->maximum() == 0) << puntos << " points, sideways";
        EXPECT_TRUE(!cabe || area->verticalScrollBar()->maximum() == 0) << puntos << " points";
    }
}

// `crea` makes the window and shows it as the program does. With every letter from 9 to 24 points, in the program's
// style.
inline void CompruebaLetras(const std::function<std::unique_ptr<QWidget>()> &crea) {
    const QFont antes = QApplication::font();
    QApplication::setStyle(new cEstilo);
    for (int puntos = 9; puntos <= 24; ++puntos) {
        QFont letra = antes;
        letra.setPointSize(puntos);
        QApplication::setFont(letra);
        const auto ventana = crea();
        ASSERT_TRUE(ventana->isVisible());
        QCoreApplication::processEvents();
        CompruebaTextosEnteros(*ventana, puntos);
        CompruebaQueCabe(*ventana, puntos);
        CompruebaQueNadaSobra(*ventana, puntos);
    }
    QApplication::setFont(antes);
}

}  // namespace ondalis::prueba
