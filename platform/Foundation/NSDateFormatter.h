#pragma once

#include "NSDate.h"
#include "NSLocale.h"
#include "NSTimeZone.h"

#include <objc/objc.h>

#include <string>

// Formats and parses dates with UTS #35 patterns ("EEEE, ", "hh:mm a"), as
// Apple's formatter does: both wrap ICU's SimpleDateFormat. A formatter with
// no locale or time zone of its own uses the current ones at the moment it
// formats, so a change of the device's settings shows at the next update.
//
// ICU formatters are expensive to build, so they are shared: one per
// (pattern, locale, time zone), built on first use and never changed after.
class NSDateFormatter final : public NSObject {
    OBJC_CLASS(NSDateFormatter)
public:
    NSDateFormatter() = default;
    static RefPtr<NSDateFormatter> create() { return make<NSDateFormatter>(); }

    const std::string& dateFormat() const { return m_dateFormat; }
    void setDateFormat(const std::string& format) { m_dateFormat = format; }
    RefPtr<NSLocale> locale() const { return m_locale ? m_locale : NSLocale::currentLocale(); }
    void setLocale(NSLocale* locale) { m_locale = locale; }
    RefPtr<NSTimeZone> timeZone() const { return m_timeZone ? m_timeZone : NSTimeZone::defaultTimeZone(); }
    void setTimeZone(NSTimeZone* zone) { m_timeZone = zone; }

    // "" for a null date or a pattern ICU rejects.
    std::string stringFromDate(const NSDate*) const;
    // Null unless the whole string matches the pattern.
    RefPtr<NSDate> dateFromString(const std::string&) const;

    // "2026-11-21T09:05:06+00:00": a moment with its offset in the default
    // time zone, as dumps and logs write it.
    static std::string ISO8601StringFromDate(const NSDate*);
    // "2026-11-21T09:05:00" read as local time in the default time zone. Null
    // for anything else, including out-of-range fields such as month 13.
    static RefPtr<NSDate> dateFromLocalISO8601String(const std::string&);

    // Drops every shared ICU formatter; for tests that count them.
    static void clearFormatterCache();
    static size_t cachedFormatterCount();

private:
    std::string m_dateFormat;
    RefPtr<NSLocale> m_locale;
    RefPtr<NSTimeZone> m_timeZone;
};
