// Check boxes as the pages have them, alone or with a link for their text. Main thread.
#pragma once

#include "settings/pagina/cEnlace.h"

class QBoxLayout;
class QCheckBox;

namespace ondalis {

// `nombre`: the control's name; `rotulo` may mark its letter. Without a parent: a layout gives it one.
QCheckBox *Casilla(const char *nombre, const QString &rotulo, bool marcada = false);

struct CasillaConEnlace {
    QCheckBox *casilla;
    cEnlace *enlace;
};
// A check box whose text is a link beside it, as one row of `columna`. Of the two letters that `rotulo` marks the first
// ticks the box, the second opens the link. `accesible`: what the link is called, so that both can be told apart by
// ear.
CasillaConEnlace PonCasillaConEnlace(QBoxLayout &columna, const char *nombre, const char *nombreEnlace,
                                     const QString &rotulo, const QString &accesible, bool marcada = false);

}  // namespace ondalis
