#pragma once

#include <Foundation/NSString.h>
#include <objc/objc.h>

#include <optional>
#include <string>

// One thing a bulletin can do: its default action (open its URL or its app)
// or one of its buttons.
class BBAction final : public NSObject {
    OBJC_CLASS(BBAction)
public:
    BBAction() = default;
    BBAction(std::string identifier, std::optional<std::string> launchURL)
        : m_identifier(std::move(identifier))
        , m_launchURL(std::move(launchURL))
    {
    }

    const std::string& identifier() const { return m_identifier; }
    // Null when the action opens the app rather than a URL.
    RefPtr<NSString> launchURL() const { return m_launchURL ? NSString::create(*m_launchURL) : nullptr; }

private:
    std::string m_identifier;
    std::optional<std::string> m_launchURL;
};
