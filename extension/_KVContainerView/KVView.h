#pragma once

#include <UIKit/UIView.h>

class CVMusicProvider;
class KVAppLauncherView;
class KVMelodraView;
class KVSettings;
class KVTableViewController;
class NSBundle;
class NSTimer;
class UIGestureRecognizer;
class UIImage;
class UIImageView;
class UILabel;
class UIVisualEffectView;

// The assistant panel: clock, date and alarm/timer line, weather line,
// battery summary, the schedule and notifications table, the app launcher and
// the music strip. One panel per process, placed by the hooks on the lock
// screen, in the notification centre or on the search page, and kept fresh by
// repeating timers on the main run loop that are never stopped.
//
// The implementation is split by concern like Objective-C categories:
// KVView.cpp (construction, layout, visibility, refresh), KVView+Vestrum.cpp
// (clock, date, alarm line), KVView+Forecast.cpp, KVView+Ampero.cpp and
// KVView+Dispatch.cpp (taps and closing overlays).
class KVView final : public UIView {
    OBJC_CLASS(KVView)
public:
    KVView();
    static KVView* sharedInstance();
    // The panel built last; hooks that are not methods of the panel reach it here.
    static KVView* currentPanel();

    double width() const { return bounds().size.width; }
    double height() const { return bounds().size.height; }

    void changeFrame(CGRect);
    void updateViewVisibilites();
    void update();
    void updateLabels();

    // Timer targets.
    void visibilityHandlerAndTimeUpdateTimer(NSTimer*);
    void frameUpdateTimer(NSTimer*);
    void weatherUpdateTimer(NSTimer*);
    void scheduleAndNotificationsUpdateTimer(NSTimer*);

    // Clock, date and the alarm/timer line.
    std::string timeFromNSDate(NSObject* date) const;
    std::string dateFromNSDate(NSObject* date) const;
    void updateTimeDatelabels();
    void updateAlarmTimerLabel();
    void alarmTimerLabelSingleTapRecognizer(UIGestureRecognizer*);
    void alarmTimerLabelLongPressRecognizer(UIGestureRecognizer*);

    // Weather line and battery summary.
    void updateForecastLabels();
    void updateAmperoSummary();

    // Taps and closing overlays.
    void timeContainerSingleTapRecognizer(UIGestureRecognizer*);
    void weatherContainerSingleTapRecognizer(UIGestureRecognizer*);
    void amperoContainerSingleTapRecognizer(UIGestureRecognizer*);
    bool hideAnyShowingDisplayViewsBecauseHomeButtonPressed(bool byHomeButton);
    // Set while a full-screen alert (an alarm going off) is on the lock screen.
    static bool fullscreenAlertShowing();
    static void setFullscreenAlertShowing(bool);

    // What the alarm and timer overlay reports every second.
    bool isAnAlarmActive() const { return _isAnAlarmActive; }
    void setIsAnAlarmActive(bool active) { _isAnAlarmActive = active; }
    std::string nextAlarmFireTime() const { return _nextAlarmFireTime; }
    void setNextAlarmFireTime(const std::string& text) { _nextAlarmFireTime = text; }
    int timerState() const { return _timerState; }
    void setTimerState(int state) { _timerState = state; }
    RefPtr<NSObject> timerTimeRemaining() const;
    void setTimerTimeRemaining(NSObject* text);

    KVTableViewController* tableViewController() const { return _tableViewController.get(); }
    KVAppLauncherView* appLauncherView() const { return _appLauncherView.get(); }
    KVMelodraView* melodraView() const { return _melodraView.get(); }

    // Section builders, called once from the constructor.
    void addBackground();
    void addVestrum();
    void addForecast();
    void addAmpero();
    void addCalveraNotaraTableView();
    void addLancera();
    void addMelodraView();

    // Fields under their names on the phone; the host and the table read
    // some of them by name.
    RefPtr<KVSettings> _settings;
    RefPtr<CVMusicProvider> _musicProvider;
    RefPtr<NSBundle> _kavelinBundle;
    int _previousInterfaceOrientation { -1 };
    bool _hasUpdatedAtLeastOnce { false };
    RefPtr<UIImageView> _wallpaperImageView;
    RefPtr<UIVisualEffectView> _blurEffectView;
    RefPtr<UIView> _timeContainerView;
    RefPtr<UILabel> _timeDateLabel;
    RefPtr<UILabel> _alarmTimerLabel;
    RefPtr<UIImage> _alarmImage;
    RefPtr<UIImage> _timerImage;
    RefPtr<UIView> _weatherContainerView;
    RefPtr<UILabel> _weatherIconAndConditionNameLabel;
    RefPtr<UILabel> _highLowLabel;
    RefPtr<UILabel> _temperatureLabel;
    RefPtr<UILabel> _weatherErrorLabel;
    RefPtr<UIView> _amperoContainerView;
    RefPtr<UILabel> _batteryPercentLabel;
    RefPtr<UIImageView> _currentBatteryStateImageView;
    RefPtr<UIImage> _batteryChargingImage;
    RefPtr<UIImage> _batteryDrainingImages[11];
    RefPtr<UIImage> _lowPowerBatteryChargingImage;
    RefPtr<UIImage> _lowPowerBatteryDrainingImages[11];
    RefPtr<KVTableViewController> _tableViewController;
    RefPtr<KVAppLauncherView> _appLauncherView;
    RefPtr<KVMelodraView> _melodraView;
    bool _isAnAlarmActive { false };
    std::string _nextAlarmFireTime;
    int _timerState { -1 };
    RefPtr<NSObject> _timerTimeRemaining;

private:
    void layoutVestrum(double topMargin, double alarmLineY, double dateOffset);
    void layoutForecast(double weatherTop);
    void layoutAmpero();
    RefPtr<UIImage> loadBundleImage(const std::string& name, CGSize size) const;
    UIImage* batteryImageFor(bool charging, bool lowPower, int level) const;
};
