#include "SimulatedHost.h"

#include "FrontBoard/FBRootWindow.h"
#include "HostShared.h"
#include "IOKit/IORegistry.h"
#include "MobileTimer/AlarmManager.h"
#include "MobileTimer/TimerManager.h"
#include "SpotlightUI/SPUINavigationController.h"
#include "SpotlightUI/SPUISearchViewController.h"
#include "SpringBoard/BBBulletin.h"
#include "SpringBoard/SBAppStatusBarManager.h"
#include "SpringBoard/SBBacklightController.h"
#include "SpringBoard/SBClockDataProvider.h"
#include "SpringBoard/SBConferenceManager.h"
#include "SpringBoard/SBGlyphs.h"
#include "SpringBoard/SBApplicationIcon.h"
#include "SpringBoard/SBHomeScreenView.h"
#include "SpringBoard/SBLockScreenFullscreenBulletinViewController.h"
#include "SpringBoard/SBLockScreenManager.h"
#include "SpringBoard/SBLockScreenView.h"
#include "SpringBoard/SBLockScreenViewController.h"
#include "SpringBoard/SBNotificationCenterViewController.h"
#include "SpringBoard/SBSearchViewController.h"
#include "SpringBoard/SBStatusBarView.h"
#include "SpringBoard/SBTelephonyManager.h"
#include "SpringBoard/SBUIController.h"
#include "SpringBoard/SBWallpaperController.h"
#include "SpringBoard/SpringBoard.h"
#include "HostCalendar.h"

#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSNotificationCenter.h>
#include <Foundation/NSProcessInfo.h>
#include <Foundation/NSRunLoop.h>
#include <Foundation/VirtualClock.h>
#include <UIKit/UIAlertView.h>
#include <UIKit/UIDevice.h>
#include <UIKit/UIScreen.h>

#include <cmath>
#include <nlohmann/json.hpp>

using nlohmann::json;

SimulatedHost::SimulatedHost()
    : SimulatedHost(Configuration {})
{
}

SimulatedHost::SimulatedHost(Configuration configuration)
    : m_configuration(std::move(configuration))
{
    HostWorld::reset();
    host::forgetSharedInstances();
    objc::Runtime::shared().setLogSink([](const std::string& line) { HostWorld::shared().appendLog(line); });
    SBApplicationIcon::setArtDirectory(m_configuration.artDirectory);
    wireWorld();
}

SimulatedHost::~SimulatedHost()
{
    if (m_minuteTickToken)
        NSRunLoop::mainRunLoop()->cancel(m_minuteTickToken);
    // Nothing the host leaves behind may call back into it.
    AlarmManager::sharedManager()->setAlarmsDidSaveHandler(nullptr);
    TimerManager::sharedManager()->setStateDidChangeHandler(nullptr);
    SBMediaController::sharedInstance()->setNowPlayingDidChangeHandler(nullptr);
    SBAppStatusBarManager::sharedInstance()->setStatusBarAlphaDidChangeHandler(nullptr);
    SBUIController::sharedInstance()->setMenuButtonAction(nullptr);
    UIAlertView::setPresentationObserver(nullptr);
    HostWorld::shared().setNotificationsDidChangeHandler(nullptr);
    objc::Runtime::shared().setLogSink(nullptr);
    for (auto* window : { static_cast<UIWindow*>(m_rootWindow.get()), m_statusBarWindow.get(), m_curtainWindow.get(), m_notificationCenterWindow.get(), m_searchWindow.get() }) {
        if (window)
            window->setHidden(true);
    }
    host::forgetSharedInstances();
}

