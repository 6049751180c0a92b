#include "CVSBUIController.h"

#include "CVAppItem.h"

#include <Foundation/NSDictionary.h>
#include <Foundation/NSNumber.h>

OBJC_IMPLEMENT_CLASS(CVSBUIController, NSObject)
{
    c.classMethod<&CVSBUIController::activateApplication>("activateApplication:");
    c.classMethod<&CVSBUIController::activateApplicationPromptToUnlockIfNecessary>("activateApplicationPromptToUnlockIfNecessary:");
    c.classMethod<&CVSBUIController::launchURLPromptToUnlockIfNecessary>("launchURLPromptToUnlockIfNecessary:");
}

static StrongId systemService()
{
    return objc::send<StrongId>(objc::objc_getClass("FBSSystemService"), OBJC_SEL("sharedService"));
}

static RefPtr<NSDictionary> openOptions(bool promptToUnlock)
{
    auto options = NSDictionary::create();
    if (promptToUnlock)
        options->setObject(NSNumber::numberWithBool(true), "__PromptUnlockDevice");
    return options;
}

static bool openApplication(NSObject* appItem, bool promptToUnlock)
{
    auto* item = dynamic_cast<CVAppItem*>(appItem);
    if (!item || item->bundleIdentifier().empty())
        return false;
    return objc::send<bool>(systemService(), OBJC_SEL("openApplication:options:"), item->bundleIdentifier(), static_cast<NSObject*>(openOptions(promptToUnlock).get()));
}

bool CVSBUIController::activateApplication(NSObject* appItem) { return openApplication(appItem, false); }

bool CVSBUIController::activateApplicationPromptToUnlockIfNecessary(NSObject* appItem) { return openApplication(appItem, true); }

bool CVSBUIController::launchURLPromptToUnlockIfNecessary(const std::string& url)
{
    if (url.empty())
        return false;
    return objc::send<bool>(systemService(), OBJC_SEL("openURL:options:"), url, static_cast<NSObject*>(openOptions(true).get()));
}
