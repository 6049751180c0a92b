#include "SoakRunner.h"

#include "ViewTree.h"

#include <Foundation/NSDate.h>
#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSRunLoop.h>
#include <Foundation/VirtualClock.h>
#include <UIKit/UIApplication.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIView.h>
#include <host/SimulatedHost.h>
#include <host/SpringBoard/SBBacklightController.h>
#include <host/SpringBoard/SBLockScreenManager.h>
#include <host/SpringBoard/SBLockScreenViewController.h>

#include <algorithm>
#include <sstream>

namespace sim {

// The overlays a dark display closes, by class name (the extension is only
// reachable through the runtime).
static constexpr const char* closableOverlayClasses[] = {
    "KVTimeDisplayView",
    "KVWeatherDisplayView",
    "KVAmperoDisplayView",
    "KVSingleEventDisplayView",
    "KVSingleNotificationDisplayView",
    "KVMusicDisplayView",
};

// How often each action comes up, relative to the others. Events and
// reminders stay in the host's store for good, so they come rarely.
static constexpr int actionWeights[] = {
    10, // DeliverNotification
    7, // RemoveNotification
    2, // AddEvent
    2, // AddReminder
    6, // Battery
    3, // Call
    3, // Alert
    4, // Rotate
    4, // Music
    3, // Timer
    4, // LockOrUnlock
    3, // Display
    3, // NotificationCenter
    3, // Search
    6, // TapPanel
    4, // TapRow
    5, // Home
};

// The store never holds more than this many notifications: more would only
// make the table longer, not the run more telling.
static constexpr size_t mostNotifications = 12;

// A change shows on the panel at its next one-second tick at the latest.
static constexpr double shortestPause = 1.5;

SoakRunner::SoakRunner(SimulatedHost& host, Options options)
    : m_host(host)
    , m_options(options)
    , m_random(static_cast<uint64_t>(options.seed))
{
    static_assert(std::size(actionWeights) == ActionCount);
}

const char* SoakRunner::actionName(Action action)
{
    static constexpr const char* names[] = { "notification", "notification-remove", "event", "reminder", "battery", "call", "alert",
        "rotate", "music", "timer", "lock/unlock", "display", "nc", "search", "tap-panel", "tap-row", "home" };
    static_assert(std::size(names) == ActionCount);
    return names[action];
}

double SoakRunner::uniform(double low, double high) { return std::uniform_real_distribution<double>(low, high)(m_random); }
int SoakRunner::pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }
bool SoakRunner::chance(double probability) { return uniform(0, 1) < probability; }

static void settle()
{
    NSRunLoop::mainRunLoop()->runPending();
    UIView::layoutPendingViews();
}

static NSObject* sharedInstanceOf(const char* className)
{
    objc::Class* cls = objc::objc_getClass(className);
    return cls ? objc::send<NSObject*>(cls, OBJC_SEL("sharedInstance")) : nullptr;
}

std::optional<std::string> SoakRunner::run()
{
    if (NSObject* settings = sharedInstanceOf("KVSettings")) {
        m_situation.enabled = objc::send<bool>(settings, OBJC_SEL("enabled"));
        m_situation.location = objc::send<int>(settings, OBJC_SEL("location"));
    }
    // The run starts from a quiet phone: no call, no alert.
    m_host.setCallState(SimulatedHost::CallState::None);
    m_host.dismissFullscreenAlert();
    settle();

    double baselineAt = std::min(86400.0, m_options.seconds / 4);
    double elapsed = 0;
    int totalWeight = 0;
    for (int weight : actionWeights)
        totalWeight += weight;
    while (elapsed < m_options.seconds) {
        // The host darkens an idle lock screen within seconds, so most
        // changes find the display off: the user mostly wakes it first, and
        // an unlocked phone comes back to the lock screen, where the panel is.
        if (SBBacklightController::sharedInstance()->screenIsOff() && chance(0.8)) {
            m_host.setDisplayOn(true);
            settle();
            ++m_counts[Display];
        }
        int roll = pick(totalWeight);
        int action = 0;
        while (roll >= actionWeights[action])
            roll -= actionWeights[action++];
        if (!SBLockScreenManager::sharedInstance()->isUILocked() && chance(0.4))
            action = LockOrUnlock;
        m_lastAction = actionName(static_cast<Action>(action));
        perform(static_cast<Action>(action));
        settle();
        ++m_steps;
        ++m_counts[action];
        if (auto failure = checkOverlaysAfterDisplayOff())
            return failure;

        double pause = uniform(shortestPause, std::max(shortestPause, m_options.longestPause));
        NSRunLoop::mainRunLoop()->advance(pause);
        settle();
        elapsed += pause;
        if (m_options.progress)
            m_options.progress(elapsed);
        if (auto failure = check())
            return failure;
        if (m_objectsAfterFirstDay < 0 && elapsed >= baselineAt)
            recordCounts(m_objectsAfterFirstDay, m_eventsAfterFirstDay);
    }
    recordCounts(m_objectsAtEnd, m_eventsAtEnd);
    m_lastAction = "the whole run";
    std::ostringstream what;
    if (!SoakInvariants::staysFlat(m_objectsAfterFirstDay, m_objectsAtEnd, 500))
        what << "flat memory (" << m_objectsAfterFirstDay << " live objects after the first day, " << m_objectsAtEnd << " at the end)";
    else if (!SoakInvariants::staysFlat(static_cast<long>(m_eventsAfterFirstDay), static_cast<long>(m_eventsAtEnd), 20))
        what << "bounded run loop (" << m_eventsAfterFirstDay << " pending events after the first day, " << m_eventsAtEnd << " at the end)";
    else
        return std::nullopt;
    return broken(what.str());
}

