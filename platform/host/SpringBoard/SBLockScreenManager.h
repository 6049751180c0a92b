#pragma once

#include "SBLockScreenViewController.h"

// Whether the device is locked, and the lock screen's controller. Locking
// builds the lock screen view again; unlocking takes it off the screen.
class SBLockScreenManager final : public NSObject {
    OBJC_CLASS(SBLockScreenManager)
public:
    static RefPtr<SBLockScreenManager> sharedInstance();

    bool isUILocked() const { return m_locked; }
    // The home button while the lock screen is up.
    void noteMenuButtonDown();
    RefPtr<SBLockScreenViewController> lockScreenViewController() const { return m_lockScreenViewController; }
    void setLockScreenViewController(RefPtr<SBLockScreenViewController>);

    void lockUI();
    void unlockUI();

private:
    bool m_locked { true };
    RefPtr<SBLockScreenViewController> m_lockScreenViewController;
};