void SimulatedHost::wireWorld()
{
    AlarmManager::sharedManager()->setAlarmsDidSaveHandler([] { SBClockDataProvider::sharedInstance()->refresh(); });
    // Every alert view shown in the process is kept for the records.
    UIAlertView::setPresentationObserver([](const UIAlertView& alert) {
        HostWorld::shared().recordAlert({ alert.title(), alert.message(), alert.cancelButtonTitle(), alert.otherButtonTitles() });
    });
    TimerManager::sharedManager()->setStateDidChangeHandler([this] {
        if (m_lockScreenViewController)
            m_lockScreenViewController->timerStateDidChange();
    });
    SBMediaController::sharedInstance()->setNowPlayingDidChangeHandler([this] {
        if (m_lockScreenViewController)
            m_lockScreenViewController->nowPlayingDidChange();
    });
    SBAppStatusBarManager::sharedInstance()->setStatusBarAlphaDidChangeHandler([this] { updateStatusBar(); });
    // The home button away from the lock screen first puts away what covers
    // the screen.
    SBUIController::sharedInstance()->setMenuButtonAction([this] {
        if (isSearchVisible())
            hideSearch();
        else if (isNotificationCenterVisible())
            hideNotificationCenter();
    });
    HostWorld::shared().setNotificationsDidChangeHandler([this] {
        if (m_lockScreenViewController)
            m_lockScreenViewController->notificationsDidChange();
    });
}

bool SimulatedHost::setSystemVersion(std::string version)
{
    if (m_processStarted)
        return false;
    m_configuration.systemVersion = std::move(version);
    return true;
}

bool SimulatedHost::setDevice(const DeviceModel& device)
{
    if (m_processStarted)
        return false;
    m_configuration.device = device;
    return true;
}

bool SimulatedHost::setArtDirectory(std::string directory)
{
    if (m_processStarted)
        return false;
    m_configuration.artDirectory = std::move(directory);
    SBApplicationIcon::setArtDirectory(m_configuration.artDirectory);
    return true;
}

void SimulatedHost::startProcess()
{
    if (m_processStarted)
        return;
    m_processStarted = true;
    auto& device = m_configuration.device;
    UIDevice::currentDevice()->setSystemVersion(m_configuration.systemVersion);
    UIDevice::currentDevice()->setModel(device.model);
    IORegistry::sharedRegistry()->setDevice(device.modelCode, device.screenSizeClass);
    UIScreen::mainScreen()->setDeviceShape(device.screenSize, device.scale);
}

void SimulatedHost::boot()
{
    if (m_booted)
        return;
    startProcess();
    m_booted = true;
    auto& device = m_configuration.device;
    UIApplication::setSharedApplication(make<SpringBoard>());
    UIApplication::sharedApplication()->setStatusBarOrientation(UIInterfaceOrientationPortrait);

    StrongId root = objc::send<StrongId>(objc::alloc(FBRootWindow::classObject()), OBJC_SEL("initWithDisplay:"), static_cast<NSObject*>(UIScreen::mainScreen()));
    m_rootWindow = objc::castRef<FBRootWindow>(root);
    if (!m_rootWindow) {
        // A replacement that answered no window leaves the host one of its own.
        m_rootWindow = make<FBRootWindow>();
        m_rootWindow->initWithDisplay(UIScreen::mainScreen());
    }
    m_rootWindow->makeKeyAndVisible();
    buildWallpaper();

    m_homeScreenView = make<SBHomeScreenView>(m_rootWindow->bounds(), device.scale);
    m_homeScreenView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    m_homeScreenView->setHidden(true);
    m_rootWindow->addSubview(m_homeScreenView.get());

    m_lockScreenViewController = make<SBLockScreenViewController>();
    SBLockScreenManager::sharedInstance()->setLockScreenViewController(m_lockScreenViewController);
    UIView* lockScreen = m_lockScreenViewController->view();
    lockScreen->setFrame(m_rootWindow->bounds());
    m_rootWindow->addSubview(lockScreen);
    SBLockScreenManager::sharedInstance()->lockUI();

    buildStatusBar();
    SBClockDataProvider::sharedInstance()->refresh();
    scheduleMinuteTick();
    updateStatusBar();
    UIView::layoutPendingViews();
}

