#pragma once

#include "SBNotificationCenterLayoutViewController.h"
#include "SBStatusBarView.h"

// The notification centre pulled down over everything: a dark blur of what it
// covers with the layout controller's content and a status bar of its own,
// which `_loadStatusBar` puts in when the view loads (SpringBoard's status
// bar makes way for it while the notification centre is down). Without it
// the sheet shows no status bar.
class SBNotificationCenterViewController final : public UIViewController {
    OBJC_CLASS(SBNotificationCenterViewController)
public:
    void loadView() override;
    void loadStatusBar();

    SBNotificationCenterLayoutViewController* layoutViewController() const { return m_layoutViewController.get(); }
    // Null when `_loadStatusBar` did not put it in.
    SBStatusBarView* statusBarView() const { return m_statusBarView.get(); }

private:
    RefPtr<SBNotificationCenterLayoutViewController> m_layoutViewController;
    RefPtr<SBStatusBarView> m_statusBarView;
};
