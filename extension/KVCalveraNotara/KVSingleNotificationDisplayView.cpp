#include "KVSingleNotificationDisplayView.h"

#include "KVCalveraNotaraSupport.h"
#include "_KVContainerView/KVView.h"
#include "overlays/KVOverlaySupport.h"
#include "schedule/KVScheduleTexts.h"
#include "schedule/KVTableViewController.h"
#include "settings/KVSettings.h"

#include <CorvLib/CVAppItem.h>
#include <CorvLib/CVColorFactory.h>
#include <CorvLib/CVNotificationRow.h>
#include <CorvLib/CViOSVersion.h>
#include <UIKit/UIApplication.h>
#include <UIKit/UIButton.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIVisualEffectView.h>
#include <objc/SharedInstance.h>

#include <algorithm>

KV_ROOT_WINDOW_CAPTURE("KVCalveraNotara/KVSingleNotificationDisplayView", 46)

OBJC_IMPLEMENT_CLASS(KVSingleNotificationDisplayView, CVDisplayView)
{
    c.classMethod<&KVSingleNotificationDisplayView::sharedInstance>("sharedInstance");
    c.method<&KVSingleNotificationDisplayView::show>("show");
    c.method<&KVSingleNotificationDisplayView::hide>("hide");
    c.method<&KVSingleNotificationDisplayView::updateFrame>("updateFrame");
    c.method<&KVSingleNotificationDisplayView::updateRow>("updateRow:");
    c.method<&KVSingleNotificationDisplayView::row>("row");
    c.method<&KVSingleNotificationDisplayView::setRow>("setRow:");
    c.method<&KVSingleNotificationDisplayView::launchAppButtonReleased>("launchAppButtonReleased:");
    c.method<&KVSingleNotificationDisplayView::dismissNotificationButtonReleased>("dismissNotificationButtonReleased:");
    c.method<&KVSingleNotificationDisplayView::notificationActionButton1Released>("notificationActionButton1Released:");
    c.method<&KVSingleNotificationDisplayView::notificationActionButton2Released>("notificationActionButton2Released:");
    c.method<&KVSingleNotificationDisplayView::clearRepresentedNotification>("clearRepresentedNotification");
    c.method<&KVSingleNotificationDisplayView::hideNotificationActionButtons>("hideNotificationActionButtons");
    c.method<&KVSingleNotificationDisplayView::showNotificationAction1Button>("showNotificationAction1Button");
    c.method<&KVSingleNotificationDisplayView::showNotificationAction2Button>("showNotificationAction2Button");
    c.ivar<&KVSingleNotificationDisplayView::_row>("_row");
    c.ivar<&KVSingleNotificationDisplayView::_appIconImageView>("_appIconImageView");
    c.ivar<&KVSingleNotificationDisplayView::_appNameLabel>("_appNameLabel");
    c.ivar<&KVSingleNotificationDisplayView::_notificationDescriptionLabel>("_notificationDescriptionLabel");
    c.ivar<&KVSingleNotificationDisplayView::_attachmentImageView>("_attachmentImageView");
}

KVSingleNotificationDisplayView* KVSingleNotificationDisplayView::sharedInstance() { return sharedOverlayInstance<KVSingleNotificationDisplayView>(); }

static RefPtr<UIButton> makeButton(const char* name, RefPtr<UIColor> background, NSObject* target, objc::SEL action)
{
    auto button = UIButton::buttonWithType(UIButtonTypeCustom);
    button->setName(name);
    button->setBackgroundColor(std::move(background));
    button->setAlpha(0.5);
    button->layer().setCornerRadius(5);
    button->setClipsToBounds(true);
    button->addTarget(target, action, UIControlEventTouchUpInside);
    return button;
}

static RefPtr<UILabel> makeButtonLabel(const char* name, RefPtr<UIColor> color, const char* text)
{
    auto label = makeOverlayLabel(name, std::move(color), 1);
    label->setText(text);
    return label;
}

