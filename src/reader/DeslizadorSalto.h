// A slider over eleven places whose middle one is none: it holds 1 to 11, and tells those who hear it -5 to 5. Seven
// marks stand under it. Main thread.
#pragma once

#include <QSlider>

namespace ondalis {

class DeslizadorSalto : public QSlider {
    Q_OBJECT
public:
    static constexpr int Minimo = 1, Centro = 6, Maximo = 11;

    // `nombre`: the control's name, `rotulo`: the label beside it.
    DeslizadorSalto(const char *nombre, const QString &rotulo, QWidget *padre = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *evento) override;
    void wheelEvent(QWheelEvent *evento) override;
};

}  // namespace ondalis
