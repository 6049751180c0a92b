#pragma once

#include <objc/objc.h>

#include <cstdarg>
#include <string>
#include <vector>

// An immutable UTF-8 string object: what host records and property lists
// hand over where Objective-C would have an NSString, so that "absent" (null)
// and "empty" stay different.
class NSString final : public NSObject {
    OBJC_CLASS(NSString)
public:
    NSString() = default;
    explicit NSString(std::string value)
        : m_value(std::move(value))
    {
    }
    static RefPtr<NSString> create(std::string value) { return make<NSString>(std::move(value)); }
    // printf-style formatting where %@ takes an NSObject* and prints its
    // description ("(null)" for null).
    static RefPtr<NSString> stringWithFormat(const char* format, ...);
    static std::string format(const char* format, ...);
    static std::string vformat(const char* format, va_list);
    // The UTF-8 text of a file at a device path; null when it cannot be read.
    static RefPtr<NSString> stringWithContentsOfFile(const std::string& path);

    const std::string& string() const { return m_value; }
    size_t length() const; // in UTF-16 code units, as NSString counts
    bool isEqualToString(NSString* other) const { return other && other->m_value == m_value; }

    // Foundation's conversions, with their documented leniency.
    bool boolValue() const { return boolValue(m_value); }
    int intValue() const { return intValue(m_value); }
    long long longLongValue() const { return longLongValue(m_value); }
    float floatValue() const { return static_cast<float>(doubleValue(m_value)); }
    double doubleValue() const { return doubleValue(m_value); }

    static bool boolValue(const std::string&);
    static int intValue(const std::string&);
    static long long longLongValue(const std::string&);
    static double doubleValue(const std::string&);

    // Unicode case mapping through ICU, canonical (not localised) as
    // Foundation's lowercaseString and uppercaseString are: "ÉCOLE" gives
    // "école", "ÖÖ" gives "öö", "ß" upper-cases to "SS"; the same text in any
    // device language.
    std::string lowercaseString() const { return lowercaseString(m_value); }
    std::string uppercaseString() const { return uppercaseString(m_value); }
    static std::string lowercaseString(const std::string&);
    static std::string uppercaseString(const std::string&);

    std::vector<std::string> componentsSeparatedByString(const std::string& separator) const;
    std::string description() const override { return m_value; }

private:
    std::string m_value;
};

// The text of a string object, or "" for null or for an object that is not a
// string.
std::string NSStringValue(NSObject*);
