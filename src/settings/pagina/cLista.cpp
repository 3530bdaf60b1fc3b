#include "settings/pagina/cLista.h"

#include <QLabel>
#include <QWheelEvent>
#include <algorithm>

namespace ondalis {

cLista::cLista(const char *nombre, const QString &rotulo, QWidget *padre) : QComboBox(padre) {
    setObjectName(QLatin1String(nombre));
    setAccessibleName(rotulo);
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
}

// On this desktop's accessibility bus the toolkit gives the chosen entry as a list's name, whatever name it was given;
// what tells lists apart is the label that they belong to. One that has none in sight gets one out of sight.
bool cLista::event(QEvent *evento) {
    if (evento->type() == QEvent::Polish && parentWidget() != nullptr) {
        const auto letreros = parentWidget()->findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
        if (std::ranges::none_of(letreros, [this](const QLabel *letrero) { return letrero->buddy() == this; })) {
            auto *letrero = new QLabel(accessibleName(), parentWidget());
            letrero->setBuddy(this);
            letrero->hide();
        }
    }
    return QComboBox::event(evento);
}

// A page that is scrolled with the wheel must not change what the pointer happens to pass over.
void cLista::wheelEvent(QWheelEvent *evento) {
    if (hasFocus())
        QComboBox::wheelEvent(evento);
    else
        evento->ignore();
}

}  // namespace ondalis
