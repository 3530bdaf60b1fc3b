#include "settings/pagina/cLista.h"

#include <QWheelEvent>

namespace ondalis {

cLista::cLista(const char *nombre, const QString &rotulo, QWidget *padre) : QComboBox(padre) {
    setObjectName(QLatin1String(nombre));
    setAccessibleName(rotulo);
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
}

// A page that is scrolled with the wheel must not change what the pointer happens to pass over.
void cLista::wheelEvent(QWheelEvent *evento) {
    if (hasFocus())
        QComboBox::wheelEvent(evento);
    else
        evento->ignore();
}

}  // namespace ondalis