void SimulatedHost::buildWallpaper()
{
    auto& device = m_configuration.device;
    RefPtr<UIImage> image;
    if (!m_configuration.artDirectory.empty())
        image = UIImage::imageWithContentsOfFile(m_configuration.artDirectory + "/wallpaper.png");
    if (image)
        image->setName("wallpaper");
    else
        image = SBGlyphs::fallbackWallpaper(device.screenSize, device.scale);
    auto wallpapers = SBWallpaperController::sharedInstance();
    wallpapers->setWallpaper(image, m_rootWindow->bounds());
    m_rootWindow->insertSubviewAtIndex(wallpapers->sharedWallpaperView(), 0);
}

void SimulatedHost::buildStatusBar()
{
    CGRect screen = UIScreen::mainScreen()->bounds();
    m_statusBarWindow = UIWindow::create(CGRectMake(0, 0, screen.size.width, SBStatusBarView::height));
    m_statusBarWindow->setName("statusBarWindow");
    m_statusBarWindow->setWindowLevel(UIWindowLevelStatusBar);
    m_statusBarWindow->setUserInteractionEnabled(false);
    m_statusBar = make<SBStatusBarView>(m_statusBarWindow->bounds(), m_configuration.device.scale);
    m_statusBar->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
    m_statusBarWindow->addSubview(m_statusBar.get());
    m_statusBarWindow->setHidden(false);
}

bool SimulatedHost::isLockScreenShown() const
{
    return m_booted && SBLockScreenManager::sharedInstance()->isUILocked() && !isNotificationCenterVisible() && !isSearchVisible();
}

bool SimulatedHost::isNotificationCenterVisible() const { return m_notificationCenterWindow && !m_notificationCenterWindow->isHidden(); }

bool SimulatedHost::isSearchVisible() const { return m_searchWindow && !m_searchWindow->isHidden(); }

void SimulatedHost::updateStatusBar()
{
    if (!m_statusBar)
        return;
    SBStatusBarView::Content content;
    bool locked = SBLockScreenManager::sharedInstance()->isUILocked();
    content.locked = locked;
    auto formatter = NSDateFormatter::create();
    formatter->setDateFormat(host::statusBarTimePattern());
    content.time = formatter->stringFromDate(NSDate::date().get());
    auto ui = SBUIController::sharedInstance();
    content.batteryLevel = ui->batteryLevel();
    content.charging = ui->isOnAC();
    double alpha = SBAppStatusBarManager::sharedInstance()->statusBarAlpha();
    // On the lock screen, its controller decides whether SpringBoard's
    // status bar shows and how; the controller is asked through the runtime.
    if (locked && m_lockScreenViewController) {
        auto* controller = m_lockScreenViewController.get();
        content.style = objc::send<long long>(controller, OBJC_SEL("statusBarStyle"));
        if (!objc::send<bool>(controller, OBJC_SEL("showsSpringBoardStatusBar")))
            alpha = 0;
        else
            alpha *= objc::send<double>(controller, OBJC_SEL("_effectiveVisibleStatusBarAlpha"));
    }
    m_statusBar->setContent(content);
    // The notification centre brings a status bar of its own (or none):
    // SpringBoard's makes way while it is down.
    if (isNotificationCenterVisible()) {
        if (SBStatusBarView* own = m_notificationCenterViewController->statusBarView())
            own->setContent(content);
        alpha = 0;
    }
    m_statusBarWindow->setAlpha(std::isnan(alpha) ? 0 : std::clamp(alpha, 0.0, 1.0));
}

void SimulatedHost::updateDisplayOffCurtain()
{
    bool off = SBBacklightController::sharedInstance()->screenIsOff();
    if (!off && !m_curtainWindow)
        return;
    if (!m_curtainWindow) {
        m_curtainWindow = UIWindow::create(UIScreen::mainScreen()->bounds());
        m_curtainWindow->setName("displayOff");
        m_curtainWindow->setWindowLevel(UIWindowLevelAlert * 10);
        m_curtainWindow->setBackgroundColor(UIColor::blackColor());
    }
    m_curtainWindow->setFrame(UIScreen::mainScreen()->bounds());
    m_curtainWindow->setHidden(!off);
}

