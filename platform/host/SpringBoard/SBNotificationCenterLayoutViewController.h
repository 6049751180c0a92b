#pragma once

#include <UIKit/UILabel.h>
#include <UIKit/UIViewController.h>

// The content of the notification centre: the "Today" page with the date
// and, under it, the notifications. `_loadContentViewControllers` builds it
// once, when the view loads; `viewWillAppear:` brings the date up to date.
class SBNotificationCenterLayoutViewController final : public UIViewController {
    OBJC_CLASS(SBNotificationCenterLayoutViewController)
public:
    void loadView() override;
    void loadContentViewControllers();
    void viewWillAppear(bool animated) override;

private:
    RefPtr<UILabel> m_dateLabel;
    RefPtr<UILabel> m_emptyLabel;
};
