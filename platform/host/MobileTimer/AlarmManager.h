#pragma once

#include "Alarm.h"

#include <functional>
#include <vector>

// MobileTimer's store of alarms. Changes are made to a working list
// (`loadAlarms` refreshes it from the saved one, `addAlarm:active:` adds to
// it) and become real with `saveAlarms`, as with the clock app's store.
class AlarmManager final : public NSObject {
    OBJC_CLASS(AlarmManager)
public:
    struct Entry {
        RefPtr<Alarm> alarm;
        bool active { true };
    };

    static RefPtr<AlarmManager> sharedManager();

    void loadAlarms();
    void addAlarm(NSObject* alarm, bool active);
    void saveAlarms();

    const std::vector<Entry>& savedAlarms() const { return m_saved; }
    // Told after every save (the clock data provider recomputes the next alarm).
    void setAlarmsDidSaveHandler(std::function<void()> handler) { m_didSave = std::move(handler); }

private:
    std::vector<Entry> m_working;
    std::vector<Entry> m_saved;
    std::function<void()> m_didSave;
};
