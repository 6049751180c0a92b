#include "HostWorld.h"

#include <algorithm>
#include <atomic>
#include <memory>

static std::unique_ptr<HostWorld>& currentWorld()
{
    static auto* world = new std::unique_ptr<HostWorld>();
    return *world;
}

HostWorld& HostWorld::shared()
{
    auto& world = currentWorld();
    if (!world)
        world.reset(new HostWorld());
    return *world;
}

void HostWorld::reset() { currentWorld().reset(new HostWorld()); }

// Revisions of the notification and calendar stores, unique across the worlds of a process.
static uint64_t nextRevision()
{
    static std::atomic<uint64_t> last { 0 };
    return ++last;
}

HostWorld::HostWorld()
    : m_apps {
        { "com.apple.mobilecal", "Calendar", "#ffffff" },
        { "com.apple.reminders", "Reminders", "#ff9500" },
        { "com.apple.mobiletimer", "Clock", "#1c1c1e" },
        { "com.apple.MobileSMS", "Messages", "#4cd964" },
        { "com.apple.mobilemail", "Mail", "#1e88f5" },
        { "com.apple.Music", "Music", "#ff2d55" },
        { "com.apple.mobilesafari", "Safari", "#1b9af7" },
        { "com.apple.mobilephone", "Phone", "#4cd964" },
        { "com.apple.mobileslideshow", "Photos", "#f5f5f5" },
        { "com.apple.weather", "Weather", "#3b8fd9" },
        { "com.apple.Preferences", "Settings", "#8e8e93" },
    }
    , m_notificationsRevision(nextRevision())
    , m_calendarStoreRevision(nextRevision())
    , m_calendars { { "Calendar", "#1badf8" } }
{
    for (size_t index = 0; index < m_apps.size(); ++index)
        m_appIndex.emplace(m_apps[index].bundleIdentifier, index);
}

const HostWorld::App* HostWorld::appWithIdentifier(const std::string& identifier) const
{
    auto found = m_appIndex.find(identifier);
    return found == m_appIndex.end() ? nullptr : &m_apps[found->second];
}

void HostWorld::installApp(App app)
{
    auto [found, added] = m_appIndex.emplace(app.bundleIdentifier, m_apps.size());
    if (added)
        m_apps.push_back(std::move(app));
    else
        m_apps[found->second] = std::move(app);
}

void HostWorld::deliverNotification(Notification notification)
{
    notification.identifier = m_nextNotificationIdentifier++;
    m_notifications.push_back(std::move(notification));
    m_notificationsRevision = nextRevision();
    if (m_notificationsDidChange)
        m_notificationsDidChange();
}

bool HostWorld::removeNotification(size_t index)
{
    if (index >= m_notifications.size())
        return false;
    m_removed.push_back(std::move(m_notifications[index]));
    m_notifications.erase(m_notifications.begin() + static_cast<long>(index));
    m_notificationsRevision = nextRevision();
    if (m_notificationsDidChange)
        m_notificationsDidChange();
    return true;
}

bool HostWorld::removeNotificationWithIdentifier(uint64_t identifier)
{
    auto it = std::find_if(m_notifications.begin(), m_notifications.end(), [&](const Notification& notification) { return notification.identifier == identifier; });
    if (it == m_notifications.end())
        return false;
    return removeNotification(static_cast<size_t>(it - m_notifications.begin()));
}

const HostWorld::Calendar* HostWorld::calendarWithTitle(const std::string& title) const
{
    auto it = std::find_if(m_calendars.begin(), m_calendars.end(), [&](const Calendar& calendar) { return calendar.title == title; });
    return it == m_calendars.end() ? nullptr : &*it;
}

void HostWorld::addEvent(CalendarEvent event)
{
    m_events.push_back(std::move(event));
    m_calendarStoreRevision = nextRevision();
}

void HostWorld::addReminder(Reminder reminder)
{
    m_reminders.push_back(std::move(reminder));
    m_calendarStoreRevision = nextRevision();
}

void HostWorld::defineCalendar(Calendar calendar)
{
    m_calendarStoreRevision = nextRevision();
    auto it = std::find_if(m_calendars.begin(), m_calendars.end(), [&](const Calendar& existing) { return existing.title == calendar.title; });
    if (it != m_calendars.end())
        *it = std::move(calendar);
    else
        m_calendars.push_back(std::move(calendar));
}
