#include "KVNotificationSectionDismissButton.h"

#include "KVCalveraNotaraSupport.h"
#include "_KVContainerView/KVView.h"
#include "schedule/KVTableViewController.h"

#include <CorvLib/CVImageFactory.h>
#include <CorvLib/CVNotificationSection.h>
#include <UIKit/UIImage.h>
#include <objc/SharedInstance.h>

OBJC_IMPLEMENT_CLASS(KVNotificationSectionDismissButton, UIButton)
{
    c.classMethod<&KVNotificationSectionDismissButton::dismissButtonWithFrame>("dismissButtonWithFrame:notificationSection:");
    c.method<&KVNotificationSectionDismissButton::buttonReleased>("buttonReleased:");
    c.method<&KVNotificationSectionDismissButton::section>("section");
    c.method<&KVNotificationSectionDismissButton::setSection>("setSection:");
}

RefPtr<KVNotificationSectionDismissButton> KVNotificationSectionDismissButton::dismissButtonWithFrame(CGRect frame, CVNotificationSection* section)
{
    auto button = make<KVNotificationSectionDismissButton>();
    button->setName("_dismissButton");
    button->setSection(section);
    button->setFrame(frame);
    auto image = UIImage::imageWithContentsOfFile(kavelinBundleImagePath("DismissButton"));
    image = CVImageFactory::imageSetScale(image.get(), CGSizeMake(frame.size.width / 2, frame.size.height / 2));
    image = CVImageFactory::imageSetColor(image.get(), UIColor::whiteColor().get());
    button->setBackgroundImage(image, UIControlStateNormal);
    button->addTarget(button.get(), OBJC_SEL("buttonReleased:"), UIControlEventTouchUpInside);
    button->setAlpha(0.25);
    return button;
}

void KVNotificationSectionDismissButton::buttonReleased(NSObject*)
{
    RefPtr<KVNotificationSectionDismissButton> protect(this);
    if (_section)
        _section->removeActualNotificationSection();
    KVView* panel = objc::sharedInstance<KVView>();
    objc::send(objc::send<NSObject*>(panel, OBJC_SEL("tableViewController")), OBJC_SEL("forceReloadTableViewData"));
}
