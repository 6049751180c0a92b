#pragma once

#include "SBApplication.h"

// Looks installed apps up by bundle identifier.
class SBApplicationController final : public NSObject {
    OBJC_CLASS(SBApplicationController)
public:
    static RefPtr<SBApplicationController> sharedInstance();

    // Null when no installed app has the identifier.
    RefPtr<SBApplication> applicationWithBundleIdentifier(const std::string&) const;
};
