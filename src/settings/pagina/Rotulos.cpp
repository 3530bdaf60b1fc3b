#include "settings/pagina/Rotulos.h"

namespace ondalis {

QString SinMarca(QString rotulo) { return rotulo.remove(QLatin1Char('&')); }

// The toolkit gives the focus only to a control that takes it itself, not to one that hands it on.
QLabel *Rotulo(const QString &texto, QWidget *de) {
    auto *rotulo = new QLabel(texto);
    rotulo->setBuddy(de->focusProxy() ? de->focusProxy() : de);
    return rotulo;
}

}  // namespace ondalis
