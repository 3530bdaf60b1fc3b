// The icon in the notification area, by whichever protocol the desktop offers. Eleven pictures, a tooltip, a menu on
// the right button, the configuration on a double click. Without a place for it the program goes on; the icon comes
// when there is one. Owned by main. Main thread.
#pragma once

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QIcon>
#include <QObject>
#include <QSystemTrayIcon>
#include <array>
#include <functional>
#include <memory>

#include "desktop/IconoDelBus.h"
#include "desktop/VigiaBandeja.h"
#include "reader/Puertos.h"
#include "settings/cLog.h"

class QMenu;

namespace ondalis {

class cBandeja : public QObject, public cIconoBarra {
public:
    cBandeja(VigiaBandeja &vigia, IconoDelBus &propio, cLog &log);
    ~cBandeja() override;

    // The first picture brings the icon up; the same one again costs nothing.
    void SetImagen(int numero) override;
    int Imagen() const { return m_numero; }

    void SetMenu(QMenu *menu);              // null: none; stays the caller's
    QMenu *Menu() const { return m_menu; }  // what the right button opens
    void AlDobleClick(std::function<void()> aviso) { m_alDobleClick = std::move(aviso); }
    bool Visible() const { return m_mostradoPropio || (m_icono && m_icono->isVisible()); }

    // There is a panel that shows the icon, or would as soon as there is one. The toolkit settles for a protocol with
    // the first icon of the process. Where that was the one of windows, an icon of our own serves the bus; where it was
    // the bus, a panel that takes windows in is none.
    bool HaySitio();
    // Called when HaySitio may have changed.
    void AlCambiarSitio(std::function<void()> aviso) { m_alCambiarSitio = std::move(aviso); }

    // A click of the desktop. Hosts of the newer protocol never tell of a double click: two single ones within the
    // desktop's interval are one. Where the icon is a window of ours the menu waits for the right button's release.
    void Pulsado(QSystemTrayIcon::ActivationReason motivo);

protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    enum class Protocolo { Ninguno, Bus, X };
    void Cambia();
    void Reparte();
    void Crea();
    std::vector<ImagenPixeles> Pixeles();
    void AbreMenu(const QPoint &donde);
    void IntentaMenu(const QPoint &donde);
    void PonMenu();
    const QIcon &Icono(int numero);

    VigiaBandeja &m_vigia;
    IconoDelBus &m_propio;
    cLog &m_log;
    std::array<QIcon, NumImagenes> m_iconos;  // loaded on first use
    std::unique_ptr<QSystemTrayIcon> m_icono;
    Protocolo m_protocolo = Protocolo::Ninguno;
    bool m_mostradoPropio = false;
    QMenu *m_menu = nullptr;
    int m_numero = 0;
    QElapsedTimer m_desdeClick;
    QDeadlineTimer m_plazoMenu;
    std::function<void()> m_alDobleClick;
    std::function<void()> m_alCambiarSitio;
};

}  // namespace ondalis
