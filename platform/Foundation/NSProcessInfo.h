#pragma once

#include <objc/objc.h>

// Facts about the running process that the host model controls.
class NSProcessInfo final : public NSObject {
    OBJC_CLASS(NSProcessInfo)
public:
    static NSProcessInfo* processInfo();

    bool isLowPowerModeEnabled() const { return m_lowPowerMode; }
    void setLowPowerModeEnabled(bool enabled) { m_lowPowerMode = enabled; }
    // Seconds since the device booted, on the virtual clock.
    double systemUptime() const;

private:
    bool m_lowPowerMode { false };
};
