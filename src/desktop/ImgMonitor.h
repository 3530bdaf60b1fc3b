// The assistant's picture: a monitor whose task bar holds the program's icon, a speech bubble, with a ring round it.
// Drawn in device pixels, so that it is clear at every scaling. Main thread.
#pragma once

#include <QWidget>

namespace ondalis {

class ImgMonitor : public QWidget {
public:
    explicit ImgMonitor(QWidget *padre = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *evento) override;
};

}  // namespace ondalis
