// The magnifier's window: always in front, with a frame to move, size and close it. It takes no focus when it appears:
// the user goes on typing where he was. Made when the option shows it; closed by hand it says so to its logic.
#pragma once

#include <QImage>
#include <QWidget>

#include "desktop/cLupa.h"

namespace ondalis {

class Lupa : public QWidget, public VistaLupa {
public:
    Lupa(CapturaPantalla &captura, Temporizador &chequeaPantalla, cRegistro &registro, cGeneral &general);

    // Loads it, if it isn't there yet, and shows it.
    void Muestra();
    // Closes it without touching the option; harmless when it isn't there.
    void Descarga();

    QSize Interior() const override;
    double Escala() const override { return devicePixelRatioF(); }
    QRect Sitio() const override { return {pos(), size()}; }
    std::vector<QRect> Monitores() const override;
    void Coloca(const QPoint &lugar, const QSize &tamano) override;
    void Pinta(ImagenPixeles cuadro) override;
    const QImage &Cuadro() const { return m_cuadro; }

protected:
    void paintEvent(QPaintEvent *evento) override;
    void closeEvent(QCloseEvent *evento) override;
    void changeEvent(QEvent *evento) override;

private:
    cLupa m_logica;
    bool m_cargada = false;
    ImagenPixeles m_pixeles;  // what m_cuadro looks at
    QImage m_cuadro;
};

}  // namespace ondalis
