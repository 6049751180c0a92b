#pragma once

#include <objc/objc.h>

#include <string>

// A locale, known by its identifier ("en_US", "ja_JP"). The current locale
// is process-wide and set by the host (the device's region setting); it is
// "en_US" until the host says otherwise, whatever the machine running the
// simulation uses.
class NSLocale final : public NSObject {
    OBJC_CLASS(NSLocale)
public:
    NSLocale() = default;
    explicit NSLocale(std::string identifier)
        : m_identifier(std::move(identifier))
    {
    }
    static RefPtr<NSLocale> currentLocale();
    static RefPtr<NSLocale> localeWithLocaleIdentifier(const std::string& identifier);

    // False, leaving the current locale as it was, when ICU has no data for
    // the identifier's language.
    static bool setCurrentLocaleIdentifier(const std::string& identifier);
    static std::string currentLocaleIdentifier();

    const std::string& localeIdentifier() const { return m_identifier; }
    std::string description() const override { return m_identifier; }

private:
    std::string m_identifier;
};
