#pragma once

#include "DeviceModel.h"
#include "HostWorld.h"
#include "SpringBoard/SBMediaController.h"

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <optional>
#include <string>

class FBRootWindow;
class SBHomeScreenView;
class SBLockScreenViewController;
class SBNotificationCenterViewController;
class SBSearchViewController;
class SBStatusBarView;
class UIWindow;

// The host process as the simulator drives it: SpringBoard on a device of a
// given shape, its world (battery, alarms, the countdown timer, calls,
// music, notifications) and what a user does to it (the home button, the
// display, alerts, rotation, locking, the notification centre and search).
//
// The host's own flow reaches its hookable methods through the runtime, so
// an extension's replacements see every call: the root window is made with
// `initWithDisplay:`, the lock screen view with `initWithFrame:`, the home
// button goes to `noteMenuButtonDown` or `clickedMenuButton`, and so on.
//
// Making a host starts a fresh world: the SpringBoard objects that answer
// `sharedInstance` are made anew on first use after it.
class SimulatedHost {
public:
    struct Configuration {
        std::string systemVersion { "9.3.3" };
        DeviceModel device { DeviceModel::iPhone6() };
        // The folder of the host's artwork (wallpaper.png, icons/); without
        // it the host draws its own stand-ins.
        std::string artDirectory;
    };

    SimulatedHost();
    explicit SimulatedHost(Configuration);
    ~SimulatedHost();
    SimulatedHost(const SimulatedHost&) = delete;
    SimulatedHost& operator=(const SimulatedHost&) = delete;

    const Configuration& configuration() const { return m_configuration; }
    // The shape can change until the process starts; afterwards these
    // answer false.
    bool setSystemVersion(std::string);
    bool setDevice(const DeviceModel&);
    bool setArtDirectory(std::string);

    // Puts the process's identity in place: the system version, the device
    // model and its screen. On the phone these are known before any
    // injected library's load-time initialisers run, so whoever loads an
    // extension calls this first. boot() does it when nobody did.
    void startProcess();
    bool isProcessStarted() const { return m_processStarted; }
    // Starts SpringBoard at the lock screen: locked, display on, portrait.
    void boot();
    bool isBooted() const { return m_booted; }
    HostWorld& world() const { return HostWorld::shared(); }

    // The world. Options left out keep their values.
    struct BatteryChange {
        std::optional<double> level;
        std::optional<bool> onAC;
        std::optional<bool> lowPowerMode;
        std::optional<long long> currentCapacity;
        std::optional<long long> maxCapacity;
    };
    void changeBattery(const BatteryChange&);
    enum class AlarmDay { Today, Tomorrow };
    // False (and nothing changes) for an hour or minute out of range.
    bool setNextAlarm(AlarmDay, int hour, int minute);
    void clearNextAlarm();
    void setTimerRunning(double remaining);
    void setTimerPaused(double remaining);
    void setTimerStopped();
    enum class CallState { None, IncomingCall, ActiveCall, ActiveFaceTime, FaceTimeInvitation };
    void setCallState(CallState);
    void setVolume(double);
    void setNowPlaying(std::optional<SBMediaController::NowPlaying>, bool playing);
    void deliverNotification(HostWorld::Notification);
    // The wall clock, the time zone or the locale changed: what shows the
    // time or the date is brought up to date at once.
    void clockDidChange();

    // What the user does (after boot; before it these do nothing).
    void pressHome();
    void setDisplayOn(bool);
    void showFullscreenAlert();
    void dismissFullscreenAlert();
    // UIInterfaceOrientation values: 1 portrait, 2 upside down, 3 landscape
    // right, 4 landscape left. False for anything else.
    bool rotate(int orientation);
    void lock();
    void unlock();
    void showNotificationCenter();
    void hideNotificationCenter();
    // Edge 8 presents from the right, 1 from the top. False for another.
    bool showSearch(long long edge);
    void hideSearch();

    FBRootWindow* rootWindow() const { return m_rootWindow.get(); }
    UIWindow* statusBarWindow() const { return m_statusBarWindow.get(); }
    SBLockScreenViewController* lockScreenViewController() const { return m_lockScreenViewController.get(); }
    bool isNotificationCenterVisible() const;
    bool isSearchVisible() const;
    bool isLockScreenShown() const;

    // The dump's `host` object (its `hooks` are left empty: whoever
    // installed hooks fills them in).
    void dumpHost(nlohmann::json&) const;
    static std::string orientationName(int orientation);

private:
    void wireWorld();
    void buildWallpaper();
    void buildStatusBar();
    void updateStatusBar();
    void updateDisplayOffCurtain();
    void updateHomeScreen();
    void scheduleMinuteTick();
    void minuteDidPass();
    void layoutWindows();

    Configuration m_configuration;
    bool m_processStarted { false };
    bool m_booted { false };
    RefPtr<FBRootWindow> m_rootWindow;
    RefPtr<SBLockScreenViewController> m_lockScreenViewController;
    RefPtr<SBHomeScreenView> m_homeScreenView;
    RefPtr<UIWindow> m_statusBarWindow;
    RefPtr<SBStatusBarView> m_statusBar;
    RefPtr<UIWindow> m_curtainWindow;
    RefPtr<UIWindow> m_notificationCenterWindow;
    RefPtr<SBNotificationCenterViewController> m_notificationCenterViewController;
    RefPtr<UIWindow> m_searchWindow;
    RefPtr<SBSearchViewController> m_searchViewController;
    uint64_t m_minuteTickToken { 0 };
};
