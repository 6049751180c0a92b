#include "KVTimeDisplayView.h"

#include "overlays/KVOverlaySupport.h"
#include "settings/KVSettings.h"

#include <Foundation/NSCalendar.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSDateComponents.h>
#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSString.h>
#include <Foundation/NSTimer.h>
#include <UIKit/UIBlurEffect.h>
#include <UIKit/UIVisualEffectView.h>

OBJC_IMPLEMENT_CLASS(KVTimeDisplayView, CVContainerView)
{
    c.classMethod<&KVTimeDisplayView::sharedInstance>("sharedInstance");
    c.method<&KVTimeDisplayView::updateFrame>("updateFrame");
    c.method<&KVTimeDisplayView::delegate>("delegate");
    c.method<&KVTimeDisplayView::setDelegate>("setDelegate:");
    c.method<&KVTimeDisplayView::updateTimer>("updateTimer:");
    c.method<&KVTimeDisplayView::timeUntilFiredStringRepresentation>("timeUntilFiredStringRepresentation:");
    c.method<&KVTimeDisplayView::currentRelativeTimerDateWithHourOffset>("currentRelativeTimerDateWithHourOffset:minuteOffset:secondOffset:");
}

// Hours from 1 January 1970 to 1 January 2001.
static constexpr long long hoursFrom1970To2001 = 271752;

KVTimeDisplayView* KVTimeDisplayView::sharedInstance()
{
    static KVTimeDisplayView* shared = make<KVTimeDisplayView>().leakRef();
    return shared;
}

KVTimeDisplayView::KVTimeDisplayView()
{
    setName("KVTimeDisplayView");
    setHidden(true);
    _settings = KVSettings::sharedInstance();
    _themeColor = _settings->themeColor();

    _blurEffectView = make<UIVisualEffectView>(UIBlurEffect::effectWithStyle(2));
    _blurEffectView->setName("_blurEffectView");
    _blurEffectView->setFrame(bounds());
    _blurEffectView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    _blurEffectView->setUserInteractionEnabled(false);
    addSubview(_blurEffectView.get());

    NSTimer::scheduledTimerWithTimeInterval(1.0, this, OBJC_SEL("updateTimer:"), nullptr, true);
}

void KVTimeDisplayView::show()
{
    CVContainerView::show();
    objc::send(containerWindow(), OBJC_SEL("enableTapToTerminate"));
}

void KVTimeDisplayView::viewWillShow()
{
    CVContainerView::viewWillShow();
    updateFrame();
    if (_settings->vestrumResetLockScreenDim())
        resetLockScreenIdleTimer();
}

void KVTimeDisplayView::viewWillHide()
{
    CVContainerView::viewWillHide();
    if (_settings->vestrumResetLockScreenDim())
        resetLockScreenIdleTimer();
}

void KVTimeDisplayView::updateFrame()
{
    _blurEffectView->setFrame(bounds());
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
    // Truncated to a whole number of seconds (a double beyond the 32-bit
    // range is clamped rather than left undefined).
    double whole = std::trunc(seconds);
    int s = whole >= 2147483647.0 ? 2147483647 : whole <= -2147483648.0 ? (-2147483647 - 1) : static_cast<int>(whole);
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