void SoakRunner::perform(Action action)
{
    auto backlight = SBBacklightController::sharedInstance();
    switch (action) {
    case DeliverNotification:
        if (m_delivered.size() >= mostNotifications)
            return removeNotification();
        return deliverNotification();
    case RemoveNotification:
        return removeNotification();
    case AddEvent: {
        HostWorld::CalendarEvent event;
        event.title = "Soak event";
        event.start = VirtualClock::shared().wallNow() + uniform(-3600, 2 * 86400);
        event.end = event.start + uniform(900, 3 * 3600);
        event.calendar = "Calendar";
        HostWorld::shared().addEvent(std::move(event));
        return;
    }
    case AddReminder: {
        HostWorld::Reminder reminder;
        reminder.title = "Soak reminder";
        reminder.due = VirtualClock::shared().wallNow() + uniform(600, 3 * 86400);
        reminder.calendar = "Calendar";
        HostWorld::shared().addReminder(std::move(reminder));
        return;
    }
    case Battery:
        return changeBattery();
    case Call:
        return changeCall();
    case Alert:
        if (m_host.lockScreenViewController() && m_host.lockScreenViewController()->fullscreenBulletinViewController()) {
            m_lastAction = "alert dismiss";
            m_host.dismissFullscreenAlert();
            m_situation.fullscreenAlertFlag = false;
        } else {
            m_lastAction = "alert show";
            m_host.showFullscreenAlert();
            m_situation.fullscreenAlertFlag = true;
        }
        return;
    case Rotate: {
        int orientation = pick(4) + 1;
        m_lastAction = "rotate " + SimulatedHost::orientationName(orientation);
        m_host.rotate(orientation);
        return;
    }
    case Music: {
        int choice = pick(3);
        if (choice == 0) {
            m_lastAction = "music none";
            m_host.setNowPlaying(std::nullopt, false);
            return;
        }
        SBMediaController::NowPlaying nowPlaying;
        nowPlaying.artist = "Soak Artist";
        nowPlaying.song = "Song ";
        *nowPlaying.song += std::to_string(pick(100));
        nowPlaying.album = "Soak Album";
        m_lastAction = choice == 1 ? "music playing" : "music paused";
        m_host.setNowPlaying(nowPlaying, choice == 1);
        return;
    }
    case Timer: {
        int choice = pick(3);
        m_lastAction = choice == 0 ? "timer running" : choice == 1 ? "timer paused" : "timer stopped";
        if (choice == 0)
            m_host.setTimerRunning(uniform(60, 7200));
        else if (choice == 1)
            m_host.setTimerPaused(uniform(60, 7200));
        else
            m_host.setTimerStopped();
        return;
    }
    case LockOrUnlock:
        if (SBLockScreenManager::sharedInstance()->isUILocked()) {
            m_lastAction = "unlock";
            m_host.unlock();
        } else {
            m_lastAction = "lock";
            m_host.lock();
        }
        return;
    case Display:
        m_lastAction = backlight->screenIsOff() ? "display on" : "display off";
        m_host.setDisplayOn(backlight->screenIsOff());
        return;
    case NotificationCenter:
        m_lastAction = m_host.isNotificationCenterVisible() ? "nc hide" : "nc show";
        if (m_host.isNotificationCenterVisible())
            m_host.hideNotificationCenter();
        else
            m_host.showNotificationCenter();
        return;
    case Search:
        if (m_host.isSearchVisible()) {
            m_lastAction = "search hide";
            m_host.hideSearch();
        } else {
            long long edge = chance(0.5) ? 8 : 1;
            m_lastAction = edge == 8 ? "search show right" : "search show top";
            m_host.showSearch(edge);
            m_situation.lastSearchEdge = edge;
        }
        return;
    case TapPanel:
        return tapPanel();
    case TapRow:
        return tapRow();
    case Home:
        m_host.pressHome();
        return;
    case ActionCount:
        return;
    }
}

