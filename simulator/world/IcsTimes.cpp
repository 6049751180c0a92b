#include "IcsTimes.h"

namespace sim {

IcsTimes::IcsTimes(icalcomponent* calendar, const std::string& localTimeZone)
    : m_calendar(calendar)
{
    bool utc = localTimeZone == "UTC" || localTimeZone == "Etc/UTC" || localTimeZone == "GMT";
    m_local = utc ? nullptr : icaltimezone_get_builtin_timezone(localTimeZone.c_str());
    if (!m_local)
        m_local = icaltimezone_get_utc_timezone();
}

icaltimezone* IcsTimes::zoneForProperty(icalproperty* property, std::string* unknown) const
{
    icalparameter* parameter = icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
    const char* tzid = parameter ? icalparameter_get_tzid(parameter) : nullptr;
    if (!tzid || !*tzid)
        return nullptr;
    if (icaltimezone* zone = icalcomponent_get_timezone(m_calendar, tzid))
        return zone;
    if (icaltimezone* zone = icaltimezone_get_builtin_timezone_from_tzid(tzid))
        return zone;
    if (icaltimezone* zone = icaltimezone_get_builtin_timezone(tzid))
        return zone;
    if (unknown)
        *unknown = tzid;
    return nullptr;
}

struct icaltimetype IcsTimes::timeOfProperty(icalproperty* property, std::string* unknownZone) const
{
    icalvalue* value = icalproperty_get_value(property);
    if (!value)
        return icaltime_null_time();
    struct icaltimetype time = icaltime_null_time();
    icalvalue_kind kind = icalvalue_isa(value);
    if (kind == ICAL_DATETIME_VALUE || kind == ICAL_DATE_VALUE)
        time = icalvalue_get_datetime(value);
    else if (kind == ICAL_DATETIMEPERIOD_VALUE) {
        struct icaldatetimeperiodtype period = icalvalue_get_datetimeperiod(value);
        time = icaltime_is_null_time(period.time) ? period.period.start : period.time;
    } else if (kind == ICAL_PERIOD_VALUE)
        time = icalvalue_get_period(value).start;
    if (icaltime_is_null_time(time) || icaltime_is_utc(time) || icaltime_is_date(time))
        return time;
    if (icaltimezone* zone = zoneForProperty(property, unknownZone))
        time = icaltime_set_timezone(&time, zone);
    return time;
}

icaltimezone* IcsTimes::zoneOf(struct icaltimetype time) const
{
    if (icaltime_is_utc(time))
        return icaltimezone_get_utc_timezone();
    if (!icaltime_is_date(time) && time.zone)
        return const_cast<icaltimezone*>(time.zone);
    return m_local;
}

std::optional<double> IcsTimes::seconds(struct icaltimetype time) const
{
    if (icaltime_is_null_time(time) || !icaltime_is_valid_time(time))
        return std::nullopt;
    // Years libical cannot place in a calendar give nonsense; keep to sane ones.
    if (time.year < 1900 || time.year > 2500)
        return std::nullopt;
    return static_cast<double>(icaltime_as_timet_with_zone(time, zoneOf(time))) - unixToReference;
}

struct icaltimetype IcsTimes::timeFromSeconds(double seconds, bool isDate, icaltimezone* zone) const
{
    return icaltime_from_timet_with_zone(static_cast<time_t>(seconds + unixToReference), isDate, zone);
}

}
