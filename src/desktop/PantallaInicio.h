// The window in the shape of a speech bubble: the splash while the voices load, the about box later. Made by main;
// stays hidden between its showings. Main thread.
#pragma once

#include <QDialog>
#include <QImage>
#include <functional>

#include "settings/cGeneral.h"

class QLabel;
class QPushButton;

namespace ondalis {

class PantallaInicio : public QDialog {
public:
    // `dejaCorrer`: lets pending events run while the window is dragged; may be empty.
    explicit PantallaInicio(cGeneral &general, std::function<void()> dejaCorrer = {});

    // As a splash: without taking the focus away, with "Cargando voces...".
    void MuestraCargando();
    void OcultaCargando();
    // Turns it into the about box and shows it.
    void MuestraAcercaDe();

protected:
    void paintEvent(QPaintEvent *evento) override;
    void mousePressEvent(QMouseEvent *evento) override;
    void mouseMoveEvent(QMouseEvent *evento) override;
    void mouseReleaseEvent(QMouseEvent *evento) override;

private:
    void Coloca();
    void SetRegion();
    QLabel *Rotulo(const char *nombre, const QString &texto, double cuerpo, bool negrita = false);

    cGeneral &m_general;
    std::function<void()> m_dejaCorrer;
    QImage m_imagen;  // ImgTransparente: green where the window isn't
    QLabel *m_cargandoVoces = nullptr;
    QPushButton *m_salir = nullptr;
    QString m_etiqueta;  // "mueve" while it is dragged
    QPoint m_agarre;
};

}  // namespace ondalis