void SimulatedHost::updateHomeScreen()
{
    if (m_homeScreenView)
        m_homeScreenView->setHidden(SBLockScreenManager::sharedInstance()->isUILocked());
}

void SimulatedHost::scheduleMinuteTick()
{
    auto* runLoop = NSRunLoop::mainRunLoop();
    if (m_minuteTickToken)
        runLoop->cancel(m_minuteTickToken);
    double now = VirtualClock::shared().wallNow();
    double untilNextMinute = 60 - std::fmod(now, 60.0);
    if (!std::isfinite(untilNextMinute) || untilNextMinute <= 0)
        untilNextMinute = 60;
    m_minuteTickToken = runLoop->scheduleAfter(untilNextMinute, [this] {
        m_minuteTickToken = 0;
        minuteDidPass();
        scheduleMinuteTick();
    });
}

void SimulatedHost::minuteDidPass()
{
    if (m_lockScreenViewController)
        m_lockScreenViewController->clockDidTick();
    if (m_homeScreenView)
        m_homeScreenView->refreshIconImages();
    SBClockDataProvider::sharedInstance()->refresh();
    updateStatusBar();
}

void SimulatedHost::clockDidChange()
{
    if (!m_booted) {
        SBClockDataProvider::sharedInstance()->refresh();
        return;
    }
    minuteDidPass();
    scheduleMinuteTick();
    if (m_lockScreenViewController)
        m_lockScreenViewController->timerStateDidChange();
}

void SimulatedHost::changeBattery(const BatteryChange& change)
{
    auto ui = SBUIController::sharedInstance();
    if (change.level)
        ui->setBatteryLevel(*change.level);
    if (change.onAC)
        ui->setOnAC(*change.onAC);
    if (change.currentCapacity)
        ui->setCurrentCapacity(*change.currentCapacity);
    if (change.maxCapacity)
        ui->setMaxCapacity(*change.maxCapacity);
    if (change.lowPowerMode)
        NSProcessInfo::processInfo()->setLowPowerModeEnabled(*change.lowPowerMode);
    if (m_lockScreenViewController)
        m_lockScreenViewController->batteryStateDidChange();
    updateStatusBar();
}

bool SimulatedHost::setNextAlarm(AlarmDay day, int hour, int minute)
{
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59)
        return false;
    auto date = host::localDateAt(day == AlarmDay::Today ? 0 : 1, hour, minute);
    if (!date)
        return false;
    SBClockDataProvider::sharedInstance()->setScheduledAlarm(date);
    return true;
}

void SimulatedHost::clearNextAlarm() { SBClockDataProvider::sharedInstance()->setScheduledAlarm(nullptr); }

void SimulatedHost::setTimerRunning(double remaining) { TimerManager::sharedManager()->setRunning(remaining); }

void SimulatedHost::setTimerPaused(double remaining) { TimerManager::sharedManager()->setPaused(remaining); }

void SimulatedHost::setTimerStopped() { TimerManager::sharedManager()->setStopped(); }

void SimulatedHost::setCallState(CallState state)
{
    auto telephony = SBTelephonyManager::sharedTelephonyManager();
    auto conference = SBConferenceManager::sharedInstance();
    telephony->setInCall(state == CallState::ActiveCall);
    telephony->setIncomingCallExists(state == CallState::IncomingCall);
    conference->setActiveFaceTimeCallExists(state == CallState::ActiveFaceTime);
    conference->setFaceTimeInvitationExists(state == CallState::FaceTimeInvitation);
}

void SimulatedHost::setVolume(double volume)
{
    if (!std::isnan(volume))
        SBMediaController::sharedInstance()->setVolumeFromWorld(std::clamp(volume, 0.0, 1.0));
}

