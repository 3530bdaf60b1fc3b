#include "desktop/cSuperficieProgreso.h"

#include <QPainter>

namespace ondalis {

namespace {
// Blue stands in the high byte.
QColor ColorDe(std::uint32_t color) {
    return QColor(static_cast<int>(color & 0xff), static_cast<int>(color >> 8 & 0xff),
                  static_cast<int>(color >> 16 & 0xff));
}
}  // namespace

cSuperficieProgreso::cSuperficieProgreso(QWidget *padre) : QWidget(padre) { setAttribute(Qt::WA_OpaquePaintEvent); }

void cSuperficieProgreso::SetColores(std::uint32_t fondo, std::uint32_t frente) {
    m_fondo = ColorDe(fondo);
    m_frente = ColorDe(frente);
    update();
}

void cSuperficieProgreso::Dibuja(float ancho) {
    m_ancho = ancho;
    repaint();  // at once: its caller works on
}

void cSuperficieProgreso::paintEvent(QPaintEvent *) {
    QPainter pintor(this);
    pintor.fillRect(rect(), m_fondo);
    pintor.fillRect(QRectF(0, 0, static_cast<qreal>(m_ancho), height()), m_frente);
}

}  // namespace ondalis
