#include "SBLockScreenViewController.h"

#include "SBApplicationIcon.h"
#include "SBFLockScreenDateView.h"
#include "SBLockScreenFullscreenBulletinViewController.h"
#include "SBLockScreenView.h"
#include "SBMediaController.h"
#include "SBUIController.h"

#include "../HostWorld.h"
#include "../MobileTimer/TimerManager.h"

#include <Foundation/IntegerConversion.h>
#include <Foundation/NSString.h>
#include <UIKit/UIScreen.h>

#include <cmath>

OBJC_IMPLEMENT_CLASS(SBLockScreenViewController, UIViewController)
{
    c.method<&SBLockScreenViewController::handleDisplayTurnedOff>("_handleDisplayTurnedOff");
    c.method<&SBLockScreenViewController::addCameraGrabberIfNecessary>("_addCameraGrabberIfNecessary");
    c.method<&SBLockScreenViewController::activateCameraAnimated>("activateCameraAnimated:");
    c.method<&SBLockScreenViewController::createCameraControllerIfNecessary>("_createCameraControllerIfNecessary");
    c.method<&SBLockScreenViewController::statusBarStyle>("statusBarStyle");
    c.method<&SBLockScreenViewController::effectiveVisibleStatusBarAlpha>("_effectiveVisibleStatusBarAlpha");
    c.method<&SBLockScreenViewController::showsSpringBoardStatusBar>("showsSpringBoardStatusBar");
    c.method<&SBLockScreenViewController::addBatteryChargingViewAndShowBattery>("_addBatteryChargingViewAndShowBattery:");
    c.method<&SBLockScreenViewController::addTimerView>("_addTimerView");
    c.method<&SBLockScreenViewController::addTimerViewIfNecessary>("_addTimerViewIfNecessary");
    c.method<&SBLockScreenViewController::setMediaControlsVisible>("_setMediaControlsVisible:");
    c.method<&SBLockScreenViewController::addFullscreenBulletinViewWithItem>("_addFullscreenBulletinViewWithItem:");
    c.method<&SBLockScreenViewController::presentFullscreenBulletinAlertWithItem>("presentFullscreenBulletinAlertWithItem:");
    c.allocatable();
}

SBLockScreenViewController::~SBLockScreenViewController() { stopTimerTick(); }

void SBLockScreenViewController::loadView()
{
    auto container = make<UIView>(UIScreen::mainScreen()->bounds());
    container->setName("lockScreenContainer");
    container->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    setView(container);
}

void SBLockScreenViewController::prepareForLock()
{
    UIView* container = view();
    container->setHidden(false);
    if (m_lockScreenView)
        m_lockScreenView->removeFromSuperview();
    stopTimerTick();
    StrongId built = objc::send<StrongId>(objc::alloc(SBLockScreenView::classObject()), OBJC_SEL("initWithFrame:"), container->bounds());
    m_lockScreenView = objc::castRef<SBLockScreenView>(built);
    if (!m_lockScreenView)
        return;
    m_lockScreenView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    if (m_bulletinController && m_bulletinController->isViewLoaded())
        container->insertSubviewBelowSubview(m_lockScreenView.get(), m_bulletinController->view());
    else
        container->addSubview(m_lockScreenView.get());

    objc::send(this, OBJC_SEL("_addCameraGrabberIfNecessary"));
    batteryStateDidChange();
    timerStateDidChange();
    nowPlayingDidChange();
    notificationsDidChange();
}

void SBLockScreenViewController::prepareForUnlock()
{
    view()->setHidden(true);
    stopTimerTick();
}

void SBLockScreenViewController::handleDisplayTurnedOff()
{
    if (m_lockScreenView)
        m_lockScreenView->scrollToMainPage();
    m_cameraActive = false;
}

void SBLockScreenViewController::addCameraGrabberIfNecessary()
{
    if (m_lockScreenView)
        m_lockScreenView->addCameraGrabber();
}

void SBLockScreenViewController::activateCameraAnimated(bool)
{
    objc::send(this, OBJC_SEL("_createCameraControllerIfNecessary"));
    m_cameraActive = m_cameraControllerCreated;
}

void SBLockScreenViewController::createCameraControllerIfNecessary() { m_cameraControllerCreated = true; }

void SBLockScreenViewController::batteryStateDidChange()
{
    if (SBUIController::sharedInstance()->isOnAC()) {
        objc::send(this, OBJC_SEL("_addBatteryChargingViewAndShowBattery:"), true);
        return;
    }
    if (m_lockScreenView)
        m_lockScreenView->setChargingText(nullptr);
}

void SBLockScreenViewController::addBatteryChargingViewAndShowBattery(bool showBattery)
{
    if (!m_lockScreenView)
        return;
    int percent = static_cast<int>(std::lround(SBUIController::sharedInstance()->batteryLevel() * 100));
    std::string text = percent >= 100 ? "Charged" : showBattery ? NSString::format("Charging: %d%%", percent) : "Charging";
    m_lockScreenView->setChargingText(&text);
}