void SimulatedHost::setNowPlaying(std::optional<SBMediaController::NowPlaying> nowPlaying, bool playing)
{
    SBMediaController::sharedInstance()->setNowPlaying(std::move(nowPlaying), playing);
}

void SimulatedHost::deliverNotification(HostWorld::Notification notification)
{
    HostWorld::shared().deliverNotification(std::move(notification));
}

void SimulatedHost::pressHome()
{
    if (!m_booted)
        return;
    // A dark display counts as the lock screen: the press wakes it.
    bool onLockScreen = SBLockScreenManager::sharedInstance()->isUILocked() && (isLockScreenShown() || SBBacklightController::sharedInstance()->screenIsOff());
    if (onLockScreen)
        objc::send(SBLockScreenManager::sharedInstance(), OBJC_SEL("noteMenuButtonDown"));
    else
        objc::send<bool>(SBUIController::sharedInstance(), OBJC_SEL("clickedMenuButton"));
    updateDisplayOffCurtain();
    updateStatusBar();
    UIView::layoutPendingViews();
}

void SimulatedHost::setDisplayOn(bool on)
{
    if (!m_booted)
        return;
    auto backlight = SBBacklightController::sharedInstance();
    if (on)
        backlight->turnOnScreen();
    else
        backlight->turnOffScreen();
    updateDisplayOffCurtain();
    updateHomeScreen();
    updateStatusBar();
    UIView::layoutPendingViews();
}

void SimulatedHost::showFullscreenAlert()
{
    if (!m_booted || !m_lockScreenViewController)
        return;
    auto formatter = NSDateFormatter::create();
    formatter->setDateFormat(host::statusBarTimePattern());
    auto bulletin = make<BBBulletin>("com.apple.mobiletimer", "Alarm", formatter->stringFromDate(NSDate::date().get()));
    // An alarm going off lights the display.
    auto backlight = SBBacklightController::sharedInstance();
    if (backlight->screenIsOff())
        backlight->turnOnScreen();
    objc::send(m_lockScreenViewController, OBJC_SEL("presentFullscreenBulletinAlertWithItem:"), static_cast<NSObject*>(bulletin.get()));
    updateDisplayOffCurtain();
    UIView::layoutPendingViews();
}

void SimulatedHost::dismissFullscreenAlert()
{
    if (!m_lockScreenViewController)
        return;
    if (auto* bulletin = m_lockScreenViewController->fullscreenBulletinViewController())
        objc::send(bulletin, OBJC_SEL("performDismissAction"));
    UIView::layoutPendingViews();
}

std::string SimulatedHost::orientationName(int orientation)
{
    switch (orientation) {
    case UIInterfaceOrientationPortrait:
        return "portrait";
    case UIInterfaceOrientationPortraitUpsideDown:
        return "upside-down";
    case UIInterfaceOrientationLandscapeRight:
        return "landscape-right";
    case UIInterfaceOrientationLandscapeLeft:
        return "landscape";
    }
    return "unknown";
}

bool SimulatedHost::rotate(int orientation)
{
    if (orientation < UIInterfaceOrientationPortrait || orientation > UIInterfaceOrientationLandscapeLeft)
        return false;
    if (!m_booted)
        return true;
    UIApplication* application = UIApplication::sharedApplication();
    bool changed = application->statusBarOrientation() != orientation;
    application->setStatusBarOrientation(orientation);
    layoutWindows();
    updateStatusBar();
    if (changed)
        NSNotificationCenter::defaultCenter()->postNotificationName(UIApplicationDidChangeStatusBarOrientationNotification, application);
    UIView::layoutPendingViews();
    return true;
}

