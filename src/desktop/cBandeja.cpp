#include "desktop/cBandeja.h"

#include <QApplication>
#include <QMenu>

#include "settings/cRegistro.h"

// The macro declares a function of the global namespace.
static void RegistraIconos() { Q_INIT_RESOURCE(iconos); }

namespace ondalis {

namespace {
constexpr int kTamanos[] = {16, 22, 24, 32, 48, 64, 128};
}

cBandeja::cBandeja(VigiaBandeja &vigia, cLog &log) : m_vigia(vigia), m_log(log) {
    RegistraIconos();
    m_vigia.SetAlAparecer([this] {
        if (m_numero != 0) Crea();
    });
}

cBandeja::~cBandeja() { m_vigia.SetAlAparecer({}); }

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

// Anew each time: an icon that was made for a host that is gone doesn't come back by itself with the next one.
void cBandeja::Crea() {
    m_icono = std::make_unique<QSystemTrayIcon>(Icono(m_numero));
    m_icono->setToolTip(QLatin1String(Producto::Titulo));
    m_icono->setContextMenu(m_menu);
    QObject::connect(m_icono.get(), &QSystemTrayIcon::activated, m_icono.get(),
                     [this](QSystemTrayIcon::ActivationReason motivo) { Pulsado(motivo); });
    m_icono->show();
}

void cBandeja::SetMenu(QMenu *menu) {
    m_menu = menu;
    if (m_icono) m_icono->setContextMenu(menu);
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

const QIcon &cBandeja::Icono(int numero) {
    QIcon &icono = m_iconos[static_cast<std::size_t>(numero - 1)];
    if (icono.isNull())
        for (const int tamano : kTamanos)
            icono.addFile(QStringLiteral(":/iconos/%1-%2.png").arg(numero).arg(tamano), QSize(tamano, tamano));
    return icono;
}

}  // namespace ondalis
