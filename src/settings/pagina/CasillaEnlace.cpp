#include "settings/pagina/CasillaEnlace.h"

#include <QBoxLayout>
#include <QCheckBox>

#include "settings/pagina/Rotulos.h"

namespace ondalis {

QCheckBox *Casilla(const char *nombre, const QString &rotulo, bool marcada) {
    auto *casilla = new QCheckBox(rotulo);
    casilla->setObjectName(QLatin1String(nombre));
    casilla->setAccessibleName(SinMarca(rotulo));
    casilla->setChecked(marcada);
    return casilla;
}

CasillaConEnlace PonCasillaConEnlace(QBoxLayout &columna, const char *nombre, const char *nombreEnlace,
                                     const QString &rotulo, const QString &accesible, bool marcada) {
    QCheckBox *casilla = Casilla(nombre, rotulo, marcada);
    casilla->setText(QString());  // the link shows it
    casilla->setShortcut(QKeySequence::mnemonic(rotulo));
    const qsizetype letra = rotulo.indexOf(QLatin1Char('&'));
    auto *enlace = new cEnlace(nombreEnlace, QString(rotulo).remove(letra, 1), accesible);
    enlace->SubrayaTambien(letra);
    auto *fila = new QHBoxLayout;
    fila->setSpacing(0);
    fila->addWidget(casilla);
    fila->addWidget(enlace);
    fila->addStretch();
    columna.addLayout(fila);
    return {casilla, enlace};
}

}  // namespace ondalis
