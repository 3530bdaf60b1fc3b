// Keys for a real widget, as the window system delivers them: shortcuts first, then the press.
#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

// How the toolkit's own test library presses a key: its shortcuts get it first.
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject *o, ulong timestamp, int k, Qt::KeyboardModifiers mods,
                                               const QString &text = QString(), bool autorep = false, ushort count = 1);

namespace ondalis::prueba {

// To the widget of `ventana` that has the focus, else to the window.
inline void Pulsa(QWidget &ventana, int tecla, Qt::KeyboardModifiers modificadores = {}, const QString &texto = {}) {
    QWidget *foco = ventana.focusWidget() ? ventana.focusWidget() : &ventana;
    QKeyEvent atajo(QEvent::ShortcutOverride, tecla, modificadores, texto);
    QApplication::sendEvent(foco, &atajo);
    QKeyEvent baja(QEvent::KeyPress, tecla, modificadores, texto);
    QApplication::sendEvent(foco, &baja);
}

// A key of which the window's shortcuts are to have the first say; false when it is none of them.
inline bool PulsaAtajo(QWidget &ventana, int tecla, Qt::KeyboardModifiers modificadores) {
    QWidget *foco = ventana.focusWidget() ? ventana.focusWidget() : &ventana;
    return qt_sendShortcutOverrideEvent(foco, 0, tecla, modificadores);
}

}  // namespace ondalis::prueba
