#include "KVTimeDisplayView.h"

#include "overlays/KVOverlaySupport.h"
#include "settings/KVSettings.h"

#include <Foundation/IntegerConversion.h>
#include <Foundation/NSCalendar.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSDateComponents.h>
#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSString.h>
#include <Foundation/NSTimer.h>
#include <CorvLib/CVAppItem.h>
#include <CorvLib/CVImageFactory.h>
#include <Foundation/NSBundle.h>
#include <UIKit/NSAttributedString.h>
#include <UIKit/UIAlertView.h>
#include <UIKit/UIApplication.h>
#include <UIKit/UIBlurEffect.h>
#include <UIKit/UIImage.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UIPickerView.h>
#include <UIKit/UITapGestureRecognizer.h>
#include <UIKit/UIVisualEffectView.h>

#include <algorithm>

OBJC_IMPLEMENT_CLASS(KVTimeDisplayView, CVContainerView)
{
    c.classMethod<&KVTimeDisplayView::sharedInstance>("sharedInstance");
    c.method<&KVTimeDisplayView::updateFrame>("updateFrame");
    c.method<&KVTimeDisplayView::delegate>("delegate");
    c.method<&KVTimeDisplayView::setDelegate>("setDelegate:");
    c.method<&KVTimeDisplayView::updateTimer>("updateTimer:");
    c.method<&KVTimeDisplayView::timeUntilFiredStringRepresentation>("timeUntilFiredStringRepresentation:");
    c.method<&KVTimeDisplayView::currentRelativeTimerDateWithHourOffset>("currentRelativeTimerDateWithHourOffset:minuteOffset:secondOffset:");
    c.method<&KVTimeDisplayView::pickerView>("pickerView");
    c.method<&KVTimeDisplayView::setPickerView>("setPickerView:");
    c.method<&KVTimeDisplayView::numberOfComponentsInPickerView>("numberOfComponentsInPickerView:");
    c.method<&KVTimeDisplayView::pickerViewNumberOfRowsInComponent>("pickerView:numberOfRowsInComponent:");
    c.method<&KVTimeDisplayView::pickerViewAttributedTitleForRow>("pickerView:attributedTitleForRow:forComponent:");
    c.method<&KVTimeDisplayView::alarmButtonSingleTapRecognizer>("alarmButtonSingleTapRecognizer:");
    c.method<&KVTimeDisplayView::timerButtonSingleTapRecognizer>("timerButtonSingleTapRecognizer:");
}

static constexpr const char* kavelinBundlePath = "/Library/Application Support/Kavelin/KavelinBundle.bundle";

// Hours from 1 January 1970 to 1 January 2001.
static constexpr long long hoursFrom1970To2001 = 271752;

KVTimeDisplayView* KVTimeDisplayView::sharedInstance() { return sharedOverlayInstance<KVTimeDisplayView>(); }

