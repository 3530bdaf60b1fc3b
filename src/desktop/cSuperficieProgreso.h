// What a progress bar is drawn on: a plain area of a window, in logical pixels. Main thread.
#pragma once

#include <QColor>
#include <QWidget>

#include "settings/cProgreso.h"

namespace ondalis {

class cSuperficieProgreso : public QWidget, public SuperficieProgreso {
    Q_OBJECT
public:
    explicit cSuperficieProgreso(QWidget *padre = nullptr);

    void SetColores(std::uint32_t fondo, std::uint32_t frente) override;
    bool Visible() const override { return isVisible(); }
    void SetVisible(bool visible) override { setVisible(visible); }
    float Ancho() const override { return static_cast<float>(width()); }
    void Dibuja(float ancho) override;
    void Limpia() override { Dibuja(0); }

protected:
    void paintEvent(QPaintEvent *evento) override;

private:
    QColor m_fondo = Qt::white;
    QColor m_frente = Qt::green;
    float m_ancho = 0;  // of the bar
};

}  // namespace ondalis
