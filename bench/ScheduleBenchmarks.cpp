// One forced reload of the schedule and notifications table and its layout,
// as the phone fills up: 10, 100, 1,000 and 10,000 items, a quarter events,
// a quarter reminders and half notifications (twenty per app), spread over
// the week the table looks ahead. The table keeps at most "calveraMaxEvents"
// events and "calveraMaxReminders" reminders (99 each by default), so the
// rows grow with the notifications while the fetch, filter and sort see
// every item. Only the rows on screen get cells.
//
// Items are only ever added to the world, so the sizes run in increasing
// order and these run after the other benchmarks of the program.

#include "BenchmarkPhone.h"

#include <Foundation/NSDate.h>
#include <UIKit/UITableView.h>
#include <host/HostWorld.h>
#include <objc/objc.h>

#include <algorithm>

namespace {

size_t itemsInWorld()
{
    HostWorld& world = HostWorld::shared();
    return world.events().size() + world.reminders().size() + world.notifications().size();
}

// Adds items until the world holds `total` of them in the mix above.
void fillWorldTo(size_t total)
{
    HostWorld& world = HostWorld::shared();
    double now = NSDate::date()->timeIntervalSinceReferenceDate();
    const double week = 6.5 * 24 * 3600;
    size_t events = total / 4, reminders = total / 4, notifications = total - events - reminders;
    for (size_t i = world.events().size(); i < events; ++i) {
        double start = now + 600 + week * double(i) / double(events);
        world.addEvent({ "Event " + std::to_string(i), start, start + 1800, "Calendar", std::nullopt, std::nullopt });
    }
    for (size_t i = world.reminders().size(); i < reminders; ++i)
        world.addReminder({ "Reminder " + std::to_string(i), now + 300 + week * double(i) / double(reminders), "Calendar", false, std::nullopt });
    // The host's lock screen lists every notification anew at each delivery,
    // which makes thousands of deliveries quadratic. The extension reads the
    // store itself, and these benchmarks run last, so the host's list is
    // left as it was.
    world.setNotificationsDidChangeHandler(nullptr);
    for (size_t i = world.notifications().size(); i < notifications; ++i) {
        std::string app = "com.example.app" + std::to_string(i / 20);
        if (!world.appWithIdentifier(app))
            world.installApp({ app, "App " + std::to_string(i / 20), "#3a7bd5" });
        HostWorld::Notification notification;
        notification.app = app;
        notification.title = "Sender " + std::to_string(i % 20);
        notification.message = "Message " + std::to_string(i);
        notification.date = now - double(i % 20) * 60.0;
        world.deliverNotification(notification);
    }
}

void BM_ScheduleReload(benchmark::State& state)
{
    NSObject* view = panel();
    size_t items = size_t(state.range(0));
    if (itemsInWorld() > items) {
        state.SkipWithError("the world already holds more items (sizes must run in increasing order)");
        return;
    }
    fillWorldTo(items);
    NSObject* controller = objc::object_getIvar(view, "_tableViewController").get();
    auto* table = dynamic_cast<UITableView*>(objc::send<NSObject*>(controller, "tableView"));
    if (!table) {
        state.SkipWithError("the panel has no table");
        return;
    }
    // The host's own work on thousands of deliveries leaves the heap full of
    // freed blocks; one reload before timing pays for tidying them, so that
    // the iterations measure the reload alone.
    objc::send(controller, "forceReloadTableViewData");
    settleRunLoop();
    size_t cellsBefore = table->cellsRequested();
    {
        AllocationsPerIteration allocations(state);
        for (auto _ : state) {
            objc::send(controller, "forceReloadTableViewData");
            settleRunLoop();
            table->layoutIfNeeded();
        }
    }
    long rows = 0;
    for (long section = 0; section < table->numberOfSections(); ++section)
        rows += table->numberOfRowsInSection(section);
    state.counters["items"] = double(itemsInWorld());
    state.counters["rows"] = double(rows);
    state.counters["cells"] = double(table->cellsRequested() - cellsBefore) / double(std::max<int64_t>(1, state.iterations()));
    reportPeriod(state, 10);
}
BENCHMARK(BM_ScheduleReload)->RangeMultiplier(10)->Range(10, 10000)->Unit(benchmark::kMicrosecond);

} // namespace
