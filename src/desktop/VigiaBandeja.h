// Tells whether the desktop has a place for tray icons, and when one comes. platform implements it, tests script it.
// Main thread.
#pragma once

#include <functional>

namespace ondalis {

class VigiaBandeja {
public:
    virtual ~VigiaBandeja() = default;
    virtual bool HayAnfitrion() = 0;
    // Called when a host has come, also one that was there before and has been started again.
    virtual void SetAlAparecer(std::function<void()> aviso) = 0;
};

}  // namespace ondalis
