#pragma once

#include <UIKit/UIViewController.h>

// A full-screen alert over the lock screen (an alarm going off): the
// bulletin's title and message over a darkened screen, until its dismiss
// action runs.
class SBLockScreenFullscreenBulletinViewController final : public UIViewController {
    OBJC_CLASS(SBLockScreenFullscreenBulletinViewController)
public:
    void loadView() override;
    void viewDidAppear(bool animated) override;
    void performDismissAction();

    NSObject* item() const { return m_item.get(); }
    void setItem(NSObject* item) { m_item = item; }
    bool hasAppeared() const { return m_appeared; }

private:
    StrongId m_item;
    bool m_appeared { false };
};
