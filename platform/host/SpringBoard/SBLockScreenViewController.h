#pragma once

#include "SBLockScreenFullscreenBulletinViewController.h"
#include "SBLockScreenView.h"

#include <Foundation/NSTimer.h>

// The lock screen's controller. Its view holds the lock screen view, which
// it builds again on every lock (through `alloc` and `initWithFrame:` sent
// through the runtime, so that replacements see each one), and what goes on
// top: the camera grabber, the charging line, the running timer, the media
// controls and full-screen alerts. Each of those is added by a message sent
// through the runtime, as SpringBoard does, so a replacement can keep it out.
class SBLockScreenViewController final : public UIViewController {
    OBJC_CLASS(SBLockScreenViewController)
public:
    ~SBLockScreenViewController() override;
    void loadView() override;

    SBLockScreenView* lockScreenView() const { return m_lockScreenView.get(); }
    SBLockScreenFullscreenBulletinViewController* fullscreenBulletinViewController() const { return m_bulletinController.get(); }
    bool isCameraActive() const { return m_cameraActive; }

    // Methods other code reaches by name.
    void handleDisplayTurnedOff();
    void addCameraGrabberIfNecessary();
    void activateCameraAnimated(bool animated);
    void createCameraControllerIfNecessary();
    long long statusBarStyle() const { return 1; }
    double effectiveVisibleStatusBarAlpha() const { return 1; }
    bool showsSpringBoardStatusBar() const { return true; }
    void addBatteryChargingViewAndShowBattery(bool showBattery);
    void addTimerView();
    void addTimerViewIfNecessary();
    void setMediaControlsVisible(bool visible);
    void addFullscreenBulletinViewWithItem(NSObject* item);
    void presentFullscreenBulletinAlertWithItem(NSObject* item);

    // The host tells the controller what changed.
    void prepareForLock();
    void prepareForUnlock();
    void batteryStateDidChange();
    void timerStateDidChange();
    void nowPlayingDidChange();
    void notificationsDidChange();
    void clockDidTick();
    void fullscreenBulletinDidDismiss(SBLockScreenFullscreenBulletinViewController*);

private:
    void updateTimerText();
    void stopTimerTick();

    RefPtr<SBLockScreenView> m_lockScreenView;
    RefPtr<SBLockScreenFullscreenBulletinViewController> m_bulletinController;
    RefPtr<NSTimer> m_timerTick;
    bool m_cameraControllerCreated { false };
    bool m_cameraActive { false };
};
