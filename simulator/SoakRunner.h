#pragma once

#include "SoakInvariants.h"

#include <objc/NSObject.h>

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <string>
#include <unordered_set>
#include <vector>

class SimulatedHost;

namespace sim {

// A long run of the phone in which the world and the user change things at
// random: notifications come and go, events and reminders are added, the
// battery drains and charges, calls and alerts come up, the phone turns,
// music starts and stops, the device locks and unlocks, the display goes
// dark, the notification centre and the search page open, the panel's
// sections are tapped and the home button is pressed. After every change
// the live objects are checked against the rules in SoakInvariants. The
// generator is seeded, so a run that broke can be played again exactly.
class SoakRunner {
public:
    struct Options {
        double seconds { 0 };
        int seed { 1 };
        double longestPause { 600 };
        // Told the virtual seconds played so far after every pause.
        std::function<void(double)> progress;
    };
    SoakRunner(SimulatedHost&, Options);

    // Empty when every rule held to the end; otherwise which rule broke,
    // when, after what, and the seed.
    std::optional<std::string> run();
    // Steps, actions by kind, and the counts after the first day and at the end.
    std::string summary() const;

private:
    enum Action : uint8_t {
        DeliverNotification,
        RemoveNotification,
        AddEvent,
        AddReminder,
        Battery,
        Call,
        Alert,
        Rotate,
        Music,
        Timer,
        LockOrUnlock,
        Display,
        NotificationCenter,
        Search,
        TapPanel,
        TapRow,
        Home,
        ActionCount,
    };
    static const char* actionName(Action);

    void perform(Action);
    void deliverNotification();
    void removeNotification();
    void changeBattery();
    void changeCall();
    void tapPanel();
    void tapRow();

    std::optional<std::string> check();
    std::optional<std::string> checkPanel();
    std::optional<std::string> checkOverlaysAfterDisplayOff();
    std::optional<std::string> checkRemovedNotifications();
    void recordCounts(long& objects, size_t& events) const;
    std::optional<std::string> broken(const std::string& invariant) const;

    double uniform(double low, double high);
    int pick(int count);
    bool chance(double probability);

    SimulatedHost& m_host;
    Options m_options;
    std::mt19937_64 m_random;
    long long m_steps { 0 };
    std::array<long long, ActionCount> m_counts {};
    std::string m_lastAction { "the start" };

    // The world as the run changed it.
    SoakInvariants::PanelSituation m_situation;
    double m_batteryLevel { 0.76 };
    bool m_onAC { false };
    int m_nextNotification { 1 };
    struct Delivered {
        uint64_t identifier { 0 };
        int serial { 0 };
    };
    std::vector<Delivered> m_delivered;

    // Serials of the notifications removed before the last check, and the
    // table's notification data seen then (held, so that its address is
    // never reused by a later reload's).
    std::unordered_set<int> m_removedBeforeLastCheck;
    std::vector<int> m_removedSinceLastCheck;
    StrongId m_notificationDataAtLastCheck;

    // How often the rules that need a moment to apply (a finished reload,
    // a dark display) were checked: a run that never checked them proves nothing.
    long long m_reloadsChecked { 0 };
    long long m_darkDisplaysChecked { 0 };

    long m_objectsAfterFirstDay { -1 };
    size_t m_eventsAfterFirstDay { 0 };
    long m_objectsAtEnd { 0 };
    size_t m_eventsAtEnd { 0 };
};

}
