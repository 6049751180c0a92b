#pragma once

#include <libical/ical.h>

#include <optional>
#include <string>

namespace sim {

// Turns libical's times into seconds since the reference date, each in its
// proper zone: a TZID names a VTIMEZONE of the same calendar first, then a
// zone of the system's database; UTC times are UTC; floating times and dates
// (all-day) are the scenario's local time, as the phone shows them.
class IcsTimes {
public:
    IcsTimes(icalcomponent* calendar, const std::string& localTimeZone);

    icaltimezone* localZone() const { return m_local; }
    // The zone a property's TZID names, or null (with `unknown` set) when
    // neither the calendar nor the system knows it.
    icaltimezone* zoneForProperty(icalproperty*, std::string* unknown = nullptr) const;
    // The property's own time, with the zone its TZID names attached.
    struct icaltimetype timeOfProperty(icalproperty*, std::string* unknownZone = nullptr) const;
    // Seconds since the reference date; nothing for a null or invalid time.
    std::optional<double> seconds(struct icaltimetype) const;
    // A time in the given zone for a number of seconds, for starting an iteration.
    struct icaltimetype timeFromSeconds(double, bool isDate, icaltimezone*) const;
    icaltimezone* zoneOf(struct icaltimetype) const;

    static constexpr double unixToReference = 978307200;

private:
    icalcomponent* m_calendar;
    icaltimezone* m_local;
};

}
