// The calendar store and its records.
#include "EKCalendar.h"
#include "EKCalendarItem.h"
#include "EKEvent.h"
#include "EKEventStore.h"
#include "EKPredicate.h"
#include "EKReminder.h"

#include "../HostWorld.h"

#include <Foundation/NSArray.h>
#include <Foundation/NSDate.h>

#include <unordered_map>

OBJC_IMPLEMENT_CLASS(EKCalendar, NSObject)
{
    c.method<&EKCalendar::title>("title");
    c.method<&EKCalendar::CGColor>("CGColor");
}

OBJC_IMPLEMENT_CLASS(EKCalendarItem, NSObject)
{
    c.method<&EKCalendarItem::title>("title");
    c.method<&EKCalendarItem::notes>("notes");
    c.method<&EKCalendarItem::location>("location");
    c.method<&EKCalendarItem::calendar>("calendar");
}

OBJC_IMPLEMENT_CLASS(EKEvent, EKCalendarItem)
{
    c.method<&EKEvent::startDate>("startDate");
    c.method<&EKEvent::endDate>("endDate");
}

OBJC_IMPLEMENT_CLASS(EKReminder, EKCalendarItem)
{
    c.method<&EKReminder::dueDate>("dueDate");
    c.method<&EKReminder::isCompleted>("isCompleted");
}

OBJC_IMPLEMENT_CLASS(EKPredicate, NSObject) { }

OBJC_IMPLEMENT_CLASS(EKEventStore, NSObject)
{
    c.allocatable();
    c.method<&EKEventStore::predicateForIncompleteRemindersWithDueDateStartingEndingCalendars>("predicateForIncompleteRemindersWithDueDateStarting:ending:calendars:");
    c.method<&EKEventStore::fetchRemindersMatchingPredicate>("fetchRemindersMatchingPredicate:completion:");
    c.method<&EKEventStore::predicateForEventsWithStartDateEndDateCalendars>("predicateForEventsWithStartDate:endDate:calendars:");
    c.method<&EKEventStore::eventsMatchingPredicate>("eventsMatchingPredicate:");
}

EKEventStore::EKEventStore()
    : m_queue(dispatch_queue_create("com.apple.eventkit.store", nullptr))
{
}

static double secondsOf(NSObject* date)
{
    auto* moment = dynamic_cast<NSDate*>(date);
    return moment ? moment->timeIntervalSinceReferenceDate() : NSDate::date()->timeIntervalSinceReferenceDate();
}

StrongId EKEventStore::predicateForIncompleteRemindersWithDueDateStartingEndingCalendars(NSObject* start, NSObject* end, NSObject*)
{
    return make<EKPredicate>(EKPredicate::Kind::IncompleteReminders, secondsOf(start), secondsOf(end));
}

StrongId EKEventStore::predicateForEventsWithStartDateEndDateCalendars(NSObject* start, NSObject* end, NSObject*)
{
    return make<EKPredicate>(EKPredicate::Kind::Events, secondsOf(start), secondsOf(end));
}

static RefPtr<EKCalendar> makeCalendar(const std::string& title)
{
    RefPtr<UIColor> color;
    const HostWorld::Calendar* calendar = HostWorld::shared().calendarWithTitle(title);
    if (calendar && calendar->color && calendar->color->size() == 7 && (*calendar->color)[0] == '#') {
        unsigned value = static_cast<unsigned>(std::strtoul(calendar->color->c_str() + 1, nullptr, 16));
        color = UIColor::colorWithRed(((value >> 16) & 0xff) / 255.0, ((value >> 8) & 0xff) / 255.0, (value & 0xff) / 255.0, 1);
    }
    // A calendar the world never defined still has its title, without a colour.
    return make<EKCalendar>(title, color);
}

// One calendar object per title, as a store shares its calendars among the
// items it answers (thousands of items, few calendars).
using CalendarsByTitle = std::unordered_map<std::string, RefPtr<EKCalendar>>;

static RefPtr<EKCalendar> calendarNamed(const std::optional<std::string>& title, CalendarsByTitle& made)
{
    if (!title)
        return nullptr;
    auto [found, added] = made.emplace(*title, nullptr);
    if (added)
        found->second = makeCalendar(*title);
    return found->second;
}

// One object for each event and reminder of the world, in the world's
// order, made again only when the calendar store changes: EventKit, too,
// keeps the items it has loaded and answers the same objects to every
// fetch until the database changes, so a reload of a full calendar does
// not make thousands of objects. Nobody sets anything on a fetched item.
struct StoreItems {
    uint64_t revision { 0 };
    std::vector<RefPtr<EKEvent>> events;
    std::vector<RefPtr<EKReminder>> reminders;
};

static const StoreItems& storeItems()
{
    static auto* items = new StoreItems();
    const HostWorld& world = HostWorld::shared();
    if (items->revision == world.calendarStoreRevision())
        return *items;
    StoreItems made;
    made.revision = world.calendarStoreRevision();
    CalendarsByTitle calendars;
    made.events.reserve(world.events().size());
    for (auto& event : world.events()) {
        auto item = make<EKEvent>();
        item->setTitle(event.title);
        item->setNotes(event.notes);
        item->setLocation(event.location);
        item->setCalendar(calendarNamed(event.calendar, calendars));
        item->setStartDate(NSDate::dateWithTimeIntervalSinceReferenceDate(event.start));
        item->setEndDate(NSDate::dateWithTimeIntervalSinceReferenceDate(event.end));
        made.events.push_back(std::move(item));
    }
    made.reminders.reserve(world.reminders().size());
    for (auto& reminder : world.reminders()) {
        auto item = make<EKReminder>();
        item->setTitle(reminder.title);
        item->setNotes(reminder.notes);
        item->setCalendar(calendarNamed(reminder.calendar, calendars));
        if (reminder.due)
            item->setDueDate(NSDate::dateWithTimeIntervalSinceReferenceDate(*reminder.due));
        made.reminders.push_back(std::move(item));
    }
    *items = std::move(made);
    return *items;
}

void EKEventStore::fetchRemindersMatchingPredicate(NSObject* predicate, std::function<void(StrongId)> completion)
{
    RefPtr<EKPredicate> query(dynamic_cast<EKPredicate*>(predicate));
    dispatch_async(m_queue.get(), [query, completion = std::move(completion)] {
        if (!completion)
            return;
        if (!query || query->kind() != EKPredicate::Kind::IncompleteReminders)
            return completion(nullptr);
        std::vector<StrongId> reminders;
        const auto& world = HostWorld::shared().reminders();
        const StoreItems& items = storeItems();
        for (size_t index = 0; index < world.size(); ++index) {
            auto& reminder = world[index];
            if (reminder.completed || !reminder.due || *reminder.due < query->start() || *reminder.due > query->end())
                continue;
            reminders.push_back(items.reminders[index]);
        }
        completion(NSArray::create(std::move(reminders)));
    });
}

StrongId EKEventStore::eventsMatchingPredicate(NSObject* predicate) const
{
    auto* query = dynamic_cast<EKPredicate*>(predicate);
    if (!query || query->kind() != EKPredicate::Kind::Events)
        return nullptr;
    std::vector<StrongId> events;
    const auto& world = HostWorld::shared().events();
    const StoreItems& items = storeItems();
    for (size_t index = 0; index < world.size(); ++index) {
        auto& event = world[index];
        if (event.start > query->end() || event.end < query->start())
            continue;
        events.push_back(items.events[index]);
    }
    return NSArray::create(std::move(events));
}
