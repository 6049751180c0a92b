#include "KVClearAllNotificationsDisplayView.h"

#include "KVCalveraNotaraSupport.h"
#include "_KVContainerView/KVView.h"
#include "overlays/KVOverlaySupport.h"
#include "schedule/KVTableViewController.h"
#include "settings/KVSettings.h"

#include <CorvLib/CVImageFactory.h>
#include <UIKit/UIButton.h>
#include <UIKit/UIImage.h>
#include <UIKit/UIScreen.h>
#include <UIKit/UIVisualEffectView.h>
#include <objc/SharedInstance.h>

KV_ROOT_WINDOW_CAPTURE("KVCalveraNotara/KVClearAllNotificationsDisplayView", 42)

OBJC_IMPLEMENT_CLASS(KVClearAllNotificationsDisplayView, CVDisplayView)
{
    c.classMethod<&KVClearAllNotificationsDisplayView::sharedInstance>("sharedInstance");
    c.method<&KVClearAllNotificationsDisplayView::show>("show");
    c.method<&KVClearAllNotificationsDisplayView::hide>("hide");
    c.method<&KVClearAllNotificationsDisplayView::updateFrame>("updateFrame");
    c.method<&KVClearAllNotificationsDisplayView::clearAllNotificationsButtonReleased>("clearAllNotificationsButtonReleased:");
    c.ivar<&KVClearAllNotificationsDisplayView::_clearAllNotificationsButton>("_clearAllNotificationsButton");
}

KVClearAllNotificationsDisplayView* KVClearAllNotificationsDisplayView::sharedInstance() { return sharedOverlayInstance<KVClearAllNotificationsDisplayView>(); }

KVClearAllNotificationsDisplayView::KVClearAllNotificationsDisplayView()
{
    attachDisplayOverlay(this, s_rootWindow.get());
    _settings = KVSettings::sharedInstance();
    _blurEffectView = addDarkBlur(displayContainerView());

    _clearAllNotificationsButton = UIButton::buttonWithType(UIButtonTypeCustom);
    _clearAllNotificationsButton->setName("_clearAllNotificationsButton");
    double side = UIScreen::mainScreen()->bounds().size.width / 2;
    _clearAllNotificationsButton->setFrame(CGRectMake(0, 0, side, side));
    auto image = UIImage::imageWithContentsOfFile(kavelinBundleImagePath("ClearAll"));
    _clearAllNotificationsButton->setBackgroundImage(CVImageFactory::imageSetScale(image.get(), CGSizeMake(side, side)), UIControlStateNormal);
    _clearAllNotificationsButton->addTarget(this, OBJC_SEL("clearAllNotificationsButtonReleased:"), UIControlEventTouchUpInside);
    displayContainerView()->addSubview(_clearAllNotificationsButton.get());
}

void KVClearAllNotificationsDisplayView::show() { showDisplayOverlay(this, _settings.get(), &KVSettings::notaraResetLockScreenDim); }

void KVClearAllNotificationsDisplayView::hide() { hideDisplayOverlay(this, _settings.get(), &KVSettings::notaraResetLockScreenDim); }

void KVClearAllNotificationsDisplayView::updateFrame()
{
    layOutDisplayOverlay(this, _blurEffectView.get());
    _clearAllNotificationsButton->setCenter(CGPointMake(width() / 2, height() / 2));
}

void KVClearAllNotificationsDisplayView::clearAllNotificationsButtonReleased(NSObject*)
{
    if (!objc::send<bool>(this, OBJC_SEL("isActive")))
        return;
    RefPtr<KVClearAllNotificationsDisplayView> protect(this);
    objc::send(this, OBJC_SEL("hide"));
    KVView* panel = objc::sharedInstance<KVView>();
    StrongId controller(objc::send<NSObject*>(panel, OBJC_SEL("tableViewController")));
    if (!controller)
        return;
    // A snapshot of the sections, so that removals cannot disturb the walk.
    std::vector<StrongId> sections;
    if (auto data = objc::send<RefPtr<NSDictionary>>(controller, OBJC_SEL("notificationSectionsData"))) {
        for (auto& [key, section] : data->entries())
            sections.push_back(section);
    }
    for (auto& section : sections)
        objc::send<long>(section, OBJC_SEL("removeActualNotificationSection"));
    objc::send(controller, OBJC_SEL("forceReloadTableViewData"));
}
