// A dark desktop for as long as it lives, and whether a window's texts can be read on it.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QImage>
#include <QLabel>
#include <QPalette>
#include <QPushButton>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace ondalis::prueba {

class PaletaOscura {
public:
    PaletaOscura() {
        QPalette oscura(QColor(45, 45, 48), QColor(45, 45, 48));
        oscura.setColor(QPalette::Base, QColor(30, 30, 30));
        for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            oscura.setColor(QPalette::Active, papel, Qt::white), oscura.setColor(QPalette::Inactive, papel, Qt::white);
        QApplication::setPalette(oscura);
    }
    ~PaletaOscura() { QApplication::setPalette(m_anterior); }
    PaletaOscura(const PaletaOscura &) = delete;
    PaletaOscura &operator=(const PaletaOscura &) = delete;

private:
    QPalette m_anterior = QApplication::palette();
};

// Relative luminance by WCAG 2.
inline double Luminancia(QRgb color) {
    const auto lineal = [](int canal) {
        const double c = canal / 255.0;
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * lineal(qRed(color)) + 0.7152 * lineal(qGreen(color)) + 0.0722 * lineal(qBlue(color));
}

// The painted contrast of every enabled text that is shown is 4.5 at least.
inline void CompruebaContraste(QWidget &ventana) {
    QCoreApplication::processEvents();
    const QImage imagen = ventana.grab().toImage();
    EXPECT_LT(Luminancia(imagen.pixel(2, 2)), 0.1);
    int textos = 0;
    for (const QWidget *uno : ventana.findChildren<QWidget *>()) {
        const bool texto = qobject_cast<const QLabel *>(uno) || qobject_cast<const QCheckBox *>(uno) ||
                           qobject_cast<const QPushButton *>(uno);
        if (!texto || !uno->isVisible() || !uno->isEnabled() || uno->property("text").toString().isEmpty()) continue;
        double claro = 0, oscuro = 1;
        const QRect caja(uno->mapTo(&ventana, QPoint(3, 3)), uno->size() - QSize(6, 6));
        for (int y = caja.top(); y <= caja.bottom(); ++y)
            for (int x = caja.left(); x <= caja.right(); ++x) {
                if (!imagen.rect().contains(x, y)) continue;
                const double l = Luminancia(imagen.pixel(x, y));
                claro = std::max(claro, l);
                oscuro = std::min(oscuro, l);
            }
        EXPECT_GE((claro + 0.05) / (oscuro + 0.05), 4.5) << uno->property("text").toString().toStdString();
        ++textos;
    }
    EXPECT_GE(textos, 4);
    if (qEnvironmentVariableIsSet("ONDALIS_RETRATOS"))
        imagen.save(qEnvironmentVariable("ONDALIS_RETRATOS") + QLatin1Char('/') + ventana.objectName() +
                    QStringLiteral("-oscuro.png"));
}

}  // namespace ondalis::prueba
