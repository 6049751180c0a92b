#pragma once

// Private to Foundation: the bridge between Foundation's values and ICU's.
// Nothing outside this library sees ICU.

#include "VirtualClock.h"

#include <unicode/locid.h>
#include <unicode/timezone.h>
#include <unicode/ucal.h>
#include <unicode/unistr.h>

#include <string>

namespace FoundationICU {

inline icu::UnicodeString toUnicode(const std::string& text) { return icu::UnicodeString::fromUTF8(text); }

inline std::string toUTF8(const icu::UnicodeString& text)
{
    std::string out;
    text.toUTF8String(out);
    return out;
}

// ICU counts milliseconds since 1970; Foundation seconds since 2001.
inline UDate toUDate(double sinceReferenceDate) { return (sinceReferenceDate + VirtualClock::referenceDateSince1970) * 1000.0; }
inline double fromUDate(UDate date) { return date / 1000.0 - VirtualClock::referenceDateSince1970; }

inline icu::Locale locale(const std::string& identifier) { return icu::Locale::createFromName(identifier.c_str()); }

// A shared, never-mutated zone for a name that NSTimeZone has already
// validated; unknown names give ICU's "Etc/Unknown" (GMT).
const icu::TimeZone& timeZone(const std::string& name);

} // namespace FoundationICU
