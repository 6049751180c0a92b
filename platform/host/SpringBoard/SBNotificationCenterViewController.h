#pragma once

#include "SBNotificationCenterLayoutViewController.h"

// The notification centre pulled down over everything: a dark, translucent
// sheet with its own status bar strip and the layout controller's content.
class SBNotificationCenterViewController final : public UIViewController {
    OBJC_CLASS(SBNotificationCenterViewController)
public:
    void loadView() override;
    void loadStatusBar();

    SBNotificationCenterLayoutViewController* layoutViewController() const { return m_layoutViewController.get(); }

private:
    RefPtr<SBNotificationCenterLayoutViewController> m_layoutViewController;
    RefPtr<UIView> m_statusBarView;
};
