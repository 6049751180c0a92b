#pragma once

#include <Foundation/Dispatch.h>
#include <objc/objc.h>

#include <functional>

class NSDate;

// The calendar store over the world's calendars, events and reminders, as
// EventKit's EKEventStore. Events are answered synchronously; reminders
// asynchronously, their completion running on a queue of the store's own
// (as EventKit does, never on the caller's). Every answer is a new array of
// the store's items at that moment; the item objects themselves are the
// same from fetch to fetch until an event, reminder or calendar is added.
//
// The store answers with a predicate for any range; a null start or end
// counts as now.
class EKEventStore final : public NSObject {
    OBJC_CLASS(EKEventStore)
public:
    EKEventStore();

    // Reminders not completed whose due date lies from start to end
    // inclusive; calendars are ignored (always all of them).
    StrongId predicateForIncompleteRemindersWithDueDateStartingEndingCalendars(NSObject* start, NSObject* end, NSObject* calendars);
    // Runs the completion later, on the store's queue, with an NSArray of
    // EKReminder (in the order they were added to the store).
    void fetchRemindersMatchingPredicate(NSObject* predicate, std::function<void(StrongId)> completion);
    // Events that touch the range (they start no later than its end and end
    // no earlier than its start, so one that ends exactly at the start is
    // among them), in the order they were added.
    StrongId predicateForEventsWithStartDateEndDateCalendars(NSObject* start, NSObject* end, NSObject* calendars);
    StrongId eventsMatchingPredicate(NSObject* predicate) const;

    DispatchQueue* queue() const { return m_queue.get(); }

private:
    RefPtr<DispatchQueue> m_queue;
};
