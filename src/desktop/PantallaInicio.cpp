#include "desktop/PantallaInicio.h"

#include <QApplication>
#include <QCursor>
#include <QHBoxLayout>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRegion>
#include <QScreen>
#include <QVBoxLayout>

#include "desktop/RegionImagen.h"
#include "settings/cRegistro.h"

// The macro declares a function of the global namespace.
static void RegistraPantallas() { Q_INIT_RESOURCE(pantallas); }

namespace ondalis {

namespace {

constexpr int kAlto = 320, kAncho = 480;        // of the picture, in logical pixels
constexpr QRect kCampo{32, 152, 416, 100};      // free for labels and button
constexpr QRgb kOrilla = 0xFF0B1730;            // the picture's outline
constexpr const char *kTintaBoton = "#000080";  // 8388608 where blue stands in the high byte
constexpr const char *kTintaBotonSenalado = "#1d4f9e";

QString EstiloBoton(const char *tinta) {
    return QStringLiteral(
               "QPushButton { background: #ffffff; color: %1; border: 3px solid #ffffff; border-radius: 6px;"
               " padding: 4px 18px; font-weight: bold; }"
               "QPushButton:focus { border: 3px solid #ffc233; }")
        .arg(QLatin1String(tinta));
}

// One sheet of the picture for the screen's density, and nothing green left in it: at its edge the shape is coarser
// than the picture.
QPixmap CargaImagen(qreal escala) {
    const bool doble = escala > 1;
    QImage imagen(doble ? QStringLiteral(":/pantallas/pantalla@2x.png") : QStringLiteral(":/pantallas/pantalla.png"));
    imagen = imagen.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < imagen.height(); ++y) {
        auto *fila = reinterpret_cast<QRgb *>(imagen.scanLine(y));
        for (int x = 0; x < imagen.width(); ++x)
            if ((fila[x] & 0xFFFFFF) == kVerdeTransparente) fila[x] = kOrilla;
    }
    imagen.setDevicePixelRatio(doble ? 2 : 1);
    return QPixmap::fromImage(imagen);
}

}  // namespace

