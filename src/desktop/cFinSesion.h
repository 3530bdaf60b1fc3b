// The end of the desktop session. A session manager first asks every program to save, and may ask so without ending
// anything, or be told to stop by another program; only when it tells the program to quit it is meant. One a process;
// owned by main. Main thread.
#pragma once

#include <QObject>
#include <functional>

namespace ondalis {

class cFinSesion : public QObject {
public:
    // `alAcabar` is called from the event loop when the program is told to quit.
    explicit cFinSesion(std::function<void()> alAcabar);

protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    std::function<void()> m_alAcabar;
};

}  // namespace ondalis
