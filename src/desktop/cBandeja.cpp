#include "desktop/cBandeja.h"

#include <QApplication>
#include <QImage>
#include <QMenu>
#include <QMouseEvent>
#include <QTimer>
#include <QWindow>

#include "settings/cRegistro.h"

// The macro declares a function of the global namespace.
static void RegistraIconos() { Q_INIT_RESOURCE(iconos); }

namespace ondalis {

namespace {
constexpr int kTamanos[] = {16, 22, 24, 32, 48, 64, 128};
// The widget of an icon in a window, as Qt 6 names it.
constexpr int kFocoMs = 300, kVueltaMs = 10;  // the toolkit takes 100 ms over a lost focus
constexpr const char *kVentanaDelToolkit = "QSystemTrayIconSys";
}  // namespace

cBandeja::cBandeja(VigiaBandeja &vigia, IconoDelBus &propio, cLog &log) : m_vigia(vigia), m_propio(propio), m_log(log) {
    RegistraIconos();
    m_vigia.SetAlAparecer([this] { Cambia(); });
    m_vigia.SetAlDesaparecer([this] { Cambia(); });
    m_propio.SetAlPulsar([this] { Pulsado(QSystemTrayIcon::Trigger); });
    // The panel counts device pixels.
    m_propio.SetAlPedirMenu([this](const QPoint &donde) { AbreMenu(donde / qGuiApp->devicePixelRatio()); });
}

cBandeja::~cBandeja() {
    m_vigia.SetAlAparecer({});
    m_vigia.SetAlDesaparecer({});
    m_propio.SetAlPulsar({});
    m_propio.SetAlPedirMenu({});
}

void cBandeja::Cambia() {
    if (m_numero != 0 && m_vigia.HayAnfitrion()) Reparte();
    if (m_alCambiarSitio) m_alCambiarSitio();
}

bool cBandeja::HaySitio() { return m_protocolo == Protocolo::Bus ? m_vigia.HayEnElBus() : m_vigia.HayAnfitrion(); }

void cBandeja::SetImagen(int numero) {
    if (numero < 1 || numero > NumImagenes || numero == m_numero) return;
    const bool primera = m_numero == 0;
    m_numero = numero;
    if (m_mostradoPropio) {
        m_propio.Cambia(Pixeles());
    } else if (m_icono) {
        m_icono->setIcon(Icono(numero));
    } else if (primera) {
        if (m_vigia.HayAnfitrion())
            Reparte();
        else
            m_log.Escribe(
                QStringLiteral("cIconoBarra.Init: "),
                QStringLiteral("el escritorio no tiene área de notificación, al crear el icono de notificación"));
    }
}

// A window of the toolkit as long as a panel takes windows in, else on the bus: by the toolkit if that is what it has
// settled for and its connection still stands, else by ourselves.
void cBandeja::Reparte() {
    const bool enElBus = m_vigia.HayEnElBus();
    if (m_protocolo == Protocolo::Ninguno)
        m_protocolo = enElBus && m_vigia.LlegaElToolkit() ? Protocolo::Bus : Protocolo::X;
    const bool puede = m_protocolo == Protocolo::X ? m_vigia.HayEnX() : m_vigia.LlegaElToolkit();
    m_mostradoPropio = enElBus && !puede;
    if (m_mostradoPropio) {
        m_icono.reset();
        m_propio.Muestra(Pixeles());
    } else {
        m_propio.Quita();
        Crea();
    }
}

// Anew each time on the bus: an icon that was made for a watcher that is gone doesn't come back by itself with the next
// one. The windows of the other kind are moved by the toolkit.
void cBandeja::Crea() {
    if (m_icono && m_protocolo == Protocolo::X) return;
    m_icono = std::make_unique<QSystemTrayIcon>(Icono(m_numero));
    m_icono->setToolTip(QLatin1String(Producto::Titulo));
    PonMenu();
    if (m_protocolo == Protocolo::X) qApp->installEventFilter(this);  // once, however often it is asked for
    connect(m_icono.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason motivo) { Pulsado(motivo); });
    m_icono->show();
}

std::vector<ImagenPixeles> cBandeja::Pixeles() {
    std::vector<ImagenPixeles> imagenes;
    for (const int tamano : {16, 22, 24, 32, 48}) {
        const QImage imagen =
            Icono(m_numero).pixmap(QSize(tamano, tamano), 1.0).toImage().convertToFormat(QImage::Format_ARGB32);
        ImagenPixeles una{imagen.width(), imagen.height(), {}};
        for (int y = 0; y < imagen.height(); ++y) {
            const auto *fila = reinterpret_cast<const QRgb *>(imagen.constScanLine(y));
            una.pixeles.insert(una.pixeles.end(), fila, fila + imagen.width());
        }
        imagenes.push_back(std::move(una));
    }
    return imagenes;
}

void cBandeja::AbreMenu(const QPoint &donde) {
    m_plazoMenu.setRemainingTime(kFocoMs);
    IntentaMenu(donde);
}

// A window of ours that has just been closed still has the focus for a moment, and its loss would close the menu again.
void cBandeja::IntentaMenu(const QPoint &donde) {
    const QWindow *foco = QGuiApplication::focusWindow();
    if (foco && !foco->isVisible() && !m_plazoMenu.hasExpired())
        QTimer::singleShot(kVueltaMs, this, [this, donde] { IntentaMenu(donde); });
    else if (m_menu)
        m_menu->popup(donde);
}

// On the bus the panel draws the menu. In a window of ours the toolkit would open it at the button's press already.
void cBandeja::PonMenu() {
    if (m_icono) m_icono->setContextMenu(m_protocolo == Protocolo::Bus ? m_menu : nullptr);
}

void cBandeja::SetMenu(QMenu *menu) {
    m_menu = menu;
    PonMenu();
}

void cBandeja::Pulsado(QSystemTrayIcon::ActivationReason motivo) {
    const bool segundo = motivo == QSystemTrayIcon::Trigger && m_desdeClick.isValid() &&
                         !m_desdeClick.hasExpired(QApplication::doubleClickInterval());
    if (motivo == QSystemTrayIcon::DoubleClick || segundo) {
        m_desdeClick.invalidate();
        if (m_alDobleClick) m_alDobleClick();
    } else if (motivo == QSystemTrayIcon::Trigger) {
        m_desdeClick.start();
    }
}

// The toolkit tells of the right button's press, and of the second of two quick ones not at all. The release comes to
// its window wherever the pointer is by then.
bool cBandeja::eventFilter(QObject *objeto, QEvent *evento) {
    if (evento->type() == QEvent::MouseButtonRelease &&
        (objeto->inherits(kVentanaDelToolkit) || objeto->objectName() == QLatin1String(kVentanaDelToolkit))) {
        const auto &raton = static_cast<const QMouseEvent &>(*evento);
        if (raton.button() == Qt::RightButton) AbreMenu(raton.globalPosition().toPoint());
    }
    return QObject::eventFilter(objeto, evento);
}

const QIcon &cBandeja::Icono(int numero) {
    QIcon &icono = m_iconos[static_cast<std::size_t>(numero - 1)];
    if (icono.isNull())
        for (const int tamano : kTamanos)
            icono.addFile(QStringLiteral(":/iconos/%1-%2.png").arg(numero).arg(tamano), QSize(tamano, tamano));
    return icono;
}

}  // namespace ondalis
