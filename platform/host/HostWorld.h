#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

// What the host knows and what it was asked to do, beside the state its
// SpringBoard objects keep: installed apps, the notification store, and the
// records the simulator's dump reports (launches, removed notifications,
// invoked actions, alerts, log lines, home-button presses).
class HostWorld {
public:
    struct App {
        std::string bundleIdentifier;
        std::string name;
        std::string color; // "#rrggbb": the icon's colour
    };
    struct Notification {
        std::string app;
        std::optional<std::string> title;
        std::optional<std::string> subtitle;
        std::optional<std::string> message;
        double date { 0 }; // seconds since the reference date
        bool hasImage { false };
        int actionCount { 0 };
        std::optional<std::string> url;
        // Given by the store at delivery: stays the same while others come and go.
        uint64_t identifier { 0 };
    };
    // The calendar store's data (EventKit reads it).
    struct Calendar {
        std::string title;
        std::optional<std::string> color; // "#rrggbb"; absent: no colour
    };
    struct CalendarEvent {
        std::string title;
        double start { 0 }; // seconds since the reference date
        double end { 0 };
        std::optional<std::string> calendar; // a title; absent: no calendar
        std::optional<std::string> location;
        std::optional<std::string> notes;
    };
    struct Reminder {
        std::string title;
        std::optional<double> due;
        std::optional<std::string> calendar;
        bool completed { false };
        std::optional<std::string> notes;
    };
    struct Launch {
        std::optional<std::string> app;
        std::optional<std::string> url;
        bool promptToUnlock { false };
    };
    struct Action {
        std::string app;
        std::optional<std::string> title;
        int index { 0 };
    };
    struct Alert {
        std::optional<std::string> title;
        std::optional<std::string> message;
        std::optional<std::string> cancel;
        std::vector<std::string> others;
    };

    // The world of the current host (a fresh one for every SimulatedHost).
    static HostWorld& shared();
    static void reset();

    // Apps, with the system's own installed.
    const std::vector<App>& apps() const { return m_apps; }
    const App* appWithIdentifier(const std::string&) const;
    void installApp(App);
    const std::vector<std::string>& switcherApps() const { return m_switcher; }
    void setSwitcherApps(std::vector<std::string> apps) { m_switcher = std::move(apps); }

    // The notification store: sections are apps in order of first delivery,
    // rows in order of delivery.
    const std::vector<Notification>& notifications() const { return m_notifications; }
    void deliverNotification(Notification);
    // Removes the notification at `index` of the store and records it.
    bool removeNotification(size_t index);
    // The same by the identifier given at delivery; false when it is gone.
    bool removeNotificationWithIdentifier(uint64_t);
    bool notificationsGrouped() const { return m_grouped; }
    void setNotificationsGrouped(bool grouped) { m_grouped = grouped; }
    const std::vector<Notification>& removedNotifications() const { return m_removed; }
    // Changes with every delivery and removal, and differs between worlds,
    // so that readers can keep what they worked out from the store until it
    // changes.
    uint64_t notificationsRevision() const { return m_notificationsRevision; }
    // Told after every delivery and removal (the lock screen lists them).
    void setNotificationsDidChangeHandler(std::function<void()> handler) { m_notificationsDidChange = std::move(handler); }

    // The calendar store. Events and reminders keep the order they were
    // added in; a calendar defined again replaces the earlier one.
    const std::vector<Calendar>& calendars() const { return m_calendars; }
    const Calendar* calendarWithTitle(const std::string&) const;
    void defineCalendar(Calendar);
    const std::vector<CalendarEvent>& events() const { return m_events; }
    void addEvent(CalendarEvent);
    const std::vector<Reminder>& reminders() const { return m_reminders; }
    void addReminder(Reminder);
    // Changes with every event, reminder and calendar added or defined
    // again, and differs between worlds, as notificationsRevision does.
    uint64_t calendarStoreRevision() const { return m_calendarStoreRevision; }

    void recordLaunch(Launch launch) { m_launches.push_back(std::move(launch)); }
    const std::vector<Launch>& launches() const { return m_launches; }
    void recordAction(Action action) { m_actions.push_back(std::move(action)); }
    const std::vector<Action>& actions() const { return m_actions; }
    void recordAlert(Alert alert) { m_alerts.push_back(std::move(alert)); }
    const std::vector<Alert>& alerts() const { return m_alerts; }
    void appendLog(std::string line) { m_log.push_back(std::move(line)); }
    const std::vector<std::string>& log() const { return m_log; }

    void noteMenuPressHandledByHost() { ++m_menuPressesHandledByHost; }
    int menuPressesHandledByHost() const { return m_menuPressesHandledByHost; }

private:
    HostWorld();

    std::vector<App> m_apps;
    // Where each app is in m_apps: a phone with many apps is asked for one
    // by identifier for every notification section.
    std::unordered_map<std::string, size_t> m_appIndex;
    std::vector<std::string> m_switcher;
    std::vector<Notification> m_notifications;
    std::vector<Notification> m_removed;
    uint64_t m_nextNotificationIdentifier { 1 };
    uint64_t m_notificationsRevision;
    uint64_t m_calendarStoreRevision;
    std::vector<Calendar> m_calendars;
    std::vector<CalendarEvent> m_events;
    std::vector<Reminder> m_reminders;
    bool m_grouped { true };
    std::function<void()> m_notificationsDidChange;
    std::vector<Launch> m_launches;
    std::vector<Action> m_actions;
    std::vector<Alert> m_alerts;
    std::vector<std::string> m_log;
    int m_menuPressesHandledByHost { 0 };
};
