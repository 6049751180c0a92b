#pragma once

#include <objc/objc.h>

#include <string>

// FrontBoard's door for opening apps and URLs. The simulated host records
// every request in the world's launches and stays where it is: the lock
// screen does not go away. The option "__PromptUnlockDevice" (an NSNumber)
// asks the user to unlock the device first when it is locked; the record
// keeps whether it was asked for.
class FBSSystemService final : public NSObject {
    OBJC_CLASS(FBSSystemService)
public:
    static constexpr const char* promptUnlockDeviceOption = "__PromptUnlockDevice";

    static RefPtr<FBSSystemService> sharedService();

    // `openApplication:options:`: false (and nothing is recorded) for an
    // identifier of no installed app.
    bool openApplication(const std::string& bundleIdentifier, NSObject* options);
    // `openURL:options:`: false for an empty URL.
    bool openURL(const std::string& url, NSObject* options);
};
