#include "settings/pagina/cCajaNumero.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWheelEvent>
#include <algorithm>
#include <limits>

namespace ondalis {

namespace {

// Keys that type nothing: they move the cursor, erase, or belong to the window.
bool SinCaracter(const QKeyEvent &evento) {
    if (evento.matches(QKeySequence::Copy) || evento.matches(QKeySequence::Paste)) return true;
    switch (evento.key()) {
        case Qt::Key_Backspace:
        case Qt::Key_Delete:
        case Qt::Key_Escape: return true;
        default: return evento.text().isEmpty();
    }
}

bool EsDigito(const QString &texto) {
    return texto.size() == 1 && texto[0] >= QLatin1Char('0') && texto[0] <= QLatin1Char('9');
}

}  // namespace

cCajaNumero::cCajaNumero(const char *nombre, const QString &rotulo, QWidget *padre) : QSpinBox(padre) {
    setObjectName(QLatin1String(nombre));
    setAccessibleName(rotulo);
    setButtonSymbols(QAbstractSpinBox::NoButtons);
    setKeyboardTracking(false);  // the number counts when the box is left
    setFocusPolicy(Qt::StrongFocus);
}

int cCajaNumero::Numero(const QString &texto) {
    constexpr qint64 kTope = std::numeric_limits<int>::max();
    qint64 numero = 0;
    for (const QChar c : texto.trimmed()) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9')) break;
        numero = std::min(numero * 10 + c.digitValue(), kTope);
    }
    return static_cast<int>(numero);
}

void cCajaNumero::keyPressEvent(QKeyEvent *evento) {
    if (evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter) {
        focusNextChild();
        evento->accept();
    } else if (SinCaracter(*evento) || EsDigito(evento->text())) {
        QSpinBox::keyPressEvent(evento);
    } else {
        QApplication::beep();
        evento->accept();
    }
}

// A page that is scrolled with the wheel must not change what the pointer happens to pass over.
void cCajaNumero::wheelEvent(QWheelEvent *evento) {
    if (hasFocus())
        QSpinBox::wheelEvent(evento);
    else
        evento->ignore();
}

QValidator::State cCajaNumero::validate(QString &, int &) const { return QValidator::Acceptable; }

int cCajaNumero::valueFromText(const QString &texto) const { return std::clamp(Numero(texto), minimum(), maximum()); }

}  // namespace ondalis
