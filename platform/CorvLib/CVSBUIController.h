#pragma once

#include <objc/objc.h>

#include <string>

// The maker library's way of opening apps and URLs from SpringBoard, through
// FrontBoard's system service. The "prompt to unlock" variants ask the user
// to unlock the device first when it is locked. Each answers whether the
// host accepted the request.
class CVSBUIController final : public NSObject {
    OBJC_CLASS(CVSBUIController)
public:
    // `activateApplication:` with a CVAppItem.
    static bool activateApplication(NSObject* appItem);
    static bool activateApplicationPromptToUnlockIfNecessary(NSObject* appItem);
    // `launchURLPromptToUnlockIfNecessary:` with a URL string.
    static bool launchURLPromptToUnlockIfNecessary(const std::string& url);
};
