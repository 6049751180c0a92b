#include "KVSingleEventDisplayView.h"

#include "KVCalveraNotaraSupport.h"
#include "overlays/KVOverlaySupport.h"
#include "schedule/KVEventItem.h"
#include "schedule/KVScheduleTexts.h"
#include "settings/KVSettings.h"

#include <CorvLib/CVAppItem.h>
#include <CorvLib/CVImageFactory.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIVisualEffectView.h>

KV_ROOT_WINDOW_CAPTURE("KVCalveraNotara/KVSingleEventDisplayView", 44)

OBJC_IMPLEMENT_CLASS(KVSingleEventDisplayView, CVDisplayView)
{
    c.classMethod<&KVSingleEventDisplayView::sharedInstance>("sharedInstance");
    c.method<&KVSingleEventDisplayView::show>("show");
    c.method<&KVSingleEventDisplayView::hide>("hide");
    c.method<&KVSingleEventDisplayView::updateFrame>("updateFrame");
    c.method<&KVSingleEventDisplayView::updateEventItem>("updateEventItem:");
    c.method<&KVSingleEventDisplayView::eventItem>("eventItem");
    c.method<&KVSingleEventDisplayView::setEventItem>("setEventItem:");
    c.ivar<&KVSingleEventDisplayView::_eventItem>("_eventItem");
    c.ivar<&KVSingleEventDisplayView::_appIconImageView>("_appIconImageView");
    c.ivar<&KVSingleEventDisplayView::_eventTypeLabel>("_eventTypeLabel");
    c.ivar<&KVSingleEventDisplayView::_eventDescriptionLabel>("_eventDescriptionLabel");
}

KVSingleEventDisplayView* KVSingleEventDisplayView::sharedInstance() { return sharedOverlayInstance<KVSingleEventDisplayView>(); }

KVSingleEventDisplayView::KVSingleEventDisplayView()
{
    attachDisplayOverlay(this, s_rootWindow.get());
    _settings = KVSettings::sharedInstance();
    _blurEffectView = addDarkBlur(displayContainerView());

    _themeColor = _settings->themeColor();
    _appIconImageView = makeOverlayImageView("_appIconImageView");
    _eventTypeLabel = makeOverlayLabel("_eventTypeLabel", _themeColor, 3);
    _eventDescriptionLabel = makeOverlayLabel("_eventDescriptionLabel", _themeColor, 0);
    _eventDescriptionLabel->setLineBreakMode(NSLineBreakByWordWrapping);
    for (UIView* view : { static_cast<UIView*>(_appIconImageView.get()), static_cast<UIView*>(_eventTypeLabel.get()), static_cast<UIView*>(_eventDescriptionLabel.get()) })
        displayContainerView()->addSubview(view);
}

void KVSingleEventDisplayView::show() { showDisplayOverlay(this, _settings.get(), &KVSettings::calveraResetLockScreenDim); }

void KVSingleEventDisplayView::hide() { hideDisplayOverlay(this, _settings.get(), &KVSettings::calveraResetLockScreenDim); }

void KVSingleEventDisplayView::updateFrame()
{
    layOutDisplayOverlay(this, _blurEffectView.get());
    double w = width();
    double h = height();
    _appIconImageView->setFrame(CGRectMake(w / 2 - 37.5, 0.2 * h - 37.5, 75, 75));
    maskAsAppIcon(_appIconImageView.get());
    _eventTypeLabel->setFrame(CGRectMake(0, CGRectGetMaxY(_appIconImageView->frame()) + 1, w, 60));
    _eventDescriptionLabel->setFrame(CGRectMake(0.1 * w, CGRectGetMaxY(_eventTypeLabel->frame()) + 5, 0.8 * w, 0.3 * h));
}

// A text of the item, unless it is missing or empty.
static std::string textOr(const NSString* text, const char* fallback)
{
    return text && !text->string().empty() ? text->string() : std::string(fallback);
}

void KVSingleEventDisplayView::updateEventItem(NSObject* record)
{
    objc::send(this, OBJC_SEL("updateFrame"));
    setEventItem(record);
    auto* item = dynamic_cast<KVEventItem*>(record);
    if (!item)
        return;
    bool military = _settings->militaryTime();
    std::string type = item->typeString();
    std::string timeText = KVScheduleTexts::dayAndTimeText(item->date().get(), military);
    const char* app = nullptr;
    if (type == "event") {
        app = "com.apple.mobilecal";
        // The end loses its leading zero even in 24-hour form.
        timeText = "Start: " + timeText + "\nEnd: " + KVScheduleTexts::dayAndTimeText(item->endDate().get(), military, true);
    } else if (type == "reminder") {
        app = "com.apple.reminders";
        timeText += "\n";
    }
    RefPtr<UIImage> icon;
    if (auto appItem = app ? CVAppItem::alloc()->initFromIdentifier(app, false) : nullptr)
        icon = CVImageFactory::imageSetScale(appItem->iconImage(), _appIconImageView->frame().size);
    _appIconImageView->setImage(icon);
    _eventTypeLabel->setText(type + "\n" + timeText);
    _eventDescriptionLabel->setText("Title\n" + textOr(item->title().get(), "No title") + "\n\nLocation\n" + textOr(item->location().get(), "No location")
        + "\n\nNotes\n" + textOr(item->notes().get(), "No notes"));
}
