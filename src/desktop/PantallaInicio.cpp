#include "desktop/PantallaInicio.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "desktop/RegionImagen.h"
#include "settings/cRegistro.h"

namespace ondalis {

namespace {

constexpr int kCola = 34;   // height of the bubble's tail
constexpr int kMargen = 2;  // no row is opaque from edge to edge: the tail would be solid to its sides
constexpr int kRadio = 34;
const QColor kTinta(0x14, 0x21, 0x3d);
const QColor kAzul(0, 0, 0x80);  // 8388608, blue in the high byte

// Hard edges, so that no pixel is half transparent.
QImage DibujaGlobo(const QSize &tamano) {
    QImage imagen(tamano, QImage::Format_RGB32);
    imagen.fill(kTransparente);
    QPainter pintor(&imagen);
    QPainterPath globo;
    const QRectF cuerpo(kMargen + 1, kMargen + 1, tamano.width() - 2 * kMargen - 3,
                        tamano.height() - kCola - kMargen - 3);
    globo.addRoundedRect(cuerpo, kRadio, kRadio);
    QPainterPath cola;
    cola.moveTo(cuerpo.left() + 46, cuerpo.bottom() - 4);
    cola.lineTo(cuerpo.left() + 46, tamano.height() - kMargen - 2);
    cola.lineTo(cuerpo.left() + 100, cuerpo.bottom() - 4);
    pintor.setPen(QPen(kTinta, 3, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    pintor.setBrush(Qt::white);
    pintor.drawPath(globo.united(cola));
    return imagen;
}

}  // namespace

PantallaInicio::PantallaInicio(cGeneral &general, std::function<void()> dejaCorrer)
    : m_general(general), m_dejaCorrer(std::move(dejaCorrer)) {
    setObjectName(QStringLiteral("PantallaInicio"));
    setWindowTitle(QLatin1String(Producto::Titulo));
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setMouseTracking(true);
    m_general.Ejecuta(QStringLiteral("PantallaInicio.Form_Load: "), cGeneral::Aviso::SoloLog, [this] { Coloca(); });
    m_general.Ejecuta(QStringLiteral("PantallaInicio.SetRegion: "), cGeneral::Aviso::SoloLog, [this] { SetRegion(); });
}

QLabel *PantallaInicio::Rotulo(const char *nombre, const QString &texto, double cuerpo, bool negrita) {
    auto *rotulo = new QLabel(texto, this);
    rotulo->setObjectName(QLatin1String(nombre));
    rotulo->setAccessibleName(texto);
    QFont letra = font();
    letra.setPointSizeF(letra.pointSizeF() * cuerpo);
    letra.setBold(negrita);
    rotulo->setFont(letra);
    rotulo->setMouseTracking(true);
    return rotulo;
}

// The bubble is white on every theme: dark ink is its best contrast.
void PantallaInicio::Coloca() {
    QPalette paleta;
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        paleta.setColor(papel, kTinta);
    for (const auto papel : {QPalette::Window, QPalette::Base}) paleta.setColor(papel, Qt::white);
    paleta.setColor(QPalette::Button, QColor(0xe8, 0xeb, 0xf0));
    setPalette(paleta);

    auto *version = new QHBoxLayout;
    version->setSpacing(0);
    version->addWidget(Rotulo("Edicion", QStringLiteral("Edición ") + QLatin1String(Producto::Comentarios), 1.1));
    version->addSpacing(16);
    version->addWidget(Rotulo("RotuloVersion", QStringLiteral("Versión "), 1.1));
    version->addWidget(Rotulo("Vmayor", QString::number(Producto::VersionMayor), 1.1));
    version->addWidget(Rotulo("Punto1", QStringLiteral("."), 1.1));
    version->addWidget(Rotulo("Vmenor", QString::number(Producto::VersionMenor), 1.1));
    version->addWidget(Rotulo("Punto2", QStringLiteral("."), 1.1));
    version->addWidget(Rotulo("Revision", QString::number(Producto::Revision), 1.1));
    version->addStretch();

    m_cargandoVoces = Rotulo("CargandoVoces", QStringLiteral("Cargando voces..."), 1.2);
    m_cargandoVoces->hide();
    m_salir = new QPushButton(QStringLiteral("Salir"), this);
    m_salir->setObjectName(QStringLiteral("Salir"));
    m_salir->setAccessibleName(m_salir->text());
    m_salir->setDefault(true);
    connect(m_salir, &QPushButton::clicked, this, &QWidget::hide);

    auto *pie = new QHBoxLayout;
    pie->addWidget(m_cargandoVoces);
    pie->addStretch();
    pie->addWidget(m_salir);
    auto *columna = new QVBoxLayout(this);
    columna->setContentsMargins(32, 24, 32, 22 + kCola);
    columna->addWidget(Rotulo("Titulo", QLatin1String(Producto::Titulo), 3.2, true));
    columna->addLayout(version);
    columna->addStretch();
    columna->addLayout(pie);
    resize(QSize(420, 230).expandedTo(sizeHint()));
}

void PantallaInicio::SetRegion() {
    m_imagen = DibujaGlobo(size());
    setMask(GetRegionImg(m_imagen));
    if (const QScreen *pantalla = QGuiApplication::primaryScreen())
        move(pantalla->availableGeometry().center() - rect().center());
}

void PantallaInicio::MuestraCargando() {
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_cargandoVoces->show();
    show();
}

void PantallaInicio::OcultaCargando() {
    m_cargandoVoces->hide();
    hide();
}

void PantallaInicio::MuestraAcercaDe() {
    m_salir->setText(QStringLiteral("Aceptar"));
    m_salir->setAccessibleName(m_salir->text());
    setAttribute(Qt::WA_ShowWithoutActivating, false);
    m_salir->setFocus();
    show();
    raise();
    activateWindow();
}

void PantallaInicio::paintEvent(QPaintEvent *) { QPainter(this).drawImage(0, 0, m_imagen); }

void PantallaInicio::mousePressEvent(QMouseEvent *evento) {
    m_etiqueta = QStringLiteral("mueve");
    m_agarre = evento->position().toPoint();
}

void PantallaInicio::mouseMoveEvent(QMouseEvent *evento) {
    QPalette paleta = m_salir->palette();
    paleta.setColor(QPalette::ButtonText, kAzul);
    m_salir->setPalette(paleta);
    if (m_etiqueta != QLatin1String("mueve")) return;
    move(pos() + evento->position().toPoint() - m_agarre);
    if (m_dejaCorrer) m_dejaCorrer();
}

void PantallaInicio::mouseReleaseEvent(QMouseEvent *) { m_etiqueta.clear(); }

}  // namespace ondalis
