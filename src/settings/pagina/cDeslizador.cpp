#include "settings/pagina/cDeslizador.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QSlider>

#include "settings/pagina/cCajaNumero.h"

namespace ondalis {

namespace {
constexpr int kLargoBarra = 110;  // logical pixels at least
}

cDeslizador::cDeslizador(const char *barra, const char *caja, const QString &rotulo, QWidget *padre)
    : QWidget(padre), m_barra(new QSlider(Qt::Horizontal, this)) {
    m_barra->setObjectName(QLatin1String(barra));
    m_barra->setAccessibleName(rotulo);
    m_barra->setFocusPolicy(Qt::StrongFocus);
    m_barra->setMinimumWidth(kLargoBarra);
    m_barra->installEventFilter(this);
    setFocusProxy(m_barra);
    auto *fila = new QHBoxLayout(this);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->addWidget(m_barra, 1);
    connect(m_barra, &QSlider::valueChanged, this, &cDeslizador::Cambia);
    if (!caja) return;
    m_caja = new cCajaNumero(caja, rotulo + QStringLiteral(", valor"), this);
    m_caja->setRange(m_barra->minimum(), m_barra->maximum());
    fila->addWidget(m_caja);
    connect(m_barra, &QSlider::valueChanged, m_caja, &QSpinBox::setValue);
    connect(m_caja, &QSpinBox::valueChanged, m_barra, &QSlider::setValue);
}

void cDeslizador::SetRango(int minimo, int maximo, int pasoGrande) {
    m_barra->setRange(minimo, maximo);
    m_barra->setSingleStep(1);
    m_barra->setPageStep(pasoGrande);
    if (m_caja) m_caja->setRange(minimo, maximo);
}

int cDeslizador::Valor() const { return m_barra->value(); }

void cDeslizador::SetValor(int valor) { m_barra->setValue(valor); }

// The wheel moves the bar that is being used, not the one that a scrolled page brings under the pointer.
bool cDeslizador::eventFilter(QObject *objeto, QEvent *evento) {
    if (objeto == m_barra && evento->type() == QEvent::Wheel && !m_barra->hasFocus()) {
        evento->ignore();
        return true;
    }
    return QWidget::eventFilter(objeto, evento);
}

}  // namespace ondalis