void SimulatedHost::layoutWindows()
{
    CGRect screen = UIScreen::mainScreen()->bounds();
    for (auto* window : { static_cast<UIWindow*>(m_rootWindow.get()), m_notificationCenterWindow.get(), m_searchWindow.get(), m_curtainWindow.get() }) {
        if (window)
            window->setFrame(screen);
    }
    if (m_statusBarWindow)
        m_statusBarWindow->setFrame(CGRectMake(0, 0, screen.size.width, SBStatusBarView::height));
}

void SimulatedHost::lock()
{
    if (!m_booted)
        return;
    hideSearch();
    hideNotificationCenter();
    SBLockScreenManager::sharedInstance()->lockUI();
    updateHomeScreen();
    updateStatusBar();
    UIView::layoutPendingViews();
}

void SimulatedHost::unlock()
{
    if (!m_booted)
        return;
    auto backlight = SBBacklightController::sharedInstance();
    if (backlight->screenIsOff())
        backlight->turnOnScreen();
    SBLockScreenManager::sharedInstance()->unlockUI();
    updateDisplayOffCurtain();
    updateHomeScreen();
    updateStatusBar();
    UIView::layoutPendingViews();
}

void SimulatedHost::showNotificationCenter()
{
    if (!m_booted || isNotificationCenterVisible())
        return;
    if (!m_notificationCenterWindow) {
        m_notificationCenterViewController = make<SBNotificationCenterViewController>();
        m_notificationCenterWindow = UIWindow::create(UIScreen::mainScreen()->bounds());
        m_notificationCenterWindow->setName("notificationCenterWindow");
        m_notificationCenterWindow->setRootViewController(m_notificationCenterViewController.get());
    }
    // Showing the window makes its controllers appear (viewWillAppear: and
    // viewDidAppear:, through the runtime).
    m_notificationCenterWindow->setHidden(false);
    updateStatusBar();
    UIView::layoutPendingViews();
}

void SimulatedHost::hideNotificationCenter()
{
    if (!isNotificationCenterVisible())
        return;
    m_notificationCenterWindow->setHidden(true);
    updateStatusBar();
    UIView::layoutPendingViews();
}

static constexpr double searchProgressSteps[] = { 0, 0.25, 0.5, 0.75, 1 };

bool SimulatedHost::showSearch(long long edge)
{
    if (edge != 1 && edge != 8)
        return false;
    if (!m_booted || isSearchVisible())
        return true;
    if (!m_searchWindow) {
        StrongId controller = objc::send<StrongId>(objc::alloc(SBSearchViewController::classObject()), OBJC_SEL("init"));
        m_searchViewController = objc::castRef<SBSearchViewController>(controller);
        if (!m_searchViewController)
            return true;
        m_searchWindow = UIWindow::create(UIScreen::mainScreen()->bounds());
        m_searchWindow->setName("searchWindow");
        m_searchWindow->setRootViewController(m_searchViewController.get());
    }
    auto* controller = m_searchViewController.get();
    controller->loadViewIfNeeded();
    if (auto* spotlight = controller->searchViewController()) {
        // The suggestions were made with the page: a live icon may be stale.
        if (spotlight->isViewLoaded())
            SBHomeScreenView::refreshIconCells(spotlight->view(), m_configuration.device.scale);
        spotlight->setPresentationEdge(edge);
        // SpringBoard asks Spotlight where the page comes from before it
        // starts to move it.
        objc::send<long long>(spotlight, OBJC_SEL("presentsFromEdge"));
    }
    m_searchWindow->setHidden(false);
    for (double progress : searchProgressSteps)
        objc::send(controller, OBJC_SEL("updatePresentationProgress:"), progress);
    objc::send(controller, OBJC_SEL("didFinishPresenting:"), true);
    updateStatusBar();
    UIView::layoutPendingViews();
    return true;
}

void SimulatedHost::hideSearch()
{
    if (!isSearchVisible())
        return;
    auto* controller = m_searchViewController.get();
    for (auto it = std::rbegin(searchProgressSteps); it != std::rend(searchProgressSteps); ++it)
        objc::send(controller, OBJC_SEL("updatePresentationProgress:"), *it);
    objc::send(controller, OBJC_SEL("didFinishPresenting:"), false);
    m_searchWindow->setHidden(true);
    updateStatusBar();
    UIView::layoutPendingViews();
}

