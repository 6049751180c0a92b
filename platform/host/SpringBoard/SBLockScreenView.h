#pragma once

#include "SBFLockScreenDateView.h"

#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIScrollView.h>

// The lock screen. A scroll view two screens wide fills it; the main page is
// the right-hand one (the scroll view starts scrolled by one screen width),
// and holds the clock and date, the notification list, the plugin area (media
// controls), the charging and timer lines and "slide to unlock". The grabbers
// and the camera stay put on top.
//
// layoutSubviews places the pieces through messages sent through the
// runtime (`_layoutSlideToUnlockView`, `_layoutGrabberView:atTop:`,
// `_layoutNotificationView`), so that replacements of those methods see
// every layout.
class SBLockScreenView final : public UIView {
    OBJC_CLASS(SBLockScreenView)
public:
    SBLockScreenView() = default;

    StrongId initWithFrame(CGRect) override;
    void layoutSubviews() override;
    void layoutSlideToUnlockView();
    void layoutGrabberView(UIView* grabber, bool atTop);
    void layoutNotificationView();
    long long coordinatedPresentingControllerIdentifier() const { return 0; }

    SBFLockScreenDateView* dateView() const { return m_dateView.get(); }
    UIScrollView* foregroundScrollView() const { return m_foregroundScrollView.get(); }
    // Back to the main page (after the display turned off).
    void scrollToMainPage();

    // The pieces the lock screen's controller adds and removes.
    void addCameraGrabber();
    bool hasCameraGrabber() const { return m_cameraGrabberView; }
    void setChargingText(const std::string*);
    void setTimerText(const std::string*);
    void setMediaControls(const std::string* title, const std::string* artist, bool playing);
    // The notification list, newest first: one row each, with the app's
    // icon (when it has one) before the text.
    struct NotificationRow {
        std::string text;
        RefPtr<UIImage> icon;
    };
    void setNotificationRows(const std::vector<NotificationRow>&);

    // Instance variables that clients read by name through the runtime.
    RefPtr<UIScrollView> m_foregroundScrollView;
    RefPtr<SBFLockScreenDateView> m_dateView;
    RefPtr<UIView> m_slideToUnlockView;
    RefPtr<UIView> m_notificationView;
    RefPtr<UIView> m_pluginView;
    RefPtr<UIImageView> m_bottomLeftGrabberView;
    RefPtr<UIView> m_topGrabberView;
    RefPtr<UIView> m_bottomGrabberView;
    RefPtr<UIImageView> m_cameraGrabberView;
    RefPtr<UILabel> m_chargingView;
    RefPtr<UILabel> m_timerView;
    RefPtr<UIView> m_mediaControlsView;

private:
    CGRect mainPageRect(double y, double height) const;
    double slideToUnlockInset() const;
    double m_laidOutWidth { -1 };
    double m_scale { 2 };
};
