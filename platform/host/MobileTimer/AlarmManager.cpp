#include "AlarmManager.h"

#include "../HostShared.h"

OBJC_IMPLEMENT_CLASS(AlarmManager, NSObject)
{
    c.classMethod<&AlarmManager::sharedManager>("sharedManager");
    c.method<&AlarmManager::loadAlarms>("loadAlarms");
    c.method<&AlarmManager::addAlarm>("addAlarm:active:");
    c.method<&AlarmManager::saveAlarms>("saveAlarms");
}

RefPtr<AlarmManager> AlarmManager::sharedManager()
{
    static auto* slot = new RefPtr<AlarmManager>();
    return host::sharedInstanceIn(*slot);
}

void AlarmManager::loadAlarms() { m_working = m_saved; }

void AlarmManager::addAlarm(NSObject* alarm, bool active)
{
    if (auto* typed = objc::cast<Alarm>(alarm))
        m_working.push_back({ RefPtr<Alarm>(typed), active });
}

void AlarmManager::saveAlarms()
{
    m_saved = m_working;
    if (m_didSave)
        m_didSave();
}
