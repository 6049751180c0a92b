#pragma once

#include <CorvLib/CVContainerView.h>

#include <string>

class KVSettings;
class NSDate;
class NSTimer;
class UIColor;
class UIVisualEffectView;

// The alarm and timer overlay opened from the panel's clock. Besides what it
// shows, its one-second timer feeds the panel (its delegate) with the next
// alarm and the countdown's state and time left, whether or not it is shown.
class KVTimeDisplayView final : public CVContainerView {
    OBJC_CLASS(KVTimeDisplayView)
public:
    KVTimeDisplayView();
    static KVTimeDisplayView* sharedInstance();

    void viewWillShow() override;
    void viewWillHide() override;
    void show() override;
    void updateFrame();

    NSObject* delegate() const { return _delegate; }
    void setDelegate(NSObject* delegate) { _delegate = delegate; }

    void updateTimer(NSTimer*);
    std::string timeUntilFiredStringRepresentation(double seconds) const;
    // Now, shifted by the offsets and by the hours between 1970 and 2001, so
    // that its seconds since 1970 are the wanted moment's seconds since 2001:
    // the time base the timer manager schedules and reports in.
    RefPtr<NSDate> currentRelativeTimerDateWithHourOffset(long long hours, long long minutes, long long seconds) const;

    RefPtr<KVSettings> _settings;
    RefPtr<UIColor> _themeColor;
    RefPtr<UIVisualEffectView> _blurEffectView;
    // The panel; not owned (it lives as long as the process anyway).
    NSObject* _delegate { nullptr };
};
