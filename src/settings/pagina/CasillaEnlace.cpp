#include "settings/pagina/CasillaEnlace.h"

#include <QBoxLayout>
#include <QCheckBox>

namespace ondalis {

QCheckBox *Casilla(const char *nombre, const QString &rotulo, bool marcada) {
    auto *casilla = new QCheckBox(rotulo);
    casilla->setObjectName(QLatin1String(nombre));
    casilla->setAccessibleName(rotulo);
    casilla->setChecked(marcada);
    return casilla;
}

CasillaConEnlace PonCasillaConEnlace(QBoxLayout &columna, const char *nombre, const char *nombreEnlace,
                                     const QString &rotulo, const QString &accesible, bool marcada) {
    QCheckBox *casilla = Casilla(nombre, rotulo, marcada);
    casilla->setText(QString());  // the link shows it
    auto *enlace = new cEnlace(nombreEnlace, rotulo, accesible);
    auto *fila = new QHBoxLayout;
    fila->setSpacing(0);
    fila->addWidget(casilla);
    fila->addWidget(enlace);
    fila->addStretch();
    columna.addLayout(fila);
    return {casilla, enlace};
}

}  // namespace ondalis
