#include "desktop/cBandeja.h"

#include <QApplication>
#include <QMenu>
#include <QMouseEvent>

#include "settings/cRegistro.h"

// The macro declares a function of the global namespace.
static void RegistraIconos() { Q_INIT_RESOURCE(iconos); }

namespace ondalis {

namespace {
constexpr int kTamanos[] = {16, 22, 24, 32, 48, 64, 128};
}

cBandeja::cBandeja(VigiaBandeja &vigia, cLog &log) : m_vigia(vigia), m_log(log) {
    RegistraIconos();
    m_vigia.SetAlAparecer([this] { Aparece(); });
    m_vigia.SetAlDesaparecer([this] {
        if (m_alCambiarSitio) m_alCambiarSitio();
    });
}

cBandeja::~cBandeja() {
    m_vigia.SetAlAparecer({});
    m_vigia.SetAlDesaparecer({});
}

void cBandeja::Aparece() {
    if (m_numero != 0) Crea();
    if (m_alCambiarSitio) m_alCambiarSitio();
}

bool cBandeja::HaySitio() {
    switch (m_protocolo) {
        case Protocolo::Bus: return m_vigia.HayEnElBus();
        case Protocolo::X: return m_vigia.HayEnX();
        default: return m_vigia.HayAnfitrion();
    }
}

void cBandeja::SetImagen(int numero) {
    if (numero < 1 || numero > NumImagenes || numero == m_numero) return;
    const bool primera = m_numero == 0;
    m_numero = numero;
    if (m_icono) {
        m_icono->setIcon(Icono(numero));
    } else if (primera) {
        if (m_vigia.HayAnfitrion())
            Crea();
        else
            m_log.Escribe(
                QStringLiteral("cIconoBarra.Init: "),
                QStringLiteral("el escritorio no tiene área de notificación, al crear el icono de notificación"));
    }
}

// Anew each time on the bus: an icon that was made for a watcher that is gone doesn't come back by itself with the next
// one. The windows of the other kind are moved by the toolkit.
void cBandeja::Crea() {
    if (m_protocolo == Protocolo::Ninguno) m_protocolo = m_vigia.HayEnElBus() ? Protocolo::Bus : Protocolo::X;
    if (m_icono && m_protocolo == Protocolo::X) return;
    m_icono = std::make_unique<QSystemTrayIcon>(Icono(m_numero));
    m_icono->setToolTip(QLatin1String(Producto::Titulo));
    PonMenu();
    connect(m_icono.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason motivo) { Pulsado(motivo); });
    m_icono->show();
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
    if (motivo == QSystemTrayIcon::Context && m_protocolo == Protocolo::X) {
        qApp->installEventFilter(this);  // for the time of one press
        return;
    }
    const bool segundo = motivo == QSystemTrayIcon::Trigger && m_desdeClick.isValid() &&
                         !m_desdeClick.hasExpired(QApplication::doubleClickInterval());
    if (motivo == QSystemTrayIcon::DoubleClick || segundo) {
        m_desdeClick.invalidate();
        if (m_alDobleClick) m_alDobleClick();
    } else if (motivo == QSystemTrayIcon::Trigger) {
        m_desdeClick.start();
    }
}

bool cBandeja::eventFilter(QObject *objeto, QEvent *evento) {
    if (evento->type() == QEvent::MouseButtonPress) qApp->removeEventFilter(this);  // the release went astray
    if (evento->type() == QEvent::MouseButtonRelease) {
        const auto &raton = static_cast<const QMouseEvent &>(*evento);
        if (raton.button() == Qt::RightButton) {
            qApp->removeEventFilter(this);
            if (m_menu) m_menu->popup(raton.globalPosition().toPoint());
        }
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