void SoakRunner::deliverNotification()
{
    static constexpr const char* apps[] = { "com.apple.MobileSMS", "com.apple.mobilemail", "com.apple.reminders", "com.apple.mobilephone" };
    HostWorld::Notification notification;
    int serial = m_nextNotification++;
    notification.app = apps[pick(static_cast<int>(std::size(apps)))];
    notification.title = "Soak " + SoakInvariants::token(serial);
    notification.message = chance(0.5) ? "A short message" : "A longer message that wraps over more than one line of the row";
    notification.date = VirtualClock::shared().wallNow();
    notification.hasImage = chance(0.2);
    m_host.deliverNotification(notification);
    m_delivered.push_back({ HostWorld::shared().notifications().back().identifier, serial });
    m_lastAction = "notification " + notification.app + " " + *notification.title;
}

void SoakRunner::removeNotification()
{
    m_lastAction = "notification-remove";
    // Notifications the extension removed itself are gone already.
    std::erase_if(m_delivered, [](const Delivered& delivered) {
        const auto& store = HostWorld::shared().notifications();
        return std::none_of(store.begin(), store.end(), [&](const HostWorld::Notification& n) { return n.identifier == delivered.identifier; });
    });
    if (m_delivered.empty())
        return;
    size_t index = static_cast<size_t>(pick(static_cast<int>(m_delivered.size())));
    Delivered removed = m_delivered[index];
    m_delivered.erase(m_delivered.begin() + static_cast<long>(index));
    if (HostWorld::shared().removeNotificationWithIdentifier(removed.identifier))
        m_removedSinceLastCheck.push_back(removed.serial);
    m_lastAction += ' ';
    m_lastAction += SoakInvariants::token(removed.serial);
}

void SoakRunner::changeBattery()
{
    if (m_onAC) {
        m_batteryLevel = std::min(1.0, m_batteryLevel + uniform(0.01, 0.15));
        if (m_batteryLevel >= 1.0 ? chance(0.5) : chance(0.1))
            m_onAC = false;
    } else {
        m_batteryLevel = std::max(0.01, m_batteryLevel - uniform(0.005, 0.08));
        if (m_batteryLevel < 0.2 || chance(0.1))
            m_onAC = true;
    }
    SimulatedHost::BatteryChange change;
    change.level = m_batteryLevel;
    change.onAC = m_onAC;
    change.lowPowerMode = !m_onAC && m_batteryLevel < 0.2;
    m_host.changeBattery(change);
    std::ostringstream text;
    text << "battery level=" << m_batteryLevel << " ac=" << (m_onAC ? "yes" : "no");
    m_lastAction = text.str();
}

void SoakRunner::changeCall()
{
    using State = SimulatedHost::CallState;
    static constexpr State states[] = { State::IncomingCall, State::ActiveCall, State::ActiveFaceTime, State::FaceTimeInvitation };
    static constexpr const char* names[] = { "call incoming", "call active", "facetime active", "facetime invitation" };
    if (m_situation.callOrFaceTime && chance(0.7)) {
        m_lastAction = "call none";
        m_host.setCallState(State::None);
        m_situation.callOrFaceTime = false;
        return;
    }
    int choice = pick(4);
    m_lastAction = names[choice];
    m_host.setCallState(states[choice]);
    m_situation.callOrFaceTime = true;
}

void SoakRunner::tapPanel()
{
    // Nobody taps a dark screen.
    if (SBBacklightController::sharedInstance()->screenIsOff())
        return;
    static constexpr const char* sections[] = { "_timeContainerView", "_weatherContainerView", "_amperoContainerView", "_alarmTimerLabel" };
    const char* section = sections[pick(static_cast<int>(std::size(sections)))];
    m_lastAction = std::string("tap #") + section;
    if (auto point = ViewTree::screenPoint(Target { Target::Kind::Name, section, std::nullopt }))
        UIApplication::sharedApplication()->tapAt(*point);
}

void SoakRunner::tapRow()
{
    if (SBBacklightController::sharedInstance()->screenIsOff())
        return;
    auto rows = ViewTree::matches(Target { Target::Kind::Class, "KVTableViewRowCell", std::nullopt });
    if (rows.empty())
        return;
    int index = pick(static_cast<int>(rows.size()));
    m_lastAction = "tap KVTableViewRowCell@";
    m_lastAction += std::to_string(index);
    if (auto point = ViewTree::screenPoint(Target { Target::Kind::Class, "KVTableViewRowCell", index }))
        UIApplication::sharedApplication()->tapAt(*point);
}

