#pragma once

#include <Foundation/NSDate.h>
#include <objc/objc.h>

// A query of the calendar store, made by one of its predicate methods: the
// kind of item and the range of dates (calendars are always all of them).
class EKPredicate final : public NSObject {
    OBJC_CLASS(EKPredicate)
public:
    enum class Kind { Events, IncompleteReminders };
    EKPredicate(Kind kind, double start, double end)
        : m_kind(kind)
        , m_start(start)
        , m_end(end)
    {
    }

    Kind kind() const { return m_kind; }
    double start() const { return m_start; }
    double end() const { return m_end; }

private:
    Kind m_kind;
    double m_start;
    double m_end;
};
