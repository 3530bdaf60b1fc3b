// Turns the signals that ask the program to end into a call on the main thread. One a process; owned by main.
#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace ondalis {

class cSenales {
public:
    // `alTerminar` is called from the event loop for each SIGTERM, SIGINT and SIGHUP that has come.
    explicit cSenales(std::function<void()> alTerminar);
    ~cSenales();  // the signals act again as they do by themselves
    cSenales(const cSenales &) = delete;
    cSenales &operator=(const cSenales &) = delete;

private:
    std::unique_ptr<QSocketNotifier> m_aviso;
};

}  // namespace ondalis
