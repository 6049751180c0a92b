#include "SBLockScreenFullscreenBulletinViewController.h"

#include "SBLockScreenManager.h"
#include "SBLockScreenViewController.h"

#include <Foundation/NSString.h>
#include <UIKit/UIFont.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIScreen.h>

OBJC_IMPLEMENT_CLASS(SBLockScreenFullscreenBulletinViewController, UIViewController)
{
    c.method<&SBLockScreenFullscreenBulletinViewController::viewDidAppear>("viewDidAppear:");
    c.method<&SBLockScreenFullscreenBulletinViewController::performDismissAction>("performDismissAction");
}

void SBLockScreenFullscreenBulletinViewController::loadView()
{
    CGRect bounds = UIScreen::mainScreen()->bounds();
    auto view = make<UIView>(bounds);
    view->setName("fullscreenBulletinView");
    view->setBackgroundColor(UIColor::colorWithWhite(0, 0.8));
    view->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);

    auto addLabel = [&](const char* name, std::string text, const char* font, double size, double y, double height) {
        auto label = make<UILabel>(CGRectMake(16, y, bounds.size.width - 32, height));
        label->setName(name);
        label->setText(text);
        label->setFont(UIFont::fontWithName(font, size));
        label->setTextColor(UIColor::whiteColor());
        label->setTextAlignment(NSTextAlignmentCenter);
        label->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
        view->addSubview(label.get());
    };
    auto textOf = [&](objc::SEL sel) {
        auto text = objc::send<RefPtr<NSString>>(m_item, sel);
        return text ? text->string() : std::string();
    };
    std::string title = textOf(OBJC_SEL("title"));
    std::string message = textOf(OBJC_SEL("message"));
    addLabel("_titleLabel", title.empty() ? "Alarm" : title, "HelveticaNeue-Light", 34, bounds.size.height * 0.3, 44);
    addLabel("_messageLabel", message, "HelveticaNeue-Light", 20, bounds.size.height * 0.3 + 48, 28);
    addLabel("_dismissLabel", "slide to stop", "HelveticaNeue-Light", 22, bounds.size.height - 96, 30);
    setView(view);
}

void SBLockScreenFullscreenBulletinViewController::viewDidAppear(bool animated)
{
    UIViewController::viewDidAppear(animated);
    m_appeared = true;
}

void SBLockScreenFullscreenBulletinViewController::performDismissAction()
{
    if (isViewLoaded())
        view()->removeFromSuperview();
    RefPtr<SBLockScreenFullscreenBulletinViewController> protect(this);
    if (auto controller = SBLockScreenManager::sharedInstance()->lockScreenViewController())
        controller->fullscreenBulletinDidDismiss(this);
}
