#include "settings/pagina/cEnlace.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>
#include <algorithm>

#include "settings/pagina/Colores.h"
#include "settings/pagina/Rotulos.h"

namespace ondalis {

cEnlace::cEnlace(const char *nombre, const QString &texto, const QString &accesible, QWidget *padre)
    : QPushButton(texto, padre) {
    setObjectName(QLatin1String(nombre));
    setAccessibleName(accesible.isEmpty() ? SinMarca(texto) : accesible);
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

// The line under a letter with Alt would be lost in that of the link.
void cEnlace::paintEvent(QPaintEvent *evento) {
    QPushButton::paintEvent(evento);
    QStyleOptionButton opcion;
    initStyleOption(&opcion);
    if (!style()->styleHint(QStyle::SH_UnderlineShortcut, &opcion, this)) return;
    const QString texto = SinMarca(text());
    const QFontMetrics letra = fontMetrics();
    const QRect sitio =
        style()->itemTextRect(letra, style()->subElementRect(QStyle::SE_PushButtonContents, &opcion, this),
                              Qt::AlignCenter, isEnabled(), texto);
    const qsizetype suya = text().indexOf(QLatin1Char('&'));
    QPainter pintor(this);
    const int linea = std::max(letra.lineWidth(), 1), grosor = linea + 1;
    const int y = sitio.top() + letra.ascent() + letra.underlinePos() + linea + 2;
    for (const qsizetype una : {suya, m_vecina}) {
        if (una < 0) continue;
        const int x = sitio.left() + letra.horizontalAdvance(texto.left(una));
        pintor.fillRect(x, y, letra.horizontalAdvance(texto[una]), grosor, palette().color(QPalette::ButtonText));
    }
}

void cEnlace::changeEvent(QEvent *evento) {
    QPushButton::changeEvent(evento);
    if (evento->type() == QEvent::ApplicationPaletteChange || evento->type() == QEvent::StyleChange) TomaColor();
}

}  // namespace ondalis
