#include "settings/pagina/cEnlace.h"

#include <QApplication>
#include <QEvent>
#include <QStyle>

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
    const QColor color = QApplication::palette().color(QPalette::Active, QPalette::Link);
    if (palette().color(QPalette::Active, QPalette::ButtonText) == color) return;
    QPalette paleta = QApplication::palette();
    for (const auto grupo : {QPalette::Active, QPalette::Inactive}) paleta.setColor(grupo, QPalette::ButtonText, color);
    setPalette(paleta);
}

void cEnlace::changeEvent(QEvent *evento) {
    QPushButton::changeEvent(evento);
    if (evento->type() == QEvent::ApplicationPaletteChange || evento->type() == QEvent::StyleChange) TomaColor();
}

}  // namespace ondalis
