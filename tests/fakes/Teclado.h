// Keys for a real widget, as the window system delivers them: shortcuts first, then the press.
#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace ondalis::prueba {

// To the widget of `ventana` that has the focus, else to the window.
inline void Pulsa(QWidget &ventana, int tecla, Qt::KeyboardModifiers modificadores = {}, const QString &texto = {}) {
    QWidget *foco = ventana.focusWidget() ? ventana.focusWidget() : &ventana;
    QKeyEvent atajo(QEvent::ShortcutOverride, tecla, modificadores, texto);
    QApplication::sendEvent(foco, &atajo);
    QKeyEvent baja(QEvent::KeyPress, tecla, modificadores, texto);
    QApplication::sendEvent(foco, &baja);
}

}  // namespace ondalis::prueba
