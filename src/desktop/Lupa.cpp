#include "desktop/Lupa.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

namespace ondalis {

namespace {
constexpr QSize kMinimo{80, 60};
}

Lupa::Lupa(CapturaPantalla &captura, Temporizador &chequeaPantalla, cRegistro &registro, cGeneral &general)
    : QWidget(nullptr, Qt::Window | Qt::WindowStaysOnTopHint),
      m_logica(captura, *this, chequeaPantalla, registro, general) {
    setObjectName(QStringLiteral("Lupa"));
    setWindowTitle(QLatin1String(Producto::Titulo));
    setAccessibleName(QStringLiteral("Lupa de Ondalis"));
    setAccessibleDescription(QStringLiteral("Muestra al doble de su tamaño lo que rodea al puntero del ratón."));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(kMinimo);
}

void Lupa::Muestra() {
    if (!m_cargada) m_logica.Form_Load();
    m_cargada = true;
    show();
    m_logica.SetVisible(!isMinimized());
}

void Lupa::Descarga() {
    if (!m_cargada) return;
    m_logica.Form_QueryUnload(cLupa::PorElPrograma);
    m_logica.Form_Unload();
    m_cargada = false;
    hide();
}

void Lupa::closeEvent(QCloseEvent *evento) {
    // A session that ends closes windows too; that is not the user's hand.
    if (m_cargada && evento->spontaneous() && !qGuiApp->isSavingSession()) {
        m_logica.Form_QueryUnload(cLupa::PorElUsuario);
        m_logica.Form_Unload();
        m_cargada = false;
    }
    evento->accept();
}

void Lupa::changeEvent(QEvent *evento) {
    if (evento->type() == QEvent::WindowStateChange && m_cargada) m_logica.SetVisible(!isMinimized());
    QWidget::changeEvent(evento);
}

QSize Lupa::Interior() const { return {qRound(width() * devicePixelRatioF()), qRound(height() * devicePixelRatioF())}; }

std::vector<QRect> Lupa::Monitores() const {
    std::vector<QRect> monitores;
    for (const QScreen *uno : QGuiApplication::screens()) monitores.push_back(uno->geometry());
    return monitores;
}

void Lupa::Coloca(const QPoint &lugar, const QSize &tamano) {
    resize(tamano);
    move(lugar);
}

void Lupa::Pinta(ImagenPixeles cuadro) {
    m_pixeles = std::move(cuadro);
    m_cuadro = QImage(reinterpret_cast<const uchar *>(m_pixeles.pixeles.data()), m_pixeles.ancho, m_pixeles.alto,
                      m_pixeles.ancho * 4, QImage::Format_RGB32);
    m_cuadro.setDevicePixelRatio(devicePixelRatioF());
    update();
}

void Lupa::paintEvent(QPaintEvent *) {
    QPainter pintor(this);
    if (m_cuadro.isNull() || m_cuadro.size() != Interior()) pintor.fillRect(rect(), Qt::black);
    if (!m_cuadro.isNull()) pintor.drawImage(QPoint(0, 0), m_cuadro);
}

}  // namespace ondalis
