#pragma once

#include <objc/objc.h>

#include <string>

// An installed app as SpringBoard knows it: its bundle identifier and the
// name under its icon. Made by SBApplicationController for installed apps only.
class SBApplication final : public NSObject {
    OBJC_CLASS(SBApplication)
public:
    SBApplication() = default;
    SBApplication(std::string bundleIdentifier, std::string displayName)
        : m_bundleIdentifier(std::move(bundleIdentifier))
        , m_displayName(std::move(displayName))
    {
    }

    const std::string& bundleIdentifier() const { return m_bundleIdentifier; }
    const std::string& displayName() const { return m_displayName; }

private:
    std::string m_bundleIdentifier;
    std::string m_displayName;
};