void SBLockScreenViewController::timerStateDidChange()
{
    if (TimerManager::sharedManager()->state() != TimerManager::Stopped) {
        objc::send(this, OBJC_SEL("_addTimerViewIfNecessary"));
        updateTimerText();
        return;
    }
    stopTimerTick();
    if (m_lockScreenView)
        m_lockScreenView->setTimerText(nullptr);
}

void SBLockScreenViewController::addTimerViewIfNecessary()
{
    if (!m_lockScreenView || m_lockScreenView->m_timerView || TimerManager::sharedManager()->state() == TimerManager::Stopped)
        return;
    objc::send(this, OBJC_SEL("_addTimerView"));
}

void SBLockScreenViewController::addTimerView()
{
    if (!m_lockScreenView)
        return;
    std::string placeholder;
    m_lockScreenView->setTimerText(&placeholder);
    updateTimerText();
    if (!m_timerTick) {
        m_timerTick = NSTimer::scheduledTimerWithTimeInterval(1, true, [this](NSTimer*) { updateTimerText(); });
    }
}

void SBLockScreenViewController::updateTimerText()
{
    if (!m_lockScreenView || !m_lockScreenView->m_timerView)
        return;
    auto manager = TimerManager::sharedManager();
    // Whole seconds, rounded up as a countdown shows them (but not for the
    // rounding noise of the clock's arithmetic). A timer set for longer than
    // any integer holds shows the longest time one can.
    long seconds = truncatedToInteger<long>(std::ceil(manager->remainingTime() - 1e-6));
    long hours = seconds / 3600;
    std::string time = hours ? NSString::format("%ld:%02ld:%02ld", hours, seconds / 60 % 60, seconds % 60)
                              : NSString::format("%02ld:%02ld", seconds / 60, seconds % 60);
    std::string text = (manager->state() == TimerManager::Paused ? "Timer Paused " : "Timer ") + time;
    m_lockScreenView->setTimerText(&text);
}

void SBLockScreenViewController::stopTimerTick()
{
    if (m_timerTick)
        m_timerTick->invalidate();
    m_timerTick = nullptr;
}

void SBLockScreenViewController::nowPlayingDidChange()
{
    objc::send(this, OBJC_SEL("_setMediaControlsVisible:"), SBMediaController::sharedInstance()->hasTrack());
}

void SBLockScreenViewController::setMediaControlsVisible(bool visible)
{
    if (!m_lockScreenView)
        return;
    auto media = SBMediaController::sharedInstance();
    if (!visible || !media->hasTrack()) {
        m_lockScreenView->setMediaControls(nullptr, nullptr, false);
        return;
    }
    std::string title = media->nowPlayingTitle();
    std::string artist = media->nowPlayingArtist();
    m_lockScreenView->setMediaControls(&title, &artist, media->isPlaying());
}

void SBLockScreenViewController::notificationsDidChange()
{
    if (!m_lockScreenView)
        return;
    // Newest first, as the lock screen lists them.
    std::vector<SBLockScreenView::NotificationRow> rows;
    double scale = UIScreen::mainScreen()->scale();
    auto& world = HostWorld::shared();
    for (auto it = world.notifications().rbegin(); it != world.notifications().rend(); ++it) {
        const HostWorld::App* app = world.appWithIdentifier(it->app);
        std::string line = app ? app->name : it->app;
        if (it->title)
            line += "  " + *it->title;
        if (it->message)
            line += "\n" + *it->message;
        rows.push_back({ std::move(line), app ? SBApplicationIcon::iconImageForApp(*app, scale) : nullptr });
    }
    m_lockScreenView->setNotificationRows(rows);
}

void SBLockScreenViewController::clockDidTick()
{
    if (m_lockScreenView && m_lockScreenView->dateView())
        m_lockScreenView->dateView()->setDate(NSDate::date().get());
}

void SBLockScreenViewController::presentFullscreenBulletinAlertWithItem(NSObject* item)
{
    objc::send(this, OBJC_SEL("_addFullscreenBulletinViewWithItem:"), item);
}

void SBLockScreenViewController::addFullscreenBulletinViewWithItem(NSObject* item)
{
    if (m_bulletinController)
        return;
    m_bulletinController = make<SBLockScreenFullscreenBulletinViewController>();
    m_bulletinController->setItem(item);
    UIView* bulletinView = m_bulletinController->view();
    bulletinView->setFrame(view()->bounds());
    view()->addSubview(bulletinView);
    objc::send(m_bulletinController, OBJC_SEL("viewDidAppear:"), true);
}

void SBLockScreenViewController::fullscreenBulletinDidDismiss(SBLockScreenFullscreenBulletinViewController* controller)
{
    if (m_bulletinController == controller)
        m_bulletinController = nullptr;
}
