#include "settings/pagina/AreaPagina.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStyle>
#include <algorithm>
#include <cmath>

namespace ondalis {

namespace {
constexpr QSize kHolgura{20, 60};  // logical pixels, for the frame and the desktop's panels

// Where a logical pixel isn't a whole number of the screen's, a size comes back from the window manager up to one pixel
// shorter (seen with Qt 6.4), and the whole contents would scroll for it.
QSize Redondeo(const QWidget &ventana) {
    const qreal escala = ventana.devicePixelRatioF();
    return escala == std::floor(escala) ? QSize(0, 0) : QSize(1, 1);
}

}  // namespace

AreaPagina::AreaPagina(QWidget *pagina, int altoMinimo) : m_altoMinimo(altoMinimo) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidget(pagina);
}

QSize AreaPagina::sizeHint() const {
    const QSize suya = widget()->sizeHint().expandedTo(widget()->minimumSizeHint()).expandedTo(widget()->minimumSize());
    return {suya.width(), std::max(suya.height(), m_altoMinimo)};
}

QSize AreaPagina::minimumSizeHint() const {
    const QSize entera = sizeHint();
    const int tope = std::max(m_altoMinimo, fontMetrics().height() * 4);
    return {std::min(entera.width(), tope), std::min(entera.height(), tope)};
}

void AjustaAPantalla(QWidget &ventana) {
    const QSize entera = ventana.sizeHint() + Redondeo(ventana);
    const QSize cabe = ventana.screen()->availableSize() - kHolgura;
    const int barra = ventana.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    QSize tamano = entera;
    if (entera.height() > cabe.height()) tamano.rwidth() += barra;
    if (entera.width() > cabe.width()) tamano.rheight() += barra;
    ventana.resize(tamano.boundedTo(cabe));
}

std::vector<QRect> Monitores() {
    std::vector<QRect> monitores;
    for (const QScreen *uno : QGuiApplication::screens()) monitores.push_back(uno->geometry());
    return monitores;
}

}  // namespace ondalis
