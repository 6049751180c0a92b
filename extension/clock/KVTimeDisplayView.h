#pragma once

#include <CorvLib/CVContainerView.h>

#include <string>
#include <vector>

class KVSettings;
class NSBundle;
class NSDate;
class NSTimer;
class UIColor;
class UIGestureRecognizer;
class UIImageView;
class UIPickerView;
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
    UIPickerView* pickerView() const { return _pickerView.get(); }
    void setPickerView(UIPickerView*);

    // The picker's data source and delegate: hours (23 down to 0) and
    // minutes (59 down to 0), white titles.
    long numberOfComponentsInPickerView(NSObject* picker) const;
    long pickerViewNumberOfRowsInComponent(NSObject* picker, long component) const;
    RefPtr<NSObject> pickerViewAttributedTitleForRow(NSObject* picker, long row, long component) const;
    // The titles as text: "23  |  11pm" ... "00  |  12am" and "59" ... "00".
    std::string titleForRow(long row, long component) const;

    // Sets an alarm at the picked time of day, says so in an alert, hides.
    void alarmButtonSingleTapRecognizer(UIGestureRecognizer*);
    // Starts a countdown of the picked hours and minutes, hides.
    void timerButtonSingleTapRecognizer(UIGestureRecognizer*);

    void updateTimer(NSTimer*);
    std::string timeUntilFiredStringRepresentation(double seconds) const;
    // Now, shifted by the offsets and by the hours between 1970 and 2001, so
    // that its seconds since 1970 are the wanted moment's seconds since 2001:
    // the time base the timer manager schedules and reports in.
    RefPtr<NSDate> currentRelativeTimerDateWithHourOffset(long long hours, long long minutes, long long seconds) const;

    RefPtr<KVSettings> _settings;
    RefPtr<UIColor> _themeColor;
    RefPtr<NSBundle> _kavelinBundle;
    std::vector<long long> _hours;
    std::vector<long long> _minutes;
    RefPtr<UIVisualEffectView> _blurEffectView;
    RefPtr<UIImageView> _clockIconImageView;
    RefPtr<UIView> _pickerBackgroundView;
    RefPtr<UIPickerView> _pickerView;
    RefPtr<UIImageView> _timerButtonImageView;
    RefPtr<UIImageView> _alarmButtonImageView;
    // The panel; not owned (it lives as long as the process anyway).
    NSObject* _delegate { nullptr };
};