static json optionalString(const std::optional<std::string>& value) { return value ? json(*value) : json(nullptr); }

static json notificationRecord(const HostWorld::Notification& notification)
{
    return { { "app", notification.app }, { "title", optionalString(notification.title) }, { "message", optionalString(notification.message) } };
}

void SimulatedHost::dumpHost(json& host) const
{
    auto& world = HostWorld::shared();
    auto backlight = SBBacklightController::sharedInstance();
    host["system"] = m_configuration.systemVersion;
    host["device"] = m_configuration.device.name;
    host["locked"] = SBLockScreenManager::sharedInstance()->isUILocked();
    host["screenOn"] = backlight->screenIsOn();
    host["orientation"] = orientationName(m_booted ? UIApplication::sharedApplication()->statusBarOrientation() : UIInterfaceOrientationPortrait);
    // The status bar on screen: the notification centre's own while it is down.
    if (isNotificationCenterVisible())
        host["statusBarAlpha"] = m_notificationCenterViewController->statusBarView() ? 1.0 : 0.0;
    else
        host["statusBarAlpha"] = m_statusBarWindow ? m_statusBarWindow->alpha() : 1.0;
    host["dimInterval"] = objc::send<double>(backlight, OBJC_SEL("defaultLockScreenDimInterval"));
    host["idleTimerResets"] = backlight->idleTimerResets();
    host["hooks"] = json::array();
    host["log"] = world.log();

    auto alarms = json::array();
    for (auto& entry : AlarmManager::sharedManager()->savedAlarms()) {
        alarms.push_back({ { "hour", entry.alarm->hour() }, { "minute", entry.alarm->minute() }, { "title", entry.alarm->title() },
            { "allowsSnooze", entry.alarm->allowsSnooze() }, { "active", entry.active } });
    }
    host["alarms"] = alarms;

    auto timer = TimerManager::sharedManager();
    host["timer"] = { { "state", timer->state() }, { "fireTime", timer->fireTime() }, { "commands", timer->commands() } };

    auto media = SBMediaController::sharedInstance();
    auto& nowPlaying = media->nowPlaying();
    host["media"] = { { "playing", media->isPlaying() }, { "track", nowPlaying ? nowPlaying->track : 0 }, { "tracks", nowPlaying ? nowPlaying->tracks : 0 },
        { "volume", media->volume() }, { "commands", media->commands() } };

    auto launches = json::array();
    for (auto& launch : world.launches())
        launches.push_back({ { "app", optionalString(launch.app) }, { "url", optionalString(launch.url) }, { "promptToUnlock", launch.promptToUnlock } });
    host["launches"] = launches;
    auto notifications = json::array();
    for (auto& notification : world.notifications())
        notifications.push_back(notificationRecord(notification));
    host["notifications"] = notifications;
    auto removed = json::array();
    for (auto& notification : world.removedNotifications())
        removed.push_back(notificationRecord(notification));
    host["removed"] = removed;
    auto actions = json::array();
    for (auto& action : world.actions())
        actions.push_back({ { "app", action.app }, { "title", optionalString(action.title) }, { "index", action.index } });
    host["actions"] = actions;
    auto alerts = json::array();
    for (auto& alert : world.alerts()) {
        alerts.push_back({ { "title", optionalString(alert.title) }, { "message", optionalString(alert.message) }, { "cancel", optionalString(alert.cancel) },
            { "others", alert.others } });
    }
    host["alerts"] = alerts;
    host["menuPressesHandledByHost"] = world.menuPressesHandledByHost();
    host["fullscreenAlert"] = m_lockScreenViewController && m_lockScreenViewController->fullscreenBulletinViewController();
}
