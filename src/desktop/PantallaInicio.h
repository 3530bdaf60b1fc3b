// The window with a shape of its own: the splash while the voices load, the about box later. No title bar: it is moved
// by dragging it anywhere, and only ever hidden. Owned by main. Main thread.
#pragma once

#include <QPixmap>
#include <QWidget>
#include <functional>

#include "settings/cGeneral.h"

class QLabel;
class QPushButton;

namespace ondalis {

class PantallaInicio : public QWidget {
public:
    // `dejaCorrer` lets pending events run while the window is dragged; may be empty.
    explicit PantallaInicio(cGeneral &general, std::function<void()> dejaCorrer = {});

    // As a splash: no button, "Cargando voces..." until OcultaCargando. Doesn't block and takes no focus.
    void MuestraCargando();
    void OcultaCargando();
    // As about box: its button says "Aceptar"; that or Esc hides it. Shows it in front, with the focus.
    void MuestraAcercaDe();

    const QString &Etiqueta() const { return m_etiqueta; }  // "mueve" while it is dragged

protected:
    void paintEvent(QPaintEvent *evento) override;
    void keyPressEvent(QKeyEvent *evento) override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;
    void mousePressEvent(QMouseEvent *evento) override;
    void mouseMoveEvent(QMouseEvent *evento) override;
    void mouseReleaseEvent(QMouseEvent *evento) override;

private:
    void Form_Load();
    void CreaControles();
    void SetRegion();
    void Centra();

    cGeneral &m_general;
    std::function<void()> m_dejaCorrer;
    QPixmap m_imagen;
    QLabel *m_edicion, *m_vmayor, *m_vmenor, *m_revision, *m_cargandoVoces;  // children
    QPushButton *m_salir;
    QString m_etiqueta;
    QPoint m_agarre;  // where it was pressed, in its own coordinates
};

}  // namespace ondalis
