#include "settings/pagina/cEnlace.h"

#include <QApplication>
#include <QEvent>
#include <QStyle>

#include "settings/pagina/Colores.h"

namespace ondalis {

cEnlace::cEnlace(const char *nombre, const QString &texto, const QString &accesible, QWidget *padre)
    : QPushButton(texto, padre) {
    setObjectName(QLatin1String(nombre));
    setAccessibleName(accesible.isEmpty() ? texto : accesible);
    setFlat(true);
    setAutoDefault(true);
    setCursor(Qt::PointingHandCursor);
    QFont letra = font();
    letra.setUnderline(true);
    setFont(letra);
    TomaColor();
}

// A push button paints its text in the buttons' colour: ours is the links'. Disabled it stays as others are.
void cEnlace::TomaColor() {
    QPalette paleta = QApplication::palette();
    const QColor color =
        ColorVisible(paleta.color(QPalette::Active, QPalette::Link), paleta.color(QPalette::Active, QPalette::Window),
                     paleta.color(QPalette::Active, QPalette::WindowText), kContrasteLetra);
    if (palette().color(QPalette::Active, QPalette::ButtonText) == color) return;
    for (const auto grupo : {QPalette::Active, QPalette::Inactive}) paleta.setColor(grupo, QPalette::ButtonText, color);
    setPalette(paleta);
}

void cEnlace::changeEvent(QEvent *evento) {
    QPushButton::changeEvent(evento);
    if (evento->type() == QEvent::ApplicationPaletteChange || evento->type() == QEvent::StyleChange) TomaColor();
}

}  // namespace ondalis
