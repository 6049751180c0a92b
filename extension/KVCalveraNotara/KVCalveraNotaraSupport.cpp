#include "KVCalveraNotaraSupport.h"

#include "settings/KVSettings.h"

#include <CorvLib/CVNotificationRow.h>
#include <CorvLib/CVSBUIController.h>
#include <Foundation/NSBundle.h>
#include <UIKit/UIFont.h>

RefPtr<UILabel> makeOverlayLabel(const char* name, RefPtr<UIColor> textColor, int lines)
{
    auto label = UILabel::create();
    label->setName(name);
    label->setTextColor(std::move(textColor));
    label->setFont(UIFont::fontWithName("HelveticaNeue-Light", 14));
    label->setNumberOfLines(lines);
    label->setTextAlignment(NSTextAlignmentCenter);
    label->setAdjustsFontSizeToFitWidth(true);
    label->setUserInteractionEnabled(false);
    return label;
}

RefPtr<UIImageView> makeOverlayImageView(const char* name)
{
    auto view = UIImageView::create();
    view->setName(name);
    view->setUserInteractionEnabled(false);
    return view;
}

std::string kavelinBundleImagePath(const char* name)
{
    auto bundle = NSBundle::bundleWithPath("/Library/Application Support/Kavelin/KavelinBundle.bundle");
    return bundle ? bundle->pathForResource(name, "png") : std::string();
}

void launchNotificationRow(CVNotificationRow* row, KVSettings* settings)
{
    if (!row || !settings)
        return;
    if (settings->location() != KVPanelLocation::LockScreen) {
        CVSBUIController::activateApplication(row->app().get());
        return;
    }
    StrongId action = objc::send<StrongId>(row->bulletin(), OBJC_SEL("defaultAction"));
    if (auto url = objc::send<RefPtr<NSString>>(action, OBJC_SEL("launchURL")))
        CVSBUIController::launchURLPromptToUnlockIfNecessary(url->string());
    else
        CVSBUIController::activateApplicationPromptToUnlockIfNecessary(row->app().get());
}
