// Asserts that a window is whole and usable in every look of a desktop: light, dark and high contrast, with letters as
// on screens of 96, 144 and 192 dots.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QKeySequence>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <map>

#include "fakes/Letras.h"
#include "fakes/Teclado.h"
#include "settings/pagina/Colores.h"

namespace ondalis::prueba {

struct PaletaDePrueba {
    const char *nombre;
    QColor fondo, letra, campo, elegido, enlace;
    double minimo;  // contrast that its texts must have
};
inline const std::vector<PaletaDePrueba> &PaletasDePrueba() {
    static const std::vector<PaletaDePrueba> paletas{
        {"light", QColor(239, 239, 239), Qt::black, Qt::white, QColor(48, 140, 198), Qt::blue, 4.5},
        {"dark", QColor(49, 54, 59), QColor(239, 240, 241), QColor(35, 38, 41), QColor(61, 174, 233),
         QColor(41, 128, 185), 4.5},
        {"high contrast", Qt::black, Qt::white, Qt::black, Qt::yellow, Qt::cyan, 7.0},
    };
    return paletas;
}

inline QPalette PaletaQt(const PaletaDePrueba &una) {
    QPalette paleta(una.fondo);
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        paleta.setColor(papel, una.letra);
    paleta.setColor(QPalette::Window, una.fondo);
    paleta.setColor(QPalette::Base, una.campo);
    paleta.setColor(QPalette::Highlight, una.elegido);
    paleta.setColor(QPalette::Link, una.enlace);
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        paleta.setColor(QPalette::Disabled, papel, una.fondo.lighter(150));
    cEstilo().polish(paleta);
    return paleta;
}

template <class... Clases>
bool EsAlguno(const QWidget *uno) {
    return (qobject_cast<const Clases *>(uno) || ...);
}
inline bool EsControl(const QWidget *uno) {
    return EsAlguno<QLabel, QAbstractButton, QComboBox, QAbstractSlider, QAbstractSpinBox, QLineEdit,
                    QAbstractItemView>(uno);
}
inline std::string Llamado(const QWidget *uno) {
    const QString texto = uno->property("text").toString();
    return uno->objectName().toStdString() + " \"" + texto.toStdString() + '"';
}

// Controls of one parent lie beside each other.
inline void CompruebaQueNadaSeSolapa(const QWidget &ventana) {
    std::map<const QObject *, std::vector<const QWidget *>> hermanos;
    for (const QWidget *uno : ventana.findChildren<QWidget *>())
        if (uno->isVisible() && EsControl(uno)) hermanos[uno->parent()].push_back(uno);
    for (const auto &[padre, suyos] : hermanos)
        for (std::size_t i = 0; i < suyos.size(); ++i)
            for (std::size_t j = i + 1; j < suyos.size(); ++j)
                EXPECT_FALSE(suyos[i]->geometry().intersects(suyos[j]->geometry()))
                    << Llamado(suyos[i]) << " and " << Llamado(suyos[j]);
}

// Of what `parte` holds, Tab goes from left to right in a row, from a row to one below it, and back up once a round.
inline void CompruebaOrdenDeLectura(const QWidget &parte) {
    std::vector<const QWidget *> ronda;
    for (const QWidget *uno = parte.nextInFocusChain(); uno != &parte; uno = uno->nextInFocusChain()) {
        const bool interesa = parte.isAncestorOf(uno) && uno->isVisible() && uno->isEnabled() && EsControl(uno) &&
                              (uno->focusPolicy() & Qt::TabFocus) && !uno->focusProxy();
        if (interesa && !EsAlguno<QAbstractSpinBox, QComboBox>(uno->parentWidget())) ronda.push_back(uno);
    }
    const auto sitio = [&parte](const QWidget *uno) { return QRect(uno->mapTo(&parte, QPoint()), uno->size()); };
    int vueltas = 0;
    std::string cuales;
    for (std::size_t i = 0; i < ronda.size(); ++i) {
        const QWidget *sigue = ronda[(i + 1) % ronda.size()];
        const QRect antes = sitio(ronda[i]), ahora = sitio(sigue);
        const int medio = ahora.center().y();
        const bool mismaFila = medio >= antes.top() && medio <= antes.bottom();
        if (mismaFila ? ahora.left() > antes.left() : medio > antes.center().y()) continue;
        ++vueltas;
        cuales += Llamado(sigue) + " comes behind " + Llamado(ronda[i]) + "; ";
    }
    EXPECT_LE(vueltas, 1) << cuales;
}

// What a user reaches by its caption: a button, or what a label stands beside.
inline bool TieneLetra(const QWidget *uno) {
    const auto *etiqueta = qobject_cast<const QLabel *>(uno);
    return etiqueta ? etiqueta->buddy() != nullptr : EsAlguno<QAbstractButton>(uno);
}
inline QKeySequence LetraDe(const QWidget *uno) {
    if (const auto *boton = qobject_cast<const QAbstractButton *>(uno)) return boton->shortcut();
    return QKeySequence::mnemonic(uno->property("text").toString());
}

// Each letter leads to one control, and none is heard.
inline void CompruebaMnemonicos(const QWidget &ventana) {
    std::map<QString, std::string> usados;
    for (const QWidget *uno : ventana.findChildren<QWidget *>()) {
        EXPECT_FALSE(uno->accessibleName().contains(QLatin1Char('&'))) << Llamado(uno);
        EXPECT_FALSE(uno->accessibleDescription().contains(QLatin1Char('&'))) << Llamado(uno);
        if (!uno->isVisible() || !TieneLetra(uno)) continue;
        const QString letra = LetraDe(uno).toString();
        if (letra.isEmpty()) continue;
        const auto [otro, nuevo] = usados.emplace(letra, Llamado(uno));
        EXPECT_TRUE(nuevo) << letra.toStdString() << ": " << otro->second << " and " << Llamado(uno);
    }
}

// It only says what always is so.
inline constexpr const char *kSiempreApagada = "CheckPausas";

// Each control with a caption has a letter, and Alt with it leads there: the focus comes, and a button goes down.
inline void CompruebaLetrasPulsadas(QWidget &ventana) {
    QApplication::setActiveWindow(&ventana);
    for (QWidget *uno : ventana.findChildren<QWidget *>()) {
        if (uno->isVisible()) uno->setEnabled(true);
        uno->blockSignals(true);  // it is where the letter leads that counts, not what is done there
    }
    int pulsadas = 0;
    for (QWidget *uno : ventana.findChildren<QWidget *>()) {
        if (!uno->isVisible() || !TieneLetra(uno)) continue;
        const auto *etiqueta = qobject_cast<const QLabel *>(uno);
        auto *boton = qobject_cast<QAbstractButton *>(uno);
        QWidget *destino = etiqueta ? etiqueta->buddy() : uno;
        if (!destino->isVisible() || uno->objectName() == QLatin1String(kSiempreApagada)) continue;
        const QKeySequence letra = LetraDe(uno);
        EXPECT_FALSE(letra.isEmpty()) << Llamado(uno) << " has no letter";
        if (letra.isEmpty()) continue;
        EXPECT_LE(letra[0].key(), Qt::Key_Z) << Llamado(uno) << ": no key of its own on every keyboard";
        if (QWidget *foco = ventana.focusWidget()) foco->clearFocus();
        PulsaAtajo(ventana, letra[0].key(), Qt::AltModifier);
        const std::string cual = letra.toString().toStdString() + ", " + Llamado(uno);
        // What only acts does so without taking the focus from where it is.
        EXPECT_TRUE((boton && !boton->isCheckable()) || ventana.focusWidget() == destino) << cual;
        EXPECT_TRUE(!boton || boton->isDown()) << cual;
        ++pulsadas;
    }
    EXPECT_GT(pulsadas, 2);
}

// The strongest contrast painted inside each enabled text, judged against `minimo`.
inline void CompruebaQueSeLee(QWidget &ventana, double minimo) {
    const QImage imagen = ventana.grab().toImage();
    const double escala = imagen.devicePixelRatio();
    int textos = 0;
    for (const QWidget *uno : ventana.findChildren<QWidget *>()) {
        if (!uno->isVisible() || !uno->isEnabled() || uno->property("text").toString().isEmpty()) continue;
        if (!EsAlguno<QLabel, QCheckBox, QRadioButton, QPushButton>(uno)) continue;
        const int borde = EsAlguno<QPushButton>(uno) ? 4 : 0;
        const QRect parte = uno->visibleRegion().boundingRect().adjusted(borde, borde, -borde, -borde);
        if (parte.isEmpty()) continue;
        const QPoint sitio = uno->mapTo(&ventana, parte.topLeft());
        // Against the ground: the corner of the text's own rectangle.
        const QColor fondo = imagen.pixelColor(sitio * escala);
        double mejor = 1;
        for (int y = 0; y < parte.height(); ++y)
            for (int x = 0; x < parte.width(); ++x)
                mejor = std::max(mejor, Contraste(imagen.pixelColor((sitio + QPoint(x, y)) * escala), fondo));
        EXPECT_GE(mejor, minimo) << Llamado(uno);
        ++textos;
    }
    EXPECT_GT(textos, 2);
}

// Whether every control with a caption is to have a letter, or whether the window has few buttons or takes its captions
// from elsewhere.
enum class Letras { Todas, LasQueHaya };

// `crea` makes the window and shows it as the program does; `parte` names what Tab is to go through in reading order
// (empty: the whole window).
inline void CompruebaAspectos(const std::function<std::unique_ptr<QWidget>()> &crea, const QString &parte = {},
                              Letras letras = Letras::Todas) {
    CompruebaLetras(crea);
    const QFont antes = QApplication::font();
    const QPalette paleta = QApplication::palette();
    for (const PaletaDePrueba &una : PaletasDePrueba()) {
        QApplication::setPalette(PaletaQt(una));
        for (const int puntos : {9, 14, 18}) {
            SCOPED_TRACE(std::string(una.nombre) + ", " + std::to_string(puntos) + " points");
            QFont letra = antes;
            letra.setPointSize(puntos);
            QApplication::setFont(letra);
            const auto ventana = crea();
            QCoreApplication::processEvents();
            const QWidget *cual = parte.isEmpty() ? ventana.get() : ventana->findChild<QWidget *>(parte);
            ASSERT_NE(cual, nullptr);
            CompruebaQueNadaSeSolapa(*ventana);
            CompruebaOrdenDeLectura(*cual);
            CompruebaMnemonicos(*ventana);
            if (puntos == 9) CompruebaQueSeLee(*ventana, una.minimo);
        }
    }
    QApplication::setFont(antes);
    QApplication::setPalette(paleta);
    if (letras == Letras::Todas) CompruebaLetrasPulsadas(*crea());
}

}  // namespace ondalis::prueba
