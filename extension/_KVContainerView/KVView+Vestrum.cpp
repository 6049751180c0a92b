// The panel's clock, date and alarm/timer line.

#include "KVView.h"

#include "clock/KVTimeDisplayView.h"
#include "settings/KVSettings.h"

#include <Foundation/NSDate.h>
#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSString.h>
#include <UIKit/NSAttributedString.h>
#include <UIKit/NSTextAttachment.h>
#include <UIKit/UIFont.h>
#include <UIKit/UIImage.h>
#include <UIKit/UILabel.h>
#include <UIKit/UILongPressGestureRecognizer.h>
#include <UIKit/UITapGestureRecognizer.h>
#include <objc/SharedInstance.h>

static constexpr double iconSide = 15;

void KVView::addVestrum()
{
    _timeContainerView = make<UIView>();
    _timeContainerView->setName("_timeContainerView");
    _timeContainerView->setUserInteractionEnabled(true);
    _timeContainerView->addGestureRecognizer(make<UITapGestureRecognizer>(this, OBJC_SEL("timeContainerSingleTapRecognizer:")).get());
    addSubview(_timeContainerView.get());

    _timeDateLabel = make<UILabel>();
    _timeDateLabel->setName("_timeDateLabel");
    _timeDateLabel->setNumberOfLines(2);
    _timeDateLabel->setTextAlignment(NSTextAlignmentLeft);
    _timeDateLabel->setUserInteractionEnabled(false);
    _timeDateLabel->setAdjustsFontSizeToFitWidth(true);
    _timeContainerView->addSubview(_timeDateLabel.get());

    _alarmImage = loadBundleImage("Alarm", CGSizeMake(iconSide, iconSide));
    _timerImage = loadBundleImage("Timer", _alarmImage ? _alarmImage->size() : CGSizeMake(iconSide, iconSide));

    _alarmTimerLabel = make<UILabel>();
    _alarmTimerLabel->setName("_alarmTimerLabel");
    _alarmTimerLabel->setNumberOfLines(1);
    _alarmTimerLabel->setTextAlignment(NSTextAlignmentCenter);
    _alarmTimerLabel->setUserInteractionEnabled(true);
    _alarmTimerLabel->setAdjustsFontSizeToFitWidth(true);
    _alarmTimerLabel->setFont(UIFont::fontWithName("HelveticaNeue-Light", 15));
    _alarmTimerLabel->addGestureRecognizer(make<UITapGestureRecognizer>(this, OBJC_SEL("alarmTimerLabelSingleTapRecognizer:")).get());
    _alarmTimerLabel->addGestureRecognizer(make<UILongPressGestureRecognizer>(this, OBJC_SEL("alarmTimerLabelLongPressRecognizer:")).get());
    addSubview(_alarmTimerLabel.get());

    objc::send(objc::sharedInstance<KVTimeDisplayView>(), OBJC_SEL("setDelegate:"), static_cast<NSObject*>(this));
}

void KVView::layoutVestrum(double topMargin, double alarmLineY, double dateOffset)
{
    _timeContainerView->setFrame(CGRectMake(20, topMargin, width() / 2 - 20, 80));
    _timeDateLabel->setFrame(CGRectMake(0, dateOffset, _timeContainerView->bounds().size.width, 80));
    _alarmTimerLabel->setFrame(CGRectMake(0, alarmLineY, width(), 20));
}

// Formatters are shared per pattern: the clock asks every second.
static std::string format(const char* pattern, NSObject* date)
{
    static std::map<std::string, RefPtr<NSDateFormatter>> formatters;
    auto& formatter = formatters[pattern];
    if (!formatter) {
        formatter = NSDateFormatter::create();
        formatter->setDateFormat(pattern);
    }
    return formatter->stringFromDate(objc::cast<NSDate>(date));
}

std::string KVView::timeFromNSDate(NSObject* date) const
{
    bool military = _settings->militaryTime();
    std::string text = format(military ? "HH" : "hh", date);
    // A 12-hour clock drops the hour's leading zero; a 24-hour clock keeps it.
    if (!military && !text.empty() && text.front() == '0')
        text.erase(0, 1);
    text += format(_settings->secondsEnabled() ? ":mm:ss" : ":mm", date);
    return text;
}

std::string KVView::dateFromNSDate(NSObject* date) const
{
    std::string text;
    text += format("EEEE, ", date);
    text += format("MMMM ", date);
    std::string day = format("dd", date);
    if (!day.empty() && day.front() == '0')
        day.erase(0, 1);
    return text + day;
}

void KVView::updateTimeDatelabels()
{
    RefPtr<NSDate> now = NSDate::date();
    NSTextAttributes clock;
    clock.font = UIFont::fontWithName("HelveticaNeue-Light", 45);
    NSTextAttributes date;
    date.font = UIFont::fontWithName("HelveticaNeue-Light", 16);
    NSObject* nowObject = now.get();
    auto text = NSMutableAttributedString::create(objc::send<std::string>(this, OBJC_SEL("timeFromNSDate:"), nowObject) + "\n", clock);
    text->appendString(objc::send<std::string>(this, OBJC_SEL("dateFromNSDate:"), nowObject), date);
    _timeDateLabel->setAttributedText(text.get());
}

// An inline icon that sits on the text's baseline like a capital letter.
static RefPtr<NSAttributedString> inlineIcon(UIImage* image)
{
    auto attachment = make<NSTextAttachment>();
    attachment->setImage(RefPtr<UIImage>(image));
    attachment->setBounds(CGRectMake(0, -2, iconSide, iconSide));
    return NSAttributedString::attributedStringWithAttachment(attachment);
}

void KVView::updateAlarmTimerLabel()
{
    NSTextAttributes attributes;
    attributes.font = UIFont::fontWithName("HelveticaNeue-Light", 15);
    auto text = NSMutableAttributedString::create();
    if (_isAnAlarmActive) {
        text->appendAttributedString(inlineIcon(_alarmImage.get()).get());
        text->appendString(NSString::format(" %s", _nextAlarmFireTime.c_str()));
    }
    if (_timerState == 2 || _timerState == 3) {
        if (_isAnAlarmActive)
            text->appendString(" | ");
        text->appendAttributedString(inlineIcon(_timerImage.get()).get());
        text->appendString(" " + (_timerTimeRemaining ? _timerTimeRemaining->description() : std::string("(null)")));
    }
    text->addAttributes(attributes, NSRange { 0, text->length() });
    _alarmTimerLabel->setAttributedText(text.get());
}

RefPtr<NSObject> KVView::timerTimeRemaining() const { return _timerTimeRemaining; }

void KVView::setTimerTimeRemaining(NSObject* text) { _timerTimeRemaining = text; }

// The system countdown timer, reached by name.
static StrongId timerManager() { return objc::send<StrongId>(objc::objc_getClass("TimerManager"), OBJC_SEL("sharedManager")); }

void KVView::alarmTimerLabelSingleTapRecognizer(UIGestureRecognizer*)
{
    // Only "stopped" is excluded: a state not yet reported pauses, as intended.
    if (_timerState == 1 || !_settings->vestrumPauseResumeTimerEnabled())
        return;
    objc::send(timerManager(), _timerState == 2 ? OBJC_SEL("resume") : OBJC_SEL("pause"));
}

void KVView::alarmTimerLabelLongPressRecognizer(UIGestureRecognizer*)
{
    // Every phase of the press cancels; cancelling twice is harmless.
    if (_timerState == 1 || !_settings->vestrumCancelTimerEnabled())
        return;
    objc::send(timerManager(), OBJC_SEL("cancel"));
}
