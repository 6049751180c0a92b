#pragma once

#include <Foundation/NSDate.h>
#include <objc/objc.h>

#include <string>

// One bulletin, as the bulletin board hands it to the lock screen: what a
// full-screen alert shows.
class BBBulletin final : public NSObject {
    OBJC_CLASS(BBBulletin)
public:
    BBBulletin() = default;
    BBBulletin(std::string section, std::string title, std::string message)
        : m_section(std::move(section))
        , m_title(std::move(title))
        , m_message(std::move(message))
    {
    }

    // The app it comes from ("com.apple.mobiletimer").
    const std::string& section() const { return m_section; }
    const std::string& title() const { return m_title; }
    const std::string& message() const { return m_message; }

private:
    std::string m_section;
    std::string m_title;
    std::string m_message;
};