KVSingleNotificationDisplayView::KVSingleNotificationDisplayView()
{
    attachDisplayOverlay(this, s_rootWindow.get());
    _settings = KVSettings::sharedInstance();
    _blurEffectView = addDarkBlur(displayContainerView());

    _themeColor = _settings->themeColor();
    _appIconImageView = makeOverlayImageView("_appIconImageView");
    _appNameLabel = makeOverlayLabel("_appNameLabel", _themeColor, 2);
    _notificationDescriptionLabel = makeOverlayLabel("_notificationDescriptionLabel", _themeColor, 0);
    _notificationDescriptionLabel->setLineBreakMode(NSLineBreakByWordWrapping);
    _attachmentImageView = makeOverlayImageView("_attachmentImageView");
    _attachmentImageView->layer().setCornerRadius(5);
    _attachmentImageView->setClipsToBounds(true);

    _launchAppButton = makeButton("_launchAppButton", UIColor::colorWithWhite(0.5, 1), this, OBJC_SEL("launchAppButtonReleased:"));
    _dismissNotificationButton = makeButton("_dismissNotificationButton", UIColor::redColor(), this, OBJC_SEL("dismissNotificationButtonReleased:"));
    _notificationAction1Button = makeButton("_notificationAction1Button", nullptr, this, OBJC_SEL("notificationActionButton1Released:"));
    _notificationAction2Button = makeButton("_notificationAction2Button", nullptr, this, OBJC_SEL("notificationActionButton2Released:"));
    _launchAppButtonLabel = makeButtonLabel("_launchAppButtonLabel", _themeColor, "Launch Notification");
    _dismissNotificationButtonLabel = makeButtonLabel("_dismissNotificationButtonLabel", _themeColor, "Dismiss Notification");
    _notificationAction1ButtonLabel = makeButtonLabel("_notificationAction1ButtonLabel", _themeColor, "");
    _notificationAction2ButtonLabel = makeButtonLabel("_notificationAction2ButtonLabel", _themeColor, "");

    for (UIView* view : std::initializer_list<UIView*> { _appIconImageView.get(), _appNameLabel.get(), _notificationDescriptionLabel.get(), _attachmentImageView.get(),
             _launchAppButton.get(), _launchAppButtonLabel.get(), _dismissNotificationButton.get(), _dismissNotificationButtonLabel.get(),
             _notificationAction1Button.get(), _notificationAction1ButtonLabel.get(), _notificationAction2Button.get(), _notificationAction2ButtonLabel.get() })
        displayContainerView()->addSubview(view);
    hideNotificationActionButtons();
}

void KVSingleNotificationDisplayView::show() { showDisplayOverlay(this, _settings.get(), &KVSettings::notaraResetLockScreenDim); }

void KVSingleNotificationDisplayView::hide() { hideDisplayOverlay(this, _settings.get(), &KVSettings::notaraResetLockScreenDim); }

bool KVSingleNotificationDisplayView::isPortrait() const
{
    // Upside down counts as landscape here.
    return objc::send<long long>(UIApplication::sharedApplication(), OBJC_SEL("_getSpringBoardOrientation")) == 1;
}

std::string KVSingleNotificationDisplayView::bundleIdentifier() const
{
    auto* row = dynamic_cast<CVNotificationRow*>(_row.get());
    return row && row->app() ? row->app()->bundleIdentifier() : std::string();
}

bool KVSingleNotificationDisplayView::isMessagesApp() const { return bundleIdentifier() == "com.apple.MobileSMS"; }

bool KVSingleNotificationDisplayView::isMailApp() const { return bundleIdentifier() == "com.apple.mobilemail"; }

void KVSingleNotificationDisplayView::updateFrame()
{
    layOutDisplayOverlay(this, _blurEffectView.get());
    double w = width();
    double h = height();
    bool portrait = isPortrait();
    auto* row = dynamic_cast<CVNotificationRow*>(_row.get());
    bool hasAttachment = row && row->attachmentImage();
    bool smallDevice = CViOSVersion::deviceSize() < 3;

    double iconCentreY = (hasAttachment && portrait ? 0.1 : 0.15) * h;
    _appIconImageView->setFrame(CGRectMake(w / 2 - 37.5, iconCentreY - 37.5, 75, 75));
    maskAsAppIcon(_appIconImageView.get());
    _appNameLabel->setFrame(CGRectMake(0, CGRectGetMaxY(_appIconImageView->frame()) + 1, w, 40));
    _notificationDescriptionLabel->setFrame(CGRectMake(0.1 * w, CGRectGetMaxY(_appNameLabel->frame()) + 15, 0.8 * w, (smallDevice ? 0.35 : 0.25) * h));

    bool attachmentShown = !smallDevice && hasAttachment;
    _attachmentImageView->setHidden(!attachmentShown);
    if (attachmentShown) {
        double side = 0.3 * std::min(w, h);
        CGPoint centre = portrait ? CGPointMake(w / 2, CGRectGetMaxY(_notificationDescriptionLabel->frame()) + 75) : CGPointMake(0.2 * w, 0.5 * h);
        _attachmentImageView->setFrame(CGRectMake(centre.x - side / 2, centre.y - side / 2, side, side));
    }

    double buttonX = portrait ? 0.25 * w : 0.375 * w;
    double buttonWidth = portrait ? 0.5 * w : 0.25 * w;
    double buttonHeight = 0.054 * h;
    double y = portrait && attachmentShown ? CGRectGetMaxY(_attachmentImageView->frame()) + 15 : CGRectGetMaxY(_notificationDescriptionLabel->frame());
    std::pair<UIButton*, UILabel*> buttons[] = {
        { _launchAppButton.get(), _launchAppButtonLabel.get() },
        { _dismissNotificationButton.get(), _dismissNotificationButtonLabel.get() },
        { _notificationAction1Button.get(), _notificationAction1ButtonLabel.get() },
        { _notificationAction2Button.get(), _notificationAction2ButtonLabel.get() },
    };
    for (auto& [button, label] : buttons) {
        button->setFrame(CGRectMake(buttonX, y, buttonWidth, buttonHeight));
        label->setFrame(button->frame());
        y += buttonHeight + 10;
    }
}