std::optional<std::string> SoakRunner::check()
{
    if (auto failure = checkPanel())
        return failure;
    if (auto failure = checkOverlaysAfterDisplayOff())
        return failure;
    return checkRemovedNotifications();
}

std::optional<std::string> SoakRunner::checkPanel()
{
    auto expected = SoakInvariants::expectedPanelHidden(m_situation);
    auto* panel = objc::cast<UIView>(sharedInstanceOf("KVView"));
    if (!expected || !panel || panel->isHidden() == *expected)
        return std::nullopt;
    std::ostringstream what;
    what << "panel visibility (the panel is " << (panel->isHidden() ? "hidden" : "shown") << " with the alert flag " << (m_situation.fullscreenAlertFlag ? "set" : "clear")
         << ", " << (m_situation.callOrFaceTime ? "a call" : "no call") << ", location " << m_situation.location << ")";
    return broken(what.str());
}

std::optional<std::string> SoakRunner::checkOverlaysAfterDisplayOff()
{
    if (!m_situation.enabled || !SBBacklightController::sharedInstance()->screenIsOff())
        return std::nullopt;
    ++m_darkDisplaysChecked;
    for (const char* className : closableOverlayClasses) {
        NSObject* overlay = sharedInstanceOf(className);
        if (overlay && objc::send<bool>(overlay, OBJC_SEL("isActive")))
            return broken(std::string("no overlay after display off (") + className + " is active)");
    }
    return std::nullopt;
}

static void collectShownTexts(const UIView& view, std::vector<std::string>& texts)
{
    if (view.isHidden())
        return;
    if (auto* label = objc::cast<UILabel>(const_cast<UIView*>(&view)))
        texts.push_back(label->text());
    for (const auto& subview : view.subviews())
        collectShownTexts(*subview, texts);
}

std::optional<std::string> SoakRunner::checkRemovedNotifications()
{
    NSObject* panel = sharedInstanceOf("KVView");
    StrongId controller = objc::object_getIvar(panel, "_tableViewController");
    bool reloading = objc::send<bool>(controller.get(), OBJC_SEL("isCurrentlyReloadingData"));
    StrongId data = objc::send<StrongId>(controller.get(), OBJC_SEL("notificationData"));
    std::optional<std::string> failure;
    // A new dictionary means a reload started after the last check; once it
    // is no longer in flight, nothing removed before then may show.
    if (!reloading && data && m_notificationDataAtLastCheck && data != m_notificationDataAtLastCheck) {
        ++m_reloadsChecked;
        std::vector<std::string> texts;
        if (auto* table = objc::cast<UIView>(objc::send<NSObject*>(controller.get(), OBJC_SEL("tableView"))))
            collectShownTexts(*table, texts);
        auto stale = SoakInvariants::staleTexts(texts, m_removedBeforeLastCheck);
        if (!stale.empty())
            failure = broken("removed notifications stay removed (the table shows \"" + stale.front() + "\" after a reload)");
    }
    if (!reloading && data)
        m_notificationDataAtLastCheck = data;
    m_removedBeforeLastCheck.insert(m_removedSinceLastCheck.begin(), m_removedSinceLastCheck.end());
    m_removedSinceLastCheck.clear();
    return failure;
}

void SoakRunner::recordCounts(long& objects, size_t& events) const
{
    objects = NSObject::liveObjectCount();
    events = NSRunLoop::mainRunLoop()->pendingEventCount();
}

std::optional<std::string> SoakRunner::broken(const std::string& invariant) const
{
    auto now = NSDate::date();
    std::ostringstream text;
    text << invariant << " broken at " << NSDateFormatter::ISO8601StringFromDate(now.get()) << " after " << m_lastAction << " (seed " << m_options.seed << ")";
    return text.str();
}

std::string SoakRunner::summary() const
{
    std::ostringstream text;
    text << "soak: " << m_steps << " steps over " << m_options.seconds / 3600 << " virtual hours (seed " << m_options.seed << ")\n  actions:";
    for (int action = 0; action < ActionCount; ++action)
        text << " " << actionName(static_cast<Action>(action)) << " " << m_counts[action];
    text << "\n  checked: " << m_reloadsChecked << " finished reloads, " << m_darkDisplaysChecked << " dark displays";
    text << "\n  live objects: " << m_objectsAfterFirstDay << " after the first day, " << m_objectsAtEnd << " at the end; run-loop events: " << m_eventsAfterFirstDay << ", "
         << m_eventsAtEnd << "\n";
    return text.str();
}

}
