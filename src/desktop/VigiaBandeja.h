// Tells whether the desktop has a place for tray icons, by protocol, and when one comes or goes. platform implements
// it, tests script it. Main thread.
#pragma once

#include <functional>

namespace ondalis {

class VigiaBandeja {
public:
    virtual ~VigiaBandeja() = default;
    virtual bool HayEnElBus() = 0;  // a panel that shows status notifiers
    virtual bool HayEnX() = 0;      // a panel that takes windows in
    // The toolkit's own connection to the bus, made once a process, still serves.
    virtual bool LlegaElToolkit() = 0;
    bool HayAnfitrion() { return HayEnElBus() || HayEnX(); }
    // Called when a host has come, also one that was there before and has been started again.
    virtual void SetAlAparecer(std::function<void()> aviso) = 0;
    // Called when one has gone.
    virtual void SetAlDesaparecer(std::function<void()> aviso) = 0;
};

}  // namespace ondalis