PantallaInicio::PantallaInicio(cGeneral &general, std::function<void()> dejaCorrer)
    : QWidget(nullptr, Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      m_general(general),
      m_dejaCorrer(std::move(dejaCorrer)) {
    RegistraPantallas();
    setObjectName(QStringLiteral("PantallaInicio"));
    setFixedSize(kAncho, kAlto);
    setMouseTracking(true);
    CreaControles();
    Form_Load();
}

void PantallaInicio::CreaControles() {
    const auto rotulo = [this](const char *nombre, const QString &texto = {}) {
        auto *label = new QLabel(texto, this);
        label->setObjectName(QLatin1String(nombre));
        label->setStyleSheet(QStringLiteral("color: #ffffff;"));
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
        return label;
    };
    m_edicion = rotulo("Edicion");
    m_vmayor = rotulo("Vmayor");
    m_vmenor = rotulo("Vmenor");
    m_revision = rotulo("Revision");
    m_cargandoVoces = rotulo("CargandoVoces", QStringLiteral("Cargando voces..."));
    m_cargandoVoces->hide();
    m_salir = new QPushButton(QStringLiteral("Salir"), this);
    m_salir->setObjectName(QStringLiteral("Salir"));
    m_salir->setStyleSheet(EstiloBoton(kTintaBoton));
    m_salir->setAutoDefault(true);
    m_salir->setCursor(Qt::PointingHandCursor);
    m_salir->installEventFilter(this);
    connect(m_salir, &QPushButton::clicked, this, &QWidget::hide);

    auto *version = new QHBoxLayout;
    version->setSpacing(0);
    version->addWidget(rotulo("Version", QStringLiteral("Versión ")));
    version->addWidget(m_vmayor);
    version->addWidget(rotulo("Punto1", QStringLiteral(".")));
    version->addWidget(m_vmenor);
    version->addWidget(rotulo("Punto2", QStringLiteral(".")));
    version->addWidget(m_revision);
    version->addStretch();
    auto *pie = new QHBoxLayout;
    pie->addWidget(m_cargandoVoces);
    pie->addStretch();
    pie->addWidget(m_salir);
    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(kCampo.x(), kCampo.y(), kAncho - kCampo.x() - kCampo.width(),
                             kAlto - kCampo.y() - kCampo.height());
    todo->setSpacing(4);
    todo->addWidget(m_edicion);
    todo->addLayout(version);
    todo->addStretch();
    todo->addLayout(pie);
}

void PantallaInicio::Form_Load() {
    m_general.Ejecuta(QStringLiteral("PantallaInicio.Form_Load: "), cGeneral::Aviso::SoloLog, [this] {
        SetRegion();
        m_edicion->setText(QStringLiteral("Edición ") + QLatin1String(Producto::Comentarios));
        m_vmayor->setText(QString::number(Producto::VersionMayor));
        m_vmenor->setText(QString::number(Producto::VersionMenor));
        m_revision->setText(QString::number(Producto::Revision));
        setWindowTitle(QLatin1String(Producto::Titulo));
        // What the picture says, and the labels as one sentence.
        setAccessibleDescription(
            QStringLiteral("%1. %2. Versión %3")
                .arg(QLatin1String(Producto::Titulo), m_edicion->text(), cGeneral::MiVersion(QStringLiteral("."))));
    });
}

void PantallaInicio::SetRegion() {
    m_general.Ejecuta(QStringLiteral("PantallaInicio.SetRegion: "), cGeneral::Aviso::SoloLog, [this] {
        m_imagen = CargaImagen(devicePixelRatioF());
        // The shape is taken from the picture that is as large as the window.
        const QImage forma = QImage(QStringLiteral(":/pantallas/pantalla.png")).convertToFormat(QImage::Format_RGB32);
        if (forma.size() != size()) throw ErrorFallo{Fallo::De(Fallo::FicheroNoEncontrado)};
        std::vector<std::uint32_t> pixeles;
        pixeles.reserve(static_cast<std::size_t>(forma.width()) * static_cast<std::size_t>(forma.height()));
        for (int y = 0; y < forma.height(); ++y) {
            const auto *fila = reinterpret_cast<const QRgb *>(forma.constScanLine(y));
            for (int x = 0; x < forma.width(); ++x) pixeles.push_back(fila[x] & 0xFFFFFF);
        }
        const std::vector<QRect> partes = GetRegionImg(pixeles, size());
        QRegion region;
        region.setRects(partes.data(), static_cast<int>(partes.size()));
        setMask(region);
    });
}

void PantallaInicio::Centra() {
    const QScreen *pantalla = QGuiApplication::screenAt(QCursor::pos());
    if (!pantalla) pantalla = QGuiApplication::primaryScreen();
    if (pantalla) move(pantalla->availableGeometry().center() - rect().center());
}

void PantallaInicio::MuestraCargando() {
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_salir->hide();
    m_cargandoVoces->show();
    Centra();
    show();
}

void PantallaInicio::OcultaCargando() {
    m_cargandoVoces->hide();
    hide();
}

void PantallaInicio::MuestraAcercaDe() {
    setAttribute(Qt::WA_ShowWithoutActivating, false);
    setWindowTitle(QStringLiteral("Acerca de Ondalis"));
    m_salir->setText(QStringLiteral("Aceptar"));
    m_salir->show();
    if (!isVisible()) Centra();
    show();
    raise();
    activateWindow();
    m_salir->setFocus();
}

void PantallaInicio::paintEvent(QPaintEvent *) { QPainter(this).drawPixmap(0, 0, m_imagen); }

void PantallaInicio::keyPressEvent(QKeyEvent *evento) {
    const bool conBoton = m_salir->isVisible();
    if (conBoton && evento->key() == Qt::Key_Escape) return hide();
    if (conBoton && (evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter)) return m_salir->click();
    QWidget::keyPressEvent(evento);
}

// Over the button its caption is lighter; the way back over the window's background makes it dark again.
bool PantallaInicio::eventFilter(QObject *objeto, QEvent *evento) {
    if (objeto == m_salir && evento->type() == QEvent::Enter) m_salir->setStyleSheet(EstiloBoton(kTintaBotonSenalado));
    return QWidget::eventFilter(objeto, evento);
}

void PantallaInicio::mousePressEvent(QMouseEvent *evento) {
    m_etiqueta = QStringLiteral("mueve");
    m_agarre = evento->position().toPoint();
}

void PantallaInicio::mouseMoveEvent(QMouseEvent *evento) {
    m_salir->setStyleSheet(EstiloBoton(kTintaBoton));
    if (m_etiqueta != QLatin1String("mueve")) return;
    move(pos() + evento->position().toPoint() - m_agarre);
    if (m_dejaCorrer) m_dejaCorrer();
}

void PantallaInicio::mouseReleaseEvent(QMouseEvent *) { m_etiqueta.clear(); }

}  // namespace ondalis
