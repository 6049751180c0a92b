#pragma once

#include <objc/objc.h>

#include <string>

class NSDate;

// A time zone, known by its IANA name ("Europe/Berlin"). The default zone is
// process-wide and set by the host; it is "UTC" until the host says
// otherwise. Offsets and daylight-saving rules come from ICU's own zone data.
class NSTimeZone final : public NSObject {
    OBJC_CLASS(NSTimeZone)
public:
    NSTimeZone() = default;
    explicit NSTimeZone(std::string name)
        : m_name(std::move(name))
    {
    }
    // Null when the name is not a zone ICU knows.
    static RefPtr<NSTimeZone> timeZoneWithName(const std::string& name);
    static RefPtr<NSTimeZone> timeZoneForSecondsFromGMT(long seconds);
    static RefPtr<NSTimeZone> defaultTimeZone();
    static RefPtr<NSTimeZone> localTimeZone() { return defaultTimeZone(); }
    static RefPtr<NSTimeZone> systemTimeZone() { return defaultTimeZone(); }

    // False, leaving the default zone as it was, for an unknown name.
    static bool setDefaultTimeZoneName(const std::string& name);
    static void setDefaultTimeZone(NSTimeZone*);

    const std::string& name() const { return m_name; }
    long secondsFromGMTForDate(const NSDate*) const;
    long secondsFromGMT() const;
    bool isDaylightSavingTimeForDate(const NSDate*) const;
    std::string description() const override { return m_name; }

private:
    std::string m_name;
};
