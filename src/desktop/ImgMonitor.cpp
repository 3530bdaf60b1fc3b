#include "desktop/ImgMonitor.h"

#include <QPainter>
#include <QPainterPath>

namespace ondalis {

namespace {

// All in units of a drawing of this size, whatever the widget's.
constexpr QSizeF kDibujo{220, 170};
constexpr QRectF kMarco{8, 6, 204, 132};
constexpr QRectF kPantalla{16, 14, 188, 116};
constexpr qreal kBarra = 18;  // height of the task bar

QPainterPath Bocadillo(const QRectF &caja) {
    QPainterPath bocadillo;
    const QRectF globo(caja.left(), caja.top(), caja.width(), caja.height() * 0.76);
    bocadillo.addRoundedRect(globo, globo.height() * 0.35, globo.height() * 0.35);
    QPainterPath pico;
    pico.moveTo(globo.left() + globo.width() * 0.22, globo.bottom() - 1);
    pico.lineTo(globo.left() + globo.width() * 0.18, caja.bottom());
    pico.lineTo(globo.left() + globo.width() * 0.52, globo.bottom() - 1);
    pico.closeSubpath();
    return bocadillo.united(pico);
}

void PintaBocadillo(QPainter &pintor, const QRectF &caja) {
    pintor.setPen(QPen(QColor(0x1d, 0x3f, 0x73), caja.width() * 0.06));
    pintor.setBrush(Qt::white);
    pintor.drawPath(Bocadillo(caja));
    pintor.setPen(QPen(QColor(0x1d, 0x3f, 0x73), caja.height() * 0.09, Qt::SolidLine, Qt::RoundCap));
    for (const qreal alto : {0.24, 0.42, 0.6 - 0.04})
        pintor.drawLine(
            QPointF(caja.left() + caja.width() * 0.2, caja.top() + caja.height() * alto),
            QPointF(caja.right() - caja.width() * (alto > 0.5 ? 0.45 : 0.2), caja.top() + caja.height() * alto));
}

void PintaMonitor(QPainter &pintor) {
    pintor.setPen(QPen(QColor(0x30, 0x36, 0x40), 1.5));
    pintor.setBrush(QColor(0xb8, 0xbf, 0xc9));
    pintor.drawPolygon(QPolygonF({{92, 136}, {128, 136}, {136, 160}, {84, 160}}));
    pintor.drawRoundedRect(QRectF(62, 157, 96, 9), 4, 4);
    pintor.setBrush(QColor(0x4a, 0x52, 0x5e));
    pintor.drawRoundedRect(kMarco, 8, 8);
    pintor.setPen(Qt::NoPen);
    pintor.setBrush(QColor(0x5b, 0x8d, 0xc4));
    pintor.drawRect(kPantalla);
    pintor.setBrush(QColor(0xe8, 0xec, 0xf1));
    pintor.drawRect(QRectF(kPantalla.left(), kPantalla.bottom() - kBarra, kPantalla.width(), kBarra));
    pintor.setBrush(QColor(0x7d, 0x88, 0x96));
    for (const qreal x : {22.0, 46.0, 70.0}) pintor.drawRoundedRect(QRectF(x, kPantalla.bottom() - 14, 20, 10), 2, 2);
}

}  // namespace

ImgMonitor::ImgMonitor(QWidget *padre) : QWidget(padre) {
    setObjectName(QStringLiteral("ImgMonitor"));
    setAccessibleName(QStringLiteral("Dibujo: un monitor con el icono de Ondalis en la barra de tareas"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize ImgMonitor::sizeHint() const { return kDibujo.toSize(); }

void ImgMonitor::paintEvent(QPaintEvent *) {
    QPainter pintor(this);
    pintor.setRenderHint(QPainter::Antialiasing);
    pintor.scale(width() / kDibujo.width(), height() / kDibujo.height());
    PintaMonitor(pintor);
    PintaBocadillo(pintor, QRectF(176, kPantalla.bottom() - 16, 16, 15));  // where it stands on the bar
    PintaBocadillo(pintor, QRectF(128, 34, 58, 50));                       // and how it looks
    pintor.setBrush(Qt::NoBrush);
    pintor.setPen(QPen(QColor(0xd0, 0x30, 0x20), 2.5));
    pintor.drawEllipse(QPointF(184, kPantalla.bottom() - 8.5), 13, 12);
}

}  // namespace ondalis