KVTimeDisplayView::KVTimeDisplayView()
{
    setName("KVTimeDisplayView");
    setHidden(true);
    _settings = KVSettings::sharedInstance();
    _themeColor = _settings->themeColor();
    _kavelinBundle = NSBundle::bundleWithPath(kavelinBundlePath);
    // Descending on purpose: the wheels turn down towards midnight.
    for (long long hour = 23; hour >= 0; --hour)
        _hours.push_back(hour);
    for (long long minute = 59; minute >= 0; --minute)
        _minutes.push_back(minute);

    _blurEffectView = make<UIVisualEffectView>(UIBlurEffect::effectWithStyle(2));
    _blurEffectView->setName("_blurEffectView");
    _blurEffectView->setFrame(bounds());
    _blurEffectView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    _blurEffectView->setUserInteractionEnabled(false);
    addSubview(_blurEffectView.get());

    auto clock = CVAppItem::alloc()->initFromIdentifier("com.apple.mobiletimer", false);
    _clockIconImageView = make<UIImageView>(CVImageFactory::imageSetScale(clock ? clock->iconImage() : nullptr, CGSizeMake(75.0, 75.0)));
    _clockIconImageView->setName("_clockIconImageView");
    addSubview(_clockIconImageView.get());

    _pickerView = UIPickerView::create();
    _pickerView->setName("_pickerView");
    _pickerView->setBackgroundColor(UIColor::clearColor());
    _pickerView->setShowsSelectionIndicator(true);
    _pickerView->setDataSource(this);
    _pickerView->setDelegate(this);
    _pickerView->reloadAllComponents();
    _pickerView->selectRow(11, 0, false);
    _pickerView->selectRow(59, 1, false);
    addSubview(_pickerView.get());

    _pickerBackgroundView = make<UIView>();
    _pickerBackgroundView->setName("_pickerBackgroundView");
    _pickerBackgroundView->setBackgroundColor(UIColor::whiteColor());
    _pickerBackgroundView->setAlpha(0.05);
    _pickerBackgroundView->layer().setCornerRadius(10);
    _pickerBackgroundView->setClipsToBounds(true);
    _pickerBackgroundView->setUserInteractionEnabled(false);
    _pickerView->addSubview(_pickerBackgroundView.get());

    auto makeButton = [&](const char* name, const char* resource, objc::SEL action) {
        RefPtr<UIImage> image = _kavelinBundle ? UIImage::imageWithContentsOfFile(_kavelinBundle->pathForResource(resource, "png")) : nullptr;
        auto button = make<UIImageView>(image);
        button->setName(name);
        button->layer().setCornerRadius(12);
        button->setClipsToBounds(true);
        button->setUserInteractionEnabled(true);
        button->addGestureRecognizer(make<UITapGestureRecognizer>(this, action).get());
        addSubview(button.get());
        return button;
    };
    _timerButtonImageView = makeButton("_timerButtonImageView", "SetTimer", OBJC_SEL("timerButtonSingleTapRecognizer:"));
    _alarmButtonImageView = makeButton("_alarmButtonImageView", "SetAlarm", OBJC_SEL("alarmButtonSingleTapRecognizer:"));

    NSTimer::scheduledTimerWithTimeInterval(1.0, this, OBJC_SEL("updateTimer:"), nullptr, true);
}

void KVTimeDisplayView::show() { showContainerOverlay(this); }

void KVTimeDisplayView::viewWillShow()
{
    CVContainerView::viewWillShow();
    containerOverlayWillShow(this, _settings.get(), &KVSettings::vestrumResetLockScreenDim);
}

void KVTimeDisplayView::viewWillHide()
{
    CVContainerView::viewWillHide();
    resetLockScreenIdleTimerIfAsked(_settings.get(), &KVSettings::vestrumResetLockScreenDim);
}

// Screens too short for the icon, the full picker and the buttons (phones in
// landscape, the 3.5-inch one upright) keep the buttons this far above the
// bottom: everything moves up first, never closer than this to the top, and
// what still does not fit comes off the picker's height, down to about
// three and a half rows.
static constexpr double screenEdgeMargin = 10;
static constexpr double shortestPickerHeight = 120;

void KVTimeDisplayView::updateFrame()
{
    double W = width(), H = height();
    _blurEffectView->setFrame(bounds());
    bool portrait = objc::send<long long>(UIApplication::sharedApplication(), OBJC_SEL("_getSpringBoardOrientation")) == 1;

    CGSize icon = _clockIconImageView->bounds().size;
    double iconTop = (portrait ? 0.19 : 0.125) * H - icon.height / 2;
    // A screen narrower than the picker and its margins (320 points
    // upright) narrows the picker, and the buttons with it, rather than let
    // it run past both edges.
    CGSize picker = CGSizeMake(std::min(345.6, W - 2 * screenEdgeMargin), 216);
    double buttonWidth = picker.width / 2 - 10;
    double buttonHeight = 0.292 * buttonWidth;
    double buttonsBottom = iconTop + icon.height + 15 + picker.height + 25 + buttonHeight + (portrait ? 10 + buttonHeight : 0);
    double overflow = buttonsBottom - (H - screenEdgeMargin);
    if (overflow > 0) {
        double lift = std::min(overflow, std::max(0.0, iconTop - screenEdgeMargin));
        iconTop -= lift;
        picker.height = std::max(shortestPickerHeight, picker.height - (overflow - lift));
    }
    _clockIconImageView->setFrame(CGRectMake(W / 2 - icon.width / 2, iconTop, icon.width, icon.height));
    maskAsAppIcon(_clockIconImageView.get());

    CGRect pickerFrame = CGRectMake(W / 2 - picker.width / 2, CGRectGetMaxY(_clockIconImageView->frame()) + 15, picker.width, picker.height);
    _pickerView->setFrame(pickerFrame);
    _pickerBackgroundView->setFrame(_pickerView->bounds());

    double buttonsTop = CGRectGetMaxY(pickerFrame) + 25;
    if (portrait) {
        double x = W / 2 - buttonWidth / 2;
        _timerButtonImageView->setFrame(CGRectMake(x, buttonsTop, buttonWidth, buttonHeight));
        _alarmButtonImageView->setFrame(CGRectMake(x, buttonsTop + buttonHeight + 10, buttonWidth, buttonHeight));
    } else {
        _timerButtonImageView->setFrame(CGRectMake(pickerFrame.origin.x, buttonsTop, buttonWidth, buttonHeight));
        _alarmButtonImageView->setFrame(CGRectMake(CGRectGetMaxX(pickerFrame) - buttonWidth, buttonsTop, buttonWidth, buttonHeight));
    }
}

