#pragma once

#include "IcsTimes.h"

#include <set>
#include <string>
#include <vector>

namespace sim {

// The occurrences of one event in a window: its own start, the starts its
// RRULEs and RDATEs add, less its EXDATEs, with each instance that an
// override (a VEVENT of the same UID with a RECURRENCE-ID) replaces left to
// the override. A rule without an end is followed only to the window's end,
// and at most `limit` occurrences are made.
class RecurrenceExpander {
public:
    struct Occurrence {
        double start { 0 };
        double end { 0 };
    };

    RecurrenceExpander(const IcsTimes&, double windowStart, double windowEnd, size_t limit);

    // `replaced`: the starts (seconds) that overrides take over.
    std::vector<Occurrence> expand(icalcomponent* event, double start, double duration, const std::vector<double>& replaced);
    // Set when the last expansion stopped at the limit.
    bool reachedLimit() const { return m_reachedLimit; }
    // Set when the last expansion left out a rule too costly to follow.
    bool skippedRule() const { return m_skippedRule; }

private:
    void addRuleOccurrences(icalproperty* rule, struct icaltimetype start, double duration, std::vector<double>& starts);
    bool inWindow(double start, double duration) const { return start + duration > m_windowStart && start < m_windowEnd; }

    const IcsTimes& m_times;
    double m_windowStart;
    double m_windowEnd;
    size_t m_limit;
    bool m_reachedLimit { false };
    bool m_skippedRule { false };
    std::set<double> m_excluded; // EXDATEs and replaced instances of the event being expanded
};

}
