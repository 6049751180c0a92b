#include "RecurrenceExpander.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace sim {

// A rule may match nothing for a long time (FREQ=MINUTELY;BYMONTH=2 in
// March): the steps taken without finding an occurrence are bounded too.
static constexpr size_t maximumSteps = 200000;

RecurrenceExpander::RecurrenceExpander(const IcsTimes& times, double windowStart, double windowEnd, size_t limit)
    : m_times(times)
    , m_windowStart(windowStart)
    , m_windowEnd(windowEnd)
    , m_limit(limit)
{
}

void RecurrenceExpander::addRuleOccurrences(icalproperty* property, struct icaltimetype start, double duration, std::vector<double>& starts)
{
    struct icalrecurrencetype rule = icalproperty_get_rrule(property);
    if (rule.freq == ICAL_NO_RECURRENCE)
        return;
    // Every hour, minute or second, but only on chosen days or months:
    // libical walks each step to the next match (to the year 2582 when none
    // comes), which can take it minutes. Calendar programs do not write such
    // rules; one is left out, with a warning.
    bool subDaily = rule.freq == ICAL_SECONDLY_RECURRENCE || rule.freq == ICAL_MINUTELY_RECURRENCE || rule.freq == ICAL_HOURLY_RECURRENCE;
    auto limits = [](const short* parts) { return parts[0] != ICAL_RECURRENCE_ARRAY_MAX; };
    if (subDaily && (limits(rule.by_day) || limits(rule.by_month_day) || limits(rule.by_year_day) || limits(rule.by_week_no) || limits(rule.by_month))) {
        m_skippedRule = true;
        return;
    }
    icalrecur_iterator* iterator = icalrecur_iterator_new(rule, start);
    if (!iterator)
        return;
    // Jump to the window when the rule has no count to keep (a daily event
    // since 2005 need not be walked through day by day).
    auto first = m_times.seconds(start);
    if (rule.count == 0 && first && *first < m_windowStart - 86400 * 2) {
        auto jump = m_times.timeFromSeconds(m_windowStart - 86400 * 2, icaltime_is_date(start), m_times.zoneOf(start));
        icalrecur_iterator_set_start(iterator, jump);
    }
    for (size_t step = 0; step < maximumSteps; ++step) {
        struct icaltimetype next = icalrecur_iterator_next(iterator);
        if (icaltime_is_null_time(next))
            break;
        auto seconds = m_times.seconds(next);
        if (!seconds || *seconds >= m_windowEnd)
            break;
        if (inWindow(*seconds, duration) && !m_excluded.contains(*seconds))
            starts.push_back(*seconds);
        // One more than the limit, so that reaching it can be told.
        if (starts.size() > m_limit + 1)
            break;
    }
    icalrecur_iterator_free(iterator);
}

std::vector<RecurrenceExpander::Occurrence> RecurrenceExpander::expand(icalcomponent* event, double start, double duration, const std::vector<double>& replaced)
{
    m_reachedLimit = false;
    m_skippedRule = false;
    m_excluded = std::set<double>(replaced.begin(), replaced.end());
    for (icalproperty* date = icalcomponent_get_first_property(event, ICAL_EXDATE_PROPERTY); date;
         date = icalcomponent_get_next_property(event, ICAL_EXDATE_PROPERTY)) {
        if (auto seconds = m_times.seconds(m_times.timeOfProperty(date)))
            m_excluded.insert(*seconds);
    }
    std::vector<double> starts { start };
    icalproperty* startProperty = icalcomponent_get_first_property(event, ICAL_DTSTART_PROPERTY);
    struct icaltimetype startTime = m_times.timeOfProperty(startProperty);
    for (icalproperty* rule = icalcomponent_get_first_property(event, ICAL_RRULE_PROPERTY); rule;
         rule = icalcomponent_get_next_property(event, ICAL_RRULE_PROPERTY))
        addRuleOccurrences(rule, startTime, duration, starts);
    for (icalproperty* date = icalcomponent_get_first_property(event, ICAL_RDATE_PROPERTY); date;
         date = icalcomponent_get_next_property(event, ICAL_RDATE_PROPERTY)) {
        if (auto seconds = m_times.seconds(m_times.timeOfProperty(date)))
            starts.push_back(*seconds);
    }

    std::sort(starts.begin(), starts.end());
    starts.erase(std::unique(starts.begin(), starts.end()), starts.end());
    std::vector<Occurrence> occurrences;
    for (double occurrence : starts) {
        if (m_excluded.contains(occurrence) || !inWindow(occurrence, duration))
            continue;
        if (occurrences.size() == m_limit) {
            m_reachedLimit = true;
            break;
        }
        occurrences.push_back({ occurrence, occurrence + duration });
    }
    return occurrences;
}

}
