#include "settings/pagina/cCajaFichero.h"

#include <QApplication>
#include <QKeyEvent>
#include <algorithm>

namespace ondalis {

cCajaFichero::cCajaFichero(const char *nombre, const QString &rotulo, QWidget *padre) : QLineEdit(padre) {
    setObjectName(QLatin1String(nombre));
    setAccessibleName(rotulo);
    // The user's edits are told before the change that every text makes.
    connect(this, &QLineEdit::textEdited, this, &cCajaFichero::LimpiaLoNuevo);
    connect(this, &QLineEdit::textChanged, this, [this] { m_anterior = text(); });
}

bool cCajaFichero::Rechazado(QChar c) { return QLatin1String("\\:*?\"<>|").contains(c); }

void cCajaFichero::SetFichero(const QString &ruta) {
    setText(ruta);
    setCursorPosition(static_cast<int>(ruta.size()));
}

void cCajaFichero::CambiaExtension(const QString &de, const QString &a) {
    QString nombre = text();
    if (nombre.endsWith(de, Qt::CaseInsensitive)) nombre.replace(nombre.size() - de.size(), de.size(), a);
    SetFichero(nombre);
}

void cCajaFichero::keyPressEvent(QKeyEvent *evento) {
    const QString texto = evento->text();
    if (texto.size() == 1 && Rechazado(texto[0])) {
        QApplication::beep();
        evento->accept();
        return;
    }
    QLineEdit::keyPressEvent(evento);
}

// Whatever road a text comes by (keys, clipboard, the mouse, an input method): only what it has brought in is looked
// at, for a name chosen in the file dialog may hold what can't be typed.
void cCajaFichero::LimpiaLoNuevo(const QString &texto) {
    const auto igual = std::mismatch(texto.begin(), texto.end(), m_anterior.begin(), m_anterior.end());
    const qsizetype delante = igual.first - texto.begin();
    qsizetype detras = 0;
    const qsizetype tope = std::min(texto.size(), m_anterior.size()) - delante;
    while (detras < tope && texto[texto.size() - 1 - detras] == m_anterior[m_anterior.size() - 1 - detras]) ++detras;
    QString nuevo = texto.mid(delante, texto.size() - delante - detras);
    const qsizetype largo = nuevo.size();
    nuevo.removeIf([](QChar c) { return Rechazado(c); });
    if (nuevo.size() == largo) return;
    QApplication::beep();
    // Forgets the steps to undo: one of them would bring back what is refused.
    setText(texto.first(delante) + nuevo + texto.last(detras));
    setCursorPosition(static_cast<int>(delante + nuevo.size()));
}

void cCajaFichero::focusInEvent(QFocusEvent *evento) {
    QLineEdit::focusInEvent(evento);
    switch (evento->reason()) {
        case Qt::ActiveWindowFocusReason:
        case Qt::PopupFocusReason:
        case Qt::MenuBarFocusReason: break;  // back from elsewhere: the box hadn't been left
        case Qt::MouseFocusReason: m_entraConRaton = true; break;
        default: selectAll();
    }
}

// The press that enters would put the caret and undo the selection.
void cCajaFichero::mousePressEvent(QMouseEvent *evento) {
    QLineEdit::mousePressEvent(evento);
    if (std::exchange(m_entraConRaton, false)) selectAll();
}

}  // namespace ondalis
