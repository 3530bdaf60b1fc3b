#include "reader/DeslizadorSalto.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QWheelEvent>

namespace ondalis {

namespace {

constexpr int kLargo = 220;     // logical pixels at least
constexpr int kAltoMarcas = 9;  // the middle mark; the others are shorter
constexpr int kMarcas[] = {-5, -3, -1, 0, 1, 3, 5};

// As a screen reader takes it: the words, not the places.
class SaltoAccesible : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit SaltoAccesible(DeslizadorSalto *barra) : QAccessibleWidget(barra, QAccessible::Slider), m_barra(*barra) {}

    void *interface_cast(QAccessible::InterfaceType tipo) override {
        if (tipo == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface *>(this);
        return QAccessibleWidget::interface_cast(tipo);
    }
    QVariant currentValue() const override { return m_barra.value() - DeslizadorSalto::Centro; }
    void setCurrentValue(const QVariant &valor) override { m_barra.setValue(valor.toInt() + DeslizadorSalto::Centro); }
    QVariant maximumValue() const override { return DeslizadorSalto::Maximo - DeslizadorSalto::Centro; }
    QVariant minimumValue() const override { return DeslizadorSalto::Minimo - DeslizadorSalto::Centro; }
    QVariant minimumStepSize() const override { return 1; }

private:
    DeslizadorSalto &m_barra;
};

QAccessibleInterface *Crea(const QString &, QObject *objeto) {
    auto *barra = qobject_cast<DeslizadorSalto *>(objeto);
    return barra ? new SaltoAccesible(barra) : nullptr;
}

}  // namespace

DeslizadorSalto::DeslizadorSalto(const char *nombre, const QString &rotulo, QWidget *padre)
    : QSlider(Qt::Horizontal, padre) {
    QAccessible::installFactory(Crea);  // installing it again changes nothing
    setObjectName(QLatin1String(nombre));
    setAccessibleName(rotulo);
    setFocusPolicy(Qt::StrongFocus);
    setRange(Minimo, Maximo);
    setPageStep(2);
    setValue(Centro);
}

QSize DeslizadorSalto::sizeHint() const {
    const QSize suya = QSlider::sizeHint();
    return {std::max(suya.width(), kLargo), std::max(suya.height(), fontMetrics().height()) + 2 * kAltoMarcas};
}

void DeslizadorSalto::paintEvent(QPaintEvent *evento) {
    QSlider::paintEvent(evento);
    QStyleOptionSlider opcion;
    initStyleOption(&opcion);
    const int mango = style()->pixelMetric(QStyle::PM_SliderLength, &opcion, this);
    QPainter pintor(this);
    pintor.setPen(palette().color(QPalette::WindowText));
    for (const int marca : kMarcas) {
        const int x = mango / 2 + QStyle::sliderPositionFromValue(Minimo, Maximo, marca + Centro, width() - mango);
        pintor.drawLine(x, height() - 1 - (marca == 0 ? kAltoMarcas : kAltoMarcas / 2), x, height() - 1);
    }
}

// The wheel moves the bar that is being used, not the one that comes under the pointer.
void DeslizadorSalto::wheelEvent(QWheelEvent *evento) {
    if (hasFocus())
        QSlider::wheelEvent(evento);
    else
        evento->ignore();
}

}  // namespace ondalis