void KVTimeDisplayView::setPickerView(UIPickerView* picker) { _pickerView = picker; }

long KVTimeDisplayView::numberOfComponentsInPickerView(NSObject*) const { return 2; }

long KVTimeDisplayView::pickerViewNumberOfRowsInComponent(NSObject*, long component) const
{
    return static_cast<long>(component == 0 ? _hours.size() : _minutes.size());
}

std::string KVTimeDisplayView::titleForRow(long row, long component) const
{
    const auto& values = component == 0 ? _hours : _minutes;
    if (row < 0 || row >= static_cast<long>(values.size()))
        return {};
    long long value = values[row];
    std::string digits = value < 10 ? "0" + std::to_string(value) : std::to_string(value);
    if (component != 0)
        return digits;
    std::string twelveHour;
    if (row <= 10)
        twelveHour = NSString::format("%d", static_cast<int>(value - 12)) + "pm";
    else if (row == 11)
        twelveHour = "12pm";
    else if (row <= 22)
        twelveHour = NSString::format("%d", static_cast<int>(value)) + "am";
    else
        twelveHour = "12am";
    return digits + "  |  " + twelveHour;
}

RefPtr<NSObject> KVTimeDisplayView::pickerViewAttributedTitleForRow(NSObject*, long row, long component) const
{
    NSTextAttributes white;
    white.foregroundColor = UIColor::whiteColor();
    return NSAttributedString::create(titleForRow(row, component), white);
}

// The picked hour and minute; -1 for a wheel without a selection.
static long long pickedValue(const std::vector<long long>& values, UIPickerView* picker, long component)
{
    long row = picker ? picker->selectedRowInComponent(component) : -1;
    return row >= 0 && row < static_cast<long>(values.size()) ? values[row] : 0;
}

void KVTimeDisplayView::alarmButtonSingleTapRecognizer(UIGestureRecognizer*)
{
    long long hour = pickedValue(_hours, _pickerView.get(), 0);
    long long minute = pickedValue(_minutes, _pickerView.get(), 1);

    StrongId alarm = objc::send<StrongId>(objc::send<StrongId>(objc::objc_getClass("Alarm"), OBJC_SEL("alloc")), OBJC_SEL("initWithDefaultValues"));
    objc::send(alarm, OBJC_SEL("setAllowsSnooze:"), true);
    objc::send(alarm, OBJC_SEL("setHour:"), hour);
    objc::send(alarm, OBJC_SEL("setMinute:"), minute);
    objc::send(alarm, OBJC_SEL("setTitle:"), std::string());

    StrongId manager = objc::send<StrongId>(objc::objc_getClass("AlarmManager"), OBJC_SEL("sharedManager"));
    objc::send(manager, OBJC_SEL("loadAlarms"));
    objc::send(manager, OBJC_SEL("addAlarm:active:"), alarm.get(), true);
    objc::send(manager, OBJC_SEL("saveAlarms"));

    // Spelled so on purpose: it is the text users have always seen.
    make<UIAlertView>("Alarm created succesfully", std::nullopt, nullptr, "Close", std::vector<std::string> {})->show();
    objc::send(this, OBJC_SEL("hide"));
}