void KVSingleNotificationDisplayView::hideNotificationActionButtons()
{
    for (UIView* view : std::initializer_list<UIView*> { _notificationAction1Button.get(), _notificationAction1ButtonLabel.get(), _notificationAction2Button.get(), _notificationAction2ButtonLabel.get() })
        view->setHidden(true);
}

void KVSingleNotificationDisplayView::showNotificationAction1Button()
{
    _notificationAction1Button->setHidden(false);
    _notificationAction1ButtonLabel->setHidden(false);
}

void KVSingleNotificationDisplayView::showNotificationAction2Button()
{
    _notificationAction2Button->setHidden(false);
    _notificationAction2ButtonLabel->setHidden(false);
}

static std::string textOr(const RefPtr<NSString>& text, const char* fallback) { return text ? text->string() : std::string(fallback); }

void KVSingleNotificationDisplayView::updateRow(NSObject* record)
{
    setRow(record);
    auto* row = dynamic_cast<CVNotificationRow*>(record);
    _appIconImageView->setImage(row ? row->icon() : nullptr);
    RefPtr<UIImage> attachment = row ? row->attachmentImage() : nullptr;
    _attachmentImageView->setImage(attachment);
    hideNotificationActionButtons();
    objc::send(this, OBJC_SEL("updateFrame"));
    if (!row)
        return;

    std::string timeText = KVScheduleTexts::dayAndTimeText(row->date().get(), _settings->militaryTime());
    std::string appName = row->app() ? row->app()->displayName() : std::string();
    _appNameLabel->setText(appName + " Notification\n" + timeText);

    StrongId bulletin = row->bulletin();
    std::string description = "Title\n" + textOr(row->title(), "No title") + "\n\nSubtitle\n" + textOr(objc::send<RefPtr<NSString>>(bulletin, OBJC_SEL("subtitle")), "No subtitle")
        + "\n\nMessage\n" + textOr(objc::send<RefPtr<NSString>>(bulletin, OBJC_SEL("message")), "No message");
    if (attachment && isPortrait())
        description += "\n\nImage Preview";
    _notificationDescriptionLabel->setText(description);

    if (!row->notificationActions() || !row->notificationActions()->count())
        return;
    if (isMessagesApp()) {
        _notificationAction1Button->setBackgroundColor(CVColorFactory::colorFromHexString("#157EFB"));
        _notificationAction1ButtonLabel->setText("Reply");
        showNotificationAction1Button();
    } else if (isMailApp()) {
        _notificationAction1Button->setBackgroundColor(CVColorFactory::colorFromHexString("#157EFB"));
        _notificationAction1ButtonLabel->setText("Mark as Read");
        _notificationAction2Button->setBackgroundColor(CVColorFactory::colorFromHexString("#FC3D39"));
        _notificationAction2ButtonLabel->setText("Trash");
        showNotificationAction1Button();
        showNotificationAction2Button();
    }
}

void KVSingleNotificationDisplayView::launchAppButtonReleased(NSObject*)
{
    if (!objc::send<bool>(this, OBJC_SEL("isActive")))
        return;
    objc::send(this, OBJC_SEL("hide"));
    launchNotificationRow(dynamic_cast<CVNotificationRow*>(_row.get()), _settings.get());
}

void KVSingleNotificationDisplayView::reloadTable() const
{
    KVView* panel = objc::sharedInstance<KVView>();
    objc::send(objc::send<NSObject*>(panel, OBJC_SEL("tableViewController")), OBJC_SEL("forceReloadTableViewData"));
}

void KVSingleNotificationDisplayView::dismissNotificationButtonReleased(NSObject*)
{
    if (!objc::send<bool>(this, OBJC_SEL("isActive")))
        return;
    objc::send(this, OBJC_SEL("hide"));
    clearRepresentedNotification();
}

void KVSingleNotificationDisplayView::clearRepresentedNotification()
{
    // A notification removed meanwhile (by another overlay or a reload) is
    // simply not found; the table reloads either way.
    if (auto* row = dynamic_cast<CVNotificationRow*>(_row.get()))
        row->removeActualNotification();
    reloadTable();
}

void KVSingleNotificationDisplayView::notificationActionButton1Released(NSObject*)
{
    // Messages replies with its first action; Mail's "Mark as Read" is its second.
    long index = isMailApp() ? 1 : 0;
    if (auto* row = dynamic_cast<CVNotificationRow*>(_row.get()))
        row->invokeNotificationActionWithIndex(index);
    reloadTable();
    objc::send(this, OBJC_SEL("hide"));
}

void KVSingleNotificationDisplayView::notificationActionButton2Released(NSObject*)
{
    // Mail's "Trash" is its first action.
    if (auto* row = dynamic_cast<CVNotificationRow*>(_row.get()))
        row->invokeNotificationActionWithIndex(0);
    reloadTable();
    objc::send(this, OBJC_SEL("hide"));
}
