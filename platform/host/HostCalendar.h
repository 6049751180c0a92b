#pragma once

#include <Foundation/NSDate.h>

#include <string>

namespace host {

// Wall-clock helpers the host's clock-related objects share. Everything is in
// the device's current time zone and locale.

// The moment `dayOffset` days from today at hour:minute, local time.
RefPtr<NSDate> localDateAt(long dayOffset, long hour, long minute);
// The next moment, strictly after now, at hour:minute local time.
RefPtr<NSDate> nextLocalOccurrence(long hour, long minute);
// 0 for today, 1 for tomorrow, and so on (negative for the past).
long localDaysFromToday(const NSDate*);
void localHourAndMinute(const NSDate*, long& hour, long& minute);

// The lock screen's patterns for the current locale: "h:mm" or "HH:mm" for
// the big clock (no day period, as on the phone), and the locale's long
// weekday, month and day ("EEEE, MMMM d" in English).
std::string lockScreenTimePattern();
std::string lockScreenDatePattern();
// The status bar's time: with the day period in 12-hour locales.
std::string statusBarTimePattern();

} // namespace host