void KVTimeDisplayView::timerButtonSingleTapRecognizer(UIGestureRecognizer*)
{
    long long hours = pickedValue(_hours, _pickerView.get(), 0);
    long long minutes = pickedValue(_minutes, _pickerView.get(), 1);

    StrongId manager = objc::send<StrongId>(objc::objc_getClass("TimerManager"), OBJC_SEL("sharedManager"));
    double fireValue = currentRelativeTimerDateWithHourOffset(hours, minutes, 0)->timeIntervalSince1970();
    objc::send(manager, OBJC_SEL("scheduleAt:withSound:"), fireValue, objc::send<std::string>(manager, OBJC_SEL("defaultSound")));
    objc::send(this, OBJC_SEL("hide"));
}

RefPtr<NSDate> KVTimeDisplayView::currentRelativeTimerDateWithHourOffset(long long hours, long long minutes, long long seconds) const
{
    auto components = NSDateComponents::create();
    components->setHour(static_cast<long>(hours - hoursFrom1970To2001));
    components->setMinute(static_cast<long>(minutes));
    components->setSecond(static_cast<long>(seconds));
    return NSCalendar::currentCalendar()->dateByAddingComponents(components.get(), NSDate::date().get(), 0);
}

std::string KVTimeDisplayView::timeUntilFiredStringRepresentation(double seconds) const
{
    int s = truncatedToInteger<int>(seconds);
    int h = s / 3600;
    int r = s - 3600 * h;
    int m = r / 60;
    int x = s % 60;
    std::string hourText = s >= 36000 ? std::to_string(h) : NSString::format("0%d", h);
    std::string minuteText = r > 599 ? std::to_string(m) : NSString::format("0%d", m);
    std::string secondText = x > 9 ? std::to_string(x) : NSString::format("0%d", x);
    if (h == 0)
        return m != 0 ? minuteText + ":" + secondText : "00:" + secondText;
    if (_settings->vestrumTimerHourAndSeconds())
        return hourText + ":" + minuteText + ":" + secondText;
    return hourText + ":" + minuteText;
}

void KVTimeDisplayView::updateTimer(NSTimer*)
{
    if (!_delegate)
        return;

    StrongId provider = objc::send<StrongId>(objc::objc_getClass("SBClockDataProvider"), OBJC_SEL("sharedInstance"));
    StrongId notification = objc::object_getIvar(provider, "_nextAlarmForToday");
    if (!notification)
        notification = objc::object_getIvar(provider, "_firstAlarmForTomorrow");
    if (notification) {
        StrongId alarm = objc::send<StrongId>(objc::send<StrongId>(objc::objc_getClass("Alarm"), OBJC_SEL("alloc")), OBJC_SEL("initWithNotification:"),
            notification.get());
        static RefPtr<NSDateFormatter> twentyFourHour, twelveHour;
        auto& formatter = _settings->militaryTime() ? twentyFourHour : twelveHour;
        if (!formatter) {
            formatter = NSDateFormatter::create();
            formatter->setDateFormat(_settings->militaryTime() ? "HH:mm" : "hh:mm a");
        }
        auto fireDate = objc::send<RefPtr<NSDate>>(alarm, OBJC_SEL("nextFireDate"));
        objc::send(_delegate, OBJC_SEL("setNextAlarmFireTime:"), formatter->stringFromDate(fireDate.get()));
        objc::send(_delegate, OBJC_SEL("setIsAnAlarmActive:"), true);
    } else {
        objc::send(_delegate, OBJC_SEL("setIsAnAlarmActive:"), false);
        objc::send(_delegate, OBJC_SEL("setNextAlarmFireTime:"), std::string());
    }

    StrongId manager = objc::send<StrongId>(objc::objc_getClass("TimerManager"), OBJC_SEL("sharedManager"));
    long long state = objc::send<long long>(manager, OBJC_SEL("state"));
    objc::send(_delegate, OBJC_SEL("setTimerState:"), static_cast<int>(state));
    if (state == 3) {
        double now = currentRelativeTimerDateWithHourOffset(0, 0, 0)->timeIntervalSince1970();
        double remaining = objc::send<double>(manager, OBJC_SEL("fireTime")) - now;
        objc::send(_delegate, OBJC_SEL("setTimerTimeRemaining:"), static_cast<NSObject*>(NSString::create(timeUntilFiredStringRepresentation(remaining)).get()));
    } else if (state == 1) {
        objc::send(_delegate, OBJC_SEL("setTimerTimeRemaining:"), static_cast<NSObject*>(nullptr));
    } else {
        objc::send(_delegate, OBJC_SEL("setTimerTimeRemaining:"), static_cast<NSObject*>(NSString::create("Timer Paused").get()));
    }
}
