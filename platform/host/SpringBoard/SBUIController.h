#pragma once

#include <objc/objc.h>

#include <functional>

// The home screen's controller: the home button when the lock screen is not
// up, and the battery as SpringBoard shows it.
class SBUIController final : public NSObject {
    OBJC_CLASS(SBUIController)
public:
    static RefPtr<SBUIController> sharedInstance();

    // Answers whether the press was acted on (it always is: it goes home,
    // putting away what covers the home screen).
    bool clickedMenuButton();
    void setMenuButtonAction(std::function<void()> action) { m_menuButtonAction = std::move(action); }

    // A fraction from 0 to 1.
    double batteryCapacity() const { return m_batteryLevel; }
    bool isOnAC() const { return m_onAC; }

    double batteryLevel() const { return m_batteryLevel; }
    void setBatteryLevel(double);
    void setOnAC(bool onAC) { m_onAC = onAC; }
    // The power source's raw capacities, in mAh.
    long long currentCapacity() const { return m_currentCapacity; }
    void setCurrentCapacity(long long mAh) { m_currentCapacity = mAh; }
    long long maxCapacity() const { return m_maxCapacity; }
    void setMaxCapacity(long long mAh) { m_maxCapacity = mAh; }

private:
    double m_batteryLevel { 0.76 };
    bool m_onAC { false };
    long long m_currentCapacity { 1380 };
    long long m_maxCapacity { 1810 };
    std::function<void()> m_menuButtonAction;
};
